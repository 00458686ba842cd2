// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "BinaryXml.h"
#include "Bounds.h"
#include "Bytes.h"
#include "DrawableFixture.h"
#include "KitIcons.h"
#include "PackageWalker.h"
#include "Pictures.h"
#include "drawable/source/PictureCache.h"
#include "format/AndroidAttributes.h"
#include "format/ResourceTypes.h"
#include "format/XmlReader.h"
#include "icon/IconRenderer.h"
#include "limits/Limits.h"
#include "package/PackageData.h"
#include "package/SetReader.h"

#include <SorrelKit/Package.h>

#include <QBuffer>
#include <QtTest>

#include <cmath>
#include <functional>
#include <limits>

using namespace fixture;
using namespace SorrelKit;

/*
 * Packages made to overflow the stack, to take gigabytes, or to take minutes. Each is loaded in a process of its own
 * with a small stack, and every call that a host makes has to stay within the bounds for any input. A single call of
 * DrawableRenderer::icon() may use up a bound, so many icons are requested only where each is small.
 */

namespace {

constexpr unsigned SmallStack = 512 << 10;
constexpr int IconSize = 48;
constexpr int AllIcons = std::numeric_limits<int>::max();
constexpr qint64 FirstString = 0x7f010000;
constexpr qint64 IconResource = 0x7f020000;
constexpr int StringType = 1;
constexpr int DrawableType = 2;
constexpr int ColorType = 3;

const QString icon = QStringLiteral("icon");
const QString label = QStringLiteral("label");
const QString enabled = QStringLiteral("enabled");
const QString item = QStringLiteral("item");

void ask(const QByteArray &bytes, int iconCount)
{
    PackageDevice device(bytes);
    if (visit(Package(&device), iconCount, IconSize) < 0)
        qFatal("an icon has another size or format");
}

using AttributesOf = std::function<QVector<fixture::Attribute>(int)>;

// A manifest of launchers. Each has its own activity name and further attributes.
QByteArray launchers(int count, const AttributesOf &attributesOf)
{
    const QString activity = QStringLiteral("activity");
    XmlBuilder builder = XmlBuilder::manifest(Encoding::Utf8);
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))})
        .start(QStringLiteral("application"));
    for (int i = 0; i < count; ++i) {
        QVector<fixture::Attribute> attributes{androidText(QStringLiteral("name"), QStringLiteral(".A%1").arg(i))};
        attributes += attributesOf(i);
        builder.start(activity, attributes).launcherFilter().end(activity);
    }
    return builder.end(QStringLiteral("application")).end(QStringLiteral("manifest")).build();
}

// The same; the attributes of launcher n refer to entry n of the first type.
QByteArray launchersThatRefer(int count, const QStringList &names)
{
    return launchers(count, [&](int i) {
        QVector<fixture::Attribute> attributes;
        for (const QString &name : names)
            attributes.append(androidReference(name, FirstString + i));
        return attributes;
    });
}

QByteArray oneLauncher(const QStringList &names, qint64 resource)
{
    return launchers(1, [&](int) {
        QVector<fixture::Attribute> attributes;
        for (const QString &name : names)
            attributes.append(androidReference(name, resource));
        return attributes;
    });
}

PackageBuilder threeTypes()
{
    return PackageBuilder().types({QStringLiteral("string"), QStringLiteral("drawable"), QStringLiteral("color")});
}

QByteArray table(const PackageBuilder &package, const QStringList &strings = {QStringLiteral("text")})
{
    return TableBuilder().strings(strings).package(package).build();
}

QByteArray localeOf(int number)
{
    const char language[] = {char('a' + number % 26), char('a' + number / 26 % 26), 0};
    const char country[] = {char('a' + number / 676 % 26), char('a' + number / 17576 % 26), 0};
    return ConfigBuilder(16).locale(language, country).build();
}

// Chunks in which the first entries have values in many locales. @p addValue adds the value of a locale and an entry.
PackageBuilder inLocales(int locales, int entries, const std::function<void(TypeBuilder *, int, int)> &addValue)
{
    PackageBuilder package = threeTypes();
    for (int i = 0; i < locales; ++i) {
        TypeBuilder type(StringType, localeOf(i));
        for (int entry = 0; entry < entries; ++entry)
            addValue(&type, i, entry);
        package.type(type);
    }
    return package;
}

