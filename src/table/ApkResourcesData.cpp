// SPDX-License-Identifier: LGPL-2.1-or-later
#include "table/ApkResourcesData.h"

#include "format/ResourceTypes.h"
#include "stream/TwosComplement.h"

QString ApkResourcesData::refToString(int id) const
{
    const int packageId = ResourceId::package(quint32(id));
    for (const ResourcePackage &package : packages) {
        if (package.id() == packageId)
            return package.refToString(id);
    }
    return QStringLiteral("@?%1").arg(twosComplement(id), 8, 16, QLatin1Char('0'));
}

QString ApkResourcesData::valueToString(int type, int data) const
{
    if (type == int(ValueType::Reference) || type == int(ValueType::Attribute))
        return refToString(data);
    return stringPool.valueToString(type, data);
}
