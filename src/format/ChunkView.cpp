// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/ChunkView.h"

ChunkView ChunkView::at(const ByteView &bytes, qint64 at)
{
    const qint64 headerSize = bytes.u16(at + HeaderSizeAt);
    const qint64 size = bytes.u32(at + SizeAt);
    if (!bytes.has(at, HeaderSize) || headerSize < HeaderSize || headerSize > size || !bytes.has(at, size))
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
