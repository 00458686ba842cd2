// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BYTEVIEW_H
#define BYTEVIEW_H

#include <QByteArray>
#include <QtEndian>

#include <cstring>

/**
 * Bytes of a file in memory, which the caller owns, read as integers by their offset. Integers are little-endian unless
 * the function's name contains "big". Meets raw input: bytes beyond the end read as 0, and a part is cut where the
 * bytes end. Callers that act on an offset or a count of the file check it by has() first.
 */
class ByteView
{
public:
    ByteView() = default;
    ByteView(const uchar *data, qint64 size) : m_data(data), m_size(size) {}
    /// @p bytes must outlive the view and stay unchanged.
    explicit ByteView(const QByteArray &bytes)
        : ByteView(reinterpret_cast<const uchar *>(bytes.constData()), bytes.size())
    {
    }

    qint64 size() const { return m_size; }
    bool isEmpty() const { return m_size == 0; }
    const uchar *data() const { return m_data; }
    /// Whether all of @p count bytes from @p at on exist.
    bool has(qint64 at, qint64 count) const { return at >= 0 && count >= 0 && count <= m_size - at; }

    quint8 u8(qint64 at) const { return integer<quint8>(at); }
    quint16 u16(qint64 at) const { return integer<quint16>(at); }
    quint32 u24(qint64 at) const { return u16(at) | quint32(u8(at + 2)) << 16; }
    quint32 u32(qint64 at) const { return integer<quint32>(at); }
    quint16 big16(qint64 at) const { return qbswap(u16(at)); }
    quint32 big32(qint64 at) const { return qbswap(u32(at)); }
    /// Whether the characters of @p text are at @p at; its terminating zero is not compared.
    bool hasText(qint64 at, const char *text) const
    {
        const auto length = qint64(qstrlen(text));
        return has(at, length) && std::memcmp(m_data + at, text, size_t(length)) == 0;
    }

    /// @p count bytes from @p at on, or as many of them as exist.
    ByteView part(qint64 at, qint64 count) const
    {
        at = qBound(qint64(0), at, m_size);
        return {m_data + at, qBound(qint64(0), count, m_size - at)};
    }
    /// All bytes from @p at on.
    ByteView from(qint64 at) const { return part(at, m_size); }
    /// A copy of the bytes. Precondition: size() is below 2 GiB.
    QByteArray toByteArray() const { return {reinterpret_cast<const char *>(m_data), int(m_size)}; }

private:
    template <typename T>
    T integer(qint64 at) const
    {
        return has(at, sizeof(T)) ? qFromLittleEndian<T>(m_data + at) : T(0);
    }

    const uchar *m_data = nullptr;
    qint64 m_size = 0;
};

#endif
