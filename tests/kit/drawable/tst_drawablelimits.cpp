// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bounds.h"
#include "DrawableFixture.h"
#include "format/AndroidAttributes.h"

#include <QtTest>

#include <cmath>
#include <limits>

using namespace SorrelKit;
using namespace fixture;

Q_DECLARE_METATYPE(XmlAttribute)
Q_DECLARE_METATYPE(XmlElement)

namespace {

constexpr int Huge = (1 << 23) - 1;
constexpr qint64 MaxMemory = 64 << 20;
const QString picturePath = QStringLiteral("picture.png");

XmlElement shape(const Elements &parts, const Attributes &attributes = {})
{
    return element("shape", attributes, parts);
}

XmlElement repeated(const XmlElement &item, int count)
{
    XmlElement list = element("layer-list");
    list.children.fill(item, count);
    return list;
}

XmlElement nested(XmlElement inner, int count, const QString &name, const Attributes &attributes)
{
    for (int i = 0; i < count; ++i)
        inner = element(name, attributes, {inner});
    return inner;
}

XmlElement reference(const QString &name, const Attributes &more = {})
{
    return element(name, Attributes{text(Attr::Src, picturePath)} + more);
}

QImage plain(int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(0x80ff0000);
    return image;
}

} // namespace

/// Errors of drawables, and the cost of hostile ones.
class TestDrawableLimits : public QObject
{
    Q_OBJECT

private slots:
    void errors_data();
    void errors();
    void aBrokenPartIsLeftOut();
    void firstItems_data();
    void firstItems();
    void hostile_data();
    void hostile();
    void hostilePictures_data();
    void hostilePictures();
    void boundsThatCannotBePainted_data();
    void boundsThatCannotBePainted();

private:
    static void check(const XmlElement &root, const QByteArray &picture = QByteArray());
};

void TestDrawableLimits::errors_data()
{
    QTest::addColumn<XmlElement>("root");
    QTest::addColumn<QString>("error");
    const auto row = [](const XmlElement &root, const char *error) {
        QTest::newRow(error) << root << QString::fromLatin1(error);
    };
    row(element("sprite"), "Unsupported: unsupported drawable <sprite>");
    row(element("adaptive-icon", {}, {element("monochrome", {drawable(Red)})}),
        "Damaged: <adaptive-icon> has no layers");
    row(element("layer-list", {}, {element("layer", {drawable(Red)})}), "Damaged: <layer-list> has no layers");
    row(element("ripple"), "Damaged: <ripple> has no layers");
    row(element("transition", {}, {element("item")}), "Damaged: <transition> has no layers");
    row(element("inset"), "Damaged: <inset> has no drawable");
    row(element("rotate"), "Damaged: <rotate> has no drawable");
    row(element("animated-rotate"), "Damaged: <animated-rotate> has no drawable");
    row(element("scale"), "Damaged: <scale> has no drawable");
    row(element("clip"), "Damaged: <clip> has no drawable");
    row(element("bitmap"), "Damaged: <bitmap> has no picture");
    row(element("nine-patch", {color(Attr::Src, Red)}), "Damaged: <nine-patch> has no picture");
    row(element("bitmap", {text(Attr::Src, "text.txt")}), "Unreadable: text.txt is no picture that can be decoded");
    row(element("bitmap", {text(Attr::Src, "nowhere.png")}), "Unreadable: nowhere.png cannot be read");
    row(element("nine-patch", {text(Attr::Src, "nowhere.9.png")}), "Unreadable: nowhere.9.png cannot be read");
    row(element("nine-patch", {text(Attr::Src, "picture.png")}), "Damaged: picture.png is no nine-patch");
    row(element("selector", {}, {element("item", {boolean(Attr::StatePressed, true), drawable(Red)})}),
        "Damaged: <selector> has no item to start with");
    row(element("level-list", {}, {element("item", {integer(Attr::MinLevel, 1), drawable(Red)})}),
        "Damaged: <level-list> has no item to start with");
    row(element("animation-list"), "Damaged: <animation-list> has no item to start with");
    row(element("animation-list", {}, {element("item")}), "Damaged: <item> has no drawable");
    row(shape({}, {integer(Attr::Shape, 4)}), "Unsupported: unsupported shape 4");
    row(shape({}, {integer(Attr::Shape, -1)}), "Unsupported: unsupported shape -1");
    row(nested(filled(Red), DrawableLoader::MaxDepth, "inset", {}), "TooMuch: drawables nested too deeply");
}

void TestDrawableLimits::errors()
{
    QFETCH(XmlElement, root);
    QFETCH(QString, error);
    Studio studio;
    studio.files.add("text.txt", QByteArray("text"));
    studio.files.add("picture.png", plain(4, 4));
    QVERIFY(studio.load(root) == nullptr);
    QCOMPARE(studio.error(), error);
}

