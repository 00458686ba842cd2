// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PNGPICTURE_H
#define PNGPICTURE_H

#include "picture/PictureStripper.h"

/**
 * A PNG file: 8 bytes of signature, then chunks. All numbers are big-endian.
 *
 *     0   length of the data u32
 *     4   type, four letters; a capital letter first marks a critical chunk, which makes the picture
 *     8   data, then their checksum u32
 *
 * The first chunk, IHDR, has width and height u32, bits of a channel u8, type of colour u8, two methods u8 that are 0,
 * and u8 1 for an interlaced picture. PLTE is a palette, tRNS its transparency. The data of all IDAT together are one
 * zlib stream of the rows, each after a byte for its filter; an interlaced picture has the rows of seven small
 * pictures. IEND ends the file.
 *
 * strip() keeps the critical chunks, and the chunks of a small fixed size that Qt uses: transparency, the colour space,
 * dots per metre, and the offset. It drops texts, profiles and all others: a decoder unpacks each to megabytes.
 */
class PngPicture
{
public:
    /// Bytes that the pixels of a picture may unpack to beyond the bytes of its rows.
    static constexpr qint64 MaxExcess = 64 << 10;

    /// Keeps the parts above; false when the file is no PNG, or its picture is too large.
    static bool strip(PictureStripper *stripper);
    /// Bytes that the pixels in @p png may unpack to at most, judged by its size.
    static qint64 maxUnpacked(const QByteArray &png);
    /// Whether the pixels in @p png, a file after strip(), unpack to more than its rows and MaxExcess: a decoder
    /// unpacks all of them, up to a thousand times their bytes. Takes about as long as unpacking the rows.
    static bool isOverfull(const QByteArray &png);
};

#endif
