// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VALUETEXTCACHE_H
#define VALUETEXTCACHE_H

#include "stream/StringCache.h"

#include <QString>

class ApkResourcesData;

/// The texts of a table's values, as ApkResources::valueToString() returns them. Each string is decoded once.
class ValueTextCache
{
public:
    /// @p table must outlive this object and stay unchanged.
    explicit ValueTextCache(const ApkResourcesData &table);

    QString text(int dataType, int data);

private:
    const ApkResourcesData &m_table;
    StringCache m_strings;
};

#endif
