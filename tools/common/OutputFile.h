// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef OUTPUTFILE_H
#define OUTPUTFILE_H

#include "FileName.h"

#include <QFileDevice>
#include <QString>

#include <memory>

/**
 * A file that a user names for output. A regular file is written whole or not at all, and an old file of that name
 * stays until then. A pipe, a terminal or a device is never replaced by a file, but written directly.
 */
class OutputFile
{
public:
    explicit OutputFile(const FileName &name);

    /// Also returns false when Qt has no name for the file.
    bool open() { return m_file != nullptr && m_file->open(QIODevice::WriteOnly); }
    /// The device to write to, when it is open.
    QIODevice *device() { return m_file.get(); }
    /// Puts the written data in place. Returns false when not all of it reached the disk.
    bool commit();
    /// The error text after open() or commit() failed.
    QString errorString() const;

private:
    std::unique_ptr<QFileDevice> m_file; ///< null when Qt has no name for the file
    bool m_isCut = false;                ///< whether a write was short
};

#endif
