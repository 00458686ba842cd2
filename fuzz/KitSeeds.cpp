// SPDX-License-Identifier: LGPL-2.1-or-later
#include "KitSeeds.h"

#include "Apk.h"
#include "BinaryXml.h"
#include "DrawableFixture.h"
#include "Pictures.h"
#include "archive/ZipArchive.h"
#include "format/AndroidAttributes.h"
#include "format/XmlReader.h"

#include <QDir>

using namespace fixture;
using namespace SorrelKit;

namespace {

constexpr qint64 FirstColor = 0x7f010000;
constexpr qint64 ColorList = FirstColor + 1;
constexpr qint64 Gradient = FirstColor + 2;
constexpr qint64 Picture = InputDrawable + 1;
constexpr qint64 Patch = InputDrawable + 2;
constexpr qint64 Vector = InputDrawable + 3;
constexpr qint64 Alias = InputDrawable + 4;
constexpr qint64 Layers = InputDrawable + 5;
constexpr qint64 Shortcuts = InputDrawable + 6;
constexpr qint64 Label = 0x7f030000;
constexpr qint64 Style = 0x7f040000;
constexpr qint64 ThemeColor = 0x7f050000;

const QString name = QStringLiteral("name");
const QString item = QStringLiteral("item");
const QString pathOfVector = QStringLiteral("M2,2h20v20a4,4 0 0 1 -8,0q-4,-9 -9,0t-3,2zM6.5.5c1,2 3,4 5,6s7,8 9,9z");

XmlAttribute reference(quint32 id, qint64 resource)
{
    XmlAttribute attribute;
    attribute.id = id;
    attribute.value = {ValueType::Reference, quint32(resource)};
    return attribute;
}

XmlElement itemOf(const XmlElement &drawable)
{
    return element(item, {}, {drawable});
}

XmlElement path(const Attributes &attributes)
{
    return element(QStringLiteral("path"), Attributes{text(Attr::PathData, pathOfVector)} + attributes);
}

XmlElement vector()
{
    const Attributes stroke{color(Attr::StrokeColor, Blue), number(Attr::StrokeWidth, 1.5F),
                            number(Attr::TrimPathStart, 0.25F), integer(Attr::StrokeLineCap, 1)};
    const XmlElement group = element(QStringLiteral("group"), {number(Attr::Rotation, 30), number(Attr::ScaleX, 0.5F)},
                                     {element(QStringLiteral("clip-path"), {text(Attr::PathData, pathOfVector)}),
                                      path({reference(Attr::FillColor, Gradient)}), path(stroke)});
    return element(QStringLiteral("vector"),
                   {number(Attr::ViewportWidth, 24), number(Attr::ViewportHeight, 24), pixels(Attr::Width, 24),
                    pixels(Attr::Height, 24), number(Attr::Alpha, 0.5F)},
                   {path({reference(Attr::FillColor, ColorList)}), group});
}

XmlElement gradient(int type)
{
    return element(QStringLiteral("gradient"),
                   {integer(Attr::Type, type), number(Attr::EndX, 24), number(Attr::EndY, 24),
                    number(Attr::CenterX, 12), number(Attr::CenterY, 12), number(Attr::GradientRadius, 12),
                    integer(Attr::TileMode, type)},
                   {element(item, {color(Attr::Color, Red), number(Attr::Offset, 0)}),
                    element(item, {color(Attr::Color, Blue), number(Attr::Offset, 1)})});
}

XmlElement shape(int kind)
{
    return element(QStringLiteral("shape"), {integer(Attr::Shape, kind), boolean(Attr::UseLevel, false)},
                   {element(QStringLiteral("gradient"),
                            {color(Attr::StartColor, Red), color(Attr::EndColor, Green), integer(Attr::Type, kind % 3),
                             integer(Attr::Angle, 45), pixels(Attr::GradientRadius, 20)}),
                    element(QStringLiteral("stroke"), {pixels(Attr::Width, 2), color(Attr::Color, Blue),
                                                       pixels(Attr::DashWidth, 3), pixels(Attr::DashGap, 2)}),
                    element(QStringLiteral("corners"), {pixels(Attr::Radius, 5)}),
                    element(QStringLiteral("size"), {pixels(Attr::Width, 20), pixels(Attr::Height, 30)}),
                    element(QStringLiteral("padding"), {pixels(Attr::Left, 2)})});
}

XmlElement adaptiveIcon()
{
    return element(QStringLiteral("adaptive-icon"), {},
                   {element(QStringLiteral("background"), {reference(Attr::Drawable, Picture)}),
                    element(QStringLiteral("foreground"), {},
                            {element(QStringLiteral("inset"), {percent(Attr::Inset, 10)}, {vector()})}),
                    element(QStringLiteral("monochrome"), {reference(Attr::Drawable, Vector)})});
}

XmlElement layers()
{
    const XmlElement bitmap =
        element(QStringLiteral("bitmap"), {reference(Attr::Src, Picture), integer(Attr::TileMode, 1),
                                           reference(Attr::Tint, FirstColor), number(Attr::Alpha, 0.5F)});
    const XmlElement rotate =
        element(QStringLiteral("rotate"), {number(Attr::FromDegrees, 30), percent(Attr::PivotX, 50)}, {shape(1)});
    const XmlElement scale = element(QStringLiteral("scale"), {percent(Attr::ScaleWidth, 50)}, {shape(3)});
    const XmlElement clip = element(QStringLiteral("clip"), {integer(Attr::ClipOrientation, 1)}, {filled(Red)});
    const XmlElement patch = element(QStringLiteral("nine-patch"), {reference(Attr::Src, Patch)});
    return element(QStringLiteral("layer-list"), {},
                   {itemOf(bitmap), itemOf(rotate), itemOf(scale), itemOf(clip), itemOf(patch),
                    element(item, {reference(Attr::Drawable, Alias), pixels(Attr::Left, 2), integer(Attr::Gravity, 17),
                                   pixels(Attr::Width, 8)})});
}

XmlElement selector()
{
    return element(QStringLiteral("selector"), {},
                   {element(item, {boolean(Attr::StatePressed, true), reference(Attr::Drawable, Picture)}),
                    element(item, {reference(Attr::Drawable, Layers)})});
}

QVector<Member> ownDrawables()
{
    QVector<Member> seeds;
    const auto add = [&](const QString &key, const XmlElement &root) { seeds.append({key, binaryXml(root)}); };
    add(QStringLiteral("adaptive-icon"), adaptiveIcon());
    add(QStringLiteral("layers"), layers());
    add(QStringLiteral("selector"), selector());
    add(QStringLiteral("vector"), vector());
    for (int kind = 0; kind < 4; ++kind)
        add(QStringLiteral("shape-%1").arg(kind), shape(kind));
    return seeds;
}

// Returns a sample whose references refer to resources of the table in this file.
XmlElement relinked(XmlElement element)
{
    constexpr quint32 Resources[] = {FirstColor, ColorList, Gradient, Picture, Patch, Vector, Alias, Layers};
    for (XmlAttribute &attribute : element.attributes) {
        if (attribute.value.isReference())
            attribute.value.data = Resources[attribute.value.data % (sizeof Resources / sizeof *Resources)];
    }
    for (XmlElement &child : element.children)
        child = relinked(child);
    return element;
}

QByteArray tableOf(TableEncoding encoding)
{
    enum Text {
        InputPath,
        ColorListPath,
        GradientPath,
        PicturePath,
        PatchPath,
        VectorPath,
        LayersPath,
        ShortcutsPath,
        Notes,
        Notebook,
    };
    TypeBuilder colors(1);
    colors.encoding(encoding)
        .value(0, int(ValueType::FirstColor), Red)
        .value(1, String, ColorListPath)
        .value(2, String, GradientPath);
    TypeBuilder drawables(2);
    drawables.encoding(encoding)
        .value(0, String, InputPath)
        .value(1, String, PicturePath)
        .value(2, String, PatchPath)
        .value(3, String, VectorPath)
        .value(4, Reference, InputDrawable)
        .value(5, String, LayersPath)
        .value(6, String, ShortcutsPath);
    TypeBuilder strings(3);
    strings.encoding(encoding).value(0, String, Notes).value(1, Reference, Label).value(2, Boolean, -1);
    TypeBuilder german(3, ConfigBuilder().locale("de", "AT").build());
    german.encoding(encoding).value(0, String, Notebook);
    const auto colorOfTheme = [](QRgb value) { return mapItem(ThemeColor, int(ValueType::FirstColor), value); };
    TypeBuilder styles(4);
    styles.entry(0, mapOf({colorOfTheme(Red)}, Style + 1)).entry(1, mapOf({colorOfTheme(Green)}, Style));
    PackageBuilder package;
    package
        .types({QStringLiteral("color"), QStringLiteral("drawable"), QStringLiteral("string"), QStringLiteral("style")})
        .type(colors)
        .type(drawables)
        .type(TypeBuilder(2, ConfigBuilder().density(240).build()).value(1, String, PicturePath))
        .type(strings)
        .type(german)
        .type(styles);
    return TableBuilder()
        .strings({inputPath(), QStringLiteral("res/list.xml"), QStringLiteral("res/gradient.xml"),
                  QStringLiteral("res/icon.png"), QStringLiteral("res/icon.9.png"), QStringLiteral("res/vector.xml"),
                  QStringLiteral("res/layers.xml"), QStringLiteral("res/shortcuts.xml"), QStringLiteral("Notes"),
                  QStringLiteral("Notizbücher")})
        .package(package)
        .build();
}

QByteArray manifest(Encoding encoding)
{
    XmlBuilder builder = XmlBuilder::manifest(encoding);
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))})
        .empty(QStringLiteral("uses-sdk"), {androidValue(QStringLiteral("minSdkVersion"), Integer, 21)})
        .empty(QStringLiteral("uses-permission"), {androidText(name, QStringLiteral("org.x.permission"))})
        .empty(QStringLiteral("uses-feature"), {androidText(name, QStringLiteral("org.x.feature"))})
        .start(QStringLiteral("application"), {androidReference(QStringLiteral("label"), Label)});
    for (const qint64 icon : {Picture, Vector, Alias, Layers, FirstColor}) {
        builder
            .start(QStringLiteral("activity"),
                   {androidText(name, QStringLiteral(".A%1").arg(icon)), androidReference(QStringLiteral("icon"), icon),
                    androidReference(QStringLiteral("label"), Label + 1),
                    androidReference(QStringLiteral("enabled"), Label + 2)})
            .launcherFilter()
            .end(QStringLiteral("activity"));
    }
    return builder.end(QStringLiteral("application"))
        .end(QStringLiteral("manifest"))
        .endNamespace(QStringLiteral("android"), androidUri)
        .build();
}

