// SPDX-License-Identifier: LGPL-2.1-or-later
#include "table/ValueTextCache.h"

#include "format/ResourceTypes.h"
#include "table/ApkResourcesData.h"

ValueTextCache::ValueTextCache(const ApkResourcesData &table) : m_table(table), m_strings(table.stringPool) {}

QString ValueTextCache::text(int dataType, int data)
{
    return dataType == int(ValueType::String) ? m_strings.valueToString(dataType, data)
                                              : m_table.valueToString(dataType, data);
}
