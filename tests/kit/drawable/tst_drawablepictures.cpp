// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DrawableFixture.h"
#include "drawable/paint/PictureSample.h"
#include "drawable/source/NinePatch.h"
#include "format/AndroidAttributes.h"

#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

namespace {

const QString picturePath = QStringLiteral("picture.png");

// A picture whose pixels are all different: red counts columns, green rows.
QImage counted(int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb(x * 8, y * 8, 0x80));
    }
    return image;
}

QRgb countedPixel(int x, int y)
{
    return qRgb(x * 8, y * 8, 0x80);
}

int mirrored(int at, int side)
{
    at %= 2 * side;
    return at < side ? at : 2 * side - 1 - at;
}

XmlElement bitmap(const Attributes &attributes)
{
    return element("bitmap", Attributes{text(Attr::Src, picturePath)} + attributes);
}

XmlElement ninePatch(const Attributes &attributes = {})
{
    return element("nine-patch", Attributes{text(Attr::Src, picturePath)} + attributes);
}

} // namespace

/// Pictures: the position of each of their pixels, scaling, tiles and tints.
class TestDrawablePictures : public QObject
{
    Q_OBJECT

private slots:
    void aPictureOfTheRightSizeIsNotChanged();
    void gravityMovesAPicture();
    void tiles_data();
    void tiles();
    void tilesBeginAtTheOrigin();
    void shrinkingAverages_data();
    void shrinkingAverages();
    void shrinkingKeepsTransparentColorsOut();
    void enlargingInterpolates();
    void densityScales();
    void alphaAndTint();
    void tintStaysWithinThePicture();

    void stretchesWhatIsMarked();
    void stretchesInProportion();
    void shrinksWhatIsNotMarkedWhenThereIsNoRoom();
    void stretchesAllWhenNothingIsMarked();
    void paddingOfANinePatch();
    void picturesWithMarksAreNinePatches();
    void damagedMarks_data();
    void damagedMarks();
};

void TestDrawablePictures::aPictureOfTheRightSizeIsNotChanged()
{
    Studio studio;
    const QImage picture = counted(16, 12);
    studio.files.add(picturePath, picture);
    QCOMPARE(studio.draw(bitmap({}), {16, 12}), picture.convertToFormat(QImage::Format_ARGB32_Premultiplied));
}

void TestDrawablePictures::gravityMovesAPicture()
{
    Studio studio;
    QImage picture(4, 2, QImage::Format_RGB32);
    picture.fill(Red);
    studio.files.add(picturePath, picture);
    const auto draw = [&](int gravity) {
        return areaOf(studio.draw(bitmap({integer(Attr::Gravity, gravity)}), {20, 20}), Red);
    };
    QCOMPARE(draw(0x11), QRect(8, 9, 4, 2));
    QCOMPARE(draw(0x55), QRect(16, 18, 4, 2));
    QCOMPARE(draw(0x37), QRect(0, 0, 20, 2));
    QCOMPARE(draw(0x77), QRect(0, 0, 20, 20));
}

void TestDrawablePictures::tiles_data()
{
    QTest::addColumn<int>("modeX");
    QTest::addColumn<int>("modeY");
    QTest::newRow("clamp") << 0 << 0;
    QTest::newRow("repeat") << 1 << 1;
    QTest::newRow("mirror") << 2 << 2;
    QTest::newRow("clamp, repeat") << 0 << 1;
    QTest::newRow("mirror, clamp") << 2 << 0;
    QTest::newRow("repeat, disabled is clamp") << 1 << -1;
}

void TestDrawablePictures::tiles()
{
    QFETCH(int, modeX);
    QFETCH(int, modeY);
    constexpr int Width = 5;
    constexpr int Height = 3;
    Studio studio;
    studio.files.add(picturePath, counted(Width, Height));
    const QImage image =
        studio.draw(bitmap({integer(Attr::TileModeX, modeX), integer(Attr::TileModeY, modeY)}), {23, 17});
    const auto expected = [](int at, int side, int mode) {
        return mode == 1 ? at % side : mode == 2 ? mirrored(at, side) : qMin(at, side - 1);
    };
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            QCOMPARE(image.pixel(x, y), countedPixel(expected(x, Width, modeX), expected(y, Height, modeY)));
    }
}

