// SPDX-License-Identifier: LGPL-2.1-or-later
#include "workers/PackageFolder.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <sys/types.h>

namespace {

struct DirectoryCloser {
    void operator()(DIR *directory) const { ::closedir(directory); }
};

bool hasPackageEnding(const QByteArray &name)
{
    const QByteArray lowerName = name.toLower();
    for (const char *ending : {".apk", ".apks", ".xapk", ".apkm"}) {
        if (lowerName.endsWith(ending))
            return true;
    }
    return false;
}

// The type of an entry from dirent; some file systems need stat() for it.
unsigned char typeOf(int directory, const dirent &entry)
{
    struct stat status = {};
    if (entry.d_type != DT_UNKNOWN || ::fstatat(directory, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return entry.d_type;
    return uchar(IFTODT(status.st_mode));
}

// Links to directories are not followed, and a dangling link is no file. Reading the file reports any other fault.
bool isLinkToFile(int directory, const char *link)
{
    struct stat status = {};
    if (::fstatat(directory, link, &status, 0) != 0)
        return errno != ENOENT && errno != ELOOP;
    return !S_ISDIR(status.st_mode);
}

} // namespace

PackageFolder::PackageFolder(const QByteArray &path)
{
    const std::unique_ptr<DIR, DirectoryCloser> directory(::opendir(path.constData()));
    if (directory == nullptr)
        return;
    const int descriptor = ::dirfd(directory.get());
    for (;;) {
        errno = 0;
        const dirent *const entry = ::readdir(directory.get());
        if (entry == nullptr)
            break;
        const QByteArray name(entry->d_name);
        if (name == "." || name == "..")
            continue;
        const unsigned char type = typeOf(descriptor, *entry);
        if (type == DT_DIR)
            m_folders.append(name);
        else if (hasPackageEnding(name)
                 && (type == DT_REG || type == DT_UNKNOWN
                     || (type == DT_LNK && isLinkToFile(descriptor, entry->d_name))))
            m_files.append(name);
    }
    m_isComplete = errno == 0;
    std::sort(m_files.begin(), m_files.end());
    std::sort(m_folders.begin(), m_folders.end());
}
