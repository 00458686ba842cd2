// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/vector/PathLexer.h"

#include "drawable/paint/PathPainter.h"

#include <QLocale>
#include <QStringView>

#include <cmath>
#include <iterator>
#include <optional>

namespace SorrelKit {

namespace {

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

char16_t upper(char16_t letter)
{
    return QChar(letter).toUpper().unicode();
}

} // namespace

bool PathLexer::isFlag(char16_t letter, int index)
{
    constexpr int LargeFlag = 3;
    constexpr int SweepFlag = 4;
    return upper(letter) == u'A' && (index == LargeFlag || index == SweepFlag);
}

bool PathLexer::next(Command *command)
{
    if (m_error || !findNumbers())
        return false;
    command->letter = m_letter;
    command->count = numberCount(upper(m_letter));
    for (int i = 0; i < command->count; ++i) {
        skipSeparators();
        qreal *const number = &command->numbers[i];
        if (isFlag(m_letter, i) ? !readFlag(number) : !readNumber(number))
            return false;
    }
    if (command->count == 0)
        m_letter = 0;
    else if (m_letter == u'M')
        m_letter = u'L';
    else if (m_letter == u'm')
        m_letter = u'l';
    return true;
}

// Finds the letter that comes next, and the numbers behind it.
bool PathLexer::findNumbers()
{
    for (skipSeparators(); m_at < m_data.size(); skipSeparators()) {
        if (m_letter != 0 && isAtNumber())
            return true;
        if (!readLetter())
            return false;
        skipSeparators();
        const bool isEmpty = m_at >= m_data.size() || numberCount(upper(m_data.at(m_at).unicode())) != NoCommand;
        if (!isEmpty || numberCount(upper(m_letter)) == 0)
            return true;
        m_letter = 0;
    }
    return false;
}

bool PathLexer::readLetter()
{
    const char16_t letter = m_data.at(m_at).unicode();
    if (numberCount(upper(letter)) == NoCommand) {
        setFault(DrawableFault::NoCommand);
        return false;
    }
    ++m_at;
    m_letter = letter;
    return true;
}

void PathLexer::setFault(DrawableFault fault)
{
    m_error = {fault, QString::number(m_at)};
}

void PathLexer::skipSeparators()
{
    while (m_at < m_data.size() && (m_data.at(m_at).isSpace() || m_data.at(m_at) == u','))
        ++m_at;
}

bool PathLexer::isAtNumber() const
{
    if (m_at >= m_data.size())
        return false;
    const QChar c = m_data.at(m_at);
    return isDigit(c) || c == u'.' || c == u'-' || c == u'+';
}

bool PathLexer::readNumber(qreal *number)
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

bool PathLexer::readFlag(qreal *flag)
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

} // namespace SorrelKit
