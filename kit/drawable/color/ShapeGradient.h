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
 * The element `gradient` of a shape. Its colours run across the shape's own rectangle: in a straight line at an angle that is
 * a multiple of 45 degrees (0 is from left to right, 90 from bottom to top; any other angle is from top to bottom), outwards
 * from a centre, or clockwise round it, from the right on.
 *
 * One whose parts depend on the level (`android:useLevel`) is drawn as at level 0, where it is over before it has begun:
 * its last colour is everywhere.
 */
class ShapeGradient
{
public:
    /// The gradient that @p element describes; nothing, with an error, when its kind is unknown, or it is radial and has no
    /// radius.
    static std::optional<ShapeGradient> fromXml(const XmlElement &element, DrawableLoader &loader);

    /// The brush for a shape in @p rect whose own size is @p size; a side that it has none for is that of the rectangle.
    QBrush brush(const QRectF &rect, const QSizeF &size) const;
    /// Puts what @p change makes of each colour in its place.
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
    QPointF m_center{0.5, 0.5}; ///< in parts of the sides
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
