// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGEPATHS_H
#define PACKAGEPATHS_H

#include "FileName.h"

#include <QByteArray>
#include <QVector>

#include <cstdio>

/**
 * The names of packages, out of what a user names: files, directories, and lists of both. Files that are named are taken
 * whatever they are called. Below directories, those that end in .apk, .apks, .xapk or .apkm are, in the order of their
 * names; links to directories are not followed, so that there are no circles. What is hidden is looked at, too. Names are
 * bytes throughout: one that is no text is a name like any other.
 */
class PackagePaths
{
public:
    /// Something that could not be looked at, and why.
    struct Fault {
        FileName name;
        QString text;
    };

    /// Adds a file, or what is below a directory. What does not exist is taken for a file, whose reading fails.
    void add(const FileName &name);
    /// Adds each path of @p list, which is read to its end; @p separator stands behind each.
    void addList(std::FILE *list, char separator);

    const QVector<FileName> &files() const { return m_files; }
    const QVector<Fault> &faults() const { return m_faults; }

private:
    void addDirectory(const QByteArray &directory);

    QVector<FileName> m_files;
    QVector<Fault> m_faults;
};

#endif
