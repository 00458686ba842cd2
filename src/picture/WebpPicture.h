// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef WEBPPICTURE_H
#define WEBPPICTURE_H

#include "picture/PictureStripper.h"

/**
 * A WebP file: "RIFF", the size of what follows u32, "WEBP", then chunks. All numbers are little-endian.
 *
 *     0   type, four letters
 *     4   size of the data u32
 *     8   data, and a zero when their size is odd
 *
 * "VP8 " is a picture with losses, "VP8L" one without; both have their size in the data. A file of more than that has at
 * its start "VP8X": flags u8, three bytes, width and height of the canvas less 1 as u24. "ALPH" is the transparency of the
 * picture behind it: a u8 whose two lowest bits are not 0 when a lossless stream follows. Of an animation, "ANIM" has six
 * bytes for all, and each "ANMF" a frame: left, top, width less 1, height less 1 and duration as u24, flags u8, then chunks.
 *
 * Kept are the chunks of the picture, and of an animation those of the first frame, as a file of that alone; colour
 * profiles, metadata, other frames and unknown chunks are left, which decoders list.
 */
class WebpPicture
{
public:
    /// Goes over the file; false when it is none, its picture is too large, or its prefix codes are damaged.
    static bool sieve(PictureStripper *sieve);

private:
    explicit WebpPicture(PictureStripper *sieve) : m_sieve(sieve) {}
    /// Keeps the picture in the chunks from @p at to @p end; false when there is none, or it is refused.
    bool keepPicture(qint64 at, qint64 end);
    bool addCanvas(qint64 data);
    bool addFrame(qint64 data);
    bool addBitmap(bool isLossy, qint64 data, qint64 length);
    bool addTransparency(qint64 data, qint64 length);
    bool addLossless(qint64 at, qint64 end, QSize size);

    PictureStripper *m_sieve;
    QSize m_canvas; ///< of the file, or of the frame that chunks are in; empty for a simple file
    bool m_isFrame = false;
};

#endif
