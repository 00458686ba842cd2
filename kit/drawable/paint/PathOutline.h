// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PATHOUTLINE_H
#define SORRELKIT_PATHOUTLINE_H

#include <QPainterPath>
#include <QPolygonF>
#include <QRectF>
#include <QSize>
#include <QTransform>
#include <QVector>

namespace SorrelKit {

/**
 * The area of a path as polygons within a rectangle, so that the work of a painter is known before it fills them.
 * Points outside of the rectangle are moved to its border. There they wind around the same points as before, and are
 * not visible. Curves outside are not divided.
 *
 * For each pixel that an edge crosses, a painter searches the pixels that other edges crossed in the same row. A few
 * thousand edges across a whole picture take half a minute.
 */
class PathOutline
{
public:
    /// Points at most. They bound the memory of the polygons and of a painter.
    static constexpr int MaxPoints = 1 << 18;
    /// The distance in pixels of a polygon from its curve at most.
    static constexpr qreal Tolerance = 0.02;
    /// Halvings of a curve within each other at most. They suffice for a curve around the largest canvas.
    static constexpr int MaxHalvings = 10;

    /// Keeps the part inside @p visible. @p toPixels maps its coordinates to those of a canvas of @p size. The outline
    /// is given up when it costs more than @p maxWork.
    PathOutline(const QRectF &visible, const QTransform &toPixels, QSize size, qint64 maxWork);

    /// Adds @p path. @p transform maps it to the coordinates of the visible rectangle. False when the outline is given
    /// up. Precondition: the mapped coordinates are finite.
    bool add(const QPainterPath &path, const QTransform &transform);

    /// The polygons, closed, with the fill rule of the path.
    const QPainterPath &polygons() const { return m_polygons; }
    /// The work of a painter to find the pixels of the polygons.
    qint64 edgeWork() const;
    /// The pixels in the rectangle around the polygons.
    qint64 area() const;

private:
    void moveTo(QPointF point);
    void lineTo(QPointF point);
    void curveTo(const QPointF *points, int halvings, bool isInside);
    void close();
    void append(QPointF point);
    void count(QPointF to, int toRow);
    int pointCount() const { return m_closedPoints + int(m_figure.size()); }
    bool isInside(const QPointF *points, int count) const;
    bool isAside(const QPointF *points, int count) const;
    QPointF clamped(QPointF point) const;
    QPointF toPixels(QPointF point) const;
    int row(qreal y) const;

    QRectF m_visible;
    QTransform m_toPixels;
    QSize m_size;
    qint64 m_maxWork;
    qreal m_flatness; ///< the square of the tolerance in the coordinates of the visible rectangle
    QPainterPath m_polygons;
    int m_closedPoints = 0; ///< of the polygons
    QPolygonF m_figure;     ///< the polygon that is not closed yet
    QVector<int> m_met;     ///< pixels that edges cross, in each row of the canvas
    qint64 m_meetings = 0;  ///< in all rows
    qint64 m_steps = 0;     ///< of the searches in the rows
    QPointF m_start;        ///< the start of the figure
    QPointF m_point;        ///< the current point of the path
    QPointF m_pixel;        ///< the current point of the polygon, in pixels
    int m_row = 0;          ///< of the canvas that has this point
    qreal m_left = 0;       ///< of all polygons on the canvas, as are the next three
    qreal m_right = 0;
    int m_topRow = 0;
    int m_bottomRow = 0;
    bool m_isOpen = false;
};

} // namespace SorrelKit

#endif
