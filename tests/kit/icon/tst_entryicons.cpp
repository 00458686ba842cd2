// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "BinaryXml.h"
#include "DrawableFixture.h"
#include "Pictures.h"
#include "format/AndroidAttributes.h"
#include "icon/IconRenderer.h"

#include <SorrelKit/DrawableRenderer.h>

#include <QtTest>

using namespace fixture;
using namespace SorrelKit;

namespace {

constexpr quint32 Plain = 0x7f010000;
constexpr quint32 Round = 0x7f010001;
constexpr quint32 Wide = 0x7f010002;
constexpr quint32 Directed = 0x7f010003;

QString latin(const char *value)
{
    return QString::fromLatin1(value);
}

XmlAttribute reference(quint32 id, quint32 resource)
{
    XmlAttribute attribute;
    attribute.id = id;
    attribute.value = {ValueType::Reference, resource};
    return attribute;
}

/// A package of one television entry with these attributes: red is plain, green is round, blue is wide, and a picture
/// that depends on the direction of the layout.
struct Television {
    explicit Television(const Attributes &application, const Attributes &activity = {})
        : device(table(), manifest(application, activity),
                 {{latin("red.png"), picture(48, 48, Red)},
                  {latin("green.png"), picture(48, 48, Green)},
                  {latin("blue.png"), picture(320, 180, Blue)}}),
          package(&device),
          entry(package.entries(Entry::Kind::Television).value(0)),
          renderer(package)
    {
    }

    static QByteArray manifest(const Attributes &application, const Attributes &activity)
    {
        const XmlElement filter =
            element(latin("intent-filter"), {},
                    {element(latin("action"), {text(Attr::Name, latin("android.intent.action.MAIN"))}),
                     element(latin("category"), {text(Attr::Name, latin("android.intent.category.LEANBACK_LAUNCHER"))}),
                     element(latin("category"), {text(Attr::Name, latin("android.intent.category.LAUNCHER"))})});
        const Attributes name{text(Attr::Name, latin("org.example.Tv"))};
        return binaryXml(element(
            latin("manifest"), {},
            {element(latin("application"), application, {element(latin("activity"), name + activity, {filter})})}));
    }

    static QByteArray table()
    {
        PackageBuilder builder;
        constexpr int LayoutAt = 28;
        const QByteArray rightToLeft = ConfigBuilder().u8(LayoutAt, Configuration::RightToLeft << 6).build();
        const QByteArray leftToRight = ConfigBuilder().u8(LayoutAt, Configuration::LeftToRight << 6).build();
        builder.types({latin("drawable")})
            .keys({latin("key")})
            .type(TypeBuilder(1).value(0, fixture::String, 0).value(1, fixture::String, 1).value(2, fixture::String, 2))
            .type(TypeBuilder(1, leftToRight).value(3, fixture::String, 0))
            .type(TypeBuilder(1, rightToLeft).value(3, fixture::String, 1));
        return TableBuilder()
            .strings({latin("red.png"), latin("green.png"), latin("blue.png")})
            .package(builder)
            .build();
    }

    PackageDevice device;
    Package package;
    Entry entry;
    DrawableRenderer renderer;
};

QRgb middle(const QImage &image)
{
    return image.isNull() ? Nothing : image.pixel(image.width() / 2, image.height() / 2);
}

} // namespace

class TestEntryIcons : public QObject
{
    Q_OBJECT

private slots:
    void roundIcons_data();
    void roundIcons();
    void requestsCompare();
    void directionsChooseResources();
    void bannersAreWide();
    void bannersOfTheApplication();
    void noBanner();
    void sizesOfBanners_data();
    void sizesOfBanners();
    void picturesOfOtherSizesAreCentred();
};

void TestEntryIcons::roundIcons_data()
{
    QTest::addColumn<QVector<quint32>>("icons"); // of the application: plain, round; of the activity: plain, round
    QTest::addColumn<QRgb>("round");
    QTest::addColumn<QRgb>("ofPackage");
    const auto row = [](const char *name, const QVector<quint32> &icons, QRgb round, QRgb ofPackage) {
        QTest::newRow(name) << icons << round << ofPackage;
    };
    row("both", {Plain, Round, 0, 0}, Green, Green);
    row("no round one", {Plain, 0, 0, 0}, Red, Red);
    row("round alone", {0, Round, 0, 0}, Green, Green);
    row("the activity's own", {Plain, Round, Plain, 0}, Red, Green);
    row("the activity's round one", {Plain, 0, 0, Round}, Green, Red);
    row("the activity's alone", {0, 0, Plain, Round}, Green, Green);
}

