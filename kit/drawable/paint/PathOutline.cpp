// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/paint/PathOutline.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace SorrelKit {

namespace {

constexpr int CurvePoints = 4;

// The work of a painter for a pixel that an edge crosses, and for a step of the search for that pixel.
constexpr qint64 MeetingWork = 32;
constexpr qint64 StepWork = 2;

qreal squared(qreal number)
{
    return number * number;
}

qreal squaredLength(QPointF vector)
{
    return squared(vector.x()) + squared(vector.y());
}

qreal scaleOf(const QTransform &transform)
{
    return qMax(std::hypot(transform.m11(), transform.m12()), std::hypot(transform.m21(), transform.m22()));
}

// The square of the largest distance of a curve from the line between its ends.
qreal squaredSag(const QPointF *points)
{
    constexpr qreal SagPerBend = 0.75;
    return SagPerBend * SagPerBend
           * qMax(squaredLength(points[0] - 2 * points[1] + points[2]),
                  squaredLength(points[1] - 2 * points[2] + points[3]));
}

} // namespace

PathOutline::PathOutline(const QRectF &visible, const QTransform &toPixels, QSize size, qint64 maxWork)
    : m_visible(visible),
      m_toPixels(toPixels),
      m_size(size),
      m_maxWork(maxWork),
      m_flatness(squared(Tolerance / scaleOf(toPixels))),
      m_met(size.height())
{
}

bool PathOutline::add(const QPainterPath &path, const QTransform &transform)
{
    m_polygons.setFillRule(path.fillRule());
    for (int i = 0; i < path.elementCount() && edgeWork() <= m_maxWork; ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isMoveTo()) {
            moveTo(transform.map(QPointF(element)));
        } else if (element.isLineTo()) {
            lineTo(transform.map(QPointF(element)));
        } else if (element.isCurveTo() && i + 2 < path.elementCount()) {
            const QPointF points[CurvePoints] = {m_point, transform.map(QPointF(element)),
                                                 transform.map(QPointF(path.elementAt(i + 1))),
                                                 transform.map(QPointF(path.elementAt(i + 2)))};
            curveTo(points, MaxHalvings, isInside(points, CurvePoints));
            i += 2;
        }
    }
    close();
    return edgeWork() <= m_maxWork;
}

// A painter goes through bands of rows and looks at every edge for each band.
qint64 PathOutline::edgeWork() const
{
    constexpr qint64 EdgeWork = 4;
    constexpr qint64 RowsPerWork = 4;
    if (pointCount() >= MaxPoints)
        return m_maxWork + 1;
    const qint64 rows = m_bottomRow - m_topRow;
    return m_meetings * MeetingWork + m_steps * StepWork + pointCount() * (EdgeWork + rows / RowsPerWork);
}

qint64 PathOutline::area() const
{
    const qreal width = qBound(qreal(0), m_right - m_left + 1, qreal(m_size.width()));
    return pointCount() == 0 ? 0 : qint64(width) * (m_bottomRow - m_topRow + 1);
}

void PathOutline::moveTo(QPointF point)
{
    close();
    m_start = m_point = point;
}

void PathOutline::lineTo(QPointF point)
{
    if (!m_isOpen)
        append(clamped(m_point));
    m_isOpen = true;
    const QPointF ends[] = {m_point, point};
    if (!isInside(ends, 2) && !isAside(ends, 2)) {
        // The position on the line, from 0 to 1; 1 when it does not cross.
        const auto cross = [](qreal from, qreal to, qreal border) {
            const bool isCrossing = (from < border && to > border) || (from > border && to < border);
            return isCrossing ? (border - from) / (to - from) : 1;
        };
        std::array<qreal, 4> crossings = {
            cross(m_point.x(), point.x(), m_visible.left()), cross(m_point.x(), point.x(), m_visible.right()),
            cross(m_point.y(), point.y(), m_visible.top()), cross(m_point.y(), point.y(), m_visible.bottom())};
        std::sort(crossings.begin(), crossings.end());
        for (const qreal crossing : crossings) {
            if (crossing < 1)
                append(clamped(m_point + crossing * (point - m_point)));
        }
    }
    append(clamped(point));
    m_point = point;
}

