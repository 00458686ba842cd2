// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_MIRROREDDRAWABLE_H
#define SORRELKIT_MIRROREDDRAWABLE_H

#include "drawable/source/Drawable.h"

namespace SorrelKit {

/**
 * A drawable with left and right exchanged, as Android draws a `bitmap`, a `nine-patch` or a `vector` with
 * `android:autoMirrored` where the layout runs from right to left. In a `selector`, a `level-list` and an
 * `animation-list`, that attribute of the list replaces the one of the shown item; only a `selector` has it.
 */
class MirroredDrawable : public Drawable
{
public:
    explicit MirroredDrawable(DrawablePointer drawable);
    /// @p drawable, mirrored when @p isMirrored is true, whether it was before or not. Null stays null.
    static DrawablePointer mirrored(DrawablePointer drawable, bool isMirrored);

    QSizeF intrinsicSize() const override { return m_drawable->intrinsicSize(); }
    QMarginsF padding() const override;
    void draw(Canvas &canvas, const QRectF &bounds) const override;

private:
    DrawablePointer m_drawable;
};

} // namespace SorrelKit

#endif
