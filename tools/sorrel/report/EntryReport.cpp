// SPDX-License-Identifier: LGPL-2.1-or-later
#include "EntryReport.h"

#include "ReportJson.h"

#include <QJsonObject>

using SorrelKit::Entry;

namespace {

QString kindName(const Entry &entry)
{
    return EntryReport::kinds().value(int(entry.kind()));
}

QJsonObject entryToJson(const Entry &entry)
{
    QJsonObject json{
        {QStringLiteral("kind"), kindName(entry)},
        {QStringLiteral("name"), entry.name()},
        {QStringLiteral("class"), entry.className()},
        {QStringLiteral("shown"), entry.isShown()},
        {QStringLiteral("permission"), entry.permission()},
        {QStringLiteral("labels"), ReportJson::labels(entry.labels())},
        {QStringLiteral("icons"), ReportJson::icons(entry.iconFiles())},
        {QStringLiteral("banners"), ReportJson::icons(entry.bannerFiles())},
    };
    const auto addText = [&json](const QString &key, const QString &text) {
        if (!text.isEmpty())
            json.insert(key, text);
    };
    addText(QStringLiteral("id"), entry.id());
    addText(QStringLiteral("defaultUrl"), entry.defaultUrl());
    addText(QStringLiteral("settingsActivity"), entry.settingsActivity());
    if (!entry.mimeTypes().isEmpty())
        json.insert(QStringLiteral("mimeTypes"), QJsonArray::fromStringList(entry.mimeTypes()));
    return json;
}

} // namespace

EntryReport::EntryReport(const SorrelKit::Package &package, const QString &kind, bool includesHidden)
{
    const bool isAll = kind == QLatin1String("all");
    const QStringList names = kinds();
    for (int i = 0; i < int(names.size()); ++i) {
        const auto number = Entry::Kind(i);
        if (isAll ? number == Entry::Kind::Launcher : names.at(i) != kind)
            continue;
        for (const Entry &entry : package.entries(number)) {
            if (includesHidden || entry.isShown())
                m_entries.append(entry);
        }
    }
}

QStringList EntryReport::kinds()
{
    return {
        QStringLiteral("launcher"),     QStringLiteral("television"), QStringLiteral("car"),
        QStringLiteral("car-service"),  QStringLiteral("watch-face"), QStringLiteral("home-screen"),
        QStringLiteral("tile"),         QStringLiteral("wallpaper"),  QStringLiteral("input-method"),
        QStringLiteral("screen-saver"), QStringLiteral("widget"),     QStringLiteral("share-target"),
        QStringLiteral("direct-share"), QStringLiteral("instant"),    QStringLiteral("shortcut"),
    };
}

ReportRows EntryReport::rows() const
{
    ReportRows rows;
    for (const Entry &entry : m_entries) {
        const QString place = entry.id().isEmpty() ? entry.name() : entry.id();
        const QString label = entry.label();
        const QString hidden = entry.isShown() ? QString() : QStringLiteral(", not shown");
        const QString text = label == entry.name() ? place : QStringLiteral("%1 (%2)").arg(label, place);
        rows.add(QStringLiteral("  ") + kindName(entry), text + hidden);
    }
    return rows;
}

QJsonArray EntryReport::toJson() const
{
    QJsonArray json;
    for (const Entry &entry : m_entries)
        json.append(entryToJson(entry));
    return json;
}
