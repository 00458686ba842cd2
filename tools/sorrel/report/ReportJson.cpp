// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ReportJson.h"

using SorrelKit::IconFile;

QJsonObject ReportJson::labels(const QMap<QString, QString> &byLanguage)
{
    QJsonObject labels;
    for (auto label = byLanguage.cbegin(); label != byLanguage.cend(); ++label)
        labels.insert(label.key(), label.value());
    return labels;
}

QJsonArray ReportJson::icons(const QList<IconFile> &files)
{
    QJsonArray icons;
    for (const IconFile &file : files) {
        QJsonObject icon{{QStringLiteral("kind"), file.kind()}, {QStringLiteral("path"), file.path()}};
        if (!file.size().isEmpty()) {
            icon.insert(QStringLiteral("width"), file.size().width());
            icon.insert(QStringLiteral("height"), file.size().height());
        }
        if (file.isOfPlatform())
            icon.insert(QStringLiteral("platform"), true);
        icons.append(icon);
    }
    return icons;
}
