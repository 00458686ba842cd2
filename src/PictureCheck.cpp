// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PictureCheck.h"

#include "WebpLossless.h"

#include <QtEndian>

namespace {

/*
 * Bytes that a decoder takes for a pixel at its peak, measured with the decoders of Qt 5.15, libjpeg-turbo 2.1 and
 * libwebp 1.2 and rounded up. The decoded picture has 4 of them, or 8 with 16 bits a channel.
 */
constexpr int ColorBytes = 4;
constexpr int DeepColorBytes = 8;
/// A JPEG of several scans keeps the coefficients of all components, two bytes each, until the last scan.
constexpr int CoefficientBytes = 2;
/// The picture, and what a frame may ask to be put back.
constexpr int GifBytes = 8;
/// The picture, and its transparency: a plane of its own, and the one that the lossless decoder makes it of.
constexpr int LossyWebpBytes = 4;
constexpr int LossyWebpAlphaBytes = 9;
/// The picture, its pixels before the transforms are undone, and the transforms' own pictures.
constexpr int LosslessWebpBytes = 9;
/// An animation's canvas, beside its frame.
constexpr int CanvasBytes = 4;
/// Qt keeps a text in UTF-16: as it is, with its spaces simplified, and in a description of all.
constexpr int TextBytes = 10;

/// Bytes that one byte of deflated data unpacks to at most.
constexpr qint64 MaxUnpacking = 1032;
/// A buffer that grows to what it takes is there twice for a moment.
constexpr int GrowingFactor = 2;

/// Reads integers anywhere in a file's bytes; beyond them there are zeros.
class Fields
{
public:
    explicit Fields(const QByteArray &bytes) : m_bytes(bytes) {}

    qint64 size() const { return m_bytes.size(); }
    int u8(qint64 at) const { return at >= 0 && at < size() ? quint8(m_bytes.at(int(at))) : 0; }
    int big16(qint64 at) const { return u8(at) << 8 | u8(at + 1); }
    qint64 big32(qint64 at) const { return qint64(big16(at)) << 16 | big16(at + 2); }
    int little16(qint64 at) const { return u8(at) | u8(at + 1) << 8; }
    int little24(qint64 at) const { return little16(at) | u8(at + 2) << 16; }
    qint64 little32(qint64 at) const { return little16(at) | qint64(little16(at + 2)) << 16; }
    bool hasText(qint64 at, const char *text) const
    {
        return at <= size() && m_bytes.mid(int(at), int(qstrlen(text))) == text;
    }

private:
    const QByteArray &m_bytes;
};

} // namespace

PictureCheck::PictureCheck(const QByteArray &bytes, qint64 mayUnpack) : m_mayUnpack(mayUnpack)
{
    struct Kind {
        const char *start;
        const char *format;
        bool (PictureCheck::*check)(const QByteArray &);
    };
    constexpr Kind kinds[] = {
        {"\x89PNG\r\n\x1a\n", "png", &PictureCheck::checkPng},
        {"\xff\xd8\xff", "jpeg", &PictureCheck::checkJpeg},
        {"GIF87a", "gif", &PictureCheck::checkGif},
        {"GIF89a", "gif", &PictureCheck::checkGif},
        {"RIFF", "webp", &PictureCheck::checkWebp},
        {"BM", "bmp", &PictureCheck::checkBmp},
    };
    for (const Kind &kind : kinds) {
        if (bytes.startsWith(kind.start) && (this->*kind.check)(bytes))
            m_format = kind.format;
    }
}

bool PictureCheck::setSize(qint64 width, qint64 height)
{
    if (width < 1 || height < 1 || qMax(width, height) > MaxSide)
        return false;
    m_size = QSize(int(width), int(height));
    return true;
}

qint64 PictureCheck::unpackedSize(const QByteArray &packed)
{
    // The size is not known beforehand: the first guess grows as it has to, within what MaxPackedBytes allows.
    constexpr quint32 FirstGuess = 64 << 10;
    QByteArray prefixed(4, '\0');
    qToBigEndian(FirstGuess, prefixed.data());
    const QByteArray unpacked = qUncompress(prefixed + packed);
    // Damaged data may have unpacked to anything before they turned out to be.
    m_steps += unpacked.isNull() ? packed.size() * MaxUnpacking : unpacked.size();
    return unpacked.isNull() ? -1 : unpacked.size();
}

