// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ARCHIVEIMAGES_H
#define ARCHIVEIMAGES_H

#include "format/Allowance.h"
#include "picture/PictureDecoder.h"

#include <QByteArray>
#include <QImage>
#include <QMap>
#include <QString>

#include <functional>
#include <optional>
#include <utility>

class QuaZip;

/**
 * The picture files of an archive, each read and decoded once while this object lives. It has budgets, because an
 * archive may name any number of members, and all of them may stand for the same few bytes: what does not fit in what
 * is left of a budget is left out, as a picture that cannot be read is.
 *
 * Which formats are decoded, and which pictures of these formats are refused, is up to PictureFile.
 */
class ArchiveImages
{
public:
    /// Bytes of one file at most, as they come out of the archive. A member's claim to a size is not looked at.
    static constexpr qint64 MaxFileBytes = 16 << 20;
    /// The cost of reading all files (ArchiveMembers::content()), at most. Refused files count as well.
    static constexpr qint64 MaxReadBytes = 64 << 20;
    /// Bytes that decoding takes at most, over all pictures, those that fail included; what one picture takes on the
    /// way to its QImage counts as well.
    static constexpr qint64 MaxDecodingBytes = 64 << 20;
    /// Members that are looked for at most. A package with ten launchers in each density has a hundred.
    static constexpr int MaxMembers = 4096;

    /// @p archive is open, and outlives this object; without one there are no pictures. @p decodingBytes tells what may
    /// take the place of MaxDecodingBytes; it is asked once, for the first file that is found.
    explicit ArchiveImages(
        QuaZip *archive, std::function<qint64()> decodingBytes = [] { return MaxDecodingBytes; })
        : m_archive(archive), m_readBytes(MaxReadBytes), m_mayDecode(std::move(decodingBytes))
    {
    }

    /**
     * The picture in the member @p path; of an animated one, the first. A null image when the member is missing,
     * cannot be read or decoded, is refused, or exceeds a budget.
     */
    QImage image(const QString &path);

private:
    QByteArray memberBytes(const QString &path);
    QImage decoded(QByteArray bytes);

    QuaZip *m_archive;
    QMap<QString, QImage> m_images;
    Allowance m_readBytes;
    std::function<qint64()> m_mayDecode;
    std::optional<PictureDecoder> m_decoder;
};

#endif