PackageBuilder labelsInLocales(int locales, int entries)
{
    return inLocales(locales, entries, [](TypeBuilder *type, int, int entry) { type->value(entry, String, 0); });
}

// Entries that each refer to the next, among @p emptyChunks chunks without a value for them.
QByteArray chain(int length, int emptyChunks)
{
    TypeBuilder type(StringType);
    for (int i = 0; i < length; ++i)
        type.value(i, Reference, FirstString + i + 1);
    PackageBuilder package = threeTypes();
    package.type(type).chunk(TypeBuilder(StringType, ConfigBuilder(4).build()).build().repeated(emptyChunks));
    return table(package);
}

QByteArray defaultsOfManyLocales(int entries, int locales)
{
    PackageBuilder package = labelsInLocales(locales, 1);
    TypeBuilder own(StringType, ConfigBuilder(16).locale("zz", "zz").build());
    TypeBuilder byDefault(StringType);
    for (int i = 1; i < entries; ++i) {
        own.value(i, String, 0);
        byDefault.value(i, Reference, FirstString);
    }
    return table(package.type(own).type(byDefault));
}

QByteArray fanOfReferences(int locales, int entries)
{
    return table(inLocales(locales, entries, [entries](TypeBuilder *type, int locale, int entry) {
        type->value(entry, Reference, FirstString + (7 * entry + locale + 1) % entries);
    }));
}

QByteArray oneStringOfAll(int length, Encoding encoding, int locales, int entries)
{
    return TableBuilder()
        .strings({QString(length, QLatin1Char('x'))}, encoding)
        .package(labelsInLocales(locales, entries))
        .build();
}

QByteArray sparseTypes(int count)
{
    TypeBuilder type(StringType);
    type.encoding(TableEncoding::Sparse);
    for (int i = 0; i < 0xffff; ++i)
        type.offset(i, 0);
    type.unlisted(simpleEntry(String, 0));
    return table(threeTypes().chunk(type.build().repeated(count)));
}

// A table of an icon at res/0.xml, drawables at res/1.xml and so on, and a colour.
QByteArray drawableTable(int drawables)
{
    TypeBuilder type(DrawableType);
    QStringList paths;
    for (int i = 0; i < drawables; ++i) {
        type.value(i, String, i);
        paths.append(QStringLiteral("res/%1.xml").arg(i));
    }
    PackageBuilder package = threeTypes();
    package.type(type).type(TypeBuilder(ColorType).value(0, int(ValueType::FirstColor), Red));
    return table(package, paths);
}

XmlAttribute reference(quint32 id, qint64 resource)
{
    XmlAttribute attribute;
    attribute.id = id;
    attribute.value = {ValueType::Reference, quint32(resource)};
    return attribute;
}

XmlElement layerList(int count, const std::function<XmlElement(int)> &itemOf)
{
    Elements items;
    for (int i = 0; i < count; ++i)
        items.append(itemOf(i));
    return element(QStringLiteral("layer-list"), {}, items);
}

XmlElement layersOf(int count, qint64 resource)
{
    return layerList(count, [&](int) { return element(item, {reference(Attr::Drawable, resource)}); });
}

XmlElement vector(const Elements &children)
{
    return element(QStringLiteral("vector"), {number(Attr::ViewportWidth, 24), number(Attr::ViewportHeight, 24)},
                   children);
}

XmlElement path(const QString &data, const Attributes &attributes = {color(Attr::FillColor, Red)})
{
    return element(QStringLiteral("path"), Attributes{text(Attr::PathData, data)} + attributes);
}

Elements copies(int count, const XmlElement &element)
{
    return Elements(count, element);
}

XmlElement nested(int depth, const std::function<XmlElement(const XmlElement &)> &around, XmlElement innermost)
{
    for (int i = 0; i < depth; ++i)
        innermost = around(innermost);
    return innermost;
}

XmlElement gradientOfStops(int count)
{
    Elements stops;
    for (int i = 0; i < count; ++i)
        stops.append(element(
            item, {color(Attr::Color, i % 2 == 0 ? Red : Blue), number(Attr::Offset, float(i) / float(count))}));
    return element(QStringLiteral("gradient"), {number(Attr::EndX, 24), number(Attr::EndY, 24)}, stops);
}

XmlElement shapeOfDashes(float dash)
{
    return element(QStringLiteral("shape"), {},
                   {element(QStringLiteral("stroke"), {pixels(Attr::Width, 1), color(Attr::Color, Red),
                                                       number(Attr::DashWidth, dash), number(Attr::DashGap, dash)})});
}

