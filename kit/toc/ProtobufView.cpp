// SPDX-License-Identifier: LGPL-2.1-or-later
#include "toc/ProtobufView.h"

namespace SorrelKit {

namespace {

enum WireType : quint32 {
    Varint = 0,
    Fixed64 = 1,
    LengthDelimited = 2,
    Fixed32 = 5,
};
constexpr int WireTypeBits = 3;
constexpr int VarintBits = 7;
constexpr int NumberBits = 64;

} // namespace

bool ProtobufView::next()
{
    m_number = 0;
    m_bytes = ByteView();
    if (m_isDamaged || m_at == m_message.size())
        return false;
    quint64 tag = 0;
    if (!m_budget->spendWork(Budget::ValueWork) || !readVarint(&tag) || tag > 0xffffffffU || tag >> WireTypeBits == 0)
        return fail();
    m_field = int(tag >> WireTypeBits);
    switch (quint32(tag & ((1U << WireTypeBits) - 1))) {
    case Varint:
        return readVarint(&m_number) || fail();
    case Fixed64:
        return readFixed(8) || fail();
    case Fixed32:
        return readFixed(4) || fail();
    case LengthDelimited: {
        quint64 length = 0;
        if (!readVarint(&length) || length > quint64(m_message.size() - m_at))
            return fail();
        m_bytes = m_message.part(m_at, qint64(length));
        m_at += qint64(length);
        return true;
    }
    default:
        return fail();
    }
}

bool ProtobufView::readVarint(quint64 *value)
{
    *value = 0;
    for (int shift = 0; shift < NumberBits && m_at < m_message.size(); shift += VarintBits) {
        const quint8 byte = m_message.u8(m_at++);
        const quint64 bits = byte & 0x7fU;
        if (bits > ~quint64(0) >> shift)
            return false;
        *value |= bits << shift;
        if (byte < 0x80)
            return true;
    }
    return false;
}

bool ProtobufView::readFixed(int count)
{
    if (!m_message.has(m_at, count))
        return false;
    m_number = m_message.u32(m_at);
    if (count == 8)
        m_number |= quint64(m_message.u32(m_at + 4)) << 32;
    m_at += count;
    return true;
}

bool ProtobufView::fail()
{
    m_isDamaged = true;
    m_number = 0;
    return false;
}

} // namespace SorrelKit
