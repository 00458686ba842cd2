// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ICONFILELOOKUP_H
#define SORRELKIT_ICONFILELOOKUP_H

#include "archive/FileSource.h"
#include "format/Allowance.h"
#include "format/Budget.h"
#include "picture/PictureFile.h"
#include "resources/ResourceResolver.h"

#include <QHash>
#include <QSize>
#include <QString>
#include <QVector>

namespace SorrelKit {

/**
 * Lists the files that a package has for icons: for those of all its launchers, of which a hostile package has a thousand,
 * each with files that take long to look at. All calls share the budgets below, and results are kept: an icon that was
 * listed, and a file that was looked at, cost nothing the next time. When a budget is spent, further files are missing.
 */
class IconFileLookup
{
public:
    /// Files of an icon, and references on the way to them.
    static constexpr int MaxFiles = 64;
    static constexpr qint64 MaxFileBytes = 16 << 20;
    /// The cost of reading the files (FileSource::file()), and the characters of the XML files among them, at most.
    static constexpr qint64 MaxReadCost = 64 << 20;
    /// Steps that looking at the pictures takes (PictureFile::steps()), at most.
    static constexpr qint64 MaxPictureSteps = 64 << 20;
    /// Steps that finding the files takes (ResourceResolver::steps() and characters of paths), at most: a table may have
    /// thousands of type chunks for each resource. The largest applications take some thousands.
    static constexpr qint64 MaxSteps = 1 << 20;

    /// Both outlive this object.
    IconFileLookup(const ResourceResolver &resolver, FileSource &files) : m_resolver(resolver), m_files(files) {}

    /// A file that the package has for an icon.
    struct File {
        QString path;    ///< of the member in the package
        QString kind;    ///< the root element of an XML file, else the format of the picture
        QSize size;      ///< in pixels; empty for XML
        int density = 0; ///< that the resource table has the file for
    };

    /// The files for @p icon, a reference or a path, best first.
    QVector<File> files(const ResolvedValue &icon);

    /// The values that @p icon, a reference or a path, has in the configurations that @p resolver matches, each path once
    /// and references followed. What finding them takes is taken off @p steps.
    static QVector<ResolvedValue> candidates(const ResolvedValue &icon, const ResourceResolver &resolver,
                                             Allowance *steps);

private:
    struct Kind {
        QString name; ///< of the format, or of the root of XML; empty when it is neither
        QSize size;
    };
    const Kind &kindOf(const QString &path);

    const ResourceResolver &m_resolver;
    FileSource &m_files;
    Budget m_readCost{MaxReadCost, 0};
    Allowance m_steps{MaxSteps};
    Budget m_pictureSteps{MaxPictureSteps, 0};
    QHash<QString, Kind> m_kinds; ///< by path
    QHash<quint32, QVector<File>> m_ofResources;
};

} // namespace SorrelKit

#endif