XmlAttribute textOf(const QString &name)
{
    XmlAttribute attribute;
    attribute.name = name;
    attribute.text = name;
    attribute.value.type = ValueType::String;
    return attribute;
}

// Nested drawables of @p count copies of @p row each. The innermost is a bitmap of the resource after them.
Elements documentsAround(int documents, const XmlElement &row, int count)
{
    const auto around = [&](const XmlElement &first) {
        Elements items = copies(count, row);
        items.prepend(first);
        return element(QStringLiteral("layer-list"), {}, items);
    };
    Elements roots;
    for (int i = 1; i < documents; ++i)
        roots.append(around(element(item, {reference(Attr::Drawable, IconResource + i)})));
    const Attributes source{reference(Attr::Src, IconResource + documents)};
    roots.append(around(element(item, {}, {element(QStringLiteral("bitmap"), source)})));
    return roots;
}

QByteArray saved(const QImage &image, const char *format, int quality = -1)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, format, quality))
        qFatal("could not write %s", format);
    return buffer.data();
}

// A PNG that is about as large as its pixels.
QByteArray noisePng(int side)
{
    QImage image(side, side, QImage::Format_ARGB32);
    quint64 noise = 1;
    for (int y = 0; y < side; ++y) {
        auto *const line = reinterpret_cast<quint32 *>(image.scanLine(y));
        for (int x = 0; x < side; ++x) {
            noise = (noise * 1664525 + 1013904223) & 0xffffffff;
            line[x] = quint32(noise ^ noise >> 16);
        }
    }
    return saved(image, "PNG");
}

// Picture files close to the ceiling for decoding, some with almost as many other bytes as a file may have.
QVector<Member> largePictures()
{
    // With this much, an icon of 1024 pixels in layers still fits in the budget.
    constexpr double Decoding = 24 << 20;
    const auto side = [](int bytesOfPixel) { return int(std::sqrt(Decoding / bytesOfPixel)) - 8; };
    const auto webpOf = [](int width, int quality, QRgb color) {
        QImage image(width, width, QImage::Format_ARGB32);
        image.fill(color);
        return saved(image, "WEBP", quality);
    };
    const QByteArray much(int(DrawableLoader::MaxFileBytes) - (2 << 20), 'x');
    const int large = side(4);
    const QByteArray lossy = webpOf(side(8), 50, Red);
    const QByteArray canvas = webpChunk("VP8X", Bytes().zeros(4).u16(side(8) - 1).u8(0).u16(side(8) - 1).u8(0).data());
    return {
        {QStringLiteral("PNG"), blackPng(large, large)},
        {QStringLiteral("PNG of texts"), withPngChunks(blackPng(large, large), pngChunk("tEXt", much))},
        {QStringLiteral("PNG of 16 bits"), blackPng(side(8), side(8), 16)},
        {QStringLiteral("PNG of noise"), noisePng(1400)},
        {QStringLiteral("JPEG"), picture(large, large, 0, "JPG")},
        {QStringLiteral("JPEG of comments"),
         withJpegSegments(picture(large, large, 0, "JPG"), jpegSegment(0xfe, much.left(65000)).repeated(90))},
        {QStringLiteral("JPEG, progressive"), progressiveJpeg(side(11), side(11))},
        {QStringLiteral("WebP, lossy"), webpOf(side(5), 50, Red)},
        {QStringLiteral("WebP, lossless"), webpOf(side(10), 100, Red)},
        {QStringLiteral("WebP, transparent"), webpOf(side(18), 50, 0x80336699)},
        {QStringLiteral("WebP of metadata"), webp(canvas + lossy.mid(12) + webpChunk("EXIF", much))},
        {QStringLiteral("WebP of chunks"),
         webp(canvas + webpChunk("abcd", QByteArray()).repeated(500000) + lossy.mid(12))},
        {QStringLiteral("WebP, animated"),
         animatedWebp(QSize(side(12), side(12)), webpOf(side(12), 50, Red), QSize(side(12), side(12)))},
        {QStringLiteral("GIF"), gif(QSize(side(8), side(8)), QSize(side(8), side(8)))},
        {QStringLiteral("BMP"), picture(1400, 1400, 0, "BMP")},
    };
}

