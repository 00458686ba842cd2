// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PackageWalker.h"
#include "KitIcons.h"

#include <SorrelKit/Package.h>
#include <SorrelKit/Resources.h>

#include <QMetaEnum>

using namespace SorrelKit;

namespace fixture {

namespace {

bool isAsPromised(const QImage &icon, int size)
{
    return icon.isNull() || (icon.size() == QSize(size, size) && icon.format() == QImage::Format_ARGB32_Premultiplied);
}

qint64 visitTexts(const Package &package)
{
    qint64 count = package.packageName().size() + package.versionName().size() + package.error().message().size()
                   + package.permissionNames().size() + package.features().size() + package.nativeAbis().size()
                   + package.languages().size() + package.densities().size() + package.impliedFeatures().size()
                   + package.splits().size() + package.labels().size() + package.label().size()
                   + package.manifestXml().size() + package.manifestXml(Package::References::Values).size()
                   + package.iconPath(160).size();
    for (const Component &component : package.components())
        count += component.name().size() + component.permission().size() + int(component.isExported());
    for (const Permission &permission : package.permissions())
        count += permission.name().size() + permission.label().size() + permission.description().size()
                 + permission.groupLabel().size() + permission.impliedReason().size() + permission.maxSdkVersion()
                 + int(permission.flags()) + int(permission.level()) + int(permission.isDeclared());
    for (const bool isAnswered : {package.versionCode() != 0, package.minSdkVersion() != 1, package.isValid(),
                                  package.targetSdkVersion() != 1, !package.openGlEsVersion().isNull()})
        count += int(isAnswered);
    return count;
}

qint64 visitEntries(const Package &package)
{
    const QMetaEnum kinds = QMetaEnum::fromType<Entry::Kind>();
    qint64 count = 0;
    for (int i = 0; i < kinds.keyCount(); ++i) {
        for (const Entry &entry : package.entries(Entry::Kind(kinds.value(i)))) {
            count += entry.id().size() + entry.name().size() + entry.className().size() + entry.longLabel().size()
                     + entry.label().size() + entry.permission().size() + entry.mimeTypes().size()
                     + entry.defaultUrl().size() + entry.settingsActivity().size() + entry.bannerFiles().size()
                     + entry.iconFiles().size() + int(entry.isShown()) + int(entry.detailsResource() != 0)
                     + int(entry.roundIconResource() != 0) + int(entry.bannerResource() != 0)
                     + int(entry.logoResource() != 0);
        }
    }
    return count;
}

qint64 visitResources(const Resources &resources)
{
    constexpr int MaxVisited = 100;
    const QList<quint32> ids = resources.ids();
    qint64 count = ids.size() + int(resources.isComplete());
    for (int i = 0; i < int(ids.size()); i += 1 + int(ids.size()) / MaxVisited) {
        count += resources.name(ids.at(i)).size() + resources.defaultValue(ids.at(i)).text().size();
        for (const SorrelKit::ResourceValue &value : resources.values(ids.at(i)))
            count += value.configuration().size() + value.text().size() + value.items().size();
    }
    for (const quint32 id : ids.mid(0, 3))
        count += int(resources.find(resources.name(id)) != 0);
    return count + int(resources.find(QStringLiteral("string/app_name")) != 0);
}

} // namespace

qint64 visit(const Package &package, int iconCount, int iconSize)
{
    constexpr IconMask masks[] = {IconMask::None, IconMask::Circle, IconMask::RoundedSquare, IconMask::Squircle};
    constexpr int MaskCount = int(sizeof masks / sizeof *masks);
    qint64 count = visitTexts(package) + visitEntries(package);
    int number = 0;
    for (const Entry &launcher : package.launchers()) {
        count += launcher.labels().size() + launcher.label().size() + launcher.label(QLocale(QLocale::German)).size()
                 + launcher.iconFiles().size() + launcher.name().size() + launcher.className().size()
                 + launcher.packageName().size() + int(launcher.isShown()) + int(launcher.isAlias())
                 + int(launcher.iconResource() != 0);
        if (number >= iconCount)
            continue;
        QString error;
        const QImage icon = iconOf(launcher, iconSize, masks[number % MaskCount], &error);
        if (!isAsPromised(icon, iconSize))
            return -1;
        count += int(!icon.isNull()) + error.size();
        ++number;
    }
    count += visitResources(Resources(package));
    return isAsPromised(iconOf(package, iconSize), iconSize) ? count : -1;
}

} // namespace fixture
