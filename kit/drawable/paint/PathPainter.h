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
 * Paints paths into bounds of a canvas, in the coordinates of a viewport. The part outside of the viewport is not
 * visible. The cost of a path is spent before it is painted.
 *
 * The state of the canvas's painter is changed while this object lives. Meets raw input: paths and widths of any size,
 * degenerate transformations, bounds that are empty or not finite.
 */
class PathPainter
{
public:
    /// The largest coordinate of a path or a gradient, either way. Android holds them as floats, which have no odd
    /// numbers beyond.
    static constexpr qreal MaxCoordinate = 1 << 24;
    /// Elements of a stroked path at most. Each becomes up to a hundred. A longer stroke is left out.
    static constexpr int MaxStrokedElements = 1 << 14;

    /// A path that others are cut to. The transformation maps it to the viewport.
    struct Mask {
        QPainterPath path;
        QTransform transform;
    };

    /// Maps @p viewport, which is not empty, to @p bounds.
    PathPainter(Canvas *canvas, const QRectF &bounds, const QRectF &viewport);
    ~PathPainter();

    /// Fills @p path. @p transform maps the path and the gradient of @p brush to the viewport.
    void fill(const QPainterPath &path, const QTransform &transform, const QBrush &brush, qreal opacity);
    /// Strokes @p path. @p transform applies to the pen, too. A width of 0 means one pixel.
    void stroke(const QPainterPath &path, const QTransform &transform, const QPen &pen, qreal opacity);
    /// Calls @p paint, and shows only the part of the result inside all @p masks.
    void paintMasked(const QVector<Mask> &masks, const std::function<void()> &paint);
    /// Makes @p layer, which has the size of the canvas, transparent outside of @p mask.
    void cut(QImage *layer, const Mask &mask);

private:
    Q_DISABLE_COPY(PathPainter)

    /// Fills @p path. @p transform maps the path to the viewport; @p brush has the coordinates of the viewport.
    void paint(const QPainterPath &path, const QTransform &transform, const QBrush &brush, qreal opacity);
    /// The outline of @p path, after the work to fill it was spent; nothing when there is too little work left.
    std::optional<PathOutline> outline(const QPainterPath &path, const QTransform &transform, qint64 costPerPixel);

    Canvas *m_canvas;
    QTransform m_toPixels;
    QRectF m_visible; ///< the part of the viewport that is on the canvas
};

} // namespace SorrelKit

#endif
