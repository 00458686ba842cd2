// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/ChunkView.h"

ChunkView ChunkView::at(const ByteView &bytes, qint64 at)
{
    const qint64 headerSize = bytes.u16(at + HeaderSizeAt);
    const qint64 size = bytes.u32(at + SizeAt);
    const bool isAligned = ((headerSize | size) & 3) == 0;
    if (!bytes.has(at, HeaderSize) || headerSize < HeaderSize || headerSize > size || !isAligned
        || !bytes.has(at, size))
        return {};
    return ChunkView(bytes.part(at, size));
}

ChunkView ChunkList::next()
{
    const ChunkView chunk = m_next;
    m_at += chunk.size();
    m_next = ChunkView::at(m_bytes, m_at);
    return chunk;
}

bool ChunkList::isDamaged() const
{
    if (rest() == 0)
        return false;
    const bool isCut = rest() < ChunkView::HeaderSize || rest() < qint64(m_bytes.u32(m_at + ChunkView::SizeAt));
    return m_at == m_start || !isCut;
}
