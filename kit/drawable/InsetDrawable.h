// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_INSETDRAWABLE_H
#define SORRELKIT_INSETDRAWABLE_H

#include "drawable/source/Drawable.h"

struct XmlElement;

namespace SorrelKit {

class DrawableAttributes;
class DrawableLoader;

/// A drawable that keeps off the edges of its bounds: `inset`. `android:inset` is for all four, the others for one each, and
/// each is a dimension or a fraction of the bounds.
class InsetDrawable : public Drawable
{
public:
    /// Both parts of one edge's inset.
    struct Edge {
        qreal of(qreal side) const { return pixels + fraction * side; }

        qreal pixels = 0;
        qreal fraction = 0;
    };
    struct Edges {
        Edge left;
        Edge top;
        Edge right;
        Edge bottom;
    };

    InsetDrawable(DrawablePointer drawable, const Edges &edges);
    static DrawablePointer fromXml(const XmlElement &element, DrawableLoader &loader);

    /// As large as it must be for the drawable within to have its own size.
    QSizeF intrinsicSize() const override { return m_size; }
    /// The insets, and what the drawable within asks for.
    QMarginsF padding() const override;
    void draw(Canvas &canvas, const QRectF &bounds) const override;

private:
    DrawablePointer m_drawable;
    Edges m_edges;
    QSizeF m_size; ///< kept, as drawables that ask each other would ask far too often
};

} // namespace SorrelKit

#endif
