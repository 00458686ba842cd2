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
 * A drawable of Android: a picture, a colour, a shape, or a combination of drawables. DrawableLoader makes it. A
 * drawable does not change, and may be drawn any number of times.
 *
 * Sizes are in pixels of the device that the drawable was loaded for.
 */
class Drawable
{
public:
    /// Levels of a drawable go from 0, the first one, to this one.
    static constexpr int MaxLevel = 10000;

    virtual ~Drawable() = default;

    /// The size without a container. A side of -1 adapts to any container.
    virtual QSizeF intrinsicSize() const { return {-1, -1}; }
    /// The space at the edges that content should keep free. It moves the layers above this one in a layer list.
    virtual QMarginsF padding() const { return {}; }
    /// Draws into @p bounds, which may be anywhere, and empty. Parts that do not fit in the budget are left out, and
    /// Canvas::isSpent() is then true.
    virtual void draw(Canvas &canvas, const QRectF &bounds) const = 0;
};

using DrawablePointer = std::unique_ptr<Drawable>;

} // namespace SorrelKit

#endif
