// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/block/PrefixedFields.h"

namespace SorrelKit {

ByteView PrefixedFields::take(qint64 count)
{
    m_hasFailed = m_hasFailed || !m_bytes.has(m_at, count);
    if (m_hasFailed)
        return {};
    const ByteView taken = m_bytes.part(m_at, count);
    m_at += count;
    return taken;
}

quint32 PrefixedFields::u32()
{
    return take(sizeof(quint32)).u32(0);
}

ByteView PrefixedFields::bytes()
{
    const quint32 count = u32();
    return take(count);
}

PrefixedFields PrefixedFields::fields()
{
    PrefixedFields result(bytes());
    result.m_hasFailed = m_hasFailed;
    return result;
}

ByteView PrefixedFields::rest()
{
    return take(m_bytes.size() - m_at);
}

} // namespace SorrelKit
