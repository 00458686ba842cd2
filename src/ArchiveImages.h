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
    /// Pixels of a picture's side at most. Launcher icons have up to 512.
    static constexpr int MaxSide = 4096;
    /// Bytes that a decoded picture takes at most.
    static constexpr qint64 MaxBytes = 64 << 20;

    /// @p archive is open, and outlives this object.
    explicit ArchiveImages(QuaZip *archive) : m_archive(archive) {}

    /**
     * The picture in the member @p path; of an animated one, the first. A null image when the member is missing,
     * cannot be read or decoded, or says of itself that it is larger than the ceilings above.
     */
    QImage image(const QString &path);

private:
    QuaZip *m_archive;
    QMap<QString, QImage> m_images;
};

#endif
