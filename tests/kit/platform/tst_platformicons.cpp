// SPDX-License-Identifier: LGPL-2.1-or-later
#include "KitIcons.h"
#include "PlatformFixture.h"

#include "package/PackageAccess.h"
#include "platform/PlatformReferences.h"

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Package.h>
#include <SorrelKit/Platform.h>

#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;
using SorrelKit::DrawableRenderer;
using SorrelKit::Entry;
using SorrelKit::IconError;
using SorrelKit::IconFile;
using SorrelKit::IconRequest;
using SorrelKit::Package;
using SorrelKit::PackageAccess;
using SorrelKit::PackageDataPointer;
using SorrelKit::Platform;
using SorrelKit::PlatformReferences;

namespace {

constexpr QRgb Red = 0xffff0000u;
constexpr QRgb Green = 0xff00ff00u;
constexpr int Size = 48;
constexpr quint32 OwnPicture = 0x7f010000;
constexpr quint32 OwnAlias = 0x7f010001;
constexpr quint32 OwnLayers = 0x7f010002;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

XmlBuilder drawables()
{
    XmlBuilder builder;
    builder.attributeId(latin("src"), Attr::Src)
        .attributeId(latin("drawable"), Attr::Drawable)
        .attributeId(latin("color"), Attr::Color)
        .startNamespace(latin("android"), androidUri);
    return builder;
}

QByteArray bitmap(const Attribute &source)
{
    return drawables().empty(latin("bitmap"), {source}).build();
}

// A package with a launcher whose icon is @p icon, and with a picture at the path that the platform has one at.
QByteArray packageWithIcon(quint32 icon, const QByteArray &layers)
{
    const QByteArray table =
        TableBuilder()
            .strings({latin("res/icon.png"), latin("res/layers.xml")})
            .package(
                PackageBuilder()
                    .types({latin("drawable")})
                    .keys({latin("icon")})
                    .type(TypeBuilder(1).value(0, String, 0).value(1, Reference, PlatformIcon).value(2, String, 1)))
            .build();
    XmlBuilder manifest = packageManifest();
    manifest.start(latin("manifest"), {plainText(latin("package"), latin("org.example.app"))})
        .start(latin("application"), {androidReference(latin("icon"), icon)})
        .start(latin("activity"), {androidText(latin("name"), latin(".Main"))})
        .launcherFilter()
        .end(latin("activity"))
        .end(latin("application"))
        .end(latin("manifest"));
    return package(table, manifest.build(),
                   {{latin("res/icon.png"), picture(Size, Size, Green)}, {latin("res/layers.xml"), layers}});
}

QRgb middle(const QImage &image)
{
    return image.isNull() ? 0 : image.pixel(image.width() / 2, image.height() / 2);
}

} // namespace

class TestPlatformIcons : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void iconIsThatOfItsArchive_data();
    void iconIsThatOfItsArchive();
    void bothArchivesAreInOneIcon();
    void withoutAPlatformTheResourceIsNamed_data();
    void withoutAPlatformTheResourceIsNamed();
    void partOfAnIconIsNamed();
    void filesAreOfTheirArchive();
    void platformMayChange();
    void missingFileOfThePlatformIsNotThePackages();
    void anyResourceOfThePlatformIsDrawn();
    void packageKnowsWhatItNeeds_data();
    void packageKnowsWhatItNeeds();
    void needsHaveABudget();
    void filesForNeedsAreLimited();
    void hostilePlatformsStayWithinBounds();

private:
    QString file(const char *name) const { return m_directory.filePath(latin(name)); }
    QByteArray platform(const QByteArray &shape) const
    {
        return package(platformTable(), platformManifest(),
                       {{latin("res/icon.png"), picture(Size, Size, Red)}, {latin("res/shape.xml"), shape}});
    }

    QTemporaryDir m_directory;
};

void TestPlatformIcons::initTestCase()
{
    writeFile(file("framework.apk"), platform(bitmap(androidReference(latin("src"), PlatformIcon))));
}

