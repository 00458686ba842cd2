// SPDX-License-Identifier: LGPL-2.1-or-later
#include "KitIcons.h"
#include "ThumbnailerRun.h"

#include <SorrelKit/Package.h>

#include <QColorSpace>
#include <QImage>
#include <QtTest>

using namespace fixture;
using SorrelKit::IconMask;
using SorrelKit::Package;

namespace {

constexpr int DefaultSize = 256;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

// Converts to the pixels that a PNG file can hold. Drops the colour space, because Qt 6 compares it although it is no
// part of the pixels.
QImage pixels(QImage image)
{
    image.setColorSpace(QColorSpace());
    return image.convertToFormat(QImage::Format_ARGB32);
}

QImage kitIcon(const QString &path, int size, IconMask mask = IconMask::None)
{
    return pixels(iconOf(Package(path), size, mask));
}

} // namespace

class TestSorrelThumbnailer : public QObject
{
    Q_OBJECT

private slots:
    void sizes_data();
    void sizes();
    void shapes_data();
    void shapes();
    void sets_data();
    void sets();
    void iconOfALauncherStandsIn();
    void standardOutput();
    void helpAndVersion();
    void wrongUsage_data();
    void wrongUsage();
};

void TestSorrelThumbnailer::sizes_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<int>("expected");
    QTest::newRow("by default") << QStringList() << DefaultSize;
    QTest::newRow("1") << QStringList{"-s", "1"} << 1;
    QTest::newRow("16") << QStringList{"-s", "16"} << 16;
    QTest::newRow("128") << QStringList{"--size", "128"} << 128;
    QTest::newRow("256") << QStringList{"--size=256"} << 256;
    QTest::newRow("512") << QStringList{"-s512"} << 512;
    QTest::newRow("1023") << QStringList{"-s", "1023"} << 1023;
    QTest::newRow("1024") << QStringList{"-s", "1024"} << 1024;
    QTest::newRow("1025") << QStringList{"-s", "1025"} << 1024;
    QTest::newRow("5000") << QStringList{"-s", "5000"} << 1024;
    QTest::newRow("more than any integer") << QStringList{"-s", "99999999999999999999"} << 1024;
}

void TestSorrelThumbnailer::sizes()
{
    const ThumbnailerRun place;
    QFETCH(QStringList, options);
    QFETCH(int, expected);
    // One icon is a picture file and one is drawn. Neither exists in all of these sizes.
    for (const char *name : {"notes.aapt2.apk", "babel.aapt2.apk"}) {
        const QString file = place.path(latin("icon.png"));
        const Run result = place.run(options + QStringList{ThumbnailerRun::sample(name), file});
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.output, QByteArray());
        QCOMPARE(result.status, 0);
        const QByteArray png = ThumbnailerRun::contentOf(file);
        QVERIFY(png.startsWith("\x89PNG\r\n"));
        const QImage image = pixels(QImage::fromData(png, "PNG"));
        QCOMPARE(image.size(), QSize(expected, expected));
        QCOMPARE(image, kitIcon(ThumbnailerRun::sample(name), expected));
    }
}

void TestSorrelThumbnailer::shapes_data()
{
    QTest::addColumn<int>("mask");
    QTest::newRow("none") << int(IconMask::None);
    QTest::newRow("circle") << int(IconMask::Circle);
    QTest::newRow("rounded") << int(IconMask::RoundedSquare);
    QTest::newRow("squircle") << int(IconMask::Squircle);
}

void TestSorrelThumbnailer::shapes()
{
    const ThumbnailerRun place;
    QFETCH(int, mask);
    const QString file = ThumbnailerRun::sample("babel.aapt2.apk");
    const Run result = place.run({latin("--shape"), latin(QTest::currentDataTag()), latin("-s"), latin("96"), file,
                                  place.path(latin("icon.png"))});
    QCOMPARE(result.status, 0);
    const QImage image(place.path(latin("icon.png")));
    QCOMPARE(pixels(image), kitIcon(file, 96, IconMask(mask)));
    QCOMPARE(image.pixelColor(0, 0).alpha() == 0, IconMask(mask) != IconMask::None);
}

void TestSorrelThumbnailer::sets_data()
{
    QTest::addColumn<QStringList>("members");
    QTest::newRow("set.apks") << QStringList{"splits/base-master.apk", "splits/base-de.apk", "splits/base-es.apk"};
    QTest::newRow("set.xapk") << QStringList{"org.example.babel.apk", "config.de.apk", "config.es.apk"};
    QTest::newRow("set.apkm") << QStringList{"base.apk", "split_config.de.apk", "split_config.es.apk"};
}