XmlElement named(const QString &tag, const QString &value, const Attributes &more = {}, const Elements &children = {})
{
    return element(tag, Attributes{text(Attr::Name, value)} + more, children);
}

// Permissions, features, a theme, a banner, and entries of several kinds.
XmlElement manifestOfManyQueries()
{
    const QString permission = QStringLiteral("permission");
    const QString activity = QStringLiteral("activity");
    const auto filter = [](const char *action, const char *category) {
        return element(QStringLiteral("intent-filter"), {},
                       {named(QStringLiteral("action"), QLatin1String(action)),
                        named(QStringLiteral("category"), QLatin1String(category)),
                        element(QStringLiteral("data"), {text(Attr::MimeType, QStringLiteral("text/*"))})});
    };
    const XmlElement shortcuts = named(QStringLiteral("meta-data"), QStringLiteral("android.app.shortcuts"),
                                       {reference(Attr::Resource, Shortcuts)});
    const Attributes pictures{reference(Attr::Icon, Layers), reference(Attr::RoundIcon, Picture),
                              reference(Attr::Banner, Vector), reference(Attr::Theme, Style)};
    const XmlElement application =
        element(QStringLiteral("application"), pictures,
                {named(activity, QStringLiteral(".A"), {reference(Attr::Theme, Style + 1)},
                       {filter("android.intent.action.MAIN", "android.intent.category.LAUNCHER"), shortcuts}),
                 named(activity, QStringLiteral(".B"), pictures,
                       {filter("android.intent.action.MAIN", "android.intent.category.LEANBACK_LAUNCHER"),
                        filter("android.intent.action.SEND", "android.intent.category.DEFAULT")}),
                 named(QStringLiteral("service"), QStringLiteral(".C"), {},
                       {filter("android.service.wallpaper.WallpaperService", ""), shortcuts})});
    return element(QStringLiteral("manifest"), {text(Attr::VersionName, QStringLiteral("1.0"))},
                   {named(QStringLiteral("uses-permission"), permission, {integer(Attr::MaxSdkVersion, 28)}),
                    named(permission, permission,
                          {text(Attr::PermissionGroup, permission), reference(Attr::Label, Label),
                           reference(Attr::Description, Label + 1), integer(Attr::ProtectionLevel, 0x11)}),
                    named(QStringLiteral("permission-group"), permission, {reference(Attr::Label, Label)}),
                    named(QStringLiteral("uses-feature"), QStringLiteral("android.hardware.camera"),
                          {boolean(Attr::Required, false)}),
                    application});
}

