// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PoolBuilder.h"

#include "Bytes.h"

namespace fixture {

namespace {

void utf8Length(Bytes &out, int length)
{
    if (length > 0x7f)
        out.u8(0x80 | (length >> 8));
    out.u8(length & 0xff);
}

} // namespace

QByteArray encodedString(const QString &text, Encoding encoding)
{
    Bytes out;
    if (encoding == Encoding::Utf8) {
        const QByteArray bytes = text.toUtf8();
        utf8Length(out, int(text.size()));
        utf8Length(out, int(bytes.size()));
        return out.raw(bytes).u8(0).data();
    }
    if (text.size() > 0x7fff)
        out.u16(0x8000 | (text.size() >> 16));
    out.u16(text.size() & 0xffff);
    for (const QChar unit : text)
        out.u16(unit.unicode());
    return out.u16(0).data();
}

PoolBuilder &PoolBuilder::strings(const QStringList &strings)
{
    for (const QString &text : strings)
        string(text);
    return *this;
}

PoolBuilder &PoolBuilder::string(const QString &string)
{
    return rawString(encodedString(string, m_encoding));
}

PoolBuilder &PoolBuilder::rawString(const QByteArray &bytes)
{
    m_offsets.append(m_data.size());
    m_data.append(bytes);
    return *this;
}

PoolBuilder &PoolBuilder::offset(qint64 offset)
{
    m_offsets.append(offset);
    return *this;
}

PoolBuilder &PoolBuilder::extraHeader(int count)
{
    m_extraHeader = count;
    return *this;
}

PoolBuilder &PoolBuilder::styles(int count, const QByteArray &data)
{
    m_styleCount = count;
    m_styleData = data;
    return *this;
}

PoolBuilder &PoolBuilder::flags(int flags)
{
    m_flags = flags;
    return *this;
}

PoolBuilder &PoolBuilder::unpadded()
{
    m_padded = false;
    return *this;
}

QByteArray PoolBuilder::build() const
{
    constexpr int StringPoolType = 0x0001;
    constexpr int Utf8Flag = 0x100;
    Bytes data;
    data.raw(m_data);
    if (m_padded)
        data.align();
    const int headerSize = OffsetsAt + m_extraHeader;
    const int stringsStart = headerSize + 4 * (int(m_offsets.size()) + m_styleCount);

    Bytes header;
    header.u32(m_offsets.size()).u32(m_styleCount).u32((m_encoding == Encoding::Utf8 ? Utf8Flag : 0) | m_flags);
    header.u32(stringsStart).u32(m_styleData.isEmpty() ? 0 : stringsStart + data.size()).zeros(m_extraHeader);
    Bytes body;
    for (const qint64 offset : m_offsets)
        body.u32(offset);
    body.zeros(4 * m_styleCount).raw(data.data()).raw(m_styleData);
    return chunk(StringPoolType, header.data(), body.data());
}

} // namespace fixture
