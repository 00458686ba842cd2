// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DrawableFixture.h"
#include "drawable/ShapeDrawable.h"
#include "format/AndroidAttributes.h"

#include <QtTest>

#include <cmath>

using namespace SorrelKit;
using namespace fixture;

Q_DECLARE_METATYPE(fixture::Attributes)

namespace {

enum Shape {
    Rectangle,
    Oval,
    Line,
    Ring,
};

XmlElement shape(const Elements &parts, const Attributes &attributes = {})
{
    return element("shape", attributes, parts);
}

XmlElement solid(QRgb value)
{
    return element("solid", {color(Attr::Color, value)});
}

XmlElement stroke(int width, QRgb value, const Attributes &more = {})
{
    return element("stroke", Attributes{pixels(Attr::Width, width), color(Attr::Color, value)} + more);
}

XmlElement gradient(const Attributes &attributes)
{
    return element("gradient", Attributes{color(Attr::StartColor, Black), color(Attr::EndColor, White)} + attributes);
}

int grey(const QImage &image, int x, int y)
{
    const QRgb pixel = image.pixel(x, y);
    return qRed(pixel) == qGreen(pixel) && qGreen(pixel) == qBlue(pixel) ? qRed(pixel) : -1;
}

bool isGreyNear(const QImage &image, int x, int y, qreal share)
{
    const int value = grey(image, x, y);
    if (value >= 0 && std::abs(value - 255 * share) <= 4)
        return true;
    qWarning("pixel %d, %d is %d, not %g", x, y, value, 255 * share);
    return false;
}

} // namespace

/// The element `shape` with all of its parts.
class TestShapes : public QObject
{
    Q_OBJECT

private slots:
    void cornersAreRound();
    void cornersThatAreTooLargeShrink();
    void strokeIsWithinTheBounds();
    void strokeLiesOnTheFilling();
    void dashes();
    void tooManyDashesAreDrawnThrough();
    void dashesUpToTheCeilings_data();
    void dashesUpToTheCeilings();
    void ovalTouchesTheSides();
    void lineIsInTheMiddle();
    void rings_data();
    void rings();
    void ringAtLevelIsNotDrawn();
    void linearGradients_data();
    void linearGradients();
    void gradientsRunWithinTheStroke();
    void centerColor_data();
    void centerColor();
    void radialGradient();
    void radialGradientInFractions_data();
    void radialGradientInFractions();
    void sweepIsClockwise();
    void gradientAtLevelIsOver();
    void theLastFillingCounts();
    void tint();
    void sizeAndPadding();
    void rotation_data();
    void rotation();
    void scaling();
    void clipping();
};

void TestShapes::cornersAreRound()
{
    Studio studio;
    constexpr int Side = 100;
    const auto draw = [&](const Attributes &corners) {
        return studio.draw(shape({solid(Red), element("corners", corners)}), {Side, Side});
    };
    const auto missing = [](qreal radius) { return (1 - M_PI / 4) * radius * radius / (Side * Side); };
    QVERIFY(std::abs(coverage(draw({pixels(Attr::Radius, 20)})) - (1 - 4 * missing(20))) < 0.002);
    const QImage image = draw({pixels(Attr::Radius, 10), pixels(Attr::TopLeftRadius, 0),
                               pixels(Attr::TopRightRadius, 40), pixels(Attr::BottomRightRadius, 30)});
    QVERIFY(std::abs(coverage(image) - (1 - missing(40) - missing(30) - missing(10))) < 0.002);
    QCOMPARE(image.pixel(0, 0), Red);
    // On the diagonal, the edge is 0.29 of the radius from both sides.
    QCOMPARE(image.pixel(Side - 10, 9), Nothing);
    QCOMPARE(image.pixel(Side - 15, 14), Red);
    QCOMPARE(image.pixel(Side - 8, Side - 8), Nothing);
    QCOMPARE(image.pixel(Side - 12, Side - 12), Red);
    QCOMPARE(image.pixel(1, Side - 2), Nothing);
    QCOMPARE(image.pixel(5, Side - 6), Red);
}

