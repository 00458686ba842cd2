// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Pictures.h"

#include "Bytes.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>

#include <zlib.h>

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

QByteArray overfullPng(int excess)
{
    constexpr int PixelSize = 4;
    const QByteArray png = blackPng(1, 1, 8, false, false);
    return png.left(PngHeaderEnd) + pngChunk("IDAT", deflated(QByteArray(PixelSize + excess, '\0')))
           + pngChunk("IEND", QByteArray());
}

QByteArray endlessPng(int mebibytes)
{
    const QByteArray zeros(1 << 20, '\0');
    QByteArray packed(4 << 10, '\0');
    z_stream stream = {};
    constexpr int RawWindow = -15;
    if (deflateInit2(&stream, 9, Z_DEFLATED, RawWindow, 9, Z_DEFAULT_STRATEGY) != Z_OK)
        qFatal("could not deflate");
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(zeros.data()));
    stream.avail_in = uInt(zeros.size());
    stream.next_out = reinterpret_cast<Bytef *>(packed.data());
    stream.avail_out = uInt(packed.size());
    deflate(&stream, Z_FULL_FLUSH);
    packed.chop(int(stream.avail_out));
    deflateEnd(&stream);
    return blackPng(1, 1, 8, false, false).left(PngHeaderEnd)
           + pngChunk("IDAT", "\x78\xda" + packed.repeated(mebibytes)) + pngChunk("IEND", QByteArray());
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

QByteArray jpegSegment(int marker, const QByteArray &data)
{
    const int length = 2 + int(data.size());
    return Bytes().u8(0xff).u8(marker).u8(length >> 8).u8(length).raw(data).data();
}

QByteArray withJpegSegments(QByteArray jpeg, const QByteArray &segments)
{
    return jpeg.insert(2, segments);
}

QByteArray plainJpeg(const QByteArray &samples, const QByteArray &ids)
{
    constexpr int Side = 8;
    const auto count = int(samples.size());
    Bytes frame;
    Bytes scan;
    frame.u8(8).u8(0).u8(Side).u8(0).u8(Side).u8(count);
    scan.u8(count);
    for (const char id : ids) {
        frame.u8(id).u8(0x11).u8(0);
        scan.u8(id).u8(0);
    }
    scan.u8(0).u8(63).u8(0);
    // Each number of bits that an average may have is a code of four bits; that nothing else comes is one of a single bit.
    QByteArray averages(1, '\0');
    averages += Bytes().zeros(3).u8(12).zeros(12).data();
    for (int i = 0; i < 12; ++i)
        averages.append(char(i));
    const QByteArray others = Bytes().u8(0x10).u8(1).zeros(15).u8(0).data();
    QString bits;
    for (const char sample : samples) {
        const int average = Side * (quint8(sample) - 128);
        int size = 0;
        while (qAbs(average) >> size != 0)
            ++size;
        bits += QString::number(size, 2).rightJustified(4, QLatin1Char('0'));
        if (size > 0)
            bits += QString::number(average > 0 ? average : average + (1 << size) - 1, 2)
                        .rightJustified(size, QLatin1Char('0'));
        bits += QLatin1Char('0');
    }
    QByteArray data;
    for (; !bits.isEmpty(); bits.remove(0, 8)) {
        data.append(char(bits.left(8).leftJustified(8, QLatin1Char('1')).toInt(nullptr, 2)));
        if (data.endsWith('\xff'))
            data.append('\0');
    }
    return "\xff\xd8" + jpegSegment(0xdb, QByteArray(1, '\0') + QByteArray(64, '\1')) + jpegSegment(0xc0, frame.data())
           + jpegSegment(0xc4, averages) + jpegSegment(0xc4, others) + jpegSegment(0xda, scan.data()) + data
           + "\xff\xd9";
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

QByteArray gifOfLongCodes(int count)
{
    constexpr int Side = 16;
    constexpr int Clear = 4;
    constexpr int MaxCodes = 4096;
    BitWriter codes;
    int bits = 3;
    codes.put(Clear, bits).put(0, bits);
    // Each code is the one that is made by it: a pixel more than the one before.
    for (int code = Clear + 2; count > 0; --count) {
        codes.put(quint32(qMin(code, MaxCodes - 1)), bits);
        if (++code == 1 << bits && code < MaxCodes)
            ++bits;
    }
    Bytes bytes;
    bytes.raw("GIF89a").u16(Side).u16(Side).u8(0x80).zeros(2).zeros(6);
    bytes.u8(0x2c).zeros(4).u16(Side).u16(Side).u8(0).u8(2);
    for (int at = 0; at < codes.data().size(); at += 255) {
        const QByteArray block = codes.data().mid(at, 255);
        bytes.u8(block.size()).raw(block);
    }
    return bytes.u8(0).u8(0x3b).data();
}

QByteArray windowsIcon(const QVector<QByteArray> &pictures, QSize size)
{
    constexpr int HeaderSize = 6;
    constexpr int EntrySize = 16;
    const auto side = [](int pixels) { return pixels < 256 ? pixels : 0; };
    Bytes directory;
    directory.u16(0).u16(1).u16(pictures.size());
    QByteArray data;
    for (const QByteArray &picture : pictures) {
        directory.u8(side(size.width())).u8(side(size.height())).u16(0).u16(1).u16(32).u32(picture.size());
        directory.u32(HeaderSize + EntrySize * pictures.size() + data.size());
        data += picture;
    }
    return directory.raw(data).data();
}

QByteArray bitmapOfIcon(QSize size, int bits)
{
    constexpr int MaxPaletteBits = 8;
    const auto rowSize = [&size](int bitsOfPixel) { return (size.width() * bitsOfPixel + 31) / 32 * 4; };
    Bytes bytes;
    bytes.u32(40).u32(size.width()).u32(2 * size.height()).u16(1).u16(bits).zeros(24);
    const int colors = bits <= MaxPaletteBits ? 1 << bits : 0;
    for (int i = 0; i < colors; ++i)
        bytes.u32(i * 0x010307);
    const int pixelBytes = size.height() * rowSize(bits);
    const int maskBytes = size.height() * rowSize(1);
    QByteArray rows(pixelBytes + maskBytes, '\0');
    for (int i = 0; i < rows.size(); ++i)
        rows[i] = char(i * 7 + i / 64);
    return bytes.raw(rows).data();
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
