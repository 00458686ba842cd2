// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DrawableFixture.h"
#include "drawable/color/ColorStateList.h"
#include "drawable/color/GradientColor.h"
#include "drawable/color/Tint.h"
#include "drawable/source/DrawableAttributes.h"
#include "format/AndroidAttributes.h"

#include <QGradient>
#include <QtTest>

#include <cmath>

using namespace SorrelKit;
using namespace fixture;

Q_DECLARE_METATYPE(XmlAttribute)
Q_DECLARE_METATYPE(XmlElement)
Q_DECLARE_METATYPE(SorrelKit::Tint::Mode)

namespace {

constexpr quint32 OwnState = 0x7f010000;

XmlElement item(const Attributes &attributes)
{
    return element("item", attributes);
}

XmlElement stop(float offset, QRgb value)
{
    return item({number(Attr::Offset, offset), color(Attr::Color, value)});
}

XmlElement gradient(const Attributes &attributes, const Elements &items = {})
{
    return element("gradient", attributes, items);
}

// Stops as "0 #ff0000, 0.5 #00ff00", offsets to a thousandth.
QString textOf(const QGradientStops &stops)
{
    QStringList texts;
    for (const QGradientStop &stop : stops)
        texts.append(QStringLiteral("%1 %2").arg(std::round(stop.first * 1000) / 1000).arg(stop.second.name()));
    return texts.join(", ");
}

// The colour that @p brush gives the pixel around a point.
QRgb colorAt(const QBrush &brush, QPointF point)
{
    QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.translate(-point + QPointF(0.5, 0.5));
    painter.fillRect(QRectF(point - QPointF(1, 1), QSizeF(2, 2)), brush);
    painter.end();
    return image.pixel(0, 0);
}

} // namespace

/// State lists, gradients and tints.
class TestVectorColors : public QObject
{
    Q_OBJECT

private slots:
    void states_data();
    void states();
    void stateLists_data();
    void stateLists();
    void stateListsWithoutAColor_data();
    void stateListsWithoutAColor();
    void stops_data();
    void stops();
    void manyStopsAreCut();
    void linearGradients();
    void radialGradients();
    void sweepsGoClockwise();
    void aRadialGradientNeedsARadius_data();
    void aRadialGradientNeedsARadius();
    void coordinatesAreBounded();
    void tints_data();
    void tints();
    void tintsOfAnElement_data();
    void tintsOfAnElement();
    void aTintComesAfterTheOpacity();
};

void TestVectorColors::states_data()
{
    QTest::addColumn<Attributes>("attributes");
    QTest::addColumn<bool>("isDefault");

    QTest::newRow("none") << Attributes() << true;
    QTest::newRow("no states") << Attributes{color(Attr::Color, Red), number(Attr::Alpha, 0.5F), integer(OwnState, 1)}
                               << true;
    QTest::newRow("enabled") << Attributes{boolean(Attr::StateEnabled, true)} << true;
    QTest::newRow("not enabled") << Attributes{boolean(Attr::StateEnabled, false)} << false;
    QTest::newRow("with the focus") << Attributes{boolean(Attr::StateWindowFocused, true)} << true;
    QTest::newRow("without the focus") << Attributes{boolean(Attr::StateWindowFocused, false)} << false;
    QTest::newRow("pressed") << Attributes{boolean(Attr::StatePressed, true)} << false;
    QTest::newRow("not pressed") << Attributes{boolean(Attr::StatePressed, false)} << true;
    QTest::newRow("focused") << Attributes{boolean(Attr::StateFocused, true)} << false;
    QTest::newRow("a state of the application") << Attributes{boolean(OwnState, true)} << false;
    QTest::newRow("not in a state of the application") << Attributes{boolean(OwnState, false)} << true;
    QTest::newRow("several that hold") << Attributes{boolean(Attr::StateEnabled, true),
                                                     boolean(Attr::StateChecked, false)}
                                       << true;
    QTest::newRow("one of several") << Attributes{boolean(Attr::StateEnabled, true), boolean(Attr::StateChecked, true)}
                                    << false;
}

void TestVectorColors::states()
{
    QFETCH(Attributes, attributes);
    QFETCH(bool, isDefault);
    Studio studio;
    QCOMPARE(DrawableAttributes(item(attributes), studio.loader).isForDefaultState(), isDefault);
}

