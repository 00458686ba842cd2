// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/paint/Downscaler.h"

#include <cmath>

namespace SorrelKit {

namespace {

// A larger picture is not converted as a whole: the copy would take up to four times the memory of the picture.
constexpr qint64 MaxDirectPixels = 2 << 20;

// The average of each block of columns x rows pixels, without the incomplete blocks at the end. Converts a band of rows
// at a time, so that it needs little memory.
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

// The side of the blocks that are averaged before the fine scaling, which gets twice the pixels that it needs, but at
// most MaxSide, to bound its memory.
int blockSide(int side, int wanted)
{
    constexpr int MaxSide = 2048;
    return qMax((side + MaxSide - 1) / MaxSide, side / (2 * wanted));
}

int targetSide(int side, qreal wanted)
{
    const qreal most = qMin(side, Downscaler::MaxSide);
    return int(std::ceil(qBound(qreal(1), wanted - 1e-6, most)));
}

QSize targetSize(QSize picture, const QSizeF &size)
{
    return {targetSide(picture.width(), size.width()), targetSide(picture.height(), size.height())};
}

qint64 pixelCount(QSize size)
{
    return qint64(size.width()) * size.height();
}

} // namespace

qint64 Downscaler::bytes(QSize picture, const QSizeF &size)
{
    constexpr qint64 PixelSize = 4;
    const QSize target = targetSize(picture, size);
    qint64 pixels = pixelCount(picture);
    if (pixels > MaxDirectPixels)
        pixels = qint64(picture.width() / blockSide(picture.width(), target.width()))
                 * (picture.height() / blockSide(picture.height(), target.height()));
    return PixelSize * (pixels + pixelCount(target));
}

QImage Downscaler::scaled(const QImage &picture, const QSizeF &size)
{
    const QSize target = targetSize(picture.size(), size);
    const QImage image = pixelCount(picture.size()) > MaxDirectPixels
                             ? blockAverages(picture, blockSide(picture.width(), target.width()),
                                             blockSide(picture.height(), target.height()))
                             : picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    return image.scaled(target.boundedTo(image.size()), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace SorrelKit
