// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SHAPEDRAWABLE_H
#define SORRELKIT_SHAPEDRAWABLE_H

#include "drawable/color/ShapeGradient.h"
#include "drawable/source/Drawable.h"

#include <QColor>
#include <QPainterPath>

#include <array>
#include <optional>

struct XmlElement;

namespace SorrelKit {

class DrawableAttributes;
class DrawableLoader;
class Tint;

/**
 * A rectangle, oval, line or ring: `shape`, with the elements `solid` or `gradient` (the last one counts), `stroke`,
 * `corners`, `size` and `padding`. The stroke is inside of the bounds, and the outline of the shape is its middle.
 *
 * A line is horizontal, at half the height, and has only a stroke. The radii of a ring are dimensions or fractions of
 * the width. A ring depends on the level unless `android:useLevel` is false. It has no extent at level 0, so it is not
 * drawn.
 */
class ShapeDrawable : public Drawable
{
public:
    /// A stroke is drawn without gaps when it would have more dashes than MaxDashes, when a dash and its gap are
    /// shorter than MinDashPixels or MinDashWidths times the width, or when it is wider than MaxDashedWidth. A painter
    /// makes a shape of each dash, and would take seconds.
    static constexpr qreal MaxDashes = 1024;
    static constexpr qreal MinDashPixels = 0.5;
    static constexpr qreal MinDashWidths = 0.125;
    static constexpr qreal MaxDashedWidth = 256;
    /// The work for a dash, and as much again for each DashWorkWidth pixels of its width.
    static constexpr qreal DashWork = 2048;
    static constexpr qreal DashWorkWidth = 8;

    static DrawablePointer fromXml(const XmlElement &element, DrawableLoader &loader);

    QSizeF intrinsicSize() const override { return m_size; }
    QMarginsF padding() const override { return m_padding; }
    void draw(Canvas &canvas, const QRectF &bounds) const override;

private:
    /// Values of `android:shape`.
    enum class Kind : int {
        Rectangle = 0,
        Oval = 1,
        Line = 2,
        Ring = 3,
    };
    /// A length in pixels. When it is negative, the length is the width divided by the ratio.
    struct RingLength {
        qreal of(qreal width) const;

        qreal pixels = -1;
        qreal ratio = 1;
    };
    struct Stroke {
        qreal width = 0;
        QColor color;
        qreal dash = 0;
        qreal gap = 0;

        qreal period() const { return dash + gap; }
        /// The number of dashes of an outline of @p length; 0 when it is drawn without gaps.
        qreal dashCount(qreal length) const;
    };

    bool readShape(const DrawableAttributes &attributes, DrawableLoader &loader);
    void readPart(const XmlElement &part, DrawableLoader &loader);
    void readCorners(const DrawableAttributes &attributes);
    void tint(const Tint &tint);
    QPainterPath outline(const QRectF &rect) const;
    QPainterPath roundedRectangle(const QRectF &rect) const;
    QPainterPath ring(const QRectF &rect) const;
    void paintStroke(Canvas &canvas, const QPainterPath &path, qreal length) const;

    Kind m_kind = Kind::Rectangle;
    RingLength m_innerRadius{-1, 3};
    RingLength m_thickness{-1, 9};
    bool m_isAtLevel = false;
    std::array<qreal, 4> m_radii{}; ///< clockwise from the top left
    QColor m_solid = Qt::transparent;
    std::optional<ShapeGradient> m_gradient;
    Stroke m_stroke;
    QSizeF m_size{-1, -1};
    QMarginsF m_padding;
};

} // namespace SorrelKit

#endif