QByteArray splitManifest(int number)
{
    return XmlBuilder()
        .empty(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x")),
                                            plainText(QStringLiteral("split"), QStringLiteral("s%1").arg(number))})
        .build();
}

qint64 sizeOf(const QVector<Member> &members)
{
    qint64 size = 0;
    for (const Member &member : members)
        size += member.content.size();
    return size;
}

void addBytes(const char *name, const QByteArray &bytes, qint64 inflated, int icons = 4)
{
    QTest::newRow(name) << bytes << inflated << icons;
}

void addPackage(const QByteArray &name, const QByteArray &resources, const QByteArray &document,
                const QVector<Member> &members = {}, int icons = 4)
{
    addBytes(name.constData(), package(resources, document, members),
             resources.size() + document.size() + sizeOf(members), icons);
}

// Documents at res/0.xml and so on.
QVector<Member> documentsOf(const Elements &roots)
{
    QVector<Member> members;
    for (int i = 0; i < roots.size(); ++i)
        members.append({QStringLiteral("res/%1.xml").arg(i), binaryXml(roots.at(i))});
    return members;
}

// A package whose icon is the first of @p documents. The other ones are further drawables. The icon of the only
// launcher is that of the application, which is drawn in any case.
void addDrawables(const QByteArray &name, const QVector<Member> &documents, const QVector<Member> &others = {})
{
    addPackage(name, drawableTable(int(documents.size()) + int(others.size())), oneLauncher({icon}, IconResource),
               others + documents, 0);
}

void addDrawables(const QByteArray &name, const Elements &roots, const QVector<Member> &others = {})
{
    addDrawables(name, documentsOf(roots), others);
}

void addSet(const char *name, const QVector<Member> &members, Compression compression)
{
    addBytes(name, zip(members, compression), sizeOf(members));
}

} // namespace

class TestHostileKit : public QObject
{
    Q_OBJECT

private slots:
    void boundsHold_data();
    void boundsHold();
    void iconsKeepTheirMemory_data();
    void iconsKeepTheirMemory();

private:
    static void addTables();
    static void addManifests();
    static void addLayers();
    static void addVectors();
    static void addSets();
    static void addElements();
};

void TestHostileKit::boundsHold_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<qint64>("inflated");
    QTest::addColumn<int>("icons");
    addTables();
    addManifests();
    addLayers();
    addVectors();
    addSets();
    addElements();
}

void TestHostileKit::addTables()
{
    // Each launcher asks the same of a table. An instrumented build counts no cost, so a fifth of them suffices there.
    constexpr int Launchers = isInstrumented() ? 1000 : 5000;
    constexpr int Chunks = ResourceTable::MaxTypeChunks - 1;
    const QByteArray locales = table(labelsInLocales(Chunks, 1));
    const QByteArray noValues = chain(1, Chunks);
    const QByteArray ownChain = chain(Launchers, 0);
    const QByteArray chainAmongOthers = chain(Launchers, Chunks);
    const QByteArray manyDefaults = defaultsOfManyLocales(Launchers, 10000);
    const QByteArray fan = fanOfReferences(200, 500);
    const QByteArray wideString = oneStringOfAll(1 << 20, Encoding::Utf16, 1000, 100);
    const QByteArray narrowString = oneStringOfAll(0x7fff, Encoding::Utf8, 1000, 100);
    const QByteArray sparse = sparseTypes(50);
    // Labels have a budget of their own; states and icons share one, so each of them has a package for itself.
    for (const QStringList &attributes : {QStringList{label, icon}, QStringList{enabled}}) {
        const auto name = [&](const char *text) {
            return QByteArray(text) + ": " + qPrintable(attributes.join(QLatin1String(" and ")));
        };
        const QByteArray manifest = launchersThatRefer(Launchers, attributes);
        addPackage(name("as many locales as chunks"), locales, oneLauncher(attributes, FirstString));
        addPackage(name("chunks of no values"), noValues, manifest);
        addPackage(name("chain that every launcher starts elsewhere in"), ownChain, manifest);
        addPackage(name("the same, among chunks of no values"), chainAmongOthers, manifest);
        addPackage(name("default of many locales, and an own one"), manyDefaults, manifest);
        addPackage(name("references that fan out"), fan, launchersThatRefer(500, attributes));
        addPackage(name("one string of a megabyte"), wideString, manifest);
        addPackage(name("one string of 32767 bytes"), narrowString, manifest);
        addPackage(name("sparse types that are full"), sparse, manifest);
    }
}

