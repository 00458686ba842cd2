// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef APKRESOURCESDATA_H
#define APKRESOURCESDATA_H

#include "stream/StringPool.h"
#include "table/ResourcePackage.h"

#include <QList>
#include <QSharedData>
#include <QString>

class ApkResources;

/// The table of an ApkResources, which its copies share. The lookups work on this class.
class ApkResourcesData : public QSharedData
{
public:
    ApkResourcesData() : stringPool(QString()) {}

    /// The table of @p resources, which outlives the reference. Defined by ApkResources, which alone knows it.
    static const ApkResourcesData &of(const ApkResources &resources);

    /// As the operations of ApkResources.
    QString refToString(int id) const;
    QString valueToString(int type, int data) const;

    QList<ResourcePackage> packages; ///< in the order of the file
    StringPool stringPool;           ///< the texts of values; named "table" once loading starts
    bool valid = false;              ///< whether a load has finished without a fault
};

#endif
