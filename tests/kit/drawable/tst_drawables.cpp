// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DrawableFixture.h"
#include "drawable/AdaptiveIcon.h"
#include "drawable/paint/Gravity.h"
#include "format/AndroidAttributes.h"

#include <QtTest>

#include <cmath>

using namespace SorrelKit;
using namespace fixture;

Q_DECLARE_METATYPE(QMarginsF)

namespace {

XmlElement inset(const Attributes &attributes, const XmlElement &child)
{
    return element("inset", attributes, {child});
}

} // namespace

/// Places and colours of painted drawables, at points that are computed here.
class TestDrawables : public QObject
{
    Q_OBJECT

private slots:
    void adaptiveLayersReachBeyondWhatIsSeen();
    void adaptiveMasks_data();
    void adaptiveMasks();
    void masksCutNothingBelow();
    void adaptiveBackgroundIsOnBlack();
    void adaptiveSizeIsThatOfWhatIsSeen();
    void adaptiveMonochrome();
    void gravity_data();
    void gravity();
    void layersKeepTheirInsets();
    void layerGravity();
    void layersWithoutASizeFill();
    void layersKeepOffPadding_data();
    void layersKeepOffPadding();
    void layerSizeHoldsInsets();
    void rippleWithoutItsMask();
    void transitionShowsTheFirst();
    void insets();
    void insetSize();
    void insetPaddingIsItsInsets();
};

void TestDrawables::adaptiveLayersReachBeyondWhatIsSeen()
{
    Studio studio;
    const XmlElement icon = element("adaptive-icon", {},
                                    {element("background", {drawable(Red)}),
                                     element("foreground", {}, {inset({pixels(Attr::Inset, 36)}, filled(Blue))})});
    // The layers have 108 pixels and begin at -18. Content 36 pixels from their edges begins at 18.
    const QImage image = studio.draw(icon, {72, 72});
    QCOMPARE(areaOf(image, Blue), QRect(18, 18, 36, 36));
    QCOMPARE(image.pixel(0, 0), Red);
    QCOMPARE(image.pixel(71, 71), Red);
}

void TestDrawables::adaptiveMasks_data()
{
    QTest::addColumn<int>("mask");
    QTest::addColumn<qreal>("area");
    QTest::addColumn<qreal>("diagonal");
    // The covered share of the square, and on the diagonal, the distance of the edge from the middle in half diagonals.
    QTest::newRow("none") << int(IconMask::None) << 1.0 << 1.0;
    QTest::newRow("circle") << int(IconMask::Circle) << M_PI / 4 << std::sqrt(0.5);
    QTest::newRow("rounded square") << int(IconMask::RoundedSquare) << 1 - (4 - M_PI) * 0.2 * 0.2
                                    << 1 - 2 * 0.2 * (1 - std::sqrt(0.5));
    // The area of |x|^4 + |y|^4 = 1 is 4 * gamma(5/4)^2 / gamma(3/2).
    QTest::newRow("squircle") << int(IconMask::Squircle) << std::pow(std::tgamma(1.25), 2) / std::tgamma(1.5)
                              << std::pow(0.5, 0.25);
}

void TestDrawables::adaptiveMasks()
{
    QFETCH(int, mask);
    QFETCH(qreal, area);
    QFETCH(qreal, diagonal);
    Studio studio;
    constexpr int Side = 200;
    const XmlElement icon = element("adaptive-icon", {}, {element("background", {drawable(Red)})});
    const QImage image = studio.draw(icon, {Side, Side}, IconMask(mask));
    QVERIFY2(std::abs(coverage(image) - area) < 0.003, qPrintable(QString::number(coverage(image))));
    // All masks touch the middles of the sides.
    QCOMPARE(image.pixel(Side / 2, 2), Red);
    QCOMPARE(image.pixel(2, Side / 2), Red);
    const int within = qRound(Side / 2 * (1 + diagonal)) - 3;
    QCOMPARE(image.pixel(within, within), Red);
    QCOMPARE(image.pixel(Side - 1 - within, within), Red);
    if (diagonal < 1)
        QCOMPARE(image.pixel(within + 5, within + 5), Nothing);
    // A smooth edge has pixels between.
    bool isSoft = false;
    for (int x = 0; x < Side; ++x)
        isSoft = isSoft || (qAlpha(image.pixel(x, Side / 20)) % 255) != 0;
    QCOMPARE(isSoft, IconMask(mask) != IconMask::None);
}