void TestHostileKit::addManifests()
{
    QVector<Member> pictures;
    TypeBuilder type(DrawableType);
    QStringList paths{QStringLiteral("text")};
    for (int i = 0; i < 1000; ++i) {
        paths.append(QStringLiteral("res/%1.png").arg(i));
        type.value(i, String, i + 1);
        pictures.append({paths.last(), picture(IconSize, IconSize, quint32(i))});
    }
    const auto iconAndLabel = [](int i) {
        return QVector<fixture::Attribute>{androidReference(icon, IconResource + i % 1000),
                                           androidReference(label, FirstString + i % 100)};
    };
    addPackage("launchers with an icon and labels each", table(labelsInLocales(100, 100).type(type), paths),
               launchers(10000, iconAndLabel), pictures, AllIcons);

    PackageBuilder densities = threeTypes();
    for (int i = 0; i < 1000; ++i)
        densities.type(TypeBuilder(DrawableType, ConfigBuilder().density(i + 1).build()).value(0, String, i + 1));
    addPackage("icon of a thousand files", table(densities, paths), oneLauncher({icon}, IconResource), pictures);

    QVector<Member> large;
    const QByteArray largePicture = blackPng(2048, 4096);
    for (int i = 0; i < 60; ++i)
        large.append({QStringLiteral("res/%1.png").arg(i), largePicture});
    addPackage("icon of large files", table(densities, paths), oneLauncher({icon}, IconResource), large);
    addPackage("icon of files that claim much", table(densities, paths), oneLauncher({icon}, IconResource),
               {{QStringLiteral("res/0.png"), blackPng(45000, 45000, 8, false, false)}});

    XmlBuilder features = XmlBuilder::manifest();
    features.attributeId(QStringLiteral("required"), Attr::Required).start(QStringLiteral("manifest"));
    for (int i = 0; i < 20000; ++i)
        features.empty(QStringLiteral("uses-feature"),
                       {androidText(QStringLiteral("name"), QString::number(i)),
                        androidReference(QStringLiteral("required"), FirstString + i % 5000)});
    addPackage("features that are required by a chain", chain(5000, ResourceTable::MaxTypeChunks - 1),
               features.end(QStringLiteral("manifest")).build());

    QVector<Member> libraries;
    for (int i = 0; i < 50000; ++i)
        libraries.append({QStringLiteral("lib/%1/x.so").arg(i), QByteArray()});
    addPackage("processors", emptyTable(), smallManifest(), libraries);
    addPackage("manifest of nothing, inflated", emptyTable(), QByteArray(2 * Limits::MaxManifestBytes, '\0'));
    addPackage("table of nothing, inflated", QByteArray(PackageData::MaxTableBytes + 1, '\0'), smallManifest());
}

