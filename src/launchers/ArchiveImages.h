// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ARCHIVEIMAGES_H
#define ARCHIVEIMAGES_H

#include "limits/Budget.h"
#include "picture/PictureDecoder.h"

#include <QByteArray>
#include <QImage>
#include <QMap>
#include <QString>

class QuaZip;

/**
 * The picture files of an archive. Each is read and decoded once while this object lives. An archive may name any
 * number of members, and all of them may share the same few bytes, so reading and decoding spend from a budget. A
 * picture that does not fit in the rest of it is left out, like one that cannot be read.
 *
 * PictureFile decides which formats are decoded, and which pictures of these formats are refused.
 */
class ArchiveImages
{
public:
    /// The work of looking for a member and opening it: a tiny picture takes up to 0.1 ms.
    static constexpr qint64 MemberWork = 1 << 14;

    /// @p archive is open, and both outlive this object. Without an archive there are no pictures.
    ArchiveImages(QuaZip *archive, Budget &budget) : m_archive(archive), m_budget(budget), m_decoder(budget) {}

    /**
     * The picture in the member @p path; of an animated one, the first. A null image when the member is missing,
     * cannot be read or decoded, is refused, or does not fit in the budget.
     */
    QImage image(const QString &path);

private:
    QByteArray memberBytes(const QString &path);

    QuaZip *m_archive;
    Budget &m_budget;
    PictureDecoder m_decoder;
    QMap<QString, QImage> m_images;
};

#endif
