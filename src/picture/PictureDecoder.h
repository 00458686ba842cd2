// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PICTUREDECODER_H
#define PICTUREDECODER_H

#include "format/Allowance.h"
#include "picture/PictureFile.h"

#include <QImage>

/**
 * Decodes picture files within a budget for all of them, in bytes that decoding takes; the time grows with these bytes. A
 * picture that does not fit in the rest of the budget is refused and spends nothing, so that a smaller one after it may
 * fit. A picture that cannot be decoded spends as much as one that can.
 */
class PictureDecoder
{
public:
    /// Bytes that the pixels of all PNG files together may unpack to, judged by the size of the files. Beyond this sum,
    /// each file is checked before it is decoded, in a third of the time of decoding.
    static constexpr qint64 MaxUnpacking = 256 << 20;

    explicit PictureDecoder(qint64 bytes) : m_bytes(bytes) {}

    /// Opens @p file and spends its steps. Refuses every file when the budget is spent.
    PictureFile open(QByteArray file);
    /// The picture in @p file, the first one of an animation. A null image when it is refused or cannot be decoded.
    QImage decoded(const PictureFile &file);

    qint64 bytesLeft() const { return m_bytes.left(); }

private:
    bool isOverfull(const PictureFile &file);

    Allowance m_bytes;
    Allowance m_unpacking{MaxUnpacking};
};

#endif
