// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "BinaryXml.h"
#include "DrawableFixture.h"
#include "Pictures.h"
#include "format/AndroidAttributes.h"
#include "format/XmlReader.h"
#include "icon/IconErrorTable.h"
#include "icon/IconRenderer.h"
#include "package/IconFileLookup.h"
#include "package/PackageData.h"
#include "picture/PictureFile.h"

#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

namespace {

constexpr quint32 First = 0x7f010000;
constexpr qint64 ColorId = 0x010101a5;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

QByteArray densityOf(int density)
{
    return ConfigBuilder().density(density).build();
}

QByteArray blueXml()
{
    XmlBuilder builder;
    builder.attributeId(latin("color"), ColorId);
    return builder.empty(latin("color"), {androidValue(latin("color"), 0x1c, Blue)}).build();
}

/// Icons: resources of a package, and its files.
struct Icons {
    explicit Icons(const PackageBuilder &package, const QStringList &strings = {},
                   Budget lookups = Budget(PackageData::MaxLookupWork, PackageData::MaxLookupBytes))
        : budget(lookups),
          resolver({QSharedPointer<const ResourceTable>(
                       new ResourceTable(TableBuilder().strings(strings).package(package).build()))},
                   Configuration::phone(160)),
          renderer(resolver, files),
          lookup(resolver, files, budget)
    {
    }

    static ResolvedValue reference(quint32 id)
    {
        ResolvedValue value;
        value.value = {ValueType::Reference, id};
        value.resource = id;
        return value;
    }
    QImage icon(const IconRequest &request, quint32 id = First) { return renderer.icon(reference(id), request); }
    QImage icon(int size, quint32 id = First) { return icon(IconRequest(size), id); }

    Files files;
    Budget budget;
    ResourceResolver resolver;
    IconRenderer renderer;
    IconFileLookup lookup;
};

// Painting may lose 1/255 of the coverage of a pixel at the edge.
bool isAll(const QImage &image, QRgb color)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (!isNear(image.pixel(x, y), color, 1))
                return false;
        }
    }
    return !image.isNull();
}

} // namespace

class TestIconRenderer : public QObject
{
    Q_OBJECT

private slots:
    void xmlOfTheNewestPlatformWins();
    void pictureOfTheNewestPlatformWins();
    void smallestPictureThatIsLargeEnough_data();
    void smallestPictureThatIsLargeEnough();
    void picturesThatAreNotSquareAreCentred();
    void xmlThatCannotBeDrawnIsReplaced();
    void referencesBetweenResources();
    void cyclesOfReferencesEnd();
    void coloursAreIcons();
    void namesTellNothing();
    void sizesOfIcons();
    void pathsAreIcons();
    void nightPrefersItsResources();
    void platformVersionsDecide_data();
    void platformVersionsDecide();
    void monochromeLayers();
    void devicePixelRatios_data();
    void devicePixelRatios();
    void iconFiles();
    void iconFilesAreLookedAtOnce();
    void iconFilesHaveABudgetForReading();
    void xmlFilesOfIconsHaveABudget();
    void iconFilesHaveABudgetForChecking();
    void iconFilesHaveABudgetForFinding();

    void everyFaultHasACodeAndAText();
    void errorPictureHasSides();
    void errorThereIsNoIcon();
    void errorResourceIsNoDrawable();
    void errorCannotBeReadOrDecoded();
};

void TestIconRenderer::xmlOfTheNewestPlatformWins()
{
    PackageBuilder package;
    package.type(TypeBuilder(1, densityOf(160)).value(0, String, 0))
        .type(TypeBuilder(1, ConfigBuilder().density(0xfffe).sdkVersion(26).build()).value(0, String, 1));
    Icons icons(package, {latin("red.png"), latin("blue.xml")});
    icons.files.add(latin("red.png"), picture(48, 48, 0xff0000));
    icons.files.add(latin("blue.xml"), blueXml());
    QVERIFY(isAll(icons.icon(48), Blue));
    QCOMPARE(described(icons.renderer.error()), QString());
}

void TestIconRenderer::pictureOfTheNewestPlatformWins()
{
    PackageBuilder package;
    package.type(TypeBuilder(1).value(0, String, 1)).type(TypeBuilder(1, densityOf(480)).value(0, String, 0));
    Icons icons(package, {latin("red.png"), latin("blue.xml")});
    icons.files.add(latin("red.png"), picture(48, 48, 0xff0000));
    icons.files.add(latin("blue.xml"), blueXml());
    QVERIFY(isAll(icons.icon(144), Red));
    QCOMPARE(described(icons.renderer.error()), QString());
}