void TestShapes::cornersThatAreTooLargeShrink()
{
    Studio studio;
    const QImage image = studio.draw(shape({solid(Red), element("corners", {pixels(Attr::Radius, 1000)})}), {100, 60});
    // Half circles at both ends.
    QVERIFY(std::abs(coverage(image) - (1 - (4 - M_PI) * 30 * 30 / 6000)) < 0.002);
    QCOMPARE(image.pixel(50, 0), Red);
    QCOMPARE(image.pixel(5, 5), Nothing);
}

void TestShapes::strokeIsWithinTheBounds()
{
    Studio studio;
    const QImage image = studio.draw(shape({stroke(4, Red)}), {20, 20});
    QCOMPARE(areaOf(image, Nothing), QRect(4, 4, 12, 12));
    QCOMPARE(image.pixel(0, 0), Red);
    QCOMPARE(image.pixel(19, 19), Red);
}

void TestShapes::strokeLiesOnTheFilling()
{
    Studio studio;
    const QImage image = studio.draw(shape({solid(Red), stroke(8, Blue)}), {40, 40});
    QCOMPARE(areaOf(image, Red), QRect(8, 8, 24, 24));
    QCOMPARE(image.pixel(0, 0), Blue);
    const QImage translucent = studio.draw(shape({solid(Red), stroke(8, 0x800000ff)}), {40, 40});
    // The filling reaches to the middle of the stroke.
    QVERIFY(isNear(translucent.pixel(2, 20), 0x80000080, 1));
    QVERIFY(isNear(translucent.pixel(6, 20), 0xff7f0080, 1));
}

void TestShapes::dashes()
{
    Studio studio;
    const QImage image = studio.draw(
        shape({stroke(4, Red, {pixels(Attr::DashWidth, 6), pixels(Attr::DashGap, 2)})}, {integer(Attr::Shape, Line)}),
        {36, 10});
    // The line is shorter than the bounds by the stroke's width, and begins with a dash.
    for (int x = 0; x < 36; ++x) {
        const bool isDash = x >= 2 && x < 34 && (x - 2) % 8 < 6;
        QCOMPARE(image.pixel(x, 5), isDash ? Red : Nothing);
    }
}

void TestShapes::tooManyDashesAreDrawnThrough()
{
    Studio studio;
    const auto dashed = [&](const XmlAttribute &dash, const XmlAttribute &gap) {
        return studio.draw(shape({stroke(4, Red, {dash, gap})}, {integer(Attr::Shape, Line)}), {36, 10});
    };
    const QImage fine = dashed(number(Attr::DashWidth, 1e-6F), number(Attr::DashGap, 1e-6F));
    QCOMPARE(areaOf(fine, Red), QRect(2, 3, 32, 4));
    QCOMPARE(dashed(pixels(Attr::DashWidth, 3), pixels(Attr::DashGap, 0)), fine);
    QCOMPARE(dashed(pixels(Attr::DashWidth, -3), pixels(Attr::DashGap, 3)), fine);
}

void TestShapes::dashesUpToTheCeilings_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("width");
    QTest::addColumn<float>("period");
    QTest::addColumn<bool>("isDashed");
    constexpr auto MinPixels = float(ShapeDrawable::MinDashPixels);
    constexpr auto MinWidths = float(ShapeDrawable::MinDashWidths);
    constexpr auto MaxWidth = int(ShapeDrawable::MaxDashedWidth);
    // The whole outline counts. The outline of a line is twice its length.
    constexpr int Longest = int(ShapeDrawable::MaxDashes * ShapeDrawable::MinDashPixels) / 2;
    QTest::newRow("as many as may be") << Longest << 1 << MinPixels << true;
    QTest::newRow("more") << Longest + 1 << 1 << MinPixels << false;
    QTest::newRow("as fine as may be") << 100 << 1 << MinPixels << true;
    QTest::newRow("finer") << 100 << 1 << 0.99F * MinPixels << false;
    QTest::newRow("as fine as may be, wide") << 100 << 16 << 16 * MinWidths << true;
    QTest::newRow("finer, wide") << 100 << 16 << 15.9F * MinWidths << false;
    QTest::newRow("as wide as may be") << 300 << MaxWidth << 40.0F << true;
    QTest::newRow("wider") << 300 << MaxWidth + 1 << 40.0F << false;
}

