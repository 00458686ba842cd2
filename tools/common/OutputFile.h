// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef OUTPUTFILE_H
#define OUTPUTFILE_H

#include "FileName.h"

#include <QFileDevice>
#include <QString>

#include <memory>

/**
 * A file that a user names for output. A regular file is there in whole or not at all, and an old one of that name is kept
 * until then. Anything else (a pipe, a terminal, a device) is never replaced by a file: it is written as it is.
 */
class OutputFile
{
public:
    explicit OutputFile(const FileName &name);

    /// False, too, when Qt has no name for the file.
    bool open() { return m_file != nullptr && m_file->open(QIODevice::WriteOnly); }
    /// What to write to, when it is open.
    QIODevice *device() { return m_file.get(); }
    /// Puts what was written into its place; false when not all of it could be written, to the disk either.
    bool commit();
    /// Why open() or commit() failed.
    QString errorString() const;

private:
    std::unique_ptr<QFileDevice> m_file; ///< null when Qt has no name for it
    bool m_isCut = false;                ///< the file took less than was written
};

#endif