// An icon above nothing is painted without a layer.
void TestDrawables::masksCutNothingBelow()
{
    const QSize size(48, 48);
    const XmlElement icon = element("adaptive-icon", {}, {element("background", {drawable(Red)})});
    const auto withIcon = [&](const Elements &below, const XmlElement &top) {
        Elements items = below;
        items.append(element("item", {}, {top}));
        Studio studio;
        return studio.draw(element("layer-list", {}, items), size, IconMask::Circle);
    };
    const QImage alone = withIcon({}, icon);
    QCOMPARE(alone.pixel(24, 24), Red);
    QCOMPARE(alone.pixel(0, 0), Nothing);
    // Nothing is visible of this one, but it is below.
    const QImage above = withIcon({element("item", {drawable(0x00ffffff)})}, icon);
    QCOMPARE(alone, above);
    const QImage onGreen = withIcon({element("item", {drawable(Green)})}, icon);
    QCOMPARE(onGreen.pixel(24, 24), Red);
    QCOMPARE(onGreen.pixel(0, 0), Green);
    // An icon in the layer of another one is cut by itself.
    const XmlElement inner = element("adaptive-icon", {}, {element("foreground", {}, {icon})});
    QCOMPARE(withIcon({}, inner).pixel(0, 0), Nothing);
    QCOMPARE(withIcon({}, inner).pixel(24, 24), Red);
}

void TestDrawables::adaptiveBackgroundIsOnBlack()
{
    Studio studio;
    const XmlElement both = element("adaptive-icon", {}, {element("background", {drawable(0x80ff0000)})});
    QVERIFY(isNear(studio.draw(both, {8, 8}).pixel(4, 4), 0xff800000, 1));
    const XmlElement foreground = element("adaptive-icon", {}, {element("foreground", {drawable(0x80ff0000)})});
    // Pixels are stored premultiplied.
    QVERIFY(isNear(studio.draw(foreground, {8, 8}).pixel(4, 4), 0x80800000, 1));
}

void TestDrawables::adaptiveSizeIsThatOfWhatIsSeen()
{
    Studio studio;
    const auto layer = [](const QString &name, int width, int height) {
        return element(
            name, {},
            {element("shape", {}, {element("size", {pixels(Attr::Width, width), pixels(Attr::Height, height)})})});
    };
    const auto icon =
        studio.load(element("adaptive-icon", {}, {layer("background", 108, 54), layer("foreground", 54, 81)}));
    QCOMPARE(icon->intrinsicSize(), QSizeF(72, 54));
    const auto plain = studio.load(element("adaptive-icon", {}, {element("background", {drawable(Red)})}));
    QCOMPARE(plain->intrinsicSize(), QSizeF(-1, -1));
}

void TestDrawables::adaptiveMonochrome()
{
    const XmlElement background = element("background", {drawable(Red)});
    const XmlElement foreground = element("foreground", {}, {element("sprite")});
    const XmlElement inset = element("inset", {percent(Attr::Inset, 25)}, {filled(Blue)});
    const XmlElement monochrome = element("monochrome", {}, {inset});
    const auto draw = [](const XmlElement &root, bool isMonochrome, QString *error) {
        Studio studio;
        studio.loader.setMonochrome(isMonochrome);
        const QImage image = studio.draw(root, {72, 72}, IconMask::Circle);
        *error = studio.error();
        return image;
    };
    QString error;
    const XmlElement icon = element("adaptive-icon", {}, {background, foreground, monochrome});
    // The other layers are not even loaded. The layer has 108 pixels, and its middle half is blue.
    const QImage alone = draw(icon, true, &error);
    QCOMPARE(areaOf(alone, Blue), QRect(9, 9, 54, 54));
    QCOMPARE(alone.pixel(5, 36), Nothing);
    QCOMPARE(error, QString());
    QCOMPARE(draw(icon, false, &error).pixel(36, 36), Red);
    QCOMPARE(error, QString("Unsupported: unsupported drawable <sprite>"));
    // The layer is not cut: its corners are blue, too.
    const XmlElement full = element("monochrome", {drawable(Blue)});
    QCOMPARE(areaOf(draw(element("adaptive-icon", {}, {background, full}), true, &error), Blue), QRect(0, 0, 72, 72));
    // Without the layer, the icon is drawn as usual.
    const QImage usual = draw(element("adaptive-icon", {}, {background}), true, &error);
    QCOMPARE(usual.pixel(36, 36), Red);
    QCOMPARE(usual.pixel(0, 0), Nothing);
    const QImage broken = draw(element("adaptive-icon", {}, {background, element("monochrome")}), true, &error);
    QCOMPARE(broken.pixel(36, 36), Red);
}

