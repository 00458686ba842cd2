// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ArchiveFile.h"

#include <cstring>

namespace {

constexpr qint64 LargeRead = ArchiveFile::WindowSize / 2 + 1;
constexpr qint64 PageSize = 4096;

} // namespace

bool ArchiveFile::open(OpenMode mode)
{
    if (mode != ReadOnly || !m_file.open(ReadOnly | Unbuffered))
        return false;
    m_size = m_file.size();
    m_at = 0;
    m_window.clear();
    return QIODevice::open(mode);
}

void ArchiveFile::close()
{
    QIODevice::close();
    m_file.close();
    m_window.clear();
}

bool ArchiveFile::seek(qint64 position)
{
    m_at = position;
    return QIODevice::seek(position);
}

qint64 ArchiveFile::readData(char *data, qint64 size)
{
    size = qMin(size, m_size - m_at);
    if (size <= 0)
        return 0;
    if (size >= LargeRead) {
        const qint64 delivered = readFile(m_at, data, size);
        m_at += qMax(qint64(0), delivered);
        return delivered;
    }
    if (!isKept(size)) {
        // Those who go through a directory step back a little for every member; those who look for its end go backwards.
        const bool goesBackwards = m_at < m_windowAt;
        m_windowAt = goesBackwards ? qMax(qint64(0), m_at + size - WindowSize) : m_at - m_at % PageSize;
        m_window.resize(WindowSize);
        m_window.resize(int(qMax(qint64(0), readFile(m_windowAt, m_window.data(), WindowSize))));
        size = qMin(size, m_windowAt + m_window.size() - m_at);
        if (size <= 0)
            return -1;
    }
    std::memcpy(data, m_window.constData() + (m_at - m_windowAt), size_t(size));
    m_at += size;
    return size;
}

qint64 ArchiveFile::readFile(qint64 from, char *data, qint64 size)
{
    return m_file.seek(from) ? m_file.read(data, size) : -1;
}

bool ArchiveFile::isKept(qint64 size) const
{
    return m_at >= m_windowAt && size <= m_windowAt + m_window.size() - m_at;
}

qint64 ArchiveFile::writeData(const char *, qint64)
{
    return -1;
}
