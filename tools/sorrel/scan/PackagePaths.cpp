// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PackagePaths.h"

#include "workers/PackageFolder.h"

#include <cstdlib>
#include <sys/stat.h>
#include <sys/types.h>

void PackagePaths::add(const FileName &name)
{
    struct stat status = {};
    if (::stat(name.path().constData(), &status) == 0 && S_ISDIR(status.st_mode))
        addDirectory(name.path());
    else
        m_files.append(name);
}

void PackagePaths::addList(std::FILE *list, char separator)
{
    char *line = nullptr;
    size_t capacity = 0;
    for (ssize_t size = 0; (size = getdelim(&line, &capacity, separator, list)) > 0;) {
        if (line[size - 1] == separator)
            --size;
        const FileName name(QByteArray(line, int(size)));
        if (name.path().contains('\0'))
            m_faults.append({name, QStringLiteral("no name has a NUL in it; with '-0' names end with one")});
        else if (size > 0)
            add(name);
    }
    std::free(line);
}

void PackagePaths::addDirectory(const QByteArray &directory)
{
    PackageFolder::walk(
        directory, [this](const QByteArray &file) { m_files.append(FileName(file)); },
        [this](const QByteArray &folder, bool isComplete) {
            if (!isComplete)
                m_faults.append({FileName(folder), QStringLiteral("the directory cannot be read")});
            return true;
        });
}