void TestIconRenderer::smallestPictureThatIsLargeEnough_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QRgb>("color");
    QTest::newRow("smallest") << 1 << Red;
    QTest::newRow("just the smallest") << 48 << Red;
    QTest::newRow("the next") << 49 << Green;
    QTest::newRow("just the next") << 96 << Green;
    QTest::newRow("the largest") << 97 << Blue;
    QTest::newRow("larger than all") << 200 << Blue;
}

void TestIconRenderer::smallestPictureThatIsLargeEnough()
{
    QFETCH(int, size);
    QFETCH(QRgb, color);
    // The densities in the table do not matter.
    PackageBuilder package;
    package.type(TypeBuilder(1, densityOf(640)).value(0, String, 0))
        .type(TypeBuilder(1, densityOf(160)).value(0, String, 1))
        .type(TypeBuilder(1, densityOf(320)).value(0, String, 2));
    Icons icons(package, {latin("48"), latin("144"), latin("96")});
    icons.files.add(latin("48"), picture(48, 48, 0xff0000));
    icons.files.add(latin("96"), picture(96, 96, 0x00ff00));
    icons.files.add(latin("144"), picture(144, 144, 0x0000ff));
    const QImage image = icons.icon(size);
    QCOMPARE(image.size(), QSize(size, size));
    QVERIFY(isAll(image, color));
}

void TestIconRenderer::picturesThatAreNotSquareAreCentred()
{
    PackageBuilder package;
    Icons icons(package.type(TypeBuilder(1).value(0, String, 0)), {latin("wide")});
    icons.files.add(latin("wide"), picture(40, 20, 0xff0000));
    const QImage image = icons.icon(40);
    QCOMPARE(areaOf(image, Red), QRect(0, 10, 40, 20));
    QCOMPARE(image.format(), QImage::Format_ARGB32_Premultiplied);
}

void TestIconRenderer::xmlThatCannotBeDrawnIsReplaced()
{
    PackageBuilder package;
    package.type(TypeBuilder(1, densityOf(0xfffe)).value(0, String, 0))
        .type(TypeBuilder(1, densityOf(160)).value(0, String, 1));
    Icons icons(package, {latin("rainbow.xml"), latin("red.png")});
    icons.files.add(latin("rainbow.xml"), XmlBuilder().empty(latin("rainbow")).build());
    icons.files.add(latin("red.png"), picture(48, 48, 0xff0000));
    QVERIFY(isAll(icons.icon(48), Red));
    QCOMPARE(described(icons.renderer.error()), latin("Unsupported: unsupported drawable <rainbow>"));
    // The error is that of the last icon.
    icons.files.add(latin("rainbow.xml"), blueXml());
    QVERIFY(isAll(icons.icon(48), Blue));
    QCOMPARE(described(icons.renderer.error()), QString());
}

void TestIconRenderer::referencesBetweenResources()
{
    // On large screens the icon is another resource with a larger picture.
    PackageBuilder package;
    package.type(TypeBuilder(1, densityOf(160)).value(0, String, 0))
        .type(TypeBuilder(1, densityOf(480)).value(0, Reference, First + 1).value(1, String, 1));
    Icons icons(package, {latin("red"), latin("green")});
    icons.files.add(latin("red"), picture(48, 48, 0xff0000));
    icons.files.add(latin("green"), picture(144, 144, 0x00ff00));
    QVERIFY(isAll(icons.icon(48), Red));
    QVERIFY(isAll(icons.icon(144), Green));
    QCOMPARE(icons.lookup.files(Icons::reference(First)).size(), 2);
}

void TestIconRenderer::cyclesOfReferencesEnd()
{
    PackageBuilder package;
    Icons icons(package.type(TypeBuilder(1).value(0, Reference, First + 1).value(1, Reference, First)));
    QVERIFY(icons.icon(48).isNull());
    QVERIFY(icons.renderer.error().text().contains(latin("is no drawable")));
    QVERIFY(icons.lookup.files(Icons::reference(First)).isEmpty());
}

