// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_VECTORDRAWABLE_H
#define SORRELKIT_VECTORDRAWABLE_H

#include "drawable/color/Tint.h"
#include "drawable/source/Drawable.h"
#include "drawable/vector/VectorGroup.h"

#include <optional>

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/**
 * The element `vector`: paths in the coordinates of a viewport, which is stretched to the bounds. The part outside of
 * the viewport is not visible. A tint and an alpha apply to the whole vector.
 *
 * DrawableInflater mirrors a vector with `android:autoMirrored` where the layout runs from right to left.
 */
class VectorDrawable : public Drawable
{
public:
    /// Sides of a viewport, and of the intrinsic size, at most.
    static constexpr qreal MaxSide = 1 << 20;

    /// Null, with an error, when the viewport or all paths are missing.
    static DrawablePointer fromXml(const XmlElement &element, DrawableLoader &loader);

    QSizeF intrinsicSize() const override { return m_size; }
    void draw(Canvas &canvas, const QRectF &bounds) const override;

private:
    VectorDrawable(QSizeF viewport, QSizeF size, VectorGroup group);

    QSizeF m_viewport;
    QSizeF m_size;
    VectorGroup m_group;
    qreal m_alpha = 1;
    std::optional<Tint> m_tint;
};

} // namespace SorrelKit

#endif
