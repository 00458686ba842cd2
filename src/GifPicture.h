// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef GIFPICTURE_H
#define GIFPICTURE_H

#include "PictureSieve.h"

/**
 * A GIF file: a header, then extensions and pictures, one after another. All numbers are little-endian.
 *
 *     0   "GIF87a" or "GIF89a"
 *     6   the screen: width and height u16, flags u8, two more bytes
 *     13  a palette, when the flags say so
 *
 * An extension is 21, a kind u8, then blocks: of each its length u8 and that many bytes, up to one of length 0. F9 is the
 * kind that tells the next picture's transparency. A picture is 2C, left, top, width and height u16, flags u8, a palette
 * when the flags say so, the bits of a pixel u8, then blocks. In the blocks are codes, from the lowest bit of each byte on,
 * of one bit more than a pixel has at first, and of up to 12. The code 1 << bits starts over, the next one ends the
 * picture; each other one stands for a row of pixels and makes a further code, for that row and a pixel more.
 *
 * Kept is all up to the first picture but for other extensions, and of its codes as many as fill it: a decoder goes on,
 * and a code may stand for four thousand pixels.
 */
class GifPicture
{
public:
    /// Goes over the file; false when it is none, or its picture is too large.
    static bool sieve(PictureSieve *sieve);
};

#endif