void TestPlatformIcons::iconIsThatOfItsArchive_data()
{
    QTest::addColumn<QByteArray>("shape"); // of the platform
    QTest::addColumn<QByteArray>("layers");
    QTest::addColumn<quint32>("icon");
    QTest::addColumn<QRgb>("color");
    const QByteArray ownBitmap = bitmap(androidReference(latin("src"), OwnPicture));
    const QByteArray platformBitmap = bitmap(androidReference(latin("src"), PlatformIcon));
    const QByteArray literalBitmap = bitmap(androidText(latin("src"), latin("res/icon.png")));
    const QByteArray color =
        drawables().empty(latin("color"), {androidReference(latin("color"), PlatformColor)}).build();
    QTest::newRow("own picture") << QByteArray() << QByteArray() << OwnPicture << Green;
    QTest::newRow("picture") << QByteArray() << QByteArray() << PlatformIcon << Red;
    QTest::newRow("alias") << QByteArray() << QByteArray() << OwnAlias << Red;
    QTest::newRow("own file, own picture") << QByteArray() << ownBitmap << OwnLayers << Green;
    QTest::newRow("own file, picture") << QByteArray() << platformBitmap << OwnLayers << Red;
    QTest::newRow("own file, path") << QByteArray() << literalBitmap << OwnLayers << Green;
    QTest::newRow("file, picture") << platformBitmap << QByteArray() << PlatformXml << Red;
    QTest::newRow("file, path") << literalBitmap << QByteArray() << PlatformXml << Red;
    QTest::newRow("file, color") << color << QByteArray() << PlatformXml << QRgb(ColorOfPlatform);
    QTest::newRow("own file, color") << QByteArray() << color << OwnLayers << QRgb(ColorOfPlatform);
    QTest::newRow("color") << QByteArray() << QByteArray() << PlatformColor << QRgb(ColorOfPlatform);
}

void TestPlatformIcons::iconIsThatOfItsArchive()
{
    QFETCH(QByteArray, shape);
    QFETCH(QByteArray, layers);
    QFETCH(quint32, icon);
    writeFile(file("row.apk"), platform(shape));
    PackageDevice device(packageWithIcon(icon, layers));
    Package package(&device);
    package.setPlatform(Platform(file("row.apk")));
    QString error;
    QTEST(middle(iconOf(package, Size, SorrelKit::IconMask::None, &error)), "color");
    QCOMPARE(error, QString());
}

void TestPlatformIcons::bothArchivesAreInOneIcon()
{
    XmlBuilder layers = drawables();
    layers.start(latin("layer-list"))
        .empty(latin("item"), {androidReference(latin("drawable"), OwnPicture)})
        .start(latin("item"))
        .start(latin("inset"), {androidReference(latin("drawable"), PlatformXml)})
        .end(latin("inset"))
        .end(latin("item"))
        .end(latin("layer-list"));
    PackageDevice device(packageWithIcon(OwnLayers, layers.build()));
    Package package(&device);
    package.setPlatform(Platform(file("framework.apk")));
    // The last layer is on top.
    QCOMPARE(middle(iconOf(package, Size)), Red);
    XmlBuilder reversed = drawables();
    reversed.start(latin("layer-list"))
        .empty(latin("item"), {androidReference(latin("drawable"), PlatformIcon)})
        .empty(latin("item"), {androidReference(latin("drawable"), OwnPicture)})
        .end(latin("layer-list"));
    PackageDevice other(packageWithIcon(OwnLayers, reversed.build()));
    Package second(&other);
    second.setPlatform(Platform(file("framework.apk")));
    QCOMPARE(middle(iconOf(second, Size)), Green);
}

void TestPlatformIcons::withoutAPlatformTheResourceIsNamed_data()
{
    QTest::addColumn<quint32>("icon");
    QTest::addColumn<QByteArray>("layers");
    const QByteArray source = bitmap(androidReference(latin("src"), PlatformIcon));
    QTest::newRow("the icon") << PlatformIcon << QByteArray();
    QTest::newRow("an alias") << OwnAlias << QByteArray();
    QTest::newRow("a picture in a file") << OwnLayers << source;
}

void TestPlatformIcons::withoutAPlatformTheResourceIsNamed()
{
    QFETCH(quint32, icon);
    QFETCH(QByteArray, layers);
    const QByteArray bytes = packageWithIcon(icon, layers);
    const QByteArray emptyPlatform =
        package(TableBuilder().package(PackageBuilder(0x01, latin("android"))).build(), platformManifest());
    writeFile(file("empty.apk"), emptyPlatform);
    for (const Platform &platform : {Platform(), Platform(file("missing.apk")), Platform(file("empty.apk"))}) {
        PackageDevice device(bytes);
        Package package(&device);
        package.setPlatform(platform);
        DrawableRenderer renderer(package);
        QVERIFY(renderer.icon(IconRequest(Size)).isNull());
        QCOMPARE(renderer.error().code(), IconError::Code::NeedsPlatform);
        QCOMPARE(renderer.error().text(), latin("needs the platform's resource 0x01080000"));
    }
}

