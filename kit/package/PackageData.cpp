// SPDX-License-Identifier: LGPL-2.1-or-later
#include "package/PackageData.h"

#include "diagnostic/DiagnosticList.h"
#include "format/AndroidAttributes.h"
#include "format/XmlReader.h"
#include "limits/Limits.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace SorrelKit {

namespace {

QString manifestPath()
{
    return QStringLiteral("AndroidManifest.xml");
}

QString tablePath()
{
    return QStringLiteral("resources.arsc");
}

Configuration anyPhone()
{
    return Configuration::phone(Configuration::MediumDensity);
}

} // namespace

PackageData::PackageData(const QString &fileName)
    : m_outer(std::make_unique<ZipArchive>(fileName)), m_resolver(*this, anyPhone(), &m_lookups)
{
}

PackageData::PackageData(QIODevice *device)
    : m_outer(std::make_unique<ZipArchive>(device)), m_resolver(*this, anyPhone(), &m_lookups)
{
}

PackageData::PackageData(const QByteArray &nativePath)
    : m_outer(ZipArchive::atNativePath(nativePath)), m_resolver(*this, anyPhone(), &m_lookups)
{
}

bool PackageData::open()
{
    if (m_isOpened)
        return m_isOpen;
    m_isOpened = true;
    if (!m_outer->open()) {
        setError(PackageError::CannotOpen);
        return false;
    }
    m_isOpen = true;
    if (m_outer->contains(manifestPath()) || !PackageSet::isSet(*m_outer))
        return true;
    auto set = std::make_unique<PackageSet>(*m_outer, m_reading);
    if (set->base() == nullptr) {
        setError(PackageError::NoManifest, QStringLiteral("the set has no base package"));
        m_isOpen = false;
        return false;
    }
    m_members.push_back(std::move(set->base()));
    m_set = std::move(set);
    return true;
}

std::shared_ptr<ByteSource> PackageData::bytes()
{
    return open() ? m_outer->sharedSource() : nullptr;
}

void PackageData::openSplits()
{
    if (!open() || m_set == nullptr)
        return;
    // The budget of the set is spent in one order, and the first error stays the first.
    manifest();
    for (PackageSet::Split &split : m_set->splits()) {
        m_splits.append(split.name);
        m_members.push_back(std::move(split.archive));
        m_oddities.push_back({split.path, split.oddities, {}});
    }
    m_set.reset();
}

const QStringList &PackageData::splits()
{
    openSplits();
    return m_splits;
}

const Manifest &PackageData::manifest()
{
    if (!m_hasManifest) {
        m_hasManifest = true;
        if (open())
            readManifest();
    }
    return m_manifest;
}

void PackageData::readManifest()
{
    Manifest manifest;
    FormatFault fault = FormatFault::None;
    if (m_set != nullptr) {
        manifest = std::move(m_set->baseManifest());
        m_oddities.push_back({m_set->basePath(), m_set->baseOddities(), {}});
    } else {
        const QByteArray bytes = m_outer->file(manifestPath(), Limits::MaxManifestBytes);
        m_oddities.emplace_back();
        if (bytes.isEmpty()) {
            setError(PackageError::NoManifest);
            return;
        }
        const XmlReader reader(bytes);
        fault = reader.fault();
        m_oddities.front().manifest = reader.oddities();
        manifest = Manifest(reader.root());
    }
    m_isManifestWhole = fault == FormatFault::None;
    if (m_isManifestWhole && manifest.root().name == QLatin1String("manifest"))
        m_manifest = std::move(manifest);
    else
        setError(PackageError::BadManifest, formatFaultText(fault));
}

const ResourceTables &PackageData::tables()
{
    if (!m_hasTables) {
        m_hasTables = true;
        manifest();
        openSplits();
        if (m_isManifestWhole)
            readTable(base(), &m_oddities.front());
        for (std::size_t split = 1; split < m_members.size(); ++split)
            readTable(*m_members.at(split), &m_oddities.at(split));
    }
    return m_tables;
}

