// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DiffText.h"

#include "PrintableText.h"

QString DiffText::toText(const DiffReport &report) const
{
    QString text;
    for (const QString &alarm : report.alarms())
        text += m_style.error(printableText(alarm)) + QLatin1Char('\n');
    text += m_style.title(printableText(report.before()) + QStringLiteral(" \u2192 ") + printableText(report.after()))
            + QLatin1Char('\n');
    for (const DiffSection &section : report.sections())
        text += sectionText(section);
    return text;
}

QString DiffText::sectionText(const DiffSection &section) const
{
    // A longer name moves only its own value.
    constexpr int MaxNameWidth = 48;
    const int count = m_isWhole ? int(section.lines.size()) : qMin(int(section.lines.size()), MaxLines);
    int sizeWidth = 0;
    int nameWidth = 0;
    for (int i = 0; i < count; ++i) {
        sizeWidth = qMax(sizeWidth, int(section.lines.at(i).size.size()));
        const int width = int(section.lines.at(i).name.size());
        nameWidth = width <= MaxNameWidth ? qMax(nameWidth, width) : nameWidth;
    }
    QString text = QLatin1Char('\n') + m_style.key(section.title) + QLatin1Char('\n');
    for (int i = 0; i < count; ++i)
        text += lineText(section.lines.at(i), sizeWidth, nameWidth);
    const int rest = int(section.lines.size()) - count + section.unlisted;
    if (rest > 0)
        text += m_style.faint(QStringLiteral("    and %1 more").arg(rest)) + QLatin1Char('\n');
    return text;
}

QString DiffText::lineText(const DiffLine &line, int sizeWidth, int nameWidth) const
{
    constexpr char marks[] = {' ', '+', '-', '~'};
    QString text = QStringLiteral("%1 ").arg(QLatin1Char(marks[int(line.mark)]));
    if (sizeWidth > 0)
        text += line.size.rightJustified(sizeWidth) + QStringLiteral("  ");
    const QString name = printableText(line.name);
    text +=
        line.value.isEmpty() ? name : name.leftJustified(nameWidth) + QStringLiteral("  ") + printableText(line.value);
    if (line.isAlarming)
        return QStringLiteral("  ") + m_style.error(text) + QLatin1Char('\n');
    switch (line.mark) {
    case DiffLine::Mark::Added:
        text = m_style.added(text);
        break;
    case DiffLine::Mark::Removed:
        text = m_style.removed(text);
        break;
    case DiffLine::Mark::Changed:
        text = m_style.warning(text);
        break;
    case DiffLine::Mark::None:
        break;
    }
    return QStringLiteral("  ") + text + QLatin1Char('\n');
}
