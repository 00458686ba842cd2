// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef XMLSTARTCHUNK_H
#define XMLSTARTCHUNK_H

#include "format/ChunkView.h"
#include "format/TypedValue.h"

/**
 * The start of an element in a binary XML document. Every chunk from ChunkType::XmlFirstNode to XmlLastNode has a node
 * header: after the chunk header, the line u32 and the comment u32 (the index of a string, NoString for none). The body
 * of this chunk, with offsets from the end of the node header:
 *
 * | offset | width    | field                                                          |
 * |--------|----------|----------------------------------------------------------------|
 * | 0      | u32, u32 | namespace, name: indices of strings, NoString for none         |
 * | 8      | u16      | attribute start: offset of the first attribute                 |
 * | 10     | u16      | attribute size: from one attribute to the next, 20             |
 * | 12     | u16      | attribute count                                                |
 * | 14     | 3 x u16  | numbers of the id, class and style attribute                   |
 *
 * An attribute:
 *
 * | offset | width    | field                                                          |
 * |--------|----------|----------------------------------------------------------------|
 * | 0      | u32, u32 | namespace, name: indices of strings                            |
 * | 8      | u32      | raw value: index of the text in the source, NoString for none  |
 * | 12     | 8 bytes  | value (see TypedValue)                                         |
 *
 * The string of a name has a resource id when the document's map of resource ids (ChunkType::XmlResourceMap: u32 each)
 * has one at its index. Tools that shrink packages empty the names of such attributes.
 *
 * Android takes any attribute size. Attributes overlap when it is below 20: with 0, all of them are the first one.
 * Meets raw input.
 */
class XmlStartChunk
{
public:
    static constexpr int NodeHeaderSize = 16;
    static constexpr int FieldsSize = 14; ///< from the namespace to the attribute count
    static constexpr int BodySize = 20;   ///< without attributes
    static constexpr int AttributeStartAt = 8;
    static constexpr int AttributeSizeAt = 10;
    static constexpr int AttributeCountAt = 12;
    static constexpr int AttributeSize = 20;
    static constexpr quint32 NoString = 0xffffffff;
    /// Android takes the index of a raw value for signed, and any negative one for none.
    static constexpr quint32 LastRawString = 0x7fffffff;

    struct Attribute {
        quint32 uri = NoString;
        quint32 name = NoString;
        quint32 raw = NoString;
        TypedValue value;
    };

    /// @p body begins at the end of the node header. It may go on behind the chunk: Android does not check the end of
    /// an attribute that begins in the chunk.
    explicit XmlStartChunk(const ByteView &body) : m_body(body) {}

    /// Whether the attributes, each of attributeSize(), are within the first @p size bytes of the body.
    bool fits(qint64 size) const { return start() + attributeSize() * attributeCount() <= size; }
    /// Whether the size of attributes is not the usual one.
    bool hasOddSize() const { return attributeSize() != AttributeSize; }
    qint64 attributeSize() const { return m_body.u16(AttributeSizeAt); }
    quint32 uri() const { return m_body.u32(0); }
    quint32 name() const { return m_body.u32(4); }
    int attributeCount() const { return m_body.u16(AttributeCountAt); }
    /// Precondition: @p number is less than attributeCount().
    Attribute attribute(int number) const
    {
        const ByteView record = m_body.part(start() + number * attributeSize(), AttributeSize);
        return {record.u32(0), record.u32(4), record.u32(8), TypedValue::read(record, 12)};
    }

private:
    qint64 start() const { return m_body.u16(AttributeStartAt); }

    ByteView m_body;
};

#endif
