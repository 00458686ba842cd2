// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PATHOUTLINE_H
#define SORRELKIT_PATHOUTLINE_H

#include <QPainterPath>
#include <QRectF>
#include <QSize>
#include <QTransform>
#include <QVector>

namespace SorrelKit {

/**
 * The area of a path as polygons within a rectangle, which a painter can fill at a cost that is known before, wherever the
 * path was. What is outside of the rectangle is moved to its border, where it goes around the same points as before and
 * is not seen; curves there are not divided.
 *
 * A painter looks, for each pixel that an edge meets, through those that edges met in its row before. A path of some
 * thousand edges across all of a picture takes it half a minute; cost() tells.
 */
class PathOutline
{
public:
    /// Points at most, so that neither these polygons nor what a painter makes of them take much memory.
    static constexpr int MaxPoints = 1 << 18;
    /// By how many pixels a polygon may be beside its curve.
    static constexpr qreal Tolerance = 0.02;
    /// How often a curve is halved at most. That is enough for one around all of the largest canvas.
    static constexpr int MaxHalvings = 10;

    /// What is inside @p visible is kept. @p toPixels leads from its coordinates to those of a canvas of @p size. The
    /// outline is given up when it costs more than @p maxWork.
    PathOutline(const QRectF &visible, const QTransform &toPixels, QSize size, qint64 maxWork);

    /// Takes in @p path after @p transform, which leads to the coordinates of the visible rectangle. False when the
    /// outline is given up. Precondition: the coordinates are finite after the transformation.
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
    void curveTo(const QPointF *points, int halvings);
    void close();
    void append(QPointF point);
    void count(QPointF from, QPointF to);
    bool isAside(const QPointF *points, int count) const;
    QPointF clamped(QPointF point) const;
    int row(qreal y) const;

    QRectF m_visible;
    QTransform m_toPixels;
    QSize m_size;
    qint64 m_maxWork;
    qreal m_flatness; ///< the tolerance in the coordinates of the visible rectangle
    QPainterPath m_polygons;
    QVector<int> m_met;    ///< pixels that edges meet, in each row of the canvas
    qint64 m_meetings = 0; ///< all of them
    qint64 m_steps = 0;    ///< of the searches in the rows
    QPointF m_start;       ///< of the figure, as given
    QPointF m_point;       ///< where it is
    QPointF m_pixel;       ///< where the polygon is on the canvas
    QPointF m_topLeft;     ///< of all polygons on the canvas
    QPointF m_bottomRight;
    bool m_isOpen = false;
};

} // namespace SorrelKit

#endif
