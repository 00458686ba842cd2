// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "Pictures.h"

#include "picture/IcoPicture.h"
#include "picture/PictureDecoder.h"
#include "picture/PngPicture.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QtTest>

#include <functional>

using namespace fixture;

Q_DECLARE_METATYPE(QImage)

namespace {

constexpr qint64 Plenty = 1 << 30;
constexpr int HeaderEndOfPng = 33;
const QByteArray packedTextStart("k\0\0", 3);

QImage decoded(const QByteArray &file)
{
    Budget budget(Plenty, Plenty);
    return PictureDecoder(budget).decoded(PictureFile(file));
}

/// Decodes the file with Qt alone, without the checks of the library.
QImage decodedByQt(QByteArray file)
{
    QBuffer buffer(&file);
    buffer.open(QIODevice::ReadOnly);
    QImage image;
    image.load(&buffer, nullptr);
    return image;
}

QByteArray written(const QImage &image, const char *format, int quality = -1, bool isProgressive = false)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setQuality(quality);
    writer.setProgressiveScanWrite(isProgressive);
    if (!writer.write(image))
        qFatal("could not write %s", format);
    return buffer.data();
}

/// A picture of many colours, opaque or transparent in part.
QImage colorful(QSize size, QImage::Format format, bool isTransparent)
{
    QImage image(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgba(x * 7, y * 5, x * y, isTransparent ? (x * 11 + y * 3) % 256 : 255));
    }
    return image.convertToFormat(format);
}

/// A frame of an animation has no canvas chunk, so this removes it.
QByteArray frameOf(const QByteArray &webp)
{
    constexpr int HeaderSize = 12;
    constexpr int CanvasChunk = 18;
    return webp.mid(HeaderSize, 4) == "VP8X" ? webp.left(HeaderSize) + webp.mid(HeaderSize + CanvasChunk) : webp;
}

QByteArray gifBlocks(int kind, const QByteArray &data)
{
    return Bytes().u8(0x21).u8(kind).u8(data.size()).raw(data).u8(0).data();
}

} // namespace

/// Tests the bytes that decoders of a picture file get, and that they decode to the same picture.
class TestPictureFile : public QObject
{
    Q_OBJECT

private slots:
    void picturesAreThoseOfQt_data();
    void picturesAreThoseOfQt();
    void whatIsBesideThePictureIsLeft_data();
    void whatIsBesideThePictureIsLeft();
    void framesHaveTheirPlace();
    void dotsAndOffsetAreKept();
    void chunksThatClaimMoreThanThereIs_data();
    void chunksThatClaimMoreThanThereIs();
    void pixelsThatBreakOff();
    void excessOfPixelsUpToTheCeiling();
    void unpackingUpToTheCeiling();
    void decodingUpToTheBudget();
    void codesThatAreNotMadeYetEndAGif();
    void sidesOfAnIconUpToTheCeiling();
    void scansOfThumbnailDoNotCount();
    void segmentsThatBreakOff();
    void nothingIsOpenedWithoutABudget();
};

