// SPDX-License-Identifier: LGPL-2.1-or-later
#include "archive/ZipArchive.h"

#include "archive/ArchiveMembers.h"
#include "archive/BufferedFile.h"
#include "archive/RangeDevice.h"

#include <QBuffer>
#include <QFileInfo>

#include <quazip/quazip.h>
#include <quazip/quazipfile.h>
#include <quazip/unzip.h>

#include <limits>
#include <utility>

namespace {

std::unique_ptr<QIODevice> bufferOf(const QByteArray &bytes)
{
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(bytes);
    return buffer;
}

} // namespace

ZipArchive::ZipArchive(const QString &fileName)
    : m_fileName(fileName),
      m_ownDevice(std::make_unique<BufferedFile>(fileName)),
      m_archive(std::make_unique<QuaZip>(m_ownDevice.get()))
{
}

ZipArchive::ZipArchive(QIODevice *device) : m_archive(std::make_unique<QuaZip>(device)) {}

ZipArchive::ZipArchive(const QByteArray &bytes) : ZipArchive(bufferOf(bytes)) {}

ZipArchive::ZipArchive(std::unique_ptr<QIODevice> device)
    : m_ownDevice(std::move(device)), m_archive(std::make_unique<QuaZip>(m_ownDevice.get()))
{
}

std::unique_ptr<ZipArchive> ZipArchive::atNativePath(const QByteArray &path)
{
    return std::unique_ptr<ZipArchive>(new ZipArchive(BufferedFile::atNativePath(path)));
}

ZipArchive::~ZipArchive() = default;

bool ZipArchive::open(Budget *budget)
{
    if (m_archive->isOpen())
        return true;
    // Opening anything but a regular file may block forever: a FIFO waits for a writer.
    if (!m_fileName.isNull() && !QFileInfo(m_fileName).isFile())
        return false;
    const QIODevice *device = m_archive->getIoDevice();
    if (device->isOpen() || !m_archive->open(QuaZip::mdUnzip))
        return false;
    bool isWhole = true;
    qint64 heldBytes = 0;
    ArchiveMembers::visitNames(m_archive.get(), [&](const QString &name) {
        isWhole = budget == nullptr || (budget->spendWork(MemberWork) && budget->holdBytes(MemberBytes));
        heldBytes += budget != nullptr && isWhole ? MemberBytes : 0;
        if (isWhole && !m_known.contains(name)) {
            m_known.insert(name);
            m_names.append(name);
        }
        return isWhole;
    });
    if (!isWhole) {
        m_known.clear();
        m_names.clear();
        m_archive->close();
        if (budget != nullptr)
            budget->releaseBytes(heldBytes);
    }
    return isWhole;
}

QByteArray ZipArchive::file(const QString &path, qint64 maxBytes)
{
    Budget any(std::numeric_limits<qint64>::max(), 0);
    return file(path, maxBytes, &any);
}

QByteArray ZipArchive::file(const QString &path, qint64 maxBytes, Budget *budget)
{
    if (!select(path))
        return {};
    unz_file_info64 info{};
    unzGetCurrentFileInfo64(m_archive->getUnzFile(), &info, nullptr, 0, nullptr, 0, nullptr, 0);
    // A member delivers no more than the directory says, so one that is too long is not read at all.
    const qint64 size = qint64(info.uncompressed_size);
    if (size < 0 || size > maxBytes)
        return {};
    return ArchiveMembers::content(m_archive.get(), maxBytes, budget, qMin(size, MaxTrustedSize));
}

std::unique_ptr<ZipArchive> ZipArchive::archive(const QString &path, Budget *budget)
{
    if (!select(path))
        return nullptr;
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
    QIODevice *const device = m_archive->getIoDevice();
    if (size < 0 || size > device->size() - m_innerBytes)
        return nullptr;
    if (method == ArchiveMembers::Stored) {
        m_innerBytes += size;
        return std::unique_ptr<ZipArchive>(new ZipArchive(std::make_unique<RangeDevice>(device, start, size)));
    }
    if (inflatedSize < 0 || !budget->holdBytes(inflatedSize))
        return nullptr;
    // A member that turns out to be damaged counts too: reading it takes as long.
    m_innerBytes += size;
    const QByteArray bytes = file(path, inflatedSize);
    return bytes.isEmpty() ? nullptr : std::make_unique<ZipArchive>(bytes);
}

bool ZipArchive::select(const QString &path)
{
    return contains(path) && m_archive->setCurrentFile(path, QuaZip::csDefault);
}