// The recursion ends: it is MaxHalvings deep at most. The parts of a curve inside are inside.
void PathOutline::curveTo(const QPointF *points, int halvings, bool isInside)
{
    const bool isLine = halvings == 0 || squaredSag(points) <= m_flatness;
    if (isLine && isInside && m_isOpen) {
        append(points[3]);
        m_point = points[3];
        return;
    }
    if (isLine || (!isInside && isAside(points, CurvePoints)) || edgeWork() > m_maxWork)
        return lineTo(points[3]);
    const QPointF middle = (points[1] + points[2]) / 2;
    const QPointF before = (points[0] + points[1]) / 2;
    const QPointF after = (points[2] + points[3]) / 2;
    const QPointF beforeMiddle = (before + middle) / 2;
    const QPointF afterMiddle = (middle + after) / 2;
    const QPointF half = (beforeMiddle + afterMiddle) / 2;
    const QPointF first[CurvePoints] = {points[0], before, beforeMiddle, half};
    const QPointF second[CurvePoints] = {half, afterMiddle, after, points[3]};
    curveTo(first, halvings - 1, isInside);
    curveTo(second, halvings - 1, isInside);
}

void PathOutline::close()
{
    if (!m_isOpen)
        return;
    lineTo(m_start);
    m_polygons.addPolygon(m_figure);
    m_polygons.closeSubpath();
    m_closedPoints = m_polygons.elementCount();
    m_figure.resize(0);
    m_isOpen = false;
}

void PathOutline::append(QPointF point)
{
    const QPointF pixel = toPixels(point);
    const int pixelRow = row(pixel.y());
    if (m_isOpen)
        count(pixel, pixelRow);
    if (m_figure.isEmpty() || point != m_figure.constLast())
        m_figure.append(point);
    const bool isFirst = pointCount() == 1;
    m_left = isFirst ? pixel.x() : qMin(m_left, pixel.x());
    m_right = isFirst ? pixel.x() : qMax(m_right, pixel.x());
    m_topRow = isFirst ? pixelRow : qMin(m_topRow, pixelRow);
    m_bottomRow = isFirst ? pixelRow : qMax(m_bottomRow, pixelRow);
    m_pixel = pixel;
    m_row = pixelRow;
}

void PathOutline::count(QPointF to, int toRow)
{
    const int first = qMin(m_row, toRow);
    const int last = qMax(m_row, toRow);
    const qreal width = qMin(std::abs(m_pixel.x() - to.x()), qreal(m_size.width()));
    const int met = 1 + int(width) / (last - first + 1);
    int *const metInRows = m_met.data();
    for (int i = first; i <= last; ++i) {
        // A search goes through half of the pixels on average.
        m_steps += met * qint64(qMin(metInRows[i], m_size.width())) / 2;
        metInRows[i] += met;
    }
    m_meetings += met * qint64(last - first + 1);
}

// Whether all points are inside of the rectangle, off its border.
bool PathOutline::isInside(const QPointF *points, int count) const
{
    return std::all_of(points, points + count, [this](QPointF point) {
        return point.x() > m_visible.left() && point.x() < m_visible.right() && point.y() > m_visible.top()
               && point.y() < m_visible.bottom();
    });
}

// Whether all points are outside of the same side. Then only the first and the last one matter.
bool PathOutline::isAside(const QPointF *points, int count) const
{
    const auto all = [&](auto test) { return std::all_of(points, points + count, test); };
    return all([this](QPointF point) { return point.x() <= m_visible.left(); })
           || all([this](QPointF point) { return point.x() >= m_visible.right(); })
           || all([this](QPointF point) { return point.y() <= m_visible.top(); })
           || all([this](QPointF point) { return point.y() >= m_visible.bottom(); });
}

QPointF PathOutline::clamped(QPointF point) const
{
    return {qBound(m_visible.left(), point.x(), m_visible.right()),
            qBound(m_visible.top(), point.y(), m_visible.bottom())};
}

// The transformation has no perspective.
QPointF PathOutline::toPixels(QPointF point) const
{
    return {m_toPixels.m11() * point.x() + m_toPixels.m21() * point.y() + m_toPixels.dx(),
            m_toPixels.m12() * point.x() + m_toPixels.m22() * point.y() + m_toPixels.dy()};
}

int PathOutline::row(qreal y) const
{
    return y > 0 ? int(qMin(y, qreal(m_size.height() - 1))) : 0;
}

} // namespace SorrelKit
