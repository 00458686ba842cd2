// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ResourcePackage.h"

#include "ApkResources.h"
#include "ChunkWalker.h"
#include "EntryOffsets.h"
#include "Extractor.h"
#include "LocaleLookup.h"
#include "ResourceTypes.h"
#include "ValueTexts.h"

#include <QDebug>

#include <algorithm>
#include <utility>

namespace {

constexpr int NameUnits = 128;
constexpr int KnownHeaderSize = ResourceTypes::ChunkHeaderSize + 4 + 2 * NameUnits + 4 * 4;
constexpr int MapFlag = 0x0001;
constexpr int SimpleEntryHeaderSize = 8;
constexpr int MapEntryHeaderSize = 16;
constexpr int MapItemSize = 12;
constexpr int LargestTypeId = 0xff;

} // namespace

ResourcePackage::ResourcePackage() : m_typeStrings(QString()), m_keyStrings(QString()) {}

void ResourcePackage::load(Extractor *reader, int headerSize)
{
    const qint64 chunkStart = qint64(reader->position) - ResourceTypes::ChunkHeaderSize;
    const auto chunkPosition = [chunkStart](int offset) { return offset != 0 ? offset + chunkStart : 0; };

    m_reader = reader;
    m_typeStrings.clear();
    m_keyStrings.clear();
    m_typeNames.clear();
    m_id = reader->get32();
    const QVector<quint16> units = reader->getu16_vector(2 * NameUnits);
    if (!reader->failed()) {
        const auto nameEnd = std::find(units.cbegin(), units.cend() - 1, 0);
        m_name = QString(reinterpret_cast<const QChar *>(units.constData()), int(nameEnd - units.cbegin()));
        m_typeStringsOffset = chunkPosition(reader->get32());
        reader->skip(4); // last public type
        m_typeStrings.setName(m_name + QLatin1String(" type"));
        m_keyStringsOffset = chunkPosition(reader->get32());
        reader->skip(4); // last public key
        m_keyStrings.setName(m_name + QLatin1String(" keys"));
        reader->skip64(qint64(headerSize) - KnownHeaderSize);
        while (!reader->failed() && reader->remaining() >= 1)
            parseChunk();
        sortEntries();
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
        case ResourceTypes::TypeChunk:
            parseTypeChunk(chunk.headerSize());
            break;
        case ResourceTypes::TypeSpecChunk:
            m_reader->get8(); // type id
            break;
        case ResourceTypes::StringPoolChunk:
            parseStringPool(chunk.headerSize());
            break;
        default:
            if (m_reader->mayTell())
                qDebug("Skipping unexpected 0x%04x chunk", unsigned(quint16(chunk.type())));
        }
    }
}

void ResourcePackage::parseStringPool(int headerSize)
{
    const qint64 chunkStart = qint64(m_reader->position) - ResourceTypes::ChunkHeaderSize;
    m_reader->readAhead();
    if (chunkStart == m_typeStringsOffset)
        m_typeStrings.load(m_reader, headerSize);
    else if (chunkStart == m_keyStringsOffset)
        m_keyStrings.load(m_reader, headerSize);
    else if (m_reader->mayTell())
        qDebug("Skipping unknown string pool at %x", unsigned(m_reader->position));
}

void ResourcePackage::parseTypeChunk(int headerSize)
{
    m_reader->readAhead();
    m_reader->pushBoundary(headerSize - ResourceTypes::ChunkHeaderSize);
    const int typeId = m_reader->get8();
    m_reader->skip(3);
    const int entryCount = m_reader->get32();
    const int entriesStart = m_reader->get32();
    ResourceConfig config;
    config.load(m_reader);
    m_reader->popBoundary();

    // A type id byte of 0x80 or more is negative, and passes; its entries are kept where no lookup finds them.
    if (typeId == 0 || typeId > m_typeStrings.count())
        m_reader->setError(QStringLiteral("Typechunk id out of range"));
    if (entryCount < 0 || 4 * qint64(entryCount) > m_reader->remaining())
        m_reader->setError(QStringLiteral("Bogus entry count in type chunk"));
    if (m_reader->failed())
        return;

    const int configIndex = indexOfConfig(config);
    EntryOffsets offsets(m_reader->get32s(entryCount));
    m_reader->skip64(qint64(entriesStart) - headerSize - 4 * qint64(entryCount));
    const qint64 base = m_reader->position;
    while (m_reader->remaining() >= 1 && !m_reader->failed()) {
        const int entryIndex = offsets.entryAt(m_reader->position - base);
        if (entryIndex < 0) {
            m_reader->setError(QStringLiteral("resource table contains entry not in index"));
            return;
        }
        parseEntry(typeId, entryIndex, configIndex);
    }
}

