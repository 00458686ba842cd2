// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Pictures.h"

#include "Bytes.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>

namespace fixture {

namespace {

constexpr int PngHeaderEnd = 33;

QByteArray big32(qint64 value)
{
    return Bytes().u8(value >> 24).u8(value >> 16).u8(value >> 8).u8(value).data();
}

// A prefix code of the symbol 0 alone.
void putCodeOfOne(BitWriter &bits)
{
    bits.put(1, 1).put(0, 3);
}

// A prefix code of the symbols up to 255, each of which has 8 bits.
void putCodeOfBytes(BitWriter &bits)
{
    constexpr int LengthsBeforeEight = 11;
    bits.put(0, 1).put(LengthsBeforeEight + 1 - 4, 4);
    for (int i = 0; i < LengthsBeforeEight; ++i)
        bits.put(0, 3);
    bits.put(1, 3);
    bits.put(1, 1).put(3, 3).put(256 - 2, 8);
}

} // namespace

BitWriter &BitWriter::put(quint32 value, int count)
{
    for (int i = 0; i < count; ++i, ++m_count) {
        if (m_count % 8 == 0)
            m_data.append('\0');
        m_data[m_count / 8] = char(quint8(m_data.at(m_count / 8)) | ((value >> i) & 1) << (m_count % 8));
    }
    return *this;
}

QByteArray pngChunk(const char *type, const QByteArray &data)
{
    const QByteArray checked = type + data;
    quint32 crc = 0xffffffff;
    for (const char byte : checked) {
        crc ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xedb88320 : 0);
    }
    return big32(data.size()) + checked + big32(~crc);
}

QByteArray deflated(const QByteArray &data)
{
    return qCompress(data, 9).mid(4);
}

QByteArray withPngChunks(QByteArray png, const QByteArray &chunks)
{
    return png.insert(PngHeaderEnd, chunks);
}

QByteArray blackPng(int width, int height, int bits, bool isInterlaced, bool hasPixels)
{
    constexpr int TrueColor = 2;
    const QByteArray header = big32(width) + big32(height) + Bytes().u8(bits).u8(TrueColor).zeros(2).data();
    QByteArray pixels;
    if (hasPixels) {
        // A filter byte for each row; the passes of an interlaced picture have fewer than twice the rows.
        const int rows = isInterlaced ? 2 * height + 8 : height;
        pixels = deflated(QByteArray(width * height * 3 * bits / 8 + rows, '\0'));
    }
    return "\x89PNG\r\n\x1a\n" + pngChunk("IHDR", header + char(isInterlaced ? 1 : 0)) + pngChunk("IDAT", pixels)
           + pngChunk("IEND", QByteArray());
}

QByteArray progressiveJpeg(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(0x336699);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "jpeg");
    writer.setProgressiveScanWrite(true);
    writer.setQuality(100); // no component has fewer samples than another
    if (!writer.write(image))
        qFatal("could not write a progressive JPEG");
    return buffer.data();
}

QByteArray withScans(const QByteArray &jpeg, int count)
{
    const QByteArray marker("\xff\xda");
    const int last = int(jpeg.lastIndexOf(marker));
    const QByteArray scan = jpeg.mid(last).chopped(2);
    return jpeg.chopped(2) + scan.repeated(count - jpeg.count(marker)) + "\xff\xd9";
}

QByteArray gif(QSize screen, QSize frame, int disposal)
{
    constexpr int Clear = 4;
    constexpr int End = 5;
    BitWriter codes;
    // The codes stay at 3 bits when the table is cleared after each two.
    for (int i = 0; i < frame.width() * frame.height(); ++i) {
        if (i % 2 == 0)
            codes.put(Clear, 3);
        codes.put(0, 3);
    }
    codes.put(End, 3);
    Bytes bytes;
    bytes.raw("GIF89a").u16(screen.width()).u16(screen.height()).u8(0x80).zeros(2).zeros(6);
    bytes.u8(0x21).u8(0xf9).u8(4).u8(disposal << 2).zeros(4);
    bytes.u8(0x2c).zeros(4).u16(frame.width()).u16(frame.height()).u8(0).u8(2);
    for (int at = 0; at < codes.data().size(); at += 255) {
        const QByteArray block = codes.data().mid(at, 255);
        bytes.u8(block.size()).raw(block);
    }
    return bytes.u8(0).u8(0x3b).data();
}

