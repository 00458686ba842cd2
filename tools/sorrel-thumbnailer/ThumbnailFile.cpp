// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ThumbnailFile.h"

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool writeAll(int descriptor, const QByteArray &bytes)
{
    // A short write has no error; the next write reports it.
    qsizetype written = 0;
    while (written < bytes.size()) {
        const ssize_t count = ::write(descriptor, bytes.constData() + written, size_t(bytes.size() - written));
        if (count > 0)
            written += count;
        else if (count == 0 || errno != EINTR)
            return false;
    }
    return true;
}

bool exists(const QByteArray &path)
{
    struct stat status = {};
    return ::stat(path.constData(), &status) == 0;
}

} // namespace

bool ThumbnailFile::write(const QByteArray &bytes)
{
    // A file above the size limit is an error then, and does not end the program.
    std::signal(SIGXFSZ, SIG_IGN);
    constexpr mode_t AnyMode = 0666; // the umask applies
    int file = ::open(m_path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, AnyMode);
    const bool isNew = file >= 0;
    int error = isNew ? 0 : errno;
    if (!isNew && exists(m_path)) {
        file = ::open(m_path.constData(), O_WRONLY | O_TRUNC | O_CLOEXEC);
        error = file >= 0 ? 0 : errno;
    }
    if (file < 0)
        return fail(error);

    if (!writeAll(file, bytes))
        error = errno;
    if (::close(file) != 0 && error == 0)
        error = errno;
    if (error == 0)
        return true;
    // A device cannot be truncated.
    const int emptied = isNew ? ::unlink(m_path.constData()) : ::truncate(m_path.constData(), 0);
    Q_UNUSED(emptied)
    return fail(error);
}

bool ThumbnailFile::writeToStandardOutput(const QByteArray &bytes)
{
    return writeAll(STDOUT_FILENO, bytes) || fail(errno);
}

bool ThumbnailFile::fail(int error)
{
    m_error = qt_error_string(error);
    return false;
}
