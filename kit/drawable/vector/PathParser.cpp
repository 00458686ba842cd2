// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/vector/PathParser.h"

#include "drawable/paint/PathPainter.h"

#include <QTransform>
#include <QtMath>

#include <cmath>

namespace SorrelKit {

namespace {

bool isInRange(QPointF point)
{
    return std::abs(point.x()) <= PathPainter::MaxCoordinate && std::abs(point.y()) <= PathPainter::MaxCoordinate;
}

} // namespace

PathParser::PathParser(const QString &data, Budget &budget) : m_lexer(data), m_budget(budget)
{
    if (m_budget.spendWork(data.size() * CharacterWork))
        read();
    else
        m_error = {DrawableFault::TooMuchDrawing, QString()};
}

void PathParser::read()
{
    PathLexer::Command command;
    while (!m_error && m_lexer.next(&command))
        apply(command.letter, command.numbers);
    if (!m_error)
        m_error = m_lexer.error();
}

void PathParser::apply(char16_t letter, const qreal *numbers)
{
    const char16_t command = QChar(letter).toUpper().unicode();
    const QPointF origin = letter == command ? QPointF() : m_point;
    const auto point = [&](int at) { return origin + QPointF(numbers[at], numbers[at + 1]); };
    switch (command) {
    case u'M':
        return moveTo(point(0));
    case u'L':
        return lineTo(point(0));
    case u'H':
        return lineTo({origin.x() + numbers[0], m_point.y()});
    case u'V':
        return lineTo({m_point.x(), origin.y() + numbers[0]});
    case u'C':
        return curveTo(point(0), point(2), point(4));
    case u'S':
        return curveTo(2 * m_point - m_cubicControl, point(0), point(2));
    case u'Q':
        return quadTo(point(0), point(2));
    case u'T':
        return quadTo(2 * m_point - m_quadControl, point(0));
    case u'A':
        return arcTo(numbers[0], numbers[1], numbers[2], numbers[3] != 0, numbers[4] != 0, point(5));
    default:
        return close();
    }
}

bool PathParser::spendSegment()
{
    if (m_budget.spendWork(SegmentWork) && m_budget.holdBytes(SegmentBytes))
        return true;
    m_error = {DrawableFault::TooMuchDrawing, QString()};
    return false;
}

void PathParser::setFault(DrawableFault fault)
{
    m_error = {fault, QString::number(m_lexer.position())};
}

void PathParser::moveTo(QPointF point)
{
    if (!spendSegment())
        return;
    if (!isInRange(point))
        return setFault(DrawableFault::CoordinateTooLarge);
    m_path.moveTo(point);
    m_point = m_start = m_cubicControl = m_quadControl = point;
    m_isOpen = true;
}

void PathParser::lineTo(QPointF point)
{
    if (!spendSegment())
        return;
    if (!isInRange(point))
        return setFault(DrawableFault::CoordinateTooLarge);
    if (!m_isOpen)
        m_path.moveTo(m_point);
    m_isOpen = true;
    m_path.lineTo(point);
    if (point == m_start)
        makeDot();
    m_point = m_cubicControl = m_quadControl = point;
}

void PathParser::curveTo(QPointF control1, QPointF control2, QPointF point)
{
    if (!spendSegment())
        return;
    if (!isInRange(control1) || !isInRange(control2) || !isInRange(point))
        return setFault(DrawableFault::CoordinateTooLarge);
    if (!m_isOpen)
        m_path.moveTo(m_point);
    m_isOpen = true;
    m_path.cubicTo(control1, control2, point);
    m_cubicControl = control2;
    m_point = m_quadControl = point;
}

void PathParser::quadTo(QPointF control, QPointF point)
{
    const QPointF start = m_point;
    curveTo(start + (control - start) * 2 / 3, point + (control - point) * 2 / 3, point);
    m_cubicControl = point;
    m_quadControl = control;
}

// Converts from end points to a centre. The ellipse is rotated back and scaled to a unit circle.
void PathParser::arcTo(qreal radiusX, qreal radiusY, qreal angle, bool isLarge, bool isClockwise, QPointF point)
{
    constexpr qreal QuarterTurn = M_PI / 2;
    const QPointF half = (m_point - point) / 2;
    QTransform turn;
    turn.rotate(std::fmod(angle, 360));
    const QPointF turned = turn.transposed().map(half);
    qreal x = turned.x() / std::abs(radiusX);
    qreal y = turned.y() / std::abs(radiusY);
    qreal distance = std::hypot(x, y);
    // An ellipse that is too small to reach both points is enlarged.
    const qreal enlargement = qMax(qreal(1), distance);
    x /= enlargement;
    y /= enlargement;
    distance = std::hypot(x, y);
    if (distance == 0)
        return;
    if (!std::isfinite(enlargement) || std::isnan(distance))
        return lineTo(point);
    const qreal toCenter = std::sqrt(qMax(qreal(0), 1 - distance * distance)) / distance;
    const QPointF offset = (isLarge == isClockwise ? -1 : 1) * toCenter * QPointF(y, -x);
    const QPointF from = QPointF(x, y) - offset;
    const QPointF to = QPointF(-x, -y) - offset;
    const qreal start = std::atan2(from.y(), from.x());
    qreal sweep = std::atan2(to.y(), to.x()) - start;
    if (isClockwise && sweep < 0)
        sweep += 2 * M_PI;
    else if (!isClockwise && sweep > 0)
        sweep -= 2 * M_PI;

    const QPointF middle = (m_point + point) / 2;
    const auto onPath = [&](QPointF unit) {
        const QPointF center = offset + unit;
        return middle + turn.map(QPointF(center.x() * std::abs(radiusX), center.y() * std::abs(radiusY)) * enlargement);
    };
    const int pieces = qBound(1, qCeil(std::abs(sweep) / QuarterTurn - 1e-9), 4);
    const qreal step = sweep / pieces;
    const qreal handle = std::tan(step / 4) * 4 / 3;
    for (int i = 0; i < pieces && !m_error; ++i) {
        const QPointF begin(std::cos(start + i * step), std::sin(start + i * step));
        const QPointF end(std::cos(start + (i + 1) * step), std::sin(start + (i + 1) * step));
        curveTo(onPath(begin + handle * QPointF(-begin.y(), begin.x())),
                onPath(end - handle * QPointF(-end.y(), end.x())), i + 1 < pieces ? onPath(end) : point);
    }
    m_cubicControl = point;
}

void PathParser::close()
{
    if (!spendSegment())
        return;
    if (m_path.elementCount() > 0 && m_path.elementAt(m_path.elementCount() - 1).isMoveTo())
        makeDot();
    else if (m_isOpen)
        m_path.closeSubpath();
    m_point = m_cubicControl = m_quadControl = m_start;
    m_isOpen = false;
}

// QPainterPath drops lines to the current point.
void PathParser::makeDot()
{
    constexpr qreal DotLength = 1e-6;
    const QPainterPath::Element last = m_path.elementAt(m_path.elementCount() - 1);
    if (last.isMoveTo())
        m_path.lineTo(last.x + DotLength, last.y);
}

} // namespace SorrelKit
