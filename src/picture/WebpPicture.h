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
 * "VP8 " is a lossy picture, "VP8L" a lossless one; both have their size in the data. A file with further chunks starts
 * with "VP8X": flags u8, three bytes, width and height of the canvas less 1 as u24. "ALPH" is the transparency of the
 * picture after it: a u8 whose two lowest bits are not 0 when a lossless stream follows. An animation has six bytes in
 * "ANIM", and a frame in each "ANMF": left, top, width less 1, height less 1 and duration as u24, flags u8, then
 * chunks.
 *
 * strip() keeps the chunks of the picture, or of an animation's first frame as a file of its own. It drops colour
 * profiles, metadata, other frames and unknown chunks, because decoders list them.
 */
class WebpPicture
{
public:
    /// Keeps the parts above; false when the file is no WebP, its picture is too large, or its prefix codes are
    /// damaged.
    static bool strip(PictureStripper *stripper);

private:
    explicit WebpPicture(PictureStripper *stripper) : m_stripper(stripper) {}
    /// Keeps the picture in the chunks from @p at to @p end; false when there is none, or it is refused.
    bool keepPicture(qint64 at, qint64 end);
    bool addCanvas(qint64 data);
    bool addFrame(qint64 data);
    bool addBitmap(bool isLossy, qint64 data, qint64 length);
    bool addTransparency(qint64 data, qint64 length);
    bool addLossless(qint64 at, qint64 end, QSize size);

    PictureStripper *m_stripper;
    QSize m_canvas; ///< of the file, or of the current frame; empty for a simple file
    bool m_isFrame = false;
};

#endif
