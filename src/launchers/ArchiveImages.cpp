// SPDX-License-Identifier: LGPL-2.1-or-later
#include "launchers/ArchiveImages.h"

#include "archive/ArchiveMembers.h"

#include <quazip/quazip.h>

QImage ArchiveImages::image(const QString &path)
{
    const auto known = m_images.constFind(path);
    if (known != m_images.cend())
        return *known;
    if (m_archive == nullptr || !m_budget.spendWork(MemberWork))
        return {};
    // A failure is remembered too, so it costs once.
    QImage image = m_decoder.decoded(PictureFile::opened(memberBytes(path), &m_budget));
    m_images.insert(path, image);
    return image;
}

QByteArray ArchiveImages::memberBytes(const QString &path)
{
    if (!m_archive->setCurrentFile(path, QuaZip::csDefault))
        return {};
    return ArchiveMembers::content(m_archive, PictureFile::MaxBytes, &m_budget);
}
