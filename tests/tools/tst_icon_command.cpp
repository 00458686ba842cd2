// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "BinaryXml.h"
#include "Files.h"
#include "KitIcons.h"
#include "Tool.h"
#include "format/AndroidAttributes.h"

#include <SorrelKit/Package.h>

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

#include <unistd.h>

using namespace fixture;
using SorrelKit::IconMask;
using SorrelKit::Package;

Q_DECLARE_METATYPE(IconMask)

namespace {

QString sample(const char *name)
{
    return QStringLiteral(SORREL_SAMPLES_DIR "/") + QLatin1String(name);
}

// Two activities with their own icons, in a package without an icon.
QByteArray twoLaunchers()
{
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))});
    builder.start(QStringLiteral("application"));
    for (const char *name : {"red", "blue"}) {
        builder.start(QStringLiteral("activity"),
                      {androidText(QStringLiteral("name"), QStringLiteral("org.x.") + QLatin1String(name)),
                       androidText(QStringLiteral("icon"), QLatin1String(name) + QStringLiteral(".png"))});
        builder.launcherFilter().end(QStringLiteral("activity"));
    }
    builder.end(QStringLiteral("application")).end(QStringLiteral("manifest"));
    return package(emptyTable(), builder.build(),
                   {{QStringLiteral("red.png"), picture(16, 16, 0xffff0000)},
                    {QStringLiteral("blue.png"), picture(16, 16, 0xff0000ff)}});
}

QByteArray iconNamed(const QString &path, const QVector<Member> &members)
{
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))});
    builder.empty(QStringLiteral("application"), {androidText(QStringLiteral("icon"), path)});
    return package(emptyTable(), builder.end(QStringLiteral("manifest")).build(), members);
}

// The icon is a color of the theme: red in the style of the manifest, and blue in the style Blue.
QByteArray themedIcon()
{
    constexpr quint32 ColorAttribute = 0x7f010000;
    constexpr quint32 FirstStyle = 0x7f020000;
    constexpr quint32 Icon = 0x7f030000;
    const auto style = [](quint32 color, int key) {
        return mapOf({mapItem(ColorAttribute, int(ValueType::FirstColor), color)}, 0, key);
    };
    PackageBuilder resources;
    resources.types({QStringLiteral("attr"), QStringLiteral("style"), QStringLiteral("drawable")})
        .keys({QStringLiteral("Red"), QStringLiteral("Blue")})
        .type(TypeBuilder(2).entry(0, style(0xffff0000, 0)).entry(1, style(0xff0000ff, 1)))
        .type(TypeBuilder(3).value(0, String, 0));
    XmlBuilder manifest;
    manifest.attributeId(QStringLiteral("theme"), 0x01010000).attributeId(QStringLiteral("icon"), 0x01010002);
    manifest.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))})
        .empty(QStringLiteral("application"),
               {androidReference(QStringLiteral("icon"), Icon), androidReference(QStringLiteral("theme"), FirstStyle)})
        .end(QStringLiteral("manifest"));
    XmlBuilder icon;
    icon.attributeId(QStringLiteral("color"), 0x010101a5)
        .empty(QStringLiteral("color"),
               {androidValue(QStringLiteral("color"), int(ValueType::Attribute), ColorAttribute)});
    return package(TableBuilder().strings({QStringLiteral("res/icon.xml")}).package(resources).build(),
                   manifest.build(), {{QStringLiteral("res/icon.xml"), icon.build()}});
}

constexpr QRgb Red = 0xffff0000;
constexpr QRgb Green = 0xff00ff00;
constexpr QRgb Blue = 0xff0000ff;
constexpr QRgb White = 0xffffffff;

XmlElement element(const QString &name, const QVector<XmlAttribute> &attributes,
                   const QVector<XmlElement> &children = {})
{
    XmlElement result;
    result.name = name;
    result.attributes = attributes;
    result.children = children;
    return result;
}

XmlAttribute attribute(quint32 id, ValueType type, quint32 data, const QString &text = QString())
{
    XmlAttribute result;
    result.id = id;
    result.value = {type, data};
    result.text = text;
    return result;
}

