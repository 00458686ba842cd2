// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SHAPEGRADIENT_H
#define SORRELKIT_SHAPEGRADIENT_H

#include <QBrush>
#include <QGradient>
#include <QRectF>

#include <functional>
#include <optional>

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/**
 * The element `gradient` of a shape, across the rectangle of the shape. A linear gradient has an angle that is a
 * multiple of 45 degrees: 0 is from left to right, 90 from bottom to top; any other angle is from top to bottom. A
 * radial gradient goes outwards from a centre, and a sweep gradient clockwise around it, from the right.
 *
 * A gradient that depends on the level (`android:useLevel`) has its last colour everywhere, as at level 0.
 */
class ShapeGradient
{
public:
    /// The gradient that @p element describes; nothing, with an error, for an unknown type or a radial gradient without
    /// a radius.
    static std::optional<ShapeGradient> fromXml(const XmlElement &element, DrawableLoader &loader);

    /// The brush for a shape in @p rect. @p size is the size of the shape; -1 means the side of the rectangle.
    QBrush brush(const QRectF &rect, const QSizeF &size) const;
    /// Replaces each colour by @p change of it.
    void changeColors(const std::function<QColor(const QColor &)> &change);

private:
    /// Values of `android:type`.
    enum class Kind : int {
        Linear = 0,
        Radial = 1,
        Sweep = 2,
    };

    void readColors(const XmlElement &element, DrawableLoader &loader);
    bool readRadius(const XmlElement &element, DrawableLoader &loader);
    qreal radius(const QRectF &rect, const QSizeF &size) const;

    Kind m_kind = Kind::Linear;
    QGradientStops m_stops;
    int m_angle = 0;
    QPointF m_center{0.5, 0.5}; ///< in fractions of the sides
    qreal m_radius = 0;
    enum class RadiusUnit {
        Pixels,
        PartOfSize,
        PartOfBounds,
    } m_radiusUnit = RadiusUnit::Pixels;
    bool m_isAtLevel = false;
};

} // namespace SorrelKit

#endif
