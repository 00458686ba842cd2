// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VALUETEXTCACHE_H
#define VALUETEXTCACHE_H

#include "stream/StringCache.h"

#include <QString>

class ApkResources;

/// The texts of a table's values, as ApkResources::valueToString() gives them; values that are one string share it.
class ValueTextCache
{
public:
    /// Of @p resources, which must outlive this object and stay as they are.
    explicit ValueTextCache(const ApkResources &resources);

    QString text(int dataType, int data);

private:
    const ApkResources &m_resources;
    StringCache m_strings;
};

#endif
