// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef THUMBNAILFILE_H
#define THUMBNAILFILE_H

#include <QByteArray>
#include <QString>

/**
 * A file that is written whole or not at all, without a temporary file beside it: a sandbox may allow only this name. A
 * link or a device stays as it is.
 *
 * When writing fails, a new file is removed, and an existing file is left empty.
 */
class ThumbnailFile
{
public:
    explicit ThumbnailFile(const QByteArray &path) : m_path(path) {}

    /// Replaces the content of the file with @p bytes. Returns false on failure.
    bool write(const QByteArray &bytes);
    /// Writes @p bytes to standard output.
    bool writeToStandardOutput(const QByteArray &bytes);
    /// The error text after a failure, in English.
    QString errorString() const { return m_error; }

private:
    bool fail(int error);

    QByteArray m_path;
    QString m_error;
};

#endif