void TestPlatformIcons::partOfAnIconIsNamed()
{
    XmlBuilder layers = drawables();
    layers.start(latin("layer-list"))
        .empty(latin("item"), {androidReference(latin("drawable"), OwnPicture)})
        .empty(latin("item"), {androidReference(latin("drawable"), PlatformIcon)})
        .end(latin("layer-list"));
    PackageDevice device(packageWithIcon(OwnLayers, layers.build()));
    const Package package(&device);
    DrawableRenderer renderer(package);
    QCOMPARE(middle(renderer.icon(IconRequest(Size))), Green);
    QCOMPARE(renderer.error().code(), IconError::Code::NeedsPlatform);
}

void TestPlatformIcons::filesAreOfTheirArchive()
{
    const auto files = [this](quint32 icon, bool hasPlatform) {
        PackageDevice device(packageWithIcon(icon, QByteArray()));
        Package package(&device);
        if (hasPlatform)
            package.setPlatform(Platform(file("framework.apk")));
        QStringList texts;
        for (const IconFile &found : package.launchers().constFirst().iconFiles())
            texts.append(found.path() + (found.isOfPlatform() ? latin(" of the platform") : QString()));
        return texts;
    };
    QCOMPARE(files(OwnPicture, true), QStringList(latin("res/icon.png")));
    QCOMPARE(files(OwnAlias, true), QStringList(latin("res/icon.png of the platform")));
    QCOMPARE(files(PlatformXml, true), QStringList(latin("res/shape.xml of the platform")));
    QCOMPARE(files(OwnAlias, false), QStringList());
}

void TestPlatformIcons::platformMayChange()
{
    PackageDevice device(packageWithIcon(OwnAlias, QByteArray()));
    Package package(&device);
    const Entry launcher = package.launchers().constFirst();
    QVERIFY(launcher.iconFiles().isEmpty());
    package.setPlatform(Platform(file("framework.apk")));
    QCOMPARE(launcher.iconFiles().size(), 1);
    package.setPlatform(Platform());
    QVERIFY(launcher.iconFiles().isEmpty());
    QVERIFY(iconOf(launcher, Size).isNull());
}

void TestPlatformIcons::missingFileOfThePlatformIsNotThePackages()
{
    writeFile(file("bare.apk"), package(platformTable(), platformManifest()));
    PackageDevice device(packageWithIcon(OwnAlias, QByteArray()));
    Package package(&device);
    package.setPlatform(Platform(file("bare.apk")));
    DrawableRenderer renderer(package);
    QVERIFY(renderer.icon(IconRequest(Size)).isNull());
    QCOMPARE(renderer.error().code(), IconError::Code::Unreadable);
}

void TestPlatformIcons::anyResourceOfThePlatformIsDrawn()
{
    PackageDevice device(packageWithIcon(OwnPicture, QByteArray()));
    Package package(&device);
    package.setPlatform(Platform(file("framework.apk")));
    DrawableRenderer renderer(package);
    QCOMPARE(middle(renderer.drawable(PlatformXml, IconRequest(Size))), Red);
    QCOMPARE(middle(renderer.drawable(OwnPicture, IconRequest(Size))), Green);
}

void TestPlatformIcons::packageKnowsWhatItNeeds_data()
{
    QTest::addColumn<quint32>("icon");
    QTest::addColumn<QByteArray>("layers");
    QTest::addColumn<QList<quint32>>("ids");
    XmlBuilder both = drawables();
    both.start(latin("layer-list"))
        .empty(latin("item"), {androidReference(latin("drawable"), PlatformXml)})
        .empty(latin("item"), {androidValue(latin("color"), int(ValueType::Attribute), 0x01010435)})
        .empty(latin("item"), {androidReference(latin("drawable"), OwnLayers)})
        .empty(latin("item"), {androidReference(latin("drawable"), OwnAlias)})
        .end(latin("layer-list"));
    const QByteArray whole = both.build();
    QTest::newRow("nothing") << OwnPicture << whole << QList<quint32>();
    QTest::newRow("the icon") << PlatformIcon << whole << QList<quint32>{PlatformIcon};
    QTest::newRow("an alias") << OwnAlias << whole << QList<quint32>{PlatformIcon};
    QTest::newRow("a file, itself within it")
        << OwnLayers << whole << QList<quint32>{0x01010435, PlatformIcon, PlatformXml};
    QTest::newRow("a file that is cut") << OwnLayers << whole.left(whole.size() / 2) << QList<quint32>();
    QTest::newRow("no file") << OwnLayers << QByteArray() << QList<quint32>();
}

