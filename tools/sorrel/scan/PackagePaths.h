// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGEPATHS_H
#define PACKAGEPATHS_H

#include "FileName.h"

#include <QByteArray>
#include <QVector>

#include <cstdio>

/**
 * Finds the packages in files, directories, and lists of both. A named file is always taken. Below a directory, files
 * with the extensions .apk, .apks, .xapk and .apkm are taken, in the order of their names, including hidden ones. Links
 * to directories are not followed, so there are no cycles. Names are bytes and need not be text.
 */
class PackagePaths
{
public:
    /// A path that could not be read, with the reason.
    struct Fault {
        FileName name;
        QString text;
    };

    /// Adds a file, or the packages below a directory. A missing path counts as a file, and reading it fails later.
    void add(const FileName &name);
    /// Adds each path of @p list, which is read to its end. @p separator follows each path.
    void addList(std::FILE *list, char separator);

    const QVector<FileName> &files() const { return m_files; }
    const QVector<Fault> &faults() const { return m_faults; }

private:
    void addDirectory(const QByteArray &directory);

    QVector<FileName> m_files;
    QVector<Fault> m_faults;
};

#endif