void TestDrawablePictures::tilesBeginAtTheOrigin()
{
    Studio studio;
    studio.files.add(picturePath, counted(5, 3));
    const XmlElement inset = element("inset", {pixels(Attr::Inset, 4)}, {bitmap({integer(Attr::TileMode, 1)})});
    const QImage image = studio.draw(inset, {20, 20});
    QCOMPARE(image.pixel(3, 3), Nothing);
    QCOMPARE(image.pixel(4, 4), countedPixel(4, 1));
    QCOMPARE(image.pixel(5, 5), countedPixel(0, 2));
    QCOMPARE(image.pixel(16, 16), Nothing);
}

void TestDrawablePictures::shrinkingAverages_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("target");
    QTest::newRow("half") << QSize(64, 64) << QSize(32, 32);
    QTest::newRow("much") << QSize(512, 512) << QSize(16, 16);
    QTest::newRow("in one direction") << QSize(512, 16) << QSize(16, 16);
    QTest::newRow("large, in blocks first") << QSize(2048, 2048) << QSize(48, 48);
}

void TestDrawablePictures::shrinkingAverages()
{
    QFETCH(QSize, size);
    QFETCH(QSize, target);
    // A board of single black and white pixels: sampling only some of them would not give grey.
    QImage board(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            board.setPixel(x, y, (x + y) % 2 == 0 ? Black : White);
    }
    Studio studio;
    studio.files.add(picturePath, board);
    const QImage image = studio.draw(bitmap({}), target);
    QCOMPARE(image.size(), target);
    for (int y = 0; y < target.height(); ++y) {
        for (int x = 0; x < target.width(); ++x)
            QVERIFY2(isNear(image.pixel(x, y), 0xff808080, 3), qPrintable(QString::number(image.pixel(x, y), 16)));
    }
}

void TestDrawablePictures::shrinkingKeepsTransparentColorsOut()
{
    QImage picture(64, 64, QImage::Format_ARGB32);
    picture.fill(0x0000ff00);
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; x += 2)
            picture.setPixel(x, y, Red);
    }
    Studio studio;
    studio.files.add(picturePath, picture);
    // Premultiplied.
    QVERIFY(isNear(studio.draw(bitmap({}), {16, 16}).pixel(8, 8), 0x80800000, 3));
}

void TestDrawablePictures::enlargingInterpolates()
{
    QImage picture(2, 1, QImage::Format_RGB32);
    picture.setPixel(0, 0, Black);
    picture.setPixel(1, 0, White);
    Studio studio;
    studio.files.add(picturePath, picture);
    const QImage image = studio.draw(bitmap({}), {16, 4});
    // The middles of the two are at 4 and 12. Between them, the share of the other grows by an eighth each pixel.
    QCOMPARE(image.pixel(0, 0), Black);
    QCOMPARE(image.pixel(15, 3), White);
    for (int x = 4; x < 12; ++x)
        QVERIFY(isNear(image.pixel(x, 1),
                       qRgb(qRound((x - 3.5) * 255 / 8), qRound((x - 3.5) * 255 / 8), qRound((x - 3.5) * 255 / 8)), 2));
}

void TestDrawablePictures::densityScales()
{
    Studio studio;
    studio.files.add(picturePath, counted(9, 6));
    ResolvedValue value;
    value.value.type = ValueType::String;
    value.text = picturePath;
    const auto size = [&](int density) {
        value.density = density;
        return studio.loader.fromValue(value)->intrinsicSize();
    };
    QCOMPARE(size(160), QSizeF(9, 6));
    QCOMPARE(size(0), QSizeF(9, 6));
    QCOMPARE(size(320), QSizeF(5, 3));
    QCOMPARE(size(Configuration::NoDensity), QSizeF(9, 6));
    QCOMPARE(size(0xfff0), QSizeF(1, 1));
}

