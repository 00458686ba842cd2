// SPDX-License-Identifier: LGPL-2.1-or-later
#include "resources/ResourceIndex.h"

#include <algorithm>
#include <utility>

namespace SorrelKit {

namespace {

// The names that optimizers of packages write for every entry.
bool isPlaceholder(const QString &name)
{
    return name == QLatin1String("0_resource_name_obfuscated") || name == QLatin1String("(name removed)");
}

bool isNumber(const QString &name)
{
    return std::all_of(name.cbegin(), name.cend(),
                       [](QChar character) { return character >= QLatin1Char('0') && character <= QLatin1Char('9'); });
}

quint32 typeBits(quint8 packageId, quint8 typeId)
{
    return quint32(packageId) << 24 | quint32(typeId) << 16;
}

// A name; empty when it is too long.
QString nameAt(const StringPoolView &pool, qint64 index)
{
    QString name = pool.at(index, ResourceIndex::MaxNameLength + 1);
    return name.size() > ResourceIndex::MaxNameLength ? QString() : name;
}

} // namespace

ResourceIndex::ResourceIndex(QVector<QSharedPointer<const ResourceTable>> tables) : m_tables(std::move(tables))
{
    collectChunks();
    qint64 slotCount = 0;
    for (const Chunk &chunk : m_chunks)
        slotCount += chunk.type->slotCount();
    // reserve() touches no memory: only pages of written values count.
    m_slots.reserve(std::size_t(qMin(slotCount, qint64(MaxValues))));
    for (int number = 0; number < chunkCount() && m_isComplete; ++number)
        collectSlots(number);
    const auto isBefore = [](const Slot &a, const Slot &b) { return a.place() < b.place(); };
    // Tables of one configuration are sorted.
    if (!std::is_sorted(m_slots.cbegin(), m_slots.cend(), isBefore))
        std::sort(m_slots.begin(), m_slots.end(), isBefore);
}

void ResourceIndex::collectChunks()
{
    for (const auto &table : m_tables) {
        for (const ResourceTable::Package &package : table->packages()) {
            if (m_packageNames.isEmpty())
                m_packageId = package.id;
            if (!m_packageNames.contains(package.id))
                m_packageNames.insert(package.id, package.name());
            collectTypes(*table, package);
        }
    }
}

void ResourceIndex::collectTypes(const ResourceTable &table, const ResourceTable::Package &package)
{
    for (int typeId = 0; typeId < package.chunks.size(); ++typeId) {
        const QVector<TypeChunk> *const chunks = package.typeChunks(quint8(typeId));
        if (chunks == nullptr)
            continue;
        QString &name = m_typeNames[typeBits(package.id, quint8(typeId))];
        if (name.isEmpty())
            name = nameAt(package.typeNames, qint64(typeId) - 1);
        for (const TypeChunk &chunk : *chunks)
            m_chunks.push_back({&chunk, &table, &package});
    }
}

void ResourceIndex::collectSlots(int chunk)
{
    const Chunk &source = m_chunks.at(std::size_t(chunk));
    const quint32 bits = typeBits(source.package->id, source.type->typeId());
    m_isComplete = source.type->slotCount() <= m_slotsLeft;
    m_slotsLeft -= source.type->slotCount();
    int last = -1;
    for (int number = 0; number < source.type->slotCount() && m_isComplete; ++number) {
        const TypeChunk::Slot slot = source.type->slot(number);
        // Looking up a sparse chunk relies on its order.
        if (slot.offset == TypeChunk::NoEntry || slot.index <= last || !source.type->entryAt(slot.offset).isValid())
            continue;
        last = slot.index;
        m_isComplete = m_slots.size() < MaxValues;
        if (m_isComplete)
            m_slots.push_back({bits | quint32(slot.index), quint32(chunk), quint32(slot.offset)});
    }
}

QList<quint32> ResourceIndex::ids() const
{
    QList<quint32> ids;
    for (const Slot &slot : m_slots) {
        if (ids.isEmpty() || ids.last() != slot.id)
            ids.append(slot.id);
    }
    return ids;
}

ResourceIndex::Range ResourceIndex::range(quint32 first, quint64 end) const
{
    const auto isBefore = [](const Slot &slot, quint64 id) { return slot.id < id; };
    const auto from = std::lower_bound(m_slots.cbegin(), m_slots.cend(), quint64(first), isBefore);
    const auto to = std::lower_bound(from, m_slots.cend(), end, isBefore);
    return {int(from - m_slots.cbegin()), int(to - m_slots.cbegin())};
}

ResourceIndex::Range ResourceIndex::values(quint32 id) const
{
    if (id >> 24 == 0)
        id |= quint32(m_packageId) << 24;
    return range(id, quint64(id) + 1);
}

ResourceIndex::Range ResourceIndex::valuesOfType(quint8 packageId, quint8 typeId) const
{
    const quint32 first = typeBits(packageId, typeId);
    return range(first, quint64(first) + TypeChunk::MaxEntries);
}

ResourceIndex::Value ResourceIndex::value(int number) const
{
    const Slot &slot = m_slots.at(std::size_t(number));
    const Chunk &chunk = m_chunks.at(slot.chunk);
    return {chunk.type->entryAt(slot.offset), chunk.table, chunk.package, chunk.type, int(slot.chunk)};
}

QString ResourceIndex::entryName(int number) const
{
    const Value value = this->value(number);
    return entryName(*value.package, value.entry);
}

QString ResourceIndex::entryName(const ResourceTable::Package &package, const EntryView &entry)
{
    QString name = nameAt(package.keys, entry.key());
    return isPlaceholder(name) || isNumber(name) ? QString() : name;
}

QString ResourceIndex::typeName(quint8 packageId, quint8 typeId) const
{
    return m_typeNames.value(typeBits(packageId, typeId));
}

} // namespace SorrelKit