void TestShapes::dashesUpToTheCeilings()
{
    QFETCH(int, length);
    QFETCH(int, width);
    QFETCH(float, period);
    QFETCH(bool, isDashed);
    Studio studio;
    const auto coverageWith = [&](const Attributes &dashes) {
        const XmlElement line = shape({stroke(width, Red, dashes)}, {integer(Attr::Shape, Line)});
        return coverage(studio.draw(line, {length + width, width}));
    };
    const qreal dashed =
        coverageWith({number(Attr::DashWidth, period / 2), number(Attr::DashGap, period / 2)}) / coverageWith({});
    QVERIFY2(isDashed ? dashed < 0.75 : dashed == 1, qPrintable(QString::number(dashed)));
}

void TestShapes::ovalTouchesTheSides()
{
    Studio studio;
    const QImage image = studio.draw(shape({solid(Red)}, {integer(Attr::Shape, Oval)}), {100, 50});
    QVERIFY(std::abs(coverage(image) - M_PI / 4) < 0.002);
    QCOMPARE(image.pixel(50, 1), Red);
    QCOMPARE(image.pixel(1, 25), Red);
    QCOMPARE(image.pixel(5, 5), Nothing);
}

void TestShapes::lineIsInTheMiddle()
{
    Studio studio;
    // A line is not filled.
    const QImage image = studio.draw(shape({solid(Blue), stroke(4, Red)}, {integer(Attr::Shape, Line)}), {20, 16});
    QCOMPARE(areaOf(image, Red), QRect(2, 6, 16, 4));
    QCOMPARE(areaOf(image, Blue), QRect());
}

void TestShapes::rings_data()
{
    QTest::addColumn<Attributes>("attributes");
    QTest::addColumn<qreal>("inner");
    QTest::addColumn<qreal>("outer");
    QTest::newRow("default") << Attributes{} << 120.0 / 3 << 120.0 / 3 + 120.0 / 9;
    QTest::newRow("ratios") << Attributes{number(Attr::InnerRadiusRatio, 4), number(Attr::ThicknessRatio, 6)} << 30.0
                            << 50.0;
    QTest::newRow("pixels") << Attributes{pixels(Attr::InnerRadius, 20), pixels(Attr::Thickness, 15)} << 20.0 << 35.0;
    QTest::newRow("no ratio") << Attributes{number(Attr::InnerRadiusRatio, 0), number(Attr::ThicknessRatio, -2)}
                              << 120.0 / 3 << 120.0 / 3 + 120.0 / 9;
}

void TestShapes::rings()
{
    QFETCH(Attributes, attributes);
    QFETCH(qreal, inner);
    QFETCH(qreal, outer);
    Studio studio;
    const QImage image = studio.draw(
        shape({solid(Red)}, Attributes{integer(Attr::Shape, Ring), boolean(Attr::UseLevel, false)} + attributes),
        {120, 120});
    for (int x = 60; x < 120; ++x) {
        const qreal distance = x + 0.5 - 60;
        if (std::abs(distance - inner) > 1 && std::abs(distance - outer) > 1)
            QCOMPARE(image.pixel(x, 60), distance > inner && distance < outer ? Red : Nothing);
    }
    QVERIFY(std::abs(coverage(image) - M_PI * (outer * outer - inner * inner) / (120 * 120)) < 0.002);
}