void TestIconRenderer::coloursAreIcons()
{
    PackageBuilder package;
    Icons icons(package.type(TypeBuilder(1).value(0, 0x1d, Green).value(1, Reference, 0x0106000b)));
    QVERIFY(isAll(icons.icon(10), Green));
    QVERIFY(isAll(icons.icon(10, First + 1), White));
    QCOMPARE(described(icons.renderer.error()), QString());
}

void TestIconRenderer::namesTellNothing()
{
    PackageBuilder package;
    package.type(TypeBuilder(1).value(0, String, 0).value(1, String, 1));
    Icons icons(package, {latin("r/a"), latin("r/b.xml")});
    icons.files.add(latin("r/a"), blueXml());
    icons.files.add(latin("r/b.xml"), picture(48, 48, 0xff0000));
    QVERIFY(isAll(icons.icon(48), Blue));
    QVERIFY(isAll(icons.icon(48, First + 1), Red));
}

void TestIconRenderer::sizesOfIcons()
{
    PackageBuilder package;
    package.type(TypeBuilder(1).value(0, String, 0).value(1, String, 1));
    Icons icons(package, {latin("xml"), latin("png")});
    icons.files.add(latin("xml"), blueXml());
    icons.files.add(latin("png"), picture(48, 48, 0xff0000));
    for (const int size : {int(IconRenderer::MinSize), 2, int(IconRenderer::MaxSize)}) {
        QVERIFY(isAll(icons.icon(size), Blue));
        QCOMPARE(icons.icon(size).size(), QSize(size, size));
        QVERIFY(isAll(icons.icon(size, First + 1), Red));
    }
}

void TestIconRenderer::pathsAreIcons()
{
    Icons icons{PackageBuilder()};
    icons.files.add(latin("red"), picture(48, 48, 0xff0000));
    ResolvedValue path;
    path.value = {ValueType::String, 0};
    path.text = latin("red");
    QVERIFY(isAll(icons.renderer.icon(path, IconRequest(48)), Red));
    QCOMPARE(icons.lookup.files(path).size(), 1);
}

void TestIconRenderer::nightPrefersItsResources()
{
    constexpr int UiMode = 29;
    constexpr int Night = 0x20;
    // The icon is XML with a colour resource, which has another value at night.
    PackageBuilder package;
    package.type(TypeBuilder(1).value(0, String, 0).value(1, 0x1c, Green))
        .type(TypeBuilder(1, ConfigBuilder().u8(UiMode, Night).build()).value(1, 0x1c, Blue));
    Icons icons(package, {latin("icon.xml")});
    XmlBuilder xml;
    xml.attributeId(latin("color"), ColorId);
    icons.files.add(latin("icon.xml"),
                    xml.empty(latin("color"), {androidReference(latin("color"), First + 1)}).build());
    IconRequest request(48);
    QVERIFY(isAll(icons.icon(request), Green));
    request.setNight(true);
    QVERIFY(isAll(icons.icon(request), Blue));
    request.setNight(false);
    QVERIFY(isAll(icons.icon(request), Green));
}

void TestIconRenderer::platformVersionsDecide_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<QRgb>("color");
    QTest::newRow("the newest") << 0 << Blue;
    QTest::newRow("less than any") << -1 << Blue;
    QTest::newRow("the oldest") << 1 << Red;
    QTest::newRow("just before the first") << 20 << Red;
    QTest::newRow("the first") << 21 << Green;
    QTest::newRow("just before the second") << 25 << Green;
    QTest::newRow("the second") << 26 << Blue;
    QTest::newRow("a newer one") << 35 << Blue;
}

void TestIconRenderer::platformVersionsDecide()
{
    QFETCH(int, version);
    QFETCH(QRgb, color);
    const auto since = [](int sdkVersion) { return ConfigBuilder().sdkVersion(sdkVersion).build(); };
    PackageBuilder package;
    package.type(TypeBuilder(1).value(0, String, 0))
        .type(TypeBuilder(1, since(21)).value(0, String, 1))
        .type(TypeBuilder(1, since(26)).value(0, String, 2));
    Icons icons(package, {latin("red.png"), latin("green.png"), latin("blue.xml")});
    icons.files.add(latin("red.png"), picture(48, 48, 0xff0000));
    icons.files.add(latin("green.png"), picture(48, 48, 0x00ff00));
    icons.files.add(latin("blue.xml"), blueXml());
    IconRequest request(48);
    request.setPlatformVersion(version);
    const QImage image = icons.icon(request);
    QVERIFY(isAll(image, color));
    QVERIFY(!icons.renderer.error());
}

