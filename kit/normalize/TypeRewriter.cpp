// SPDX-License-Identifier: LGPL-2.1-or-later
#include "normalize/TypeRewriter.h"

#include <QtEndian>

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace SorrelKit {

namespace {

constexpr int SmallestConfiguration = 4; ///< a configuration that consists of its size

constexpr quint16 CompactDataTypeMask = 0xff00;

// memcpy() will do: source and target do not overlap.
void copy(const ByteView &bytes, char *to)
{
    std::copy_n(bytes.data(), bytes.size(), reinterpret_cast<uchar *>(to));
}

qint64 classicSize(const EntryView &entry)
{
    return entry.isCompact() ? EntryView::SimpleSize : entry.bytes().size();
}

bool isReadable(const EntryView &entry)
{
    return (entry.isCompact() || entry.bytes().u16(0) <= TypeRewriter::MaxHeaderSize);
}

bool isClassicSimple(const EntryView &entry)
{
    return !entry.isMap() && !entry.isCompact();
}

// Whether the value of a simple entry claims more bytes than readers take of it.
bool hasLongValue(const EntryView &entry)
{
    return isClassicSimple(entry) && entry.bytes().u16(entry.bytes().u16(0)) != TypedValue::Size;
}

// Whether a simple entry has the header of a map with items.
bool hasItems(const EntryView &entry)
{
    return isClassicSimple(entry) && entry.bytes().u16(0) >= EntryView::MapHeaderSize
           && entry.bytes().u32(EntryView::ItemCountAt) != 0;
}

// A compact entry holds a simple value, whatever else its flags say.
void expand(const EntryView &entry, char *to)
{
    constexpr quint16 FlagsOfOtherForms = CompactDataTypeMask | EntryView::CompactFlag | EntryView::MapFlag;
    constexpr int ValueAt = EntryView::HeaderSize;
    const TypedValue value = entry.value();
    qToLittleEndian(quint16(EntryView::HeaderSize), to);
    qToLittleEndian(quint16(entry.flags() & ~FlagsOfOtherForms), to + 2);
    qToLittleEndian(entry.key(), to + 4);
    qToLittleEndian(quint16(TypedValue::Size), to + ValueAt);
    to[ValueAt + 2] = 0;
    to[ValueAt + TypedValue::TypeAt] = char(value.type);
    qToLittleEndian(value.data, to + ValueAt + TypedValue::DataAt);
}

} // namespace

/// The new places of a chunk's maps by their old ones.
class TypeRewriter::MapPlaces
{
public:
    /// The new place of the map at @p from; @p to becomes its place when it has none yet.
    qint64 place(qint64 from, qint64 to)
    {
        // Nearly all maps come in the order of their offsets; these need no search.
        if (m_inOrder.empty() || m_inOrder.back().first < from) {
            m_inOrder.emplace_back(from, to);
            return to;
        }
        const auto known = std::lower_bound(m_inOrder.cbegin(), m_inOrder.cend(), std::make_pair(from, qint64(0)));
        return known->first == from ? known->second : m_others.try_emplace(from, to).first->second;
    }

private:
    std::vector<std::pair<qint64, qint64>> m_inOrder;
    std::unordered_map<qint64, qint64> m_others;
};

TypeRewriter::TypeRewriter(const ChunkView &chunk) : m_chunk(chunk), m_type(chunk)
{
    if (!hasSoundHeader()) {
        m_fault = FormatFault::DamagedType;
        return;
    }
    m_isClassic = !m_type.isSparse() && !m_type.hasShortOffsets();
    m_places.reserve(size_t(m_type.slotCount()));
    if (!placeAll()) {
        m_fault = FormatFault::DamagedEntry;
        return;
    }
    m_resourceCount = m_type.slotCount();
    if (m_type.isSparse())
        m_resourceCount = m_places.empty() ? 0 : m_places.back().index + 1;
    const qint64 start = m_chunk.bytes().u32(TypeChunk::EntriesStartAt);
    m_isClassic = m_isClassic && start >= entriesStart() && m_chunk.size() - start == m_entriesSize;
}

bool TypeRewriter::hasSoundHeader() const
{
    if (!m_type.isValid() || m_type.typeId() == 0 || m_chunk.headerSize() > MaxHeaderSize)
        return false;
    const qint64 claimed = m_chunk.bytes().u32(TypeChunk::ConfigurationAt);
    return claimed >= SmallestConfiguration && m_type.configurationBytes().size() == claimed;
}

bool TypeRewriter::isInOrder() const
{
    if (!m_type.isSparse())
        return true;
    for (int number = 1; number < m_type.slotCount(); ++number) {
        if (m_type.slot(number - 1).index >= m_type.slot(number).index)
            return false;
    }
    return true;
}

// The slots of a sparse chunk that a binary search finds, by index.
std::vector<TypeChunk::Slot> TypeRewriter::foundSlots() const
{
    std::vector<TypeChunk::Slot> found;
    found.reserve(size_t(m_type.slotCount()));
    for (int number = 0; number < m_type.slotCount(); ++number) {
        const int index = m_type.slot(number).index;
        const qint64 offset = m_type.offset(index);
        if (offset != TypeChunk::NoEntry)
            found.push_back({index, offset});
    }
    const auto byIndex = [](const TypeChunk::Slot &left, const TypeChunk::Slot &right) {
        return left.index < right.index;
    };
    const auto isSame = [](const TypeChunk::Slot &left, const TypeChunk::Slot &right) {
        return left.index == right.index;
    };
    std::sort(found.begin(), found.end(), byIndex);
    found.erase(std::unique(found.begin(), found.end(), isSame), found.end());
    return found;
}

bool TypeRewriter::placeAll()
{
    MapPlaces maps;
    if (!isInOrder()) {
        const std::vector<TypeChunk::Slot> found = foundSlots();
        return std::all_of(found.cbegin(), found.cend(),
                           [&](const TypeChunk::Slot &slot) { return place(slot, &maps); });
    }
    for (int number = 0; number < m_type.slotCount(); ++number) {
        const TypeChunk::Slot slot = m_type.slot(number);
        if (slot.offset != TypeChunk::NoEntry && !place(slot, &maps))
            return false;
    }
    return true;
}

bool TypeRewriter::place(const TypeChunk::Slot &slot, MapPlaces *maps)
{
    const EntryView entry = m_type.entryAt(slot.offset);
    if (!entry.isValid()) {
        m_isClassic = false;
        return true;
    }
    if (!isReadable(entry))
        return false;
    Place place{slot.index, false, slot.offset, m_entriesSize};
    if (entry.isMap()) {
        place.to = maps->place(slot.offset, m_entriesSize);
        place.isRepeated = place.to != m_entriesSize;
    }
    if (!place.isRepeated)
        m_entriesSize += classicSize(entry);
    m_isClassic =
        m_isClassic && place.to == place.from && !entry.isCompact() && !hasLongValue(entry) && !hasItems(entry);
    m_places.push_back(place);
    return true;
}

void TypeRewriter::appendTo(QByteArray *table) const
{
    const int start = int(table->size());
    table->resize(start + int(size()));
    char *const chunk = table->data() + start;
    if (m_isClassic) {
        copy(m_chunk.bytes(), chunk);
        return;
    }
    char *const offsets = chunk + m_chunk.headerSize();
    char *const entries = chunk + entriesStart();
    copy(m_chunk.bytes().part(0, m_chunk.headerSize()), chunk);
    std::fill(offsets, entries, '\xff');
    for (const Place &place : m_places) {
        qToLittleEndian(quint32(place.to), offsets + qint64(place.index) * TypeChunk::OffsetSize);
        if (place.isRepeated)
            continue;
        const EntryView entry = m_type.entryAt(place.from);
        if (entry.isCompact())
            expand(entry, entries + place.to);
        else
            copy(entry.bytes(), entries + place.to);
        // Android refuses sizes that reach beyond the chunk, and the new chunk may be shorter.
        if (hasLongValue(entry))
            qToLittleEndian(quint16(TypedValue::Size), entries + place.to + entry.bytes().u16(0));
        if (hasItems(entry))
            qToLittleEndian(quint32(0), entries + place.to + EntryView::ItemCountAt);
    }
    constexpr int OtherForms = TypeChunk::SparseFlag | TypeChunk::ShortOffsetsFlag;
    chunk[TypeChunk::FlagsAt] = char(m_chunk.bytes().u8(TypeChunk::FlagsAt) & ~OtherForms);
    qToLittleEndian(quint32(size()), chunk + ChunkView::SizeAt);
    qToLittleEndian(quint32(m_resourceCount), chunk + TypeChunk::EntryCountAt);
    qToLittleEndian(quint32(entriesStart()), chunk + TypeChunk::EntriesStartAt);
}

} // namespace SorrelKit
