// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ManifestScan.h"

namespace {

constexpr qint64 HeaderSize = 8;
constexpr qint64 NodeHeaderSize = 16;
constexpr quint16 UntypedChunk = 0;
constexpr quint16 PoolChunk = 0x0001;
constexpr quint16 TableChunk = 0x0002;
constexpr quint16 DocumentChunk = 0x0003;
constexpr quint16 StartNamespaceChunk = 0x0100;
constexpr quint16 EndNamespaceChunk = 0x0101;
constexpr quint16 StartElementChunk = 0x0102;
constexpr quint16 EndElementChunk = 0x0103;
constexpr quint16 LastNodeChunk = 0x017f;
constexpr quint32 Negative = 0x80000000;
constexpr quint16 ShortNegative = 0x8000;

} // namespace

ManifestScan::ManifestScan(const QByteArray &bytes) : m_bytes(bytes)
{
    const qint64 size = m_bytes.u32(4);
    m_isUntyped = m_bytes.u16(0) == UntypedChunk;
    if ((m_bytes.u16(0) != DocumentChunk && !m_isUntyped) || m_bytes.u16(2) != HeaderSize || size < HeaderSize
        || !m_bytes.has(0, size))
        return;
    for (qint64 at = HeaderSize; at < size; at += m_bytes.u32(at + 4)) {
        const qint64 chunkSize = m_bytes.u32(at + 4);
        if (size - at < HeaderSize || chunkSize < HeaderSize || chunkSize > size - at || !scanChunk(at, chunkSize))
            return;
    }
    m_isRegular = true;
}

bool ManifestScan::scanChunk(qint64 at, qint64 size)
{
    constexpr qint64 PairSize = 8; ///< of indices
    const quint16 type = m_bytes.u16(at);
    const qint64 headerSize = m_bytes.u16(at + 2);
    if (headerSize < HeaderSize || headerSize > size || type == TableChunk || type == DocumentChunk)
        return false;
    if (type == PoolChunk)
        return scanPool(at, headerSize, size);
    if (type < StartNamespaceChunk || type > LastNodeChunk)
        return true;
    if (headerSize != NodeHeaderSize)
        return false;
    if (type > EndElementChunk)
        return true;
    if (size < NodeHeaderSize + PairSize)
        return false;
    if (type == StartNamespaceChunk || type == EndNamespaceChunk)
        checkIndex(at + NodeHeaderSize);
    checkIndex(at + NodeHeaderSize + 4);
    return type != StartElementChunk || scanElement(at + NodeHeaderSize, size - NodeHeaderSize);
}

// Nothing in it leads a reader back, and so to other bytes than follow.
bool ManifestScan::scanPool(qint64 at, qint64 headerSize, qint64 size) const
{
    constexpr qint64 PoolHeaderSize = 28;
    const quint32 count = m_bytes.u32(at + 8);
    const qint64 stringsStart = m_bytes.u32(at + 20);
    const qint64 stylesStart = m_bytes.u32(at + 24);
    return headerSize >= PoolHeaderSize && count < Negative && stringsStart >= headerSize + 4 * qint64(count)
           && stringsStart <= size && (stylesStart == 0 || (stylesStart >= stringsStart && stylesStart <= size));
}

bool ManifestScan::scanElement(qint64 at, qint64 size)
{
    constexpr qint64 FieldsSize = 14;
    constexpr int RecordSize = 20;
    const quint16 start = m_bytes.u16(at + 8);
    const quint16 recordSize = m_bytes.u16(at + 10);
    const quint16 count = m_bytes.u16(at + 12);
    if (size < FieldsSize || start < FieldsSize || start >= ShortNegative || recordSize < RecordSize
        || recordSize >= ShortNegative || count >= ShortNegative || start + qint64(recordSize) * count > size)
        return false;
    for (int i = 0; i < count; ++i)
        checkIndex(at + start + qint64(recordSize) * i + 4);
    return true;
}

void ManifestScan::checkIndex(qint64 at)
{
    m_hasNegativeIndex = m_hasNegativeIndex || m_bytes.u32(at) >= Negative;
}
