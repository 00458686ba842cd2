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
 * A shape of few parameters: `shape`, with the elements `solid` or `gradient` (the last of them counts), `stroke`, `corners`,
 * `size` and `padding`. It is in the middle of its stroke, which goes along the edge of the bounds, within them.
 *
 * A line goes across, half way down, and has a stroke alone. A ring's radii are dimensions or parts of the width. One that
 * depends on the level, as it does unless `android:useLevel` is false, is drawn as at level 0, where it has no extent:
 * not at all.
 */
class ShapeDrawable : public Drawable
{
public:
    /// What is drawn through, as if it had no gaps: an outline that would have more dashes than this, dashes that with their
    /// gap are shorter than a part of a pixel or of the stroke's width, and a stroke that is wider than any icon's. A painter
    /// takes seconds for them, as each dash is a shape of its own.
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
    /// A radius in pixels, or when that is negative, the width divided by the ratio.
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
        /// How many dashes an outline of @p length has; 0 when it is drawn through.
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
    std::array<qreal, 4> m_radii{}; ///< from the top left on, clockwise
    QColor m_solid = Qt::transparent;
    std::optional<ShapeGradient> m_gradient;
    Stroke m_stroke;
    QSizeF m_size{-1, -1};
    QMarginsF m_padding;
};

} // namespace SorrelKit

#endif
