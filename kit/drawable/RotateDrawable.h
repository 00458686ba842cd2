// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ROTATEDRAWABLE_H
#define SORRELKIT_ROTATEDRAWABLE_H

#include "drawable/source/Drawable.h"

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/**
 * A turned drawable: `rotate`, at `android:fromDegrees`, clockwise, as the level of a drawable is 0 at first. The point that
 * it turns about is the middle unless it is given: as a fraction of the bounds, or in pixels from their corner.
 *
 * `animated-rotate` turns from 0 on, and is drawn as it starts.
 */
class RotateDrawable : public Drawable
{
public:
    /// One coordinate of the point: pixels, or a part of the side.
    struct Pivot {
        qreal value = 0.5;
        bool isFraction = true;
    };

    RotateDrawable(DrawablePointer drawable, qreal degrees, const Pivot &x, const Pivot &y);
    static DrawablePointer fromXml(const XmlElement &element, DrawableLoader &loader);

    QSizeF intrinsicSize() const override { return m_drawable->intrinsicSize(); }
    QMarginsF padding() const override { return m_drawable->padding(); }
    void draw(Canvas &canvas, const QRectF &bounds) const override;

private:
    DrawablePointer m_drawable;
    qreal m_degrees;
    Pivot m_x;
    Pivot m_y;
};

} // namespace SorrelKit

#endif
