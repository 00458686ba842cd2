// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ICONMEMBERS_H
#define SORRELKIT_ICONMEMBERS_H

#include "Allowance.h"

#include <ApkResources.h>

#include <QDomDocument>
#include <QSet>
#include <QString>
#include <QStringList>

namespace SorrelKit {

/**
 * What the icons of a package lead to in its archive, as libsorrel finds its picture files: the values, in every
 * configuration, of the attribute `icon` of applications, activities, their aliases and intent filters, with references
 * followed. Whether there is such a member, and whether it is a picture, is not known here.
 */
class IconMembers
{
public:
    /// Paths at most, as many as libsorrel looks for.
    static constexpr int MaxPaths = 4096;
    /// Characters of a path at most; a ZIP archive has room for 65535 bytes of a name.
    static constexpr int MaxPathLength = 4096;
    /// Characters of the references, and of the values that they lead to; each counts 16 more. As in libsorrel.
    static constexpr int MaxCharacters = 1 << 22;

    /// Looks up references in @p resources, which outlives this object.
    explicit IconMembers(const ApkResources &resources) : m_resources(resources), m_characters(MaxCharacters) {}

    /// The paths that @p manifest leads to, each once, in the order in which they were found; up to the ceilings.
    QStringList paths(const QDomDocument &manifest);

private:
    void follow(const QString &icon);
    QStringList values(const QString &reference);

    const ApkResources &m_resources;
    Allowance m_characters;
    QSet<QString> m_visited; ///< references and paths; ends references that lead back
    QStringList m_paths;
};

} // namespace SorrelKit

#endif
