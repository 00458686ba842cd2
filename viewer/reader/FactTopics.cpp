// SPDX-License-Identifier: LGPL-2.1-or-later
#include "FactTopics.h"

#include "Protocol.h"

#include <algorithm>
#include <sys/stat.h>

using SorrelKit::Package;
using SorrelKit::Permission;

namespace {

qint64 sizeOf(const FileName &file)
{
    struct stat status = {};
    return ::stat(file.path().constData(), &status) == 0 ? qint64(status.st_size) : 0;
}

QJsonValue errorJson(const SorrelKit::Error &error)
{
    if (!error)
        return QJsonValue::Null;
    return QJsonObject{{QStringLiteral("code"), int(error.code())},
                       {QStringLiteral("message"), Viewer::cutText(error.message())}};
}

bool isDangerous(const Permission &permission)
{
    return permission.level() == Permission::Level::Dangerous;
}

// "português (Brasil)"; the tag when Qt does not know the language.
QString languageName(const QString &tag)
{
    const QLocale locale(tag);
    const QString name = locale.language() == QLocale::C ? QString() : locale.nativeLanguageName();
#if QT_VERSION >= QT_VERSION_CHECK(6, 2, 0)
    const QString country = locale.nativeTerritoryName();
#else
    const QString country = locale.nativeCountryName();
#endif
    // Some countries and scripts have names of their own for a language.
    const bool isOwnName = name != QLocale(tag.section(QLatin1Char('-'), 0, 0)).nativeLanguageName();
    if (name.isEmpty() || isOwnName || country.isEmpty() || !tag.contains(QLatin1Char('-')))
        return name.isEmpty() ? tag : name;
    return QStringLiteral("%1 (%2)").arg(name, country);
}

} // namespace

QJsonObject Viewer::FactTopics::head(const Subject &subject)
{
    const Package &package = subject.package;
    return {
        {QStringLiteral("packageName"), cutText(package.packageName())},
        {QStringLiteral("versionName"), cutText(package.versionName())},
        // A string, because JSON numbers have 53 bits.
        {QStringLiteral("versionCode"), QString::number(package.versionCode())},
        {QStringLiteral("minSdk"), qMax(0, package.minSdkVersion())},
        {QStringLiteral("targetSdk"), qMax(0, package.targetSdkVersion())},
        {QStringLiteral("label"), cutText(package.label(subject.locale))},
        {QStringLiteral("isSet"), !subject.packagePaths().isEmpty()},
        {QStringLiteral("fileSize"), sizeOf(subject.file)},
        {QStringLiteral("error"), errorJson(package.error())},
        {QStringLiteral("sandbox"), QJsonArray::fromStringList(subject.sandbox)},
    };
}

QJsonObject Viewer::FactTopics::permissions(const Subject &subject)
{
    QList<Permission> permissions = subject.package.permissions();
    std::stable_partition(permissions.begin(), permissions.end(), isDangerous);
    ItemList items(Protocol::MaxItems);
    for (const Permission &permission : permissions)
        items.add({
            {QStringLiteral("name"), cutText(permission.name())},
            {QStringLiteral("label"), cutText(permission.label(subject.locale))},
            {QStringLiteral("description"), cutText(permission.description(subject.locale))},
            {QStringLiteral("isDangerous"), isDangerous(permission)},
            {QStringLiteral("group"), cutText(permission.groupLabel(subject.locale))},
        });
    return items.toJson();
}

QJsonObject Viewer::FactTopics::languages(const Subject &subject)
{
    const QMap<QString, QString> labels = subject.package.labels();
    const bool isOne = labels.size() == 1 && labels.contains(QString());
    int lookups = 0;
    const auto labelFor = [&](const QString &tag) {
        if (isOne || labels.contains(tag))
            return labels.value(isOne ? QString() : tag);
        return ++lookups > Protocol::MaxLabelLookups ? QString() : subject.package.label(QLocale(tag));
    };
    ItemList items(Protocol::MaxItems);
    for (const QString &tag : subject.package.languages())
        items.add({
            {QStringLiteral("tag"), cutText(tag)},
            {QStringLiteral("name"), cutText(languageName(tag))},
            {QStringLiteral("label"), cutText(labelFor(tag))},
        });
    return items.toJson();
}

QJsonObject Viewer::FactTopics::manifest(const Subject &subject)
{
    const QString text = QString::fromUtf8(subject.package.manifestXml());
    QJsonObject json{{QStringLiteral("text"), text.left(Protocol::MaxManifestLength)}};
    if (text.size() > Protocol::MaxManifestLength)
        json.insert(QStringLiteral("more"), qint64(text.size() - Protocol::MaxManifestLength));
    if (text.isEmpty())
        json.insert(QStringLiteral("error"), QStringLiteral("the manifest is too long"));
    return json;
}
