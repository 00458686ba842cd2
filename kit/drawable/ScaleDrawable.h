// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SCALEDRAWABLE_H
#define SORRELKIT_SCALEDRAWABLE_H

#include "drawable/paint/Gravity.h"
#include "drawable/source/Drawable.h"

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/**
 * A drawable that is the smaller the lower its level is: `scale`. At the highest level it fills its bounds; at others
 * each side lacks its share (`android:scaleWidth`, `android:scaleHeight`, "30%") of what is missing to the highest level.
 *
 * The level is `android:level`, or 0, at which Android draws nothing, and so does this.
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
    QSizeF m_shares{-1, -1}; ///< at most 1; a side that has none does not change
    int m_gravity = Gravity::Left;
    bool m_hasMinimum = false; ///< the drawable's own size
};

} // namespace SorrelKit

#endif