void TestDrawables::gravity_data()
{
    QTest::addColumn<int>("gravity");
    QTest::addColumn<QRectF>("rect");
    // 20 by 10 in 100 by 50 at (5, 7).
    QTest::newRow("nothing said") << 0x00 << QRectF(45, 27, 20, 10);
    QTest::newRow("center") << 0x11 << QRectF(45, 27, 20, 10);
    QTest::newRow("top left") << 0x33 << QRectF(5, 7, 20, 10);
    QTest::newRow("top start") << 0x00800033 << QRectF(5, 7, 20, 10);
    QTest::newRow("bottom right") << 0x55 << QRectF(85, 47, 20, 10);
    QTest::newRow("bottom end") << 0x00800055 << QRectF(85, 47, 20, 10);
    QTest::newRow("fill") << 0x77 << QRectF(5, 7, 100, 50);
    QTest::newRow("fill horizontal, bottom") << 0x57 << QRectF(5, 47, 100, 10);
    QTest::newRow("left, fill vertical") << 0x73 << QRectF(5, 7, 20, 50);
}

void TestDrawables::gravity()
{
    QFETCH(int, gravity);
    QFETCH(QRectF, rect);
    QCOMPARE(Gravity::apply(gravity, {20, 10}, {5, 7, 100, 50}), rect);
    // Larger than the container, and clipped to it.
    QCOMPARE(Gravity::apply(gravity | 0x88, {200, 200}, {5, 7, 100, 50}), QRectF(5, 7, 100, 50));
}

void TestDrawables::layersKeepTheirInsets()
{
    Studio studio;
    const XmlElement list =
        element("layer-list", {},
                {element("item", {drawable(Red)}),
                 element("item", {drawable(Blue), pixels(Attr::Left, 2), pixels(Attr::Top, 3), pixels(Attr::Right, 4),
                                  pixels(Attr::Bottom, 5)}),
                 element("item", {drawable(Green), pixels(Attr::Left, 15), pixels(Attr::Start, 8),
                                  pixels(Attr::Right, 15), pixels(Attr::End, 6), pixels(Attr::Top, 18)})});
    const QImage image = studio.draw(list, {20, 20});
    QCOMPARE(areaOf(image, Blue), QRect(2, 3, 14, 12));
    QCOMPARE(areaOf(image, Green), QRect(8, 18, 6, 2));
    QCOMPARE(image.pixel(0, 0), Red);
}

void TestDrawables::layerGravity()
{
    Studio studio;
    const XmlElement list = element(
        "layer-list", {},
        {element("item",
                 {drawable(Blue), pixels(Attr::Width, 6), pixels(Attr::Height, 4), integer(Attr::Gravity, 0x55)}),
         element("item", {drawable(Red), pixels(Attr::Width, 3), pixels(Attr::Height, 2), pixels(Attr::Left, 1)})});
    const QImage image = studio.draw(list, {20, 20});
    QCOMPARE(areaOf(image, Blue), QRect(14, 16, 6, 4));
    QCOMPARE(areaOf(image, Red), QRect(1, 0, 3, 2));
}

void TestDrawables::layersWithoutASizeFill()
{
    Studio studio;
    const auto draw = [&](const Attributes &attributes) {
        return studio.draw(element("layer-list", {}, {element("item", attributes)}), {20, 20});
    };
    // A colour has no intrinsic size, so its gravity has no effect.
    QCOMPARE(areaOf(draw({drawable(Red), integer(Attr::Gravity, 0x11)}), Red), QRect(0, 0, 20, 20));
    QCOMPARE(areaOf(draw({drawable(Red), pixels(Attr::Width, 5)}), Red), QRect(0, 0, 5, 20));
    QCOMPARE(areaOf(draw({drawable(Red), pixels(Attr::Height, 5), integer(Attr::Gravity, 0x50)}), Red),
             QRect(0, 15, 20, 5));
}

void TestDrawables::layersKeepOffPadding_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QRect>("area");
    QTest::addColumn<QMarginsF>("padding");
    QTest::newRow("nested") << 0 << QRect(6, 8, 8, 4) << QMarginsF(6, 8, 6, 8);
    QTest::newRow("stacked") << 1 << QRect(0, 0, 20, 20) << QMarginsF(5, 6, 5, 6);
}

