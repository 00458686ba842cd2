// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PLATFORMFIXTURE_H
#define PLATFORMFIXTURE_H

#include "Apk.h"
#include "Files.h"
#include "format/AndroidAttributes.h"

#include <QRgb>
#include <QString>

/// Platforms and packages made in code, which refer to each other.
namespace fixture {

// Resources of the platform.
constexpr quint32 PlatformLabel = 0x01040000;
constexpr quint32 PlatformAlias = 0x01040001; ///< a reference to PlatformLabel
constexpr quint32 PlatformIcon = 0x01080000;  ///< the file res/icon.png
constexpr quint32 PlatformXml = 0x01080001;   ///< the file res/shape.xml
constexpr quint32 PlatformColor = 0x01060000; ///< a colour that is known without a platform, too
constexpr quint32 PlatformSize = 0x01050000;
constexpr quint32 MissingInPlatform = 0x01040099;

constexpr QRgb ColorOfPlatform = 0xff123456;

/// A manifest with the ids of attributes of packages and platforms, and with the prefix android bound.
inline XmlBuilder packageManifest()
{
    XmlBuilder builder;
    builder.attributeId(QStringLiteral("label"), Attr::Label)
        .attributeId(QStringLiteral("icon"), Attr::Icon)
        .attributeId(QStringLiteral("name"), Attr::Name)
        .attributeId(QStringLiteral("versionCode"), Attr::VersionCode)
        .attributeId(QStringLiteral("versionName"), Attr::VersionName)
        .attributeId(QStringLiteral("targetSdkVersion"), Attr::TargetSdkVersion)
        .startNamespace(QStringLiteral("android"), androidUri);
    return builder;
}

/// The table of a platform of English and German, with the package id @p packageId, and @p tail as the last chunk.
inline QByteArray platformTable(int packageId = 0x01, const QByteArray &tail = QByteArray())
{
    constexpr int ColorType = 0x1c;
    constexpr int DimensionType = 5;
    constexpr int FiftyDp = 50 << 8 | 1;
    const QStringList types{QStringLiteral("attr"),   QStringLiteral("id"),      QStringLiteral("style"),
                            QStringLiteral("string"), QStringLiteral("dimen"),   QStringLiteral("color"),
                            QStringLiteral("array"),  QStringLiteral("drawable")};
    TableBuilder table;
    table
        .strings({QStringLiteral("OK"), QStringLiteral("Gut"), QStringLiteral("res/icon.png"),
                  QStringLiteral("res/shape.xml")})
        .package(
            PackageBuilder(packageId, QStringLiteral("android"))
                .types(types)
                .keys({QStringLiteral("ok"), QStringLiteral("yes"), QStringLiteral("icon"), QStringLiteral("shape"),
                       QStringLiteral("gray"), QStringLiteral("size")})
                .type(TypeBuilder(4)
                          .entry(0, simpleEntry(String, 0, 0, 0))
                          .entry(1, simpleEntry(Reference, PlatformLabel, 0, 1)))
                .type(TypeBuilder(4, ConfigBuilder().locale("de").build()).entry(0, simpleEntry(String, 1)))
                .type(TypeBuilder(5).entry(0, simpleEntry(DimensionType, FiftyDp, 0, 5)))
                .type(TypeBuilder(6).entry(0, simpleEntry(ColorType, ColorOfPlatform, 0, 4)))
                .type(TypeBuilder(8).entry(0, simpleEntry(String, 2, 0, 2)).entry(1, simpleEntry(String, 3, 0, 3))));
    if (!tail.isEmpty())
        table.chunk(tail);
    return table.build();
}

/// The manifest of a platform of API level 29.
inline QByteArray platformManifest()
{
    return packageManifest()
        .start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("android"))})
        .empty(QStringLiteral("uses-sdk"), {androidValue(QStringLiteral("targetSdkVersion"), Integer, 29)})
        .empty(QStringLiteral("permission"), {androidText(QStringLiteral("name"), QStringLiteral("CAMERA")),
                                              androidReference(QStringLiteral("label"), PlatformLabel)})
        .end(QStringLiteral("manifest"))
        .build();
}

} // namespace fixture

#endif
