// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DiffPage.h"

#include "Markup.h"
#include "PageSource.h"

namespace {

const char *className(const DiffLine &line)
{
    if (line.isAlarming)
        return "alarming";
    switch (line.mark) {
    case DiffLine::Mark::Added:
        return "added";
    case DiffLine::Mark::Removed:
        return "removed";
    case DiffLine::Mark::Changed:
        return "changed";
    case DiffLine::Mark::None:
        break;
    }
    return "equal";
}

// For people who see no colours.
QString markText(DiffLine::Mark mark)
{
    const char *const marks[] = {"", "+", "\xe2\x88\x92", "~"};
    return QString::fromUtf8(marks[int(mark)]);
}

Markup cell(const char *className, const QString &text)
{
    return Markup::element("td", {{"class", QLatin1String(className)}}, Markup::element("bdi", {}, Markup::text(text)));
}

Markup row(const DiffLine &line)
{
    return Markup::element("tr", {{"class", QLatin1String(className(line))}},
                           cell("mark", markText(line.mark)) + cell("size", line.size) + cell("name", line.name)
                               + cell("value", line.value))
           + Markup::lineFeed();
}

Markup card(const DiffSection &section)
{
    Markup rows;
    for (const DiffLine &line : section.lines)
        rows += row(line);
    Markup content = Markup::element("h2", section.title) + Markup::lineFeed()
                     + Markup::element("table", {}, Markup::element("tbody", {}, Markup::lineFeed() + rows));
    if (section.unlisted > 0)
        content += Markup::element("p", QStringLiteral("and %1 more").arg(section.unlisted));
    return Markup::element("section", {{"class", QStringLiteral("card")}}, content) + Markup::lineFeed();
}

} // namespace

QByteArray DiffPage::toHtml(const DiffReport &report)
{
    const QByteArray style = PageSource::style({"catalog/page.css", "diff/diff.css"});
    Markup alarms;
    for (const QString &alarm : report.alarms())
        alarms += Markup::element("p", {{"class", QStringLiteral("problem")}, {"role", QStringLiteral("alert")}},
                                  Markup::text(alarm))
                  + Markup::lineFeed();
    Markup cards;
    for (const DiffSection &section : report.sections())
        cards += card(section);
    const QString title = report.before() + QStringLiteral(" \u2192 ") + report.after();
    const QByteArray policy =
        "default-src 'none'; style-src " + PageSource::hash(style) + "; base-uri 'none'; form-action 'none'";
    return PageSource::filled("diff/diff.html", {{"policy", policy},
                                                 {"style", style},
                                                 {"title", Markup::text(title).toUtf8()},
                                                 {"alarms", alarms.toUtf8()},
                                                 {"cards", cards.toUtf8()}});
}
