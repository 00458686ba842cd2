// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"

#include <QtEndian>

namespace fixture {

Bytes &Bytes::integer(qint64 value, int width)
{
    for (int i = 0; i < width; ++i)
        m_data.append(char((value >> (8 * i)) & 0xff));
    return *this;
}

Bytes &Bytes::u8(qint64 value)
{
    return integer(value, 1);
}

Bytes &Bytes::u16(qint64 value)
{
    return integer(value, 2);
}

Bytes &Bytes::u32(qint64 value)
{
    return integer(value, 4);
}

Bytes &Bytes::raw(const QByteArray &bytes)
{
    m_data.append(bytes);
    return *this;
}

Bytes &Bytes::zeros(int count)
{
    m_data.append(count, '\0');
    return *this;
}

Bytes &Bytes::align()
{
    return zeros((4 - int(m_data.size()) % 4) % 4);
}

void poke8(QByteArray &bytes, int at, qint64 value)
{
    bytes.replace(at, 1, Bytes().u8(value).data());
}

void poke16(QByteArray &bytes, int at, qint64 value)
{
    bytes.replace(at, 2, Bytes().u16(value).data());
}

void poke32(QByteArray &bytes, int at, qint64 value)
{
    bytes.replace(at, 4, Bytes().u32(value).data());
}

quint16 peek16(const QByteArray &bytes, int at)
{
    return qFromLittleEndian<quint16>(bytes.constData() + at);
}

quint32 peek32(const QByteArray &bytes, int at)
{
    return qFromLittleEndian<quint32>(bytes.constData() + at);
}

QByteArray chunk(int type, const QByteArray &header, const QByteArray &body)
{
    constexpr int CommonHeaderSize = 8;
    const int headerSize = CommonHeaderSize + int(header.size());
    return Bytes().u16(type).u16(headerSize).u32(headerSize + body.size()).raw(header).raw(body).data();
}

} // namespace fixture
