// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/paint/Canvas.h"

#include <utility>

namespace SorrelKit {

namespace {

QImage transparent(QSize size)
{
    QImage image(size.boundedTo(QSize(Canvas::MaxSide, Canvas::MaxSide)).expandedTo(QSize(1, 1)),
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

void prepare(QPainter *painter)
{
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
}

} // namespace

Canvas::Canvas(QSize size, Budget &budget)
    : m_budget(budget),
      m_image(transparent(size)),
      m_bytes(budget, m_image.sizeInBytes()),
      m_bottom(&m_image),
      m_painter(&m_bottom),
      m_isSpent(!m_bytes)
{
    prepare(m_painter);
}

bool Canvas::spendWork(qint64 work)
{
    m_isSpent = m_isSpent || !m_budget.spendWork(work);
    return !m_isSpent;
}

QImage Canvas::image()
{
    m_bottom.end();
    QImage image = m_image;
    m_bottom.begin(&m_image);
    prepare(&m_bottom);
    return image;
}

void Canvas::layer(const std::function<void()> &paint, const std::function<void(QImage &)> &change, qreal opacity)
{
    if (m_layers >= MaxLayers)
        return;
    const HeldBytes bytes(m_budget, m_image.sizeInBytes());
    if (!bytes)
        return setCut();
    if (!spendPasses(3))
        return;
    QImage image = transparent(size());
    {
        QPainter painter(&image);
        prepare(&painter);
        painter.setTransform(m_painter->transform());
        QPainter *const below = std::exchange(m_painter, &painter);
        ++m_layers;
        paint();
        --m_layers;
        m_painter = below;
    }
    change(image);
    m_painter->save();
    m_painter->resetTransform();
    m_painter->setOpacity(opacity);
    m_painter->drawImage(0, 0, image);
    m_painter->restore();
}

void Canvas::maskedLayer(const QPainterPath &mask, const std::function<void()> &paint,
                         const std::function<void(QImage &)> &change, qreal opacity)
{
    const QTransform transform = m_painter->transform();
    const auto cut = [&](QImage &layer) {
        if (change)
            change(layer);
        const HeldBytes bytes(m_budget, layer.sizeInBytes());
        if (!bytes) {
            setCut();
            layer.fill(Qt::transparent);
            return;
        }
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
    if (spendPasses(2))
        this->layer(paint, cut, opacity);
}

} // namespace SorrelKit
