// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef APKRESOURCESDATA_H
#define APKRESOURCESDATA_H

#include "stream/StringPool.h"
#include "table/ResourcePackage.h"

#include <QList>
#include <QSharedData>

/// What the copies of an ApkResources share.
class ApkResourcesData : public QSharedData
{
public:
    ApkResourcesData() : stringPool(QString()) {}

    QList<ResourcePackage> packages; ///< in the order of the file
    StringPool stringPool;           ///< the strings that values refer to, named "table" once loading starts
    bool valid = false;              ///< a load has finished without a fault
};

#endif