void TestDrawableLimits::aBrokenPartIsLeftOut()
{
    const auto draw = [](const XmlElement &broken, const QString &error) {
        Studio studio;
        const XmlElement list =
            element("layer-list", {},
                    {element("item", {drawable(Red), pixels(Attr::Width, 4)}), element("item", {}, {broken})});
        const QImage image = studio.draw(list, {8, 8});
        QCOMPARE(areaOf(image, Red), QRect(0, 0, 4, 8));
        QCOMPARE(areaOf(image, Nothing), QRect(4, 0, 4, 8));
        QCOMPARE(studio.error(), error);
    };
    draw(element("sprite"), "Unsupported: unsupported drawable <sprite>");
    draw(shape({element("gradient", {integer(Attr::Type, 3)})}), "Unsupported: unsupported gradient type 3");
    draw(shape({element("gradient", {integer(Attr::Type, 1)})}), "Damaged: radial gradient without a radius");
    draw(shape({element("hole")}), "Unsupported: unsupported part of a shape <hole>");
    draw(element("selector"), "Damaged: <selector> has no item to start with");
}

void TestDrawableLimits::firstItems_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<Attributes>("first");
    QTest::addColumn<bool>("isDrawn");
    QTest::newRow("no states") << "selector" << Attributes{} << true;
    QTest::newRow("pressed") << "selector" << Attributes{boolean(Attr::StatePressed, true)} << false;
    QTest::newRow("not pressed") << "selector" << Attributes{boolean(Attr::StatePressed, false)} << true;
    QTest::newRow("disabled") << "selector" << Attributes{boolean(Attr::StateEnabled, false)} << false;
    QTest::newRow("animated") << "animated-selector" << Attributes{boolean(Attr::StateChecked, true)} << false;
    QTest::newRow("levels around 0") << "level-list"
                                     << Attributes{integer(Attr::MinLevel, -3), integer(Attr::MaxLevel, 3)} << true;
    QTest::newRow("level 0") << "level-list" << Attributes{integer(Attr::MaxLevel, 0)} << true;
    QTest::newRow("levels above 0") << "level-list"
                                    << Attributes{integer(Attr::MinLevel, 1), integer(Attr::MaxLevel, 3)} << false;
    QTest::newRow("levels below 0") << "level-list"
                                    << Attributes{integer(Attr::MinLevel, -3), integer(Attr::MaxLevel, -1)} << false;
    QTest::newRow("first frame") << "animation-list" << Attributes{} << true;
}

void TestDrawableLimits::firstItems()
{
    QFETCH(QString, name);
    QFETCH(Attributes, first);
    QFETCH(bool, isDrawn);
    Studio studio;
    const XmlElement root =
        element(name, {},
                {element("transition", {drawable(Green)}), element("item", first + Attributes{drawable(Red)}),
                 element("item", {drawable(Blue)})});
    QCOMPARE(areaOf(studio.draw(root, {4, 4}), isDrawn ? Red : Blue), QRect(0, 0, 4, 4));
    QCOMPARE(studio.error(), QString());
}

void TestDrawableLimits::check(const XmlElement &root, const QByteArray &picture)
{
    const Cost taken = cost([&]() {
        Studio studio;
        studio.files.add(picturePath, picture);
        // Renderers ask for the size and the padding, too.
        const auto drawable = studio.load(root);
        if (drawable == nullptr)
            return;
        drawable->intrinsicSize();
        drawable->padding();
        Canvas canvas(QSize(Canvas::MaxSide, Canvas::MaxSide), studio.budget);
        drawable->draw(canvas, QRectF(0, 0, Canvas::MaxSide, Canvas::MaxSide));
    });
    const QString excess = Bounds::excess(taken, 0, 0, MaxMemory);
    QVERIFY2(excess.isEmpty(), qPrintable(excess));
}