void TestIconRenderer::monochromeLayers()
{
    const auto icon = [](bool hasMonochrome) {
        XmlBuilder builder;
        builder.attributeId(latin("drawable"), Attr::Drawable).start(latin("adaptive-icon"));
        builder.empty(latin("background"), {androidReference(latin("drawable"), First + 2)});
        if (hasMonochrome)
            builder.empty(latin("monochrome"), {androidReference(latin("drawable"), First + 3)});
        return builder.end(latin("adaptive-icon")).build();
    };
    PackageBuilder package;
    package.type(
        TypeBuilder(1).value(0, String, 0).value(1, String, 1).value(2, 0x1c, Red).value(3, 0x1c, qint64(0x80000000)));
    Icons icons(package, {latin("with.xml"), latin("without.xml")});
    icons.files.add(latin("with.xml"), icon(true));
    icons.files.add(latin("without.xml"), icon(false));
    IconRequest request(48);
    QVERIFY(isAll(icons.icon(request), Red));
    request.setMonochrome(true);
    QVERIFY(isAll(icons.icon(request), 0x80000000));
    QVERIFY(isAll(icons.icon(request, First + 1), Red));
    // Not cut to the mask.
    request.setMask(IconMask::Circle);
    QVERIFY(isAll(icons.icon(request), 0x80000000));
    QCOMPARE(icons.icon(request, First + 1).pixel(0, 0), Nothing);
    QVERIFY(!icons.renderer.error());
}

void TestIconRenderer::devicePixelRatios_data()
{
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<int>("pixels");
    QTest::newRow("none") << 1.0 << 24;
    QTest::newRow("twice") << 2.0 << 48;
    QTest::newRow("between") << 1.5 << 36;
    QTest::newRow("the largest") << 1024.0 / 24 << 1024;
    QTest::newRow("too large") << 1025.0 / 24 << 0;
    QTest::newRow("nothing") << 0.0 << 0;
    QTest::newRow("less than nothing") << -2.0 << 0;
    QTest::newRow("infinite") << qInf() << 0;
    QTest::newRow("no number") << qQNaN() << 0;
}

void TestIconRenderer::devicePixelRatios()
{
    QFETCH(qreal, ratio);
    QFETCH(int, pixels);
    // The picture follows the pixels, not the size.
    PackageBuilder package;
    package.type(TypeBuilder(1, densityOf(160)).value(0, String, 0))
        .type(TypeBuilder(1, densityOf(320)).value(0, String, 1));
    Icons icons(package, {latin("24"), latin("1024")});
    icons.files.add(latin("24"), picture(24, 24, 0xff0000));
    icons.files.add(latin("1024"), picture(1024, 1024, 0x00ff00));
    IconRequest request(24);
    request.setDevicePixelRatio(ratio);
    const QImage image = icons.icon(request);
    QCOMPARE(image.size(), QSize(pixels, pixels));
    if (pixels > 0) {
        QCOMPARE(image.devicePixelRatio(), ratio);
        QVERIFY(isAll(image, pixels == 24 ? Red : Green));
    } else {
        QCOMPARE(icons.renderer.error().code(), IconError::Code::InvalidSize);
    }
}

void TestIconRenderer::iconFiles()
{
    PackageBuilder package;
    package.type(TypeBuilder(1, densityOf(480)).value(0, String, 0))
        .type(TypeBuilder(1, densityOf(160)).value(0, String, 1))
        .type(TypeBuilder(1, densityOf(320)).value(0, String, 1))
        .type(TypeBuilder(1, densityOf(240)).value(0, String, 2))
        .type(TypeBuilder(1, densityOf(120)).value(0, String, 3))
        .type(TypeBuilder(1, densityOf(0xfffe)).value(0, String, 4));
    Icons icons(package, {latin("large"), latin("small"), latin("text"), latin("nowhere"), latin("xml")});
    icons.files.add(latin("large"), picture(144, 140, 0xff0000));
    icons.files.add(latin("small"), picture(48, 48, 0xff0000));
    icons.files.add(latin("text"), QByteArray("text"));
    icons.files.add(latin("xml"), blueXml());
    const QVector<IconFileLookup::File> files = icons.lookup.files(Icons::reference(First));
    QCOMPARE(files.size(), 3);
    QCOMPARE(files.at(0).path, latin("xml"));
    QCOMPARE(files.at(0).kind, latin("color"));
    QVERIFY(files.at(0).size.isEmpty());
    QCOMPARE(files.at(0).density, 0xfffe);
    QCOMPARE(files.at(1).path, latin("small"));
    QCOMPARE(files.at(1).kind, latin("png"));
    QCOMPARE(files.at(1).density, 160);
    QCOMPARE(files.at(2).path, latin("large"));
    QCOMPARE(files.at(2).size, QSize(144, 140));
}

