// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/color/ShapeGradient.h"

#include "drawable/paint/PaintBounds.h"
#include "drawable/source/DrawableAttributes.h"

#include <cmath>

namespace SorrelKit {

namespace {

constexpr qreal Middle = 0.5;
constexpr qreal MinRadius = 1e-3;
// In sides of the shape. A centre that is farther away makes no visible difference.
constexpr qreal MaxRatio = 100;
// A painter stores one colour for each position.
constexpr qreal MinStopDistance = 1e-4;

// Bits 0 to 3 of a fraction's data are its base: the shape itself, or its parent.
bool isFractionOfParent(const TypedValue &value)
{
    constexpr quint32 UnitMask = 0xf;
    constexpr quint32 Parent = 1;
    return (value.data & UnitMask) == Parent;
}

QLinearGradient linearGradient(int angle, const QRectF &rect)
{
    switch (angle) {
    case 0:
        return {rect.topLeft(), rect.topRight()};
    case 45:
        return {rect.bottomLeft(), rect.topRight()};
    case 90:
        return {rect.bottomLeft(), rect.topLeft()};
    case 135:
        return {rect.bottomRight(), rect.topLeft()};
    case 180:
        return {rect.topRight(), rect.topLeft()};
    case 225:
        return {rect.topRight(), rect.bottomLeft()};
    case 315:
        return {rect.topLeft(), rect.bottomRight()};
    default:
        return {rect.topLeft(), rect.bottomLeft()};
    }
}

} // namespace

std::optional<ShapeGradient> ShapeGradient::fromXml(const XmlElement &element, DrawableLoader &loader)
{
    const DrawableAttributes attributes(element, loader);
    ShapeGradient gradient;
    switch (const int kind = attributes.integer(Attr::Type, int(Kind::Linear))) {
    case int(Kind::Linear):
    case int(Kind::Sweep):
        gradient.m_kind = Kind(kind);
        break;
    case int(Kind::Radial):
        gradient.m_kind = Kind::Radial;
        if (gradient.readRadius(element, loader))
            break;
        loader.setError(DrawableFault::GradientWithoutRadius);
        return std::nullopt;
    default:
        loader.setError(DrawableFault::UnknownGradient, QString::number(kind));
        return std::nullopt;
    }
    gradient.m_angle = int(std::fmod(std::fmod(attributes.number(Attr::Angle, 0), 360) + 360, 360));
    const auto ratio = [&](quint32 id) { return qBound(-MaxRatio, attributes.ratio(id, Middle), MaxRatio); };
    gradient.m_center = {ratio(Attr::CenterX), ratio(Attr::CenterY)};
    gradient.m_isAtLevel = attributes.boolean(Attr::UseLevel, false);
    gradient.readColors(element, loader);
    return gradient;
}

bool ShapeGradient::readRadius(const XmlElement &element, DrawableLoader &loader)
{
    const DrawableAttributes attributes(element, loader);
    const TypedValue value = attributes.value(Attr::GradientRadius).value;
    if (const auto fraction = value.fraction()) {
        m_radius = *fraction;
        m_radiusUnit = isFractionOfParent(value) ? RadiusUnit::PartOfBounds : RadiusUnit::PartOfSize;
        return true;
    }
    const auto pixels = value.pixels(loader.pixelsPerDp());
    m_radius = pixels.value_or(0);
    return pixels.has_value();
}

void ShapeGradient::readColors(const XmlElement &element, DrawableLoader &loader)
{
    const DrawableAttributes attributes(element, loader);
    const auto color = [&](quint32 id) { return attributes.color(id, Qt::transparent); };
    m_stops = {{0, color(Attr::StartColor)}, {1, color(Attr::EndColor)}};
    if (!attributes.has(Attr::CenterColor))
        return;
    // The centre colour of a linear gradient is at centerX or, when that is in the middle, at centerY.
    qreal position = Middle;
    if (m_kind == Kind::Linear)
        position = qFuzzyCompare(m_center.x(), Middle) ? m_center.y() : m_center.x();
    position = qBound(MinStopDistance, position, 1 - MinStopDistance);
    m_stops.insert(1, {position, color(Attr::CenterColor)});
}

void ShapeGradient::changeColors(const std::function<QColor(const QColor &)> &change)
{
    for (QGradientStop &stop : m_stops)
        stop.second = change(stop.second);
}

qreal ShapeGradient::radius(const QRectF &rect, const QSizeF &size) const
{
    qreal radius = m_radius;
    if (m_radiusUnit == RadiusUnit::PartOfBounds)
        radius *= qMin(rect.width(), rect.height());
    else if (m_radiusUnit == RadiusUnit::PartOfSize)
        radius *=
            qMin(size.width() < 0 ? rect.width() : size.width(), size.height() < 0 ? rect.height() : size.height());
    return qMax(MinRadius, PaintBounds::clamped(radius));
}

QBrush ShapeGradient::brush(const QRectF &rect, const QSizeF &size) const
{
    if (m_isAtLevel)
        return m_stops.last().second;
    const QPointF center(rect.x() + m_center.x() * rect.width(), rect.y() + m_center.y() * rect.height());
    switch (m_kind) {
    case Kind::Radial: {
        QRadialGradient gradient(center, radius(rect, size));
        gradient.setStops(m_stops);
        return gradient;
    }
    case Kind::Sweep: {
        // Qt's conical gradient is counter-clockwise.
        QGradientStops stops;
        for (const QGradientStop &stop : m_stops)
            stops.prepend({1 - stop.first, stop.second});
        QConicalGradient gradient(center, 0);
        gradient.setStops(stops);
        return gradient;
    }
    case Kind::Linear:
        break;
    }
    QLinearGradient gradient = linearGradient(m_angle, rect);
    gradient.setStops(m_stops);
    return gradient;
}

} // namespace SorrelKit
