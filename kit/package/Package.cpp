// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Package.h>

#include "diagnostic/DiagnosticList.h"
#include "format/AndroidAttributes.h"
#include "language/LabelLookup.h"
#include "manifest/ManifestWriter.h"
#include "package/EntryData.h"
#include "package/PackageData.h"

#include <QSet>

#include <algorithm>
#include <initializer_list>

namespace SorrelKit {

namespace {

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

// Calls @p visit with the configuration of each chunk of values.
template <typename Visit>
void visitConfigurations(const ResourceTables &tables, Visit visit)
{
    for (const auto &table : tables) {
        for (const ResourceTable::Package &package : table->packages()) {
            for (const QVector<TypeChunk> &chunks : package.chunks) {
                for (const TypeChunk &chunk : chunks)
                    visit(chunk.configuration());
            }
        }
    }
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

void Package::setPlatform(const Platform &platform)
{
    d->setPlatform(platform.d);
}

Platform Package::platform() const
{
    Platform platform;
    if (d->platform() != nullptr)
        platform.d = d->platform();
    return platform;
}

QList<quint32> Package::platformResources() const
{
    return d->platformResources();
}

Error Package::error() const
{
    // A damaged table is an error, too.
    d->tables();
    if (d->error() != PackageError::NoError)
        return Error(Error::Code(d->error()), d->fault());
    const QList<Diagnostic> diagnostics = d->diagnostics();
    const auto refused = std::find_if(diagnostics.cbegin(), diagnostics.cend(), DiagnosticList::isRefusedToday);
    return refused != diagnostics.cend() ? Error(Error::Code::RefusedByAndroid, refused->text()) : Error();
}

QList<Diagnostic> Package::diagnostics() const
{
    return d->diagnostics();
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
    return d->minSdkVersion();
}

int Package::targetSdkVersion() const
{
    return d->targetSdkVersion();
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

QStringList Package::languages() const
{
    QStringList tags;
    visitConfigurations(d->tables(), [&](const Configuration &configuration) {
        const LanguageTag tag(configuration.locale());
        if (!tag.isEmpty())
            tags.append(tag.toString());
    });
    tags.sort();
    tags.removeDuplicates();
    return tags;
}

QList<int> Package::densities() const
{
    QSet<int> densities;
    visitConfigurations(d->tables(), [&](const Configuration &configuration) {
        if (configuration.density != 0)
            densities.insert(configuration.density);
    });
    QList<int> sorted(densities.cbegin(), densities.cend());
    std::sort(sorted.begin(), sorted.end());
    return sorted;
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

QString Package::iconPath(int density) const
{
    constexpr int LargestDensity = 0xffff;
    const std::optional<ResolvedValue> icon = d->applicationIcon(false);
    if (!icon || density < 0 || density > LargestDensity)
        return {};
    if (!icon->value.isReference())
        return icon->text;
    Budget lookups(PackageData::MaxLookupWork, PackageData::MaxLookupBytes);
    const ResolvedValue file = d->resolver().forDevice(Configuration::phone(density), &lookups).resolved(icon->value);
    return file.owner == ResourceOwner::Package ? file.text : QString();
}

QByteArray Package::manifestXml(References references) const
{
    if (!isValid())
        return {};
    Budget budget(PackageData::MaxReadingWork, PackageData::MaxReadingBytes);
    const QByteArray document = d->manifestBytes(&budget);
    const ResourceIndex index(d->tables());
    // Numbers are those of ApkFile, which knows no platform.
    if (references == References::Numbers)
        return ManifestWriter(index, ManifestWriter::References::Numbers).toXml(document);
    if (references == References::Values) {
        Budget lookups(PackageData::MaxLookupWork, PackageData::MaxLookupBytes);
        return ManifestWriter(index, d->resolver().forDevice(d->resolver().device(), &lookups)).toXml(document);
    }
    return ManifestWriter(index, ManifestWriter::References::Names, d->platform()).toXml(document);
}

} // namespace SorrelKit
