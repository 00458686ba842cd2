// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ArchiveImages.h"

#include "PictureCheck.h"

#include <QBuffer>
#include <QImageReader>

#include <quazip/quazip.h>
#include <quazip/quazipfile.h>

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
    constexpr qint64 PieceSize = 64 << 10;
    if (m_archive == nullptr || m_readBytes.left() == 0 || !m_archive->setCurrentFile(path, QuaZip::csDefault))
        return {};
    QuaZipFile file(m_archive);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QByteArray bytes;
    for (;;) {
        // One byte more than may be shows that there is one.
        const qint64 largest = qMin(MaxFileBytes, m_readBytes.left()) + 1;
        const QByteArray piece = file.read(qMin(PieceSize, largest - bytes.size()));
        if (piece.isEmpty())
            break;
        bytes += piece;
        if (bytes.size() >= largest) {
            m_readBytes.spend(bytes.size());
            return {};
        }
    }
    m_readBytes.spend(bytes.size());
    return bytes;
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