// Chunks of a length, a type, the data and a checksum. A decoder unpacks the texts of all to give them as metadata.
bool PictureCheck::checkPng(const QByteArray &bytes)
{
    constexpr int SignatureSize = 8;
    constexpr int HeaderSize = 13;
    constexpr int ChunkHeader = 8;
    constexpr int ChecksumSize = 4;
    enum ChunkType : quint32 {
        Pixels = 0x49444154,            // IDAT
        End = 0x49454e44,               // IEND
        Text = 0x74455874,              // tEXt
        PackedText = 0x7a545874,        // zTXt
        InternationalText = 0x69545874, // iTXt
        Profile = 0x69434350,           // iCCP
        Exif = 0x65584966,              // eXIf
    };
    const Fields fields(bytes);
    if (fields.big32(SignatureSize) != HeaderSize || !fields.hasText(SignatureSize + 4, "IHDR"))
        return false;
    const int header = SignatureSize + 8;
    if (!setSize(fields.big32(header), fields.big32(header + 4)))
        return false;

    qint64 packedBytes = 0;
    qint64 textBytes = 0;
    for (qint64 at = SignatureSize; fields.size() - at >= ChunkHeader;) {
        const qint64 length = fields.big32(at);
        const qint64 type = fields.big32(at + 4);
        const int dataAt = int(at) + ChunkHeader;
        if (type == End)
            break;
        // A decoder takes and clears the memory that a chunk claims before it reads it; pixels it reads in pieces.
        if (length > fields.size() - dataAt && type != Pixels)
            return false;
        at = dataAt + length + ChecksumSize;
        if (type == Text || type == Exif)
            textBytes += length;
        if (type != PackedText && type != InternationalText && type != Profile)
            continue;
        const QByteArray data = bytes.mid(dataAt, int(length));
        // A keyword and its zero, then the compression's method; in iTXt a flag, a method and two texts, each with
        // its zero.
        auto start = int(data.indexOf('\0')) + 2;
        if (type == InternationalText) {
            const bool isPacked = Fields(data).u8(start - 1) != 0;
            start = int(data.indexOf('\0', data.indexOf('\0', start + 1) + 1)) + 1;
            if (!isPacked) {
                textBytes += length;
                continue;
            }
        }
        packedBytes += length;
        if (packedBytes > MaxPackedBytes || packedBytes * MaxUnpacking * GrowingFactor > m_mayUnpack)
            return false;
        const qint64 unpacked = unpackedSize(data.mid(start));
        if (unpacked < 0)
            return false;
        textBytes += unpacked;
    }
    const bool isDeep = fields.u8(header + 8) > 8;
    m_decodingBytes = pixels() * (isDeep ? DeepColorBytes : ColorBytes) + textBytes * TextBytes;
    return true;
}

// Segments of a marker, a length and data; behind the header of a scan come data of no stated length, up to the next
// marker: in them, an FF is followed by a zero or by a restart marker.
bool PictureCheck::checkJpeg(const QByteArray &bytes)
{
    constexpr int FirstFrame = 0xc0;
    constexpr int LastBaselineFrame = 0xc1;
    constexpr int LastFrame = 0xcf;
    constexpr int HuffmanTables = 0xc4;
    constexpr int ArithmeticTables = 0xcc;
    constexpr int FirstRestart = 0xd0;
    constexpr int StartOfImage = 0xd8;
    constexpr int EndOfImage = 0xd9;
    constexpr int StartOfScan = 0xda;
    constexpr int MaxComponents = 4;
    // Blocks of 8 pixels, up to four of them side by side in a unit.
    constexpr qint64 UnitSide = 32;

    const Fields fields(bytes);
    int components = 0;
    int scans = 0;
    bool keepsCoefficients = false;
    for (qint64 at = 2; at < fields.size() - 1;) {
        const int marker = fields.u8(at + 1);
        // Between segments a decoder looks for the next marker, whatever there is; some have no length.
        if (fields.u8(at) != 0xff || marker == 0xff || marker < FirstFrame
            || (marker >= FirstRestart && marker <= StartOfImage)) {
            ++at;
            continue;
        }
        if (marker == EndOfImage)
            break;
        const int length = fields.big16(at + 2);
        if (length < 2)
            return false;
        if (marker >= FirstFrame && marker <= LastFrame && marker != HuffmanTables && marker != ArithmeticTables) {
            if (components != 0)
                return false;
            components = fields.u8(at + 9);
            keepsCoefficients = marker > LastBaselineFrame;
            if (components < 1 || components > MaxComponents || !setSize(fields.big16(at + 7), fields.big16(at + 5)))
                return false;
        }
        if (marker == StartOfScan) {
            if (++scans > MaxScans)
                return false;
            keepsCoefficients = keepsCoefficients || scans > 1 || fields.u8(at + 4) < components;
        }
        at += 2 + length;
    }
    if (components == 0)
        return false;
    m_decodingBytes = pixels() * ColorBytes;
    if (keepsCoefficients) {
        const qint64 columns = (m_size.width() + UnitSide - 1) / UnitSide * UnitSide;
        const qint64 rows = (m_size.height() + UnitSide - 1) / UnitSide * UnitSide;
        m_decodingBytes += columns * rows * components * CoefficientBytes;
    }
    return true;
}