void TestShapes::ringAtLevelIsNotDrawn()
{
    Studio studio;
    QCOMPARE(coverage(studio.draw(shape({solid(Red), stroke(2, Red)}, {integer(Attr::Shape, Ring)}), {40, 40})), 0.0);
}

void TestShapes::linearGradients_data()
{
    QTest::addColumn<int>("angle");
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    const QPointF topLeft(0, 0);
    const QPointF topRight(60, 0);
    const QPointF bottomLeft(0, 40);
    const QPointF bottomRight(60, 40);
    QTest::newRow("0") << 0 << topLeft << topRight;
    QTest::newRow("45") << 45 << bottomLeft << topRight;
    QTest::newRow("90") << 90 << bottomLeft << topLeft;
    QTest::newRow("135") << 135 << bottomRight << topLeft;
    QTest::newRow("180") << 180 << topRight << topLeft;
    QTest::newRow("225") << 225 << topRight << bottomLeft;
    QTest::newRow("270") << 270 << topLeft << bottomLeft;
    QTest::newRow("315") << 315 << topLeft << bottomRight;
    QTest::newRow("once round, and 90") << 450 << bottomLeft << topLeft;
    QTest::newRow("back by 90") << -90 << topLeft << bottomLeft;
    QTest::newRow("something else") << 44 << topLeft << bottomLeft;
}

void TestShapes::linearGradients()
{
    QFETCH(int, angle);
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    Studio studio;
    const QImage image = studio.draw(shape({gradient({number(Attr::Angle, float(angle))})}), {60, 40});
    const QPointF line = to - from;
    for (const QPoint &at :
         {QPoint(0, 0), QPoint(59, 0), QPoint(0, 39), QPoint(59, 39), QPoint(30, 20), QPoint(15, 30)}) {
        const QPointF middle = QPointF(at) + QPointF(0.5, 0.5);
        const qreal share = QPointF::dotProduct(middle - from, line) / QPointF::dotProduct(line, line);
        QVERIFY(isGreyNear(image, at.x(), at.y(), qBound(0.0, share, 1.0)));
    }
}

void TestShapes::gradientsRunWithinTheStroke()
{
    Studio studio;
    const QImage image = studio.draw(shape({gradient({}), stroke(20, Red)}), {120, 60});
    // From 10 to 110.
    QVERIFY(isGreyNear(image, 60, 30, 0.505));
    QVERIFY(isGreyNear(image, 35, 30, 0.255));
}

void TestShapes::centerColor_data()
{
    QTest::addColumn<Attributes>("attributes");
    QTest::addColumn<int>("center");
    QTest::newRow("in the middle") << Attributes{} << 50;
    QTest::newRow("by x") << Attributes{number(Attr::CenterX, 0.25F)} << 25;
    QTest::newRow("by y") << Attributes{percent(Attr::CenterY, 75)} << 75;
    QTest::newRow("x counts for more") << Attributes{number(Attr::CenterX, 0.25F), number(Attr::CenterY, 0.75F)} << 25;
    QTest::newRow("beyond the end") << Attributes{number(Attr::CenterX, 1e30F)} << 100;
}

void TestShapes::centerColor()
{
    QFETCH(Attributes, attributes);
    QFETCH(int, center);
    Studio studio;
    const XmlElement root =
        shape({element("gradient", Attributes{color(Attr::StartColor, Black), color(Attr::CenterColor, White),
                                              color(Attr::EndColor, Black)}
                                       + attributes)});
    const QImage image = studio.draw(root, {100, 4});
    QVERIFY(grey(image, center - 1, 2) > 240);
    QVERIFY(isGreyNear(image, center / 2, 2, 0.5));
    if (center < 100)
        QVERIFY(isGreyNear(image, (100 + center) / 2, 2, 0.5));
}

