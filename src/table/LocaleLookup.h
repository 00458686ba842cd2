// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LOCALELOOKUP_H
#define LOCALELOOKUP_H

#include "limits/Budget.h"
#include "table/ValueTextCache.h"

#include <QMap>
#include <QString>

#include <tuple>

class ApkResourcesData;
class ResourcePackage;

/**
 * Finds the values of resources by locale and follows references, for ApkResources::lookupByLocale(). The result for a
 * resource at a depth is remembered while this object lives. References that lead back therefore cost a step each
 * instead of doubling with every level, and equal lookups share one result.
 *
 * Lookups spend from a budget: resources may refer to each other so that each of thousands of results has thousands of
 * locales of its own.
 */
class LocaleLookup
{
public:
    /// Levels of references that are followed, whatever the caller asks for.
    static constexpr int MaxDepth = 64;
    /// The budget of a single lookup: 131,072 values.
    static constexpr qint64 MaxWork = 1 << 24;
    static constexpr qint64 MaxBytes = 64 << 20;
    /// The work that a value costs each time that it is looked at or copied, and the bytes that it holds in a result;
    /// rounded up. A character of a text that is made for one value costs CharacterWork.
    static constexpr qint64 ValueWork = 128;
    static constexpr qint64 ValueBytes = 512;
    static constexpr qint64 CharacterWork = 4;

    /// Looks up in @p table, which outlives this object and does not change, with a budget for a single lookup.
    explicit LocaleLookup(const ApkResourcesData &table)
        : m_table(table), m_texts(table), m_ownBudget(MaxWork, MaxBytes), m_budget(m_ownBudget)
    {
    }
    /// The same with a budget that outlives this object.
    LocaleLookup(const ApkResourcesData &table, Budget &budget)
        : m_table(table), m_texts(table), m_ownBudget(0, 0), m_budget(budget)
    {
    }

    /// See ApkResources::lookupByLocale(). An empty map for a lookup that does not fit in the budget, and for all that
    /// follow: a part of the locales would look like all of them.
    QMap<QString, QString> byReference(const QString &ref, int depth);
    /// The same by the id of a type of @p package and the index of an entry.
    QMap<QString, QString> inPackage(const ResourcePackage &package, int typeId, int entry, int depth);

private:
    Q_DISABLE_COPY(LocaleLookup)

    using Texts = QMap<QString, QString>;
    using Key = std::tuple<const ResourcePackage *, int, int, int>; ///< package, type, entry, depth

    Texts resolved(const ResourcePackage &package, int typeId, int entry, int depth);
    void addMissing(Texts &values, const Texts &others);
    void put(Texts &values, const QString &locale, const QString &text);
    bool spend(qint64 work, qint64 bytes = 0);

    const ApkResourcesData &m_table;
    ValueTextCache m_texts;
    QMap<Key, Texts> m_known;
    Budget m_ownBudget;
    Budget &m_budget;
    bool m_isOver = false; ///< a lookup did not fit
};

#endif
