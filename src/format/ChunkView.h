// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CHUNKVIEW_H
#define CHUNKVIEW_H

#include "format/ByteView.h"
#include "format/ResourceTypes.h"

/**
 * One chunk in memory, header included. Both of Android's compiled formats consist of chunks, which may contain others.
 * Each starts with this header:
 *
 * | offset | width | field                                              |
 * |--------|-------|----------------------------------------------------|
 * | 0      | u16   | type, one of ChunkType                             |
 * | 2      | u16   | size of the chunk's header, these 8 bytes included |
 * | 4      | u32   | size of the whole chunk, header included           |
 */
class ChunkView
{
public:
    static constexpr int HeaderSizeAt = 2;
    static constexpr int SizeAt = 4;
    static constexpr int HeaderSize = 8;

    ChunkView() = default;

    /// The chunk at @p at in @p bytes. A damaged chunk is not valid: its header is shorter than 8 bytes or longer than
    /// the chunk, a size is no multiple of 4, or the chunk ends after the bytes.
    static ChunkView at(const ByteView &bytes, qint64 at);

    bool isValid() const { return !m_bytes.isEmpty(); }
    ChunkType type() const { return ChunkType(m_bytes.u16(0)); }
    int headerSize() const { return m_bytes.u16(HeaderSizeAt); }
    qint64 size() const { return m_bytes.size(); }
    /// The whole chunk. Offsets in a chunk's header count from here.
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
 * The list ends with the bytes or before the first damaged chunk: its size is unknown, and so is where the next begins.
 */
class ChunkList
{
public:
    ChunkList(const ByteView &bytes, qint64 at)
        : m_bytes(bytes), m_start(at), m_at(at), m_next(ChunkView::at(bytes, at))
    {
    }

    bool hasNext() const { return m_next.isValid(); }
    /// Precondition: hasNext().
    ChunkView next();
    /// Where the next chunk begins, or the rest.
    qint64 position() const { return m_at; }
    /// Number of bytes that are left and no chunk. Precondition: !hasNext().
    qint64 rest() const { return qMax(qint64(0), m_bytes.size() - m_at); }
    /// Whether Android refuses the bytes that are left. In tables it takes a rest behind a chunk that is too short for
    /// a header, or for the size in the header. Precondition: !hasNext().
    bool isDamaged() const;

private:
    ByteView m_bytes;
    qint64 m_start;
    qint64 m_at;
    ChunkView m_next;
};

#endif
