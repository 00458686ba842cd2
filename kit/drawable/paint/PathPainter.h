// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PATHPAINTER_H
#define SORRELKIT_PATHPAINTER_H

#include "drawable/paint/PathOutline.h"

#include <QBrush>
#include <QImage>
#include <QPainterPath>
#include <QPen>
#include <QRectF>
#include <QTransform>
#include <QVector>

#include <functional>
#include <optional>

namespace SorrelKit {

class Canvas;

/**
 * Paints paths into some bounds of a canvas, in coordinates of their own; what is outside of these is not seen. What a
 * path takes is taken off the canvas's budget before it is painted.
 *
 * The canvas's painter is another while this object lives. Meets raw input: paths and widths of any size, transformations
 * of which nothing can be seen, bounds that are empty or not finite.
 */
class PathPainter
{
public:
    /// The largest coordinate of a path or a gradient, either way. Android holds them as floats, which have no odd numbers
    /// beyond.
    static constexpr qreal MaxCoordinate = 1 << 24;
    /// Elements of a path that is stroked; the stroke of one that has more is left out. Each becomes up to a hundred.
    static constexpr int MaxStrokedElements = 1 << 14;

    /// A path that others are cut to, and what leads from its coordinates to those of the viewport.
    struct Mask {
        QPainterPath path;
        QTransform transform;
    };

    /// Maps @p viewport, which is not empty, to @p bounds.
    PathPainter(Canvas *canvas, const QRectF &bounds, const QRectF &viewport);
    ~PathPainter();

    /// Fills @p path. It and the gradient of @p brush have coordinates from which @p transform leads to the viewport's.
    void fill(const QPainterPath &path, const QTransform &transform, const QBrush &brush, qreal opacity);
    /// Strokes @p path, with a pen that is transformed as well. A width of 0 is that of one pixel.
    void stroke(const QPainterPath &path, const QTransform &transform, const QPen &pen, qreal opacity);
    /// Has @p paint paint what is seen only within each of @p masks.
    void paintMasked(const QVector<Mask> &masks, const std::function<void()> &paint);
    /// Makes @p layer, of the canvas's size, transparent outside of @p mask.
    void cut(QImage *layer, const Mask &mask);

private:
    Q_DISABLE_COPY(PathPainter)

    /// Fills @p path, which has coordinates from which @p transform leads to the viewport's; those of @p brush are these.
    void paint(const QPainterPath &path, const QTransform &transform, const QBrush &brush, qreal opacity);
    /// The outline of @p path, with what it takes to fill it taken off the budget; nothing when that is not to be had.
    std::optional<PathOutline> outline(const QPainterPath &path, const QTransform &transform, qint64 costPerPixel);

    Canvas *m_canvas;
    QTransform m_toPixels;
    QRectF m_visible; ///< what is both in the viewport and on the canvas
};

} // namespace SorrelKit

#endif
