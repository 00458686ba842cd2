// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BMPPICTURE_H
#define BMPPICTURE_H

#include "picture/PictureStripper.h"

/**
 * A BMP file: "BM" and 12 more bytes, then a header, a palette and the rows. All numbers are little-endian. The header
 * begins with its own size u32, then width and height: i32 each, or u16 and i16 in the old header of 12 bytes. The
 * height is negative when the rows are stored from the top down. A decoder reads nothing but the picture, so the file
 * is not changed.
 */
class BmpPicture
{
public:
    /// Reads the header; false when the picture is too large.
    static bool strip(PictureStripper *stripper);
};

#endif
