// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/color/MaskedLayer.h"

#include "drawable/paint/Canvas.h"

namespace SorrelKit {

void paintMasked(Canvas &canvas, const QPainterPath &mask, const std::function<void()> &paint,
                 const std::function<void(QImage &)> &change, qreal opacity)
{
    const QTransform transform = canvas.painter().transform();
    const auto cut = [&](QImage &layer) {
        if (change)
            change(layer);
        QImage kept(layer.size(), QImage::Format_ARGB32_Premultiplied);
        kept.fill(Qt::transparent);
        QPainter maskPainter(&kept);
        maskPainter.setRenderHint(QPainter::Antialiasing);
        maskPainter.setTransform(transform);
        maskPainter.fillPath(mask, Qt::black);
        maskPainter.end();
        QPainter painter(&layer);
        painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        painter.drawImage(0, 0, kept);
    };
    if (canvas.spend(2))
        canvas.layer(paint, cut, opacity);
}

void paintTinted(Canvas &canvas, const QRectF &extent, const std::optional<Tint> &tint, qreal opacity,
                 const std::function<void()> &paint)
{
    QPainterPath mask;
    mask.addRect(extent);
    if (tint)
        paintMasked(canvas, mask, paint, [&](QImage &layer) { tint->apply(&layer, opacity); });
    else if (opacity < 1)
        paintMasked(canvas, mask, paint, {}, opacity);
    else
        paint();
}

} // namespace SorrelKit