void TestDrawables::layersKeepOffPadding()
{
    QFETCH(int, mode);
    QFETCH(QRect, area);
    QFETCH(QMarginsF, padding);
    Studio studio;
    const auto shape = [](int x, int y) {
        return element("item", {},
                       {element("shape", {},
                                {element("padding", {pixels(Attr::Left, x), pixels(Attr::Top, y),
                                                     pixels(Attr::Right, x), pixels(Attr::Bottom, y)})})});
    };
    const XmlElement list = element("layer-list", {integer(Attr::PaddingMode, mode)},
                                    {shape(1, 2), shape(5, 6), element("item", {drawable(Red)})});
    QCOMPARE(areaOf(studio.draw(list, {20, 20}), Red), area);
    QCOMPARE(studio.load(list)->padding(), padding);
}

void TestDrawables::layerSizeHoldsInsets()
{
    Studio studio;
    const XmlElement list = element(
        "layer-list", {},
        {element("item", {drawable(Red), pixels(Attr::Width, 10), pixels(Attr::Left, 3), pixels(Attr::Right, 4)}),
         element("item", {drawable(Red), pixels(Attr::Height, 9), pixels(Attr::Top, 1)})});
    QCOMPARE(studio.load(list)->intrinsicSize(), QSizeF(17, 10));
}

void TestDrawables::rippleWithoutItsMask()
{
    Studio studio;
    XmlAttribute id;
    id.id = 0x010100d0;
    id.value = {ValueType::Reference, 0x0102002e};
    const XmlElement ripple =
        element("ripple", {color(Attr::Color, Green)},
                {element("item", {drawable(Red), pixels(Attr::Width, 4)}), element("item", {id, drawable(Blue)})});
    const QImage image = studio.draw(ripple, {8, 8});
    QCOMPARE(areaOf(image, Red), QRect(0, 0, 4, 8));
    QCOMPARE(areaOf(image, Nothing), QRect(4, 0, 4, 8));
}

void TestDrawables::transitionShowsTheFirst()
{
    Studio studio;
    const XmlElement transition =
        element("transition", {}, {element("item", {drawable(Red)}), element("item", {drawable(Blue)})});
    QCOMPARE(areaOf(studio.draw(transition, {8, 8}), Red), QRect(0, 0, 8, 8));
}

void TestDrawables::insets()
{
    Studio studio;
    const auto draw = [&](const Attributes &attributes) {
        return areaOf(studio.draw(inset(attributes, filled(Red)), {40, 20}), Red);
    };
    QCOMPARE(draw({pixels(Attr::Inset, 4)}), QRect(4, 4, 32, 12));
    QCOMPARE(draw({pixels(Attr::Inset, 4), pixels(Attr::InsetTop, 0), pixels(Attr::InsetRight, 10)}),
             QRect(4, 0, 26, 16));
    QCOMPARE(draw({percent(Attr::Inset, 25)}), QRect(10, 5, 20, 10));
    QCOMPARE(draw({percent(Attr::InsetLeft, 50), pixels(Attr::InsetBottom, 5)}), QRect(20, 0, 20, 15));
}

void TestDrawables::insetSize()
{
    Studio studio;
    const XmlElement shape =
        element("shape", {}, {element("size", {pixels(Attr::Width, 30), pixels(Attr::Height, 20)})});
    QCOMPARE(studio.load(inset({pixels(Attr::InsetLeft, 4), percent(Attr::InsetBottom, 50)}, shape))->intrinsicSize(),
             QSizeF(34, 40));
    QCOMPARE(studio.load(inset({percent(Attr::InsetLeft, 50), percent(Attr::InsetRight, 50)}, shape))->intrinsicSize(),
             QSizeF(-1, 20));
}

void TestDrawables::insetPaddingIsItsInsets()
{
    Studio studio;
    const XmlElement list = element(
        "layer-list", {},
        {element("item", {}, {inset({pixels(Attr::Inset, 3)}, filled(Blue))}), element("item", {drawable(Red)})});
    QCOMPARE(areaOf(studio.draw(list, {20, 20}), Red), QRect(3, 3, 14, 14));
}

QTEST_GUILESS_MAIN(TestDrawables)
#include "tst_drawables.moc"
