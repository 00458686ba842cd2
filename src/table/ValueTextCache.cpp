// SPDX-License-Identifier: LGPL-2.1-or-later
#include "table/ValueTextCache.h"

#include "ApkResources.h"
#include "format/ResourceTypes.h"
#include "table/ApkResourcesData.h"

ValueTextCache::ValueTextCache(const ApkResources &resources)
    : m_resources(resources), m_strings(resources.d->stringPool)
{
}

QString ValueTextCache::text(int dataType, int data)
{
    return dataType == int(ValueType::String) ? m_strings.valueToString(dataType, data)
                                              : m_resources.valueToString(dataType, data);
}
