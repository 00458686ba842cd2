// SPDX-License-Identifier: LGPL-2.1-or-later
#include "picture/IcoPicture.h"

#include <QtEndian>

namespace {

constexpr int CountAt = 4;
constexpr int WidthAt = 6;
constexpr int HeightAt = 7;
constexpr int BitsAt = 12;
constexpr int SizeAt = 14;
constexpr int OffsetAt = 18;
constexpr int DirectoryEnd = 22; // of one picture

qint64 rowSize(qint64 width, int bits)
{
    return (width * bits + 31) / 32 * 4;
}

} // namespace

void IcoPicture::unwrapPng(QByteArray *file)
{
    const ByteView view(*file);
    const qint64 at = view.u32(OffsetAt);
    const qint64 size = view.part(at, view.u32(SizeAt)).size();
    if (!view.hasText(at, "\x89PNG\r\n\x1a\n"))
        return;
    file->truncate(int(at + size));
    file->remove(0, int(at));
}

bool IcoPicture::strip(PictureStripper *stripper)
{
    constexpr int HeaderSize = 40;
    constexpr int MaxPaletteBits = 8;
    constexpr int ColorSize = 4;
    // The picture, and a copy with its transparency.
    constexpr int ColorBytes = 12;
    const ByteView &file = stripper->file();
    const qint64 at = file.u32(OffsetAt);
    const ByteView picture = file.from(at);
    const qint64 width = file.u8(WidthAt) != 0 ? file.u8(WidthAt) : qint32(picture.u32(4));
    const qint64 height = file.u8(HeightAt) != 0 ? file.u8(HeightAt) : qint32(picture.u32(8)) / 2;
    const int bits = picture.u16(14) != 0 ? picture.u16(14) : file.u16(BitsAt);
    if (at < DirectoryEnd || qMax(width, height) > MaxSide || !stripper->grow(width, height))
        return false;
    stripper->decodingBytes = stripper->pixels() * ColorBytes;
    const qint64 statedColors = picture.u32(32);
    const qint64 colors = bits > MaxPaletteBits ? 0 : statedColors != 0 ? statedColors : qint64(1) << bits;
    char *const directory = stripper->keep(0, DirectoryEnd);
    qToLittleEndian(quint16(1), directory + CountAt);
    qToLittleEndian(quint32(DirectoryEnd), directory + OffsetAt);
    stripper->keep(at, HeaderSize + ColorSize * colors + height * (rowSize(width, bits) + rowSize(width, 1)));
    stripper->finish();
    return true;
}
