// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef XMLREADER_H
#define XMLREADER_H

#include "format/XmlElement.h"
#include "limits/Limits.h"
#include "oddity/FormatFault.h"
#include "oddity/OddityList.h"

#include <QByteArray>

#include <vector>

class XmlNodes;
class XmlStartChunk;

/**
 * Reads a binary XML document, as Android's build tools compile manifests and other XML resources. The document is a
 * chunk of the type ChunkType::Xml with these chunks in it:
 *
 * | type (ChunkType)                   | body, after the chunk header and the node header (see XmlStartChunk)      |
 * |------------------------------------|---------------------------------------------------------------------------|
 * | StringPool                         | see StringPoolView; indices of strings refer to it                        |
 * | XmlResourceMap                     | u32 each: the resource id of the attribute with that string as its name   |
 * | XmlStartNamespace, XmlEndNamespace | u32 prefix, u32 URI                                                       |
 * | XmlStartElement                    | see XmlStartChunk                                                         |
 * | XmlEndElement                      | u32 namespace, u32 name                                                   |
 * | XmlText                            | u32 text, and a value (see TypedValue)                                    |
 *
 * This reader takes and refuses the documents that Android's package manager takes and refuses (see XmlNodes for the
 * chunks), and keeps ceilings of its own:
 *
 * - Namespaces and texts are skipped.
 * - Ends of elements are matched by their order, whatever names they have. Ends without a start are skipped.
 * - Elements that are open at the end of the document end there.
 * - Nothing behind the end of the root is read as content. Damage there is no fault.
 * - An element needs a name, which may be the empty string. An attribute may be without one.
 *
 * Meets raw input.
 */
class XmlReader
{
public:
    static constexpr int MaxDepth = Limits::MaxElementDepth;
    static constexpr int MaxNodes = Limits::MaxNodes;
    /// Characters of all names and texts at most. Any number of attributes may use one text.
    static constexpr qint64 MaxCharacters = 16 << 20;

    /// Whether @p bytes are a document: they begin as build tools write it, or they lead to a node as in XmlNodes,
    /// whatever their first chunk is. Callers go by this because tools shorten the names of files, suffixes included.
    /// Takes time for each chunk before the first node at most.
    static bool isDocument(const QByteArray &bytes);

    /// Reads the document in @p bytes; the lesser of @p maxCharacters and MaxCharacters applies.
    explicit XmlReader(const QByteArray &bytes, qint64 maxCharacters = MaxCharacters);

    /// The root; a null element when there is none. For a damaged document, the content before the fault.
    const XmlElement &root() const { return m_root; }
    /// The fault of the document; FormatFault::None without one.
    FormatFault fault() const { return m_fault; }
    /// What is odd about the document, as far as it was read.
    const OddityList &oddities() const { return m_oddities; }
    /// Characters of all names and texts that were read: the memory that they take besides the bytes.
    qint64 characters() const { return m_characters; }

private:
    void readNodes(XmlNodes *nodes);
    bool readStart(const XmlStartChunk &start, XmlNodes *nodes, XmlElement *element);
    /// Moves the innermost of the @p open elements to the children of its parent.
    void close(QVector<XmlElement> *open);
    /// Sets the texts of @p attribute, whose text in the source is the string @p raw.
    void readText(quint32 raw, const XmlNodes &nodes, XmlAttribute *attribute);
    QString string(const XmlNodes &nodes, quint32 index);

    const qint64 m_maxCharacters;
    std::vector<QString> m_strings; ///< those that were used, by index: repeated uses share the characters
    XmlElement m_root;
    FormatFault m_fault = FormatFault::None;
    OddityList m_oddities;
    int m_nodes = 0;
    qint64 m_characters = 0;
};

#endif
