// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "ApkFile.h"
#include "Bounds.h"
#include "Bytes.h"
#include "LogCapture.h"
#include "Pictures.h"
#include "Walker.h"
#include "launchers/ArchiveImages.h"
#include "launchers/LauncherFinder.h"
#include "picture/JpegPicture.h"
#include "picture/PictureFile.h"
#include "picture/PictureStripper.h"

#include <QImageWriter>
#include <QtTest>

#include <quazip/quazip.h>

#include <algorithm>
#include <functional>
#include <memory>

using namespace fixture;

/*
 * Icon files, valid ones and ones made to do harm, within the bounds for any input. A single picture may use the whole
 * budget of decoding.
 */

namespace {

constexpr qint64 MiB = 1 << 20;
// The largest picture uses the whole budget of decoding. Opening a package takes 1 to 3 MiB without pictures.
constexpr qint64 FixedMemory = PictureDecoder::MaxBytes + 4 * MiB;

QString memberName(int number)
{
    return QStringLiteral("icon%1").arg(number, 5, 10, QLatin1Char('0'));
}

QByteArray makeLaunchersWithIcons(int count)
{
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest")).start(QStringLiteral("application"));
    for (int i = 0; i < count; ++i) {
        builder.start(QStringLiteral("activity"), {androidText(QStringLiteral("icon"), memberName(i))})
            .launcherFilter()
            .end(QStringLiteral("activity"));
    }
    return builder.end(QStringLiteral("application")).end(QStringLiteral("manifest")).build();
}

QByteArray launchersWithIcons(int count)
{
    static QMap<int, QByteArray> manifests;
    QByteArray &manifest = manifests[count];
    if (manifest.isNull())
        manifest = makeLaunchersWithIcons(count);
    return manifest;
}

/// A package whose launchers have these icons.
QByteArray packageOf(const QVector<QByteArray> &files)
{
    QVector<Member> members;
    for (const QByteArray &file : files)
        members.append({memberName(int(members.size())), file});
    return package(emptyTable(), launchersWithIcons(int(files.size())), members);
}

/// A package of launchers with @p count icons of different names, which all lead to the one file @p file.
QByteArray packageOfOne(const QByteArray &file, int count)
{
    const QByteArray archive = package(emptyTable(), launchersWithIcons(count), {{memberName(0), file}});
    QStringList names;
    for (int i = 1; i < count; ++i)
        names.append(memberName(i));
    return withNames(archive, names);
}

/// A package of launchers with @p count icons of different names, which are all @p size deflated bytes without content.
QByteArray packageOfNothing(int size, int count)
{
    QStringList names;
    for (int i = 1; i < count; ++i)
        names.append(memberName(i));
    const QByteArray manifest = deflatedBehindEmptyBlocks(0, launchersWithIcons(count));
    const QByteArray archive =
        zipOfDeflated({{QStringLiteral("AndroidManifest.xml"), manifest},
                       {QStringLiteral("resources.arsc"), deflatedBehindEmptyBlocks(0, emptyTable())},
                       {memberName(0), deflatedBehindEmptyBlocks(size)}},
                      16 * MiB);
    return withNames(archive, names);
}

/// A package of a launcher whose icon is deflated data, and whose members claim to deliver @p size bytes.
QByteArray packageOfDeflated(const QByteArray &icon, qint64 size)
{
    return zipOfDeflated({{QStringLiteral("AndroidManifest.xml"), deflatedBehindEmptyBlocks(0, launchersWithIcons(1))},
                          {QStringLiteral("resources.arsc"), deflatedBehindEmptyBlocks(0, emptyTable())},
                          {memberName(0), icon}},
                         size);
}

/// The size of the first icon of each launcher, invalid for a launcher without icons.
QVector<QSize> iconSizes(const QByteArray &bytes)
{
    PackageDevice device(bytes);
    ApkFile apk(&device);
    QVector<QSize> sizes;
    for (const ApkLauncherInfo &launcher : apk.getLauncherInfo(false))
        sizes.append(launcher.icons().isEmpty() ? QSize() : launcher.icons().constFirst().size());
    return sizes;
}

/// The sizes of the pictures in an archive of @p files, decoded one after another within @p budget.
QVector<QSize> sizesWithin(Budget budget, const QVector<QByteArray> &files)
{
    QVector<Member> members;
    for (const QByteArray &file : files)
        members.append({memberName(int(members.size())), file});
    QByteArray bytes = zip(members);
    QBuffer buffer(&bytes);
    QuaZip archive(&buffer);
    if (!archive.open(QuaZip::mdUnzip))
        qFatal("no archive");
    ArchiveImages images(&archive, budget);
    QVector<QSize> sizes;
    for (int i = 0; i < files.size(); ++i) {
        const QImage image = images.image(memberName(i));
        sizes.append(image.isNull() ? QSize() : image.size());
    }
    return sizes;
}

QSize decodedSize(const QByteArray &file)
{
    return iconSizes(packageOf({file})).value(0);
}

QByteArray webpPicture(int width, int height, int quality, bool isTransparent = false)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(isTransparent ? 0x80336699 : 0xff336699);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "WEBP", quality))
        qFatal("could not write a WebP picture");
    return buffer.data();
}