void TestShapes::radialGradient()
{
    Studio studio;
    const QImage image = studio.draw(
        shape({gradient({integer(Attr::Type, 1), pixels(Attr::GradientRadius, 40), number(Attr::CenterX, 0.25F)})}),
        {200, 100});
    QVERIFY(isGreyNear(image, 50, 50, 0));
    QVERIFY(isGreyNear(image, 70, 50, 0.5));
    QVERIFY(isGreyNear(image, 50, 30, 0.5));
    QVERIFY(isGreyNear(image, 95, 50, 1));
}

void TestShapes::radialGradientInFractions_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<int>("radius");
    QTest::newRow("of its own smaller side") << 0 << 20;
    QTest::newRow("of the smaller side that it fills") << 1 << 50;
}

void TestShapes::radialGradientInFractions()
{
    QFETCH(int, unit);
    QFETCH(int, radius);
    XmlAttribute half = percent(Attr::GradientRadius, 50);
    half.value.data |= quint32(unit);
    Studio studio;
    const QImage image = studio.draw(shape({gradient({integer(Attr::Type, 1), half}),
                                            element("size", {pixels(Attr::Width, 60), pixels(Attr::Height, 40)})}),
                                     {200, 100});
    QVERIFY(isGreyNear(image, 100 + radius / 2, 50, 0.5 + 0.5 / radius));
    QVERIFY(isGreyNear(image, 101 + radius, 50, 1));
}

void TestShapes::sweepIsClockwise()
{
    Studio studio;
    const QImage image = studio.draw(shape({gradient({integer(Attr::Type, 2)})}), {100, 100});
    QVERIFY(isGreyNear(image, 95, 51, 0));
    QVERIFY(isGreyNear(image, 50, 95, 0.25));
    QVERIFY(isGreyNear(image, 5, 50, 0.5));
    QVERIFY(isGreyNear(image, 50, 5, 0.75));
    QVERIFY(isGreyNear(image, 95, 48, 1));
}

void TestShapes::gradientAtLevelIsOver()
{
    Studio studio;
    const QImage image = studio.draw(shape({gradient({boolean(Attr::UseLevel, true)})}), {20, 20});
    QCOMPARE(areaOf(image, White), QRect(0, 0, 20, 20));
}

void TestShapes::theLastFillingCounts()
{
    Studio studio;
    QCOMPARE(areaOf(studio.draw(shape({gradient({}), solid(Red)}), {20, 20}), Red), QRect(0, 0, 20, 20));
    QVERIFY(isGreyNear(studio.draw(shape({solid(Red), gradient({})}), {100, 4}), 50, 2, 0.5));
}

void TestShapes::tint()
{
    Studio studio;
    const Attributes green{color(Attr::Tint, Green)};
    const QImage image = studio.draw(shape({solid(0x80ff0000), stroke(4, Blue)}, green), {20, 20});
    QVERIFY(isNear(image.pixel(10, 10), 0x80008000, 1));
    QCOMPARE(image.pixel(0, 0), Green);
    const QImage tinted =
        studio.draw(shape({gradient({})}, {color(Attr::Tint, Red), integer(Attr::TintMode, 14)}), {100, 4});
    QVERIFY(isNear(tinted.pixel(50, 2), 0xff800000, 3));
}

void TestShapes::sizeAndPadding()
{
    Studio studio;
    const auto drawable =
        studio.load(shape({element("size", {pixels(Attr::Width, 12)}),
                           element("padding", {pixels(Attr::Left, 1), pixels(Attr::Top, 2), pixels(Attr::Right, 3)})}));
    QCOMPARE(drawable->intrinsicSize(), QSizeF(12, -1));
    QCOMPARE(drawable->padding(), QMarginsF(1, 2, 3, 0));
}

