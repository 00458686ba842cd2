// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "DrawableFixture.h"
#include "ResourcesFixture.h"
#include "format/AndroidAttributes.h"
#include "package/PackageData.h"
#include "theme/PlatformThemes.h"

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Package.h>

#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

namespace {

constexpr quint32 ColorAttr = 0x7f010000;

// Styles of the package.
enum Style : quint32 {
    RedStyle = 0x7f020000,
    GreenStyle,
    BlueOverlay,
    EmptyStyle,
    NightStyle,
};
constexpr quint32 DrawableId = 0x7f030000;
constexpr quint32 PlatformDrawable = 0x01010000; // the same file
constexpr int ColorType = int(ValueType::FirstColor);
constexpr int AttributeType = int(ValueType::Attribute);
constexpr int UiModeAt = 29;
constexpr int NightBits = 0x20;
constexpr int Size = 8;

QByteArray styleOf(QRgb color)
{
    return mapOf({mapItem(ColorAttr, ColorType, color)});
}

// The package's own styles, and a part of the platform's.
QByteArray themedTable()
{
    PackageBuilder own;
    own.types({latin("attr"), latin("style"), latin("drawable")})
        .type(TypeBuilder(2)
                  .entry(0, styleOf(Red))
                  .entry(1, styleOf(Green))
                  .entry(2, styleOf(Blue))
                  .entry(3, mapOf({}))
                  .entry(4, styleOf(White)))
        .type(TypeBuilder(2, ConfigBuilder().u8(UiModeAt, NightBits).build()).entry(4, styleOf(Black)))
        .type(TypeBuilder(2, ConfigBuilder().sdkVersion(29).build()).entry(1, styleOf(White)))
        .type(TypeBuilder(3).value(0, String, 0));
    constexpr int DeviceDefault = 0x128;
    PackageBuilder platform(1, latin("android"));
    platform.types({latin("drawable"), latin("dimen"), latin("style")})
        .type(TypeBuilder(1).value(0, String, 0))
        .type(TypeBuilder(3).entry(DeviceDefault, styleOf(Black)));
    return TableBuilder().strings({latin("res/icon.xml")}).package(own).package(platform).build();
}

QByteArray iconXml()
{
    XmlBuilder builder;
    builder.attributeId(latin("color"), Attr::Color);
    return builder.empty(latin("color"), {androidValue(latin("color"), AttributeType, ColorAttr)}).build();
}

/// Themes and icons of the elements of a manifest; 0 for none.
struct Themes {
    quint32 application = 0;
    quint32 activity = 0;
    quint32 alias = 0;
    quint32 icon = DrawableId;
    quint32 activityIcon = 0;
};

QByteArray themedPackage(const Themes &themes, const QByteArray &table, int targetSdkVersion = 21)
{
    XmlBuilder builder;
    builder.attributeId(latin("theme"), Attr::Theme)
        .attributeId(latin("icon"), Attr::Icon)
        .attributeId(latin("name"), Attr::Name)
        .attributeId(latin("targetActivity"), Attr::TargetActivity)
        .attributeId(latin("targetSdkVersion"), Attr::TargetSdkVersion);
    const auto attributes = [](QVector<Attribute> others, quint32 theme, quint32 icon = 0) {
        if (theme != 0)
            others.append(androidReference(latin("theme"), theme));
        if (icon != 0)
            others.append(androidReference(latin("icon"), icon));
        return others;
    };
    builder.start(latin("manifest"), {plainText(latin("package"), latin("org.example.app"))})
        .empty(latin("uses-sdk"), {androidValue(latin("targetSdkVersion"), Integer, targetSdkVersion)})
        .start(latin("application"), attributes({}, themes.application, themes.icon))
        .start(latin("activity"),
               attributes({androidText(latin("name"), latin(".Main"))}, themes.activity, themes.activityIcon))
        .launcherFilter()
        .end(latin("activity"))
        .start(latin("activity-alias"), attributes({androidText(latin("name"), latin(".Alias")),
                                                    androidText(latin("targetActivity"), latin(".Main"))},
                                                   themes.alias))
        .launcherFilter()
        .end(latin("activity-alias"))
        .end(latin("application"))
        .end(latin("manifest"));
    return package(table, builder.build(), {{latin("res/icon.xml"), iconXml()}});
}

IconRequest requestFor(IconRequest::Theme theme)
{
    IconRequest request(Size);
    request.setTheme(theme);
    return request;
}

IconRequest requestForStyle(quint32 style)
{
    IconRequest request(Size);
    request.setThemeStyle(style);
    return request;
}

/// A package on a device, and its renderer.
struct ThemedPackage {
    explicit ThemedPackage(const Themes &themes = {}, int targetSdkVersion = 21)
        : device(themedPackage(themes, themedTable(), targetSdkVersion))
    {
    }

