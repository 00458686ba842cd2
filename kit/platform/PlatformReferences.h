// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PLATFORMREFERENCES_H
#define SORRELKIT_PLATFORMREFERENCES_H

#include "archive/FileSource.h"
#include "format/XmlElement.h"
#include "limits/Budget.h"
#include "resources/ResourceResolver.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QVector>

namespace SorrelKit {

/**
 * Collects the platform's resources that a document refers to: by itself, through the resources of the package, and
 * through XML files of the package. It needs no platform. Maps, such as styles and arrays, are not followed.
 *
 * Everything that is visited once costs work of the budget; what does not fit is left out.
 */
class PlatformReferences
{
public:
    /// Bytes of one XML file at most.
    static constexpr qint64 MaxFileBytes = 8 << 20;
    /// The bytes that an id holds.
    static constexpr qint64 IdBytes = 64;

    /// All outlive this object. @p files are those of the package.
    PlatformReferences(const ResourceResolver &resolver, FileSource &files, Budget &budget)
        : m_resolver(resolver), m_files(files), m_budget(budget)
    {
    }

    /// The ids that the document with the root @p root refers to, ascending, references to attributes of themes included.
    QList<quint32> ids(const XmlElement &root);

private:
    void collect(const XmlElement &element);
    void add(const TypedValue &value);
    void follow(quint32 id);
    void readFile(const QString &path);

    const ResourceResolver &m_resolver;
    FileSource &m_files;
    Budget &m_budget;
    QSet<quint32> m_ids;     ///< of the platform
    QSet<quint32> m_visited; ///< of the package
    QSet<QString> m_paths;   ///< files that were read
    QVector<quint32> m_open; ///< of the package, not followed yet
};

} // namespace SorrelKit

#endif