XmlElement fileOfShortcuts()
{
    const XmlElement intent = element(QStringLiteral("intent"), {text(Attr::Action, QStringLiteral("VIEW"))});
    const XmlElement shareTarget =
        element(QStringLiteral("share-target"), {text(Attr::TargetClass, QStringLiteral("org.x.Share"))},
                {element(QStringLiteral("data"), {text(Attr::MimeType, QStringLiteral("*"))}),
                 named(QStringLiteral("category"), QStringLiteral("people"))});
    return element(QStringLiteral("shortcuts"), {},
                   {element(QStringLiteral("shortcut"),
                            {text(Attr::ShortcutId, QStringLiteral("new")), reference(Attr::ShortcutShortLabel, Label),
                             reference(Attr::ShortcutLongLabel, Label + 1), reference(Attr::Icon, Picture)},
                            {intent}),
                    shareTarget});
}

QByteArray splitManifest()
{
    return XmlBuilder()
        .empty(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x")),
                                            plainText(QStringLiteral("split"), QStringLiteral("config.de"))})
        .build();
}

QByteArray wholePackage(TableEncoding encoding)
{
    QVector<Member> files = kitFiles();
    files.append({inputPath(), binaryXml(adaptiveIcon())});
    return package(tableOf(encoding), manifest(Encoding::Utf8), files);
}

} // namespace