// A package for televisions: a red icon, a blue one from right to left, a green round one and a green banner.
QByteArray pictures()
{
    constexpr int LayoutAt = 28, ModeAt = 29;
    const QByteArray night = ConfigBuilder().u8(ModeAt, Configuration::Night << 4).build();
    const QByteArray rightToLeft = ConfigBuilder().u8(LayoutAt, Configuration::RightToLeft << 6).build();
    const auto named = [](const QString &tag, const char *value, const QVector<XmlElement> &children = {}) {
        return element(tag, {attribute(Attr::Name, ValueType::String, 0, QString::fromLatin1(value))}, children);
    };
    const auto reference = [](quint32 id, quint32 resource) { return attribute(id, ValueType::Reference, resource); };
    const XmlElement filter = element(QStringLiteral("intent-filter"), {},
                                      {named(QStringLiteral("action"), "android.intent.action.MAIN"),
                                       named(QStringLiteral("category"), "android.intent.category.LEANBACK_LAUNCHER")});
    XmlElement activity = named(QStringLiteral("activity"), "org.x.Tv", {filter});
    activity.attributes.append(reference(Attr::Banner, 0x7f010001));
    const XmlElement application =
        element(QStringLiteral("application"),
                {reference(Attr::Icon, 0x7f010000), reference(Attr::RoundIcon, 0x7f010001)}, {activity});
    const QStringList paths{QStringLiteral("red.png"), QStringLiteral("green.png"), QStringLiteral("blue.png"),
                            QStringLiteral("white.png")};
    const QByteArray table =
        TableBuilder()
            .strings(paths)
            .package(PackageBuilder()
                         .types({QStringLiteral("drawable")})
                         .keys({QStringLiteral("key")})
                         .type(TypeBuilder(1).value(0, fixture::String, 0).value(1, fixture::String, 1))
                         .type(TypeBuilder(1, rightToLeft).value(0, fixture::String, 2))
                         .type(TypeBuilder(1, night).value(0, fixture::String, 3)))
            .build();
    return package(table, binaryXml(element(QStringLiteral("manifest"), {}, {application})),
                   {{paths.at(0), picture(16, 9, Red)},
                    {paths.at(1), picture(16, 9, Green)},
                    {paths.at(2), picture(16, 9, Blue)},
                    {paths.at(3), picture(16, 9, White)}});
}

// A green picture on red, whose monochrome layer is blue.
QByteArray adaptiveIcon()
{
    const auto layer = [](const char *name, QRgb color) {
        return element(QString::fromLatin1(name), {attribute(Attr::Drawable, ValueType::ColorArgb8, color)});
    };
    return binaryXml(element(QStringLiteral("adaptive-icon"), {},
                             {layer("background", Red), layer("foreground", Green), layer("monochrome", Blue)}));
}

// Red for 100 ms, then blue.
QByteArray animation()
{
    const auto frame = [](QRgb value) {
        return element(QStringLiteral("item"), {attribute(Attr::Drawable, ValueType::ColorArgb8, value),
                                                attribute(Attr::Duration, ValueType::Decimal, 100)});
    };
    return binaryXml(element(QStringLiteral("animation-list"),
                             {attribute(Attr::OneShot, ValueType::Boolean, 0xffffffff)}, {frame(Red), frame(Blue)}));
}

// The colour in the middle of a PNG.
QRgb pixelOf(const QByteArray &png)
{
    const QImage image = QImage::fromData(png, "PNG");
    return image.isNull() ? 0 : image.pixel(image.width() / 2, image.height() / 2);
}

} // namespace

class TestIconCommand : public QObject
{
    Q_OBJECT

private slots:
    void sizesAndShapes_data();
    void sizesAndShapes();
    void aSizeAndNoShapeByDefault();
    void ofASet();
    void intoAFile();
    void ofALauncher();
    void inATheme_data();
    void inATheme();
    void inNoTheme();
    void notToATerminal();
    void packagesWithoutAnIcon();
    void whatCannotBeDrawnIsTold();
    void anOldFileIsKeptWhenThereIsNoNewOne();
    void aPackageIsNotReplacedByItsIcon();
    void aFullDiskLeavesWhatWas();
    void outputThatCannotBeWritten();
    void variantsOfIcons();
    void monochromeIcons();
    void bannersOfTelevisions();
    void framesOfAnimatedIcons();
    void framesThatCannotBeWritten();
    void wrongUsage_data();
    void wrongUsage();

private:
    QString write(const QString &name, const QByteArray &bytes) const
    {
        return writeFile(m_directory.filePath(name), bytes);
    }