void TestIconRenderer::iconFilesAreLookedAtOnce()
{
    PackageBuilder package;
    package.type(TypeBuilder(1, densityOf(160)).value(0, String, 0).value(1, String, 0))
        .type(TypeBuilder(1, densityOf(320)).value(0, String, 1).value(1, String, 2));
    Icons icons(package, {latin("small"), latin("nowhere"), latin("large")});
    icons.files.add(latin("small"), picture(48, 48, 0xff0000));
    icons.files.add(latin("large"), picture(96, 96, 0xff0000));
    QCOMPARE(icons.lookup.files(Icons::reference(First)).size(), 1);
    QCOMPARE(icons.files.reads(), 2);
    // Another launcher has the same icon, or an icon that shares a file.
    QCOMPARE(icons.lookup.files(Icons::reference(First)).size(), 1);
    QCOMPARE(icons.files.reads(), 2);
    QCOMPARE(icons.lookup.files(Icons::reference(First + 1)).size(), 2);
    QCOMPARE(icons.files.reads(), 3);
    ResolvedValue path;
    path.value = {ValueType::String, 0};
    for (const char *text : {"small", "large", "nowhere"}) {
        path.text = latin(text);
        icons.lookup.files(path);
    }
    QCOMPARE(icons.files.reads(), 3);
}

namespace {

constexpr qint64 Plenty = 1 << 30;

// The work of finding the file of an icon, whose path has one character.
constexpr qint64 workOfFinding(int typeChunks = 1)
{
    return Budget::LookupWork + Budget::ValueWork * typeChunks + Budget::ByteWork;
}

// The number of launchers that have an icon file. Each of @p launchers launchers has an icon of its own; all files are
// @p file.
int launchersWithAFile(int launchers, const QByteArray &file,
                       Budget budget = Budget(PackageData::MaxLookupWork, PackageData::MaxLookupBytes),
                       int typeChunks = 1)
{
    TypeBuilder type(1);
    QStringList paths;
    for (int i = 0; i < launchers; ++i) {
        type.value(i, String, i);
        paths.append(QString::number(i));
    }
    PackageBuilder package;
    package.type(type).chunk(TypeBuilder(1, densityOf(160)).build().repeated(typeChunks - 1));
    Icons icons(package, paths, budget);
    for (const QString &path : paths)
        icons.files.add(path, file);
    int found = 0;
    for (int i = 0; i < launchers; ++i)
        found += int(icons.lookup.files(Icons::reference(First + quint32(i))).size());
    return found;
}

} // namespace

void TestIconRenderer::iconFilesHaveABudgetForReading()
{
    const QByteArray png = picture(48, 48, 0xff0000);
    const QByteArray large = png + QByteArray(int(PictureFile::MaxBytes) - png.size(), '\0');
    QCOMPARE(launchersWithAFile(1, large), 1);
    QCOMPARE(launchersWithAFile(1, large + '\0'), 0);
    const qint64 each = workOfFinding() + png.size();
    // A file is inspected as long as any work is left.
    QCOMPARE(launchersWithAFile(5, png, Budget(5 * each + 1, Plenty)), 5);
    QCOMPARE(launchersWithAFile(5, png, Budget(5 * each, Plenty)), 4);
    // Results that exceed the budget of bytes are found again.
    QCOMPARE(launchersWithAFile(5, png, Budget(5 * each + 1, 0)), 5);
}

