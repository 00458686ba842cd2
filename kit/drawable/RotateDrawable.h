// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ROTATEDRAWABLE_H
#define SORRELKIT_ROTATEDRAWABLE_H

#include "drawable/source/Drawable.h"

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/**
 * A rotated drawable: `rotate`, by `android:fromDegrees` clockwise, its angle at level 0. The pivot is a fraction of
 * the bounds, or in pixels from their corner; the middle by default.
 *
 * `animated-rotate` starts at 0 degrees, and turns in AnimatedFrames steps of AnimatedFrameTime, by the loader's clock.
 * Its attributes for both are not public, so packages do not have them.
 */
class RotateDrawable : public Drawable
{
public:
    static constexpr int AnimatedFrames = 12;
    static constexpr int AnimatedFrameTime = 150;

    /// A coordinate of the pivot: pixels, or a fraction of the side.
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
