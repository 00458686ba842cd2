// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/paint/Canvas.h"

#include <utility>

namespace SorrelKit {

namespace {

// The passes over the canvas that a layer and a mask cost.
constexpr int LayerPasses = 3;
constexpr int MaskPasses = 2;

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

// Whether @p mask is a rectangle around a whole canvas of @p size.
bool isAroundAll(const QPainterPath &mask, const QTransform &transform, QSize size)
{
    QPainterPath rectangle;
    rectangle.addRect(mask.controlPointRect());
    return transform.type() <= QTransform::TxScale && mask == rectangle
           && transform.mapRect(mask.controlPointRect()).contains(QRectF(QPointF(), size));
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
    m_isBlank = m_isBlank && m_isSpent;
    return !m_isSpent;
}

QImage Canvas::image()
{
    m_bottom.end();
    return m_image;
}

void Canvas::layer(const std::function<void()> &paint, const std::function<void(QImage &)> &change, qreal opacity)
{
    if (m_layers >= MaxLayers)
        return;
    const HeldBytes bytes(m_budget, m_image.sizeInBytes());
    if (!bytes)
        return setCut();
    if (!spendPasses(LayerPasses))
        return;
    QImage image = transparent(size());
    {
        QPainter painter(&image);
        prepare(&painter);
        painter.setTransform(m_painter->transform());
        QPainter *const below = std::exchange(m_painter, &painter);
        ++m_layers;
        m_isBlank = true;
        paint();
        m_isBlank = false;
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
    const bool isLayer = !m_isBlank || change || opacity < 1;
    if (!spendPasses(MaskPasses))
        return;
    if (isLayer) {
        const auto changeAndCut = [&](QImage &layer) {
            if (change)
                change(layer);
            QPainter painter(&layer);
            cut(&painter, mask, transform);
        };
        this->layer(paint, changeAndCut, opacity);
        return;
    }
    if (!spendPasses(LayerPasses))
        return;
    m_painter->save();
    m_isBlank = true;
    paint();
    m_isBlank = false;
    m_painter->resetTransform();
    cut(m_painter, mask, transform);
    m_painter->restore();
}

void Canvas::cut(QPainter *painter, const QPainterPath &mask, const QTransform &transform)
{
    if (isAroundAll(mask, transform, size()))
        return;
    const HeldBytes bytes(m_budget, m_image.sizeInBytes());
    if (!bytes) {
        setCut();
        painter->setCompositionMode(QPainter::CompositionMode_Clear);
        painter->fillRect(QRect(QPoint(), size()), Qt::transparent);
        return;
    }
    QImage kept = transparent(size());
    QPainter maskPainter(&kept);
    maskPainter.setRenderHint(QPainter::Antialiasing);
    maskPainter.setTransform(transform);
    maskPainter.fillPath(mask, Qt::black);
    maskPainter.end();
    painter->setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter->drawImage(0, 0, kept);
}

} // namespace SorrelKit