void TestIconRenderer::xmlFilesOfIconsHaveABudget()
{
    const QByteArray xml = binaryXml(element(latin("layer-list")));
    const qint64 characters = XmlReader(xml).characters();
    const qint64 each = workOfFinding() + xml.size() + Budget::DocumentByteWork * (xml.size() + characters);
    QCOMPARE(launchersWithAFile(5, xml, Budget(5 * each, Plenty)), 5);
    // The characters are known when the document is read.
    const qint64 last = Budget::DocumentByteWork * characters;
    QCOMPARE(launchersWithAFile(5, xml, Budget(5 * each - last, Plenty)), 5);
    QCOMPARE(launchersWithAFile(5, xml, Budget(5 * each - last - 1, Plenty)), 4);
}

void TestIconRenderer::iconFilesHaveABudgetForChecking()
{
    const QByteArray file = webpOfManyCodes(64, 100);
    const qint64 steps = PictureFile(file).steps();
    const qint64 each = workOfFinding() + file.size() + steps;
    // The file that takes the last of the budget is inspected.
    QCOMPARE(launchersWithAFile(5, file, Budget(5 * each - steps + 1, Plenty)), 5);
    QCOMPARE(launchersWithAFile(5, file, Budget(5 * each - steps, Plenty)), 4);
}

void TestIconRenderer::iconFilesHaveABudgetForFinding()
{
    constexpr int Chunks = 1 << 12;
    const QByteArray png = picture(48, 48, 0xff0000);
    const qint64 each = workOfFinding(Chunks) + png.size();
    QCOMPARE(launchersWithAFile(5, png, Budget(5 * each + 1, Plenty), Chunks), 5);
    QCOMPARE(launchersWithAFile(5, png, Budget(4 * each + workOfFinding(Chunks) - 1, Plenty), Chunks), 4);
}

void TestIconRenderer::everyFaultHasACodeAndAText()
{
    QVERIFY(!IconErrorTable::iconError({}));
    QSet<QString> texts;
    for (int fault = int(DrawableFault::None) + 1; fault < int(DrawableFault::Count); ++fault) {
        const IconError error = IconErrorTable::iconError({DrawableFault(fault), latin("%1 it")});
        QVERIFY2(error, qPrintable(QString::number(fault)));
        QVERIFY(!error.text().isEmpty());
        texts.insert(error.text());
    }
    QCOMPARE(int(texts.size()), int(DrawableFault::Count) - 1);
    QCOMPARE(IconErrorTable::iconError({DrawableFault::NoLayers, latin("%1 it")}).text(),
             latin("<%1 it> has no layers"));
}

void TestIconRenderer::errorPictureHasSides()
{
    Icons icons{PackageBuilder()};
    for (const int size : {IconRenderer::MinSize - 1, IconRenderer::MaxSize + 1, -1}) {
        QVERIFY(icons.icon(size).isNull());
        QCOMPARE(described(icons.renderer.error()), latin("InvalidSize: a picture has 1 to 1024 pixels a side"));
    }
}

void TestIconRenderer::errorThereIsNoIcon()
{
    Icons icons{PackageBuilder()};
    QVERIFY(icons.renderer.icon({}, IconRequest(48)).isNull());
    QCOMPARE(described(icons.renderer.error()), latin("Missing: there is no icon"));
}

void TestIconRenderer::errorResourceIsNoDrawable()
{
    PackageBuilder package;
    Icons icons(package.type(TypeBuilder(1).value(0, Integer, 7)));
    QVERIFY(icons.icon(48).isNull());
    QCOMPARE(described(icons.renderer.error()), latin("NotDrawable: resource 0x7f010000 is no drawable"));
    QVERIFY(icons.icon(48, First + 1).isNull());
    QCOMPARE(described(icons.renderer.error()), latin("NotDrawable: resource 0x7f010001 is no drawable"));
}

void TestIconRenderer::errorCannotBeReadOrDecoded()
{
    PackageBuilder package;
    Icons icons(package.type(TypeBuilder(1).value(0, String, 0).value(1, String, 1)),
                {latin("text"), latin("nowhere")});
    icons.files.add(latin("text"), QByteArray("text"));
    QVERIFY(icons.icon(48).isNull());
    QCOMPARE(described(icons.renderer.error()), latin("Unreadable: text cannot be read or decoded"));
    QVERIFY(icons.icon(48, First + 1).isNull());
    QCOMPARE(described(icons.renderer.error()), latin("Unreadable: nowhere cannot be read or decoded"));
}

QTEST_GUILESS_MAIN(TestIconRenderer)
#include "tst_iconrenderer.moc"
