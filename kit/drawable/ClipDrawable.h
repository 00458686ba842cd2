// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_CLIPDRAWABLE_H
#define SORRELKIT_CLIPDRAWABLE_H

#include "drawable/source/Drawable.h"

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/**
 * A drawable that is cut to a part, as a progress bar is: `clip`. The level sets the size of the part,
 * `android:clipOrientation` the sides that become shorter, and `android:gravity` the place of the part.
 *
 * The level is `android:level`, or 0. Nothing is drawn at level 0, as on Android.
 */
class ClipDrawable : public Drawable
{
public:
    /// Flags of `android:clipOrientation`.
    enum Orientation : int {
        Horizontal = 1,
        Vertical = 2,
    };

    ClipDrawable(DrawablePointer drawable, int level, int orientation, int gravity);
    static DrawablePointer fromXml(const XmlElement &element, DrawableLoader &loader);

    QSizeF intrinsicSize() const override { return m_drawable->intrinsicSize(); }
    QMarginsF padding() const override { return m_drawable->padding(); }
    void draw(Canvas &canvas, const QRectF &bounds) const override;

private:
    DrawablePointer m_drawable;
    int m_level;
    int m_orientation;
    int m_gravity;
};

} // namespace SorrelKit

#endif
