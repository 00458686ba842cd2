// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/source/NinePatch.h"

#include "format/ByteView.h"

namespace SorrelKit {

namespace {

constexpr int HeaderSize = 32;
constexpr int PaddingAt = 12;
constexpr int BorderSize = 4;

// The content of the chunk "npTc". A PNG has 8 bytes and then chunks: length u32, type, content, checksum u32.
ByteView ninePatchChunk(const ByteView &png)
{
    constexpr int SignatureSize = 8;
    constexpr quint32 Signature = 0x89504e47;
    constexpr quint32 NinePatchType = 0x6e705463;
    constexpr quint32 DataType = 0x49444154;
    constexpr int ChunkHeaderSize = 8;
    constexpr int ChecksumSize = 4;
    if (png.big32(0) != Signature)
        return {};
    // Ends because every chunk takes bytes. The wanted one is before the data of the picture.
    for (qint64 at = SignatureSize; png.has(at, ChunkHeaderSize);) {
        const qint64 length = png.big32(at);
        const quint32 type = png.big32(at + 4);
        if (type == DataType || !png.has(at + ChunkHeaderSize, length))
            return {};
        if (type == NinePatchType)
            return png.part(at + ChunkHeaderSize, length);
        at += ChunkHeaderSize + length + ChecksumSize;
    }
    return {};
}

// A range that begins before the end of the previous one is left out.
NinePatch::Ranges ranges(const ByteView &chunk, qint64 at, int borderCount)
{
    NinePatch::Ranges ranges;
    int last = 0;
    for (int i = 0; i + 1 < borderCount; i += 2) {
        const auto start = qint32(chunk.big32(at + BorderSize * qint64(i)));
        const auto end = qint32(chunk.big32(at + BorderSize * qint64(i + 1)));
        if (start < last || end <= start)
            continue;
        ranges.append({start, end});
        last = end;
    }
    return ranges;
}

} // namespace

std::optional<NinePatch> NinePatch::read(const QByteArray &bytes)
{
    const ByteView chunk = ninePatchChunk(ByteView(bytes));
    const int columnBorders = chunk.u8(1);
    const int rowBorders = chunk.u8(2);
    const qint64 rowsAt = HeaderSize + BorderSize * qint64(columnBorders);
    if (!chunk.has(0, rowsAt + BorderSize * qint64(rowBorders)))
        return std::nullopt;
    NinePatch patch;
    patch.m_columns = ranges(chunk, HeaderSize, columnBorders);
    patch.m_rows = ranges(chunk, rowsAt, rowBorders);
    const auto padding = [&](int index) { return qMax(0, qint32(chunk.big32(PaddingAt + 4 * index))); };
    patch.m_padding = QMarginsF(padding(0), padding(2), padding(1), padding(3));
    return patch;
}

} // namespace SorrelKit