    QTemporaryDir m_directory;
};

void TestIconCommand::sizesAndShapes_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QString>("shape");
    QTest::addColumn<IconMask>("mask");
    QTest::newRow("1") << 1 << "none" << IconMask::None;
    QTest::newRow("48, circle") << 48 << "circle" << IconMask::Circle;
    QTest::newRow("96, rounded") << 96 << "rounded" << IconMask::RoundedSquare;
    QTest::newRow("192, squircle") << 192 << "squircle" << IconMask::Squircle;
    QTest::newRow("1024") << 1024 << "none" << IconMask::None;
}

void TestIconCommand::sizesAndShapes()
{
    QFETCH(int, size);
    QFETCH(QString, shape);
    QFETCH(IconMask, mask);
    const QString file = sample("babel.sparse.apk");
    const ToolRun result = runSorrel({QStringLiteral("icon"), QStringLiteral("--size"), QString::number(size),
                                      QStringLiteral("--shape"), shape, file});
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.status, 0);
    const QImage icon = QImage::fromData(result.output, "PNG");
    QCOMPARE(icon.size(), QSize(size, size));
    const QImage expected = iconOf(Package(file), size, mask);
    QCOMPARE(icon.convertToFormat(expected.format()), expected);
}

void TestIconCommand::aSizeAndNoShapeByDefault()
{
    const QString file = sample("babel.sparse.apk");
    const QByteArray icon = runSorrel({QStringLiteral("icon"), file}).output;
    QVERIFY(!icon.isEmpty());
    QCOMPARE(icon,
             runSorrel({QStringLiteral("icon"), QStringLiteral("-s192"), QStringLiteral("--shape=none"), file}).output);
}

void TestIconCommand::ofASet()
{
    QFile base(sample("babel.base.apk"));
    QVERIFY(base.open(QIODevice::ReadOnly));
    const QString set = write(QStringLiteral("set.apks"), zip({{QStringLiteral("base.apk"), base.readAll()}}));
    const ToolRun result = runSorrel({QStringLiteral("icon"), set});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.output, runSorrel({QStringLiteral("icon"), base.fileName()}).output);
}

void TestIconCommand::intoAFile()
{
    const QString output = m_directory.filePath(QStringLiteral("out ü.png"));
    const QString file = sample("notes.aapt2.apk");
    const ToolRun result = runSorrel({QStringLiteral("icon"), QStringLiteral("-o"), output, file});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(result.errors, QByteArray());
    QFile written(output);
    QVERIFY(written.open(QIODevice::ReadOnly));
    QCOMPARE(written.readAll(), runSorrel({QStringLiteral("icon"), file}).output);
}

void TestIconCommand::ofALauncher()
{
    const QString file = write(QStringLiteral("two.apk"), twoLaunchers());
    for (const auto &[name, color] :
         {std::make_pair("org.x.red", 0xffff0000), std::make_pair("org.x.blue", 0xff0000ff)}) {
        const ToolRun result =
            runSorrel({QStringLiteral("icon"), QStringLiteral("--launcher"), QLatin1String(name), file});
        QCOMPARE(result.status, 0);
        QCOMPARE(QImage::fromData(result.output).pixel(8, 8), color);
    }
    const ToolRun missing =
        runSorrel({QStringLiteral("icon"), QStringLiteral("--launcher"), QStringLiteral("\033[2Jgreen"), file});
    QCOMPARE(missing.status, 1);
    QCOMPARE(QString::fromUtf8(missing.errors),
             QStringLiteral("sorrel: %1: there is no launcher '\ufffd[2Jgreen'\n").arg(file));
}

void TestIconCommand::inATheme_data()
{
    QTest::addColumn<QString>("theme");
    QTest::addColumn<uint>("color");
    QTest::newRow("of the package") << "package" << 0xffff0000;
    QTest::newRow("by name") << "@style/Blue" << 0xff0000ff;
    QTest::newRow("by id") << "0x7f020001" << 0xff0000ff;
}

