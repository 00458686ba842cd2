// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FILESOURCE_H
#define FILESOURCE_H

#include "format/Allowance.h"

#include <QByteArray>
#include <QString>

/// The members of a package, or of a package and its splits, by their paths. Drawables are read through this.
class FileSource
{
public:
    virtual ~FileSource() = default;

    /// The content of the member @p path; empty when there is none, it cannot be read, has more than @p maxBytes, or could
    /// cost more than @p cost has left. Of a member that is damaged later on, what comes before. What reading cost is taken
    /// off @p cost: the bytes that were delivered or, when it was more, what was taken from the archive for them
    /// (ArchiveMembers::content()).
    virtual QByteArray file(const QString &path, qint64 maxBytes, Allowance *cost) = 0;
};

#endif