void TestDrawableLimits::hostile_data()
{
    QTest::addColumn<XmlElement>("root");
    const auto item = [](const XmlElement &child) { return element("item", {}, {child}); };
    const XmlElement red = element("solid", {color(Attr::Color, Red)});
    const XmlElement round = element("corners", {pixels(Attr::Radius, Huge)});
    const auto stroke = [](const XmlAttribute &width, const XmlAttribute &dash, const XmlAttribute &gap) {
        return element("stroke", {color(Attr::Color, Red), width, dash, gap});
    };
    QTest::newRow("layers without end") << repeated(element("item", {drawable(0x80ff0000)}), 10000);
    QTest::newRow("large layers") << repeated(
        element("item", {drawable(0x80ff0000), pixels(Attr::Left, -Huge), pixels(Attr::Right, -Huge),
                         pixels(Attr::Width, Huge), pixels(Attr::Height, Huge)}),
        1000);
    QTest::newRow("layers of shapes") << repeated(
        item(shape({red, round, stroke(pixels(Attr::Width, 9), pixels(Attr::DashWidth, 1), pixels(Attr::DashGap, 1))})),
        4000);
    QTest::newRow("layers that are masked")
        << repeated(item(element("clip", {integer(Attr::Level, 9000)}, {filled(0x80ff0000)})), 4000);
    QTest::newRow("masks in masks") << nested(filled(Red), 23, "clip", {integer(Attr::Level, 9999)});
    QTest::newRow("insets that grow") << nested(shape({red, round}), 23, "inset", {percent(Attr::Inset, -6000000)});
    QTest::newRow("insets that shrink") << nested(shape({red, round}), 23, "inset", {percent(Attr::Inset, 49.9999)});
    QTest::newRow("large numbers") << nested(filled(Red), 20, "inset", {number(Attr::Inset, -3e38F)});
    QTest::newRow("rotation far away") << element(
        "rotate", {number(Attr::FromDegrees, 3e38F), number(Attr::PivotX, 3e38F), number(Attr::PivotY, -3e38F)},
        {shape({red, round})});
    QTest::newRow("rotations in each other")
        << nested(shape({red}), 23, "rotate", {number(Attr::FromDegrees, 1), number(Attr::PivotX, 1e9F)});
    QTest::newRow("fine dashes") << shape(
        {stroke(pixels(Attr::Width, 1), number(Attr::DashWidth, 1e-6F), number(Attr::DashGap, 1e-6F))});
    QTest::newRow("fine dashes, far between")
        << shape({stroke(pixels(Attr::Width, 1), number(Attr::DashWidth, 1e-30F), number(Attr::DashGap, 1))});
    QTest::newRow("dashes of a fine stroke")
        << shape({stroke(number(Attr::Width, 1e-30F), pixels(Attr::DashWidth, 2), pixels(Attr::DashGap, 2)), round});
    QTest::newRow("dashes of a large shape") << element(
        "inset", {pixels(Attr::Inset, -Huge)},
        {shape({stroke(number(Attr::Width, 3), pixels(Attr::DashWidth, 100), pixels(Attr::DashGap, 100)), round})});
    QTest::newRow("a wide stroke") << shape(
        {red, round, stroke(number(Attr::Width, 1e30F), number(Attr::DashWidth, 1e30F), number(Attr::DashGap, 1e-30F))},
        {integer(Attr::Shape, 1)});
    QTest::newRow("a wide ring") << shape(
        {red, stroke(pixels(Attr::Width, Huge), pixels(Attr::DashWidth, 1), pixels(Attr::DashGap, 1))},
        {integer(Attr::Shape, 3), boolean(Attr::UseLevel, false), number(Attr::InnerRadius, 1e38F),
         number(Attr::ThicknessRatio, 1e-38F)});
    for (int width : {1, 16, 256}) {
        const XmlElement dashed =
            shape({round, stroke(pixels(Attr::Width, width), number(Attr::DashWidth, qMax(2.0F, float(width) / 16)),
                                 number(Attr::DashGap, qMax(2.0F, float(width) / 16)))});
        QTest::newRow(qPrintable(QStringLiteral("many outlines of many dashes, %1 wide").arg(width)))
            << repeated(item(dashed), 2000);
    }
    const auto radial = [](float radius, float center) {
        return shape({element("gradient", {integer(Attr::Type, 1), number(Attr::GradientRadius, radius),
                                           number(Attr::CenterX, center), number(Attr::CenterY, -center),
                                           color(Attr::StartColor, Red), color(Attr::EndColor, Blue)})});
    };
    QTest::newRow("a gradient without extent") << radial(0, 0.5F);
    QTest::newRow("a gradient of negative radius") << radial(-5, 0.5F);
    QTest::newRow("a gradient without end") << radial(3e38F, 3e38F);
    QTest::newRow("scaled beyond") << element(
        "scale", {integer(Attr::Level, 1), text(Attr::ScaleWidth, "-1e300%"), text(Attr::ScaleHeight, "1e300%")},
        {filled(Red)});
    // Sizes and paddings depend on inner sizes and paddings.
    XmlElement deep = filled(Red);
    for (int i = 0; i < 11; ++i)
        deep = element("layer-list", {}, {item(element("inset", {percent(Attr::Inset, 10)}, {deep}))});
    QTest::newRow("sizes of sizes") << deep;
    XmlElement icons = filled(Red);
    for (int i = 0; i < 20; ++i)
        icons =
            element("adaptive-icon", {}, {element("background", {drawable(Red)}), element("foreground", {}, {icons})});
    QTest::newRow("icons in icons") << icons;
}

void TestDrawableLimits::hostile()
{
    QFETCH(XmlElement, root);
    check(root);
}