void TestIconCommand::inATheme()
{
    QFETCH(QString, theme);
    QFETCH(uint, color);
    const QString file = write(QStringLiteral("themed.apk"), themedIcon());
    const ToolRun result = runSorrel({QStringLiteral("icon"), QStringLiteral("--theme"), theme, file});
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.status, 0);
    QCOMPARE(QImage::fromData(result.output).pixel(8, 8), color);
}

void TestIconCommand::inNoTheme()
{
    const QString file = write(QStringLiteral("themed.apk"), themedIcon());
    const ToolRun plain = runSorrel({QStringLiteral("icon"), file});
    QCOMPARE(plain.status, 0);
    QCOMPARE(QImage::fromData(plain.output).pixel(8, 8), 0u);
    QCOMPARE(QString::fromUtf8(plain.errors),
             QStringLiteral("sorrel: %1: ?0x7f010000 has no value without a theme\n").arg(file));
    const ToolRun unknown = runSorrel({QStringLiteral("icon"), QStringLiteral("--theme=@style/Green"), file});
    QCOMPARE(unknown.status, 1);
    QCOMPARE(QString::fromUtf8(unknown.errors),
             QStringLiteral("sorrel: %1: there is no style '@style/Green'\n").arg(file));
}

void TestIconCommand::notToATerminal()
{
    const ToolRun result = runSorrelOnTerminal({QStringLiteral("icon"), sample("notes.aapt2.apk")});
    QCOMPARE(result.status, 2);
    QVERIFY(result.output.startsWith("sorrel: A picture is not written to a terminal; '-o' names a file.\r\n"));
}

void TestIconCommand::packagesWithoutAnIcon()
{
    const QString without = write(QStringLiteral("without.apk"), package(emptyTable(), smallManifest()));
    const QString missing = write(QStringLiteral("missing.apk"), iconNamed(QStringLiteral("gone.png"), {}));
    const QString bad = write(QStringLiteral("bad.apk"), QByteArray("no package"));
    for (const auto &[file, text] :
         {std::make_pair(without, "there is no icon"), std::make_pair(missing, "gone.png cannot be read or decoded"),
          std::make_pair(bad, "could not open APK file")}) {
        const ToolRun result = runSorrel({QStringLiteral("icon"), file});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.output, QByteArray());
        QCOMPARE(QString::fromUtf8(result.errors), QStringLiteral("sorrel: %1: %2\n").arg(file, QLatin1String(text)));
    }
}

void TestIconCommand::whatCannotBeDrawnIsTold()
{
    XmlBuilder layers;
    layers.attributeId(QStringLiteral("drawable"), 0x01010199)
        .startNamespace(QStringLiteral("android"), androidUri)
        .start(QStringLiteral("layer-list"))
        .empty(QStringLiteral("item"), {androidValue(QStringLiteral("drawable"), 0x1c, 0xff00ff00)})
        .start(QStringLiteral("item"))
        .empty(QStringLiteral("odd"))
        .end(QStringLiteral("item"))
        .end(QStringLiteral("layer-list"));
    const QString file = write(QStringLiteral("odd.apk"), iconNamed(QStringLiteral("res/odd.xml"),
                                                                    {{QStringLiteral("res/odd.xml"), layers.build()}}));
    const ToolRun result = runSorrel({QStringLiteral("icon"), file});
    QCOMPARE(result.status, 0);
    QCOMPARE(QImage::fromData(result.output).pixel(8, 8), 0xff00ff00);
    QCOMPARE(QString::fromUtf8(result.errors), QStringLiteral("sorrel: %1: unsupported drawable <odd>\n").arg(file));
}

void TestIconCommand::anOldFileIsKeptWhenThereIsNoNewOne()
{
    const QString output = write(QStringLiteral("old.png"), QByteArray("old"));
    const QString file = write(QStringLiteral("without.apk"), package(emptyTable(), smallManifest()));
    QCOMPARE(runSorrel({QStringLiteral("icon"), QStringLiteral("-o"), output, file}).status, 1);
    QFile old(output);
    QVERIFY(old.open(QIODevice::ReadOnly));
    QCOMPARE(old.readAll(), QByteArray("old"));
}

