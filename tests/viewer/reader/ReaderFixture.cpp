// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ReaderFixture.h"

#include "Apk.h"
#include "SigningBlockBuilder.h"
#include "format/AndroidAttributes.h"

namespace {

using namespace fixture;

constexpr qint64 Label = 0x7f010000;
constexpr qint64 Icon = 0x7f020000;
constexpr int IconSize = 8;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

QByteArray notesTable()
{
    const QByteArray german = ConfigBuilder().locale("de").build();
    PackageBuilder resources(0x7f, latin("org.example.notes"));
    resources.types({latin("string"), latin("drawable"), latin("array")})
        .keys({latin("app_name"), latin("icon"), latin("broken"), latin("colors")})
        .type(TypeBuilder(1).entry(0, simpleEntry(String, 0, 0, 0)))
        .type(TypeBuilder(1, german).entry(0, simpleEntry(String, 1, 0, 0)))
        .type(TypeBuilder(2).entry(0, simpleEntry(String, 2, 0, 1)).entry(1, simpleEntry(String, 3, 0, 2)))
        .type(TypeBuilder(3).entry(0, mapOf({mapItem(0x02000000, String, 4), mapItem(0x02000001, String, 5)}, 0, 3)));
    return TableBuilder()
        .strings({latin("Notes"), latin("Notizen"), latin("res/icon.png"), latin("res/broken.png"), latin("red"),
                  latin("blue")})
        .package(resources)
        .build();
}

XmlBuilder notesManifest()
{
    XmlBuilder builder;
    builder.attributeId(latin("label"), Attr::Label)
        .attributeId(latin("icon"), Attr::Icon)
        .attributeId(latin("name"), Attr::Name)
        .attributeId(latin("enabled"), Attr::Enabled)
        .attributeId(latin("versionCode"), Attr::VersionCode)
        .attributeId(latin("versionName"), Attr::VersionName)
        .attributeId(latin("minSdkVersion"), Attr::MinSdkVersion)
        .attributeId(latin("targetSdkVersion"), Attr::TargetSdkVersion)
        .startNamespace(latin("android"), androidUri);
    return builder;
}

QByteArray splitPackage()
{
    const QByteArray manifest = notesManifest()
                                    .start(latin("manifest"), {plainText(latin("package"), latin("org.example.notes")),
                                                               plainText(latin("split"), latin("config.de")),
                                                               androidValue(latin("versionCode"), Integer, 7)})
                                    .end(latin("manifest"))
                                    .build();
    return zip({{latin("AndroidManifest.xml"), manifest}, {latin("assets/words"), QByteArray(64, 'w')}});
}

} // namespace

QByteArray fixture::notesPackage()
{
    const auto name = [](const char *text) { return androidText(latin("name"), latin(text)); };
    XmlBuilder manifest = notesManifest();
    manifest.start(latin("manifest"),
                   {plainText(latin("package"), latin("org.example.notes")),
                    androidValue(latin("versionCode"), Integer, 7), androidText(latin("versionName"), latin("1.5"))});
    manifest.empty(latin("uses-sdk"), {androidValue(latin("minSdkVersion"), Integer, 24),
                                       androidValue(latin("targetSdkVersion"), Integer, 30)});
    for (const char *const permission :
         {"android.permission.INTERNET", "android.permission.CAMERA", "org.example.notes.permission.SYNC"})
        manifest.empty(latin("uses-permission"), {name(permission)});
    manifest.start(latin("application"),
                   {androidReference(latin("label"), Label), androidReference(latin("icon"), Icon)});
    manifest.start(latin("activity"), {name("org.example.notes.Main")}).launcherFilter().end(latin("activity"));
    manifest
        .start(latin("activity"),
               {name("org.example.notes.Hidden"), androidText(latin("label"), latin("<b>Hidden</b>")),
                androidValue(latin("enabled"), Boolean, 0)})
        .launcherFilter()
        .end(latin("activity"));
    manifest.end(latin("application")).end(latin("manifest"));
    return package(notesTable(), manifest.build(), {{latin("res/icon.png"), picture(IconSize, IconSize, 0xffff0000)}});
}

QByteArray fixture::notesSet()
{
    return zip({{latin("base.apk"), notesPackage()},
                {latin("splits/config.de.apk"), splitPackage()},
                {latin("readme.txt"), "notes"}});
}

QByteArray fixture::signedPackage(const QByteArray &zip)
{
    return SigningBlockBuilder(zip).v2({BlockSigner(TestKey::rsa())}).build();
}
