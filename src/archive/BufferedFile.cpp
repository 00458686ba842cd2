// SPDX-License-Identifier: LGPL-2.1-or-later
#include "archive/BufferedFile.h"

#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qint64 PageSize = 4096;

} // namespace

std::unique_ptr<BufferedFile> BufferedFile::atNativePath(const QByteArray &path)
{
    auto file = std::make_unique<BufferedFile>(QString());
    file->m_nativePath = path.isNull() ? QByteArray("") : path;
    return file;
}

bool BufferedFile::openFile()
{
    if (m_nativePath.isNull())
        return m_file.open(ReadOnly | Unbuffered);
    if (m_nativePath.contains('\0')) // the system would see a shorter path
        return false;
    // Without O_NONBLOCK, opening a FIFO waits for a writer.
    const int descriptor = ::open(m_nativePath.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat status = {};
    if (descriptor >= 0 && ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)
        && m_file.open(descriptor, ReadOnly | Unbuffered, QFile::AutoCloseHandle))
        return true;
    if (descriptor >= 0)
        ::close(descriptor);
    return false;
}

bool BufferedFile::open(OpenMode mode)
{
    if (mode != ReadOnly || !openFile())
        return false;
    m_size = m_file.size();
    m_at = 0;
    m_lastEnd = 0;
    m_window.clear();
    return QIODevice::open(mode);
}

void BufferedFile::close()
{
    QIODevice::close();
    m_file.close();
    m_window.clear();
}

bool BufferedFile::seek(qint64 position)
{
    m_at = position;
    return QIODevice::seek(position);
}

qint64 BufferedFile::readData(char *data, qint64 size)
{
    size = qMin(size, m_size - m_at);
    if (size <= 0)
        return 0;
    const qint64 delivered = isPartOfMuch(size) ? readFile(m_at, data, size) : readKept(data, size);
    m_at += qMax(qint64(0), delivered);
    m_lastEnd = m_at;
    return delivered;
}

// Members are read in consecutive pieces of this size. QIODevice asks for as many bytes of a directory, but after a
// seek.
bool BufferedFile::isPartOfMuch(qint64 size) const
{
    return size > WindowSize / 2 || (size == WindowSize / 2 && m_at == m_lastEnd);
}

qint64 BufferedFile::readKept(char *data, qint64 size)
{
    if (!isKept(size)) {
        // Reading the directory seeks back a few bytes for each member; the search for its end reads backwards.
        const bool goesBackwards = m_at < m_windowAt;
        m_windowAt = goesBackwards ? qMax(qint64(0), m_at + size - WindowSize) : m_at - m_at % PageSize;
        m_window.resize(WindowSize);
        m_window.resize(int(qMax(qint64(0), readFile(m_windowAt, m_window.data(), WindowSize))));
        size = qMin(size, m_windowAt + m_window.size() - m_at);
        if (size <= 0)
            return -1;
    }
    std::memcpy(data, m_window.constData() + (m_at - m_windowAt), size_t(size));
    return size;
}

qint64 BufferedFile::readFile(qint64 from, char *data, qint64 size)
{
    return m_file.seek(from) ? m_file.read(data, size) : -1;
}

bool BufferedFile::isKept(qint64 size) const
{
    return m_at >= m_windowAt && size <= m_windowAt + m_window.size() - m_at;
}

qint64 BufferedFile::writeData(const char *, qint64)
{
    return -1;
}