void TestPictureFile::picturesAreThoseOfQt_data()
{
    QTest::addColumn<QByteArray>("file");
    const QVector<QPair<const char *, QImage::Format>> formats = {
        {"two colours", QImage::Format_Mono},  {"palette", QImage::Format_Indexed8},
        {"plain", QImage::Format_RGB32},       {"transparent", QImage::Format_ARGB32},
        {"grey", QImage::Format_Grayscale8},   {"grey of 16 bits", QImage::Format_Grayscale16},
        {"of 16 bits", QImage::Format_RGBX64}, {"transparent of 16 bits", QImage::Format_RGBA64},
    };
    for (const auto &format : formats) {
        for (const QSize size : {QSize(1, 1), QSize(41, 30)}) {
            const QImage image = colorful(size, format.second, QByteArray(format.first).startsWith("transparent"));
            const auto row = [&](const char *kind, const QByteArray &file) {
                QTest::newRow(qPrintable(QStringLiteral("%1, %2, %3 wide").arg(kind, format.first).arg(size.width())))
                    << file;
            };
            row("PNG", written(image, "png"));
            row("JPEG", written(image, "jpeg", 50));
            row("JPEG, progressive", written(image, "jpeg", 90, true));
            row("BMP", written(image, "bmp"));
            row("WebP, lossy", written(image, "webp", 50));
            row("WebP, lossless", written(image, "webp", 100));
            if (size.width() == 1)
                continue; // Qt makes an animated one opaque
            row("WebP, animated", animatedWebp(size, frameOf(written(image, "webp", 50)), size));
            row("WebP, animated and lossless", animatedWebp(size, frameOf(written(image, "webp", 100)), size));
        }
    }
    QTest::newRow("PNG, interlaced") << blackPng(33, 21, 8, true);
    QTest::newRow("PNG, interlaced, of 16 bits") << blackPng(3, 2, 16, true);
    QTest::newRow("GIF") << gif(QSize(20, 30), QSize(20, 30));
    QTest::newRow("GIF larger than its screen") << gif(QSize(2, 3), QSize(20, 30));
    QTest::newRow("GIF smaller than its screen") << gif(QSize(20, 30), QSize(7, 5));
    QTest::newRow("GIF that is transparent")
        << gif(QSize(9, 9), QSize(9, 9)).replace(QByteArray("\x21\xf9\x04\0", 4), QByteArray("\x21\xf9\x04\1", 4));
    QTest::newRow("GIF of long codes") << gifOfLongCodes(22);
    QTest::newRow("GIF of longer codes than it has pixels") << gifOfLongCodes(500);
    const QByteArray jfif = jpegSegment(0xe0, QByteArray("JFIF\0\1\1\1\0\x48\0\x48\0\0", 14));
    const auto adobe = [](int transform) {
        return jpegSegment(0xee, QByteArray("Adobe\0\x64\0\0\0\0", 11) + char(transform));
    };
    const QByteArray three("\x20\x90\xc0");
    const QByteArray four("\x20\x90\xc0\x50");
    const QByteArray numbered("\1\2\3\4");
    QTest::newRow("JPEG of grey") << plainJpeg(three.left(1), numbered.left(1));
    QTest::newRow("JPEG of three components") << plainJpeg(three, numbered.left(3));
    QTest::newRow("JPEG of JFIF") << withJpegSegments(plainJpeg(three, numbered.left(3)), jfif);
    QTest::newRow("JPEG of JFIF called RGB") << withJpegSegments(plainJpeg(three, "RGB"), jfif);
    QTest::newRow("JPEG called RGB") << plainJpeg(three, "RGB");
    QTest::newRow("JPEG of RGB by Adobe") << withJpegSegments(plainJpeg(three, numbered.left(3)), adobe(0));
    QTest::newRow("JPEG of YCC by Adobe") << withJpegSegments(plainJpeg(three, "RGB"), adobe(1));
    QTest::newRow("JPEG of CMYK") << plainJpeg(four, numbered);
    QTest::newRow("JPEG of CMYK by Adobe") << withJpegSegments(plainJpeg(four, numbered), adobe(0));
    QTest::newRow("JPEG of YCCK by Adobe") << withJpegSegments(plainJpeg(four, numbered), adobe(2));
    for (const int bits : {1, 4, 8, 24, 32}) {
        for (const QSize size : {QSize(1, 1), QSize(17, 9), QSize(256, 256)}) {
            QTest::newRow(qPrintable(QStringLiteral("ICO of %1 bits, %2 wide").arg(bits).arg(size.width())))
                << windowsIcon({bitmapOfIcon(size, bits)}, size);
        }
    }
    const QByteArray png = written(colorful(QSize(64, 64), QImage::Format_ARGB32, true), "png");
    QTest::newRow("ICO of PNG") << windowsIcon({png}, QSize(64, 64));
    QTest::newRow("ICO of PNG that is said to be smaller") << windowsIcon({png}, QSize(16, 16));
    QTest::newRow("ICO of several") << windowsIcon({bitmapOfIcon(QSize(16, 16), 32), png}, QSize(16, 16));
    QTest::newRow("ICO of several PNG") << windowsIcon({png, bitmapOfIcon(QSize(16, 16), 32)}, QSize(16, 16));
    QTest::newRow("cursor") << windowsIcon({bitmapOfIcon(QSize(16, 16), 32)}, QSize(16, 16)).replace(2, 1, "\2");
}

