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

qreal length(QPointF vector)
{
    return std::hypot(vector.x(), vector.y());
}

qreal scaleOf(const QTransform &transform)
{
    return qMax(std::hypot(transform.m11(), transform.m12()), std::hypot(transform.m21(), transform.m22()));
}

// The largest distance of a curve from the line between its ends.
qreal sag(const QPointF *points)
{
    constexpr qreal SagPerBend = 0.75;
    return SagPerBend
           * qMax(length(points[0] - 2 * points[1] + points[2]), length(points[1] - 2 * points[2] + points[3]));
}

} // namespace

PathOutline::PathOutline(const QRectF &visible, const QTransform &toPixels, QSize size, qint64 maxWork)
    : m_visible(visible),
      m_toPixels(toPixels),
      m_size(size),
      m_maxWork(maxWork),
      m_flatness(Tolerance / scaleOf(toPixels)),
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
            curveTo(points, MaxHalvings);
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
    if (m_polygons.elementCount() >= MaxPoints)
        return m_maxWork + 1;
    const qint64 rows = row(m_bottomRight.y()) - row(m_topLeft.y());
    return m_meetings * MeetingWork + m_steps * StepWork + m_polygons.elementCount() * (EdgeWork + rows / RowsPerWork);
}

qint64 PathOutline::area() const
{
    const qreal width = qBound(qreal(0), m_bottomRight.x() - m_topLeft.x() + 1, qreal(m_size.width()));
    return m_polygons.isEmpty() ? 0 : qint64(width) * (row(m_bottomRight.y()) - row(m_topLeft.y()) + 1);
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
    if (!isAside(ends, 2)) {
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

// The recursion ends: it is MaxHalvings deep at most.
void PathOutline::curveTo(const QPointF *points, int halvings)
{
    if (halvings == 0 || isAside(points, CurvePoints) || sag(points) <= m_flatness || edgeWork() > m_maxWork)
        return lineTo(points[3]);
    const QPointF middle = (points[1] + points[2]) / 2;
    const QPointF before = (points[0] + points[1]) / 2;
    const QPointF after = (points[2] + points[3]) / 2;
    const QPointF beforeMiddle = (before + middle) / 2;
    const QPointF afterMiddle = (middle + after) / 2;
    const QPointF half = (beforeMiddle + afterMiddle) / 2;
    const QPointF first[CurvePoints] = {points[0], before, beforeMiddle, half};
    const QPointF second[CurvePoints] = {half, afterMiddle, after, points[3]};
    curveTo(first, halvings - 1);
    curveTo(second, halvings - 1);
}

void PathOutline::close()
{
    if (!m_isOpen)
        return;
    lineTo(m_start);
    m_polygons.closeSubpath();
    m_isOpen = false;
}

void PathOutline::append(QPointF point)
{
    const QPointF pixel = m_toPixels.map(point);
    if (m_isOpen) {
        m_polygons.lineTo(point);
        count(m_pixel, pixel);
    } else {
        m_polygons.moveTo(point);
    }
    const bool isFirst = m_polygons.elementCount() == 1;
    m_topLeft = isFirst ? pixel : QPointF(qMin(m_topLeft.x(), pixel.x()), qMin(m_topLeft.y(), pixel.y()));
    m_bottomRight = isFirst ? pixel : QPointF(qMax(m_bottomRight.x(), pixel.x()), qMax(m_bottomRight.y(), pixel.y()));
    m_pixel = pixel;
}

void PathOutline::count(QPointF from, QPointF to)
{
    const int first = row(qMin(from.y(), to.y()));
    const int last = row(qMax(from.y(), to.y()));
    const qreal width = qBound(qreal(0), std::abs(from.x() - to.x()), qreal(m_size.width()));
    const int met = 1 + int(width) / (last - first + 1);
    for (int i = first; i <= last; ++i) {
        // A search goes through half of the pixels on average.
        m_steps += met * qint64(qMin(m_met[i], m_size.width())) / 2;
        m_meetings += met;
        m_met[i] += met;
    }
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

int PathOutline::row(qreal y) const
{
    return int(qBound(qreal(0), std::floor(y), qreal(m_size.height() - 1)));
}

} // namespace SorrelKit