void TestPlatformIcons::packageKnowsWhatItNeeds()
{
    QFETCH(quint32, icon);
    QFETCH(QByteArray, layers);
    PackageDevice device(packageWithIcon(icon, layers));
    Package package(&device);
    QTEST(package.platformResources(), "ids");
    package.setPlatform(Platform(file("framework.apk")));
    QTEST(package.platformResources(), "ids");
    QCOMPARE(Package().platformResources(), QList<quint32>());
}

void TestPlatformIcons::needsHaveABudget()
{
    constexpr int Items = 2000;
    XmlBuilder layers = drawables();
    layers.start(latin("layer-list"));
    for (int i = 0; i < Items; ++i)
        layers.empty(latin("item"), {androidReference(latin("drawable"), PlatformIcon + quint32(i))});
    const QByteArray document = layers.end(latin("layer-list")).build();
    PackageDevice device(packageWithIcon(OwnLayers, document));
    const PackageDataPointer data = PackageAccess::data(Package(&device));
    const auto found = [&](qint64 work, qint64 bytes) {
        Budget budget(work, bytes);
        return PlatformReferences(data->resolver(), data->files(), budget).ids(data->manifest().root()).size();
    };
    constexpr qint64 Much = 1 << 28;
    QCOMPARE(int(found(Much, Much)), Items);
    QCOMPARE(int(found(0, Much)), 0);
    QCOMPARE(int(found(Much, 0)), 0);
    QVERIFY(int(found(Much, PlatformReferences::IdBytes * Items / 2)) < Items / 2);
    QVERIFY(int(found(Budget::DocumentByteWork * document.size() / 2, Much)) == 0);
}

void TestPlatformIcons::filesForNeedsAreLimited()
{
    const QByteArray document = bitmap(androidReference(latin("src"), PlatformIcon));
    const auto ids = [&](qint64 size) {
        const QByteArray padding(int(size - document.size()), '\0');
        PackageDevice device(packageWithIcon(OwnLayers, document + padding));
        return Package(&device).platformResources();
    };
    QCOMPARE(ids(PlatformReferences::MaxFileBytes), QList<quint32>{PlatformIcon});
    QCOMPARE(ids(PlatformReferences::MaxFileBytes + 1), QList<quint32>());
}

void TestPlatformIcons::hostilePlatformsStayWithinBounds()
{
    // The platform's file shows itself.
    writeFile(file("cycle.apk"),
              platform(drawables().empty(latin("inset"), {androidReference(latin("drawable"), PlatformXml)}).build()));
    PackageDevice device(packageWithIcon(PlatformXml, QByteArray()));
    Package cyclic(&device);
    cyclic.setPlatform(Platform(file("cycle.apk")));
    DrawableRenderer cycle(cyclic);
    QVERIFY(cycle.icon(IconRequest(Size)).isNull());
    QCOMPARE(cycle.error().code(), IconError::Code::TooMuch);

    const QByteArray whole = platform(bitmap(androidReference(latin("src"), PlatformIcon)));
    for (int at = 0; at < whole.size(); ++at) {
        QByteArray damaged = whole;
        damaged[at] = char(~damaged.at(at));
        writeFile(file("damaged.apk"), damaged);
        PackageDevice application(packageWithIcon(PlatformXml, QByteArray()));
        Package package(&application);
        package.setPlatform(Platform(file("damaged.apk")));
        DrawableRenderer renderer(package);
        const QImage image = renderer.icon(IconRequest(Size));
        QVERIFY(!image.isNull() || renderer.error());
    }
}

QTEST_GUILESS_MAIN(TestPlatformIcons)
#include "tst_platformicons.moc"
