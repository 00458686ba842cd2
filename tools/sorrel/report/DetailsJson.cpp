// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DetailsJson.h"

#include "ManifestFacts.h"
#include "MemberSizes.h"

#include <QJsonArray>
#include <QMetaEnum>

#include <utility>

using SorrelKit::Feature;
using SorrelKit::Permission;

namespace {

// "RuntimeOnly" as "runtimeOnly".
QString lowerFirst(const char *key)
{
    QString name = QString::fromLatin1(key);
    return name.replace(0, 1, name.at(0).toLower());
}

QJsonArray flagNames(Permission::Flags flags)
{
    const QMetaEnum all = QMetaEnum::fromType<Permission::Flags>();
    QJsonArray names;
    for (int i = 0; i < all.keyCount(); ++i) {
        if (flags.testFlag(Permission::Flag(all.value(i))))
            names.append(lowerFirst(all.key(i)));
    }
    return names;
}

QJsonObject permissionJson(const Permission &permission, const QLocale &locale)
{
    return {
        {QStringLiteral("name"), permission.name()},
        {QStringLiteral("label"), permission.label(locale)},
        {QStringLiteral("description"), permission.description(locale)},
        {QStringLiteral("level"),
         lowerFirst(QMetaEnum::fromType<Permission::Level>().valueToKey(int(permission.level())))},
        {QStringLiteral("flags"), flagNames(permission.flags())},
        {QStringLiteral("group"), permission.group()},
        {QStringLiteral("groupLabel"), permission.groupLabel(locale)},
        {QStringLiteral("minSdkVersion"), permission.minSdkVersion()},
        {QStringLiteral("maxSdkVersion"), permission.maxSdkVersion()},
        {QStringLiteral("required"), permission.isRequired()},
        {QStringLiteral("declared"), permission.isDeclared()},
        {QStringLiteral("impliedReason"), permission.impliedReason()},
    };
}

QJsonObject featureJson(const Feature &feature)
{
    return {
        {QStringLiteral("name"), feature.name()},
        {QStringLiteral("label"), feature.label()},
        {QStringLiteral("version"), feature.version()},
        {QStringLiteral("required"), feature.isRequired()},
        {QStringLiteral("impliedReason"), feature.impliedReason()},
    };
}

QJsonArray densitiesJson(const QList<int> &densities)
{
    QJsonArray json;
    for (const int density : densities)
        json.append(density);
    return json;
}

// The file for the icon on a screen of each density, and on the one that Android scales for.
QJsonArray iconsJson(const SorrelKit::Package &package, QList<int> densities)
{
    constexpr int UnscaledDensity = 160;
    if (!densities.contains(UnscaledDensity))
        densities.prepend(UnscaledDensity);
    QJsonArray json;
    for (const int density : std::as_const(densities)) {
        const QString path = package.iconPath(density);
        if (!path.isEmpty())
            json.append(QJsonObject{{QStringLiteral("density"), density}, {QStringLiteral("path"), path}});
    }
    return json;
}

} // namespace

QJsonObject DetailsJson::of(const FileName &file, const SorrelKit::Package &package, const QLocale &locale)
{
    QJsonArray permissions;
    for (const Permission &permission : package.permissions())
        permissions.append(permissionJson(permission, locale));
    QJsonArray features;
    for (const Feature &feature : package.features() + package.impliedFeatures())
        features.append(featureJson(feature));
    const QList<int> densities = package.densities();
    const MemberSizes sizes = MemberSizes::of(file);
    const QJsonObject sizesJson{
        {QStringLiteral("file"), sizes.file},           {QStringLiteral("code"), sizes.code},
        {QStringLiteral("libraries"), sizes.libraries}, {QStringLiteral("resources"), sizes.resources},
        {QStringLiteral("others"), sizes.others},
    };
    const QVersionNumber openGlEs = package.openGlEsVersion();
    QJsonObject json = ManifestFacts(package).toJson();
    json.insert(QStringLiteral("permissions"), permissions);
    json.insert(QStringLiteral("features"), features);
    json.insert(QStringLiteral("openGlEs"), openGlEs.isNull() ? QString() : openGlEs.toString());
    json.insert(QStringLiteral("languages"), QJsonArray::fromStringList(package.languages()));
    json.insert(QStringLiteral("densities"), densitiesJson(densities));
    json.insert(QStringLiteral("icons"), iconsJson(package, densities));
    json.insert(QStringLiteral("sizes"), sizesJson);
    return json;
}
