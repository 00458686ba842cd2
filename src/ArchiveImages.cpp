// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ArchiveImages.h"

#include "ArchiveMembers.h"
#include "PictureCheck.h"

#include <QBuffer>
#include <QImageReader>

#include <quazip/quazip.h>

QImage ArchiveImages::image(const QString &path)
{
    const auto known = m_images.constFind(path);
    if (known != m_images.cend())
        return *known;
    if (m_images.size() >= MaxMembers)
        return {};
    // A failure is remembered too, so that it costs once.
    QImage image = decoded(memberBytes(path));
    m_images.insert(path, image);
    return image;
}

QByteArray ArchiveImages::memberBytes(const QString &path)
{
    if (m_archive == nullptr || m_readBytes.left() == 0 || !m_archive->setCurrentFile(path, QuaZip::csDefault))
        return {};
    return ArchiveMembers::content(m_archive, MaxFileBytes, &m_readBytes);
}

QImage ArchiveImages::decoded(QByteArray bytes)
{
    if (bytes.isEmpty())
        return {};
    if (!m_decodingBytes)
        m_decodingBytes.emplace(m_mayDecode());
    const PictureCheck check(bytes, m_decodingBytes->left());
    m_readBytes.spend(check.steps());
    // What does not fit takes nothing off: a smaller one after it may.
    if (!check.isAccepted() || check.decodingBytes() > m_decodingBytes->left())
        return {};
    m_decodingBytes->spend(check.decodingBytes());
    // Qt's WebP plugin refuses sequential devices, and a member is one.
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, check.format());
    // No other decoder may take the file for its own.
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    if (size.width() > check.size().width() || size.height() > check.size().height())
        return {};
    return reader.read();
}