void TestPictureFile::picturesAreThoseOfQt()
{
    QFETCH(QByteArray, file);
    const QImage expected = decodedByQt(file);
    const QImage image = decoded(file);
    QVERIFY(!expected.isNull());
    QCOMPARE(image, expected);
    QCOMPARE(image.format(), expected.format());
    QCOMPARE(image.dotsPerMeterX(), expected.dotsPerMeterX());
}

void TestPictureFile::whatIsBesideThePictureIsLeft_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("plain");
    const QByteArray png = blackPng(9, 9);
    const auto pngRow = [&png](const char *name, const QByteArray &chunks) {
        QTest::newRow(name) << withPngChunks(png, chunks) << png;
    };
    const QByteArray much(1 << 20, 'x');
    const QByteArray packed = deflated(QByteArray(8000000, 'x'));
    pngRow("PNG of a text", pngChunk("tEXt", "k" + QByteArray(1, '\0') + much));
    pngRow("PNG of a packed text", pngChunk("zTXt", packedTextStart + packed).repeated(1000));
    pngRow("PNG of a packed text that is damaged", pngChunk("zTXt", packedTextStart + "no deflated data"));
    pngRow("PNG of an empty packed text", pngChunk("zTXt", packedTextStart));
    pngRow("PNG of a packed text in any language",
           pngChunk("iTXt", QByteArray("k\0\1\0\0\0", 6) + packed).repeated(1000));
    pngRow("PNG of a large profile", pngChunk("iCCP", packedTextStart + packed));
    pngRow("PNG of a profile that is damaged", pngChunk("iCCP", packedTextStart + "no deflated data"));
    pngRow("PNG of an empty profile", pngChunk("iCCP", QByteArray()));
    pngRow("PNG of Exif data", pngChunk("eXIf", much));
    pngRow("PNG of unknown chunks", pngChunk("abCd", much) + pngChunk("abCd", QByteArray()).repeated(1000));
    QTest::newRow("PNG with anything behind it") << png + much << png;
    QTest::newRow("PNG with a chunk between its pixels and its end")
        << png.chopped(12) + pngChunk("tEXt", much) + pngChunk("pHYs", QByteArray(9, '\1')) + png.right(12) << png;

    const QByteArray jpeg = plainJpeg("\x20\x90\xc0", "\1\2\3");
    const auto jpegRow = [&jpeg](const char *name, const QByteArray &segments) {
        QTest::newRow(name) << withJpegSegments(jpeg, segments) << jpeg;
    };
    jpegRow("JPEG of comments", jpegSegment(0xfe, "x").repeated(100000));
    for (int marker = 0xe1; marker <= 0xef; ++marker)
        jpegRow(qPrintable(QStringLiteral("JPEG of APP%1").arg(marker - 0xe0)),
                jpegSegment(marker, QByteArray("Exif\0\0", 6)).repeated(1000));
    jpegRow("JPEG of an extension of JFIF", jpegSegment(0xe0, QByteArray("JFXX\0\x10", 6)));
    QTest::newRow("JPEG with anything behind it") << jpeg + much << jpeg;
    QTest::newRow("JPEG of comments ahead of its end")
        << jpeg.chopped(2) + jpegSegment(0xfe, "x").repeated(1000) + jpeg.right(2) << jpeg;

    const QByteArray picture = gif(QSize(9, 9), QSize(9, 9));
    constexpr int ScreenEnd = 19;
    const auto gifRow = [&picture](const char *name, const QByteArray &blocks) {
        QTest::newRow(name) << QByteArray(picture).insert(ScreenEnd, blocks) << picture;
    };
    gifRow("GIF of comments", gifBlocks(0xfe, "x").repeated(1000));
    gifRow("GIF of an application", gifBlocks(0xff, "NETSCAPE2.0"));
    gifRow("GIF of a text", gifBlocks(1, QByteArray(12, 'x')));
    gifRow("GIF of a transparency that does not count", gifBlocks(0xf9, QByteArray(4, '\0')));
    QTest::newRow("GIF of many pictures") << picture + picture.mid(ScreenEnd).repeated(1000) << picture;

    const QByteArray bitstream = written(colorful(QSize(9, 9), QImage::Format_RGB32, false), "webp", 50).mid(12);
    const QByteArray canvas = Bytes().zeros(4).u16(8).u8(0).u16(8).u8(0).data();
    const QByteArray announced = Bytes().u32(0x2c).raw(canvas.mid(4)).data();
    const QByteArray extended = webp(webpChunk("VP8X", canvas) + bitstream);
    QTest::newRow("WebP of metadata") << webp(webpChunk("VP8X", announced) + webpChunk("ICCP", much) + bitstream
                                              + webpChunk("EXIF", much) + webpChunk("XMP ", much))
                                      << extended;
    QTest::newRow("WebP of unknown chunks")
        << webp(webpChunk("VP8X", canvas) + webpChunk("abcd", "x").repeated(1000) + bitstream) << extended;
    QTest::newRow("WebP with anything behind it")
        << webp(bitstream + webpChunk("abcd", much)) + much << webp(bitstream);
    const QByteArray film = animatedWebp(QSize(9, 9), webp(bitstream), QSize(9, 9));
    const int frameAt = int(film.indexOf("ANMF"));
    const int frameSize = (int(film.size()) - frameAt) / 2;
    const QByteArray first = webp(film.mid(12, frameAt - 12) + film.mid(frameAt, frameSize));
    QTest::newRow("WebP of many frames") << webp(film.mid(12) + film.mid(frameAt, frameSize).repeated(1000)) << first;
}