// The screen, then blocks up to the first picture. Both count: a decoder mends a screen that does not hold its picture.
bool PictureCheck::checkGif(const QByteArray &bytes)
{
    constexpr int ScreenAt = 6;
    constexpr int Extension = 0x21;
    constexpr int Picture = 0x2c;
    const auto colorTableSize = [](int flags) { return (flags & 0x80) != 0 ? 3 << ((flags & 7) + 1) : 0; };

    const Fields fields(bytes);
    qint64 at = ScreenAt + 7 + colorTableSize(fields.u8(ScreenAt + 4));
    while (fields.u8(at) == Extension) { // beyond the last byte there is none
        at += 2;
        while (fields.u8(at) != 0)
            at += 1 + fields.u8(at);
        ++at;
    }
    if (fields.u8(at) != Picture)
        return false;
    const qint64 right = qint64(fields.little16(at + 1)) + fields.little16(at + 5);
    const qint64 bottom = qint64(fields.little16(at + 3)) + fields.little16(at + 7);
    if (!setSize(qMax(right, qint64(fields.little16(ScreenAt))), qMax(bottom, qint64(fields.little16(ScreenAt + 2)))))
        return false;
    m_decodingBytes = pixels() * GifBytes;
    return true;
}

// A negative height is that of a picture written from the top down.
bool PictureCheck::checkBmp(const QByteArray &bytes)
{
    constexpr int InfoAt = 14;
    constexpr int OldInfoSize = 12;
    const Fields fields(bytes);
    const bool isOld = fields.little32(InfoAt) == OldInfoSize;
    const qint64 width = isOld ? fields.little16(InfoAt + 4) : qint32(fields.little32(InfoAt + 4));
    const qint64 height = isOld ? qint16(fields.little16(InfoAt + 6)) : qint32(fields.little32(InfoAt + 8));
    if (!setSize(width, qAbs(height)))
        return false;
    m_decodingBytes = pixels() * ColorBytes;
    return true;
}

bool PictureCheck::checkWebp(const QByteArray &bytes)
{
    constexpr int HeaderSize = 12;
    return Fields(bytes).hasText(8, "WEBP") && addWebpChunks(bytes.mid(HeaderSize)) && !m_size.isEmpty();
}

// Chunks of a type, a size and data. An extended file starts with its canvas, and may have several pictures as frames,
// of which the first is decoded; the data of a picture have its size once more.
bool PictureCheck::addWebpChunks(const QByteArray &bytes, QSize frame)
{
    constexpr int ChunkHeader = 8;
    constexpr int FrameHeader = 16;
    constexpr int LossyHeader = 10;
    constexpr int LosslessHeader = 5;
    constexpr int SideMask = 0x3fff;
    const Fields fields(bytes);
    const bool isFrame = !frame.isEmpty();
    const auto grow = [this](qint64 width, qint64 height) {
        return setSize(qMax(width, qint64(m_size.width())), qMax(height, qint64(m_size.height())));
    };
    for (qint64 at = 0; fields.size() - at >= ChunkHeader;) {
        const QByteArray type = bytes.mid(int(at), 4);
        const qint64 claimed = fields.little32(at + 4);
        const qint64 length = qMin(claimed, fields.size() - at - ChunkHeader);
        const qint64 data = at + ChunkHeader;
        at = data + length + (length & 1);
        if (type == "VP8X" && !isFrame) {
            if (!grow(fields.little24(data + 4) + 1, fields.little24(data + 7) + 1))
                return false;
            frame = m_size;
            m_decodingBytes += pixels() * CanvasBytes;
        } else if (type == "ANMF" && !isFrame) {
            const QSize size(fields.little24(data + 6) + 1, fields.little24(data + 9) + 1);
            return length >= FrameHeader && grow(size.width(), size.height())
                   && addWebpChunks(bytes.mid(int(data) + FrameHeader, int(length) - FrameHeader), size);
        } else if (type == "VP8 " || type == "VP8L") {
            const bool isLossy = type == "VP8 ";
            const quint32 sides = quint32(fields.little32(data + 1));
            const int width = isLossy ? fields.little16(data + 6) & SideMask : int(sides & SideMask) + 1;
            const int height = isLossy ? fields.little16(data + 8) & SideMask : int(sides >> 14 & SideMask) + 1;
            if (length < (isLossy ? LossyHeader : LosslessHeader) || !grow(width, height))
                return false;
            m_decodingBytes += pixels() * (isLossy ? LossyWebpBytes : LosslessWebpBytes);
            if (isLossy)
                continue;
            const WebpLossless stream(bytes.mid(int(data) + LosslessHeader, int(length) - LosslessHeader), width,
                                      height);
            m_steps += stream.bitsRead();
            if (!stream.isValid())
                return false;
            m_decodingBytes += stream.tableBytes();
        } else if (type == "ALPH") {
            // Transparency, packed as a lossless picture without a header, of the size of the picture behind it.
            constexpr int MethodMask = 3;
            if (length < 1 || frame.isEmpty())
                return false;
            m_decodingBytes += pixels() * LossyWebpAlphaBytes;
            if ((fields.u8(data) & MethodMask) == 0)
                continue;
            const WebpLossless stream(bytes.mid(int(data) + 1, int(length) - 1), frame.width(), frame.height());
            m_steps += stream.bitsRead();
            if (!stream.isValid())
                return false;
            m_decodingBytes += stream.tableBytes();
        }
    }
    return true;
}
