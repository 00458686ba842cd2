// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/TypeChunk.h"

namespace {

constexpr int OffsetUnit = 4;
constexpr quint32 NoOffset = 0xffffffff;
constexpr quint16 NoShortOffset = 0xffff;

} // namespace

EntryView::EntryView(const ByteView &bytes)
{
    constexpr int HeaderSize = 8;
    constexpr int MapHeaderSize = 16;
    constexpr int ItemCountAt = 12;
    if (!bytes.has(0, HeaderSize))
        return;
    const quint16 flags = bytes.u16(2);
    qint64 size = HeaderSize;
    if ((flags & CompactFlag) == 0) {
        size = bytes.u16(0);
        const bool isMap = (flags & MapFlag) != 0;
        if (size < (isMap ? MapHeaderSize : HeaderSize))
            return;
        size += isMap ? qint64(bytes.u32(ItemCountAt)) * ItemSize : qint64(TypedValue::Size);
    }
    if (bytes.has(0, size))
        m_bytes = bytes.part(0, size);
}

TypedValue EntryView::value() const
{
    if (isCompact())
        return {ValueType(flags() >> 8), m_bytes.u32(4)};
    return TypedValue::read(m_bytes, m_bytes.u16(0));
}

EntryView::Item EntryView::item(qint64 number) const
{
    const qint64 at = m_bytes.u16(0) + number * ItemSize;
    return {m_bytes.u32(at), TypedValue::read(m_bytes, at + 4)};
}

TypeChunk::TypeChunk(const ChunkView &chunk) : m_bytes(chunk.bytes())
{
    constexpr int CountAt = 12;
    const qint64 width = hasShortOffsets() && !isSparse() ? 2 : 4;
    const qint64 count = m_bytes.u32(CountAt);
    if (chunk.headerSize() < ConfigurationAt || count > MaxEntries || !m_bytes.has(chunk.headerSize(), count * width))
        return;
    m_slotCount = int(count);
    m_offsets = m_bytes.part(chunk.headerSize(), count * width);
    m_configuration = Configuration::read(configurationBytes());
    m_isValid = true;
}

ByteView TypeChunk::configurationBytes() const
{
    const qint64 headerSize = m_bytes.u16(2);
    return m_bytes.part(ConfigurationAt, qMin(qint64(m_bytes.u32(ConfigurationAt)), headerSize - ConfigurationAt));
}

TypeChunk::Slot TypeChunk::slot(int number) const
{
    if (isSparse()) {
        const qint64 at = qint64(number) * 4;
        return {m_offsets.u16(at), qint64(m_offsets.u16(at + 2)) * OffsetUnit};
    }
    if (hasShortOffsets()) {
        const quint16 offset = m_offsets.u16(qint64(number) * 2);
        return {number, offset == NoShortOffset ? NoEntry : qint64(offset) * OffsetUnit};
    }
    const quint32 offset = m_offsets.u32(qint64(number) * 4);
    return {number, offset == NoOffset ? NoEntry : qint64(offset)};
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
    return offset < 0 ? EntryView() : EntryView(entries().from(offset));
}