// Each zTXt chunk unpacks to 8,000,000 bytes, the maximum that libpng accepts.
QByteArray textBomb(const char *type, const QByteArray &start, int chunks)
{
    static const QByteArray text = deflated(QByteArray(8000000, 'x'));
    return withPngChunks(blackPng(16, 16), pngChunk(type, start + text).repeated(chunks));
}

const QByteArray packedTextStart("k\0\0", 3);
const QByteArray packedInternationalStart("k\0\1\0\0\0", 6);

QByteArray bmpOf(qint64 width, qint64 height, int bitCount, qint64 colors = 0)
{
    return Bytes()
        .raw("BM")
        .zeros(8)
        .u32(54)
        .u32(40)
        .u32(width)
        .u32(height)
        .u16(1)
        .u16(bitCount)
        .zeros(16)
        .u32(colors)
        .u32(0)
        .zeros(64)
        .data();
}

} // namespace

class TestPictures : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void formats_data();
    void formats();
    void otherFormatsAreLeftOut_data();
    void otherFormatsAreLeftOut();
    void firstPictureOfAnimation();

    void decodingUpToTheCeiling_data();
    void decodingUpToTheCeiling();
    void scansUpToTheCeiling();
    void oldBitmaps();
    void prefixCodesAreCounted();
    void losslessPicturesOfManyKinds_data();
    void losslessPicturesOfManyKinds();
    void everyPrefixIsChecked_data();
    void everyPrefixIsChecked();

    void filesUpToTheCeiling();
    void readingHasABudget();
    void packedBytesThatDeliverNothingTakeOfTheBudget();
    void decodingHasABudget();
    void failedDecodingTakesOfTheBudget();
    void membersHaveABudget();
    void failuresAreRemembered();

    void sizesThatDisagree_data();
    void sizesThatDisagree();
    void boundsHold_data();
    void boundsHold();
};

void TestPictures::initTestCase()
{
    // Decoders are loaded at first use and stay loaded, so no file is charged for their libraries.
    for (const QByteArray &file : {blackPng(2, 2), picture(2, 2, 0, "JPG"), gif(QSize(2, 2), QSize(2, 2)),
                                   picture(2, 2, 0, "WEBP"), picture(2, 2, 0, "BMP")})
        QCOMPARE(decodedSize(file), QSize(2, 2));
}

void TestPictures::formats_data()
{
    using Make = std::function<QByteArray(int, int)>;
    const auto written = [](const char *format) {
        return [format](int width, int height) { return picture(width, height, 0x336699, format); };
    };
    const QVector<QPair<const char *, Make>> kinds = {
        {"PNG", written("PNG")},
        {"PNG of 16 bits", [](int w, int h) { return blackPng(w, h, 16); }},
        {"PNG, interlaced", [](int w, int h) { return blackPng(w, h, 8, true); }},
        {"JPEG", written("JPG")},
        {"JPEG, progressive", [](int w, int h) { return progressiveJpeg(w, h); }},
        {"GIF", [](int w, int h) { return gif(QSize(w, h), QSize(w, h)); }},
        {"WebP, lossy", [](int w, int h) { return webpPicture(w, h, 50); }},
        {"WebP, lossy and transparent", [](int w, int h) { return webpPicture(w, h, 50, true); }},
        {"WebP, lossless", [](int w, int h) { return webpPicture(w, h, 100, true); }},
        {"WebP, animated", [](int w, int h) { return animatedWebp(QSize(w, h), webpPicture(w, h, 50), QSize(w, h)); }},
        {"BMP", written("BMP")},
        {"ICO of PNG", [](int w, int h) { return windowsIcon({blackPng(w, h)}, QSize(w, h)); }},
    };
    constexpr int Most = PictureStripper::MaxSide;
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QSize>("size");
    for (const auto &kind : kinds) {
        const auto row = [&kind](const char *what, QSize size, QSize expected) {
            const QByteArray name = QByteArray(kind.first) + ", " + what;
            QTest::newRow(name.constData()) << kind.second(size.width(), size.height()) << expected;
        };
        row("small", QSize(48, 48), QSize(48, 48));
        row("as wide as may be", QSize(Most, 2), QSize(Most, 2));
        row("wider", QSize(Most + 1, 2), QSize());
        row("as high as may be", QSize(2, Most), QSize(2, Most));
        row("higher", QSize(2, Most + 1), QSize());
    }
}

