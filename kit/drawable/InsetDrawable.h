// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_INSETDRAWABLE_H
#define SORRELKIT_INSETDRAWABLE_H

#include "drawable/source/Drawable.h"

struct XmlElement;

namespace SorrelKit {

class DrawableAttributes;
class DrawableLoader;

/// A drawable with a distance from the edges of its bounds: `inset`. `android:inset` is for all four edges,
/// `android:insetLeft` and so on for one. Each is a dimension or a fraction of the bounds.
class InsetDrawable : public Drawable
{
public:
    /// The inset of an edge: a number of pixels and a fraction of the side.
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

    /// The size at which the inner drawable has its intrinsic size.
    QSizeF intrinsicSize() const override { return m_size; }
    /// The insets and the padding of the inner drawable.
    QMarginsF padding() const override;
    void draw(Canvas &canvas, const QRectF &bounds) const override;

private:
    DrawablePointer m_drawable;
    Edges m_edges;
    QSizeF m_size; ///< stored: computing it anew at each level would take exponential time
};

} // namespace SorrelKit

#endif
