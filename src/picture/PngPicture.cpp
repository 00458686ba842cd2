// SPDX-License-Identifier: LGPL-2.1-or-later
#include "picture/PngPicture.h"

#include <algorithm>
#include <array>
#include <zlib.h>

namespace {

constexpr int SignatureSize = 8;
constexpr int ChunkHeader = 8;
constexpr int ChecksumSize = 4;
constexpr int HeaderSize = 13;
constexpr int HeaderAt = SignatureSize + ChunkHeader;

enum ChunkType : quint32 {
    Header = 0x49484452,         // IHDR
    Pixels = 0x49444154,         // IDAT
    End = 0x49454e44,            // IEND
    Transparency = 0x74524e53,   // tRNS
    Gamma = 0x67414d41,          // gAMA
    Chromaticities = 0x6348524d, // cHRM
    StandardColors = 0x73524742, // sRGB
    Dimensions = 0x70485973,     // pHYs
    Offset = 0x6f464673,         // oFFs
};
constexpr std::array<quint32, 6> smallChunks{Transparency, Gamma, Chromaticities, StandardColors, Dimensions, Offset};
/// The size of tRNS for the largest palette.
constexpr qint64 MaxSmallChunk = 256;

/// Bytes of a decoded pixel, with 8 and with 16 bits a channel.
constexpr int ColorBytes = 4;
constexpr int DeepColorBytes = 8;

bool isDeep(const ByteView &png)
{
    return png.u8(HeaderAt + 8) > 8;
}

bool isCritical(quint32 type)
{
    constexpr quint32 SmallLetter = 0x20000000;
    return (type & SmallLetter) == 0;
}

int channels(int colorType)
{
    constexpr int Color = 2;
    constexpr int Palette = 1;
    constexpr int Alpha = 4;
    return ((colorType & Color) != 0 && (colorType & Palette) == 0 ? 3 : 1) + ((colorType & Alpha) != 0 ? 1 : 0);
}

/// Bytes of all rows of the picture, unpacked.
qint64 rowBytes(const ByteView &png)
{
    struct Pass {
        int left, top, columns, rows; // the first column and row, and the distances to the next
    };
    constexpr Pass whole[] = {{0, 0, 1, 1}};
    constexpr Pass interlaced[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                                   {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
    const qint64 width = png.big32(HeaderAt);
    const qint64 height = png.big32(HeaderAt + 4);
    const qint64 bits = qint64(png.u8(HeaderAt + 8)) * channels(png.u8(HeaderAt + 9));
    const auto bytesOf = [&](const Pass &pass) {
        const qint64 columns = (width - pass.left + pass.columns - 1) / pass.columns;
        const qint64 rows = (height - pass.top + pass.rows - 1) / pass.rows;
        return columns > 0 && rows > 0 ? rows * (1 + (columns * bits + 7) / 8) : 0;
    };
    qint64 bytes = 0;
    if (png.u8(HeaderAt + 12) == 0)
        return bytesOf(whole[0]);
    for (const Pass &pass : interlaced)
        bytes += bytesOf(pass);
    return bytes;
}

} // namespace

bool PngPicture::strip(PictureStripper *stripper)
{
    const ByteView &file = stripper->file();
    if (file.big32(SignatureSize) != HeaderSize || file.big32(SignatureSize + 4) != Header
        || !stripper->grow(file.big32(HeaderAt), file.big32(HeaderAt + 4)))
        return false;
    stripper->decodingBytes = stripper->pixels() * (isDeep(file) ? DeepColorBytes : ColorBytes);

    stripper->keep(0, SignatureSize);
    std::array<bool, smallChunks.size()> isKept{};
    bool hasPixels = false;
    quint32 type = Header;
    for (qint64 at = SignatureSize; type != End && file.has(at, ChunkHeader);) {
        const qint64 length = file.big32(at);
        type = file.big32(at + 4);
        // Pixels may be cut off. For any other chunk, a decoder takes the memory that the chunk claims before reading
        // it.
        if (type != Pixels && !file.has(at + ChunkHeader, length))
            break;
        hasPixels = hasPixels || type == Pixels;
        const auto small = std::find(smallChunks.begin(), smallChunks.end(), type) - smallChunks.begin();
        const bool isSmall = small < qint64(smallChunks.size()) && length <= MaxSmallChunk;
        // Decoders ignore a second chunk of a kind, and a chunk after the pixels.
        if (isCritical(type) || (isSmall && !isKept[size_t(small)] && !hasPixels))
            stripper->keep(at, ChunkHeader + length + ChecksumSize);
        if (isSmall)
            isKept[size_t(small)] = true;
        at += ChunkHeader + length + ChecksumSize;
    }
    stripper->finish();
    return true;
}

qint64 PngPicture::maxUnpacked(const QByteArray &png)
{
    constexpr qint64 MostOfAByte = 1032; // the most that deflate packs into one
    return png.size() * MostOfAByte;
}

bool PngPicture::isOverfull(const QByteArray &png)
{
    const ByteView file(png);
    const qint64 most = rowBytes(file) + MaxExcess;
    z_stream stream = {};
    if (inflateInit(&stream) != Z_OK)
        return true;
    std::array<Bytef, 16 << 10> scratch{};
    qint64 unpacked = 0;
    int status = Z_OK;
    for (qint64 at = SignatureSize; status == Z_OK && unpacked <= most && file.has(at, ChunkHeader);) {
        const qint64 length = file.big32(at);
        if (file.big32(at + 4) == Pixels) {
            const ByteView data = file.part(at + ChunkHeader, length);
            stream.next_in = const_cast<Bytef *>(data.data());
            stream.avail_in = uInt(data.size());
            while (status == Z_OK && unpacked <= most && (stream.avail_in > 0 || stream.avail_out == 0)) {
                stream.next_out = scratch.data();
                stream.avail_out = uInt(scratch.size());
                status = inflate(&stream, Z_NO_FLUSH);
                unpacked += qint64(scratch.size()) - stream.avail_out;
            }
            // No input or no output was left: the next chunk has more.
            if (status == Z_BUF_ERROR)
                status = Z_OK;
        }
        at += ChunkHeader + length + ChecksumSize;
    }
    inflateEnd(&stream);
    return unpacked > most;
}
