// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/source/NinePatch.h"

#include "format/ByteView.h"

#include <cmath>

namespace SorrelKit {

namespace {

constexpr int HeaderSize = 32;
constexpr int PaddingAt = 12;
constexpr int BorderSize = 4;

// The content of the chunk "npTc" of the PNG. A PNG is 8 bytes, then chunks: length u32, type, content, checksum u32.
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
    // Every chunk takes bytes, and the one that is looked for stands ahead of the picture's data.
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

// Each range begins where the one before it has ended, or later; those that do not are left out.
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

struct Segment {
    qreal from; ///< in the picture
    qreal length;
    bool isStretched;
};

// The parts of a side of @p length pixels, in turn.
QVector<Segment> segments(const NinePatch::Ranges &stretched, qreal length)
{
    QVector<Segment> segments;
    qreal at = 0;
    for (const NinePatch::Range &range : stretched) {
        const qreal start = qMin(qreal(range.start), length);
        const qreal end = qMin(qreal(range.end), length);
        segments.append({at, start - at, false});
        segments.append({start, end - start, true});
        at = end;
    }
    segments.append({at, length - at, stretched.isEmpty()});
    return segments;
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

PictureSamples NinePatch::samples(const Ranges &stretched, const Side &side, qreal start, int count)
{
    const QVector<Segment> parts = segments(stretched, side.pixels / side.scale);
    qreal fixed = 0;
    qreal elastic = 0;
    for (const Segment &part : parts)
        (part.isStretched ? elastic : fixed) += part.length;

    const bool isElastic = elastic > 0 && fixed * side.fixedScale < side.length;
    const qreal fixedScale = isElastic || fixed * side.fixedScale <= 0 ? side.fixedScale : side.length / fixed;
    const qreal elasticScale = isElastic ? (side.length - fixed * fixedScale) / elastic : 0;

    PictureSamples samples;
    samples.reserve(count);
    qreal end = 0;
    for (const Segment &part : parts) {
        const qreal scale = part.isStretched ? elasticScale : fixedScale;
        const qreal begin = std::round(end);
        end += part.length * scale;
        // The picture's pixels next to the segment are not mixed into it.
        const int first = qBound(0, int(std::floor(part.from * side.scale + 1e-6)), side.pixels - 1);
        const int last = qBound(first + 1, int(std::ceil((part.from + part.length) * side.scale - 1e-6)), side.pixels);
        const qreal length = qMax(std::round(end) - begin, qreal(1));
        while (samples.size() < count && start + int(samples.size()) + 0.5 < std::round(end)) {
            const qreal share = (start + int(samples.size()) + 0.5 - begin) / length;
            samples.append(PictureSample::within((part.from + part.length * share) * side.scale, first, last));
        }
    }
    while (samples.size() < count)
        samples.append(PictureSample::within(side.pixels, 0, side.pixels));
    return samples;
}

} // namespace SorrelKit
