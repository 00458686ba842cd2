// SPDX-License-Identifier: LGPL-2.1-or-later
#include "archive/BytesOfFile.h"

#include "archive/MappingGuard.h"

#include <QFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// A guarded part of a file, mapped as long as this object lives.
struct Mapping {
    ~Mapping()
    {
        MappingGuard::release(guard);
        ::munmap(begin, size);
    }

    void *begin;
    size_t size;
    int guard;
};

std::shared_ptr<const Mapping> mapped(int descriptor, qint64 at, qint64 size)
{
    void *const begin = ::mmap(nullptr, size_t(size), PROT_READ, MAP_PRIVATE, descriptor, off_t(at));
    if (begin == MAP_FAILED)
        return nullptr;
    const auto pageSize = quint64(::sysconf(_SC_PAGESIZE));
    const int guard = MappingGuard::guard(begin, (quint64(size) + pageSize - 1) / pageSize * pageSize);
    if (guard < 0) {
        ::munmap(begin, size_t(size));
        return nullptr;
    }
    return std::shared_ptr<const Mapping>(new Mapping{begin, size_t(size), guard});
}

} // namespace

std::unique_ptr<ByteSource> BytesOfFile::open(const QString &name)
{
    // Only QFile reads a resource of a program.
    if (name.startsWith(QLatin1Char(':')))
        return BytesOfDevice::open(std::make_unique<QFile>(name));
    return openNativePath(QFile::encodeName(name));
}

std::unique_ptr<ByteSource> BytesOfFile::openNativePath(const QByteArray &path)
{
    if (path.isEmpty() || path.contains('\0')) // the system would see a shorter path
        return nullptr;
    // Without O_NONBLOCK, opening a FIFO waits for a writer.
    const int descriptor = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return nullptr;
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(descriptor);
        return nullptr;
    }
    return std::unique_ptr<ByteSource>(new BytesOfFile(descriptor, status.st_size));
}

BytesOfFile::~BytesOfFile()
{
    ::close(m_descriptor);
}

SharedBytes BytesOfFile::view(qint64 at, qint64 count)
{
    count = bytesFrom(at, count);
    struct stat status = {};
    if (count < MinMappedBytes || ::fstat(m_descriptor, &status) != 0 || status.st_size < at + count)
        return SharedBytes(read(at, count));
    const qint64 pageSize = ::sysconf(_SC_PAGESIZE);
    const qint64 before = at % pageSize;
    const std::shared_ptr<const Mapping> mapping = mapped(m_descriptor, at - before, before + count);
    if (mapping == nullptr)
        return SharedBytes(read(at, count));
    return {ByteView(static_cast<const uchar *>(mapping->begin) + before, count), mapping};
}

qint64 BytesOfFile::copy(qint64 at, qint64 count, char *data)
{
    qint64 done = 0;
    while (done < count) {
        const ssize_t delivered = ::pread(m_descriptor, data + done, size_t(count - done), off_t(at + done));
        if (delivered < 0 && errno == EINTR)
            continue;
        if (delivered <= 0)
            break;
        done += delivered;
    }
    return done;
}
