// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DRAWABLE_H
#define SORRELKIT_DRAWABLE_H

#include <QMarginsF>
#include <QRectF>
#include <QSizeF>

#include <memory>

namespace SorrelKit {

class Canvas;

/**
 * Something that Android draws: a picture, a colour, a shape, or drawables that are put together. DrawableLoader makes
 * them; one is drawn any number of times and does not change.
 *
 * Sizes are in pixels at the density that the drawable was loaded for.
 */
class Drawable
{
public:
    /// Levels of a drawable go from 0, the first one, to this one.
    static constexpr int MaxLevel = 10000;

    virtual ~Drawable() = default;

    /// The size that it has of itself; a side that it has none for is -1, and takes whatever it is drawn into.
    virtual QSizeF intrinsicSize() const { return {-1, -1}; }
    /// The space at its edges that it asks what it contains to keep. It does not change what is drawn, but where the layers
    /// go that are above it in a layer list.
    virtual QMarginsF padding() const { return {}; }
    /// Draws it into @p bounds, which may lie anywhere and be empty. What does not fit into the canvas's budget is left
    /// out, as Canvas::isSpent() tells.
    virtual void draw(Canvas &canvas, const QRectF &bounds) const = 0;
};

using DrawablePointer = std::unique_ptr<Drawable>;

} // namespace SorrelKit

#endif
