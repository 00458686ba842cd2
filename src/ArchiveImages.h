// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ARCHIVEIMAGES_H
#define ARCHIVEIMAGES_H

#include <QImage>
#include <QMap>
#include <QString>

class QuaZip;

/// The picture files of an archive, each read and decoded once while this object lives.
class ArchiveImages
{
public:
    /// @p archive is open, and outlives this object.
    explicit ArchiveImages(QuaZip *archive) : m_archive(archive) {}

    /// The picture in the member @p path, or a null image when it is missing, cannot be read or cannot be decoded.
    QImage image(const QString &path);

private:
    QuaZip *m_archive;
    QMap<QString, QImage> m_images;
};

#endif
