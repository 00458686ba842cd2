// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LOCALELOOKUP_H
#define LOCALELOOKUP_H

#include "format/Allowance.h"
#include "table/ValueTextCache.h"

#include <QMap>
#include <QString>

#include <tuple>

class ApkResourcesData;
class ResourcePackage;

/**
 * The values of resources by locale, with references followed, as ApkResources::lookupByLocale() returns them. The result
 * for each resource and depth is kept while this object lives. Without that, two references to each other would double
 * the work with every level.
 */
class LocaleLookup
{
public:
    /// Levels of references that are followed at most, whatever depth the caller passes.
    static constexpr int MaxDepth = 64;
    /// Values that are looked at, or copied from one answer to another, while this object lives; 32 characters of text
    /// count as one. Resources may refer to each other so that every answer is another one, of thousands of locales.
    static constexpr int MaxValues = 1 << 17;

    /// @p table must outlive this object and stay unchanged.
    explicit LocaleLookup(const ApkResourcesData &table) : m_table(table), m_texts(table), m_values(MaxValues) {}

    /// The values of the reference text @p ref; an empty map once MaxValues is reached.
    QMap<QString, QString> byReference(const QString &ref, int depth);
    /// The same by the id of a type of @p package and the index of an entry.
    QMap<QString, QString> inPackage(const ResourcePackage &package, int typeId, int entry, int depth);

private:
    using Texts = QMap<QString, QString>;
    using Key = std::tuple<const ResourcePackage *, int, int, int>; ///< package, type, entry, depth

    Texts resolved(const ResourcePackage &package, int typeId, int entry, int depth);
    void addMissing(Texts &values, const Texts &others);
    void put(Texts &values, const QString &locale, const QString &text);

    const ApkResourcesData &m_table;
    ValueTextCache m_texts;
    QMap<Key, Texts> m_known;
    Allowance m_values;
};

#endif