void TestSorrelThumbnailer::sets()
{
    const ThumbnailerRun place;
    QFETCH(QStringList, members);
    const QByteArray bytes = zip({{members.at(0), ThumbnailerRun::contentOf(ThumbnailerRun::sample("babel.base.apk"))},
                                  {members.at(1), ThumbnailerRun::contentOf(ThumbnailerRun::sample("babel.de.apk"))},
                                  {members.at(2), ThumbnailerRun::contentOf(ThumbnailerRun::sample("babel.es.apk"))}},
                                 Compression::Stored);
    const QString file = place.write(latin(QTest::currentDataTag()), bytes);
    const Run result = place.run({file, place.path(latin("icon.png"))});
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.status, 0);
    QCOMPARE(pixels(QImage(place.path(latin("icon.png")))),
             kitIcon(ThumbnailerRun::sample("babel.aapt2.apk"), DefaultSize));
}

void TestSorrelThumbnailer::iconOfALauncherStandsIn()
{
    const ThumbnailerRun place;
    const QString file = place.write(latin("launcher.apk"), ThumbnailerRun::iconPackage("activity"));
    QCOMPARE(place.run({file, place.path(latin("icon.png"))}).status, 0);
    QCOMPARE(QImage(place.path(latin("icon.png"))).pixel(128, 128), ThumbnailerRun::IconColor);
}

void TestSorrelThumbnailer::standardOutput()
{
    const ThumbnailerRun place;
    const QString file = ThumbnailerRun::sample("notes.aapt2.apk");
    QCOMPARE(place.run({file, place.path(latin("icon.png"))}).status, 0);
    const Run result = place.run({file, latin("-")});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.output, ThumbnailerRun::contentOf(place.path(latin("icon.png"))));
    QVERIFY(!result.output.isEmpty());
    QCOMPARE(place.files(), QStringList{latin("icon.png")});
}

void TestSorrelThumbnailer::helpAndVersion()
{
    const ThumbnailerRun place;
    for (const char *option : {"-h", "--help"}) {
        const Run help = place.run({latin(option)});
        QCOMPARE(help.status, 0);
        QCOMPARE(help.errors, QByteArray());
        for (const char *word : {"-s, --size", "--shape", "-h, --help", "-v, --version", "INPUT", "OUTPUT"})
            QVERIFY2(help.output.contains(word), word);
    }
    for (const char *option : {"-v", "--version"}) {
        const Run version = place.run({latin(option)});
        QCOMPARE(version.status, 0);
        QCOMPARE(version.output, QByteArray("sorrel-thumbnailer " SORREL_VERSION "\n"));
    }
}

void TestSorrelThumbnailer::wrongUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char *name, const QStringList &arguments, const char *text) {
        QTest::newRow(name) << arguments << QByteArray(text);
    };
    row("nothing", {}, "INPUT and OUTPUT are missing.");
    row("no output", {"a"}, "OUTPUT is missing.");
    row("three files", {"a", "b", "c"}, "More than INPUT and OUTPUT: 'c'.");
    row("unknown option", {"--nonsense", "a", "b"}, "Unknown option 'nonsense'.");
    row("size 0", {"-s", "0", "a", "b"}, "'0' is no size.");
    row("negative size", {"-s", "-1", "a", "b"}, "'-1' is no size.");
    row("size with a sign", {"-s", "+1", "a", "b"}, "'+1' is no size.");
    row("size with a space", {"-s", " 1", "a", "b"}, "' 1' is no size.");
    row("fraction", {"-s", "1.5", "a", "b"}, "'1.5' is no size.");
    row("hexadecimal size", {"-s", "0x10", "a", "b"}, "'0x10' is no size.");
    row("empty size", {"-s", "", "a", "b"}, "'' is no size.");
    row("size without a number", {"-s"}, "Missing value after '-s'.");
    row("unknown shape", {"--shape", "star", "a", "b"},
        "'star' is no shape; there are circle, rounded, squircle and none.");
    row("empty shape", {"--shape", "", "a", "b"}, "'' is no shape; there are circle, rounded, squircle and none.");
    row("shape in capitals", {"--shape", "Circle", "a", "b"},
        "'Circle' is no shape; there are circle, rounded, squircle and none.");
}

void TestSorrelThumbnailer::wrongUsage()
{
    const ThumbnailerRun place;
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, text);
    const Run result = place.run(arguments);
    QCOMPARE(result.errors, QByteArray("sorrel-thumbnailer: " + text + "\nTry 'sorrel-thumbnailer --help'.\n"));
    QCOMPARE(result.status, 2);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(place.files(), QStringList());
}

QTEST_GUILESS_MAIN(TestSorrelThumbnailer)
#include "tst_sorrel_thumbnailer.moc"
