// SPDX-License-Identifier: LGPL-2.1-or-later
#include "TableScan.h"

#include <QVector>

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 HeaderSize = 8;
constexpr qint64 TableHeaderSize = 12;
constexpr quint16 TableChunk = 0x0002;
constexpr quint16 PackageChunk = 0x0200;
constexpr quint16 TypeChunk = 0x0201;
constexpr quint8 SparseFlag = 0x01;
constexpr quint8 ShortOffsetsFlag = 0x02;
constexpr quint16 MapFlag = 0x0001;
constexpr quint16 CompactFlag = 0x0008;
constexpr qint64 OffsetUnit = 4; ///< of offsets of 16 bits
constexpr qint64 MaxEntries = 0x10000;

} // namespace

TableScan::TableScan(const QByteArray &bytes) : m_bytes(bytes)
{
    const qint64 headerSize = m_bytes.u16(2);
    const qint64 size = m_bytes.u32(4);
    if (m_bytes.u16(0) == TableChunk && headerSize >= TableHeaderSize && m_bytes.has(0, size))
        scanChunks(headerSize, size, false);
}

void TableScan::scanChunks(qint64 at, qint64 end, bool isInPackage)
{
    while (end - at >= HeaderSize) {
        const quint16 type = m_bytes.u16(at);
        const qint64 headerSize = m_bytes.u16(at + 2);
        const qint64 size = m_bytes.u32(at + 4);
        if (headerSize < HeaderSize || headerSize > size || size > end - at)
            return;
        if (type == PackageChunk && !isInPackage)
            scanChunks(at + headerSize, at + size, true);
        else if (type == TypeChunk && isInPackage)
            scanType(at, headerSize, size);
        at += size;
    }
}

void TableScan::scanType(qint64 at, qint64 headerSize, qint64 size)
{
    const quint8 flags = m_bytes.u8(at + 9);
    const qint64 count = m_bytes.u32(at + 12);
    const qint64 entriesAt = m_bytes.u32(at + 16);
    const bool isSparse = (flags & SparseFlag) != 0;
    const bool isShort = !isSparse && (flags & ShortOffsetsFlag) != 0;
    const qint64 width = isShort ? 2 : 4;
    m_isSparse = m_isSparse || isSparse;
    m_hasShortOffsets = m_hasShortOffsets || isShort;
    if (count > MaxEntries || count * width > size - headerSize)
        return;
    QVector<qint64> offsets;
    offsets.reserve(int(count));
    for (qint64 i = 0; i < count; ++i) {
        const qint64 slot = at + headerSize + i * width;
        if (isSparse)
            offsets.append(OffsetUnit * m_bytes.u16(slot + 2));
        else if (isShort && m_bytes.u16(slot) != 0xffff)
            offsets.append(OffsetUnit * m_bytes.u16(slot));
        else if (!isShort && m_bytes.u32(slot) != 0xffffffff)
            offsets.append(m_bytes.u32(slot));
    }
    for (const qint64 offset : std::as_const(offsets)) {
        const qint64 entry = entriesAt + offset;
        m_isCompact = m_isCompact || (entry + HeaderSize <= size && (m_bytes.u16(at + entry + 2) & CompactFlag) != 0);
    }
    if (!std::is_sorted(offsets.cbegin(), offsets.cend()))
        std::sort(offsets.begin(), offsets.end());
    for (int i = 1; i < offsets.size() && !m_hasSharedEntries; ++i) {
        const quint16 entryFlags = m_bytes.u16(at + entriesAt + offsets.at(i) + 2);
        m_hasSharedEntries = offsets.at(i) == offsets.at(i - 1) && (entryFlags & MapFlag) == 0;
    }
}
