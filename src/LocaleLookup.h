// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LOCALELOOKUP_H
#define LOCALELOOKUP_H

#include <QHash>
#include <QMap>
#include <QPair>
#include <QString>

class ApkResources;
class ResourcePackage;

/**
 * One run of ApkResources::lookupByLocale(): the values of a resource by locale, with references followed. Answers
 * for the same reference at the same depth are remembered for the run, so that references which lead back to where
 * they came from cost a step each instead of doubling with every level.
 */
class LocaleLookup
{
public:
    /// Levels of references that are followed at most, whatever the caller asks for.
    static constexpr int MaxDepth = 64;

    /// A run on @p resources, which must outlive it.
    explicit LocaleLookup(const ApkResources &resources) : m_resources(resources) {}

    /// By reference text, as ApkResources::lookupByLocale() answers.
    QMap<QString, QString> byReference(const QString &ref, int depth);
    /// By the name of a type of @p package and the index of an entry.
    QMap<QString, QString> inPackage(const ResourcePackage &package, const QString &type, int entry, int depth);

private:
    const ApkResources &m_resources;
    QHash<QPair<QString, int>, QMap<QString, QString>> m_known;
};

#endif