void TestPictures::formats()
{
    QFETCH(QByteArray, file);
    QFETCH(QSize, size);
    QVERIFY(size.isValid() == PictureFile(file).isAccepted());
    QCOMPARE(decodedSize(file), size);
}

void TestPictures::otherFormatsAreLeftOut_data()
{
    QTest::addColumn<QByteArray>("file");
    for (const char *format : {"ICNS", "TIFF", "PPM", "XPM", "XBM", "TGA", "WBMP"}) {
        const QList<QByteArray> known = QImageWriter::supportedImageFormats();
        if (known.contains(QByteArray(format).toLower()))
            QTest::newRow(format) << picture(32, 32, 0, format);
    }
    QTest::newRow("SVG") << QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>");
    QTest::newRow("PDF") << QByteArray("%PDF-1.4\n");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("PNG behind other bytes") << ' ' + blackPng(2, 2);
}

void TestPictures::otherFormatsAreLeftOut()
{
    QFETCH(QByteArray, file);
    QVERIFY(!PictureFile(file).isAccepted());
    QCOMPARE(decodedSize(file), QSize());
}

void TestPictures::firstPictureOfAnimation()
{
    const QByteArray file = animatedWebp(QSize(40, 30), webpPicture(20, 10, 100), QSize(20, 10));
    QCOMPARE(decodedSize(file), QSize(40, 30));
    QCOMPARE(PictureFile(file).size(), QSize(40, 30));
}

void TestPictures::decodingUpToTheCeiling_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<bool>("isDecoded");
    QTest::newRow("PNG") << blackPng(4096, 4096) << true;
    QTest::newRow("PNG of 16 bits") << blackPng(4096, 2048, 16) << true;
    QTest::newRow("PNG of 16 bits, more") << blackPng(4096, 2049, 16) << false;
    QTest::newRow("JPEG") << picture(4096, 4096, 0, "JPG") << true;
    QTest::newRow("JPEG, progressive") << progressiveJpeg(4096, 1632) << true;
    QTest::newRow("JPEG, progressive, more") << progressiveJpeg(4096, 1664) << false;
    QTest::newRow("GIF") << gif(QSize(4096, 2048), QSize(4096, 2048)) << true;
    QTest::newRow("GIF, more") << gif(QSize(4096, 2049), QSize(4096, 2049)) << false;
    QTest::newRow("WebP, lossless") << webpPicture(4096, 1800, 100) << true;
    QTest::newRow("WebP, lossless, more") << webpPicture(4096, 1900, 100) << false;
}

void TestPictures::decodingUpToTheCeiling()
{
    QFETCH(QByteArray, file);
    QFETCH(bool, isDecoded);
    QVERIFY(PictureFile(file).isAccepted());
    QCOMPARE(PictureFile(file).decodingBytes() <= PictureDecoder::MaxBytes, isDecoded);
    QCOMPARE(decodedSize(file).isValid(), isDecoded);
}

void TestPictures::scansUpToTheCeiling()
{
    const QByteArray jpeg = progressiveJpeg(32, 32);
    QCOMPARE(decodedSize(withScans(jpeg, JpegPicture::MaxScans)), QSize(32, 32));
    QCOMPARE(decodedSize(withScans(jpeg, JpegPicture::MaxScans + 1)), QSize());
}

