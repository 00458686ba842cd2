// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ArchiveFiles.h"

#include "ArchiveFile.h"
#include "RangeDevice.h"

#include <QBuffer>
#include <QFileInfo>

#include <quazip/quazip.h>
#include <quazip/quazipfile.h>
#include <quazip/unzip.h>

#include <utility>

namespace SorrelKit {

namespace {

std::unique_ptr<QIODevice> bufferOf(const QByteArray &bytes)
{
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(bytes);
    return buffer;
}

} // namespace

ArchiveFiles::ArchiveFiles(const QString &fileName)
    : m_fileName(fileName),
      m_ownDevice(std::make_unique<ArchiveFile>(fileName)),
      m_archive(std::make_unique<QuaZip>(m_ownDevice.get()))
{
}

ArchiveFiles::ArchiveFiles(QIODevice *device) : m_archive(std::make_unique<QuaZip>(device)) {}

ArchiveFiles::ArchiveFiles(const QByteArray &bytes) : ArchiveFiles(bufferOf(bytes)) {}

ArchiveFiles::ArchiveFiles(std::unique_ptr<QIODevice> device)
    : m_ownDevice(std::move(device)), m_archive(std::make_unique<QuaZip>(m_ownDevice.get()))
{
}

ArchiveFiles::~ArchiveFiles() = default;

bool ArchiveFiles::open()
{
    if (m_archive->isOpen())
        return true;
    // Opening anything but a file may wait forever: a FIFO, for one, does until somebody writes to it.
    if (!m_fileName.isNull() && !QFileInfo(m_fileName).isFile())
        return false;
    const QIODevice *device = m_archive->getIoDevice();
    return !device->isOpen() && m_archive->open(QuaZip::mdUnzip);
}

QByteArray ArchiveFiles::file(const QString &path, qint64 maxBytes)
{
    constexpr qint64 PieceSize = 64 << 10;
    if (!contains(path))
        return {};
    QuaZipFile file(m_archive.get());
    // No member delivers more than the directory says, so that one which is too long costs nothing.
    if (!file.open(QIODevice::ReadOnly) || file.usize() > maxBytes)
        return {};
    QByteArray bytes;
    bytes.reserve(int(qBound(qint64(0), file.usize(), MaxTrustedSize)));
    while (bytes.size() <= maxBytes) {
        // One byte more than may be shows that there is one.
        const QByteArray piece = file.read(qMin(PieceSize, maxBytes + 1 - bytes.size()));
        if (piece.isEmpty())
            break;
        // Where the room does not do, Qt 6 appends to a copy, and has both for a while; this moves the bytes.
        const qint64 needed = bytes.size() + piece.size();
        if (bytes.capacity() < needed)
            bytes.reserve(int(qMin(2 * needed, maxBytes + 1)));
        bytes += piece;
    }
    return bytes.size() > maxBytes ? QByteArray() : bytes;
}

std::unique_ptr<ArchiveFiles> ArchiveFiles::archive(const QString &path, Allowance *inflated)
{
    if (!contains(path))
        return nullptr;
    constexpr int Stored = 0;
    constexpr bool IsRaw = true;
    int method = 0;
    int level = 0;
    QuaZipFile raw(m_archive.get());
    if (!raw.open(QIODevice::ReadOnly, &method, &level, IsRaw))
        return nullptr;
    const qint64 start = qint64(unzGetCurrentFileZStreamPos64(m_archive->getUnzFile()));
    const qint64 size = raw.csize();
    const qint64 inflatedSize = raw.usize();
    raw.close();
    if (method == Stored) {
        QIODevice *const device = m_archive->getIoDevice();
        if (size < 0 || size > device->size() - m_standingBytes)
            return nullptr;
        m_standingBytes += size;
        return std::unique_ptr<ArchiveFiles>(new ArchiveFiles(std::make_unique<RangeDevice>(device, start, size)));
    }
    if (inflatedSize < 0 || inflatedSize > inflated->left())
        return nullptr;
    // Also of one that turns out to be damaged: it takes as long.
    inflated->spend(inflatedSize);
    const QByteArray bytes = file(path, inflatedSize);
    return bytes.isEmpty() ? nullptr : std::make_unique<ArchiveFiles>(bytes);
}

bool ArchiveFiles::contains(const QString &path)
{
    return m_archive->isOpen() && !path.isEmpty() && m_archive->setCurrentFile(path, QuaZip::csDefault);
}

QStringList ArchiveFiles::names(int maxCount)
{
    QStringList names;
    for (bool more = m_archive->isOpen() && m_archive->goToFirstFile(); more && names.size() < maxCount;
         more = m_archive->goToNextFile())
        names.append(m_archive->getCurrentFileName());
    return names;
}

} // namespace SorrelKit
