// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGEPATHS_H
#define PACKAGEPATHS_H

#include <QStringList>

#include <cstdio>

/**
 * The paths of packages, out of what a user names: files, directories, and lists of both. Files that are named are taken
 * whatever they are called. Below directories, those that end in .apk, .apks, .xapk or .apkm are, in the order of their
 * names; links to directories are not followed, so that there are no circles. What is hidden is looked at, too.
 */
class PackagePaths
{
public:
    /// Adds a file, or what is below a directory. What does not exist is taken for a file, whose reading fails.
    void add(const QString &path);
    /// Adds each path of @p list, which is read to its end; @p separator stands behind each.
    void addList(std::FILE *list, char separator);

    const QStringList &paths() const { return m_paths; }
    /// Directories that could not be read.
    const QStringList &unreadable() const { return m_unreadable; }

private:
    void addDirectory(const QString &directory);

    QStringList m_paths;
    QStringList m_unreadable;
};

#endif
