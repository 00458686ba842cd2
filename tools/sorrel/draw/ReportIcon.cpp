// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ReportIcon.h"

#include "PngBytes.h"

#include <SorrelKit/DrawableRenderer.h>

#include <QJsonArray>

void addIcon(const PackageReport &report, const ReportContent &content, QJsonObject *json)
{
    if (content.iconSize == 0)
        return;
    SorrelKit::IconRequest request(content.iconSize);
    request.setMask(content.iconMask);
    const QImage icon = SorrelKit::DrawableRenderer(report.package()).icon(request);
    json->insert(QStringLiteral("icon"), QString::fromLatin1(pngBytes(icon).toBase64()));
}

void addLauncherIcons(const PackageReport &report, const ReportContent &content, QJsonObject *json)
{
    if (content.launcherIcons.isEmpty())
        return;
    constexpr int partCount = 4;
    SorrelKit::DrawableRenderer renderer(report.package());
    QJsonArray icons;
    const QList<QByteArray> words = content.launcherIcons.split(',');
    for (const QByteArray &word : words) {
        const QList<QByteArray> parts = word.split(':');
        if (parts.size() != partCount)
            continue;
        SorrelKit::IconRequest request(parts.at(0).toInt());
        request.setMask(SorrelKit::IconMask(parts.at(1).toInt()));
        request.setNight(parts.at(2) == "1");
        request.setMonochrome(parts.at(3) == "1");
        const auto add = [&](int launcher, const QImage &icon) {
            icons.append(QJsonObject{{QStringLiteral("launcher"), launcher},
                                     {QStringLiteral("kind"), QString::fromLatin1(word)},
                                     {QStringLiteral("png"), QString::fromLatin1(pngBytes(icon).toBase64())}});
        };
        const QList<SorrelKit::Entry> &launchers = report.launchers();
        for (int i = 0; i < int(launchers.size()); ++i)
            add(i, renderer.icon(launchers.at(i), request));
        if (launchers.isEmpty())
            add(0, renderer.icon(request));
    }
    json->insert(QStringLiteral("launcherIcons"), icons);
}
