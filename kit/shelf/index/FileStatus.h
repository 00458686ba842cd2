// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_FILESTATUS_H
#define SORRELKIT_FILESTATUS_H

#include <QByteArray>
#include <QHash>

#include <sys/stat.h>

namespace SorrelKit {

/// The facts that the file system has of a file that is not read. Times are nanoseconds since 1970.
struct FileStatus {
    qint64 device = 0;
    qint64 inode = 0;
    qint64 size = -1; ///< -1 for a file that is missing, and for one that was not read yet
    qint64 modified = 0;
    qint64 changed = 0; ///< the content, the name or the permissions

    static FileStatus of(const QByteArray &path)
    {
        struct stat status = {};
        if (::stat(path.constData(), &status) != 0)
            return {};
        const auto nanoseconds = [](const timespec &time) {
            constexpr qint64 perSecond = 1000000000;
            constexpr qint64 maxSeconds = 0x7fffffff * qint64(4); // the year 2242
            return qBound(-maxSeconds, qint64(time.tv_sec), maxSeconds) * perSecond + qint64(time.tv_nsec);
        };
        return {qint64(status.st_dev), qint64(status.st_ino), qint64(status.st_size), nanoseconds(status.st_mtim),
                nanoseconds(status.st_ctim)};
    }

    bool exists() const { return size >= 0; }
    /// Whether it is the same file under another name. A new name changes only the time `changed`.
    bool isSameFile(const FileStatus &other) const
    {
        return exists() && device == other.device && inode == other.inode && size == other.size
               && modified == other.modified;
    }
    /// Whether nothing was changed.
    friend bool operator==(const FileStatus &a, const FileStatus &b)
    {
        return a.isSameFile(b) && a.changed == b.changed;
    }
};

} // namespace SorrelKit

#endif