    // The color of a picture; Nothing for none.
    static QRgb colorOf(const QImage &image) { return image.isNull() ? Nothing : image.pixel(Size / 2, Size / 2); }
    QRgb application(const IconRequest &request) { return colorOf(renderer.icon(request)); }
    QRgb launcher(int number, const IconRequest &request)
    {
        return colorOf(renderer.icon(package.launchers().at(number), request));
    }
    QString error() const { return described(renderer.error()); }

    PackageDevice device;
    Package package{&device};
    DrawableRenderer renderer{package};
};

} // namespace

class TestThemedIcons : public QObject
{
    Q_OBJECT

private slots:
    void launchersDrawWithoutATheme();
    void themeOfThePackage_data();
    void themeOfThePackage();
    void standInsHaveTheThemeOfTheirActivity();
    void picturesOfThePlatform();
    void themeOfTheTargetedVersion();
    void styleById();
    void overlaysReplaceValues();
    void nightAndVersion();
    void platformStyleThatIsMissing();
    void requestsAreCompared();
    void damagedTables();
};

void TestThemedIcons::launchersDrawWithoutATheme()
{
    ThemedPackage package({RedStyle});
    QCOMPARE(package.application(IconRequest(Size)), Nothing);
    QCOMPARE(package.error(), latin("NoThemeValue: ?0x7f010000 has no value without a theme"));
    QCOMPARE(package.launcher(0, IconRequest(Size)), Nothing);
}

void TestThemedIcons::themeOfThePackage_data()
{
    QTest::addColumn<quint32>("application");
    QTest::addColumn<quint32>("activity");
    QTest::addColumn<quint32>("alias");
    QTest::addColumn<QRgb>("ofApplication");
    QTest::addColumn<QRgb>("ofActivity");
    const auto row = [](const char *name, const Themes &themes, QRgb ofApplication, QRgb ofActivity) {
        QTest::newRow(name) << themes.application << themes.activity << themes.alias << ofApplication << ofActivity;
    };
    row("application", {RedStyle}, Red, Red);
    row("activity", {RedStyle, BlueOverlay}, Red, Blue);
    // The theme of an activity replaces the application's.
    row("activity without the value", {RedStyle, EmptyStyle}, Red, Nothing);
    row("activity alone", {0, RedStyle}, Black, Red);
    row("alias", {RedStyle, 0, BlueOverlay}, Red, Red);
    row("none", {}, Black, Black);
    row("unknown style", {0x7f0200ff}, Nothing, Nothing);
}

void TestThemedIcons::themeOfThePackage()
{
    QFETCH(quint32, application);
    QFETCH(quint32, activity);
    QFETCH(quint32, alias);
    QFETCH(QRgb, ofApplication);
    QFETCH(QRgb, ofActivity);
    const IconRequest request = requestFor(IconRequest::Theme::Package);
    ThemedPackage package({application, activity, alias});
    QCOMPARE(package.application(request), ofApplication);
    QCOMPARE(ThemedPackage::colorOf(package.renderer.drawable(DrawableId, request)), ofApplication);
    QCOMPARE(package.launcher(0, request), ofActivity);
    QCOMPARE(package.launcher(1, request), ofActivity);
}

void TestThemedIcons::standInsHaveTheThemeOfTheirActivity()
{
    ThemedPackage package({RedStyle, BlueOverlay, 0, 0, DrawableId});
    QCOMPARE(package.application(requestFor(IconRequest::Theme::Package)), Blue);
    QCOMPARE(package.error(), QString());
    QCOMPARE(package.application(IconRequest(Size)), Nothing);
    QCOMPARE(package.application(requestForStyle(GreenStyle)), White);
    ThemedPackage ofApplication({RedStyle, 0, 0, 0, DrawableId});
    QCOMPARE(ofApplication.application(requestFor(IconRequest::Theme::Package)), Red);
}