void TestEntryIcons::roundIcons()
{
    QFETCH(QVector<quint32>, icons);
    QFETCH(QRgb, round);
    QFETCH(QRgb, ofPackage);
    const auto attributes = [&](int first) {
        Attributes result;
        if (icons.at(first) != 0)
            result.append(reference(Attr::Icon, icons.at(first)));
        if (icons.at(first + 1) != 0)
            result.append(reference(Attr::RoundIcon, icons.at(first + 1)));
        return result;
    };
    Television television(attributes(0), attributes(2));
    IconRequest request(48);
    const bool hasPlain = icons.at(0) != 0 || icons.at(2) != 0;
    QCOMPARE(middle(television.renderer.icon(television.entry, request)), hasPlain ? Red : Nothing);
    QCOMPARE(middle(television.renderer.icon(request)), hasPlain ? Red : Nothing);
    request.setRound(true);
    QCOMPARE(middle(television.renderer.icon(television.entry, request)), round);
    QCOMPARE(middle(television.renderer.icon(request)), ofPackage);
}

void TestEntryIcons::requestsCompare()
{
    const IconRequest usual(48);
    IconRequest other(48);
    other.setRound(true);
    QVERIFY(other.isRound() && !usual.isRound() && other != usual);
    other = usual;
    other.setLayoutDirection(Qt::RightToLeft);
    QCOMPARE(other.layoutDirection(), Qt::RightToLeft);
    QVERIFY(other != usual);
    other.setLayoutDirection(Qt::LeftToRight);
    QVERIFY(other == usual);
}

void TestEntryIcons::directionsChooseResources()
{
    Television television({reference(Attr::Icon, Directed)});
    IconRequest request(48);
    QCOMPARE(middle(television.renderer.icon(request)), Red);
    request.setLayoutDirection(Qt::LayoutDirectionAuto);
    QCOMPARE(middle(television.renderer.icon(request)), Red);
    request.setLayoutDirection(Qt::RightToLeft);
    QCOMPARE(middle(television.renderer.icon(request)), Green);
    QCOMPARE(middle(television.renderer.drawable(Directed, request)), Green);
}

void TestEntryIcons::bannersAreWide()
{
    Television television({reference(Attr::Icon, Plain)}, {reference(Attr::Banner, Wide)});
    IconRequest request(90);
    request.setDevicePixelRatio(2);
    const QImage banner = television.renderer.banner(television.entry, request);
    QCOMPARE(banner.size(), QSize(320, 180));
    QCOMPARE(banner.format(), QImage::Format_ARGB32_Premultiplied);
    QCOMPARE(banner.devicePixelRatio(), qreal(2));
    QCOMPARE(areaOf(banner, Blue), QRect(0, 0, 320, 180));
    QVERIFY(!television.renderer.error());
    QCOMPARE(middle(television.renderer.icon(television.entry, request)), Red);
}

void TestEntryIcons::bannersOfTheApplication()
{
    Television television({reference(Attr::Banner, Wide)});
    QCOMPARE(middle(television.renderer.banner(IconRequest(90))), Blue);
    QCOMPARE(middle(television.renderer.banner(television.entry, IconRequest(90))), Blue);
}

void TestEntryIcons::noBanner()
{
    Television television({reference(Attr::Icon, Plain)});
    QVERIFY(television.renderer.banner(IconRequest(90)).isNull());
    QCOMPARE(television.renderer.error().code(), IconError::Code::Missing);
    QVERIFY(television.renderer.banner(television.entry, IconRequest(90)).isNull());
    QCOMPARE(television.renderer.error().code(), IconError::Code::Missing);
    QVERIFY(television.renderer.banner(Entry(), IconRequest(90)).isNull());
    QCOMPARE(television.renderer.error().code(), IconError::Code::Missing);
    Television missing({reference(Attr::Banner, Wide + 9)});
    QVERIFY(missing.renderer.banner(IconRequest(90)).isNull());
    QCOMPARE(missing.renderer.error().code(), IconError::Code::NotDrawable);
}

void TestEntryIcons::sizesOfBanners_data()
{
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("width"); // 0: none
    QTest::newRow("none") << 0 << 0;
    QTest::newRow("negative") << -90 << 0;
    QTest::newRow("smallest") << 1 << 2;
    QTest::newRow("rounded down") << 100 << 178;
    QTest::newRow("rounded up") << 95 << 169;
    QTest::newRow("largest") << 576 << 1024;
    QTest::newRow("too large") << 577 << 0;
    QTest::newRow("far too large") << (1 << 30) << 0;
}

void TestEntryIcons::sizesOfBanners()
{
    QFETCH(int, height);
    QFETCH(int, width);
    Television television({reference(Attr::Banner, Wide)});
    const QImage banner = television.renderer.banner(IconRequest(height));
    QCOMPARE(banner.size(), QSize(width, width != 0 ? height : 0));
    QCOMPARE(television.renderer.error().code(), width != 0 ? IconError::Code::None : IconError::Code::InvalidSize);
}

void TestEntryIcons::picturesOfOtherSizesAreCentred()
{
    Television television({reference(Attr::Banner, Plain)});
    QCOMPARE(areaOf(television.renderer.banner(IconRequest(90)), Red), QRect(35, 0, 90, 90));
}

QTEST_GUILESS_MAIN(TestEntryIcons)
#include "tst_entryicons.moc"
