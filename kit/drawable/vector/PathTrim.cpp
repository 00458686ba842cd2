// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/vector/PathTrim.h"

#include <QLineF>

#include <array>
#include <cmath>

namespace SorrelKit {

namespace {

// The number of chords that approximate the length of a curve.
constexpr int Chords = 16;

using Lengths = std::array<qreal, Chords + 1>;

/// A line or a cubic curve of a path.
class MeasuredSegment
{
public:
    explicit MeasuredSegment(QPointF from, QPointF to) : m_points{from, from, to, to}, m_isCurve(false) {}
    MeasuredSegment(QPointF from, QPointF control1, QPointF control2, QPointF to)
        : m_points{from, control1, control2, to}, m_isCurve(true)
    {
    }

    QPointF at(qreal t) const
    {
        if (!m_isCurve)
            return m_points[0] + t * (m_points[3] - m_points[0]);
        const qreal s = 1 - t;
        return s * s * s * m_points[0] + 3 * s * s * t * m_points[1] + 3 * s * t * t * m_points[2]
               + t * t * t * m_points[3];
    }

    /// The lengths up to the end of each chord. The last one is the length of the segment.
    Lengths lengths() const
    {
        Lengths lengths{};
        QPointF before = m_points[0];
        for (int i = 1; i <= Chords; ++i) {
            const QPointF point = at(qreal(i) / Chords);
            lengths[size_t(i)] = lengths[size_t(i) - 1] + QLineF(before, point).length();
            before = point;
        }
        return lengths;
    }

    /// Appends the part between the lengths @p from and @p to to @p path. When it @p isContinued, the part belongs to
    /// the current figure of the path.
    void appendPart(const Lengths &lengths, qreal from, qreal to, bool isContinued, QPainterPath *path) const
    {
        const qreal begin = parameter(lengths, from);
        const qreal end = parameter(lengths, to);
        if (!isContinued)
            path->moveTo(at(begin));
        if (m_isCurve)
            path->cubicTo(at(begin) + tangent(begin) * (end - begin) / 3, at(end) - tangent(end) * (end - begin) / 3,
                          at(end));
        else
            path->lineTo(at(end));
    }

private:
    QPointF tangent(qreal t) const
    {
        const qreal s = 1 - t;
        return 3
               * (s * s * (m_points[1] - m_points[0]) + 2 * s * t * (m_points[2] - m_points[1])
                  + t * t * (m_points[3] - m_points[2]));
    }

    // The parameter of the curve at a length.
    static qreal parameter(const Lengths &lengths, qreal length)
    {
        size_t chord = 1;
        while (chord < Chords && lengths[chord] < length)
            ++chord;
        const qreal step = lengths[chord] - lengths[chord - 1];
        const qreal part = step > 0 ? (length - lengths[chord - 1]) / step : 1;
        return (qreal(chord) - 1 + qBound(qreal(0), part, qreal(1))) / Chords;
    }

    QPointF m_points[4];
    bool m_isCurve;
};

/// The segments of one figure of a path, in order.
class Figure
{
public:
    /// The figure that begins at element @p first of @p path, which outlives this object.
    Figure(const QPainterPath &path, int first) : m_path(path), m_first(first) {}

    /// Calls @p use with each segment. Returns the index of the element after the figure.
    template <typename Use>
    int forEach(Use use) const
    {
        int at = m_first + 1;
        QPointF from = m_path.elementAt(m_first);
        while (at < m_path.elementCount() && !m_path.elementAt(at).isMoveTo()) {
            const bool isCurve = m_path.elementAt(at).isCurveTo();
            const QPointF to = m_path.elementAt(isCurve ? at + 2 : at);
            use(isCurve ? MeasuredSegment(from, m_path.elementAt(at), m_path.elementAt(at + 1), to)
                        : MeasuredSegment(from, to));
            at += isCurve ? 3 : 1;
            from = to;
        }
        return at;
    }

    /// Appends the part between two lengths to @p result, as a new figure.
    void appendPart(qreal from, qreal to, QPainterPath *result) const
    {
        qreal start = 0;
        bool isContinued = false;
        forEach([&](const MeasuredSegment &segment) {
            const Lengths lengths = segment.lengths();
            const qreal end = start + lengths.back();
            if (end > from && start < to) {
                segment.appendPart(lengths, qMax(from, start) - start, qMin(to, end) - start, isContinued, result);
                isContinued = true;
            }
            start = end;
        });
    }

private:
    const QPainterPath &m_path;
    int m_first;
};

} // namespace

PathTrim::PathTrim(qreal start, qreal end, qreal offset)
    : m_start(qBound(qreal(0), start, qreal(1))), m_end(qBound(qreal(0), end, qreal(1))), m_offset(std::fmod(offset, 1))
{
}

QPainterPath PathTrim::trimmed(const QPainterPath &path) const
{
    if (isNone())
        return path;
    QPainterPath result;
    result.setFillRule(path.fillRule());
    if (m_start == m_end)
        return result;
    for (int first = 0; first < path.elementCount();) {
        const Figure figure(path, first);
        qreal length = 0;
        first = figure.forEach([&](const MeasuredSegment &segment) { length += segment.lengths().back(); });
        if (!(length > 0))
            continue;
        const qreal start = length * std::fmod(m_start + m_offset, 1);
        const qreal end = length * std::fmod(m_end + m_offset, 1);
        if (start > end) {
            figure.appendPart(start, length, &result);
            figure.appendPart(0, end, &result);
        } else {
            figure.appendPart(start, end, &result);
        }
        break;
    }
    return result;
}

} // namespace SorrelKit
