// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ArchiveImages.h"

#include <QBuffer>

#include <quazip/quazip.h>
#include <quazip/quazipfile.h>

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
    if (!image.load(&buffer, nullptr))
        return {};
    m_images.insert(path, image);
    return image;
}