void TestIconCommand::aPackageIsNotReplacedByItsIcon()
{
    const QByteArray bytes = twoLaunchers();
    const QString file = write(QStringLiteral("itself.apk"), bytes);
    const QString link = m_directory.filePath(QStringLiteral("link.png"));
    const QString twin = m_directory.filePath(QStringLiteral("twin.png"));
    QVERIFY(QFile::link(file, link));
    QCOMPARE(::link(file.toUtf8(), twin.toUtf8()), 0);
    for (const QString &output : {file, link, twin, m_directory.filePath(QStringLiteral("./itself.apk"))}) {
        const ToolRun result = runSorrel({QStringLiteral("icon"), QStringLiteral("-o"), output, file});
        QCOMPARE(result.status, 2);
        QVERIFY(result.errors.startsWith("sorrel: The picture would replace the package.\n"));
        QFile package(file);
        QVERIFY(package.open(QIODevice::ReadOnly));
        QCOMPARE(package.readAll(), bytes);
    }
}

void TestIconCommand::aFullDiskLeavesWhatWas()
{
    const QString output = write(QStringLiteral("full.png"), QByteArray("old"));
    // Files are limited to 512 bytes.
    const ToolRun result = runTool(
        QStringLiteral("sh"),
        {QStringLiteral("-c"), QStringLiteral("ulimit -f 1; trap '' XFSZ; exec sorrel \"$@\""), QStringLiteral("sh"),
         QStringLiteral("icon"), QStringLiteral("-s1024"), QStringLiteral("-o"), output, sample("babel.sparse.apk")});
    QCOMPARE(result.status, 1);
    QCOMPARE(QString::fromUtf8(result.errors),
             QStringLiteral("sorrel: %1: not all of it could be written\n").arg(output));
    QFile old(output);
    QVERIFY(old.open(QIODevice::ReadOnly));
    QCOMPARE(old.readAll(), QByteArray("old"));
}

void TestIconCommand::outputThatCannotBeWritten()
{
    const QString file = sample("notes.aapt2.apk");
    const QString output = m_directory.filePath(QStringLiteral("nowhere/icon.png"));
    const ToolRun missing = runSorrel({QStringLiteral("icon"), QStringLiteral("-o"), output, file});
    QCOMPARE(missing.status, 1);
    QCOMPARE(QString::fromUtf8(missing.errors), QStringLiteral("sorrel: %1: No such file or directory\n").arg(output));
    const ToolRun full = runSorrel({QStringLiteral("icon"), QStringLiteral("-o"), QStringLiteral("/dev/full"), file});
    QCOMPARE(full.status, 1);
    QCOMPARE(full.errors, QByteArray("sorrel: /dev/full: No space left on device\n"));
    // A file does not replace a device.
    QVERIFY(!QFileInfo(QStringLiteral("/dev/full")).isFile());
    ToolSetting toFullDisk;
    toFullDisk.outputFile = QStringLiteral("/dev/full");
    QCOMPARE(runSorrel({QStringLiteral("icon"), file}, toFullDisk).errors,
             QByteArray("sorrel: standard output: No space left on device\n"));
}

void TestIconCommand::variantsOfIcons()
{
    const auto colorOf = [this](const QStringList &options) {
        return pixelOf(runSorrel(QStringList{QStringLiteral("icon")} + options
                                 + QStringList{write(QStringLiteral("pictures.apk"), pictures())})
                           .output);
    };
    QCOMPARE(colorOf({}), Red);
    QCOMPARE(colorOf({QStringLiteral("--round")}), Green);
    QCOMPARE(colorOf({QStringLiteral("--night")}), White);
    QCOMPARE(colorOf({QStringLiteral("--rtl")}), Blue);
    QCOMPARE(colorOf({QStringLiteral("--launcher=org.x.Tv")}), Red);
}

void TestIconCommand::monochromeIcons()
{
    const QString file = write(QStringLiteral("adaptive.apk"),
                               iconNamed(QStringLiteral("icon.xml"), {{QStringLiteral("icon.xml"), adaptiveIcon()}}));
    QCOMPARE(pixelOf(runSorrel({QStringLiteral("icon"), file}).output), Green);
    QCOMPARE(pixelOf(runSorrel({QStringLiteral("icon"), QStringLiteral("--monochrome"), file}).output), Blue);
    // Pictures have no layers.
    const QString picture = write(QStringLiteral("pictures.apk"), pictures());
    QCOMPARE(pixelOf(runSorrel({QStringLiteral("icon"), QStringLiteral("--monochrome"), picture}).output), Red);
}

