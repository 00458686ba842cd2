// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef JPEGPICTURE_H
#define JPEGPICTURE_H

#include "picture/PictureStripper.h"

/**
 * A JPEG file: segments, which begin with a marker, FF and a byte that is neither 0 nor FF. All numbers are big-endian.
 *
 *     0   marker: D8 starts the file, D9 ends it, C0 to CF (without C4, C8 and CC) is a frame, DA is a scan, E0 to EF
 *         belongs to an application, FE is a comment
 *     2   length u16, itself included; D0 to D9 have none, and nothing behind it
 *     4   data
 *
 * A frame has the bits of a sample u8, height u16, width u16, number of components u8. The header of a scan has the
 * number of its components u8, and behind it come data of no stated length, up to the next marker: in them, an FF is
 * followed by a zero or by one of D0 to D7. Between segments there may be anything else, which decoders skip.
 *
 * The sieve drops comments and the segments of applications, because decoders keep them in lists and walk through
 * these. It keeps the bytes that decoders read of two such segments, JFIF's and Adobe's: they say which colours the
 * components are.
 */
class JpegPicture
{
public:
    /// Scans at most. Encoders write up to a dozen; each one goes over the whole picture.
    static constexpr int MaxScans = 64;

    /// Goes over the file; false when it is none, its picture is too large, or it has too many scans.
    static bool sieve(PictureStripper *sieve);
};

#endif
