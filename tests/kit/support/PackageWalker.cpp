// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PackageWalker.h"
#include "PlatformInMemory.h"
#include "SetFixture.h"

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Package.h>
#include <SorrelKit/PackageSet.h>
#include <SorrelKit/Resources.h>

#include <QMetaEnum>

using namespace SorrelKit;

namespace fixture {

namespace {

const QLocale german(QLocale::German);

bool isAsPromised(const QImage &icon, int size)
{
    return icon.isNull() || (icon.size() == QSize(size, size) && icon.format() == QImage::Format_ARGB32_Premultiplied);
}

bool isBannerAsPromised(const QImage &banner)
{
    return banner.isNull() || banner.format() == QImage::Format_ARGB32_Premultiplied;
}

qint64 visitTexts(const Package &package)
{
    qint64 count = package.packageName().size() + package.versionName().size() + package.error().message().size()
                   + package.permissionNames().size() + package.nativeAbis().size() + package.languages().size()
                   + package.densities().size() + package.splits().size() + package.labels().size()
                   + package.label().size() + package.label(german).size() + package.manifestXml().size()
                   + package.manifestXml(Package::References::Values).size() + package.iconPath(160).size()
                   + package.platformResources().size();
    for (const Component &component : package.components())
        count += component.name().size() + component.permission().size() + int(component.isExported());
    for (const Diagnostic &diagnostic : package.diagnostics())
        count += diagnostic.text().size() + diagnostic.detail().size() + diagnostic.package().size()
                 + diagnostic.path().size() + int(diagnostic.isRefused()) + int(diagnostic.count() > 1)
                 + int(diagnostic.firstSdkVersion() > diagnostic.lastSdkVersion());
    for (const bool isAnswered : {package.versionCode() != 0, package.minSdkVersion() != 1, package.isValid(),
                                  package.targetSdkVersion() != 1, !package.openGlEsVersion().isNull()})
        count += int(isAnswered);
    return count;
}

qint64 visitPermissions(const Package &package)
{
    qint64 count = 0;
    for (const Permission &permission : package.permissions())
        count += permission.name().size() + permission.label().size() + permission.label(german).size()
                 + permission.description().size() + permission.group().size() + permission.groupLabel().size()
                 + permission.impliedReason().size() + int(permission.minSdkVersion() < permission.maxSdkVersion())
                 + int(bool(permission.flags())) + int(permission.level()) + int(permission.isDeclared())
                 + int(permission.isImplied()) + int(permission.isRequired());
    for (const QList<Feature> &features : {package.features(), package.impliedFeatures()}) {
        for (const Feature &feature : features)
            count += feature.name().size() + feature.label().size() + feature.impliedReason().size()
                     + int(feature.isRequired()) + int(feature.isImplied()) + int(feature.version() > 0);
    }
    return count;
}

qint64 visitEntry(const Entry &entry)
{
    return entry.id().size() + entry.name().size() + entry.className().size() + entry.packageName().size()
           + entry.labels().size() + entry.label().size() + entry.longLabel(german).size() + entry.permission().size()
           + entry.mimeTypes().size() + entry.defaultUrl().size() + entry.settingsActivity().size()
           + entry.bannerFiles().size() + entry.iconFiles().size() + int(entry.isShown()) + int(entry.isAlias())
           + int(entry.iconResource() != 0) + int(entry.detailsResource() != 0) + int(entry.roundIconResource() != 0)
           + int(entry.bannerResource() != 0) + int(entry.logoResource() != 0);
}

/// Draws the icons of a package with one property after another, so that no icon is drawn for each of them.
class IconWalker
{
public:
    IconWalker(const Package &package, int size) : m_renderer(package), m_size(size) {}

    void visitIcon(const Entry &entry)
    {
        const QImage icon = m_renderer.icon(entry, nextRequest());
        m_areAsPromised = m_areAsPromised && isAsPromised(icon, m_size);
        count(icon);
    }

    void visitBanner(const Entry &entry)
    {
        const QImage banner = m_renderer.banner(entry, nextRequest());
        m_areAsPromised = m_areAsPromised && isBannerAsPromised(banner);
        count(banner);
    }

