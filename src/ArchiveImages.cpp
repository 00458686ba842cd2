// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ArchiveImages.h"

#include <QBuffer>
#include <QImageReader>
#include <QPixelFormat>

#include <quazip/quazip.h>
#include <quazip/quazipfile.h>

namespace {

// Asks a picture for its size before anything is decoded.
bool isWithinCeilings(QIODevice *device)
{
    QImageReader reader(device);
    const QSize size = reader.size();
    if (size.isEmpty() || qMax(size.width(), size.height()) > ArchiveImages::MaxSide)
        return false;
    const int depth = QImage::toPixelFormat(reader.imageFormat()).bitsPerPixel();
    return qint64(size.width()) * size.height() * qMax(32, depth) / 8 <= ArchiveImages::MaxBytes;
}

} // namespace

QImage ArchiveImages::image(const QString &path)
{
    const auto known = m_images.constFind(path);
    if (known != m_images.cend())
        return *known;

    if (!m_archive->setCurrentFile(path, QuaZip::csDefault))
        return {};
    QuaZipFile file(m_archive);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    // Qt's WebP and ICO plugins refuse sequential devices, and a member is one.
    QByteArray bytes = file.readAll();
    file.close();
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImage image;
    if (!isWithinCeilings(&buffer) || !buffer.seek(0) || !image.load(&buffer, nullptr))
        return {};
    m_images.insert(path, image);
    return image;
}
