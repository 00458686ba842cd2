// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/paint/PictureSampler.h"

#include <cmath>

namespace SorrelKit {

namespace {

// Larger pictures are not converted as a whole, which would take as much memory as they do, or four times as much.
constexpr qint64 MaxDirectPixels = 2 << 20;

// Two of the four channels at a time, each with 8 bits to spare.
QRgb between(QRgb first, QRgb second, int weight)
{
    constexpr quint32 Mask = 0x00ff00ff;
    const quint32 toSecond = quint32(weight);
    const quint32 toFirst = quint32(PictureSample::MaxWeight - weight);
    const quint32 low = ((first & Mask) * toFirst + (second & Mask) * toSecond) >> 8 & Mask;
    const quint32 high = (first >> 8 & Mask) * toFirst + (second >> 8 & Mask) * toSecond;
    return low | (high & ~Mask);
}

// The average of each block of @p columns by @p rows pixels; blocks that are not full are left out.
QImage blockAverages(const QImage &picture, int columns, int rows)
{
    QImage result(picture.width() / columns, picture.height() / rows, QImage::Format_ARGB32_Premultiplied);
    const int pixels = columns * rows;
    for (int y = 0; y < result.height(); ++y) {
        const QImage band =
            picture.copy(0, y * rows, picture.width(), rows).convertToFormat(QImage::Format_ARGB32_Premultiplied);
        auto *const line = reinterpret_cast<QRgb *>(result.scanLine(y));
        for (int x = 0; x < result.width(); ++x) {
            int alpha = 0;
            int red = 0;
            int green = 0;
            int blue = 0;
            for (int row = 0; row < rows; ++row) {
                const auto *const from = reinterpret_cast<const QRgb *>(band.constScanLine(row)) + qint64(x) * columns;
                for (int column = 0; column < columns; ++column) {
                    alpha += qAlpha(from[column]);
                    red += qRed(from[column]);
                    green += qGreen(from[column]);
                    blue += qBlue(from[column]);
                }
            }
            const int half = pixels / 2;
            line[x] =
                qRgba((red + half) / pixels, (green + half) / pixels, (blue + half) / pixels, (alpha + half) / pixels);
        }
    }
    return result;
}

// How many pixels of a side are averaged ahead of the fine scaling, which gets twice of what it needs, but never more than
// memory is to be taken for.
int blockSide(int side, int wanted)
{
    constexpr int MaxSide = 2048;
    return qMax((side + MaxSide - 1) / MaxSide, side / (2 * wanted));
}

int shrunkSide(int side, qreal wanted)
{
    const qreal most = qMin(side, MaxShrunkSide);
    return int(std::ceil(qBound(qreal(1), wanted - 1e-6, most)));
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

QImage sampled(const QImage &picture, const PictureSamples &columns, const PictureSamples &rows)
{
    QImage result(int(columns.size()), int(rows.size()), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < result.height(); ++y) {
        const PictureSample &row = rows.at(y);
        const auto *const above = reinterpret_cast<const QRgb *>(picture.constScanLine(row.first));
        const auto *const below = reinterpret_cast<const QRgb *>(picture.constScanLine(row.second));
        auto *const line = reinterpret_cast<QRgb *>(result.scanLine(y));
        for (int x = 0; x < result.width(); ++x) {
            const PictureSample &column = columns.at(x);
            line[x] = between(between(above[column.first], above[column.second], column.weight),
                              between(below[column.first], below[column.second], column.weight), row.weight);
        }
    }
    return result;
}

QImage shrunk(const QImage &picture, const QSizeF &size)
{
    const QSize target(shrunkSide(picture.width(), size.width()), shrunkSide(picture.height(), size.height()));
    const bool isLarge = qint64(picture.width()) * picture.height() > MaxDirectPixels;
    const QImage image = isLarge ? blockAverages(picture, blockSide(picture.width(), target.width()),
                                                 blockSide(picture.height(), target.height()))
                                 : picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    return image.scaled(target.boundedTo(image.size()), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace SorrelKit
