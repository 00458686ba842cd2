// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/EntryView.h"

EntryView::EntryView(const ByteView &bytes)
{
    if (!bytes.has(0, HeaderSize))
        return;
    const quint16 flags = bytes.u16(2);
    qint64 size = HeaderSize;
    if ((flags & CompactFlag) == 0) {
        size = bytes.u16(0);
        const bool isMap = (flags & MapFlag) != 0;
        // Android checks the items of any entry with such a header, whatever its flags are.
        const bool hasItems = size >= MapHeaderSize;
        if (size < HeaderSize || (isMap && !hasItems))
            return;
        if (hasItems && (size % 4 != 0 || qint64(bytes.u32(ItemCountAt)) > (bytes.size() - size) / ItemSize))
            return;
        const qint64 valueSize = bytes.u16(size);
        if (!isMap && (valueSize < TypedValue::Size || (!hasItems && !bytes.has(size, valueSize))))
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
