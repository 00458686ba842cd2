// SPDX-License-Identifier: LGPL-2.1-or-later
#include "LintFixture.h"

namespace fixture {

namespace {

const char *const tableName = "resources.arsc";
const char *const manifestName = "AndroidManifest.xml";

constexpr qint64 ColorAttribute = 0x010101a5;
constexpr qint64 DrawableAttribute = 0x01010199;
constexpr int ColorType = 0x1c;

enum StringNumber : int {
    Label,
    IconPath,
    XmlPath
};
enum TypeId : int {
    StringType = 1,
    DrawableType = 2
};

XmlBuilder builderWithIds()
{
    XmlBuilder builder;
    builder.attributeId(QStringLiteral("label"), 0x01010001)
        .attributeId(QStringLiteral("icon"), 0x01010002)
        .attributeId(QStringLiteral("name"), 0x01010003)
        .attributeId(QStringLiteral("minSdkVersion"), 0x0101020c)
        .attributeId(QStringLiteral("targetSdkVersion"), 0x01010270);
    return builder;
}

} // namespace

QByteArray lintManifest(const LintManifest &manifest)
{
    const QString root = QStringLiteral("manifest");
    const QString activity = QStringLiteral("activity");
    const QString application = QStringLiteral("application");
    XmlBuilder builder = builderWithIds();
    if (manifest.isDeclared)
        builder.startNamespace(QStringLiteral("android"), androidUri);
    if (manifest.package.isNull())
        builder.start(root);
    else
        builder.start(root, {plainText(QStringLiteral("package"), manifest.package)});
    builder
        .empty(QStringLiteral("uses-sdk"),
               {androidValue(QStringLiteral("minSdkVersion"), Integer, manifest.minSdk),
                androidValue(QStringLiteral("targetSdkVersion"), Integer, manifest.targetSdk)})
        .start(application);
    for (int i = 0; i < manifest.launchers; ++i) {
        QVector<Attribute> attributes = manifest.activity;
        if (i > 0)
            attributes.first().raw += QString::number(i);
        if (manifest.hasOwnIcons)
            attributes.last().data += i;
        builder.start(activity, attributes).launcherFilter().end(activity);
    }
    builder.end(manifest.closing).chunk(manifest.chunk).end(root);
    if (manifest.isDeclared)
        builder.endNamespace(QStringLiteral("android"), androidUri);
    return builder.build();
}

LintManifest lintManifestWithoutResources()
{
    LintManifest manifest;
    manifest.activity = {androidText(QStringLiteral("name"), QStringLiteral(".Main")),
                         androidText(QStringLiteral("label"), QStringLiteral("Notes")),
                         androidText(QStringLiteral("icon"), QStringLiteral("res/icon.png"))};
    return manifest;
}

PackageBuilder lintPackage()
{
    return PackageBuilder().types({QStringLiteral("string"), QStringLiteral("drawable")}).keys({QStringLiteral("key")});
}

TypeBuilder labelType()
{
    return TypeBuilder(StringType).value(0, String, Label);
}

TypeBuilder iconType(int count)
{
    TypeBuilder type(DrawableType);
    for (int i = 0; i < count; ++i)
        type.value(i, String, IconPath);
    return type;
}

QByteArray lintTable(const PackageBuilder &package)
{
    return TableBuilder()
        .strings({QStringLiteral("Notes"), QStringLiteral("res/icon.png"), QStringLiteral("res/icon.xml")})
        .package(package)
        .build();
}

QByteArray lintTable()
{
    return lintTable(lintPackage().type(labelType()).type(iconType()));
}

TypeBuilder xmlIconType(const QByteArray &config)
{
    return TypeBuilder(DrawableType, config).value(0, String, XmlPath);
}

Member lintIcon()
{
    return {QStringLiteral("res/icon.png"), picture(48, 48, 0x2040ff)};
}

Member xmlIcon(const QString &root)
{
    const QString color = QStringLiteral("color");
    return {QStringLiteral("res/icon.xml"), XmlBuilder()
                                                .attributeId(color, ColorAttribute)
                                                .startNamespace(QStringLiteral("android"), androidUri)
                                                .empty(root, {androidValue(color, ColorType, 0xff2040ff)})
                                                .build()};
}

Member iconWithin(qint64 resource)
{
    const QString drawable = QStringLiteral("drawable");
    return {QStringLiteral("res/icon.xml"), XmlBuilder()
                                                .attributeId(drawable, DrawableAttribute)
                                                .startNamespace(QStringLiteral("android"), androidUri)
                                                .empty(QStringLiteral("inset"), {androidReference(drawable, resource)})
                                                .build()};
}

QByteArray lintPackageFile(const QByteArray &table, const QByteArray &manifest, const QVector<Member> &others)
{
    return package(table, manifest, QVector<Member>{lintIcon()} + others);
}

QVector<RawMember> lintMembers(const QVector<RawMember> &others, const QByteArray &manifest)
{
    return QVector<RawMember>{{manifestName, manifest}, {tableName, lintTable()}, {"res/icon.png", lintIcon().content}}
           + others;
}

QByteArray lintPackageWithTableAt(int distance)
{
    LintManifest manifest;
    manifest.targetSdk = 30;
    constexpr int HeaderSize = 30;
    constexpr int Alignment = 4;
    RawMember table{tableName, lintTable()};
    table.extraSize = (Alignment - (HeaderSize + int(table.name.size())) % Alignment) % Alignment + distance;
    return rawZip({table, {manifestName, lintManifest(manifest)}, {"res/icon.png", lintIcon().content}});
}

QByteArray lintPackageWithChunk(const QByteArray &chunk)
{
    LintManifest manifest;
    manifest.chunk = chunk;
    return lintPackageFile(lintTable(), lintManifest(manifest));
}

} // namespace fixture