void TestPictureFile::whatIsBesideThePictureIsLeft()
{
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, plain);
    QCOMPARE(PictureFile(file).bytes(), PictureFile(plain).bytes());
    QVERIFY(PictureFile(plain).bytes().size() <= plain.size());
    QCOMPARE(PictureFile(file).decodingBytes(), PictureFile(plain).decodingBytes());
    QCOMPARE(decoded(file), decodedByQt(plain));
    QVERIFY(!decoded(file).isNull());
}

void TestPictureFile::framesHaveTheirPlace()
{
    // Qt does not initialize the area around the frame.
    const QImage image = colorful(QSize(9, 7), QImage::Format_RGB32, false);
    const QByteArray still = written(image, "webp", 100);
    QByteArray film = animatedWebp(QSize(20, 30), still, image.size());
    const int frameAt = int(film.indexOf("ANMF")) + 8;
    poke8(film, frameAt, 2);     // the left side, in pairs of pixels
    poke8(film, frameAt + 3, 5); // the top
    QImage expected(20, 30, QImage::Format_ARGB32);
    expected.fill(Qt::transparent);
    QPainter(&expected).drawImage(4, 10, decoded(still));
    QCOMPARE(decoded(film), expected);
    poke8(film, frameAt, 6);
    QVERIFY(!PictureFile(film).isAccepted()); // outside the canvas
    poke8(film, frameAt, 2);
    QVERIFY(PictureFile(film).isAccepted());
    constexpr int CanvasAt = 12;
    constexpr int CanvasChunk = 18;
    QVERIFY(!PictureFile(film.remove(CanvasAt, CanvasChunk)).isAccepted());
}

void TestPictureFile::dotsAndOffsetAreKept()
{
    QImage image = colorful(QSize(4, 4), QImage::Format_RGB32, false);
    image.setDotsPerMeterX(3000);
    image.setDotsPerMeterY(2000);
    image.setOffset(QPoint(5, 6));
    const QImage found = decoded(written(image, "png"));
    QCOMPARE(found.dotsPerMeterX(), 3000);
    QCOMPARE(found.dotsPerMeterY(), 2000);
    QCOMPARE(found.offset(), QPoint(5, 6));
}

