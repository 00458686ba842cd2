// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/ResourceTable.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int PackageCountAt = 8;
constexpr quint32 MaxPackageId = 0xff;
constexpr quint32 MaxTypeEntries = TypeChunk::MaxSlots;

/// A chunk with a list of records of one size behind its header.
struct RecordList {
    int headerSize; ///< at least
    int countAt;
    int recordSize;

    bool isIn(const ChunkView &chunk) const
    {
        const qint64 count = chunk.bytes().u32(countAt);
        return chunk.headerSize() >= headerSize && count * recordSize <= chunk.size() - chunk.headerSize();
    }
    ByteView record(const ChunkView &chunk, qint64 number) const
    {
        return chunk.bytes().part(chunk.headerSize() + number * recordSize, recordSize);
    }
    qint64 count(const ChunkView &chunk) const { return chunk.bytes().u32(countAt); }
};

constexpr RecordList TypeSpecs{16, 12, 4};
constexpr RecordList Libraries{12, 8, 260};
constexpr RecordList Policies{16, 12, 4};
constexpr RecordList Aliases{12, 8, 8};

bool isLibrary(const ChunkView &chunk)
{
    constexpr quint32 FirstInvalidId = 0xff;
    bool isSound = Libraries.isIn(chunk);
    for (qint64 i = 0; isSound && i < Libraries.count(chunk); ++i)
        isSound = Libraries.record(chunk, i).u32(0) < FirstInvalidId;
    return isSound;
}

bool isOverlayable(const ChunkView &chunk)
{
    constexpr int HeaderSize = 8 + 2 * 512; // with two texts of 256 units each
    if (chunk.headerSize() < HeaderSize)
        return false;
    ChunkList policies(chunk.bytes(), chunk.headerSize());
    while (policies.hasNext()) {
        const ChunkView policy = policies.next();
        if (policy.type() == ChunkType::OverlayablePolicy && !Policies.isIn(policy))
            return false;
    }
    return !policies.isDamaged();
}

} // namespace

QString ResourceTable::Package::name() const
{
    QString name;
    for (qint64 at = 0; at < nameUnits.size() && nameUnits.u16(at) != 0; at += 2)
        name += QChar(nameUnits.u16(at));
    return name;
}

ResourceTable::ResourceTable(const ByteView &bytes, std::shared_ptr<const void> owner, int maxTypeChunks)
    : m_owner(std::move(owner)), m_maxTypeChunks(maxTypeChunks)
{
    ChunkList chunks(bytes, 0);
    bool hasTable = false;
    while (chunks.hasNext() && m_fault == FormatFault::None) {
        const ChunkView chunk = chunks.next();
        if (chunk.type() == ChunkType::Table)
            readTable(chunk);
        else
            m_oddities.add(Oddity::UnknownTableChunk, qint64(chunk.type()));
        hasTable = hasTable || chunk.type() == ChunkType::Table;
    }
    if (!hasTable && m_fault == FormatFault::None)
        m_fault = FormatFault::NoTable;
    checkEnd(chunks);
}

void ResourceTable::checkEnd(const ChunkList &chunks)
{
    if (m_fault == FormatFault::None && chunks.isDamaged())
        m_fault = FormatFault::DamagedTableChunk;
    else if (m_fault == FormatFault::None && chunks.rest() > 0)
        m_oddities.add(Oddity::TableBytesBehind, chunks.rest());
}

bool ResourceTable::readPool(const ChunkView &chunk, StringPoolView *pool)
{
    *pool = StringPoolView(chunk);
    if (pool->hasOddStyles())
        m_oddities.add(Oddity::TablePoolStyles);
    if (pool->isSound())
        return true;
    if (pool->count() < chunk.bytes().u32(StringPoolView::CountAt))
        m_oddities.add(Oddity::TablePoolCount);
    m_fault = FormatFault::DamagedTablePool;
    return false;
}

