// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef JPEGPICTURE_H
#define JPEGPICTURE_H

#include "PictureSieve.h"

/**
 * A JPEG file: segments, which begin with a marker, FF and a byte that is neither 0 nor FF. All numbers are big-endian.
 *
 *     0   marker: D8 starts the file, D9 ends it, C0 to CF but for C4, C8 and CC is a frame, DA a scan, E0 to EF belongs to
 *         an application, FE is a comment
 *     2   length u16, itself included; D0 to D9 have none, and nothing behind it
 *     4   data
 *
 * A frame has the bits of a sample u8, height u16, width u16, number of components u8. The header of a scan has the number
 * of its components u8, and behind it come data of no stated length, up to the next marker: in them, an FF is followed by
 * a zero or by one of D0 to D7. Between segments there may be anything else, which decoders skip.
 *
 * Left are comments and what belongs to applications, which decoders keep in lists that they walk through, but for two:
 * JFIF and Adobe's, which tell what colours the components stand for. Kept of these is what decoders read.
 */
class JpegPicture
{
public:
    /// Scans at most. Encoders write up to a dozen; each one goes over the whole picture.
    static constexpr int MaxScans = 64;

    /// Goes over the file; false when it is none, its picture is too large, or it has too many scans.
    static bool sieve(PictureSieve *sieve);
};

#endif
