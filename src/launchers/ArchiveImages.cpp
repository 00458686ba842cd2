// SPDX-License-Identifier: LGPL-2.1-or-later
#include "launchers/ArchiveImages.h"

#include "archive/ArchiveMembers.h"

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
    if (!m_decoder)
        m_decoder.emplace(m_mayDecode());
    return m_decoder->decoded(m_decoder->open(std::move(bytes)));
}