void TestDrawablePictures::alphaAndTint()
{
    QImage picture(4, 4, QImage::Format_ARGB32);
    picture.fill(0xff8000ff);
    Studio studio;
    studio.files.add(picturePath, picture);
    const auto pixel = [&](const Attributes &attributes) {
        return studio.draw(bitmap(attributes), {4, 4}).pixel(1, 1);
    };
    QVERIFY(isNear(pixel({number(Attr::Alpha, 0.5F)}), 0x80400080, 1));
    QVERIFY(isNear(pixel({color(Attr::Tint, Green)}), Green, 1));
    QVERIFY(isNear(pixel({color(Attr::Tint, Green), number(Attr::Alpha, 0.5F)}), 0x80008000, 1));
    QVERIFY(isNear(pixel({color(Attr::Tint, 0xffff0080), integer(Attr::TintMode, 14)}), 0xff800080, 1));
    // An alpha out of range is clamped.
    QVERIFY(isNear(pixel({number(Attr::Alpha, 7)}), 0xff8000ff, 0));
    QVERIFY(isNear(pixel({number(Attr::Alpha, -7)}), Nothing, 0));
}

void TestDrawablePictures::tintStaysWithinThePicture()
{
    QImage picture(4, 4, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    Studio studio;
    studio.files.add(picturePath, picture);
    constexpr int SourceOver = 3;
    const XmlElement root =
        bitmap({color(Attr::Tint, Green), integer(Attr::TintMode, SourceOver), integer(Attr::Gravity, 0x11)});
    QCOMPARE(areaOf(studio.draw(root, {12, 12}), Green), QRect(4, 4, 4, 4));
}

void TestDrawablePictures::stretchesWhatIsMarked()
{
    Studio studio;
    studio.files.add(picturePath, ninePatchPng(counted(8, 6), {3, 5}, {2, 3}));
    const QImage image = studio.draw(ninePatch(), {20, 12});
    // 3 columns stay at the left and 3 at the right, with 14 between. 2 rows stay at the top and 3 at the bottom.
    for (int y : {0, 1}) {
        for (int x : {0, 1, 2}) {
            QCOMPARE(image.pixel(x, y), countedPixel(x, y));
            QCOMPARE(image.pixel(19 - x, y), countedPixel(7 - x, y));
            QCOMPARE(image.pixel(x, 11 - y), countedPixel(x, 5 - y));
        }
    }
    for (int y = 2; y < 9; ++y)
        QCOMPARE(image.pixel(0, y), countedPixel(0, 2));
    // The columns 3 and 4 are interpolated with each other only.
    QCOMPARE(image.pixel(3, 0), countedPixel(3, 0));
    QCOMPARE(image.pixel(16, 0), countedPixel(4, 0));
    for (int x = 3; x < 16; ++x)
        QVERIFY(qRed(image.pixel(x, 0)) <= qRed(image.pixel(x + 1, 0)));
}

void TestDrawablePictures::stretchesInProportion()
{
    Studio studio;
    studio.files.add(picturePath, ninePatchPng(counted(10, 1), {1, 2, 4, 7}, {}));
    const QImage image = studio.draw(ninePatch(), {26, 1});
    // 20 pixels for 1 column and 3: 5 and 15. The fixed parts have 1, 2 and 3 columns.
    QCOMPARE(image.pixel(0, 0), countedPixel(0, 0));
    for (int x = 1; x < 6; ++x)
        QCOMPARE(image.pixel(x, 0), countedPixel(1, 0));
    QCOMPARE(image.pixel(6, 0), countedPixel(2, 0));
    QCOMPARE(image.pixel(7, 0), countedPixel(3, 0));
    QCOMPARE(image.pixel(8, 0), countedPixel(4, 0));
    QCOMPARE(image.pixel(22, 0), countedPixel(6, 0));
    QCOMPARE(image.pixel(23, 0), countedPixel(7, 0));
    QCOMPARE(image.pixel(25, 0), countedPixel(9, 0));
}

void TestDrawablePictures::shrinksWhatIsNotMarkedWhenThereIsNoRoom()
{
    QImage picture(12, 1, QImage::Format_RGB32);
    for (int x = 0; x < 12; ++x)
        picture.setPixel(x, 0, x < 4 ? Red : x < 8 ? Green : Blue);
    Studio studio;
    studio.files.add(picturePath, ninePatchPng(picture, {4, 8}, {}));
    const QImage image = studio.draw(ninePatch(), {4, 1});
    QCOMPARE(areaOf(image, Red), QRect(0, 0, 2, 1));
    QCOMPARE(areaOf(image, Blue), QRect(2, 0, 2, 1));
}

void TestDrawablePictures::stretchesAllWhenNothingIsMarked()
{
    QImage picture(2, 2, QImage::Format_RGB32);
    picture.fill(Red);
    Studio studio;
    studio.files.add(picturePath, ninePatchPng(picture, {}, {}));
    QCOMPARE(areaOf(studio.draw(ninePatch(), {9, 9}), Red), QRect(0, 0, 9, 9));
}

void TestDrawablePictures::paddingOfANinePatch()
{
    Studio studio;
    studio.files.add(picturePath, ninePatchPng(counted(8, 8), {3, 5}, {3, 5}, {1, 2, 3, 4}));
    QCOMPARE(studio.load(ninePatch())->padding(), QMarginsF(1, 3, 2, 4));
    QCOMPARE(studio.load(ninePatch())->intrinsicSize(), QSizeF(8, 8));
}

void TestDrawablePictures::picturesWithMarksAreNinePatches()
{
    Studio studio;
    studio.files.add(picturePath, ninePatchPng(counted(8, 1), {3, 5}, {}));
    const QImage byReference = studio.draw(element("inset", {text(Attr::Drawable, picturePath)}), {20, 1});
    QCOMPARE(byReference, studio.draw(ninePatch(), {20, 1}));
    QCOMPARE(byReference.pixel(2, 0), countedPixel(2, 0));
    // As a bitmap, it is stretched as a whole.
    QVERIFY(studio.draw(bitmap({}), {20, 1}).pixel(2, 0) != countedPixel(2, 0));
}

void TestDrawablePictures::damagedMarks_data()
{
    QTest::addColumn<QVector<int>>("columns");
    QTest::addColumn<int>("ranges");
    QTest::newRow("good") << QVector<int>{1, 2, 3, 4} << 2;
    QTest::newRow("an odd number") << QVector<int>{1, 2, 3} << 1;
    QTest::newRow("backwards") << QVector<int>{2, 1} << 0;
    QTest::newRow("empty") << QVector<int>{2, 2} << 0;
    QTest::newRow("negative") << QVector<int>{-5, 3} << 0;
    QTest::newRow("in each other") << QVector<int>{1, 5, 3, 6} << 1;
    QTest::newRow("beyond the picture") << QVector<int>{1, 2, 1000, 2147483647} << 2;
}

void TestDrawablePictures::damagedMarks()
{
    QFETCH(QVector<int>, columns);
    QFETCH(int, ranges);
    Studio studio;
    const QByteArray png = ninePatchPng(counted(8, 8), columns, {});
    const auto patch = NinePatch::read(png);
    QVERIFY(patch.has_value());
    QCOMPARE(patch->columns().size(), ranges);
    studio.files.add(picturePath, png);
    // The outermost columns stay at the edges for any stretching.
    const QImage image = studio.draw(ninePatch(), {30, 30});
    QCOMPARE(qRed(image.pixel(0, 0)), 0);
    QCOMPARE(qRed(image.pixel(29, 0)), 7 * 8);
    // A file that is cut before the end of the marks has none.
    const int chunkAt = int(png.indexOf("npTc"));
    for (int size = 0; size < chunkAt + 4 + 32 + 4 * columns.size(); ++size)
        QVERIFY(!NinePatch::read(png.left(size)));
}

QTEST_GUILESS_MAIN(TestDrawablePictures)
#include "tst_drawablepictures.moc"
