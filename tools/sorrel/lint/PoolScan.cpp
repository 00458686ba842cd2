// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PoolScan.h"

QString PoolScan::string(quint32 index) const
{
    constexpr quint32 Utf8Flag = 0x100;
    const qint64 headerSize = m_bytes.u16(2);
    if (index >= m_bytes.u32(8))
        return {};
    const qint64 at = qint64(m_bytes.u32(20)) + m_bytes.u32(headerSize + 4 * qint64(index));
    return (m_bytes.u32(16) & Utf8Flag) != 0 ? utf8(at) : utf16(at);
}

// The length in characters, the length in bytes, each of one byte or two, and the bytes.
QString PoolScan::utf8(qint64 at) const
{
    constexpr int LongFlag = 0x80;
    at += (m_bytes.u8(at) & LongFlag) != 0 ? 2 : 1;
    qint64 size = m_bytes.u8(at++);
    if ((size & LongFlag) != 0)
        size = (size & ~LongFlag) << 8 | m_bytes.u8(at++);
    return QString::fromUtf8(m_bytes.part(at, qMin(size, qint64(MaxLength))));
}

// The length, of one word or two, and the words.
QString PoolScan::utf16(qint64 at) const
{
    constexpr int LongFlag = 0x8000;
    constexpr int WordSize = 2;
    qint64 length = m_bytes.u16(at);
    at += WordSize;
    if ((length & LongFlag) != 0) {
        length = (length & ~LongFlag) << 16 | m_bytes.u16(at);
        at += WordSize;
    }
    QString text;
    for (const qint64 end = at + WordSize * qMin(length, qint64(MaxLength)); at < end && m_bytes.has(at, WordSize);
         at += WordSize)
        text.append(QChar(m_bytes.u16(at)));
    return text;
}
