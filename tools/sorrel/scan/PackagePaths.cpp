// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PackagePaths.h"

#include <QList>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <sys/types.h>

namespace {

/// The entries of a directory for a scan: names of packages and of directories.
struct Entries {
    QList<QByteArray> files;
    QList<QByteArray> directories;
    bool isComplete = false; ///< whether the directory was read to its end
};

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

Entries entriesOf(const QByteArray &path)
{
    Entries entries;
    const std::unique_ptr<DIR, DirectoryCloser> directory(::opendir(path.constData()));
    if (directory == nullptr)
        return entries;
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
            entries.directories.append(name);
        else if (hasPackageEnding(name)
                 && (type == DT_REG || type == DT_UNKNOWN
                     || (type == DT_LNK && isLinkToFile(descriptor, entry->d_name))))
            entries.files.append(name);
    }
    entries.isComplete = errno == 0;
    std::sort(entries.files.begin(), entries.files.end());
    std::sort(entries.directories.begin(), entries.directories.end());
    return entries;
}

} // namespace

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

// A loop, not a recursion: directories may be nested to any depth.
void PackagePaths::addDirectory(const QByteArray &directory)
{
    // A path of only slashes keeps one.
    auto end = directory.size();
    while (end > 1 && directory.at(end - 1) == '/')
        --end;
    QList<QByteArray> open{directory.left(end)};
    while (!open.isEmpty()) {
        const QByteArray current = open.takeLast();
        const Entries entries = entriesOf(current);
        if (!entries.isComplete)
            m_faults.append({FileName(current), QStringLiteral("the directory cannot be read")});
        const QByteArray prefix = current.endsWith('/') ? current : current + '/';
        for (const QByteArray &name : entries.files)
            m_files.append(FileName(prefix + name));
        // The last directory is the next one.
        for (auto name = entries.directories.crbegin(); name != entries.directories.crend(); ++name)
            open.append(prefix + *name);
    }
}