    void visitFrames(const IconRequest &request)
    {
        for (const IconFrame &frame : m_renderer.frames(request)) {
            m_areAsPromised = m_areAsPromised && isAsPromised(frame.image(), m_size) && frame.duration() >= 0;
            count(frame.image());
        }
    }

    IconRequest nextRequest()
    {
        constexpr IconMask masks[] = {IconMask::None, IconMask::Circle, IconMask::RoundedSquare, IconMask::Squircle};
        constexpr int MaskCount = int(sizeof masks / sizeof *masks);
        IconRequest request(m_size);
        request.setMask(masks[m_number % MaskCount]);
        switch (m_number++ % 5) {
        case 1:
            request.setNight(true);
            request.setLayoutDirection(Qt::RightToLeft);
            break;
        case 2:
            request.setMonochrome(true);
            request.setTheme(IconRequest::Theme::Package);
            break;
        case 3:
            request.setRound(true);
            request.setPlatformVersion(25);
            break;
        case 4:
            request.setThemeStyle(FirstStyle);
            request.setThemeOverlays({FirstStyle + 1, FirstStyle + 2});
            break;
        default:
            break;
        }
        return request;
    }

    DrawableRenderer &renderer() { return m_renderer; }
    qint64 result() const { return m_areAsPromised ? m_count : -1; }

private:
    // The second type of the application has its styles in most fixtures.
    static constexpr quint32 FirstStyle = 0x7f020000;

    void count(const QImage &image) { m_count += int(!image.isNull()) + m_renderer.error().text().size(); }

    DrawableRenderer m_renderer;
    const int m_size;
    int m_number = 0;
    qint64 m_count = 0;
    bool m_areAsPromised = true;
};

/// Adds the texts of all entries to @p count. Draws icons of launchers, and of the first entry of each other kind.
void visitEntries(const Package &package, int iconCount, IconWalker *icons, qint64 *count)
{
    const QMetaEnum kinds = QMetaEnum::fromType<Entry::Kind>();
    for (int i = 0; i < kinds.keyCount(); ++i) {
        const auto kind = Entry::Kind(kinds.value(i));
        const QList<Entry> entries = package.entries(kind);
        const int drawn = kind == Entry::Kind::Launcher ? iconCount : 1;
        for (int number = 0; number < int(entries.size()); ++number) {
            const Entry &entry = entries.at(number);
            *count += visitEntry(entry);
            if (number >= drawn)
                continue;
            icons->visitIcon(entry);
            if (entry.bannerResource() != 0)
                icons->visitBanner(entry);
        }
    }
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

qint64 visitPackages(const QList<SetPackage> &packages)
{
    qint64 count = packages.size();
    for (const SetPackage &package : packages)
        count += package.path().size() + package.splitName().size() + int(package.kind()) + package.module().size()
                 + package.abis().size() + package.languages().size() + package.screenDensities().size()
                 + int(package.minSdkVersion() > 1) + int(package.packedBytes() < package.bytes())
                 + package.reasonText().size();
    return count;
}

qint64 visitSet(const PackageSet &set)
{
    const Device device = phone();
    const SplitChoice choice = set.splitsFor(device);
    const Package chosen = set.packageFor(device);
    return visitPackages(set.packages()) + visitPackages(choice.packages()) + choice.message().size()
           + int(choice.downloadBytes() < choice.installedBytes()) + set.splitsFor(Device()).message().size()
           + chosen.packageName().size() + chosen.splits().size();
}

} // namespace

qint64 visit(Package package, int iconCount, int iconSize)
{
    static const PlatformInMemory platform;
    qint64 count = package.label().size();
    package.setPlatform(platform.platform());
    count += visitTexts(package) + visitPermissions(package) + visitResources(Resources(package));
    IconWalker icons(package, iconSize);
    visitEntries(package, iconCount, &icons, &count);
    icons.visitFrames(icons.nextRequest());
    if (!isBannerAsPromised(icons.renderer().banner(IconRequest(iconSize))) || icons.result() < 0)
        return -1;
    return count + icons.result() + visitSet(PackageSet(package));
}

} // namespace fixture
