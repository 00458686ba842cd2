// SPDX-License-Identifier: LGPL-2.1-or-later
#include "table/ResourcePackage.h"

#include "format/ResourceTable.h"
#include "stream/ChunkWalker.h"
#include "stream/Extractor.h"
#include "stream/TwosComplement.h"
#include "table/EntryOffsets.h"

#include <QStringBuilder>

#include <algorithm>
#include <utility>

namespace {

using Layout = ResourceTable::Package;

constexpr int LargestNamedTypeId = 0xff;

static_assert(Extractor::MaxRegions < ResourceEntry::MaxConfigs, "each configuration takes a region of its own");

} // namespace

ResourcePackage::ResourcePackage() : m_typeStrings(QString()) {}

void ResourcePackage::load(Extractor *reader, int headerSize)
{
    const qint64 chunkStart = qint64(reader->position) - ChunkView::HeaderSize;
    const auto chunkPosition = [chunkStart](int offset) { return offset != 0 ? offset + chunkStart : 0; };

    m_reader = reader;
    m_typeStrings.clear();
    m_typeNames.clear();
    m_id = reader->get32();
    const QVector<quint16> units = reader->getu16_vector(2 * Layout::NameUnits);
    if (!reader->failed()) {
        const auto nameEnd = std::find(units.cbegin(), units.cend() - 1, 0);
        m_name = QString(reinterpret_cast<const QChar *>(units.constData()), int(nameEnd - units.cbegin()));
        m_typeStringsOffset = chunkPosition(reader->get32());
        reader->skip(4); // last public type
        m_typeStrings.setName(m_name + QLatin1String(" type"));
        m_keyStringsOffset = chunkPosition(reader->get32());
        reader->skip(4); // last public key
        reader->skip64(qint64(headerSize) - Layout::HeaderSize);
        while (!reader->failed() && reader->remaining() >= 1)
            parseChunk();
        sortValues();
        readTypeNames();
    }
    m_reader = nullptr;
    m_configIndices.clear();
}

void ResourcePackage::parseChunk()
{
    ChunkWalker chunk(m_reader);
    while (chunk.next()) {
        switch (chunk.type()) {
        case ChunkType::Type:
            parseTypeChunk(chunk.headerSize());
            break;
        case ChunkType::TypeSpec:
            m_reader->get8(); // type id
            break;
        case ChunkType::StringPool:
            parseStringPool(chunk.headerSize());
            break;
        default:
            m_reader->diagnostics().add(SORREL_LOGGER,
                                        {Diagnostics::Code::UnexpectedTableChunk, unsigned(chunk.type())});
        }
    }
}

void ResourcePackage::parseStringPool(int headerSize)
{
    const qint64 chunkStart = qint64(m_reader->position) - ChunkView::HeaderSize;
    if (chunkStart == m_typeStringsOffset)
        m_typeStrings.load(m_reader, headerSize);
    else if (chunkStart == m_keyStringsOffset)
        StringPool(m_name + QLatin1String(" keys")).load(m_reader, headerSize); // only for its faults
    else
        m_reader->diagnostics().add(SORREL_LOGGER,
                                    {Diagnostics::Code::UnknownStringPool, unsigned(m_reader->position)});
}

void ResourcePackage::parseTypeChunk(int headerSize)
{
    m_reader->pushBoundary(headerSize - ChunkView::HeaderSize);
    const int typeId = m_reader->get8();
    m_reader->skip(3);
    const int entryCount = m_reader->get32();
    const int entriesStart = m_reader->get32();
    ResourceConfig config;
    config.load(m_reader);
    m_reader->popBoundary();

    // A type id of 0x80 or more is negative here, and passes. No lookup finds its entries.
    if (typeId == 0 || typeId > m_typeStrings.count())
        m_reader->setError(QStringLiteral("Typechunk id out of range"));
    if (entryCount < 0 || TypeChunk::OffsetSize * qint64(entryCount) > m_reader->remaining())
        m_reader->setError(QStringLiteral("Bogus entry count in type chunk"));
    if (m_reader->failed())
        return;

    const int configIndex = indexOfConfig(config);
    EntryOffsets offsets(m_reader, entryCount);
    m_reader->skip64(qint64(entriesStart) - headerSize - TypeChunk::OffsetSize * qint64(entryCount));
    m_values.reserve(typeId,
                     int(qBound(qint64(0), m_reader->remaining() / EntryView::SimpleSize, qint64(offsets.count()))));
    const int base = m_reader->position;
    while (m_reader->remaining() >= 1 && !m_reader->failed()) {
        parseSimpleEntries(typeId, offsets, base, configIndex);
        if (m_reader->remaining() < 1)
            break;
        const int entryIndex = offsets.entryAt(qint64(m_reader->position) - base);
        if (entryIndex < 0) {
            m_reader->setError(QStringLiteral("resource table contains entry not in index"));
            return;
        }
        parseEntry(typeId, entryIndex, configIndex);
    }
}

