// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LOCALELOOKUP_H
#define LOCALELOOKUP_H

#include "format/Allowance.h"
#include "table/ValueTextCache.h"

#include <QMap>
#include <QString>

#include <tuple>

class ApkResources;
class ResourcePackage;

/**
 * The values of resources by locale, with references followed, as ApkResources::lookupByLocale() answers them. What
 * was answered for a resource at a depth is remembered while this object lives, so that references which lead back to
 * where they came from cost a step each instead of doubling with every level, and those who ask for the same share the
 * answer.
 */
class LocaleLookup
{
public:
    /// Levels of references that are followed at most, whatever the caller asks for.
    static constexpr int MaxDepth = 64;
    /// Values that are looked at, or copied from one answer to another, while this object lives; 32 characters of text
    /// count as one. Resources may refer to each other so that every answer is another one, of thousands of locales.
    static constexpr int MaxValues = 1 << 17;

    /// On @p resources, which must outlive this object and stay as they are.
    explicit LocaleLookup(const ApkResources &resources)
        : m_resources(resources), m_texts(resources), m_values(MaxValues)
    {
    }

    /// By reference text, as ApkResources::lookupByLocale() answers; an empty map from where MaxValues is reached.
    QMap<QString, QString> byReference(const QString &ref, int depth);
    /// The same by the id of a type of @p package and the index of an entry.
    QMap<QString, QString> inPackage(const ResourcePackage &package, int typeId, int entry, int depth);

private:
    using Texts = QMap<QString, QString>;
    using Key = std::tuple<const ResourcePackage *, int, int, int>; ///< package, type, entry, depth

    Texts resolved(const ResourcePackage &package, int typeId, int entry, int depth);
    void addMissing(Texts &values, const Texts &others);
    void put(Texts &values, const QString &locale, const QString &text);

    const ApkResources &m_resources;
    ValueTextCache m_texts;
    QMap<Key, Texts> m_known;
    Allowance m_values;
};

#endif
