// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CHUNKVIEW_H
#define CHUNKVIEW_H

#include "format/ByteView.h"

/// Types of the chunks that resource tables and binary XML documents consist of.
enum class ChunkType : quint16 {
    StringPool = 0x0001,
    Table = 0x0002,
    Xml = 0x0003,
    XmlStartElement = 0x0102,
    XmlEndElement = 0x0103,
    XmlResourceMap = 0x0180,
    Package = 0x0200,
    Type = 0x0201,
    TypeSpec = 0x0202,
};

/// One chunk, header included: type u16, size of the header u16, size of the whole u32.
class ChunkView
{
public:
    static constexpr int HeaderSize = 8;

    ChunkView() = default;

    /// The chunk at @p at in @p bytes; one that is damaged is not valid: its header is shorter than 8 bytes or longer
    /// than the chunk, or the chunk ends after the bytes.
    static ChunkView at(const ByteView &bytes, qint64 at);

    bool isValid() const { return !m_bytes.isEmpty(); }
    ChunkType type() const { return ChunkType(m_bytes.u16(0)); }
    int headerSize() const { return m_bytes.u16(2); }
    qint64 size() const { return m_bytes.size(); }
    /// All of the chunk. Offsets in a chunk's header count from here.
    const ByteView &bytes() const { return m_bytes; }

private:
    explicit ChunkView(const ByteView &bytes) : m_bytes(bytes) {}

    ByteView m_bytes;
};

/**
 * The chunks that follow each other in a chunk or a file:
 *
 *     for (ChunkList chunks(parent.bytes(), parent.headerSize()); chunks.hasNext();) { ChunkView chunk = chunks.next(); }
 *
 * The list ends with the bytes, or ahead of the first damaged chunk, as nothing tells where the one after it begins.
 */
class ChunkList
{
public:
    ChunkList(const ByteView &bytes, qint64 at) : m_bytes(bytes), m_at(at), m_next(ChunkView::at(bytes, at)) {}

    bool hasNext() const { return m_next.isValid(); }
    /// Precondition: hasNext().
    ChunkView next();
    /// Whether bytes are left that are no chunk.
    bool isDamaged() const { return !m_next.isValid() && m_at < m_bytes.size(); }

private:
    ByteView m_bytes;
    qint64 m_at;
    ChunkView m_next;
};

#endif