void ResourceTable::readTable(const ChunkView &table)
{
    if (table.headerSize() < HeaderSize) {
        m_fault = FormatFault::DamagedTableHeader;
        return;
    }
    qint64 packagesLeft = table.bytes().u32(PackageCountAt);
    ChunkList chunks(table.bytes(), table.headerSize());
    while (chunks.hasNext() && m_fault == FormatFault::None) {
        const ChunkView chunk = chunks.next();
        if (chunk.type() == ChunkType::StringPool && !m_hasStrings)
            m_hasStrings = readPool(chunk, &m_strings);
        else if (chunk.type() != ChunkType::Package)
            m_oddities.add(Oddity::UnknownTableChunk, qint64(chunk.type()));
        else if (packagesLeft-- == 0)
            m_fault = FormatFault::UncountedPackage;
        else if (m_packages.size() < MaxPackages)
            readPackage(chunk);
        else
            m_fault = FormatFault::TooManyPackages;
    }
    checkEnd(chunks);
}

void ResourceTable::append(QVector<QVector<TypeChunk>> *chunks, const TypeChunk &type)
{
    if (type.typeId() >= chunks->size())
        chunks->resize(type.typeId() + 1);
    (*chunks)[type.typeId()].append(type);
}

void ResourceTable::readPackage(const ChunkView &chunk)
{
    const quint32 id = chunk.bytes().u32(Package::IdAt);
    if (chunk.headerSize() < Package::HeaderSize || id > MaxPackageId) {
        m_fault = FormatFault::DamagedTableHeader;
        return;
    }
    Package package;
    package.id = quint8(id);
    package.nameUnits = chunk.bytes().part(Package::NameAt, qint64(2) * Package::NameUnits);
    TypeIds specified;
    ChunkList chunks(chunk.bytes(), chunk.headerSize());
    while (chunks.hasNext() && m_fault == FormatFault::None) {
        const qint64 at = chunks.position();
        readPart(chunks.next(), at, chunk, &specified, &package);
    }
    checkEnd(chunks);
    noteOddities(package);
    m_packages.append(std::move(package));
}

void ResourceTable::readPart(const ChunkView &part, qint64 at, const ChunkView &package, TypeIds *specified,
                             Package *result)
{
    const auto require = [this](bool isSound, FormatFault fault) {
        if (!isSound)
            m_fault = fault;
    };
    switch (part.type()) {
    case ChunkType::StringPool:
        if (at == package.bytes().u32(Package::TypeStringsAt))
            readPool(part, &result->typeNames);
        else if (at == package.bytes().u32(Package::KeyStringsAt))
            readPool(part, &result->keys);
        else
            m_oddities.add(Oddity::UnknownTableChunk, qint64(part.type()));
        break;
    case ChunkType::TypeSpec:
        // Android compares the size of the flags with the package, and does not read all of them.
        require(part.headerSize() >= TypeSpecs.headerSize && part.bytes().u8(TypeIdAt) != 0
                    && TypeSpecs.count(part) <= MaxTypeEntries
                    && TypeSpecs.count(part) * TypeSpecs.recordSize <= package.size() - package.headerSize(),
                FormatFault::DamagedTypeSpec);
        specified->set(part.bytes().u8(TypeIdAt));
        break;
    case ChunkType::Type:
        readType(TypeChunk(part), *specified, result);
        break;
    case ChunkType::Library:
        require(isLibrary(part), FormatFault::DamagedLibrary);
        m_oddities.add(Oddity::LibraryChunk);
        break;
    case ChunkType::Overlayable:
        require(isOverlayable(part), FormatFault::DamagedOverlay);
        m_oddities.add(Oddity::OverlayChunk);
        break;
    case ChunkType::StagedAlias:
        m_oddities.add(Oddity::StagedAlias);
        // Android ignores the aliases of other packages.
        if (result->id == ResourceId::PlatformPackage)
            readAliases(part);
        break;
    default:
        m_oddities.add(Oddity::UnknownTableChunk, qint64(part.type()));
    }
}

void ResourceTable::readType(const TypeChunk &type, const TypeIds &specified, Package *package)
{
    if (!type.isValid()) {
        m_fault = FormatFault::DamagedType;
    } else if (!specified.test(type.typeId())) {
        m_fault = FormatFault::UnspecifiedType;
    } else if (m_typeChunks >= m_maxTypeChunks) {
        m_fault = FormatFault::TooManyTypes;
    } else {
        append(&package->chunks, type);
        ++m_typeChunks;
    }
}