void TestIconCommand::bannersOfTelevisions()
{
    const QString file = write(QStringLiteral("pictures.apk"), pictures());
    for (const QStringList &entry : {QStringList(), QStringList{QStringLiteral("--launcher=org.x.Tv")}}) {
        const QStringList options{QStringLiteral("icon"), QStringLiteral("--banner"), QStringLiteral("-s90")};
        const QByteArray output = runSorrel(options + entry + QStringList{file}).output;
        QCOMPARE(QImage::fromData(output, "PNG").size(), QSize(160, 90));
        QCOMPARE(pixelOf(output), Green);
    }
    const ToolRun none = runSorrel({QStringLiteral("icon"), QStringLiteral("--banner"), QStringLiteral("-s90"),
                                    write(QStringLiteral("two.apk"), twoLaunchers())});
    QCOMPARE(none.status, 1);
    QVERIFY(none.errors.contains("there is no banner"));
}

void TestIconCommand::framesOfAnimatedIcons()
{
    const QString directory = m_directory.filePath(QStringLiteral("some/frames"));
    const ToolRun result =
        runSorrel({QStringLiteral("icon"), QStringLiteral("-s8"), QStringLiteral("--frames"), directory,
                   write(QStringLiteral("animated.apk"),
                         iconNamed(QStringLiteral("icon.xml"), {{QStringLiteral("icon.xml"), animation()}}))});
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.status, 0);
    QCOMPARE(result.output, QByteArray("frame-000.png\t100\nframe-001.png\t0\n"));
    QCOMPARE(QDir(directory).entryList(QDir::Files),
             QStringList({QStringLiteral("frame-000.png"), QStringLiteral("frame-001.png")}));
    QCOMPARE(QImage(directory + QStringLiteral("/frame-000.png")).pixel(4, 4), Red);
    QCOMPARE(QImage(directory + QStringLiteral("/frame-001.png")).pixel(4, 4), Blue);
}

void TestIconCommand::framesThatCannotBeWritten()
{
    const QString file = write(QStringLiteral("two.apk"), twoLaunchers());
    const ToolRun result = runSorrel({QStringLiteral("icon"), QStringLiteral("--frames"), file, file});
    QCOMPARE(result.status, 1);
    QCOMPARE(result.output, QByteArray());
    QVERIFY(result.errors.contains("the directory cannot be made"));
    const ToolRun none =
        runSorrel({QStringLiteral("icon"), QStringLiteral("--frames"), m_directory.filePath(QStringLiteral("none")),
                   write(QStringLiteral("none.apk"), iconNamed(QStringLiteral("missing.png"), {}))});
    QCOMPARE(none.status, 1);
    QVERIFY(!QFileInfo::exists(m_directory.filePath(QStringLiteral("none"))));
}

void TestIconCommand::wrongUsage_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("text");
    QTest::newRow("size 0") << QStringList{QStringLiteral("-s0")} << "'0' is no size in pixels.";
    QTest::newRow("a word") << QStringList{QStringLiteral("-s"), QStringLiteral("big")}
                            << "'big' is no size in pixels.";
    QTest::newRow("too large") << QStringList{QStringLiteral("-s1025")} << "Icons have at most 1024 pixels a side.";
    QTest::newRow("a high banner") << QStringList{QStringLiteral("-s577"), QStringLiteral("--banner")}
                                   << "Banners have at most 576 pixels of height.";
    QTest::newRow("a banner's frames") << QStringList{QStringLiteral("--banner"), QStringLiteral("--frames=x")}
                                       << "A banner has no frames.";
    QTest::newRow("shape") << QStringList{QStringLiteral("--shape"), QStringLiteral("star")}
                           << "'star' is no shape; there are circle, rounded, squircle and none.";
}

void TestIconCommand::wrongUsage()
{
    QFETCH(QStringList, options);
    QFETCH(QString, text);
    const ToolRun result =
        runSorrel(QStringList{QStringLiteral("icon")} + options + QStringList{sample("notes.aapt2.apk")});
    QCOMPARE(result.status, 2);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(QString::fromUtf8(result.errors), QStringLiteral("sorrel: %1\nTry 'sorrel icon --help'.\n").arg(text));
}

QTEST_GUILESS_MAIN(TestIconCommand)
#include "tst_icon_command.moc"