// They are drawn in the theme of the request, as the package's own ones.
void TestThemedIcons::picturesOfThePlatform()
{
    ThemedPackage package({RedStyle, BlueOverlay, 0, PlatformDrawable});
    QCOMPARE(package.application(IconRequest(Size)), Nothing);
    QCOMPARE(package.error(), latin("NoThemeValue: ?0x7f010000 has no value without a theme"));
    QCOMPARE(package.launcher(0, IconRequest(Size)), Nothing);
    const IconRequest request = requestFor(IconRequest::Theme::Package);
    QCOMPARE(package.application(request), Red);
    QCOMPARE(package.launcher(0, request), Blue);
}

void TestThemedIcons::themeOfTheTargetedVersion()
{
    QCOMPARE(platformTheme(1), 0x01030005u);
    QCOMPARE(platformTheme(10), 0x01030005u);
    QCOMPARE(platformTheme(11), 0x0103006bu);
    QCOMPARE(platformTheme(13), 0x0103006bu);
    QCOMPARE(platformTheme(14), 0x01030128u);
    QCOMPARE(platformTheme(23), 0x01030128u);
    QCOMPARE(platformTheme(24), 0x0103013fu);
    QCOMPARE(platformTheme(10000), 0x0103013fu);
    PackageDevice device(themedPackage({}, themedTable(), 23));
    PackageData data(&device);
    QCOMPARE(data.theme(nullptr), 0x01030128u);
}

void TestThemedIcons::styleById()
{
    ThemedPackage package({RedStyle});
    QCOMPARE(package.application(requestForStyle(BlueOverlay)), Blue);
    QCOMPARE(package.error(), QString());
    QCOMPARE(package.application(requestForStyle(EmptyStyle)), Nothing);
    QCOMPARE(package.error(), latin("NoThemeValue: ?0x7f010000 has no value in the theme"));
    QCOMPARE(package.application(requestForStyle(0)), Nothing);
}

void TestThemedIcons::overlaysReplaceValues()
{
    ThemedPackage package({RedStyle});
    IconRequest request = requestFor(IconRequest::Theme::Package);
    request.setThemeOverlays({BlueOverlay});
    QCOMPARE(package.application(request), Blue);
    request.setThemeOverlays({BlueOverlay, NightStyle, EmptyStyle});
    QCOMPARE(package.application(request), White);
    request.setTheme(IconRequest::Theme::None);
    QCOMPARE(package.application(request), Nothing);
}

void TestThemedIcons::nightAndVersion()
{
    ThemedPackage package;
    IconRequest request = requestForStyle(NightStyle);
    QCOMPARE(package.application(request), White);
    request.setNight(true);
    QCOMPARE(package.application(request), Black);
    request.setThemeStyle(GreenStyle);
    QCOMPARE(package.application(request), White);
    request.setPlatformVersion(28);
    QCOMPARE(package.application(request), Green);
}

void TestThemedIcons::platformStyleThatIsMissing()
{
    ThemedPackage package({}, 24);
    QCOMPARE(package.application(requestFor(IconRequest::Theme::Package)), Nothing);
    QCOMPARE(package.error(),
             latin("NoThemeValue: ?0x7f010000 has no value in the theme, whose style 0x0103013f is missing"));
}

void TestThemedIcons::requestsAreCompared()
{
    const IconRequest plain(Size);
    QCOMPARE(plain.theme(), IconRequest::Theme::None);
    QCOMPARE(plain.themeStyle(), 0u);
    QVERIFY(plain.themeOverlays().isEmpty());
    QVERIFY(plain != requestFor(IconRequest::Theme::Package));
    QVERIFY(requestForStyle(RedStyle) != requestForStyle(GreenStyle));
    QVERIFY(requestForStyle(RedStyle) == requestForStyle(RedStyle));
    IconRequest overlaid = plain;
    overlaid.setThemeOverlays({RedStyle});
    QVERIFY(overlaid != plain);
}

void TestThemedIcons::damagedTables()
{
    const QByteArray good = themedTable();
    int drawn = 0;
    for (int at = 0; at < good.size(); ++at) {
        QByteArray table = good;
        table[at] = char(table.at(at) ^ 0xff);
        PackageDevice device(themedPackage({RedStyle}, table));
        DrawableRenderer renderer{Package(&device)};
        const QImage image = renderer.icon(requestFor(IconRequest::Theme::Package));
        QVERIFY(image.isNull() || image.size() == QSize(Size, Size));
        drawn += ThemedPackage::colorOf(image) == Red ? 1 : 0;
    }
    QVERIFY(drawn > 0 && drawn < good.size());
}

QTEST_GUILESS_MAIN(TestThemedIcons)
#include "tst_themedicons.moc"