void TestHostileKit::addLayers()
{
    const XmlElement small = vector({path(QStringLiteral("M0,0h24v24z"))});
    addDrawables("layers of layers", {layersOf(1000, IconResource + 1), layersOf(1000, IconResource + 2), small});
    addDrawables("layers that refer to themselves", {layersOf(1000, IconResource)});
    addDrawables("layers of large documents",
                 {layersOf(1000, IconResource + 1), vector(copies(30000, path(QStringLiteral("M0,0h1"))))});
    const auto layer = [](const XmlElement &inner) { return element(item, {}, {inner}); };
    addDrawables(
        "layers within layers",
        {nested(
            60,
            [&](const XmlElement &inner) { return element(QStringLiteral("layer-list"), {}, copies(1, layer(inner))); },
            small)});
    const auto chainOf = [](const QString &name, const Attributes &attributes) {
        return nested(
            200, [&](const XmlElement &inner) { return element(name, attributes, {inner}); }, filled(Red));
    };
    addDrawables("insets within insets", {chainOf(QStringLiteral("inset"), {percent(Attr::Inset, 1)})});
    addDrawables("rotations within rotations", {chainOf(QStringLiteral("rotate"), {number(Attr::FromDegrees, 7)})});
    addDrawables("scales within scales", {chainOf(QStringLiteral("scale"), {percent(Attr::ScaleWidth, 1)})});
    addDrawables("adaptive icons within adaptive icons",
                 {nested(
                     60,
                     [](const XmlElement &inner) {
                         return element(QStringLiteral("adaptive-icon"), {},
                                        {element(QStringLiteral("background"), {}, {inner}),
                                         element(QStringLiteral("foreground"), {}, {filled(Red)})});
                     },
                     filled(Red))});
    const Attributes toItself{reference(Attr::Drawable, IconResource)};
    addDrawables("adaptive icon that refers to itself", {element(QStringLiteral("adaptive-icon"), {},
                                                                 {element(QStringLiteral("background"), toItself),
                                                                  element(QStringLiteral("foreground"), toItself)})});
    QVector<Member> bombs;
    const QByteArray tooLarge(int(DrawableLoader::MaxFileBytes) + 1, '\0');
    constexpr int Bombs = IconRenderer::MaxWork / DrawableLoader::MaxFileBytes + 1;
    for (int i = 1; i <= Bombs; ++i)
        bombs.append({QStringLiteral("res/%1.xml").arg(i), tooLarge});
    addDrawables(
        "layers of files that are too large",
        {layerList(Bombs, [](int i) { return element(item, {reference(Attr::Drawable, IconResource + 1 + i)}); })},
        bombs);
    addDrawables("dashes that are tiny", {layerList(1000, [&](int) { return layer(shapeOfDashes(1e-6F)); })});
    addDrawables("dashes up to the ceiling", {layerList(1000, [&](int) { return layer(shapeOfDashes(0.3F)); })});
    // Pictures that are expensive to refuse or to read, all different or all the same.
    const auto layersOfPictures = [](const char *name, const QByteArray &file, int count, int files) {
        QVector<Member> members;
        for (int i = 1; i <= files; ++i)
            members.append({QStringLiteral("res/%1.xml").arg(i), file});
        addDrawables(name,
                     {layerList(count,
                                [files](int i) {
                                    return element(item, {reference(Attr::Drawable, IconResource + 1 + i % files)});
                                })},
                     members);
    };
    const QByteArray text = QByteArray("k\0\0", 3) + deflated(QByteArray(8000000, 'x'));
    layersOfPictures("layers of PNG of texts", withPngChunks(blackPng(2, 2), pngChunk("zTXt", text)), 2000, 2000);
    layersOfPictures("layers of PNG that unpack to more", endlessPng(1), 2000, 2000);
    layersOfPictures("layers of one PNG that unpacks without end", endlessPng(4096), 2000, 1);
    layersOfPictures("layers of JPEG of comments",
                     withJpegSegments(picture(2, 2, 0, "JPG"), jpegSegment(0xfe, "x").repeated(20000)), 300, 300);
    layersOfPictures("layers of GIF of long codes", gifOfLongCodes(1 << 16), 300, 300);
    layersOfPictures("layers of WebP of many prefix codes", webpOfManyCodes(512, 16384), 300, 300);
    layersOfPictures("layers of one picture that is none", QByteArray(int(DrawableLoader::MaxFileBytes), 'x'), 2000, 1);
    const XmlElement tiled =
        element(QStringLiteral("bitmap"), {reference(Attr::Src, IconResource + 1), integer(Attr::TileMode, 1)});
    const QByteArray large = blackPng(2048, 2048);
    addDrawables("tiles of a large picture", {layerList(1000, [&](int) { return layer(tiled); })},
                 {{QStringLiteral("res/1.xml"), large}});
    addDrawables("a large picture, tinted a thousand times",
                 {layerList(1000,
                            [&](int) {
                                return layer(element(QStringLiteral("bitmap"),
                                                     {reference(Attr::Src, IconResource + 1), color(Attr::Tint, Red)}));
                            })},
                 {{QStringLiteral("res/1.xml"), large}});
}

