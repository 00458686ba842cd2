// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/TypeChunk.h"

namespace {

constexpr int OffsetUnit = 4;
constexpr quint16 NoShortOffset = 0xffff;
constexpr int SmallestHeader = TypeChunk::ConfigurationAt + 4; // with the size of the configuration

} // namespace

TypeChunk::TypeChunk(const ChunkView &chunk) : m_bytes(chunk.bytes())
{
    const qint64 width = hasShortOffsets() && !isSparse() ? 2 : OffsetSize;
    const qint64 count = m_bytes.u32(EntryCountAt);
    const qint64 start = m_bytes.u32(EntriesStartAt);
    if (chunk.headerSize() < SmallestHeader || typeId() == 0 || count > MaxSlots || start > m_bytes.size()
        || start % OffsetUnit != 0 || count * width > start - chunk.headerSize())
        return;
    m_slotCount = int(count);
    m_offsets = m_bytes.part(chunk.headerSize(), count * width);
    m_isValid = true;
}

ByteView TypeChunk::configurationBytes() const
{
    const qint64 headerSize = m_bytes.u16(2);
    return m_bytes.part(ConfigurationAt, qMin(qint64(m_bytes.u32(ConfigurationAt)), headerSize - ConfigurationAt));
}

bool TypeChunk::hasOddConfiguration() const
{
    const quint32 size = m_bytes.u32(ConfigurationAt);
    return size == 0 || configurationBytes().size() != size;
}

TypeChunk::Slot TypeChunk::slot(int number) const
{
    if (isSparse()) {
        const qint64 at = qint64(number) * OffsetSize;
        return {m_offsets.u16(at), qint64(m_offsets.u16(at + 2)) * OffsetUnit};
    }
    if (hasShortOffsets()) {
        const quint16 offset = m_offsets.u16(qint64(number) * 2);
        return {number, offset == NoShortOffset ? NoEntry : qint64(offset) * OffsetUnit};
    }
    const quint32 offset = m_offsets.u32(qint64(number) * OffsetSize);
    return {number, offset == NoDenseOffset ? NoEntry : qint64(offset)};
}

qint64 TypeChunk::offset(int index) const
{
    if (!isSparse())
        return index >= 0 && index < m_slotCount ? slot(index).offset : NoEntry;
    int first = 0;
    int end = m_slotCount;
    while (first < end) {
        const int middle = first + (end - first) / 2;
        if (slot(middle).index < index)
            first = middle + 1;
        else
            end = middle;
    }
    return first < m_slotCount && slot(first).index == index ? slot(first).offset : NoEntry;
}

EntryView TypeChunk::entryAt(qint64 offset) const
{
    return offset < 0 || offset % OffsetUnit != 0 ? EntryView() : EntryView(entries().from(offset));
}
