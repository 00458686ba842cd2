// SPDX-License-Identifier: LGPL-2.1-or-later
#include "package/PackageData.h"

#include "diagnostic/DiagnosticList.h"
#include "format/AndroidAttributes.h"
#include "format/XmlReader.h"
#include "limits/ByteSum.h"
#include "limits/Limits.h"
#include "platform/PlatformReferences.h"
#include "theme/PlatformThemes.h"

#include <QSet>

#include <algorithm>
#include <limits>
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

PackageData::PackageData(std::shared_ptr<ByteSource> source, const QStringList &paths)
    : m_outer(std::make_unique<ZipArchive>(std::move(source))),
      m_paths(paths),
      m_resolver(*this, anyPhone(), &m_lookups)
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
    if (m_outer->contains(manifestPath()) || !SetReader::isSet(*m_outer))
        return true;
    auto set = m_paths ? std::make_unique<SetReader>(*m_outer, m_reading, *m_paths)
                       : std::make_unique<SetReader>(*m_outer, m_reading);
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
    for (SetReader::Split &split : m_set->splits()) {
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
        Budget any(std::numeric_limits<qint64>::max(), 0);
        const QByteArray bytes = m_outer->contentAnyway(manifestPath(), Limits::MaxManifestBytes, &any).toByteArray();
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

QByteArray PackageData::manifestBytes(Budget *budget)
{
    return open() ? base().contentAnyway(manifestPath(), Limits::MaxManifestBytes, budget).toByteArray() : QByteArray();
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

void PackageData::setPlatform(const PlatformDataPointer &platform)
{
    m_platform = platform->isNone() ? PlatformDataPointer() : platform;
    m_resolver.forget();
    m_iconFiles.forget();
}

QList<quint32> PackageData::platformResources()
{
    Budget budget(MaxLookupWork, MaxLookupBytes);
    return PlatformReferences(m_resolver, *this, budget).ids(manifest().root());
}

void PackageData::readTable(ZipArchive &archive, FileOddities *files)
{
    const QString path = tablePath();
    // A package may have no resources, and splits for processors have none. A table that Android does not open does not
    // exist for it; one that does not inflate makes it refuse the package.
    if (!archive.isOpened(path))
        return;
    // A package that is compressed in a set may list tables that are empty and take long.
    Budget any(std::numeric_limits<qint64>::max(), 0);
    const SharedBytes bytes = archive.contentAnyway(path, m_tableBytesLeft, isSet() ? &m_reading : &any);
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
    if (m_diagnostics)
        return *m_diagnostics;
    DiagnosticList diagnostics;
    for (std::size_t number = 0; number < m_oddities.size(); ++number) {
        const FileOddities &files = m_oddities.at(number);
        ZipArchive &archive = isSet() ? *m_members.at(number) : *m_outer;
        diagnostics.append(archive.oddities(), files.package, QString());
        diagnostics.append(archive.oddities(manifestPath()), files.package, manifestPath());
        diagnostics.append(files.manifest, files.package, manifestPath());
        diagnostics.append(archive.oddities(tablePath()), files.package, tablePath());
        OddityList table = files.table;
        if (files.types != nullptr)
            files.types->addTypeOddities(&table);
        diagnostics.append(table, files.package, tablePath());
    }
    m_diagnostics = diagnostics.all();
    return *m_diagnostics;
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

QMap<QString, qint64> PackageData::nativeLibraryBytes(ZipArchive &package)
{
    constexpr int MaxMembers = 1 << 16;
    QMap<QString, qint64> bytes;
    const ZipDirectory &directory = package.directory();
    for (int number = 0; number < qMin(directory.count(), MaxMembers); ++number) {
        const ByteView name = directory.name(number);
        if (!name.hasText(0, "lib/") || !name.hasText(name.size() - 3, ".so"))
            continue;
        const QList<QByteArray> parts = name.toByteArray().split('/');
        if (parts.size() != 3)
            continue;
        qint64 &ofAbi = bytes[QString::fromUtf8(parts.at(1))];
        ofAbi = byteSum(ofAbi, directory.member(number).size);
    }
    return bytes;
}

QStringList PackageData::nativeAbis()
{
    openSplits();
    QMap<QString, qint64> abis = isSet() ? QMap<QString, qint64>() : nativeLibraryBytes(*m_outer);
    for (const auto &member : m_members) {
        const QMap<QString, qint64> more = nativeLibraryBytes(*member);
        for (auto each = more.cbegin(); each != more.cend(); ++each)
            abis.insert(each.key(), each.value());
    }
    return abis.keys();
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

const XmlElement *PackageData::details(const XmlElement &metaData)
{
    const QString path = resolved(metaData.attribute(Attr::Resource)).text;
    auto known = m_documents.find(path);
    if (known == m_documents.end()) {
        if (path.isEmpty() || !m_lookups.holdBytes(IconFileLookup::ResultBytes + qint64(sizeof(QChar)) * path.size()))
            return nullptr;
        known = m_documents.emplace(path, document(path)).first;
    }
    return known->second.isNull() ? nullptr : &known->second;
}

XmlElement PackageData::document(const QString &path)
{
    const QByteArray bytes = files().file(path, MaxDocumentBytes, &m_lookups);
    if (!XmlReader::isDocument(bytes) || !m_lookups.spendWork(Budget::DocumentByteWork * bytes.size()))
        return {};
    const XmlReader reader(bytes, qMin(MaxDocumentCharacters, m_lookups.workLeft() / Budget::DocumentByteWork));
    const bool isRead =
        m_lookups.chargeWork(Budget::DocumentByteWork * reader.characters()) && reader.fault() == FormatFault::None;
    const qint64 held = BytesPerDocumentByte * bytes.size() + qint64(sizeof(QChar)) * reader.characters();
    return isRead && m_lookups.holdBytes(held) ? reader.root() : XmlElement();
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

int PackageData::sdkVersion(quint32 id, int fallback)
{
    constexpr int PreviewSdkVersion = 10000;
    const ResolvedValue value = resolved(manifest().childAttribute(QStringLiteral("uses-sdk"), id));
    if (const auto version = value.value.integer())
        return *version;
    if (value.text.isEmpty())
        return fallback;
    bool isNumber = false;
    const int version = value.text.toInt(&isNumber);
    return isNumber ? version : PreviewSdkVersion;
}

int PackageData::minSdkVersion()
{
    constexpr int FirstSdkVersion = 1;
    return sdkVersion(Attr::MinSdkVersion, FirstSdkVersion);
}

int PackageData::targetSdkVersion()
{
    return sdkVersion(Attr::TargetSdkVersion, minSdkVersion());
}

quint32 PackageData::theme(const XmlElement *activity)
{
    for (const XmlElement *element : {activity, manifest().application()}) {
        const XmlAttribute *const theme = element != nullptr ? element->attribute(Attr::Theme) : nullptr;
        if (theme != nullptr && theme->value.isReference() && theme->value.data != 0)
            return resolved(theme).resource;
    }
    return platformTheme(targetSdkVersion());
}

std::optional<ResolvedValue> PackageData::applicationBanner()
{
    const XmlAttribute *const banner = manifest().applicationAttribute(Attr::Banner);
    return banner != nullptr ? std::make_optional(iconValue(banner)) : std::nullopt;
}

std::optional<ResolvedValue> PackageData::applicationIcon(bool isRound)
{
    const XmlAttribute *const icon = manifest().innermostAttribute({}, Attr::Icon, isRound ? Attr::RoundIcon : 0);
    return icon != nullptr ? std::make_optional(iconValue(icon)) : std::nullopt;
}

QVector<LauncherIcon> PackageData::launcherIcons(int count, bool isRound)
{
    QVector<LauncherIcon> icons;
    const quint32 preferred = isRound ? Attr::RoundIcon : 0;
    const XmlAttribute *const own = manifest().innermostAttribute({}, Attr::Icon, preferred);
    for (const Manifest::EntryElements &entry : m_manifest.launchers()) {
        if (icons.size() == count)
            break;
        const XmlAttribute *const icon = m_manifest.innermostAttribute(entry, Attr::Icon, preferred);
        if (icon != own && isEnabled(*entry.component) && isExported(*entry.component))
            icons.append({iconValue(icon), entry.activity()});
    }
    return icons;
}

} // namespace SorrelKit
