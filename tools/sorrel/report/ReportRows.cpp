// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ReportRows.h"

#include "PrintableText.h"

namespace {

bool isWide(char32_t character)
{
    constexpr struct {
        char32_t first;
        char32_t last;
    } wide[] = {{0x1100, 0x115f}, {0x2e80, 0xa4cf}, {0xac00, 0xd7a3},  {0xf900, 0xfaff},
                {0xfe30, 0xfe6f}, {0xff00, 0xff60}, {0x20000, 0x3fffd}};
    for (const auto &range : wide) {
        if (character >= range.first && character <= range.last)
            return true;
    }
    return false;
}

// The columns that @p text takes on a terminal.
int columnsOf(const QString &text)
{
    int columns = 0;
    forEachCharacter(text, [&](int, int, char32_t character) {
        const QChar::Category category = QChar::category(character);
        if (category != QChar::Mark_NonSpacing && category != QChar::Mark_Enclosing && category != QChar::Other_Format)
            columns += isWide(character) ? 2 : 1;
    });
    return columns;
}

// The spaces that indent @p text stay outside of an isolate.
QString isolatedKey(const QString &text)
{
    int spaces = 0;
    while (spaces < text.size() && text.at(spaces) == QLatin1Char(' '))
        ++spaces;
    return text.left(spaces) + isolatedText(text.mid(spaces));
}

} // namespace

void ReportRows::add(const QString &key, const QString &value, Emphasis emphasis)
{
    addSafe(key, isolatedText(value), emphasis);
}

void ReportRows::addSafe(const QString &key, const QString &value, Emphasis emphasis)
{
    m_rows.append({isolatedKey(key), value, emphasis});
}

QString ReportRows::toText(const TextStyle &style) const
{
    constexpr int MinKeyWidth = 16;
    int width = MinKeyWidth;
    for (const Row &row : m_rows)
        width = qMax(width, columnsOf(row.key));
    QString text;
    for (const Row &row : m_rows) {
        QString value = row.value;
        if (row.emphasis == Emphasis::Strong)
            value = style.strong(value);
        else if (row.emphasis == Emphasis::Error)
            value = style.error(value);
        text += style.key(row.key + QString(width - columnsOf(row.key), QLatin1Char(' '))) + QLatin1Char(' ') + value
                + QLatin1Char('\n');
    }
    return text;
}