void TestVectorColors::stateLists_data()
{
    QTest::addColumn<Elements>("items");
    QTest::addColumn<QRgb>("expected");

    const XmlElement pressed = item({boolean(Attr::StatePressed, true), color(Attr::Color, Red)});
    const XmlElement checked = item({boolean(Attr::StateChecked, true), color(Attr::Color, White)});
    const XmlElement any = item({color(Attr::Color, Green)});
    QTest::newRow("one for everything") << Elements{any} << Green;
    QTest::newRow("the first that is for it") << Elements{pressed, any, item({color(Attr::Color, Blue)})} << Green;
    QTest::newRow("none is for it") << Elements{pressed, checked} << Red;
    QTest::newRow("what is no item") << Elements{element("color", {color(Attr::Color, Red)}), any} << Green;
    const auto alpha = [](float value) {
        return Elements{item({color(Attr::Color, 0x80ff0000), number(Attr::Alpha, value)})};
    };
    QTest::newRow("half as opaque") << alpha(0.5F) << 0x40ff0000U;
    QTest::newRow("twice as opaque") << alpha(2) << 0xffff0000U;
    QTest::newRow("less than transparent") << alpha(-1) << 0x00ff0000U;
}

void TestVectorColors::stateLists()
{
    QFETCH(Elements, items);
    QFETCH(QRgb, expected);
    Studio studio;
    const auto result = ColorStateList::fromXml(element("selector", {}, items), studio.loader);
    QVERIFY(result.has_value());
    QCOMPARE(result->rgba(), expected);
    QCOMPARE(studio.error(), QString());
}

void TestVectorColors::stateListsWithoutAColor_data()
{
    QTest::addColumn<Elements>("items");
    QTest::addColumn<QString>("error");
    QTest::newRow("no item") << Elements() << "Damaged: color state list without an item";
    QTest::newRow("no color") << Elements{item({})}
                              << "Damaged: color state list without a color for the default state";
}

void TestVectorColors::stateListsWithoutAColor()
{
    QFETCH(Elements, items);
    QFETCH(QString, error);
    Studio studio;
    QVERIFY(!ColorStateList::fromXml(element("selector", {}, items), studio.loader));
    QCOMPARE(studio.error(), error);
}

void TestVectorColors::stops_data()
{
    QTest::addColumn<XmlElement>("root");
    QTest::addColumn<QString>("expected");

    const XmlAttribute start = color(Attr::StartColor, Red);
    const XmlAttribute center = color(Attr::CenterColor, Green);
    const XmlAttribute end = color(Attr::EndColor, Blue);
    QTest::newRow("start and end") << gradient({start, end}) << "0 #ff0000, 1 #0000ff";
    QTest::newRow("with a center") << gradient({start, center, end}) << "0 #ff0000, 0.5 #00ff00, 1 #0000ff";
    QTest::newRow("nothing") << gradient({}) << "0 #000000, 1 #000000";
    QTest::newRow("items") << gradient({start, end}, {stop(0.25F, Green), stop(0.75F, White)})
                           << "0.25 #00ff00, 0.75 #ffffff";
    QTest::newRow("out of order") << gradient({}, {stop(0.5F, Red), stop(0.25F, Green), stop(1, Blue)})
                                  << "0.5 #ff0000, 0.5 #00ff00, 1 #0000ff";
    QTest::newRow("out of range") << gradient({}, {stop(-3, Red), stop(7, Green)}) << "0 #ff0000, 1 #00ff00";
    QTest::newRow("several at an offset")
        << gradient({}, {stop(0, White), stop(0.5F, Red), stop(0.5F, Green), stop(0.5F, Blue), stop(1, White)})
        << "0 #ffffff, 0.5 #ff0000, 0.5 #0000ff, 1 #ffffff";
    QTest::newRow("several at the start") << gradient({}, {stop(0, Red), stop(0, Green), stop(0, Blue), stop(1, White)})
                                          << "0 #ff0000, 0 #0000ff, 1 #ffffff";
    QTest::newRow("several at the end") << gradient({}, {stop(0, White), stop(1, Red), stop(1, Green), stop(1, Blue)})
                                        << "0 #ffffff, 1 #ff0000, 1 #0000ff";
}

void TestVectorColors::stops()
{
    QFETCH(XmlElement, root);
    QFETCH(QString, expected);
    Studio studio;
    const auto brush = GradientColor::fromXml(root, studio.loader);
    QVERIFY(brush.has_value() && brush->gradient() != nullptr);
    QCOMPARE(textOf(brush->gradient()->stops()), expected);

    // A sweep gradient has them in reverse order.
    XmlElement sweep = root;
    sweep.attributes.append(integer(Attr::Type, 2));
    const auto sweepBrush = GradientColor::fromXml(sweep, studio.loader);
    QCOMPARE(sweepBrush->gradient()->stops().size(), brush->gradient()->stops().size());
    QCOMPARE(sweepBrush->gradient()->stops().first().second, brush->gradient()->stops().last().second);
}

