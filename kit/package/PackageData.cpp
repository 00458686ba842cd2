// SPDX-License-Identifier: LGPL-2.1-or-later
#include "package/PackageData.h"
#include "limits/Limits.h"

#include "format/AndroidAttributes.h"
#include "format/XmlReader.h"
#include "package/PackageSet.h"

#include <QSet>

#include <algorithm>

namespace SorrelKit {

namespace {

Configuration anyPhone()
{
    return Configuration::phone(Configuration::MediumDensity);
}

} // namespace

PackageData::PackageData(const QString &fileName)
    : m_outer(std::make_unique<ZipArchive>(fileName)), m_resolver({}, anyPhone(), &m_lookups)
{
}

PackageData::PackageData(QIODevice *device)
    : m_outer(std::make_unique<ZipArchive>(device)), m_resolver({}, anyPhone(), &m_lookups)
{
}

PackageData::PackageData(const QByteArray &nativePath)
    : m_outer(ZipArchive::atNativePath(nativePath)), m_resolver({}, anyPhone())
{
}

PackageData &PackageData::loaded()
{
    if (!m_isLoaded) {
        m_isLoaded = true;
        read();
        m_resolver = ResourceResolver(m_tables, anyPhone(), &m_lookups);
    }
    return *this;
}

void PackageData::read()
{
    if (!m_outer->open()) {
        setError(PackageError::CannotOpen);
        return;
    }
    const QString manifest = QStringLiteral("AndroidManifest.xml");
    if (m_outer->contains(manifest) || !PackageSet::isSet(*m_outer)) {
        if (readManifest(*m_outer))
            readTable(*m_outer);
        return;
    }
    PackageSet set(*m_outer, m_reading);
    if (set.base() == nullptr) {
        setError(PackageError::NoManifest, QStringLiteral("the set has no base package"));
        return;
    }
    m_members.push_back(std::move(set.base()));
    if (readManifest(*m_members.front()))
        readTable(*m_members.front());
    for (PackageSet::Split &split : set.splits()) {
        m_splits.append(split.name);
        readTable(*split.archive);
        m_members.push_back(std::move(split.archive));
    }
    for (const auto &member : m_members) {
        for (const QString &path : member->names()) {
            if (!m_holders.contains(path))
                m_holders.insert(path, member.get());
        }
    }
}

bool PackageData::readManifest(ZipArchive &archive)
{
    const QByteArray bytes = archive.file(QStringLiteral("AndroidManifest.xml"), Limits::MaxManifestBytes);
    if (bytes.isEmpty()) {
        setError(PackageError::NoManifest);
        return false;
    }
    const XmlReader reader(bytes);
    if (reader.fault() == FormatFault::None && reader.root().name == QLatin1String("manifest"))
        m_manifest = Manifest(reader.root());
    else
        setError(PackageError::BadManifest, formatFaultText(reader.fault()));
    return reader.fault() == FormatFault::None;
}

void PackageData::readTable(ZipArchive &archive)
{
    const QString path = QStringLiteral("resources.arsc");
    // A package may have no resources, and splits for processors have none.
    if (!archive.contains(path))
        return;
    // A package that is compressed in a set may list tables that are empty and take long.
    const bool isOfASet = !m_members.empty();
    const QByteArray bytes =
        isOfASet ? archive.file(path, m_tableBytesLeft, &m_reading) : archive.file(path, m_tableBytesLeft);
    m_tableBytesLeft -= bytes.size();
    const auto table = QSharedPointer<const ResourceTable>::create(bytes, m_typeChunksLeft);
    m_typeChunksLeft = qMax(0, m_typeChunksLeft - table->typeChunkCount());
    if (table->fault() != FormatFault::None)
        setError(PackageError::BadResources, formatFaultText(table->fault()));
    m_tables.append(table);
}

void PackageData::setError(PackageError::Code error, const QString &fault)
{
    if (m_error != PackageError::NoError)
        return;
    m_error = error;
    m_fault = fault;
}

QByteArray PackageData::file(const QString &path, qint64 maxBytes, Budget *budget)
{
    ZipArchive *const holder = m_members.empty() ? m_outer.get() : m_holders.value(path);
    return holder != nullptr ? holder->file(path, maxBytes, budget) : QByteArray();
}

QStringList PackageData::nativeAbis()
{
    constexpr int MaxMembers = 1 << 16;
    QSet<QString> abis;
    const auto collect = [&abis](ZipArchive &archive) {
        for (const QString &path : archive.names().mid(0, MaxMembers)) {
            if (!path.startsWith(QLatin1String("lib/")))
                continue;
            const QStringList parts = path.split(QLatin1Char('/'));
            if (parts.size() == 3 && parts.last().endsWith(QLatin1String(".so")))
                abis.insert(parts.at(1));
        }
    };
    if (m_members.empty())
        collect(*m_outer);
    for (const auto &member : m_members)
        collect(*member);
    QStringList sorted(abis.cbegin(), abis.cend());
    sorted.sort();
    return sorted;
}

ResolvedValue PackageData::resolved(const XmlAttribute *attribute) const
{
    if (attribute == nullptr)
        return {};
    ResolvedValue value = m_resolver.resolved(attribute->value);
    if (!attribute->value.isReference())
        value.text = attribute->text;
    return value;
}

bool PackageData::isTrue(const XmlAttribute *attribute, bool fallback) const
{
    const ResolvedValue value = resolved(attribute);
    if (const auto boolean = value.value.boolean())
        return *boolean;
    // Tools that rewrite manifests may keep the text alone.
    if (value.text == QLatin1String("true") || value.text == QLatin1String("false"))
        return value.text == QLatin1String("true");
    return fallback;
}

QVector<IconFileLookup::File> PackageData::iconFiles(const XmlAttribute *attribute)
{
    return m_iconFiles.files(iconValue(attribute));
}

ResolvedValue PackageData::iconValue(const XmlAttribute *attribute) const
{
    if (attribute == nullptr || !attribute->value.isReference())
        return resolved(attribute);
    ResolvedValue value;
    value.value = attribute->value;
    value.resource = attribute->value.data;
    return value;
}

QString PackageData::text(const XmlAttribute *attribute) const
{
    const ResolvedValue value = resolved(attribute);
    return value.text.isEmpty() ? value.plainText() : value.text;
}

bool PackageData::isEnabled(const Manifest::LauncherEntry &entry) const
{
    return isTrue(entry.activity->attribute(Attr::Enabled), true)
           && isTrue(m_manifest.applicationAttribute(Attr::Enabled), true);
}

bool PackageData::isExported(const Manifest::LauncherEntry &entry) const
{
    return isTrue(entry.activity->attribute(Attr::Exported), true);
}

std::optional<ResolvedValue> PackageData::applicationIcon() const
{
    const XmlAttribute *const icon = m_manifest.applicationAttribute(Attr::Icon);
    return icon != nullptr ? std::make_optional(iconValue(icon)) : std::nullopt;
}

QVector<ResolvedValue> PackageData::launcherIcons(int count) const
{
    QVector<ResolvedValue> icons;
    const XmlAttribute *const own = m_manifest.applicationAttribute(Attr::Icon);
    for (const Manifest::LauncherEntry &entry : m_manifest.launchers()) {
        if (icons.size() == count)
            break;
        const XmlAttribute *const icon = m_manifest.innermostAttribute(entry, Attr::Icon);
        if (icon != own && isEnabled(entry) && isExported(entry))
            icons.append(iconValue(icon));
    }
    return icons;
}

} // namespace SorrelKit
