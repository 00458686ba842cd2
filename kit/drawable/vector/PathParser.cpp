// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/vector/PathParser.h"

#include "drawable/paint/PathPainter.h"

#include <QLocale>
#include <QStringView>
#include <QTransform>
#include <QtMath>

#include <cmath>
#include <iterator>
#include <optional>

namespace SorrelKit {

namespace {

constexpr int MaxNumbers = 7; // of a command
constexpr int NoCommand = -1;

// The number of numbers of a command, an upper-case letter.
int numberCount(char16_t command)
{
    switch (command) {
    case u'Z':
        return 0;
    case u'H':
    case u'V':
        return 1;
    case u'M':
    case u'L':
    case u'T':
        return 2;
    case u'S':
    case u'Q':
        return 4;
    case u'C':
        return 6;
    case u'A':
        return 7;
    default:
        return NoCommand;
    }
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// The number of a few decimal digits, without the general conversion, which takes most of the time of a path.
class DecimalNumber
{
public:
    void append(int digit)
    {
        m_isExact = m_isExact && m_digits <= MaxExact / 10 - 1;
        if (m_isExact)
            m_digits = m_digits * 10 + digit;
    }
    /// The number whose last @p fractionDigits digits are behind the point; nothing when it has too many digits. The
    /// digits and the power of ten are exact, so the quotient is the double that is closest to the number.
    std::optional<qreal> value(int fractionDigits) const
    {
        static constexpr qreal powers[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12};
        if (!m_isExact || fractionDigits >= int(std::size(powers)))
            return std::nullopt;
        return qreal(m_digits) / powers[fractionDigits];
    }

private:
    static constexpr qint64 MaxExact = qint64(1) << 53;

    qint64 m_digits = 0;
    bool m_isExact = true;
};

bool isInRange(QPointF point)
{
    return std::abs(point.x()) <= PathPainter::MaxCoordinate && std::abs(point.y()) <= PathPainter::MaxCoordinate;
}

} // namespace

PathParser::PathParser(const QString &data, Budget &budget) : m_data(data), m_budget(budget)
{
    if (m_budget.spendWork(data.size() * CharacterWork))
        read();
    else
        m_error = {DrawableFault::TooMuchDrawing, QString()};
}

void PathParser::read()
{
    skipSeparators();
    while (!m_error && m_at < m_data.size()) {
        const QChar letter = m_data.at(m_at);
        if (numberCount(letter.toUpper().unicode()) == NoCommand) {
            setFault(DrawableFault::NoCommand);
            return;
        }
        ++m_at;
        if (!readCommand(letter.unicode()))
            return;
        skipSeparators();
    }
}

// Reads all sets of numbers of the command @p letter.
bool PathParser::readCommand(char16_t letter)
{
    constexpr int LargeFlag = 3;
    constexpr int SweepFlag = 4;
    const char16_t command = QChar(letter).toUpper().unicode();
    const int count = numberCount(command);
    do {
        qreal numbers[MaxNumbers] = {};
        for (int i = 0; i < count; ++i) {
            const bool isFlag = command == u'A' && (i == LargeFlag || i == SweepFlag);
            skipSeparators();
            if (isFlag ? !readFlag(&numbers[i]) : !readNumber(&numbers[i]))
                return false;
        }
        apply(letter, numbers);
        if (letter == u'M')
            letter = u'L';
        else if (letter == u'm')
            letter = u'l';
        skipSeparators();
    } while (!m_error && count > 0 && isAtNumber());
    return !m_error;
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

void PathParser::skipSeparators()
{
    while (m_at < m_data.size() && (m_data.at(m_at).isSpace() || m_data.at(m_at) == u','))
        ++m_at;
}

bool PathParser::isAtNumber() const
{
    if (m_at >= m_data.size())
        return false;
    const QChar c = m_data.at(m_at);
    return isDigit(c) || c == u'.' || c == u'-' || c == u'+';
}

bool PathParser::readNumber(qreal *number)
{
    int at = m_at;
    const auto is = [&](char16_t c) { return at < m_data.size() && m_data.at(at) == c; };
    DecimalNumber decimal;
    const auto skipDigits = [&]() {
        const int start = at;
        for (; at < m_data.size() && isDigit(m_data.at(at)); ++at)
            decimal.append(m_data.at(at).unicode() - u'0');
        return at - start;
    };
    const bool isNegative = is(u'-');
    if (isNegative || is(u'+'))
        ++at;
    const int wholeDigits = skipDigits();
    int fractionDigits = 0;
    if (is(u'.')) {
        ++at;
        fractionDigits = skipDigits();
    }
    if (wholeDigits + fractionDigits == 0) {
        setFault(DrawableFault::NoNumber);
        return false;
    }
    bool hasExponent = false;
    if (is(u'e') || is(u'E')) {
        const int mantissaEnd = at++;
        if (is(u'-') || is(u'+'))
            ++at;
        hasExponent = skipDigits() > 0;
        if (!hasExponent)
            at = mantissaEnd;
    }
    if (const auto value = hasExponent ? std::nullopt : decimal.value(fractionDigits))
        *number = isNegative ? -*value : *value;
    else
        *number = QLocale::c().toDouble(QStringView(m_data).mid(m_at, at - m_at));
    if (!(std::abs(*number) <= PathPainter::MaxCoordinate)) {
        setFault(DrawableFault::NumberTooLarge);
        return false;
    }
    m_at = at;
    return true;
}

bool PathParser::readFlag(qreal *flag)
{
    const QChar c = m_at < m_data.size() ? m_data.at(m_at) : QChar();
    if (c != u'0' && c != u'1') {
        setFault(DrawableFault::NoFlag);
        return false;
    }
    *flag = c == u'1' ? 1 : 0;
    ++m_at;
    return true;
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
    m_error = {fault, QString::number(m_at)};
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
