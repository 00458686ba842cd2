// SPDX-License-Identifier: LGPL-2.1-or-later
#include "stream/StringCache.h"

#include "format/ResourceTypes.h"
#include "stream/StringPool.h"

QString StringCache::get(int index)
{
    if (index < 0 || index >= m_pool.count())
        return m_pool.get(index);
    const qint32 offset = m_pool.offsetAt(index);
    const auto known = m_strings.constFind(offset);
    if (known != m_strings.cend())
        return *known;
    QString string = m_pool.get(index);
    m_strings.insert(offset, string);
    return string;
}

QString StringCache::valueToString(int type, int data)
{
    const bool isKnownString = type == int(ValueType::String) && data >= 0 && data < m_pool.count();
    return isKnownString ? get(data) : m_pool.valueToString(type, data);
}