void TestPictures::oldBitmaps()
{
    // OS/2 bitmaps have sides of 16 bits.
    const auto bitmap = [](int width, int height) {
        const QByteArray info = Bytes().u32(12).u16(width).u16(height).u16(1).u16(24).data();
        const QByteArray rows(((3 * width + 3) & ~3) * height, '\0');
        return "BM" + Bytes().u32(26 + rows.size()).u32(0).u32(26).raw(info).raw(rows).data();
    };
    QCOMPARE(decodedSize(bitmap(3, 5)), QSize(3, 5));
    QCOMPARE(decodedSize(bitmap(PictureStripper::MaxSide + 1, 1)), QSize());
}

void TestPictures::prefixCodesAreCounted()
{
    const PictureFile few(webpOfManyCodes(512, 1));
    const PictureFile many(webpOfManyCodes(512, 1000));
    QVERIFY(few.isAccepted());
    QCOMPARE(decodedSize(webpOfManyCodes(512, 1000)), QSize(512, 512));
    // Each group has five codes, and each code a table of at least 256 entries.
    QVERIFY(many.decodingBytes() - few.decodingBytes() >= qint64(999) * 5 * 256 * 4);
    QCOMPARE(decodedSize(webpOfManyCodes(512, 16384)), QSize());
    QVERIFY(PictureFile(webpOfManyCodes(512, 16384)).decodingBytes() > PictureDecoder::MaxBytes);
}

void TestPictures::losslessPicturesOfManyKinds_data()
{
    // The colour of the pixel at x, y. The kinds make the encoder use different transforms, a cache, or several groups.
    using Pixel = std::function<QRgb(int, int)>;
    const auto noise = [](int x, int y) { return quint32(quint64(x * 7919 + y * 104729) * 2654435761U); };
    const QVector<QPair<const char *, Pixel>> kinds = {
        {"two colours", [](int x, int y) { return (x / 7 + y / 5) % 2 != 0 ? 0xff102030 : 0xff808080; }},
        {"four colours", [noise](int x, int y) { return 0xff000000 + noise(x, y) % 4 * 0x304050; }},
        {"sixteen colours", [noise](int x, int y) { return 0xff000000 + noise(x, y) % 16 * 0x0a0b0c; }},
        {"two hundred colours", [noise](int x, int y) { return 0xff000000 + noise(x, y) % 200 * 0x010203; }},
        {"gradient", [](int x, int y) { return qRgb(x % 256, y % 256, (x + y) / 2 % 256); }},
        {"transparency", [](int x, int y) { return qRgba(x % 256, y % 256, 90, (x * y) % 256); }},
        {"noise", [noise](int x, int y) { return noise(x, y) | 0xff000000; }},
        {"quarters",
         [noise](int x, int y) {
             if (x < 256)
                 return y < 256 ? noise(x, y) | 0xff000000 : qRgb(x, y / 2, 0);
             return y < 256 ? qRgb(0, 255 - y, int(noise(x, y) % 9)) : 0xff00ff00 + noise(x, y) % 3;
         }},
    };
    QTest::addColumn<QImage>("image");
    for (const auto &kind : kinds) {
        QImage image(512, 512, QImage::Format_ARGB32);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                image.setPixel(x, y, kind.second(x, y));
        }
        QTest::newRow(kind.first) << image;
    }
}

void TestPictures::losslessPicturesOfManyKinds()
{
    QFETCH(QImage, image);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QVERIFY(image.save(&buffer, "WEBP", 100));
    const PictureFile check(buffer.data());
    QVERIFY(check.isAccepted());
    // A very large icon needs only a fraction of the budget.
    QVERIFY2(check.decodingBytes() <= PictureDecoder::MaxBytes / 4, qPrintable(QString::number(check.decodingBytes())));
    QCOMPARE(decodedSize(buffer.data()), image.size());
}

void TestPictures::everyPrefixIsChecked_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("PNG") << textBomb("iTXt", packedInternationalStart, 0);
    QTest::newRow("PNG with texts") << withPngChunks(
        blackPng(9, 9), pngChunk("iTXt", packedInternationalStart + deflated("text")) + pngChunk("tEXt", "k"));
    QTest::newRow("JPEG") << progressiveJpeg(16, 16);
    QTest::newRow("GIF") << gif(QSize(16, 16), QSize(16, 16));
    QTest::newRow("BMP") << picture(4, 4, 0, "BMP");
    QTest::newRow("WebP, lossy") << webpPicture(16, 16, 50, true);
    QTest::newRow("WebP, lossless") << webpPicture(16, 16, 100, true);
    QTest::newRow("WebP, animated") << animatedWebp(QSize(16, 16), webpPicture(16, 16, 100), QSize(16, 16));
    QTest::newRow("WebP of codes") << webpOfManyCodes(32, 64);
}

