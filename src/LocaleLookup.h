// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LOCALELOOKUP_H
#define LOCALELOOKUP_H

#include "ValueTexts.h"

#include <QHash>
#include <QMap>
#include <QPair>
#include <QString>

class ApkResources;
class ResourcePackage;

/**
 * The values of resources by locale, with references followed, as ApkResources::lookupByLocale() answers them. What
 * was answered for a reference at a depth is remembered while this object lives, so that references which lead back to
 * where they came from cost a step each instead of doubling with every level, and those who ask for the same share the
 * answer.
 */
class LocaleLookup
{
public:
    /// Levels of references that are followed at most, whatever the caller asks for.
    static constexpr int MaxDepth = 64;

    /// On @p resources, which must outlive this object and stay as they are.
    explicit LocaleLookup(const ApkResources &resources) : m_resources(resources), m_texts(resources) {}

    /// By reference text, as ApkResources::lookupByLocale() answers.
    QMap<QString, QString> byReference(const QString &ref, int depth);
    /// By the name of a type of @p package and the index of an entry.
    QMap<QString, QString> inPackage(const ResourcePackage &package, const QString &type, int entry, int depth);

private:
    const ApkResources &m_resources;
    ValueTexts m_texts;
    QHash<QPair<QString, int>, QMap<QString, QString>> m_known;
};

#endif