void TestHostileKit::addVectors()
{
    const QString square = QStringLiteral("M0,0h24v24z");
    addDrawables("many paths", {vector(copies(33000, path(square)))});
    const Attributes stroke{color(Attr::StrokeColor, Red), number(Attr::StrokeWidth, 3)};
    for (const char *segment : {"l1,1-1-1", "q9,1 2,8", "c9,1 2,8 1,1", "a9,9 0 1 1 2,8", "m1,1h9v9z"}) {
        const QString data = QStringLiteral("M0,0") + QString::fromLatin1(segment).repeated(100000);
        addDrawables(qPrintable(QStringLiteral("long path, filled: %1").arg(QLatin1String(segment))),
                     {vector({path(data)})});
        addDrawables(qPrintable(QStringLiteral("long path, stroked: %1").arg(QLatin1String(segment))),
                     {vector({path(data, stroke)})});
        addDrawables(
            qPrintable(QStringLiteral("stroked paths: %1").arg(QLatin1String(segment))),
            {vector(copies(20000, path(QStringLiteral("M0,0") + QString::fromLatin1(segment).repeated(5), stroke)))});
    }
    const XmlElement clip = element(QStringLiteral("clip-path"), {text(Attr::PathData, square)});
    const QString group = QStringLiteral("group");
    addDrawables("groups within groups",
                 {vector({nested(
                     200, [&](const XmlElement &inner) { return element(group, {number(Attr::Rotation, 3)}, {inner}); },
                     path(square))})});
    addDrawables("clip paths within clip paths", {vector({nested(
                                                     60,
                                                     [&](const XmlElement &inner) {
                                                         return element(group, {}, {clip, inner, path(square)});
                                                     },
                                                     path(square))})});
    addDrawables("clip paths one after another", {vector(copies(30000, clip) + copies(1, path(square)))});
    addDrawables("groups with clip paths", {vector(copies(10000, element(group, {}, {clip, path(square)})))});
    const QString far = QStringLiteral("M-1e30,-1e30L1e30,1e30L1e30,-1e30C1e38,1e38 -1e38,1e38 3e38,3e38z");
    addDrawables("coordinates far out", {vector(copies(20000, path(far)))});
    addDrawables("strokes far out",
                 {vector(copies(20000, path(far, {color(Attr::StrokeColor, Red), number(Attr::StrokeWidth, 1e30F)})))});
    addDrawables("groups that scale without end",
                 {vector({nested(
                     60,
                     [&](const XmlElement &inner) {
                         return element(group, {number(Attr::ScaleX, 1e30F), number(Attr::ScaleY, 1e-30F)}, {inner});
                     },
                     path(square, stroke))})});
    const Attributes ofGradient{reference(Attr::FillColor, IconResource + 1)};
    addDrawables("gradient of many stops", {vector(copies(20000, path(square, ofGradient))), gradientOfStops(10000)});

    Elements paths;
    for (int i = 0; i < 30000; ++i)
        paths.append(path(square, {reference(Attr::FillColor, FirstString + i % 5000)}));
    PackageBuilder colors = threeTypes();
    TypeBuilder type(StringType);
    for (int i = 0; i < 5000; ++i)
        type.value(i, Reference, FirstString + i + 1);
    colors.type(type)
        .chunk(TypeBuilder(StringType, ConfigBuilder(4).build()).build().repeated(ResourceTable::MaxTypeChunks - 2))
        .type(TypeBuilder(DrawableType).value(0, String, 0));
    addPackage("colours that are chains", table(colors, {QStringLiteral("res/0.xml")}),
               oneLauncher({icon}, IconResource), {{QStringLiteral("res/0.xml"), binaryXml(vector(paths))}});
}

void TestHostileKit::addSets()
{
    const QByteArray base = package(emptyTable(), smallManifest(QStringLiteral("org.x")));
    const QString apk = QStringLiteral("%1.apk");
    QVector<Member> splits{{QStringLiteral("base.apk"), base}};
    QVector<Member> manyMembers = splits;
    QVector<Member> bombs = splits;
    QVector<Member> tables = splits;
    QVector<Member> manifests = splits;
    const QByteArray zeros(100 << 20, '\0');
    const QByteArray table = package(QByteArray(100 << 20, '\0'), splitManifest(0));
    const QByteArray manifest = package(emptyTable(), QByteArray(16 << 20, '\0'));
    for (int i = 0; i < 3000; ++i) {
        splits.append({apk.arg(i), package(emptyTable(), splitManifest(i))});
        manyMembers.append({QStringLiteral("%1.txt").arg(i), QByteArray()});
        if (i < 3)
            bombs.append({apk.arg(i), zeros});
        if (i < 100)
            tables.append({apk.arg(i), table});
        if (i < 500)
            manifests.append({apk.arg(i), manifest});
    }
    addSet("set of thousands, stored", splits, Compression::Stored);
    addSet("set of thousands, deflated", splits, Compression::Deflated);
    addSet("set of other members", manyMembers, Compression::Stored);
    addSet("packages of nothing, inflated", bombs, Compression::Deflated);
    // The packages of a set share the ceiling of one package.
    addBytes("tables of nothing in the packages of a set", zip(tables, Compression::Stored),
             PackageData::MaxTableBytes);
    addBytes("manifests of nothing in the packages of a set", zip(manifests, Compression::Stored),
             PackageData::MaxReadingWork / Budget::DocumentByteWork);
    QByteArray set = base;
    for (int i = 0; i < 200; ++i)
        set = zip({{QStringLiteral("base.apk"), set}}, Compression::Stored);
    addSet("sets within sets", {{QStringLiteral("base.apk"), set}}, Compression::Stored);
}

