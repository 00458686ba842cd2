// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/paint/PicturePainter.h"

#include "drawable/paint/Canvas.h"
#include "drawable/paint/Downscaler.h"
#include "drawable/paint/VisibleArea.h"

namespace SorrelKit {

void PicturePainter::paint(Canvas &canvas, const VisibleArea &area, const QImage &picture, const QSizeF &size,
                           const std::function<Samples(QSize)> &samplesOf)
{
    constexpr qint64 PixelSize = 4;
    const qint64 pixels = qint64(picture.width()) * picture.height();
    const qint64 visiblePixels = qint64(area.pixels().width()) * area.pixels().height();
    if (area.isEmpty()
        || !canvas.spendWork(pixels * Downscaler::WorkPerPixel + visiblePixels * PictureSample::WorkPerPixel))
        return;
    const HeldBytes bytes(canvas.budget(), Downscaler::bytes(picture.size(), size) + PixelSize * visiblePixels);
    if (!bytes)
        return canvas.setCut();
    const QImage scaled = Downscaler::scaled(picture, size);
    const Samples samples = samplesOf(scaled.size());
    canvas.painter().drawImage(area.part(), PictureSample::resampled(scaled, samples.columns, samples.rows));
}

} // namespace SorrelKit
