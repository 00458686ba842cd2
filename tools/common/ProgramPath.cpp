// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ProgramPath.h"

#include <climits>
#include <unistd.h>

QByteArray programPath()
{
    char path[PATH_MAX];
    const ssize_t size = readlink("/proc/self/exe", path, sizeof path);
    return size > 0 && size_t(size) < sizeof path ? QByteArray(path, int(size)) : QByteArray();
}
