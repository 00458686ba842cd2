// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/paint/PictureSample.h"

#include <cmath>

namespace SorrelKit {

namespace {

// Two of the four channels at a time: each has 8 bits to spare.
QRgb between(QRgb first, QRgb second, int weight)
{
    constexpr quint32 Mask = 0x00ff00ff;
    const quint32 toSecond = quint32(weight);
    const quint32 toFirst = quint32(PictureSample::MaxWeight - weight);
    const quint32 low = ((first & Mask) * toFirst + (second & Mask) * toSecond) >> 8 & Mask;
    const quint32 high = (first >> 8 & Mask) * toFirst + (second >> 8 & Mask) * toSecond;
    return low | (high & ~Mask);
}

// Whether the samples are all pixels of a side, unchanged.
bool isWhole(const PictureSamples &samples, int side)
{
    if (samples.size() != side)
        return false;
    for (int i = 0; i < side; ++i) {
        if (samples.at(i).first != i || samples.at(i).weight != 0)
            return false;
    }
    return true;
}

} // namespace

PictureSample PictureSample::within(qreal position, int start, int end)
{
    const qreal lowest = start;
    const qreal highest = end - 1;
    const qreal at = qBound(lowest, position - 0.5, highest);
    const int first = int(at);
    return {first, qMin(first + 1, end - 1), int(std::lround((at - first) * MaxWeight))};
}

QImage PictureSample::resampled(const QImage &picture, const PictureSamples &columns, const PictureSamples &rows)
{
    if (isWhole(columns, picture.width()) && isWhole(rows, picture.height()))
        return picture;
    QImage result(int(columns.size()), int(rows.size()), QImage::Format_ARGB32_Premultiplied);
    int y = 0;
    for (const PictureSample &row : rows) {
        const auto *const above = reinterpret_cast<const QRgb *>(picture.constScanLine(row.first));
        const auto *const below = reinterpret_cast<const QRgb *>(picture.constScanLine(row.second));
        auto *pixel = reinterpret_cast<QRgb *>(result.scanLine(y++));
        for (const PictureSample &column : columns) {
            *pixel++ = between(between(above[column.first], above[column.second], column.weight),
                               between(below[column.first], below[column.second], column.weight), row.weight);
        }
    }
    return result;
}

} // namespace SorrelKit
