// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ICOPICTURE_H
#define ICOPICTURE_H

#include "picture/PictureStripper.h"

/**
 * A Windows icon: a header, a directory of pictures, then the pictures. All numbers are little-endian.
 *
 *     0   0 and 1, u16 each, or 2 for a cursor, then the number of pictures u16
 *     6   for each picture: width and height u8 (0: as the picture states), number of colours u8, a zero, planes and
 *         bits of a pixel u16, size and offset of the picture u32
 *
 * A picture is a whole PNG file, or a BMP without its first 14 bytes: a header of 40 bytes, with width and height i32
 * at 4, bits of a pixel u16 at 14 and number of colours u32 at 32, a palette, the rows, and then rows of one bit a
 * pixel, which is set where the picture is transparent. The height counts both. Rows end at a multiple of four bytes.
 *
 * strip() keeps the first picture, because Qt decodes that one.
 */
class IcoPicture
{
public:
    /// Pixels of a side of a BMP at most, as in the directory. Qt refuses more, too.
    static constexpr int MaxSide = 256;

    /// Replaces @p file, a Windows icon, by its first picture when that is a PNG file.
    static void unwrapPng(QByteArray *file);
    /// Keeps the first picture, a BMP; false when it is too large, or has no pixels.
    static bool strip(PictureStripper *stripper);
};

#endif
