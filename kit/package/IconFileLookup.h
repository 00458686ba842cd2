// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ICONFILELOOKUP_H
#define SORRELKIT_ICONFILELOOKUP_H

#include "archive/FileSource.h"
#include "limits/Budget.h"
#include "picture/PictureFile.h"
#include "resources/ResourceResolver.h"

#include <QHash>
#include <QSize>
#include <QString>
#include <QVector>

namespace SorrelKit {

/**
 * Lists the files of a package's icons. A hostile package has a thousand launchers, each with files that take long to
 * inspect, so all calls spend from one budget. Results are kept: an icon that was listed and a file that was inspected
 * cost nothing the next time. Files that do not fit in the budget are missing.
 */
class IconFileLookup
{
public:
    /// Files of an icon, and references on the way to them.
    static constexpr int MaxFiles = 64;
    /// The bytes that a kept result holds, besides two for each character of the path.
    static constexpr qint64 ResultBytes = 256;

    /// All outlive this object.
    IconFileLookup(const ResourceResolver &resolver, FileSource &files, Budget &budget)
        : m_resolver(resolver), m_files(files), m_budget(budget)
    {
    }

    /// A file that the package, or the platform, has for an icon.
    struct File {
        OwnedPath path;  ///< of the member
        QString kind;    ///< the root element of an XML file, else the format of the picture
        QSize size;      ///< in pixels; empty for XML
        int density = 0; ///< that the resource table has the file for
    };

    /// The files for @p icon, a reference or a path, in the order of Entry::iconFiles().
    QVector<File> files(const ResolvedValue &icon);

    /// Drops all kept results, because the platform has changed.
    void forget();

    /// The values of @p icon, a reference or a path, in the configurations that @p resolver matches, each path once and
    /// with references followed. Lookups and the characters of paths cost work. A table may have thousands of type
    /// chunks for each resource; the largest applications take some thousands of units.
    static QVector<ResolvedValue> candidates(const ResolvedValue &icon, const ResourceResolver &resolver,
                                             Budget *budget);

private:
    struct Kind {
        QString name; ///< of the picture's format, or of the root element of XML; empty for any other file
        QSize size;
    };
    Kind kindOf(const OwnedPath &path);

    const ResourceResolver &m_resolver;
    FileSource &m_files;
    Budget &m_budget;
    QHash<OwnedPath, Kind> m_kinds;
    QHash<quint32, QVector<File>> m_ofResources;
};

} // namespace SorrelKit

#endif
