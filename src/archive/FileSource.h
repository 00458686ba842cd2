// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FILESOURCE_H
#define FILESOURCE_H

#include "limits/Budget.h"

#include <QByteArray>
#include <QString>

/// The members of a package, or of a package and its splits, by their paths.
class FileSource
{
public:
    virtual ~FileSource() = default;

    /// The content of the member @p path; of a damaged one, the bytes before the fault. Empty when there is no such
    /// member, it cannot be read, has more than @p maxBytes, or could cost more work than @p budget has left. Reading
    /// costs Budget::ByteWork for each byte, or Budget::PackedByteWork for each compressed byte, whichever is more.
    virtual QByteArray file(const QString &path, qint64 maxBytes, Budget *budget) = 0;
};

#endif