// Reads the simple entries from here that are in memory as a whole, as nearly all are: field by field, parseEntry()
// takes three times as long. Stops at any other entry.
void ResourcePackage::parseSimpleEntries(int typeId, EntryOffsets &offsets, int base, int configIndex)
{
    while (const char *entry = m_reader->atHand(EntryView::SimpleSize)) {
        const bool isMap = (qFromLittleEndian<quint16>(entry + 2) & EntryView::MapFlag) != 0;
        if (isMap || qFromLittleEndian<quint16>(entry) != EntryView::HeaderSize || m_values.count() == MaxEntries)
            return;
        const int entryIndex = offsets.entryAt(qint64(m_reader->position) - base);
        if (entryIndex < 0)
            return;
        const char *value = entry + EntryView::HeaderSize;
        const int data = qFromLittleEndian<qint32>(value + TypedValue::DataAt);
        m_values.append(typeId, {entryIndex, configIndex, qint8(value[TypedValue::TypeAt]), data});
        m_reader->take(EntryView::SimpleSize);
    }
}

void ResourcePackage::parseEntry(int typeId, int entryIndex, int configIndex)
{
    const int size = m_reader->get16();
    const int flags = m_reader->get16();
    m_reader->get32(); // key index
    if ((flags & EntryView::MapFlag) != 0) {
        m_reader->skip(4); // parent
        const int itemCount = m_reader->get32();
        m_reader->skip(size - EntryView::MapHeaderSize);
        m_reader->skip64(qint64(itemCount) * EntryView::ItemSize);
        return;
    }
    m_reader->skip(size - EntryView::HeaderSize);
    m_reader->skip(3); // size of the value, reserved
    const int dataType = m_reader->get8();
    const int data = m_reader->get32();
    store(typeId, {entryIndex, configIndex, dataType, data});
}

void ResourcePackage::store(int typeId, const ResourceEntry &value)
{
    if (m_values.count() == MaxEntries)
        m_reader->setError(QStringLiteral("too many values in package"));
    else
        m_values.append(typeId, value);
}

int ResourcePackage::indexOfConfig(const ResourceConfig &config)
{
    // Most types have their chunks in the same order of configurations as the previous type.
    const int expected = m_lastConfigIndex + 1;
    if (expected < m_configs.size() && m_configs.at(expected) == config)
        return m_lastConfigIndex = expected;
    const auto [known, isNew] = m_configIndices.emplace(config, m_configs.size());
    if (isNew)
        m_configs.append(config);
    m_lastConfigIndex = known->second;
    return m_lastConfigIndex;
}

void ResourcePackage::sortValues()
{
    m_values.sort();
    if (m_values.hasResourceOfMoreThan(MaxValues))
        m_reader->setError(QStringLiteral("too many values of one resource"));
}

void ResourcePackage::readTypeNames()
{
    const int count = qMin(m_typeStrings.count(), LargestNamedTypeId);
    m_typeNames.reserve(count);
    for (int index = 0; index < count; ++index) {
        m_typeNames.append(m_typeStrings.get(index));
        if (m_typeNames.constLast().size() > MaxTypeNameLength) {
            m_reader->setError(QStringLiteral("too long type name in resource table"));
            m_typeNames.clear();
            return;
        }
    }
}

QString ResourcePackage::refToString(int ref) const
{
    const auto id = quint32(ref);
    const int typeId = ResourceId::type(id);
    if (typeId == 0 || typeId > m_typeNames.size())
        return QStringLiteral("@#%1").arg(twosComplement(ref), 8, 16, QLatin1Char('0'));
    const QString prefix =
        ResourceId::package(id) != ResourceId::ApplicationPackage ? m_name + QLatin1Char(':') : QString();
    return QLatin1Char('@') % prefix % m_typeNames.at(typeId - 1) % QLatin1Char('/')
           % QString::number(ResourceId::entry(id));
}
