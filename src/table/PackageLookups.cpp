// SPDX-License-Identifier: LGPL-2.1-or-later
#include "table/ApkResourcesData.h"
#include "table/LocaleLookup.h"
#include "table/ResourcePackage.h"
#include "table/ValueTextCache.h"

// The lookups of ResourcePackage are apart from the class because they work on the whole table, which holds packages.

QStringList ResourcePackage::lookupAll(const QString &type, int entry, const ApkResources &res) const
{
    ValueTextCache texts(ApkResourcesData::of(res));
    QStringList result;
    for (const ResourceEntry &value : values(typeId(type), entry))
        result.append(texts.text(value.dataType(), value.data()));
    return result;
}

QMap<QString, QString> ResourcePackage::lookupAllByConfig(const QString &type, int entry, const ApkResources &res) const
{
    ValueTextCache texts(ApkResourcesData::of(res));
    QMap<QString, QString> result;
    for (const ResourceEntry &value : values(typeId(type), entry))
        result.insert(config(value).toString(), texts.text(value.dataType(), value.data()));
    return result;
}

QMap<QString, QString> ResourcePackage::lookupByLocale(const QString &type, int entry, const ApkResources &res,
                                                       int depth) const
{
    return LocaleLookup(ApkResourcesData::of(res)).inPackage(*this, typeId(type), entry, depth);
}
