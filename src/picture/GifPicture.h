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
 * An extension is 21, a kind u8, then blocks. A block is a length u8 and that many bytes; a block of length 0 is the
 * last one. An extension of the kind F9 has the transparency of the next picture. A picture is 2C, left, top, width and
 * height u16, flags u8, a palette when the flags say so, the bits of a pixel u8, then blocks. The blocks contain codes,
 * lowest bit first. A code has one bit more than a pixel at first, and up to 12 bits later. The code 1 << bits starts
 * over, and the code after it ends the picture. Each other code represents a row of pixels and defines a further code,
 * for that row and one more pixel.
 *
 * strip() keeps the header, the palette, the extension F9 and the first picture, with as many codes as fill it. A
 * decoder would go on after the last pixel, and a code may represent four thousand pixels.
 */
class GifPicture
{
public:
    /// Keeps the parts above; false when the file is no GIF, or its picture is too large.
    static bool strip(PictureStripper *stripper);
};

#endif
