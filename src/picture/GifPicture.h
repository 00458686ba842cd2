// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef GIFPICTURE_H
#define GIFPICTURE_H

#include "picture/PictureStripper.h"

/**
 * A GIF file: a header, then extensions and pictures, one after another. All numbers are little-endian.
 *
 *     0   "GIF87a" or "GIF89a"
 *     6   the screen: width and height u16, flags u8, two more bytes
 *     13  a palette, when the flags say so
 *
 * An extension is 21, a kind u8, then blocks. Each block has a length u8 and that many bytes; one of length 0 is the
 * last. An extension of the kind F9 has the transparency of the next picture. A picture is 2C, left, top, width and
 * height u16, flags u8, a palette when the flags say so, the bits of a pixel u8, then blocks. In the blocks are codes,
 * from the lowest bit of each byte on, of one bit more than a pixel has at first, and of up to 12. The code 1 << bits
 * starts over, the next one ends the picture; each other one stands for a row of pixels and makes a further code, for
 * that row and a pixel more.
 *
 * The sieve keeps the header, the palette, the extension F9 and the first picture, with as many codes as fill it. A
 * decoder would go on behind the last pixel, and a code may stand for four thousand pixels.
 */
class GifPicture
{
public:
    /// Goes over the file; false when it is none, or its picture is too large.
    static bool sieve(PictureStripper *sieve);
};

#endif
