// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef XMLNODES_H
#define XMLNODES_H

#include "format/StringPoolView.h"
#include "oddity/FormatFault.h"
#include "oddity/OddityList.h"

/**
 * The nodes of a binary XML document (see XmlReader for the chunks), found as Android 10 to 14 find them. Android takes
 * documents that build tools do not write:
 *
 * | part of the document | rule                                                                                      |
 * |----------------------|-------------------------------------------------------------------------------------------|
 * | root chunk           | its type is ignored; its header, of any size, fits its size, which fits the bytes          |
 * | bytes behind it      | ignored                                                                                   |
 * | before the nodes     | the last string pool and the last resource map count, other chunks are skipped; a chunk that ends with the document is not looked at |
 * | string pool          | required, and sound (StringPoolView::isSound()); one among the nodes is ignored           |
 * | resource map         | (size of the chunk - 8) / 4 ids, from the end of its header on                            |
 * | first node           | the first chunk with the type of a node                                                   |
 * | node                 | a header of at least 16 bytes; both sizes multiples of 4; within the document              |
 * | unknown node         | skipped, whatever its type                                                                |
 * | body of a node       | at least 20 bytes of an element's start, 12 of a text, 8 of an end or a namespace          |
 * | attributes           | start + size x count fits the body; a size other than 20 is taken as it is                |
 *
 * A damaged node ends the list with a fault. Android reads nodes one by one too, so a package manager that ends at the
 * end of the root does not mind damage behind it.
 *
 * Takes constant memory, and time in proportion to the bytes. Meets raw input.
 */
class XmlNodes
{
public:
    /// The nodes of the document in @p bytes, which outlive this object. next() moves to the first.
    explicit XmlNodes(const ByteView &bytes);

    /// NoDocument, DamagedDocument, DamagedPool, DamagedElement or NoElement, as far as the nodes were read.
    FormatFault fault() const { return m_fault; }
    /// What is odd about the document, as far as the nodes were read.
    const OddityList &oddities() const { return m_oddities; }
    /// For oddities that the reader of the nodes finds.
    OddityList &oddities() { return m_oddities; }

    const StringPoolView &strings() const { return m_strings; }
    /// The chunk of strings().
    const ByteView &poolBytes() const { return m_pool; }
    /// The resource ids of the strings with the first indices, u32 each.
    const ByteView &resourceIds() const { return m_ids; }
    /// The resource id of the attribute whose name is the string @p name; 0 for none.
    quint32 resourceId(quint32 name) const { return m_ids.u32(4 * qint64(name)); }

    /// Moves to the next known node. False at the end, and at a damaged node.
    bool next();
    /// The type of the node: a namespace, an element or a text. Precondition: next() returned true.
    ChunkType type() const { return m_type; }
    /// The bytes from the end of the node's header to the end of the document. Android reads an attribute that begins
    /// within the node and ends behind it. Precondition: next() returned true.
    const ByteView &body() const { return m_body; }

private:
    void findFirst();
    void readResourceMap(qint64 at, qint64 size);
    void countNamespace();

    ByteView m_document;
    StringPoolView m_strings;
    ByteView m_pool;
    ByteView m_ids;
    ByteView m_body;
    qint64 m_next = 0; ///< where the next node begins
    qint64 m_openNamespaces = 0;
    ChunkType m_type = ChunkType::Untyped;
    FormatFault m_fault = FormatFault::None;
    OddityList m_oddities;
};

#endif