void TestPictureFile::chunksThatClaimMoreThanThereIs_data()
{
    QTest::addColumn<QByteArray>("type");
    for (const char *type : {"tEXt", "zTXt", "iTXt", "iCCP", "eXIf", "sPLT", "hIST", "PLTE", "tRNS", "abCd"})
        QTest::newRow(type) << QByteArray(type);
}

void TestPictureFile::chunksThatClaimMoreThanThereIs()
{
    QFETCH(QByteArray, type);
    const QByteArray good = blackPng(2, 2);
    for (const int dataSize : {0, 1, 100}) {
        QByteArray file = good.left(HeaderEndOfPng) + pngChunk(type.constData(), QByteArray(dataSize, 'x'));
        file.chop(4);
        file.replace(HeaderEndOfPng, 4, QByteArray("\x49\x46\x46\x12"));
        // A decoder would allocate the claimed size before it reads.
        QCOMPARE(PictureFile(file).bytes(), good.left(HeaderEndOfPng));
        QVERIFY(decoded(file).isNull());
    }
    // After the end chunk, a file may contain any bytes.
    QCOMPARE(decoded(good + QByteArray("\x49\x46\x46\x12") + type).size(), QSize(2, 2));
}

void TestPictureFile::pixelsThatBreakOff()
{
    const QByteArray broken = blackPng(2, 2).left(HeaderEndOfPng + 10);
    QCOMPARE(PictureFile(broken).bytes(), broken);
    QVERIFY(decoded(broken).isNull());
}

void TestPictureFile::excessOfPixelsUpToTheCeiling()
{
    QVERIFY(!PngPicture::isOverfull(overfullPng(0)));
    QVERIFY(!PngPicture::isOverfull(overfullPng(PngPicture::MaxExcess)));
    QVERIFY(PngPicture::isOverfull(overfullPng(PngPicture::MaxExcess + 1)));
    QVERIFY(PngPicture::isOverfull(endlessPng(1)));
    // Complete rows of any size, interlaced or not, have no excess. Cut or damaged pixels have none either.
    for (const int bits : {8, 16}) {
        for (const QSize size : {QSize(1, 1), QSize(5, 3), QSize(300, 200)}) {
            QVERIFY(!PngPicture::isOverfull(blackPng(size.width(), size.height(), bits)));
            QVERIFY(!PngPicture::isOverfull(blackPng(size.width(), size.height(), bits, true)));
        }
    }
    QVERIFY(!PngPicture::isOverfull(blackPng(2, 2, 8, false, false)));
    QVERIFY(!PngPicture::isOverfull(blackPng(300, 300).chopped(30)));
}

void TestPictureFile::unpackingUpToTheCeiling()
{
    const QByteArray overfull = overfullPng(1 << 20);
    const qint64 most = PngPicture::maxUnpacked(overfull);
    QVERIFY(most >= 1 << 20);
    Budget budget(Plenty, Plenty);
    PictureDecoder decoder(budget);
    for (qint64 i = 0; i < PictureDecoder::MaxUnpacking / most; ++i)
        QVERIFY(!decoder.decoded(PictureFile(overfull)).isNull());
    const qint64 before = budget.workLeft();
    QVERIFY(decoder.decoded(PictureFile(overfull)).isNull());
    const qint64 work = before - budget.workLeft();
    // A picture is inspected while work is left for that, and decoded if work is still left then.
    const PictureFile good(blackPng(1024, 1024));
    QVERIFY(PngPicture::maxUnpacked(good.bytes()) > most);
    QVERIFY(!decoder.decoded(good).isNull());
    QVERIFY(work >= PngPicture::MaxExcess + 2 * PictureFile(overfull).decodingBytes());
    QVERIFY(budget.chargeWork(budget.workLeft() - 2 * good.decodingBytes() - PngPicture::MaxExcess + 1));
    QVERIFY(decoder.decoded(good).isNull());
}

