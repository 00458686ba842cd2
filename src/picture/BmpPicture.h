// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BMPPICTURE_H
#define BMPPICTURE_H

#include "picture/PictureStripper.h"

/**
 * A BMP file: "BM" and 12 more bytes, then a header that begins with its own size u32, then a palette and the rows. Width
 * and height are the next two numbers of the header, i32 each, or u16 and i16 in the old one of 12 bytes. A negative height
 * is that of a picture written from the top down. All numbers are little-endian. A decoder reads what the picture needs and
 * nothing else, so the file is kept as it is.
 */
class BmpPicture
{
public:
    /// Goes over the file; false when its picture is too large.
    static bool sieve(PictureStripper *sieve);
};

#endif
