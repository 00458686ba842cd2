// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ReportRows.h"

#include "PrintableText.h"

void ReportRows::add(const QString &key, const QString &value, Emphasis emphasis)
{
    addSafe(key, isolatedText(value), emphasis);
}

void ReportRows::addSafe(const QString &key, const QString &value, Emphasis emphasis)
{
    m_rows.append({printableText(key), value, emphasis});
}

QString ReportRows::toText(const TextStyle &style) const
{
    constexpr int MinKeyWidth = 16;
    int width = MinKeyWidth;
    for (const Row &row : m_rows)
        width = qMax(width, int(row.key.size()));
    QString text;
    for (const Row &row : m_rows) {
        QString value = row.value;
        if (row.emphasis == Emphasis::Strong)
            value = style.strong(value);
        else if (row.emphasis == Emphasis::Error)
            value = style.error(value);
        text += style.key(row.key.leftJustified(width)) + QLatin1Char(' ') + value + QLatin1Char('\n');
    }
    return text;
}