void TestPictureFile::decodingUpToTheBudget()
{
    const PictureFile file(gif(QSize(64, 64), QSize(64, 64)));
    const qint64 each = file.decodingBytes();
    const auto isDecoded = [&file](qint64 work, qint64 bytes) {
        Budget budget(work, bytes);
        return !PictureDecoder(budget).decoded(file).isNull();
    };
    QVERIFY(isDecoded(each, each));
    QVERIFY(!isDecoded(each - 1, each));
    QVERIFY(!isDecoded(each, each - 1));
    // The budget stays charged for the picture, and gets the other bytes of decoding back.
    Budget budget(2 * each, Plenty);
    const QImage image = PictureDecoder(budget).decoded(file);
    QVERIFY(image.sizeInBytes() < each);
    QCOMPARE(budget.bytesLeft(), Plenty - image.sizeInBytes());
    QCOMPARE(budget.workLeft(), each);
    // A picture that exceeds the budget costs nothing. A picture that fails costs its work.
    Budget small(each - 1, Plenty);
    PictureDecoder(small).decoded(file);
    QCOMPARE(small.workLeft(), each - 1);
    QCOMPARE(small.bytesLeft(), Plenty);
    Budget failing(Plenty, Plenty);
    const PictureFile broken(blackPng(64, 64, 8, false, false));
    QVERIFY(PictureDecoder(failing).decoded(broken).isNull());
    QCOMPARE(failing.workLeft(), Plenty - broken.decodingBytes());
    QCOMPARE(failing.bytesLeft(), Plenty);
}

void TestPictureFile::codesThatAreNotMadeYetEndAGif()
{
    // A code of several pixels directly after the clear code.
    constexpr int CodesAt = 31;
    QByteArray damaged = gifOfLongCodes(5000);
    poke8(damaged, CodesAt, 4 | 6 << 3);
    QVERIFY(PictureFile(damaged).isAccepted());
    QCOMPARE(PictureFile(damaged).bytes().size(), CodesAt + 3);
}

void TestPictureFile::sidesOfAnIconUpToTheCeiling()
{
    constexpr int Most = IcoPicture::MaxSide;
    for (const QSize size : {QSize(Most, 1), QSize(1, Most)}) {
        QCOMPARE(decoded(windowsIcon({bitmapOfIcon(size, 32)}, size)).size(), size);
        const QSize more = size.expandedTo(QSize(2, 2)) + QSize(1, 1);
        QVERIFY(!PictureFile(windowsIcon({bitmapOfIcon(more, 32)}, more)).isAccepted());
        QVERIFY(decodedByQt(windowsIcon({bitmapOfIcon(more, 32)}, more)).isNull());
    }
}

void TestPictureFile::scansOfThumbnailDoNotCount()
{
    const QByteArray thumbnail = jpegSegment(0xe1, QByteArray("\xff\xda").repeated(1000));
    QCOMPARE(decoded(withJpegSegments(progressiveJpeg(32, 32), thumbnail)).size(), QSize(32, 32));
}

void TestPictureFile::segmentsThatBreakOff()
{
    const QByteArray start("\xff\xd8");
    for (const QByteArray &segment : {QByteArray("\xff\xe0\0\x10JFIF\0", 9),
                                      QByteArray("\xff\xee\0\x0e"
                                                 "Adobe",
                                                 9),
                                      QByteArray("\xff\xfe\0\x10x", 5), QByteArray("\xff\xe0", 2)})
        QVERIFY(!PictureFile(start + segment).isAccepted());
}

void TestPictureFile::nothingIsOpenedWithoutABudget()
{
    const QByteArray file = webpOfManyCodes(64, 100);
    const PictureFile opened(file);
    QVERIFY(opened.steps() > 1000);
    Budget budget(opened.steps() + 1, 0);
    QVERIFY(PictureFile::opened(file, &budget).isAccepted());
    QCOMPARE(budget.workLeft(), qint64(1));
    QVERIFY(PictureFile::opened(file, &budget).isAccepted());
    QCOMPARE(budget.workLeft(), qint64(0));
    QVERIFY(!PictureFile::opened(file, &budget).isAccepted());
}

QTEST_GUILESS_MAIN(TestPictureFile)
#include "tst_picturefile.moc"