void TestPictures::everyPrefixIsChecked()
{
    QFETCH(QByteArray, file);
    const LogCapture log;
    const qint64 whole = PictureFile(file).decodingBytes();
    QVERIFY(whole > 0);
    for (int size = 0; size < file.size(); ++size) {
        // The block has exactly this size, so that a read beyond its end is reported.
        const std::unique_ptr<char[]> block(new char[size_t(size)]);
        std::copy_n(file.constData(), size, block.get());
        const PictureFile check(QByteArray::fromRawData(block.get(), size));
        QVERIFY(check.decodingBytes() <= whole);
    }
    // A changed byte is harmless as well.
    for (int at = 0; at < file.size(); ++at) {
        for (const int value : {0x00, 0x7f, 0xff}) {
            QByteArray damaged = file;
            poke8(damaged, at, value);
            const PictureFile check(damaged);
            QVERIFY(!check.isAccepted()
                    || qMax(check.size().width(), check.size().height()) <= PictureStripper::MaxSide);
        }
    }
}

void TestPictures::filesUpToTheCeiling()
{
    const auto ofSize = [](qint64 size) {
        const QByteArray png = blackPng(5, 5);
        return png + QByteArray(int(size) - png.size(), '\0');
    };
    QCOMPARE(decodedSize(ofSize(PictureFile::MaxBytes)), QSize(5, 5));
    QCOMPARE(decodedSize(ofSize(PictureFile::MaxBytes + 1)), QSize());
}

void TestPictures::readingHasABudget()
{
    // Files that are no pictures cost work, too.
    const QByteArray png = blackPng(5, 5) + QByteArray(4000, '\0');
    const QVector<QByteArray> files{QByteArray(int(MiB), '\0'), png};
    const qint64 work = 2 * ArchiveImages::MemberWork + MiB + png.size() + PictureFile(png).decodingBytes();
    QCOMPARE(sizesWithin(Budget(work, MiB), files), QVector<QSize>({QSize(), QSize(5, 5)}));
    QCOMPARE(sizesWithin(Budget(work - 1, MiB), files), QVector<QSize>({QSize(), QSize()}));
    // A file that turns out to be too long has used up the rest of the budget.
    QCOMPARE(sizesWithin(Budget(work, MiB), {files.at(0), QByteArray(int(MiB), '\0'), png}),
             QVector<QSize>({QSize(), QSize(), QSize()}));
}

// A small archive can list one member under thousands of names.
void TestPictures::packedBytesThatDeliverNothingTakeOfTheBudget()
{
    constexpr int Names = 1000;
    constexpr int Size = 1 << 18;
    constexpr qint64 Work = 64 * MiB;
    constexpr qint64 MostPacked = Work / Budget::PackedByteWork;
    QStringList names;
    for (int i = 1; i < Names; ++i)
        names.append(memberName(i));
    QByteArray bytes = withNames(zipOfDeflated({{memberName(0), deflatedBehindEmptyBlocks(Size)}}, 1000), names);
    PackageDevice device(bytes);
    QuaZip archive(&device);
    QVERIFY(archive.open(QuaZip::mdUnzip));
    Budget budget(Work, MiB);
    ArchiveImages images(&archive, budget);
    qint64 bytesRead = device.bytesRead();
    for (int i = 0; i < Names; ++i)
        QVERIFY(images.image(memberName(i)).isNull());
    bytesRead = device.bytesRead() - bytesRead;
    // In addition, the directory is read for each name.
    QVERIFY2(bytesRead < MostPacked + Names * 1024, qPrintable(QString::number(bytesRead)));
    QVERIFY(bytesRead > MostPacked - Size);
}