QByteArray webpChunk(const char *type, const QByteArray &data)
{
    return Bytes().raw(type).u32(data.size()).raw(data).zeros(data.size() & 1).data();
}

QByteArray webp(const QByteArray &chunks)
{
    return Bytes().raw("RIFF").u32(chunks.size() + 4).raw("WEBP").raw(chunks).data();
}

QByteArray animatedWebp(QSize canvas, const QByteArray &frame, QSize size)
{
    constexpr int IsAnimation = 2;
    const auto u24 = [](int value) { return Bytes().u16(value).u8(value >> 16).data(); };
    const QByteArray extended = Bytes().u32(IsAnimation).data() + u24(canvas.width() - 1) + u24(canvas.height() - 1);
    const QByteArray shown = webpChunk("ANMF", u24(0) + u24(0) + u24(size.width() - 1) + u24(size.height() - 1)
                                                   + u24(100) + '\0' + frame.mid(12));
    return webp(webpChunk("VP8X", extended) + webpChunk("ANIM", Bytes().zeros(6).data()) + shown + shown);
}

QByteArray webpOfManyCodes(int side, int groups)
{
    BitWriter bits;
    bits.put(0x2f, 8).put(quint32(side) - 1, 14).put(quint32(side) - 1, 14).put(0, 4);
    bits.put(0, 2).put(1, 1).put(0, 3); // no transforms, no cache; an entropy image of blocks of 4 x 4
    bits.put(0, 1);
    putCodeOfBytes(bits);
    putCodeOfBytes(bits);
    for (int i = 0; i < 3; ++i)
        putCodeOfOne(bits);
    const auto reversed = [](int value) {
        quint32 result = 0;
        for (int bit = 0; bit < 8; ++bit)
            result |= ((quint32(value) >> bit) & 1) << (7 - bit);
        return result;
    };
    for (int i = 0; i < (side / 4) * (side / 4); ++i) {
        const int group = i % groups;
        bits.put(reversed(group & 0xff), 8).put(reversed(group >> 8), 8);
    }
    for (int i = 0; i < groups * 5; ++i)
        putCodeOfOne(bits);
    return webp(webpChunk("VP8L", bits.put(0, 16).data()));
}

QByteArray webpOfOneCode(int side)
{
    BitWriter bits;
    bits.put(0x2f, 8).put(quint32(side) - 1, 14).put(quint32(side) - 1, 14).put(0, 4);
    const auto putPlain = [&bits] {
        bits.put(0, 1);
        for (int i = 0; i < 5; ++i)
            putCodeOfOne(bits);
    };
    for (const quint32 transform : {0U, 1U}) {
        bits.put(1, 1).put(transform, 2).put(0, 3);
        putPlain();
    }
    bits.put(0, 2).put(1, 1).put(0, 3);
    putPlain();
    for (int i = 0; i < 5; ++i)
        putCodeOfOne(bits);
    return webp(webpChunk("VP8L", bits.put(0, 16).data()));
}

QByteArray withNames(const QByteArray &archive, const QStringList &names)
{
    constexpr int EntryHeader = 46;
    constexpr int EndSize = 22;
    const int entryAt = int(archive.lastIndexOf(QByteArray("PK\x01\x02")));
    const int endAt = int(archive.size()) - EndSize;
    const QByteArray entry = archive.mid(entryAt, endAt - entryAt);
    QByteArray entries;
    for (const QString &name : names) {
        if (name.size() != peek16(entry, 28))
            qFatal("a name of another length");
        entries += QByteArray(entry).replace(EntryHeader, name.size(), name.toLatin1());
    }
    QByteArray end = archive.mid(endAt);
    for (const int at : {8, 10})
        poke16(end, at, peek16(end, at) + names.size());
    poke32(end, 12, qint64(peek32(end, 12)) + entries.size());
    return archive.left(endAt) + entries + end;
}

} // namespace fixture