void ResourcePackage::parseEntry(int typeId, int entryIndex, int configIndex)
{
    const int size = m_reader->get16();
    const int flags = m_reader->get16();
    m_reader->get32(); // key index
    if ((flags & MapFlag) != 0) {
        m_reader->skip(4); // parent
        const int itemCount = m_reader->get32();
        m_reader->skip(size - MapEntryHeaderSize);
        m_reader->skip64(qint64(itemCount) * MapItemSize);
        return;
    }
    m_reader->skip(size - SimpleEntryHeaderSize);
    m_reader->skip(3); // size of the value, reserved
    const int dataType = m_reader->get8();
    const int data = m_reader->get32();
    if (m_entries.size() == MaxEntries) {
        m_reader->setError(QStringLiteral("too many values in package"));
        return;
    }
    m_entries.append({typeId, entryIndex, {configIndex, dataType, data}});
}

int ResourcePackage::indexOfConfig(const ResourceConfig &config)
{
    const QByteArray key(reinterpret_cast<const char *>(&config), sizeof config);
    const auto known = m_configIndices.constFind(key);
    if (known != m_configIndices.cend())
        return *known;
    m_configs.append(config);
    m_configIndices.insert(key, m_configs.size() - 1);
    return m_configs.size() - 1;
}

void ResourcePackage::sortEntries()
{
    const auto byResource = [](const StoredEntry &left, const StoredEntry &right) {
        return std::make_pair(left.typeId, left.entryIndex) < std::make_pair(right.typeId, right.entryIndex);
    };
    std::stable_sort(m_entries.begin(), m_entries.end(), byResource);
    m_entries.squeeze();
    for (int first = 0, last = MaxValues; last < m_entries.size(); ++first, ++last) {
        if (!byResource(m_entries.at(first), m_entries.at(last))) {
            m_reader->setError(QStringLiteral("too many values of one resource"));
            return;
        }
    }
}

void ResourcePackage::readTypeNames()
{
    const int count = qMin(m_typeStrings.count(), LargestTypeId);
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

ResourcePackage::EntryRange ResourcePackage::entries(int typeId, int entry) const
{
    if (typeId == 0)
        return {m_entries.cend(), m_entries.cend()};
    const auto wanted = std::make_pair(typeId, entry);
    const auto resource = [](const StoredEntry &stored) { return std::make_pair(stored.typeId, stored.entryIndex); };
    const auto first = std::partition_point(m_entries.cbegin(), m_entries.cend(),
                                            [&](const StoredEntry &stored) { return resource(stored) < wanted; });
    const auto last = std::partition_point(first, m_entries.cend(),
                                           [&](const StoredEntry &stored) { return resource(stored) == wanted; });
    return {first, last};
}

QString ResourcePackage::refToString(int ref) const
{
    const int typeId = (ref >> 16) & 0xff;
    if (typeId == 0 || typeId > m_typeNames.size())
        return QStringLiteral("@#%1").arg(ref, 8, 16, QLatin1Char('0'));
    QString text = m_typeNames.at(typeId - 1) + QLatin1Char('/') + QString::number(ref & 0xffff);
    if (((ref >> 24) & 0xff) != ResourceTypes::ApplicationPackageId)
        text.prepend(m_name + QLatin1Char(':'));
    return QLatin1Char('@') + text;
}

QStringList ResourcePackage::lookupAll(const QString &type, int entry, const ApkResources &res) const
{
    ValueTexts texts(res);
    QStringList values;
    for (const StoredEntry &stored : entries(typeId(type), entry))
        values.append(texts.text(stored.value.dataType, stored.value.data));
    return values;
}

QMap<QString, QString> ResourcePackage::lookupAllByConfig(const QString &type, int entry, const ApkResources &res) const
{
    ValueTexts texts(res);
    QMap<QString, QString> values;
    for (const StoredEntry &stored : entries(typeId(type), entry)) {
        values.insert(m_configs.at(stored.value.configIndex).toString(),
                      texts.text(stored.value.dataType, stored.value.data));
    }
    return values;
}

QMap<QString, QString> ResourcePackage::lookupByLocale(const QString &type, int entry, const ApkResources &res,
                                                       int depth) const
{
    return LocaleLookup(res).inPackage(*this, typeId(type), entry, depth);
}
