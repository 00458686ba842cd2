// SPDX-License-Identifier: LGPL-2.1-or-later
#include "TypeRewriter.h"

#include <QtEndian>

#include <algorithm>
#include <map>

namespace SorrelKit {

namespace {

constexpr int ChunkSizeAt = 4;
constexpr int FlagsAt = 9;
constexpr int EntryCountAt = 12;
constexpr int EntriesStartAt = 16;
constexpr int SmallestConfiguration = 4; ///< which is its size alone

constexpr int SimpleEntryHeaderSize = 8;
constexpr int SimpleEntrySize = SimpleEntryHeaderSize + TypedValue::Size;
constexpr quint16 CompactDataTypeMask = 0xff00;

void poke32(QByteArray *bytes, qint64 at, qint64 value)
{
    qToLittleEndian(quint32(value), bytes->data() + at);
}

void append(QByteArray *bytes, const ByteView &view)
{
    bytes->append(reinterpret_cast<const char *>(view.data()), int(view.size()));
}

qint64 classicSize(const EntryView &entry)
{
    return entry.isCompact() ? SimpleEntrySize : entry.bytes().size();
}

bool isReadable(const EntryView &entry)
{
    return entry.isValid() && (entry.isCompact() || entry.bytes().u16(0) <= TypeRewriter::MaxHeaderSize);
}

// A compact entry holds a simple value, whatever else its flags say.
QByteArray expanded(const EntryView &entry)
{
    constexpr quint16 FlagsOfOtherForms = CompactDataTypeMask | EntryView::CompactFlag | EntryView::MapFlag;
    const TypedValue value = entry.value();
    QByteArray bytes(SimpleEntrySize, '\0');
    char *const at = bytes.data();
    qToLittleEndian(quint16(SimpleEntryHeaderSize), at);
    qToLittleEndian(quint16(entry.flags() & ~FlagsOfOtherForms), at + 2);
    qToLittleEndian(entry.key(), at + 4);
    qToLittleEndian(quint16(TypedValue::Size), at + SimpleEntryHeaderSize);
    qToLittleEndian(quint8(value.type), at + SimpleEntryHeaderSize + 3);
    qToLittleEndian(value.data, at + SimpleEntryHeaderSize + 4);
    return bytes;
}

} // namespace

TypeRewriter::TypeRewriter(const ChunkView &chunk) : m_chunk(chunk), m_type(chunk)
{
    if (!hasSoundHeader()) {
        m_fault = QStringLiteral("damaged type in resource table");
        return;
    }
    const std::vector<TypeChunk::Slot> used = usedSlots();
    m_resourceCount = m_type.isSparse() ? (used.empty() ? 0 : used.back().index + 1) : m_type.slotCount();
    if (!place(used))
        m_fault = QStringLiteral("damaged entry in resource table");
}

bool TypeRewriter::hasSoundHeader() const
{
    if (!m_type.isValid() || m_type.typeId() == 0 || m_chunk.headerSize() > MaxHeaderSize)
        return false;
    const qint64 claimed = m_chunk.bytes().u32(TypeChunk::ConfigurationAt);
    return claimed >= SmallestConfiguration && m_type.configurationBytes().size() == claimed;
}

// Those that lead to an entry, by ascending index, and one for each.
std::vector<TypeChunk::Slot> TypeRewriter::usedSlots() const
{
    std::vector<TypeChunk::Slot> used;
    used.reserve(size_t(m_type.slotCount()));
    for (int number = 0; number < m_type.slotCount(); ++number) {
        const TypeChunk::Slot slot = m_type.slot(number);
        const qint64 offset = m_type.isSparse() ? m_type.offset(slot.index) : slot.offset;
        if (offset != TypeChunk::NoEntry)
            used.push_back({slot.index, offset});
    }
    if (m_type.isSparse()) {
        const auto byIndex = [](const TypeChunk::Slot &left, const TypeChunk::Slot &right) {
            return left.index < right.index;
        };
        const auto isSame = [](const TypeChunk::Slot &left, const TypeChunk::Slot &right) {
            return left.index == right.index;
        };
        if (!std::is_sorted(used.cbegin(), used.cend(), byIndex))
            std::sort(used.begin(), used.end(), byIndex);
        used.erase(std::unique(used.begin(), used.end(), isSame), used.end());
    }
    return used;
}

bool TypeRewriter::place(const std::vector<TypeChunk::Slot> &used)
{
    std::map<qint64, qint64> maps; // from where they stand to where they go
    m_isClassic = !m_type.isSparse() && !m_type.hasShortOffsets();
    m_places.reserve(used.size());
    for (const TypeChunk::Slot &slot : used) {
        const EntryView entry = m_type.entryAt(slot.offset);
        if (!isReadable(entry))
            return false;
        Place place{slot.index, false, slot.offset, m_entriesSize};
        if (entry.isMap()) {
            const size_t known = maps.size();
            place.to = maps.emplace_hint(maps.end(), slot.offset, m_entriesSize)->second;
            place.isRepeated = maps.size() == known;
        }
        if (!place.isRepeated)
            m_entriesSize += classicSize(entry);
        m_isClassic = m_isClassic && place.to == place.from && !entry.isCompact();
        m_places.push_back(place);
    }
    const qint64 start = m_chunk.bytes().u32(EntriesStartAt);
    m_isClassic = m_isClassic && start >= entriesStart() && m_chunk.size() - start == m_entriesSize;
    return true;
}

void TypeRewriter::appendTo(QByteArray *table) const
{
    if (m_isClassic) {
        append(table, m_chunk.bytes());
        return;
    }
    const int start = table->size();
    append(table, m_chunk.bytes().part(0, m_chunk.headerSize()));
    table->append(m_resourceCount * OffsetSize, '\xff');
    for (const Place &place : m_places) {
        poke32(table, start + m_chunk.headerSize() + qint64(place.index) * OffsetSize, place.to);
        if (place.isRepeated)
            continue;
        const EntryView entry = m_type.entryAt(place.from);
        if (entry.isCompact())
            table->append(expanded(entry));
        else
            append(table, entry.bytes());
    }
    constexpr int OtherForms = TypeChunk::SparseFlag | TypeChunk::ShortOffsetsFlag;
    table->data()[start + FlagsAt] = char(m_chunk.bytes().u8(FlagsAt) & ~OtherForms);
    poke32(table, start + ChunkSizeAt, size());
    poke32(table, start + EntryCountAt, m_resourceCount);
    poke32(table, start + EntriesStartAt, entriesStart());
}

} // namespace SorrelKit