QString inputPath()
{
    return QStringLiteral("res/input.xml");
}

QByteArray kitTable()
{
    return tableOf(TableEncoding::Dense);
}

QVector<Member> kitFiles()
{
    const XmlElement list = element(QStringLiteral("selector"), {},
                                    {element(item, {boolean(Attr::StateEnabled, false), color(Attr::Color, Red)}),
                                     element(item, {color(Attr::Color, Green), number(Attr::Alpha, 0.5F)})});
    QImage patch(9, 9, QImage::Format_ARGB32);
    patch.fill(Green);
    return {
        {QStringLiteral("res/list.xml"), binaryXml(list)},
        {QStringLiteral("res/gradient.xml"), binaryXml(gradient(1))},
        {QStringLiteral("res/icon.png"), picture(8, 8, 0x808080)},
        {QStringLiteral("res/icon.9.png"), ninePatchPng(patch, {2, 5}, {3, 4}, {1, 1, 2, 2})},
        {QStringLiteral("res/vector.xml"), binaryXml(vector())},
        {QStringLiteral("res/layers.xml"), binaryXml(layers())},
        {QStringLiteral("res/shortcuts.xml"), binaryXml(fileOfShortcuts())},
    };
}

QVector<Member> drawableSeeds(const QString &samples)
{
    constexpr int MaxBytes = 16384; // the limit of the fuzzers for their inputs
    QVector<Member> seeds = ownDrawables();
    for (const QString &file : QDir(samples).entryList({QStringLiteral("*.aapt2.apk")})) {
        ZipArchive archive(QDir(samples).filePath(file));
        if (!archive.open())
            continue;
        for (const QString &path : archive.names()) {
            const QByteArray bytes = archive.file(path, MaxBytes);
            if (!path.startsWith(QLatin1String("res/")) || !XmlReader::isDocument(bytes))
                continue;
            const QString app = file.section(QLatin1Char('.'), 0, 0) + QLatin1Char('-');
            seeds.append({app + path.section(QLatin1Char('/'), -1), binaryXml(relinked(XmlReader(bytes).root()))});
        }
    }
    return seeds;
}

