// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RAWBYTES_H
#define RAWBYTES_H

#include <QByteArray>
#include <QtEndian>

/// Bytes of a file, read as little-endian integers by their offset. What lies outside reads as 0.
class RawBytes
{
public:
    RawBytes() = default;
    explicit RawBytes(const QByteArray &bytes) : m_bytes(bytes) {}

    qint64 size() const { return m_bytes.size(); }
    /// Whether @p count bytes stand at @p at.
    bool has(qint64 at, qint64 count) const { return at >= 0 && count >= 0 && count <= size() - at; }

    quint8 u8(qint64 at) const { return integer<quint8>(at); }
    quint16 u16(qint64 at) const { return integer<quint16>(at); }
    quint32 u32(qint64 at) const { return integer<quint32>(at); }
    /// @p count bytes from @p at on, or those of them that there are.
    QByteArray part(qint64 at, qint64 count) const
    {
        at = qBound(qint64(0), at, size());
        return m_bytes.mid(int(at), int(qBound(qint64(0), count, size() - at)));
    }

private:
    template <typename T>
    T integer(qint64 at) const
    {
        return has(at, sizeof(T)) ? qFromLittleEndian<T>(m_bytes.constData() + at) : T(0);
    }

    QByteArray m_bytes;
};

#endif
