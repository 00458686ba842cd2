// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PackagePaths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdlib>
#include <sys/types.h>

void PackagePaths::add(const QString &path)
{
    if (QFileInfo(path).isDir())
        addDirectory(path);
    else
        m_paths.append(path);
}

void PackagePaths::addList(std::FILE *list, char separator)
{
    char *line = nullptr;
    size_t capacity = 0;
    for (ssize_t size = 0; (size = getdelim(&line, &capacity, separator, list)) > 0;) {
        if (line[size - 1] == separator)
            --size;
        if (size > 0)
            add(QFile::decodeName(QByteArray(line, int(size))));
    }
    std::free(line);
}

// A loop, as directories may be nested to any depth.
void PackagePaths::addDirectory(const QString &directory)
{
    static const QStringList patterns{QStringLiteral("*.apk"), QStringLiteral("*.apks"), QStringLiteral("*.xapk"),
                                      QStringLiteral("*.apkm")};
    constexpr QDir::Filters filters = QDir::Files | QDir::AllDirs | QDir::NoDotAndDotDot | QDir::Hidden;
    QStringList open{directory};
    while (!open.isEmpty()) {
        const QDir current(open.takeLast());
        if (!QFileInfo(current.path()).isReadable()) {
            m_unreadable.append(current.path());
            continue;
        }
        QStringList directories;
        for (const QFileInfo &entry : current.entryInfoList(patterns, filters, QDir::Name)) {
            if (!entry.isDir())
                m_paths.append(entry.filePath());
            else if (!entry.isSymLink())
                directories.prepend(entry.filePath());
        }
        open += directories;
    }
}
