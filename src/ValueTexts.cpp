// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ValueTexts.h"

#include "ApkResources.h"
#include "ApkResourcesData.h"
#include "ResourceTypes.h"

ValueTexts::ValueTexts(const ApkResources &resources) : m_resources(resources), m_strings(resources.d->stringPool) {}

QString ValueTexts::text(int dataType, int data)
{
    return dataType == ResourceTypes::StringValue ? m_strings.valueToString(dataType, data)
                                                  : m_resources.valueToString(dataType, data);
}
