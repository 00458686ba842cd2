// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BYTEVIEW_H
#define BYTEVIEW_H

#include <QByteArray>
#include <QtEndian>

#include <cstring>

/**
 * Bytes of a file in memory that somebody else owns, read as integers by their offset: little-endian ones, unless the
 * name has "big" in it. Meets raw input: what lies beyond the end reads as 0, and a part is cut where the bytes end, so
 * that nothing outside is ever touched. Whoever acts on an offset or a count of the file asks has() first.
 */
class ByteView
{
public:
    ByteView() = default;
    ByteView(const uchar *data, qint64 size) : m_data(data), m_size(size) {}
    /// The bytes of @p bytes, which outlive the view and are not changed meanwhile.
    explicit ByteView(const QByteArray &bytes)
        : ByteView(reinterpret_cast<const uchar *>(bytes.constData()), bytes.size())
    {
    }

    qint64 size() const { return m_size; }
    bool isEmpty() const { return m_size == 0; }
    const uchar *data() const { return m_data; }
    /// Whether @p count bytes stand at @p at.
    bool has(qint64 at, qint64 count) const { return at >= 0 && count >= 0 && count <= m_size - at; }

    quint8 u8(qint64 at) const { return integer<quint8>(at); }
    quint16 u16(qint64 at) const { return integer<quint16>(at); }
    quint32 u24(qint64 at) const { return u16(at) | quint32(u8(at + 2)) << 16; }
    quint32 u32(qint64 at) const { return integer<quint32>(at); }
    quint16 big16(qint64 at) const { return qbswap(u16(at)); }
    quint32 big32(qint64 at) const { return qbswap(u32(at)); }
    /// Whether the characters of @p text stand at @p at, without the zero at its end.
    bool hasText(qint64 at, const char *text) const
    {
        const auto length = qint64(qstrlen(text));
        return has(at, length) && std::memcmp(m_data + at, text, size_t(length)) == 0;
    }

    /// @p count bytes from @p at on, or those of them that there are.
    ByteView part(qint64 at, qint64 count) const
    {
        at = qBound(qint64(0), at, m_size);
        return {m_data + at, qBound(qint64(0), count, m_size - at)};
    }
    /// What follows @p at.
    ByteView from(qint64 at) const { return part(at, m_size); }
    /// A copy of the bytes. There are at most 2 GiB of them, as of any file that is held in memory.
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
