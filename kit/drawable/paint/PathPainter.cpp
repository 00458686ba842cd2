// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/paint/PathPainter.h"

#include "drawable/paint/Canvas.h"

#include <QPainterPathStroker>

#include <cmath>

namespace SorrelKit {

namespace {

// The work for an element of a path besides filling.
constexpr qint64 ElementWork = 16;
constexpr qint64 StrokedElementWork = 256;
// Bytes for each point of an outline or a stroke: those of the path, and of the painter's copy.
constexpr qint64 PointBytes = 48;

// A larger scale has no sensible use. Within this range, coordinates stay finite.
constexpr qreal MaxScale = 1e12;

bool isPaintable(const QTransform &transform)
{
    const auto isBounded = [](qreal value) { return std::abs(value) <= MaxScale; };
    return isBounded(transform.m11()) && isBounded(transform.m12()) && isBounded(transform.m21())
           && isBounded(transform.m22()) && isBounded(transform.dx()) && isBounded(transform.dy())
           && std::isnormal(transform.determinant());
}

// The cost of a pixel of the brush, as a multiple of the cost in a single colour.
qint64 costPerPixel(const QBrush &brush)
{
    switch (brush.style()) {
    case Qt::LinearGradientPattern:
        return 2;
    case Qt::RadialGradientPattern:
        return 4;
    case Qt::ConicalGradientPattern:
        return 16;
    default:
        return 1;
    }
}

bool isVisible(const QBrush &brush, qreal opacity)
{
    return opacity > 0 && brush.style() != Qt::NoBrush
           && (brush.style() != Qt::SolidPattern || brush.color().alpha() > 0);
}

QBrush transformed(QBrush brush, const QTransform &transform)
{
    brush.setTransform(transform);
    return brush;
}

QRectF visiblePart(const QRectF &viewport, const QTransform &toPixels, QSize size)
{
    // A little more than the canvas, so that no border of the outline is visible.
    constexpr int Margin = 2;
    if (!isPaintable(toPixels))
        return {};
    return viewport & toPixels.inverted().mapRect(QRectF(QPointF(), size).adjusted(-Margin, -Margin, Margin, Margin));
}

} // namespace

PathPainter::PathPainter(Canvas *canvas, const QRectF &bounds, const QRectF &viewport) : m_canvas(canvas)
{
    QTransform transform = QTransform::fromTranslate(-viewport.x(), -viewport.y());
    transform *= QTransform::fromScale(bounds.width() / viewport.width(), bounds.height() / viewport.height());
    transform *= QTransform::fromTranslate(bounds.x(), bounds.y());
    QPainter &painter = canvas->painter();
    painter.save();
    m_toPixels = transform * painter.transform();
    if (!bounds.isEmpty())
        m_visible = visiblePart(viewport, m_toPixels, canvas->size());
    if (!m_visible.isEmpty())
        painter.setTransform(m_toPixels);
}

PathPainter::~PathPainter()
{
    m_canvas->painter().restore();
}

void PathPainter::fill(const QPainterPath &path, const QTransform &transform, const QBrush &brush, qreal opacity)
{
    paint(path, transform, transformed(brush, transform), opacity);
}

// QPainterPathStroker always computes curves to a quarter of a unit, so the path is enlarged to UnitsPerPixel.
void PathPainter::stroke(const QPainterPath &path, const QTransform &transform, const QPen &pen, qreal opacity)
{
    constexpr qreal UnitsPerPixel = 4;
    const QTransform toPixels = transform * m_toPixels;
    if (!isVisible(pen.brush(), opacity) || !isPaintable(toPixels) || path.elementCount() > MaxStrokedElements
        || !m_canvas->spendWork(path.elementCount() * StrokedElementWork))
        return;
    const qreal pixels = std::sqrt(std::abs(toPixels.determinant()));
    const QTransform enlarged = QTransform::fromScale(pixels * UnitsPerPixel, pixels * UnitsPerPixel);
    QPainterPathStroker stroker(pen);
    stroker.setWidth(pen.widthF() > 0 ? pen.widthF() * enlarged.m11() : UnitsPerPixel);
    const QPainterPath outline = stroker.createStroke(enlarged.map(path));
    const HeldBytes bytes(m_canvas->budget(), outline.elementCount() * PointBytes);
    if (!bytes)
        return m_canvas->setCut();
    paint(outline, enlarged.inverted() * transform, transformed(pen.brush(), transform), opacity);
}

void PathPainter::paintMasked(const QVector<Mask> &masks, const std::function<void()> &paint)
{
    m_canvas->layer(paint, [&](QImage &layer) {
        for (const Mask &mask : masks)
            cut(&layer, mask);
    });
}

void PathPainter::cut(QImage *layer, const Mask &mask)
{
    constexpr int Passes = 3;
    const auto area = m_canvas->spendPasses(Passes) ? outline(mask.path, mask.transform, 1) : std::nullopt;
    const HeldBytes bytes(m_canvas->budget(), layer->sizeInBytes());
    if (!bytes)
        m_canvas->setCut();
    if (!area || !bytes) {
        layer->fill(Qt::transparent);
        return;
    }
    QImage kept(layer->size(), QImage::Format_ARGB32_Premultiplied);
    kept.fill(Qt::transparent);
    QPainter painter(&kept);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(m_toPixels);
    painter.fillPath(area->polygons(), Qt::black);
    painter.end();
    painter.begin(layer);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, kept);
}

void PathPainter::paint(const QPainterPath &path, const QTransform &transform, const QBrush &brush, qreal opacity)
{
    const auto area = isVisible(brush, opacity) ? outline(path, transform, costPerPixel(brush)) : std::nullopt;
    if (!area)
        return;
    const HeldBytes bytes(m_canvas->budget(), area->polygons().elementCount() * PointBytes);
    if (!bytes)
        return m_canvas->setCut();
    QPainter &painter = m_canvas->painter();
    painter.setOpacity(opacity);
    painter.fillPath(area->polygons(), brush);
    painter.setOpacity(1);
}

std::optional<PathOutline> PathPainter::outline(const QPainterPath &path, const QTransform &transform,
                                                qint64 costPerPixel)
{
    if (m_visible.isEmpty() || !isPaintable(transform) || !m_canvas->spendWork(path.elementCount() * ElementWork))
        return std::nullopt;
    PathOutline outline(m_visible, m_toPixels, m_canvas->size(), m_canvas->budget().workLeft());
    outline.add(path, transform);
    if (!m_canvas->spendWork(outline.edgeWork() + outline.area() * costPerPixel / Canvas::PixelsPerWork))
        return std::nullopt;
    return outline;
}

} // namespace SorrelKit