void TestDrawableLimits::hostilePictures_data()
{
    QTest::addColumn<XmlElement>("root");
    QTest::addColumn<QByteArray>("picture");
    const auto item = [](const XmlElement &child) { return element("item", {}, {child}); };
    const QVector<qint32> none;
    const auto png = [&](const QImage &picture) { return ninePatchPng(picture, none, none); };
    const XmlAttribute repeat = integer(Attr::TileMode, 1);
    QTest::newRow("a pixel as a tile") << repeated(item(reference("bitmap", {repeat})), 1000) << png(plain(1, 1));
    QTest::newRow("a large picture, drawn often")
        << repeated(item(reference("bitmap")), 4000) << png(plain(2048, 2048));
    QTest::newRow("a large picture, made larger")
        << element("inset", {pixels(Attr::Inset, -100000)}, {reference("bitmap")}) << png(plain(2500, 2500));
    QTest::newRow("large tiles") << reference("bitmap", {integer(Attr::TileMode, 2)}) << png(plain(2500, 2500));
    QTest::newRow("tinted often") << repeated(
        item(reference("bitmap", {color(Attr::Tint, Red), number(Attr::Alpha, 0.1F)})), 2000)
                                  << png(plain(64, 64));
    QTest::newRow("tiles that are far away")
        << element("inset", {number(Attr::InsetLeft, -1e30F)}, {reference("bitmap", {repeat})}) << png(plain(3, 3));
    QVector<qint32> many;
    for (int i = 0; i < 254; ++i)
        many.append(i);
    QTest::newRow("a nine-patch of many parts")
        << repeated(item(reference("nine-patch")), 1000) << ninePatchPng(plain(255, 255), many, many);
    QTest::newRow("a nine-patch marked beyond itself")
        << element("inset", {pixels(Attr::Inset, -Huge)}, {reference("nine-patch")})
        << ninePatchPng(plain(9, 9), {0, 2147483647}, {-2147483647 - 1, 2147483647}, {2147483647, -1, 2147483647, 9});
    QTest::newRow("a nine-patch that is all marked")
        << repeated(item(reference("nine-patch")), 1000) << ninePatchPng(plain(4, 4), {0, 4}, {0, 4});
}

void TestDrawableLimits::hostilePictures()
{
    QFETCH(XmlElement, root);
    QFETCH(QByteArray, picture);
    check(root, picture);
}

void TestDrawableLimits::boundsThatCannotBePainted_data()
{
    QTest::addColumn<QRectF>("bounds");
    constexpr qreal Infinity = std::numeric_limits<qreal>::infinity();
    constexpr qreal NotANumber = std::numeric_limits<qreal>::quiet_NaN();
    QTest::newRow("empty") << QRectF();
    QTest::newRow("negative") << QRectF(8, 8, -8, -8);
    QTest::newRow("no numbers") << QRectF(NotANumber, NotANumber, NotANumber, NotANumber);
    QTest::newRow("no width") << QRectF(0, 0, NotANumber, 5);
    QTest::newRow("infinite") << QRectF(0, 0, Infinity, Infinity);
    QTest::newRow("from infinity to infinity") << QRectF(-Infinity, -Infinity, Infinity, Infinity);
    QTest::newRow("far away") << QRectF(1e300, 1e300, 5, 5);
    QTest::newRow("too large") << QRectF(0, 0, 1e308, -1e308);
}

void TestDrawableLimits::boundsThatCannotBePainted()
{
    QFETCH(QRectF, bounds);
    Studio studio;
    studio.files.add(picturePath, ninePatchPng(plain(4, 4), {1, 2}, {1, 2}));
    const XmlElement red = element("solid", {color(Attr::Color, Red)});
    const Elements roots{filled(Red),
                         shape({red}),
                         shape({red}, {integer(Attr::Shape, 1)}),
                         reference("bitmap"),
                         reference("bitmap", {integer(Attr::TileMode, 1)}),
                         reference("bitmap", {color(Attr::Tint, Red)}),
                         reference("nine-patch"),
                         element("rotate", {number(Attr::FromDegrees, 5)}, {shape({red})}),
                         element("scale", {integer(Attr::Level, 50)}, {filled(Red)}),
                         element("clip", {integer(Attr::Level, 50)}, {filled(Red)}),
                         element("layer-list", {}, {element("item", {drawable(Red)})}),
                         element("adaptive-icon", {}, {element("background", {drawable(Red)})})};
    for (const XmlElement &root : roots) {
        Canvas canvas(QSize(16, 16), studio.budget);
        const auto drawable = studio.load(root);
        QVERIFY2(drawable != nullptr, qPrintable(studio.error()));
        drawable->draw(canvas, bounds);
        QCOMPARE(coverage(canvas.image()), 0.0);
    }
}

QTEST_GUILESS_MAIN(TestDrawableLimits)
#include "tst_drawablelimits.moc"