void TestVectorColors::manyStopsAreCut()
{
    Elements items;
    for (int i = 0; i < 90000; ++i)
        items.append(stop(float(i) / 1024, i % 2 == 0 ? Red : Blue));
    Studio studio;
    const auto brush = GradientColor::fromXml(gradient({}, items), studio.loader);
    QCOMPARE(brush->gradient()->stops().size(), GradientColor::MaxItems);
}

void TestVectorColors::linearGradients()
{
    Studio studio;
    const Attributes attributes{number(Attr::StartX, 10), number(Attr::StartY, 20),     number(Attr::EndX, 30),
                                number(Attr::EndY, 20),   color(Attr::StartColor, Red), color(Attr::EndColor, Blue)};
    const auto brush = [&](int tileMode) {
        return *GradientColor::fromXml(gradient(attributes + Attributes{integer(Attr::TileMode, tileMode)}),
                                       studio.loader);
    };
    for (int tileMode : {0, 1, 2}) {
        QVERIFY(isNear(colorAt(brush(tileMode), {12, 50}), 0xffe6001a, 3));
        QVERIFY(isNear(colorAt(brush(tileMode), {20, -50}), 0xff800080, 3));
    }
    QVERIFY(isNear(colorAt(brush(0), {5, 20}), Red, 1));
    QVERIFY(isNear(colorAt(brush(0), {35, 20}), Blue, 1));
    QVERIFY(isNear(colorAt(brush(1), {5, 20}), 0xff4000bf, 3));
    QVERIFY(isNear(colorAt(brush(1), {35, 20}), 0xffbf0040, 3));
    QVERIFY(isNear(colorAt(brush(2), {5, 20}), 0xffbf0040, 3));
    QVERIFY(isNear(colorAt(brush(2), {35, 20}), 0xff4000bf, 3));
}

void TestVectorColors::radialGradients()
{
    Studio studio;
    const auto brush = GradientColor::fromXml(
        gradient({integer(Attr::Type, 1), number(Attr::CenterX, 10), number(Attr::CenterY, 20),
                  number(Attr::GradientRadius, 8), color(Attr::StartColor, Red), color(Attr::EndColor, Blue)}),
        studio.loader);
    for (QPointF direction : {QPointF(1, 0), QPointF(0, 1), QPointF(-0.6, -0.8)}) {
        QVERIFY(isNear(colorAt(*brush, QPointF(10, 20) + 4 * direction), 0xff800080, 3));
        QVERIFY(isNear(colorAt(*brush, QPointF(10, 20) + 12 * direction), Blue, 1));
    }
}

void TestVectorColors::sweepsGoClockwise()
{
    Studio studio;
    const auto brush = GradientColor::fromXml(
        gradient({integer(Attr::Type, 2), number(Attr::CenterX, 10), number(Attr::CenterY, 20)},
                 {stop(0, Red), stop(0.25F, Green), stop(0.5F, Blue), stop(0.75F, White), stop(1, Black)}),
        studio.loader);
    QVERIFY(isNear(colorAt(*brush, {90, 20.5}), Red, 4));
    QVERIFY(isNear(colorAt(*brush, {10, 100}), Green, 4));
    QVERIFY(isNear(colorAt(*brush, {-70, 20}), Blue, 4));
    QVERIFY(isNear(colorAt(*brush, {10, -60}), White, 4));
    QVERIFY(isNear(colorAt(*brush, {90, 19.5}), Black, 4));
}

void TestVectorColors::aRadialGradientNeedsARadius_data()
{
    QTest::addColumn<Attributes>("attributes");
    QTest::newRow("none") << Attributes();
    QTest::newRow("nothing") << Attributes{number(Attr::GradientRadius, 0)};
    QTest::newRow("less than nothing") << Attributes{number(Attr::GradientRadius, -1)};
}

void TestVectorColors::aRadialGradientNeedsARadius()
{
    QFETCH(Attributes, attributes);
    Studio studio;
    QVERIFY(!GradientColor::fromXml(gradient(attributes + Attributes{integer(Attr::Type, 1)}), studio.loader));
    QCOMPARE(studio.error(), QString("Damaged: radial gradient without a radius"));
}

void TestVectorColors::coordinatesAreBounded()
{
    Studio studio;
    for (int type : {0, 1, 2}) {
        Attributes attributes{integer(Attr::Type, type), integer(Attr::TileMode, 1), color(Attr::StartColor, Red)};
        for (quint32 id : {Attr::StartX, Attr::EndY, Attr::CenterX, Attr::GradientRadius})
            attributes.append(number(id, 3e38F));
        for (quint32 id : {Attr::EndX, Attr::StartY, Attr::CenterY})
            attributes.append(number(id, -3e38F));
        const auto brush = GradientColor::fromXml(gradient(attributes), studio.loader);
        QVERIFY(brush.has_value());
        // The color does not matter.
        QVERIFY(qGreen(colorAt(*brush, {5, 5})) == 0);
    }
}