void PackageData::readTable(ZipArchive &archive, FileOddities *files)
{
    const QString path = tablePath();
    // A package may have no resources, and splits for processors have none.
    if (!archive.contains(path))
        return;
    // A package that is compressed in a set may list tables that are empty and take long.
    const SharedBytes bytes =
        isSet() ? archive.content(path, m_tableBytesLeft, &m_reading) : archive.content(path, m_tableBytesLeft);
    m_tableBytesLeft -= bytes.size();
    const auto table = QSharedPointer<const ResourceTable>::create(bytes.view(), bytes.owner(), m_typeChunksLeft);
    m_typeChunksLeft = qMax(0, m_typeChunksLeft - table->typeChunkCount());
    files->table = table->oddities();
    files->types = table;
    if (table->fault() != FormatFault::None)
        setError(PackageError::BadResources, formatFaultText(table->fault()));
    m_tables.append(table);
}

QList<Diagnostic> PackageData::diagnostics()
{
    tables();
    DiagnosticList diagnostics;
    for (std::size_t number = 0; number < m_oddities.size(); ++number) {
        const FileOddities &files = m_oddities.at(number);
        diagnostics.append(files.manifest, files.package, manifestPath());
        OddityList table = files.table;
        if (files.types != nullptr)
            files.types->addTypeOddities(&table);
        diagnostics.append(table, files.package, tablePath());
    }
    return diagnostics.all();
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
    openSplits();
    if (!isSet())
        return m_outer->file(path, maxBytes, budget);
    for (const auto &member : m_members) {
        if (!budget->spendWork(Budget::ValueWork))
            break;
        if (member->contains(path))
            return member->file(path, maxBytes, budget);
    }
    return {};
}

QStringList PackageData::nativeAbis()
{
    QSet<QString> abis;
    const auto collect = [&abis](ZipArchive &archive) {
        constexpr int MaxMembers = 1 << 16;
        const ZipDirectory &directory = archive.directory();
        for (int number = 0; number < qMin(directory.count(), MaxMembers); ++number) {
            const ByteView name = directory.name(number);
            if (!name.hasText(0, "lib/") || !name.hasText(name.size() - 3, ".so"))
                continue;
            const QList<QByteArray> parts = name.toByteArray().split('/');
            if (parts.size() == 3)
                abis.insert(QString::fromUtf8(parts.at(1)));
        }
    };
    openSplits();
    if (!isSet())
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

bool PackageData::isEnabled(const XmlElement &element)
{
    return isTrue(element.attribute(Attr::Enabled), true)
           && isTrue(manifest().applicationAttribute(Attr::Enabled), true);
}

bool PackageData::isExported(const XmlElement &element, bool isByDefault) const
{
    const auto isFilter = [](const XmlElement &child) { return child.name == QLatin1String("intent-filter"); };
    const bool hasFilter = std::any_of(element.children.cbegin(), element.children.cend(), isFilter);
    return isTrue(element.attribute(Attr::Exported), isByDefault || hasFilter);
}

std::optional<ResolvedValue> PackageData::applicationIcon()
{
    const XmlAttribute *const icon = manifest().applicationAttribute(Attr::Icon);
    return icon != nullptr ? std::make_optional(iconValue(icon)) : std::nullopt;
}

QVector<ResolvedValue> PackageData::launcherIcons(int count)
{
    QVector<ResolvedValue> icons;
    const XmlAttribute *const own = manifest().applicationAttribute(Attr::Icon);
    for (const Manifest::LauncherEntry &entry : m_manifest.launchers()) {
        if (icons.size() == count)
            break;
        const XmlAttribute *const icon = m_manifest.innermostAttribute(entry, Attr::Icon);
        if (icon != own && isEnabled(*entry.activity) && isExported(*entry.activity))
            icons.append(iconValue(icon));
    }
    return icons;
}

} // namespace SorrelKit
