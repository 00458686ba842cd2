// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/AdaptiveIcon.h"

#include "drawable/ColorDrawable.h"
#include "drawable/paint/Canvas.h"
#include "drawable/paint/PaintBounds.h"
#include "drawable/source/DrawableLoader.h"

#include <utility>

namespace SorrelKit {

namespace {

constexpr qreal CornerRadius = 0.2;

// The superellipse of degree 4 around (0, 0) with radius 1. A cubic curve from each axis to the diagonal is within a
// thousandth of it. The constants are the distances of its control points from the axis and from the diagonal.
QPainterPath squircle()
{
    constexpr qreal Diagonal = 0.8409; // the fourth root of 1/2
    constexpr qreal FromAxis = 0.38;
    constexpr qreal FromDiagonal = 0.169;
    constexpr qreal Far = Diagonal + FromDiagonal;
    constexpr qreal Near = Diagonal - FromDiagonal;
    QPainterPath path(QPointF(1, 0));
    // The start of each quarter.
    for (const QPointF &start : {QPointF(1, 0), QPointF(0, 1), QPointF(-1, 0), QPointF(0, -1)}) {
        const auto point = [&](qreal along, qreal across) {
            return along * start + across * QPointF(-start.y(), start.x());
        };
        path.cubicTo(point(1, FromAxis), point(Far, Near), point(Diagonal, Diagonal));
        path.cubicTo(point(Near, Far), point(FromAxis, 1), point(0, 1));
    }
    return path;
}

QRectF layerBounds(const QRectF &bounds)
{
    constexpr qreal Margin = (AdaptiveIcon::LayerUnits / AdaptiveIcon::VisibleUnits - 1) / 2;
    const qreal x = bounds.width() * Margin;
    const qreal y = bounds.height() * Margin;
    return bounds.adjusted(-x, -y, x, y);
}

DrawablePointer layer(const XmlElement &icon, const QString &name, DrawableLoader &loader)
{
    for (const XmlElement &child : icon.children) {
        if (child.name == name)
            return loader.fromItem(child);
    }
    return nullptr;
}

} // namespace

AdaptiveIcon::AdaptiveIcon(DrawablePointer background, DrawablePointer foreground, IconMask mask)
    : m_background(std::move(background)), m_foreground(std::move(foreground)), m_mask(mask)
{
}

DrawablePointer AdaptiveIcon::fromXml(const XmlElement &element, DrawableLoader &loader)
{
    DrawablePointer monochrome;
    if (loader.isMonochrome())
        monochrome = layer(element, QStringLiteral("monochrome"), loader);
    if (monochrome != nullptr) {
        auto icon = std::make_unique<AdaptiveIcon>(nullptr, std::move(monochrome), IconMask::None);
        icon->m_isMonochrome = true;
        return icon;
    }
    DrawablePointer background = layer(element, QStringLiteral("background"), loader);
    DrawablePointer foreground = layer(element, QStringLiteral("foreground"), loader);
    if (background == nullptr && foreground == nullptr) {
        loader.setError(DrawableFault::NoLayers, element.name);
        return nullptr;
    }
    return std::make_unique<AdaptiveIcon>(std::move(background), std::move(foreground), loader.iconMask());
}

QSizeF AdaptiveIcon::intrinsicSize() const
{
    QSizeF size(-1, -1);
    for (const Drawable *const drawable : {m_background.get(), m_foreground.get()}) {
        if (drawable != nullptr)
            size = size.expandedTo(drawable->intrinsicSize());
    }
    const auto visible = [](qreal side) { return side < 0 ? side : side * VisibleUnits / LayerUnits; };
    return {visible(size.width()), visible(size.height())};
}

QPainterPath AdaptiveIcon::outline(IconMask mask, const QRectF &bounds)
{
    QPainterPath path;
    switch (mask) {
    case IconMask::Circle:
        path.addEllipse(bounds);
        break;
    case IconMask::RoundedSquare:
        path.addRoundedRect(bounds, bounds.width() * CornerRadius, bounds.height() * CornerRadius);
        break;
    case IconMask::Squircle:
        path = QTransform::fromTranslate(bounds.center().x(), bounds.center().y())
                   .scale(bounds.width() / 2, bounds.height() / 2)
                   .map(squircle());
        break;
    case IconMask::None:
        path.addRect(bounds);
        break;
    }
    return path;
}

void AdaptiveIcon::draw(Canvas &canvas, const QRectF &bounds) const
{
    const QRectF visible = PaintBounds::clamped(bounds);
    if (visible.isEmpty())
        return;
    const QRectF layer = layerBounds(visible);
    if (m_isMonochrome)
        return m_foreground->draw(canvas, layer);
    canvas.maskedLayer(outline(m_mask, visible), [&]() {
        if (m_background != nullptr) {
            ColorDrawable(Qt::black).draw(canvas, layer);
            m_background->draw(canvas, layer);
        }
        if (m_foreground != nullptr)
            m_foreground->draw(canvas, layer);
    });
}

} // namespace SorrelKit