void TestShapes::rotation_data()
{
    QTest::addColumn<Attributes>("attributes");
    QTest::addColumn<QRect>("area");
    // The left half of 40 by 40, and its place.
    QTest::newRow("not") << Attributes{} << QRect(0, 0, 20, 40);
    QTest::newRow("90") << Attributes{number(Attr::FromDegrees, 90)} << QRect(0, 0, 40, 20);
    QTest::newRow("-90") << Attributes{number(Attr::FromDegrees, -90)} << QRect(0, 20, 40, 20);
    QTest::newRow("far round") << Attributes{number(Attr::FromDegrees, 360 * 1000 + 180)} << QRect(20, 0, 20, 40);
    QTest::newRow("about a fraction") << Attributes{number(Attr::FromDegrees, 90), percent(Attr::PivotX, 25),
                                                    percent(Attr::PivotY, 75)}
                                      << QRect(0, 20, 40, 20);
    QTest::newRow("about pixels") << Attributes{number(Attr::FromDegrees, 180), number(Attr::PivotX, 15),
                                                number(Attr::PivotY, 20)}
                                  << QRect(10, 0, 20, 40);
}

void TestShapes::rotation()
{
    QFETCH(Attributes, attributes);
    QFETCH(QRect, area);
    Studio studio;
    const XmlElement half = element("inset", {percent(Attr::InsetRight, 50)}, {filled(Red)});
    const QImage image = studio.draw(element("rotate", attributes, {half}), {40, 40});
    QCOMPARE(areaOf(image, Red), area);
    if (attributes.isEmpty())
        return;
    // An animation starts without rotation.
    QCOMPARE(areaOf(studio.draw(element("animated-rotate", attributes, {half}), {40, 40}), Red), QRect(0, 0, 20, 40));
}

void TestShapes::scaling()
{
    Studio studio;
    const auto draw = [&](const Attributes &attributes) {
        return areaOf(studio.draw(element("scale", attributes, {filled(Red)}), {40, 40}), Red);
    };
    const XmlAttribute width = text(Attr::ScaleWidth, QStringLiteral("50%"));
    const XmlAttribute height = text(Attr::ScaleHeight, QStringLiteral("100%"));
    QCOMPARE(draw({width, height}), QRect());
    QCOMPARE(draw({integer(Attr::Level, 5000), width, height}), QRect(0, 10, 30, 20));
    QCOMPARE(draw({integer(Attr::Level, 5000), width, integer(Attr::ScaleGravity, 0x55)}), QRect(10, 0, 30, 40));
    QCOMPARE(draw({integer(Attr::Level, 10000), width, height}), QRect(0, 0, 40, 40));
    QCOMPARE(draw({integer(Attr::Level, 2000000000), width}), QRect(0, 0, 40, 40));
    QCOMPARE(draw({integer(Attr::Level, 5000), text(Attr::ScaleWidth, QStringLiteral("wide%"))}), QRect(0, 0, 40, 40));
    QCOMPARE(draw({integer(Attr::Level, 5000), text(Attr::ScaleWidth, QStringLiteral("nan%"))}), QRect(0, 0, 40, 40));
}

void TestShapes::clipping()
{
    Studio studio;
    const auto draw = [&](const Attributes &attributes) {
        return areaOf(studio.draw(element("clip", attributes, {filled(Red)}), {40, 40}), Red);
    };
    const XmlAttribute level = integer(Attr::Level, 2500);
    QCOMPARE(draw({}), QRect());
    QCOMPARE(draw({level}), QRect(0, 0, 10, 40));
    QCOMPARE(draw({level, integer(Attr::Gravity, 0x05)}), QRect(30, 0, 10, 40));
    QCOMPARE(draw({level, integer(Attr::ClipOrientation, 2), integer(Attr::Gravity, 0x50)}), QRect(0, 30, 40, 10));
    QCOMPARE(draw({level, integer(Attr::ClipOrientation, 3), integer(Attr::Gravity, 0x11)}), QRect(15, 15, 10, 10));
    QCOMPARE(draw({integer(Attr::Level, 10000)}), QRect(0, 0, 40, 40));
}

QTEST_GUILESS_MAIN(TestShapes)
#include "tst_shapes.moc"
