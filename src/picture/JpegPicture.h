// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef JPEGPICTURE_H
#define JPEGPICTURE_H

#include "picture/PictureStripper.h"

/**
 * A JPEG file: segments, which begin with a marker, FF and a byte that is neither 0 nor FF. All numbers are big-endian.
 *
 *     0   marker: D8 starts the file, D9 ends it, C0 to CF (without C4, C8 and CC) is a frame, DA is a scan, E0 to EF
 *         belongs to an application, FE is a comment
 *     2   length u16, itself included; D0 to D9 have neither length nor data
 *     4   data
 *
 * A frame has the bits of a sample u8, height u16, width u16, number of components u8. The header of a scan has the
 * number of its components u8. Data without a stated length follow it, up to the next marker; in these data, an FF is
 * followed by a zero or by one of D0 to D7. Decoders skip any other bytes between segments.
 *
 * strip() drops comments and the segments of applications, because decoders keep them in lists and walk through these
 * lists. It keeps the bytes that decoders read of two such segments, JFIF's and Adobe's: they define the colours of the
 * components.
 */
class JpegPicture
{
public:
    /// Scans at most. Encoders write up to a dozen, and each scan goes over the whole picture.
    static constexpr int MaxScans = 64;

    /// Keeps the parts above; false when the file is no JPEG, its picture is too large, or it has too many scans.
    static bool strip(PictureStripper *stripper);
};

#endif
