// SPDX-License-Identifier: LGPL-2.1-or-later
#include "picture/JpegPicture.h"

#include <cstring>

namespace {

constexpr int MarkerSize = 2;

enum Marker {
    FirstFrame = 0xc0,
    LastBaselineFrame = 0xc1,
    HuffmanTables = 0xc4,
    ArithmeticTables = 0xcc,
    LastFrame = 0xcf,
    FirstRestart = 0xd0,
    StartOfImage = 0xd8,
    EndOfImage = 0xd9,
    StartOfScan = 0xda,
    FirstOfApplications = 0xe0,
    Jfif = 0xe0,
    Adobe = 0xee,
    LastOfApplications = 0xef,
    Comment = 0xfe,
};

bool isFrame(int marker)
{
    return marker >= FirstFrame && marker <= LastFrame && marker != HuffmanTables && marker != ArithmeticTables;
}

/// The offset of the next marker that begins a segment or ends the file; the size of the file when there is none.
qint64 nextSegment(const ByteView &file, qint64 at)
{
    for (;; ++at) {
        const ByteView rest = file.from(at);
        const void *const found = rest.isEmpty() ? nullptr : std::memchr(rest.data(), 0xff, size_t(rest.size()));
        if (found == nullptr)
            return file.size();
        at += static_cast<const uchar *>(found) - rest.data();
        const int marker = file.u8(at + 1);
        if (marker >= FirstFrame && marker != 0xff && (marker < FirstRestart || marker > StartOfImage))
            return at;
    }
}

/// Keeps the bytes of the segment at @p at that decoders read.
void keepSegment(PictureStripper *stripper, qint64 at, int length)
{
    constexpr int JfifLength = 16;
    constexpr int JfifThumbnailAt = 16; // its width and height, a byte each; its pixels follow
    constexpr int AdobeLength = 14;
    const ByteView &file = stripper->file();
    const int marker = file.u8(at + 1);
    const auto is = [&](int kind, int ownLength, const char *name) {
        return marker == kind && length >= ownLength && file.has(at, MarkerSize + ownLength)
               && file.hasText(at + 4, name);
    };
    const bool isJfif = is(Jfif, JfifLength, "JFIF");
    const bool isAdobe = is(Adobe, AdobeLength, "Adobe");
    if (isJfif || isAdobe) {
        const int ownLength = isJfif ? JfifLength : AdobeLength;
        char *const segment = stripper->keep(at, MarkerSize + ownLength);
        segment[2] = 0;
        segment[3] = char(ownLength);
        if (isJfif)
            segment[JfifThumbnailAt] = segment[JfifThumbnailAt + 1] = 0;
    } else if (marker != Comment && (marker < FirstOfApplications || marker > LastOfApplications)) {
        stripper->keep(at, MarkerSize + length);
    }
}

} // namespace

bool JpegPicture::strip(PictureStripper *stripper)
{
    constexpr int MaxComponents = 4;
    constexpr int ColorBytes = 4;
    // A picture of several scans keeps the coefficients of all components, two bytes each, until the last scan; in
    // blocks of 8 pixels, up to four of them side by side in a unit.
    constexpr int CoefficientBytes = 2;
    constexpr qint64 UnitSide = 32;

    const ByteView &file = stripper->file();
    int components = 0;
    int scans = 0;
    bool keepsCoefficients = false;
    qint64 at = 0;
    while (at < file.size()) {
        const qint64 segmentAt = nextSegment(file, at);
        const int marker = file.u8(segmentAt + 1);
        const bool isLast = segmentAt == file.size() || marker == EndOfImage;
        stripper->keep(at, segmentAt - at + (isLast ? MarkerSize : 0));
        if (isLast)
            break;
        at = segmentAt;
        const int length = file.big16(at + 2);
        if (length < 2)
            return false;
        if (isFrame(marker)) {
            if (components != 0)
                return false;
            components = file.u8(at + 9);
            keepsCoefficients = marker > LastBaselineFrame;
            if (components < 1 || components > MaxComponents || !stripper->grow(file.big16(at + 7), file.big16(at + 5)))
                return false;
        }
        if (marker == StartOfScan) {
            if (++scans > MaxScans)
                return false;
            keepsCoefficients = keepsCoefficients || scans > 1 || file.u8(at + 4) < components;
        }
        keepSegment(stripper, at, length);
        at += MarkerSize + length;
    }
    stripper->finish();
    if (components == 0)
        return false;
    stripper->decodingBytes = stripper->pixels() * ColorBytes;
    if (keepsCoefficients) {
        const qint64 columns = (stripper->size().width() + UnitSide - 1) / UnitSide * UnitSide;
        const qint64 rows = (stripper->size().height() + UnitSide - 1) / UnitSide * UnitSide;
        stripper->decodingBytes += columns * rows * components * CoefficientBytes;
    }
    return true;
}
