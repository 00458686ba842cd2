// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SCALEDRAWABLE_H
#define SORRELKIT_SCALEDRAWABLE_H

#include "drawable/paint/Gravity.h"
#include "drawable/source/Drawable.h"

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/**
 * A drawable whose size depends on its level: `scale`. It fills its bounds at the highest level. At a level that is
 * lower by some part of the range, each side is shorter by its share (`android:scaleWidth`, `android:scaleHeight`,
 * "30%") of this part.
 *
 * The level is `android:level`, or 0. Nothing is drawn at level 0, as on Android.
 */
class ScaleDrawable : public Drawable
{
public:
    ScaleDrawable(DrawablePointer drawable, int level);
    static DrawablePointer fromXml(const XmlElement &element, DrawableLoader &loader);

    QSizeF intrinsicSize() const override { return m_drawable->intrinsicSize(); }
    QMarginsF padding() const override { return m_drawable->padding(); }
    void draw(Canvas &canvas, const QRectF &bounds) const override;

private:
    DrawablePointer m_drawable;
    int m_level;
    QSizeF m_shares{-1, -1}; ///< at most 1; a side without a share keeps its length
    int m_gravity = Gravity::Left;
    bool m_hasMinimum = false; ///< a side is never shorter than the drawable's
};

} // namespace SorrelKit

#endif