void TestVectorColors::tints_data()
{
    QTest::addColumn<Tint::Mode>("mode");
    QTest::addColumn<bool>("isUnbounded");
    QTest::addColumn<QRgb>("onOpaque");
    QTest::addColumn<QRgb>("onHalf");
    QTest::addColumn<QRgb>("onNothing");
    // 0x80ff0000 on a grey of 0x40, opaque, half opaque and transparent, all premultiplied.
    using Mode = Tint::Mode;
    QTest::newRow("src_over") << Mode::SourceOver << true << 0xffa02020U << 0xc0901010U << 0x80800000U;
    QTest::newRow("src_in") << Mode::SourceIn << false << 0x80800000U << 0x40400000U << 0U;
    QTest::newRow("src_atop") << Mode::SourceAtop << false << 0xffa02020U << 0x80501010U << 0U;
    QTest::newRow("multiply") << Mode::Multiply << false << 0x80200000U << 0x40100000U << 0U;
    QTest::newRow("screen") << Mode::Screen << true << 0xffa04040U << 0xc0902020U << 0x80800000U;
    QTest::newRow("add") << Mode::Add << true << 0xffc04040U << 0xffa02020U << 0x80800000U;
}

void TestVectorColors::tints()
{
    QFETCH(Tint::Mode, mode);
    QFETCH(bool, isUnbounded);
    QFETCH(QRgb, onOpaque);
    QFETCH(QRgb, onHalf);
    QFETCH(QRgb, onNothing);
    QImage image(3, 1, QImage::Format_ARGB32_Premultiplied);
    auto *const pixels = reinterpret_cast<QRgb *>(image.bits());
    pixels[0] = 0xff404040;
    pixels[1] = 0x80202020;
    pixels[2] = 0;
    const Tint tint(QColor(255, 0, 0, 0x80), mode);
    QCOMPARE(tint.isUnbounded(), isUnbounded);
    tint.apply(&image);
    QVERIFY2(isNear(pixels[0], onOpaque, 2), qPrintable(QString::number(pixels[0], 16)));
    QVERIFY2(isNear(pixels[1], onHalf, 2), qPrintable(QString::number(pixels[1], 16)));
    QVERIFY2(isNear(pixels[2], onNothing, 2), qPrintable(QString::number(pixels[2], 16)));
}

void TestVectorColors::tintsOfAnElement_data()
{
    QTest::addColumn<Attributes>("attributes");
    QTest::addColumn<QRgb>("expected");
    QTest::newRow("none") << Attributes() << Red;
    QTest::newRow("a mode alone") << Attributes{integer(Attr::TintMode, 3)} << Red;
    QTest::newRow("a color alone") << Attributes{color(Attr::Tint, Green)} << Green;
    QTest::newRow("multiply") << Attributes{color(Attr::Tint, Green), integer(Attr::TintMode, 14)} << Black;
    QTest::newRow("add") << Attributes{color(Attr::Tint, Green), integer(Attr::TintMode, 16)} << 0xffffff00U;
    QTest::newRow("a mode that is none") << Attributes{color(Attr::Tint, Green), integer(Attr::TintMode, 4)} << Green;
}

void TestVectorColors::tintsOfAnElement()
{
    QFETCH(Attributes, attributes);
    QFETCH(QRgb, expected);
    Studio studio;
    const XmlElement path = element("path", {text(Attr::PathData, "M0 0h4v4h-4z"), color(Attr::FillColor, Red)});
    const Attributes viewport{number(Attr::ViewportWidth, 4), number(Attr::ViewportHeight, 4)};
    const QImage image = studio.draw(element("vector", viewport + attributes, {path}), QSize(4, 4));
    QCOMPARE(image.pixel(1, 1), expected);
}

void TestVectorColors::aTintComesAfterTheOpacity()
{
    QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::red);
    Tint(Qt::green, Tint::Mode::SourceOver).apply(&image, 0.5);
    QCOMPARE(image.pixel(0, 0), Green);
    image.fill(Qt::red);
    Tint(Qt::green, Tint::Mode::SourceIn).apply(&image, 0.5);
    // Premultiplied.
    QVERIFY(isNear(image.pixel(0, 0), 0x80008000, 1));
}

QTEST_GUILESS_MAIN(TestVectorColors)
#include "tst_vectorcolors.moc"
