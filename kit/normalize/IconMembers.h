// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ICONMEMBERS_H
#define SORRELKIT_ICONMEMBERS_H

#include "format/ResourceTable.h"
#include "format/XmlElement.h"
#include "limits/Budget.h"

#include <QSet>
#include <QString>
#include <QStringList>

namespace SorrelKit {

/**
 * Finds the members of a package's archive where libsorrel looks for the pictures of icons: the values, in every
 * configuration, of the attribute `icon` of applications, activities, their aliases and intent filters, with references
 * followed. Does not check whether a member exists or is a picture.
 */
class IconMembers
{
public:
    /// The budget of PackageNormalizer::normalized(): finding the pictures and reading them. All of them stay in
    /// memory.
    static constexpr qint64 MaxWork = 1 << 27;
    static constexpr qint64 MaxBytes = 64 << 20;
    /// Paths at most. A package with ten launchers in each density has a hundred.
    static constexpr int MaxPaths = 4096;
    /// Characters of a path; a ZIP archive has room for 65,535 bytes of a name.
    static constexpr int MaxPathLength = 4096;
    /// The bytes that a followed reference holds.
    static constexpr qint64 ReferenceBytes = 64;

    /// Looks up references in @p table. Both outlive this object.
    IconMembers(const ResourceTable &table, Budget &budget) : m_table(table), m_budget(budget) {}

    /// The paths that @p manifest leads to, each once, in the order in which they are found. Paths that do not fit in
    /// the budget are left out.
    QStringList paths(const XmlElement &manifest);

private:
    void search(const XmlElement &element);
    void follow(quint32 resource);
    void add(const QString &path);

    const ResourceTable &m_table;
    Budget &m_budget;
    QSet<quint32> m_followed; ///< resources; ends references that lead back
    QSet<quint32> m_strings;  ///< strings of the table that are among the paths
    QSet<QString> m_known;    ///< paths
    QStringList m_paths;
};

} // namespace SorrelKit

#endif
