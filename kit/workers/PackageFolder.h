// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGEFOLDER_H
#define PACKAGEFOLDER_H

#include <QByteArray>
#include <QList>

/**
 * The packages and the folders in a folder: files with the extensions .apk, .apks, .xapk and .apkm, in the order of
 * their names, including hidden ones. A link to a file is a file; links to folders are left out, so there are no
 * cycles. Names are bytes and need not be text. The constructor reads the folder.
 */
class PackageFolder
{
public:
    explicit PackageFolder(const QByteArray &path);

    /// The names of packages.
    const QList<QByteArray> &files() const { return m_files; }
    /// The names of folders.
    const QList<QByteArray> &folders() const { return m_folders; }
    /// Whether the folder was read to its end.
    bool isComplete() const { return m_isComplete; }

    /// Passes the path of each package below @p folder to @p file. @p entered gets the path of each folder before that,
    /// and whether it was read to its end; it returns whether to continue. The paths begin with @p folder without the
    /// slashes at its end.
    template <typename Take, typename TakeFolder>
    static void walk(const QByteArray &folder, const Take &file, const TakeFolder &entered);

private:
    QList<QByteArray> m_files;
    QList<QByteArray> m_folders;
    bool m_isComplete = false;
};

// A loop, not a recursion: folders may be nested to any depth.
template <typename Take, typename TakeFolder>
void PackageFolder::walk(const QByteArray &folder, const Take &file, const TakeFolder &entered)
{
    // A path of only slashes keeps one.
    auto end = folder.size();
    while (end > 1 && folder.at(end - 1) == '/')
        --end;
    QList<QByteArray> open{folder.left(end)};
    while (!open.isEmpty()) {
        const QByteArray current = open.takeLast();
        const PackageFolder content(current);
        if (!entered(current, content.isComplete()))
            return;
        const QByteArray prefix = current.endsWith('/') ? current : current + '/';
        for (const QByteArray &name : content.files())
            file(QByteArray(prefix + name));
        // The last folder is the next one.
        for (auto name = content.folders().crbegin(); name != content.folders().crend(); ++name)
            open.append(prefix + *name);
    }
}

#endif
