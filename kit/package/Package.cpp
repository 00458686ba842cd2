// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Package.h>

#include "format/AndroidAttributes.h"
#include "language/LabelLookup.h"
#include "manifest/ManifestWriter.h"
#include "package/FeatureData.h"
#include "package/PackageData.h"

#include <QSet>

#include <algorithm>
#include <initializer_list>

namespace SorrelKit {

namespace {

constexpr int FirstSdkVersion = 1;
constexpr int PreviewSdkVersion = 10000;

int sdkVersion(PackageData &data, quint32 id, int fallback)
{
    const ResolvedValue value = data.resolved(data.manifest().childAttribute(QStringLiteral("uses-sdk"), id));
    if (const auto version = value.value.integer())
        return *version;
    if (value.text.isEmpty())
        return fallback;
    bool isNumber = false;
    const int version = value.text.toInt(&isNumber);
    return isNumber ? version : PreviewSdkVersion;
}

quint32 versionPart(PackageData &data, quint32 id)
{
    return quint32(data.resolved(data.manifest().root().attribute(id)).value.integer().value_or(0));
}

Component::Kind kindOf(const XmlElement &component)
{
    if (component.name == QLatin1String("activity-alias"))
        return Component::Kind::Alias;
    if (component.name == QLatin1String("service"))
        return Component::Kind::Service;
    if (component.name == QLatin1String("receiver"))
        return Component::Kind::Receiver;
    return component.name == QLatin1String("provider") ? Component::Kind::Provider : Component::Kind::Activity;
}

// The text of the first attribute that exists; an empty text means that no permission is needed.
QString firstText(const PackageData &data, std::initializer_list<const XmlAttribute *> attributes)
{
    const auto *const found = std::find_if(attributes.begin(), attributes.end(),
                                           [](const XmlAttribute *attribute) { return attribute != nullptr; });
    return found != attributes.end() ? data.text(*found) : QString();
}

} // namespace

Package::Package() : Package(QStringLiteral("")) {}
Package::Package(const QString &fileName) : d(new PackageData(fileName)) {}
Package::Package(QIODevice *device) : d(new PackageData(device)) {}
Package::Package(const Package &other) = default;
Package::Package(Package &&other) noexcept = default;
Package &Package::operator=(const Package &other) = default;
Package &Package::operator=(Package &&other) noexcept = default;
Package::~Package() = default;

Package Package::fromNativePath(const QByteArray &path)
{
    Package package;
    package.d = new PackageData(path);
    return package;
}

Error Package::error() const
{
    // A damaged table is an error, too.
    d->tables();
    return Error(Error::Code(d->error()), d->fault());
}

bool Package::isValid() const
{
    return !d->manifest().root().isNull();
}

QString Package::packageName() const
{
    return d->manifest().packageName();
}

QString Package::versionName() const
{
    return d->text(d->manifest().root().attribute(Attr::VersionName));
}

qint64 Package::versionCode() const
{
    return qint64(quint64(versionPart(*d, Attr::VersionCodeMajor)) << 32 | versionPart(*d, Attr::VersionCode));
}

int Package::minSdkVersion() const
{
    return sdkVersion(*d, Attr::MinSdkVersion, FirstSdkVersion);
}

int Package::targetSdkVersion() const
{
    return sdkVersion(*d, Attr::TargetSdkVersion, minSdkVersion());
}

QStringList Package::permissions() const
{
    QStringList permissions;
    QSet<QString> known;
    for (const XmlElement &child : d->manifest().root().children) {
        if (child.name != QLatin1String("uses-permission") && child.name != QLatin1String("uses-permission-sdk-23"))
            continue;
        const QString name = Manifest::text(child, Attr::Name);
        if (!name.isEmpty() && !known.contains(name))
            permissions.append(name);
        known.insert(name);
    }
    return permissions;
}

QList<Feature> Package::features() const
{
    QList<Feature> features;
    for (const XmlElement &child : d->manifest().root().children) {
        const QString name = Manifest::text(child, Attr::Name);
        if (child.name == QLatin1String("uses-feature") && !name.isEmpty()) {
            Feature feature;
            feature.d->name = name;
            feature.d->isRequired = d->isTrue(child.attribute(Attr::Required), true);
            features.append(feature);
        }
    }
    return features;
}

QVersionNumber Package::openGlEsVersion() const
{
    qint32 version = 0;
    for (const XmlElement &child : d->manifest().root().children) {
        if (child.name == QLatin1String("uses-feature"))
            version = qMax(version, d->resolved(child.attribute(Attr::GlEsVersion)).value.integer().value_or(0));
    }
    constexpr quint32 MinorBits = 16;
    const auto number = quint32(version);
    return number != 0 ? QVersionNumber(int(number >> MinorBits), int(number & 0xffff)) : QVersionNumber();
}

QStringList Package::nativeAbis() const
{
    return d->nativeAbis();
}

QStringList Package::splits() const
{
    return d->splits();
}

QMap<QString, QString> Package::labels() const
{
    return LabelLookup(d->resolver()).labels(d->manifest().applicationAttribute(Attr::Label));
}

QString Package::label(const QLocale &locale) const
{
    const QString label =
        LabelLookup(d->resolver()).label(d->manifest().applicationAttribute(Attr::Label), LanguageTag(locale));
    return label.isEmpty() ? packageName() : label;
}

QList<Entry> Package::launchers() const
{
    return entries(Entry::Kind::Launcher);
}

QList<Component> Package::components() const
{
    constexpr int FirstSdkWithHiddenProviders = 17;
    QList<Component> components;
    const XmlAttribute *const ofAll = d->manifest().applicationAttribute(Attr::Permission);
    const bool providersAreExported = targetSdkVersion() < FirstSdkWithHiddenProviders;
    for (const Manifest::ComponentEntry &entry : d->manifest().components()) {
        const XmlElement &element = *entry.element;
        const Component::Kind kind = kindOf(element);
        const bool isProvider = kind == Component::Kind::Provider;
        const XmlAttribute *const own = element.attribute(Attr::Permission);
        const XmlAttribute *const inherited = kind != Component::Kind::Alias ? ofAll : nullptr;
        const auto permission = [&](quint32 id) {
            return firstText(*d, {isProvider ? element.attribute(id) : nullptr, own, inherited});
        };
        const bool isExported = d->isExported(element, isProvider && providersAreExported);
        components.append(Component(kind, entry.name, isExported, d->isEnabled(element),
                                    permission(Attr::ReadPermission), permission(Attr::WritePermission)));
    }
    return components;
}

QByteArray Package::manifestXml(References references) const
{
    if (!isValid())
        return {};
    Budget budget(PackageData::MaxReadingWork, PackageData::MaxReadingBytes);
    const QByteArray document =
        d->files().file(QStringLiteral("AndroidManifest.xml"), Limits::MaxManifestBytes, &budget);
    const ResourceIndex index(d->tables());
    const auto style =
        references == References::Numbers ? ManifestWriter::References::Numbers : ManifestWriter::References::Names;
    return ManifestWriter(index, style).toXml(document);
}

} // namespace SorrelKit