void TestPictures::decodingHasABudget()
{
    const QByteArray half = blackPng(4096, 2048);
    const QByteArray less = blackPng(4096, 2047);
    const QByteArray small = blackPng(64, 64);
    const QSize size(4096, 2048);
    // The class names take some of the last MiB.
    const QByteArray rest = blackPng(512, 512);
    QCOMPARE(LauncherFinder::MaxBytes, 65 * MiB);
    QCOMPARE(PictureFile(rest).decodingBytes(), MiB);
    QCOMPARE(iconSizes(packageOf({half, half, rest, small})), QVector<QSize>({size, size, QSize(), QSize(64, 64)}));
    // A picture that exceeds the budget costs nothing, so the next ones still fit.
    QCOMPARE(iconSizes(packageOf({half, less, half, rest})),
             QVector<QSize>({size, QSize(4096, 2047), QSize(), QSize(512, 512)}));
}

void TestPictures::failedDecodingTakesOfTheBudget()
{
    const QByteArray broken = blackPng(4096, 4096, 8, false, false);
    const QByteArray half = blackPng(4096, 2048);
    const QSize size(4096, 2048);
    QCOMPARE(LauncherFinder::MaxWork, 128 * MiB);
    QCOMPARE(iconSizes(packageOf({broken, half, half, blackPng(64, 64)})),
             QVector<QSize>({QSize(), size, QSize(), QSize(64, 64)}));
}

void TestPictures::membersHaveABudget()
{
    const QByteArray png = blackPng(2, 2);
    QByteArray bytes = zip({{QStringLiteral("good"), png}}, Compression::Stored);
    QBuffer buffer(&bytes);
    QuaZip archive(&buffer);
    QVERIFY(archive.open(QuaZip::mdUnzip));
    const auto isFoundAfter = [&](int missing) {
        Budget budget(100 * ArchiveImages::MemberWork + png.size() + PictureFile(png).decodingBytes(), MiB);
        ArchiveImages images(&archive, budget);
        for (int i = 0; i < missing; ++i)
            images.image(QString::number(i));
        return !images.image(QStringLiteral("good")).isNull();
    };
    QVERIFY(isFoundAfter(99));
    QVERIFY(!isFoundAfter(100));
}

void TestPictures::failuresAreRemembered()
{
    QByteArray bytes = zip({{QStringLiteral("bad"), QByteArray(int(PictureFile::MaxBytes), '\0')},
                            {QStringLiteral("good"), blackPng(2, 2)}});
    QBuffer buffer(&bytes);
    QuaZip archive(&buffer);
    QVERIFY(archive.open(QuaZip::mdUnzip));
    Budget budget(2 * PictureFile::MaxBytes, MiB);
    ArchiveImages images(&archive, budget);
    for (int i = 0; i < 10; ++i)
        QVERIFY(images.image(QStringLiteral("bad")).isNull());
    // A second read would have used up the budget.
    QCOMPARE(images.image(QStringLiteral("good")).size(), QSize(2, 2));
}

void TestPictures::sizesThatDisagree_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<bool>("isAccepted");
    QTest::newRow("GIF without a screen") << gif(QSize(0, 0), QSize(8, 8)) << true;
    QTest::newRow("GIF larger than its screen") << gif(QSize(2, 2), QSize(8, 8)) << true;
    QTest::newRow("GIF much larger than its screen") << gif(QSize(2, 2), QSize(5000, 2)) << false;
    QTest::newRow("GIF with a wide screen") << gif(QSize(65535, 1), QSize(2, 1)) << false;
    QTest::newRow("GIF without pixels") << gif(QSize(0, 0), QSize(0, 0)) << false;
    QTest::newRow("BMP from the top down") << bmpOf(4, -4, 32) << true;
    QTest::newRow("BMP of a huge height") << bmpOf(4, 0x7fffffff, 32) << false;
    QTest::newRow("BMP of a huge negative height") << bmpOf(4, -0x7fffffff - 1LL, 32) << false;
    QTest::newRow("BMP of a negative width") << bmpOf(-4, 4, 32) << false;
    QTest::newRow("BMP of a huge palette") << bmpOf(4, 4, 8, 0x7fffffff) << true;
    QTest::newRow("WebP whose frame is larger than its canvas")
        << animatedWebp(QSize(4, 4), webpPicture(64, 64, 100), QSize(64, 64)) << false;
    QTest::newRow("WebP whose frame is larger than it says")
        << animatedWebp(QSize(4, 4), webpPicture(4096, 4096, 100), QSize(4, 4)) << true;
    QTest::newRow("WebP of a large canvas")
        << animatedWebp(QSize(16383, 16383), webpPicture(4, 4, 100), QSize(4, 4)) << false;
    QTest::newRow("WebP without a picture") << webp(webpChunk("EXIF", "x")) << false;
    QTest::newRow("PNG without pixels") << blackPng(4096, 4096, 8, false, false) << true;
    QTest::newRow("PNG of no width") << blackPng(0, 5) << false;
    QTest::newRow("PNG of 45000 x 45000") << blackPng(45000, 45000, 8, false, false) << false;
    QTest::newRow("PNG of 2 billion rows") << blackPng(1, 0x7fffffff, 8, false, false) << false;
}

