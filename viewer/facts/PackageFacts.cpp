// SPDX-License-Identifier: LGPL-2.1-or-later
#include "facts/PackageFacts.h"

#include "reading/SafeText.h"

#include <QCoreApplication>
#include <QJsonArray>

namespace Viewer {

namespace {

constexpr int MaxDangerousPermissions = 100;
constexpr int MaxLanguagesInMenu = 300;

QString lineOf(const QJsonObject &content, const char *key)
{
    return safeText(content.value(QLatin1String(key)).toString());
}

} // namespace

void PackageFacts::take(const QString &topic, const QJsonObject &content)
{
    if (topic == QLatin1String("head"))
        takeHead(content);
    else if (topic == QLatin1String("signature"))
        signature = SignatureState::fromJson(content);
    else if (topic == QLatin1String("permissions"))
        takePermissions(content);
    else if (topic == QLatin1String("languages"))
        takeLanguages(content);
}

void PackageFacts::takeHead(const QJsonObject &content)
{
    isHeadKnown = true;
    isSet = content.value(QLatin1String("isSet")).toBool();
    fileSize = qint64(content.value(QLatin1String("fileSize")).toDouble(-1));
    label = lineOf(content, "label");
    plainPackageName = content.value(QLatin1String("packageName")).toString();
    packageName = lineOf(content, "packageName");
    const QString name = safePart(content.value(QLatin1String("versionName")).toString());
    QString code = safePart(content.value(QLatin1String("versionCode")).toString());
    // The number of a package without a version, such as a broken one.
    if (name.isEmpty() && content.value(QLatin1String("versionCode")).toString() == QLatin1String("0"))
        code.clear();
    version = name.isEmpty() || code.isEmpty()
                  ? name + code
                  : QCoreApplication::translate("Viewer::PackageFacts", "%1 (%2)", "name and number of a version")
                        .arg(name, code);
    const QJsonValue fault = content.value(QLatin1String("error"));
    error = fault.isString() ? safeText(fault.toString()) : lineOf(fault.toObject(), "message");
    if (error.isEmpty() && fault.isObject())
        error = QCoreApplication::translate("Viewer::PackageFacts", "The package cannot be read.");
}

void PackageFacts::takePermissions(const QJsonObject &content)
{
    arePermissionsKnown = true;
    permissionsError = lineOf(content, "error");
    dangerousPermissions.clear();
    dangerousCount = 0;
    const QJsonArray items = content.value(QLatin1String("items")).toArray();
    for (const QJsonValue &value : items) {
        const QJsonObject item = value.toObject();
        if (!item.value(QLatin1String("isDangerous")).toBool())
            continue;
        ++dangerousCount;
        if (dangerousPermissions.size() >= MaxDangerousPermissions)
            continue;
        const QString text = lineOf(item, "label");
        dangerousPermissions.append(text.isEmpty() ? lineOf(item, "name") : text);
    }
}

void PackageFacts::takeLanguages(const QJsonObject &content)
{
    languages.clear();
    const QJsonArray items = content.value(QLatin1String("items")).toArray();
    for (int i = 0; i < qMin(MaxLanguagesInMenu, int(items.size())); ++i) {
        const QJsonObject item = items.at(i).toObject();
        const QString tag = item.value(QLatin1String("tag")).toString();
        const QString name = lineOf(item, "name");
        if (!tag.isEmpty())
            languages.append({tag, name.isEmpty() ? lineOf(item, "tag") : name});
    }
}

} // namespace Viewer