void ResourceTable::readAliases(const ChunkView &chunk)
{
    if (!Aliases.isIn(chunk)) {
        m_fault = FormatFault::DamagedAliases;
        return;
    }
    if (Aliases.count(chunk) > MaxAliases - qint64(m_aliases.size())) {
        m_fault = FormatFault::TooManyAliases;
        return;
    }
    std::vector<quint32> finalized;
    for (qint64 i = 0; i < Aliases.count(chunk); ++i) {
        const ByteView record = Aliases.record(chunk, i);
        m_aliases.emplace_back(record.u32(0), record.u32(4));
        finalized.push_back(record.u32(4));
    }
    std::sort(m_aliases.begin(), m_aliases.end());
    std::sort(finalized.begin(), finalized.end());
    const auto isSame = [](const auto &left, const auto &right) { return left.first == right.first; };
    if (std::adjacent_find(finalized.cbegin(), finalized.cend()) != finalized.cend()
        || std::adjacent_find(m_aliases.cbegin(), m_aliases.cend(), isSame) != m_aliases.cend())
        m_fault = FormatFault::DamagedAliases;
}

void ResourceTable::noteOddities(const Package &package)
{
    if (package.nameUnits.u16(0) == 0)
        m_oddities.add(Oddity::UnnamedPackage, package.id);
    if (std::any_of(m_packages.cbegin(), m_packages.cend(),
                    [&package](const Package &other) { return other.id == package.id; }))
        m_oddities.add(Oddity::RepeatedPackage, package.id);
    if (!package.chunks.isEmpty() && package.typeNames.count() == 0)
        m_oddities.add(Oddity::NoTypePool, package.id);
    else if (package.chunks.size() > package.typeNames.count() + 1)
        m_oddities.add(Oddity::UnnamedType, package.chunks.size() - 1);
}

void ResourceTable::addTypeOddities(OddityList *oddities) const
{
    const auto add = [oddities](const TypeChunk &type) {
        if (type.hasOddConfiguration())
            oddities->add(Oddity::ConfigurationSize);
        for (int number = 0; number < type.slotCount(); ++number) {
            const TypeChunk::Slot slot = type.slot(number);
            if (slot.offset != TypeChunk::NoEntry && !type.entryAt(slot.offset).isValid())
                oddities->add(Oddity::EntryPastChunk, slot.index);
        }
    };
    for (const Package &package : m_packages) {
        for (const QVector<TypeChunk> &types : package.chunks)
            std::for_each(types.cbegin(), types.cend(), add);
    }
}

quint32 ResourceTable::resolvedAlias(quint32 id) const
{
    const auto alias = std::lower_bound(m_aliases.cbegin(), m_aliases.cend(), std::make_pair(id, quint32(0)));
    return alias != m_aliases.cend() && alias->first == id ? alias->second : id;
}

quint8 ResourceTable::ownerOf(quint32 id) const
{
    // Within a library that is loaded dynamically, references to its own package have the id 0.
    return ResourceId::package(id) == 0 ? packageId() : ResourceId::package(id);
}

QVector<TableValue> ResourceTable::values(quint32 id) const
{
    QVector<TableValue> values;
    visitValues(id, [&values](const TableValue &value) { values.append(value); });
    return values;
}

int ResourceTable::typeChunkCount(quint32 id) const
{
    id = finalId(id);
    int count = 0;
    for (const Package &package : m_packages) {
        const QVector<TypeChunk> *const types =
            package.id == ownerOf(id) ? package.typeChunks(ResourceId::type(id)) : nullptr;
        count += types != nullptr ? int(types->size()) : 0;
    }
    return count;
}

QString ResourceTable::typeName(quint32 id) const
{
    id = finalId(id);
    for (const Package &package : m_packages) {
        QString name = package.id == ownerOf(id) ? package.typeNames.at(qint64(ResourceId::type(id)) - 1) : QString();
        if (!name.isEmpty())
            return name;
    }
    return {};
}
