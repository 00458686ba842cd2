// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ICONMEMBERS_H
#define SORRELKIT_ICONMEMBERS_H

#include "format/Allowance.h"
#include "format/ResourceTable.h"
#include "format/XmlElement.h"

#include <QSet>
#include <QString>
#include <QStringList>

namespace SorrelKit {

/**
 * What the icons of a package lead to in its archive, where libsorrel looks for picture files: the values, in every
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
    /// References that are looked up at most: each one goes over all types of a kind, of which a table may have 65536.
    static constexpr int MaxReferences = 1024;
    /// Characters of the paths, of which each value counts 16 more. Strings may stand within each other in a table.
    static constexpr int MaxCharacters = 1 << 22;

    /// Looks up references in @p table, which outlives this object.
    explicit IconMembers(const ResourceTable &table)
        : m_table(table), m_references(MaxReferences), m_characters(MaxCharacters)
    {
    }

    /// The paths that @p manifest leads to, each once, in the order in which they were found; up to the ceilings.
    QStringList paths(const XmlElement &manifest);

private:
    void search(const XmlElement &element);
    void follow(quint32 resource);
    void add(const QString &path);

    const ResourceTable &m_table;
    Allowance m_references;
    Allowance m_characters;
    QSet<quint32> m_followed; ///< resources; ends references that lead back
    QSet<quint32> m_strings;  ///< of the table, that were taken for paths
    QSet<QString> m_known;    ///< paths
    QStringList m_paths;
};

} // namespace SorrelKit

#endif
