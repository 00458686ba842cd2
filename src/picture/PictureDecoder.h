// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PICTUREDECODER_H
#define PICTUREDECODER_H

#include "format/Allowance.h"
#include "picture/PictureFile.h"

#include <QImage>

/**
 * Decodes picture files, within a budget for all of them in bytes that decoding takes; the time for decoding goes with
 * it. A picture that does not fit in what is left is refused and takes nothing, so that a smaller one after it may fit.
 * One that cannot be decoded takes as much as if it could.
 */
class PictureDecoder
{
public:
    /// Bytes that the pixels of PNG files, all together, may unpack to by the size of the files. Beyond that, each is
    /// looked at before it is decoded, which takes a third of the time that decoding does.
    static constexpr qint64 MaxUnpacking = 256 << 20;

    explicit PictureDecoder(qint64 bytes) : m_bytes(bytes) {}

    /// Opens @p file and takes its steps off the budget. Refuses every file when nothing is left of the budget.
    PictureFile open(QByteArray file);
    /// The picture in @p file; of an animated one, the first. A null image when it is refused or cannot be decoded.
    QImage decoded(const PictureFile &file);

    qint64 bytesLeft() const { return m_bytes.left(); }

private:
    bool isOverfull(const PictureFile &file);

    Allowance m_bytes;
    Allowance m_unpacking{MaxUnpacking};
};

#endif
