// SPDX-License-Identifier: LGPL-2.1-or-later

// Draws the drawables of the installed framework package in its own themes.

#include "Apk.h"

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Package.h>
#include <SorrelKit/Platform.h>
#include <SorrelKit/Resources.h>

#include <QtTest>

using namespace fixture;
using SorrelKit::DrawableRenderer;
using SorrelKit::IconError;
using SorrelKit::IconRequest;
using SorrelKit::Package;
using SorrelKit::Platform;
using SorrelKit::Resources;

namespace {

constexpr int Size = 48;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

// The color of the most opaque pixel.
QRgb colorOf(const QImage &image)
{
    QRgb color = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > qAlpha(color))
                color = image.pixel(x, y);
        }
    }
    return color;
}

} // namespace

class TestPlatformThemes : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void colorsOfThemes_data();
    void colorsOfThemes();
    void overlaysOfThemes();
    void everyDrawableHasItsValues();
    void applicationsInheritFromThePlatform();

private:
    quint32 id(const char *name) const { return m_resources.find(latin(name)); }
    IconRequest requestFor(const char *style, bool isNight = false) const
    {
        IconRequest request(Size);
        request.setNight(isNight);
        request.setThemeStyle(id(style));
        return request;
    }
    QRgb color(const char *name) { return colorOf(m_renderer.drawable(id(name), IconRequest(Size))); }

    const Package m_package{latin(SORREL_FRAMEWORK_RES)};
    const Resources m_resources{m_package};
    DrawableRenderer m_renderer{m_package};
};

void TestPlatformThemes::initTestCase()
{
    QVERIFY(m_package.isValid());
}

void TestPlatformThemes::colorsOfThemes_data()
{
    QTest::addColumn<QByteArray>("style");
    QTest::addColumn<bool>("isNight");
    QTest::addColumn<QByteArray>("color");
    const auto row = [](const char *style, bool isNight, const char *color) {
        QTest::addRow("%s%s", style, isNight ? ", night" : "") << QByteArray(style) << isNight << QByteArray(color);
    };
    row("style/Theme.Material", false, "color/accent_material_dark");
    row("style/Theme.Material.Light", false, "color/accent_material_light");
    row("style/Theme.Material.Light", true, "color/accent_material_light");
    row("style/Theme.DeviceDefault.Light", false, "color/accent_device_default_light");
    row("style/Theme.DeviceDefault.DayNight", false, "color/accent_device_default_light");
    row("style/Theme.DeviceDefault.DayNight", true, "color/accent_device_default_dark");
}

void TestPlatformThemes::colorsOfThemes()
{
    QFETCH(QByteArray, style);
    QFETCH(bool, isNight);
    QFETCH(QByteArray, color);
    // Its tint is ?colorControlActivated, which is ?colorAccent.
    const QImage icon = m_renderer.drawable(id("drawable/ic_lock_lock"), requestFor(style.constData(), isNight));
    QCOMPARE(m_renderer.error().text(), QString());
    QCOMPARE(colorOf(icon), this->color(color.constData()));
}

void TestPlatformThemes::overlaysOfThemes()
{
    IconRequest request = requestFor("style/Theme.Material.Light");
    const quint32 background = id("drawable/bottomsheet_background");
    const QRgb light = colorOf(m_renderer.drawable(background, request));
    request.setThemeOverlays({id("style/ThemeOverlay.Material.Dark")});
    const QRgb dark = colorOf(m_renderer.drawable(background, request));
    QCOMPARE(light, color("color/background_floating_material_light"));
    QCOMPARE(dark, color("color/background_floating_material_dark"));
}

void TestPlatformThemes::everyDrawableHasItsValues()
{
    int themed = 0;
    QStringList missing;
    for (const quint32 drawable : m_resources.ids()) {
        if (!m_resources.name(drawable).startsWith(latin("drawable/")))
            continue;
        m_renderer.drawable(drawable, IconRequest(Size));
        if (m_renderer.error().code() != IconError::Code::NoThemeValue)
            continue;
        ++themed;
        m_renderer.drawable(drawable, requestFor("style/Theme.DeviceDefault.Light"));
        if (m_renderer.error().code() == IconError::Code::NoThemeValue)
            missing.append(m_resources.name(drawable) + latin(": ") + m_renderer.error().text());
    }
    QVERIFY(themed > 100);
    QCOMPARE(missing, QStringList());
}

void TestPlatformThemes::applicationsInheritFromThePlatform()
{
    constexpr quint32 ColorControlActivated = 0x0101042a;
    constexpr quint32 Icon = 0x7f010000;
    PackageBuilder resources;
    resources.types({latin("drawable")}).type(TypeBuilder(1).value(0, String, 0));
    XmlBuilder manifest;
    manifest.attributeId(latin("targetSdkVersion"), 0x01010270);
    manifest.start(latin("manifest"), {plainText(latin("package"), latin("org.x"))})
        .empty(latin("uses-sdk"), {androidValue(latin("targetSdkVersion"), Integer, 29)})
        .empty(latin("application"))
        .end(latin("manifest"));
    XmlBuilder icon;
    icon.attributeId(latin("color"), 0x010101a5)
        .empty(latin("color"), {androidValue(latin("color"), int(ValueType::Attribute), ColorControlActivated)});
    PackageDevice device(TableBuilder().strings({latin("res/icon.xml")}).package(resources).build(), manifest.build(),
                         {{latin("res/icon.xml"), icon.build()}});
    Package package(&device);
    package.setPlatform(Platform(latin(SORREL_FRAMEWORK_RES)));
    DrawableRenderer renderer(package);
    IconRequest request(Size);
    request.setTheme(IconRequest::Theme::Package);
    // The default for the targeted version is Theme.DeviceDefault.Light.DarkActionBar.
    QCOMPARE(colorOf(renderer.drawable(Icon, request)), color("color/accent_device_default_light"));
    QCOMPARE(renderer.error().text(), QString());
}

QTEST_GUILESS_MAIN(TestPlatformThemes)
#include "tst_platform_themes.moc"
