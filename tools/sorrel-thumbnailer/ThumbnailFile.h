// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef THUMBNAILFILE_H
#define THUMBNAILFILE_H

#include <QByteArray>
#include <QString>

/**
 * A file that is written whole or not at all, and under its own name from the start: a sandbox may allow that name and
 * no file beside it, and a link or a device stays what it is.
 *
 * When writing fails, a file that was made for it is removed, and one that was there before is left empty.
 */
class ThumbnailFile
{
public:
    explicit ThumbnailFile(const QByteArray &path) : m_path(path) {}

    /// Writes @p bytes, in place of what the file holds. False when it fails.
    bool write(const QByteArray &bytes);
    /// Writes @p bytes to standard output.
    bool writeToStandardOutput(const QByteArray &bytes);
    /// Why writing failed, in English.
    QString errorString() const { return m_error; }

private:
    bool fail(int error);

    QByteArray m_path;
    QString m_error;
};

#endif