void TestHostileKit::addElements()
{
    const auto around = [](const XmlElement &inner) { return element(QStringLiteral("layer-list"), {}, {inner}); };
    const XmlElement elements = nested(XmlReader::MaxDepth - 1, around, filled(Red));
    addDrawables("elements within elements", {elements});
    addPackage("manifest of elements within elements", emptyTable(), binaryXml(elements));
}

void TestHostileKit::boundsHold()
{
    QFETCH(QByteArray, bytes);
    QFETCH(qint64, inflated);
    QFETCH(int, icons);
    // With a sanitizer, the same functions need several times the stack.
    const Cost taken = costInThread([&] { ask(bytes, icons); }, isInstrumented() ? 8 * SmallStack : SmallStack);
    const QString excess = Bounds::excess(taken, bytes.size(), inflated);
    QVERIFY2(excess.isEmpty(), qPrintable(excess));
}

void TestHostileKit::iconsKeepTheirMemory_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<qint64>("inflated");
    QTest::addColumn<int>("icons");
    const XmlElement bitmap = element(QStringLiteral("bitmap"), {reference(Attr::Src, IconResource + 1)});
    const XmlElement layers = nested(
        Canvas::MaxLayers,
        [](const XmlElement &inner) { return element(QStringLiteral("clip"), {integer(Attr::Level, 9999)}, {inner}); },
        bitmap);
    const XmlAttribute text = textOf(QStringLiteral("x"));
    QVector<Member> manyElements;
    QVector<Member> manyAttributes;
    if (!isInstrumented()) {
        manyElements = documentsOf(documentsAround(1, element(item, {text}), 45000));
        manyAttributes = documentsOf(documentsAround(2, element(item, Attributes(1000, text)), 90));
    }
    const QVector<Member> oneLayerList = documentsOf({layers});
    for (const Member &picture : largePictures()) {
        const auto name = [&picture](const char *where) { return picture.name.toLatin1() + where; };
        const auto member = [&picture](int number) {
            return QVector<Member>{{QStringLiteral("res/%1.xml").arg(number), picture.content}};
        };
        addPackage(name(""), drawableTable(1), oneLauncher({icon}, IconResource), member(0));
        addDrawables(name(" in layers"), oneLayerList, member(1));
        // These differ from the others in the memory that they take, which instrumented builds do not count.
        if (isInstrumented())
            continue;
        addDrawables(name(" beside many elements"), manyElements, member(1));
        addDrawables(name(" beside many attributes"), manyAttributes, member(2));
    }
    // All are kept until one is decoded.
    PackageBuilder densities = threeTypes();
    QStringList paths;
    QVector<Member> members;
    const QByteArray noise = noisePng(840);
    for (int i = 0; i < 20; ++i) {
        paths.append(QStringLiteral("res/%1.png").arg(i));
        members.append({paths.last(), noise});
        densities.type(TypeBuilder(DrawableType, ConfigBuilder().density(i + 1).build()).value(0, String, i));
    }
    addPackage("files of many densities", table(densities, paths), oneLauncher({icon}, IconResource), members);
}

void TestHostileKit::iconsKeepTheirMemory()
{
    constexpr qint64 MaxMemory = 64 << 20;
    QFETCH(QByteArray, bytes);
    const Cost taken = cost([&bytes] {
        PackageDevice device(bytes);
        if (iconOf(Package(&device).launchers().first(), IconRenderer::MaxSize, IconMask::Circle).isNull())
            qFatal("there is no icon");
    });
    QVERIFY(taken.ended);
    QVERIFY2(isInstrumented() || taken.memory < MaxMemory, qPrintable(QString::number(taken.memory)));
}

QTEST_GUILESS_MAIN(TestHostileKit)
#include "tst_hostile_kit.moc"
