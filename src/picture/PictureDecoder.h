// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PICTUREDECODER_H
#define PICTUREDECODER_H

#include "limits/Budget.h"
#include "picture/PictureFile.h"

#include <QImage>

/**
 * Decodes picture files within a budget. A picture costs PictureFile::decodingBytes() of work, whether or not it can be
 * decoded, and holds as many bytes while it is decoded; the bytes of the result stay held. A picture that does not fit
 * is refused and takes nothing, so a smaller one after it may fit.
 */
class PictureDecoder
{
public:
    /// Bytes that decoding one picture takes: 4096 x 4096 pixels of 32 bits, and no more.
    static constexpr qint64 MaxBytes = 64 << 20;
    /// Bytes that the pixels of PNG files may unpack to in all, judged by the size of the files. Above that, each file
    /// is unpacked once before it is decoded, to see whether it holds more than its rows; this costs work too.
    static constexpr qint64 MaxUnpacking = 256 << 20;

    /// @p budget outlives this object.
    explicit PictureDecoder(Budget &budget) : m_budget(budget) {}

    /// The picture in @p file; of an animated one, the first. A null image when it is refused or cannot be decoded.
    QImage decoded(const PictureFile &file);

private:
    bool isOverfull(const PictureFile &file);

    Budget &m_budget;
    qint64 m_unpacking = 0;
};

#endif