void TestPictures::sizesThatDisagree()
{
    QFETCH(QByteArray, file);
    QFETCH(bool, isAccepted);
    QCOMPARE(PictureFile(file).isAccepted(), isAccepted);
    // Accepted or not, a decoded picture is no larger than the stated size.
    const QSize size = decodedSize(file);
    const QSize largest = PictureFile(file).size();
    QVERIFY(isAccepted || size.isEmpty());
    QVERIFY(size.isEmpty() || (size.width() <= largest.width() && size.height() <= largest.height()));
}

void TestPictures::boundsHold_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<qint64>("readBytes");
    const auto row = [](const char *name, const QByteArray &file) {
        QTest::newRow(name) << packageOf({file}) << qint64(file.size());
    };
    // Each file is released before the next one is read.
    const auto rowOfMany = [](const char *name, const QByteArray &file, int count) {
        QTest::newRow(name) << packageOfOne(file, count) << qMin(qint64(file.size()) * count, PictureFile::MaxBytes);
    };
    row("PNG as large as may be", blackPng(4096, 4096));
    row("PNG of a text that claims a gigabyte", blackPng(2, 2).left(33) + QByteArray("\x49\x46\x46\x12tEXt") + "k");
    row("PNG of 16 bits as large as may be", blackPng(4096, 2048, 16));
    row("PNG, interlaced", blackPng(4096, 4096, 8, true));
    row("JPEG", picture(4096, 4096, 0, "JPG"));
    row("JPEG, progressive", progressiveJpeg(4096, 1632));
    row("JPEG of many scans", withScans(progressiveJpeg(4096, 1632), JpegPicture::MaxScans));
    row("JPEG of too many scans", withScans(progressiveJpeg(4096, 4096), 500));
    row("JPEG whose Exif directory leads back to itself", picture(16, 16, 0, "JPG")
                                                              .insert(2, Bytes()
                                                                             .raw("\xff\xe1")
                                                                             .u8(0)
                                                                             .u8(22)
                                                                             .raw("Exif")
                                                                             .zeros(2)
                                                                             .raw("II*")
                                                                             .u8(0)
                                                                             .u32(8)
                                                                             .u16(0)
                                                                             .u32(8)
                                                                             .data()));
    row("GIF", gif(QSize(4096, 2048), QSize(4096, 2048), 3));
    row("WebP, lossy", webpPicture(4096, 3000, 50));
    row("WebP, lossy and transparent", webpPicture(4096, 900, 50, true));
    row("WebP, lossless", webpPicture(4096, 1800, 100));
    row("WebP, animated", animatedWebp(QSize(2048, 2048), webpPicture(2048, 2048, 50), QSize(2048, 2048)));
    row("WebP of many prefix codes", webpOfManyCodes(1024, 65536));
    row("WebP of as many prefix codes as may be", webpOfManyCodes(512, 4000));
    row("BMP", bmpOf(4096, 4096, 32));
    row("ICO of PNG", windowsIcon({blackPng(4096, 4096)}, QSize(16, 16)));
    const QByteArray comments = jpegSegment(0xfe, "x").repeated(100000);
    row("JPEG of comments", withJpegSegments(picture(16, 16, 0, "JPG"), comments));
    row("JPEG of Exif data",
        withJpegSegments(picture(16, 16, 0, "JPG"), jpegSegment(0xe1, QByteArray("Exif\0\0", 6)).repeated(100000)));
    row("JPEG of profiles", withJpegSegments(picture(16, 16, 0, "JPG"),
                                             jpegSegment(0xe2, QByteArray("ICC_PROFILE\0\1\1", 14)).repeated(100000)));
    row("JPEG as large as may be, of comments", withJpegSegments(picture(4096, 4096, 0, "JPG"), comments));
    row("PNG of a pixel that unpacks to 2 GiB", endlessPng(2048));
    row("GIF of long codes", gifOfLongCodes(8 << 20));
    row("zTXt that unpack to 8 GB", textBomb("zTXt", packedTextStart, 1000));
    row("iTXt that unpack to 8 GB", textBomb("iTXt", packedInternationalStart, 1000));
    row("iCCP that unpacks to 8 MB", textBomb("iCCP", packedTextStart, 1));
    row("zTXt that unpacks to 8 MB", textBomb("zTXt", packedTextStart, 1));
    row("texts of 8 MB",
        withPngChunks(blackPng(16, 16), pngChunk("tEXt", 'k' + QByteArray(1, '\0') + QByteArray(8000000, 'x'))));
    const QByteArray largest = blackPng(4096, 4096);
    const QByteArray bomb = textBomb("zTXt", packedTextStart, 1);
    QTest::newRow("zTXt that unpacks to 8 MB beside the largest picture")
        << packageOf({largest, bomb}) << qint64(largest.size() + bomb.size());
    const QByteArray almost = blackPng(4096, 3050);
    QTest::newRow("the same, with a little left") << packageOf({almost, bomb}) << qint64(almost.size() + bomb.size());
    QTest::newRow("zeros that unpack a thousandfold")
        << packageOfDeflated(deflatedZeros(int(512 * MiB)), 512 * MiB) << PictureFile::MaxBytes;
    rowOfMany("many small PNG", blackPng(2, 2), 5000);
    rowOfMany("many PNG", blackPng(512, 512), 5000);
    rowOfMany("many PNG with packed texts", textBomb("zTXt", packedTextStart, 1), 5000);
    rowOfMany("many JPEG of scans", withScans(progressiveJpeg(16, 16), JpegPicture::MaxScans), 5000);
    rowOfMany("seven PNG of a pixel that unpack to 8 GiB", endlessPng(8192), 7);
    rowOfMany("many PNG of a pixel that unpack to more", endlessPng(1), 5000);
    rowOfMany("many ICO", windowsIcon({bitmapOfIcon(QSize(256, 256), 32)}, QSize(256, 256)), 5000);
    rowOfMany("many GIF of long codes", gifOfLongCodes(1 << 14), 5000);
    rowOfMany("many small WebP", webpPicture(2, 2, 100), 5000);
    rowOfMany("many WebP of many prefix codes", webpOfManyCodes(128, 1024), 5000);
    rowOfMany("many large files", blackPng(2, 2) + QByteArray(int(MiB), '\0'), 5000);
    rowOfMany("many WebP of more prefix codes than may be", webpOfManyCodes(1024, 65536), 220);
    rowOfMany("many WebP of a large plain picture", webpOfOneCode(4096), 5000);
    const QByteArray jpeg = progressiveJpeg(16, 16);
    rowOfMany("many JPEG of stuffing", jpeg.chopped(2) + QByteArray("\xff\0", 2).repeated(int(MiB) / 2), 5000);
    rowOfMany("many PNG of empty chunks",
              withPngChunks(blackPng(2, 2), pngChunk("abCd", QByteArray()).repeated(int(MiB) / 12)), 5000);
    const QByteArray one = gif(QSize(2, 2), QSize(2, 2));
    row("GIF of many pictures", one.chopped(1) + one.mid(19).chopped(1).repeated(int(MiB) / 20));
    const QByteArray film = animatedWebp(QSize(2, 2), webpPicture(2, 2, 50), QSize(2, 2));
    const int filmAt = int(film.indexOf("ANMF"));
    row("WebP of many pictures", webp(film.mid(12, filmAt - 12) + film.mid(filmAt).repeated(8000)));
    rowOfMany("many bad members", "no picture", 8000);
    QTest::newRow("many members that deliver nothing") << packageOfNothing(int(MiB) / 2, 4000) << qint64(0);
}

void TestPictures::boundsHold()
{
    QFETCH(QByteArray, bytes);
    QFETCH(qint64, readBytes);
    const Cost taken = cost([&] {
        PackageDevice device(bytes);
        ApkFile apk(&device);
        visit(apk);
    });
    const QString excess = Bounds::excess(taken, bytes.size(), bytes.size() + readBytes, FixedMemory);
    QVERIFY2(excess.isEmpty(), qPrintable(excess));
}

QTEST_GUILESS_MAIN(TestPictures)
#include "tst_pictures.moc"