QVector<Member> pathSeeds()
{
    // An arc of infinite radii, one of tiny radii, and small numbers of all kinds.
    const QByteArray infinite = QByteArray("\0\x7f\x80\0\0", 5).repeated(2);
    const QByteArray tiny = QByteArray("\0\0\0\0\1", 5).repeated(2);
    const QByteArray small("\1\x20\2\x30\3\x40\1\x50\2\x60\3\x70\1\x10\2\x12\3\x14", 18);
    return {
        {QStringLiteral("infinite"), small + QByteArray(8, '\0') + infinite + small},
        {QStringLiteral("tiny"), small + QByteArray(8, '\0') + tiny + small},
        {QStringLiteral("small"), small.repeated(20)},
    };
}

QVector<Member> kitPackageSeeds()
{
    QVector<Member> seeds{
        {QStringLiteral("dense"), tableOf(TableEncoding::Dense) + manifest(Encoding::Utf8)},
        {QStringLiteral("short-offsets"), tableOf(TableEncoding::ShortOffsets) + manifest(Encoding::Utf16)},
        {QStringLiteral("sparse"), tableOf(TableEncoding::Sparse) + manifest(Encoding::Utf8)},
        {QStringLiteral("many-queries"), tableOf(TableEncoding::Dense) + binaryXml(manifestOfManyQueries())},
        {QStringLiteral("whole.apk"), wholePackage(TableEncoding::Dense)},
    };
    const QByteArray split = zip({{QStringLiteral("AndroidManifest.xml"), splitManifest()},
                                  {QStringLiteral("resources.arsc"), tableOf(TableEncoding::Sparse)}},
                                 Compression::Stored);
    for (const Compression compression : {Compression::Stored, Compression::Deflated}) {
        const QString suffix = compression == Compression::Stored ? QStringLiteral("stored") : QStringLiteral("packed");
        seeds.append({QStringLiteral("set-") + suffix,
                      zip({{QStringLiteral("split.apk"), split},
                           {QStringLiteral("base.apk"), wholePackage(TableEncoding::ShortOffsets)}},
                          compression)});
    }
    return seeds;
}

QVector<Member> drawableRegressions()
{
    return {};
}

QVector<Member> kitPackageRegressions()
{
    const QByteArray set = zip({{QStringLiteral("base.apk"), wholePackage(TableEncoding::Dense)}});
    return {
        {QStringLiteral("packages-of-the-same-bytes"),
         withNames(set, {QStringLiteral("aaaa.apk"), QStringLiteral("base.apk"), QStringLiteral("bbbb.apk")})},
    };
}
