// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bounds.h"
#include "DrawableFixture.h"
#include "drawable/paint/PathPainter.h"
#include "drawable/vector/PathParser.h"
#include "drawable/vector/VectorDrawable.h"
#include "drawable/vector/VectorGroup.h"
#include "format/AndroidAttributes.h"
#include "icon/IconRenderer.h"

#include <QRandomGenerator>
#include <QtTest>

#include <cmath>
#include <limits>

using namespace SorrelKit;
using namespace fixture;

Q_DECLARE_METATYPE(XmlAttribute)
Q_DECLARE_METATYPE(XmlElement)

namespace {

constexpr qint64 MaxMemory = 64 << 20;
constexpr float Huge = 3e38F;
const QString everything = QStringLiteral("M0 0h24v24h-24z");

XmlElement vector(const Elements &children, const Attributes &more = {})
{
    return element("vector", Attributes{number(Attr::ViewportWidth, 24), number(Attr::ViewportHeight, 24)} + more,
                   children);
}

XmlElement path(const QString &data, const Attributes &more = {})
{
    return element("path", Attributes{text(Attr::PathData, data), color(Attr::FillColor, Red)} + more);
}

XmlElement stroked(const QString &data, float width, const Attributes &more = {})
{
    return element(
        "path", Attributes{text(Attr::PathData, data), color(Attr::StrokeColor, Blue), number(Attr::StrokeWidth, width)}
                    + more);
}

XmlElement group(const Attributes &attributes, const Elements &children)
{
    return element("group", attributes, children);
}

XmlElement clipPath(const QString &data)
{
    return element("clip-path", {text(Attr::PathData, data)});
}

XmlElement nested(XmlElement inner, int count, const Attributes &attributes, const Elements &before = {})
{
    for (int i = 0; i < count; ++i)
        inner = group(attributes, before + Elements{inner});
    return inner;
}

// Repeats @p command @p count times, each with as many random numbers as @p numbers, from 0 to @p limit.
QString random(const QString &command, int count, int numbers, double limit)
{
    QRandomGenerator generator(1);
    QString data = "M0 0";
    for (int i = 0; i < count; ++i) {
        data += command;
        for (int j = 0; j < numbers; ++j)
            data += QString::number(generator.bounded(limit)) + ' ';
    }
    return data;
}

Elements times(int count, const XmlElement &element)
{
    return Elements(count, element);
}

} // namespace

/// Errors of vectors, and the cost of hostile ones.
class TestVectorLimits : public QObject
{
    Q_OBJECT

private slots:
    void errors_data();
    void errors();
    void faultsLeaveOutTheRest_data();
    void faultsLeaveOutTheRest();
    void sidesUpToTheCeiling();
    void whatIsTooMuchIsLeftOut();
    void hostile_data();
    void hostile();
    void boundsThatCannotBePainted_data();
    void boundsThatCannotBePainted();
    void whatIsOutsideOfTheViewportIsNotSeen_data();
    void whatIsOutsideOfTheViewportIsNotSeen();
};

void TestVectorLimits::errors_data()
{
    QTest::addColumn<XmlElement>("root");
    QTest::addColumn<QString>("error");
    const auto viewport = [](const char *row, float width, float height) {
        QTest::newRow(row) << element(
            "vector", {number(Attr::ViewportWidth, width), number(Attr::ViewportHeight, height)}, {path(everything)})
                           << "Damaged: vector without a viewport";
    };
    QTest::newRow("no viewport") << element("vector", {}, {path(everything)}) << "Damaged: vector without a viewport";
    viewport("no width", 0, 24);
    viewport("a negative height", 24, -1);
    viewport("too high", 24, 2e6F);
    viewport("an infinite width", std::numeric_limits<float>::infinity(), 24);
    QTest::newRow("nothing in it") << vector({}) << "Damaged: vector without a path";
    QTest::newRow("an empty group") << vector({group({}, {})}) << "Damaged: vector without a path";
    QTest::newRow("a path without data") << vector({element("path", {color(Attr::FillColor, Red)})})
                                         << "Damaged: vector without a path";
    QTest::newRow("a path without a color")
        << vector({element("path", {text(Attr::PathData, everything)})}) << "Damaged: vector without a path";
    QTest::newRow("an animation without a vector")
        << element("animated-vector", {}, {element("target")}) << "Damaged: animated vector without a vector";
}

void TestVectorLimits::errors()
{
    QFETCH(XmlElement, root);
    QFETCH(QString, error);
    Studio studio;
    QVERIFY(studio.load(root) == nullptr);
    QCOMPARE(studio.error(), error);
}

void TestVectorLimits::faultsLeaveOutTheRest_data()
{
    QTest::addColumn<XmlElement>("root");
    QTest::addColumn<QString>("error");
    QTest::addColumn<QRect>("area");

    XmlAttribute theme;
    theme.id = Attr::FillColor;
    theme.value = {ValueType::Attribute, 0x01010000};
    XmlAttribute missing = theme;
    missing.value = {ValueType::Reference, 0x7f010000};
    const XmlElement good = path("M2 2h4v4h-4z");
    const QRect goodArea(2, 2, 4, 4);
    QTest::newRow("bad path data") << vector({path("M2 2h4v4h-4zX")}) << "Damaged: no command in path data at 12"
                                   << goodArea;
    QTest::newRow("bad path data of a clip path") << vector({clipPath("M2 2h4v4h-4zX"), path(everything)})
                                                  << "Damaged: no command in path data at 12" << goodArea;
    QTest::newRow("a color of the theme") << vector({good, element("path", {text(Attr::PathData, everything), theme})})
                                          << "NoThemeValue: ?0x01010000 has no value without a theme" << goodArea;
    QTest::newRow("a color that is missing")
        << vector({good, element("path", {text(Attr::PathData, everything), missing})})
        << "Damaged: vector path without the color that it refers to" << goodArea;
    theme.id = Attr::Tint;
    missing.id = Attr::Tint;
    QTest::newRow("a tint of the theme") << vector({good}, {theme})
                                         << "NoThemeValue: ?0x01010000 has no value without a theme" << goodArea;
    QTest::newRow("a tint that is missing") << vector({good}, {missing}) << "Damaged: tint without a color" << goodArea;
    QTest::newRow("deep groups") << vector({good, nested(path(everything), VectorGroup::MaxDepth + 1, {})})
                                 << "TooMuch: groups of a vector nested too deeply" << goodArea;
    QTest::newRow("groups that are deep enough")
        << vector({nested(good, VectorGroup::MaxDepth, {}), group({}, {})}) << "" << goodArea;
    const int tooMany = int(IconRenderer::MaxWork / PathParser::CharacterWork) + 1;
    QTest::newRow("many characters") << vector({good, path(QString(tooMany, ' '))}) << "TooMuch: drawing takes too much"
                                     << goodArea;
    QTest::newRow("a long stroke") << vector(
        {good, stroked("M0 0" + QString("h1h-1").repeated(PathPainter::MaxStrokedElements / 2), 8)})
                                   << "TooMuch: too many segments in a path that is stroked" << goodArea;
}

void TestVectorLimits::faultsLeaveOutTheRest()
{
    QFETCH(XmlElement, root);
    QFETCH(QString, error);
    QFETCH(QRect, area);
    Studio studio;
    const QImage image = studio.draw(root, QSize(24, 24));
    QCOMPARE(studio.error(), error);
    QCOMPARE(areaOf(image, Red), area);
    QCOMPARE(coverage(image), area.width() * area.height() / (24.0 * 24));
}

void TestVectorLimits::sidesUpToTheCeiling()
{
    constexpr auto Most = float(VectorDrawable::MaxSide);
    const auto load = [](float viewport, int width) {
        Studio studio;
        return studio.load(element("vector",
                                   {number(Attr::ViewportWidth, viewport), number(Attr::ViewportHeight, viewport),
                                    pixels(Attr::Width, width), pixels(Attr::Height, 24)},
                                   {path(everything)}));
    };
    QVERIFY(load(Most, 24) != nullptr);
    QVERIFY(load(Most + 1, 24) == nullptr);
    QCOMPARE(load(24, int(Most))->intrinsicSize(), QSizeF(VectorDrawable::MaxSide, 24));
    QCOMPARE(load(24, int(Most) + 1)->intrinsicSize(), QSizeF(VectorDrawable::MaxSide, 24));
}

// A path that would take a painter half a minute.
void TestVectorLimits::whatIsTooMuchIsLeftOut()
{
    Studio studio;
    const DrawablePointer drawable = studio.load(vector({path(everything), path(random("L", 20000, 2, 24))}));
    QVERIFY(drawable != nullptr);
    QCOMPARE(studio.error(), QString());
    Canvas canvas(QSize(1024, 1024), studio.budget);
    drawable->draw(canvas, QRectF(0, 0, 1024, 1024));
    QVERIFY(canvas.isSpent());
    QCOMPARE(areaOf(canvas.image(), Red), QRect(0, 0, 1024, 1024));
}

void TestVectorLimits::hostile_data()
{
    QTest::addColumn<XmlElement>("root");
    const auto row = [](const char *name, const Elements &children, const Attributes &more = {}) {
        QTest::newRow(name) << vector(children, more);
    };
    constexpr int most = 1 << 17;
    const int stroke = PathPainter::MaxStrokedElements;
    const XmlAttribute round = integer(Attr::StrokeLineJoin, 1);
    const XmlAttribute roundCap = integer(Attr::StrokeLineCap, 1);

    row("lines across", {path(random("L", 100000, 2, 24))});
    row("lines across, in paths that are just not too much", times(200, path(random("L", 500, 2, 24))));
    row("lines to and fro in a row", {path("M0 3" + QString("H24H0").repeated(60000))});
    row("curves across", {path(random("C", 30000, 6, 24))});
    row("curves across, in many paths", times(2000, path(random("C", 50, 6, 24))));
    row("far curves", {path(random("C", 30000, 6, 1.6e7))});
    row("far curves on both sides", {path("M0 0" + QString("C-9e6 9e6 9e6-9e6 12 12").repeated(30000))});
    row("far lines on both sides", {path("M0 0" + QString("L-9e6 9e6L9e6-9e6").repeated(60000))});
    row("circles without end", {path(random("A9e6 9e6 0 1 1 ", 30000, 2, 24))});
    row("small squares", {path("M0 0" + QString("h.1v.1h-.1zm.1 .2").repeated(most / 5))});
    row("many small paths", times(14000, path("M3 3h1v1z")));
    row("many large paths", times(12000, path(everything)));
    row("long texts of nothing", times(5000, path("M0 0h9v9z" + QString(100000, ' '))));
    row("numbers without end", {path("M0 " + QString(1000000, '9'))});
    row("wide strokes", {stroked(random("L", stroke - 1, 2, 24), Huge)});
    row("wide strokes of curves", {stroked(random("C", stroke / 3 - 1, 6, 24), 20, {round, roundCap})});
    row("strokes of curves", {stroked(random("C", stroke / 3 - 1, 6, 24), 1, {round, roundCap})});
    row("strokes of far curves", {stroked(random("C", stroke / 3 - 1, 6, 1.6e7), 1e6, {round, roundCap})});
    row("strokes of small curves", times(8, stroked(random("c", stroke / 3 - 1, 6, 0.001), 0.5, {round, roundCap})));
    row("strokes of curves in many paths", times(2000, stroked(random("C", 20, 6, 24), 1, {round})));
    row("sharp miters", {stroked(random("L", stroke - 1, 2, 24), 1, {number(Attr::StrokeMiterLimit, Huge)})});
    row("hairlines", times(2000, stroked(random("L", 20, 2, 24), 0)));
    row("wide dots", {stroked(QString("M3 3z").repeated(stroke / 2), Huge, {roundCap})});
    row("trimmed", times(8, path(random("C", 5000, 6, 24),
                                 {number(Attr::TrimPathStart, 0.3F), number(Attr::TrimPathOffset, 0.9F)})));
    row("trimmed by too much", {stroked(random("C", 500, 6, 24), 1,
                                        {number(Attr::TrimPathStart, -Huge), number(Attr::TrimPathEnd, Huge),
                                         number(Attr::TrimPathOffset, Huge)})});
    row("clip paths", times(10000, clipPath(everything)) + Elements{path(everything)});
    row("clip paths that cut",
        Elements{group({}, times(3000, clipPath(random("L", 30, 2, 24))) + Elements{path(everything)})});
    Elements alternating;
    for (int i = 0; i < 5000; ++i)
        alternating += {clipPath(everything), path(everything)};
    row("a clip path before each path", alternating);
    row("groups cut in each other", {nested(path(everything), VectorGroup::MaxDepth, {}, {clipPath(everything)})});
    row("many groups that are cut", times(3000, group({}, {clipPath(everything), path(everything)})));
    row("groups beyond each other",
        {nested(path(everything), VectorGroup::MaxDepth, {}, times(100, path(everything)))});
    const auto scaled = [&](const char *name, float x, float y) {
        const Attributes attributes{number(Attr::ScaleX, x), number(Attr::ScaleY, y), number(Attr::Rotation, Huge),
                                    number(Attr::PivotX, Huge), number(Attr::TranslateX, -Huge)};
        row(name, {nested(path(random("C", 100, 6, 24)), 60, attributes),
                   nested(stroked(random("C", 100, 6, 24), 1, {round}), 1, attributes.mid(0, 2))});
    };
    scaled("groups that scale to infinity", Huge, Huge);
    scaled("groups that scale to nothing", 1e-38F, 1e-38F);
    scaled("groups that scale by nothing", 0, 0);
    scaled("groups that are flattened", 1, 1e-30F);
    row("tinted over and over", times(1000, path(everything)), {color(Attr::Tint, Green), number(Attr::Alpha, 0.5F)});
}

void TestVectorLimits::hostile()
{
    QFETCH(XmlElement, root);
    // Memory is not counted in an instrumented build, and the largest side has the largest numbers.
    for (int side : isInstrumented() ? QVector<int>{1024} : QVector<int>{48, 1024}) {
        const Cost taken = cost([&]() {
            Studio studio;
            studio.draw(root, QSize(side, side));
        });
        const QString excess = Bounds::excess(taken, 0, 0, MaxMemory);
        QVERIFY2(excess.isEmpty(), qPrintable(excess));
    }
}

void TestVectorLimits::boundsThatCannotBePainted_data()
{
    QTest::addColumn<QRectF>("bounds");
    const qreal infinity = std::numeric_limits<qreal>::infinity();
    QTest::newRow("empty") << QRectF(0, 0, 0, 24);
    QTest::newRow("negative") << QRectF(24, 24, -24, -24);
    QTest::newRow("elsewhere") << QRectF(100, 0, 24, 24);
    QTest::newRow("far away") << QRectF(1e300, 0, 24, 24);
    QTest::newRow("infinite") << QRectF(0, 0, infinity, infinity);
    QTest::newRow("infinitely far away") << QRectF(-infinity, 0, 24, 24);
    QTest::newRow("no number") << QRectF(0, std::nan(""), 24, 24);
}

void TestVectorLimits::boundsThatCannotBePainted()
{
    QFETCH(QRectF, bounds);
    Studio studio;
    const DrawablePointer drawable = studio.load(
        vector({clipPath(everything), path(everything), stroked(everything, 3)}, {color(Attr::Tint, 0x8000ff00)}));
    QVERIFY(drawable != nullptr);
    Canvas canvas(QSize(24, 24), studio.budget);
    drawable->draw(canvas, bounds);
    QCOMPARE(coverage(canvas.image()), 0.0);
    QVERIFY(!canvas.isSpent());
}

void TestVectorLimits::whatIsOutsideOfTheViewportIsNotSeen_data()
{
    QTest::addColumn<Attributes>("attributes");
    QTest::newRow("plain") << Attributes();
    QTest::newRow("with an alpha") << Attributes{number(Attr::Alpha, 0.5F)};
    QTest::newRow("tinted") << Attributes{color(Attr::Tint, Green)};
    QTest::newRow("tinted, what is transparent as well")
        << Attributes{color(Attr::Tint, Green), integer(Attr::TintMode, 3)};
}

void TestVectorLimits::whatIsOutsideOfTheViewportIsNotSeen()
{
    QFETCH(Attributes, attributes);
    const XmlElement beyond = path("M-24-24h72v72h-72z");
    const XmlElement cross = stroked("M12-30v90M-30 12h90", 4);
    const qreal opacity = attributes.size() == 1 && attributes.first().id == Attr::Alpha ? 0.5 : 1;
    Studio studio;
    const DrawablePointer drawable = studio.load(vector({beyond, cross}, attributes));
    Canvas canvas(QSize(48, 48), studio.budget);
    drawable->draw(canvas, QRectF(6, 12, 24, 12));
    const QImage image = canvas.image();
    QVERIFY(qAbs(coverage(image) * 48 * 48 - opacity * 24 * 12) < 1);
    for (QPoint inside : {QPoint(6, 12), QPoint(29, 23)})
        QVERIFY(qAbs(qAlpha(image.pixel(inside)) - 255 * opacity) < 1);

    // Rotated, it has smooth edges around the same area.
    Canvas turned(QSize(48, 48), studio.budget);
    turned.painter().translate(24, 24);
    turned.painter().rotate(30);
    drawable->draw(turned, QRectF(-12, -6, 24, 12));
    QVERIFY2(qAbs(coverage(turned.image()) * 48 * 48 - opacity * 24 * 12) < 3,
             qPrintable(QString::number(coverage(turned.image()) * 48 * 48)));
}

QTEST_GUILESS_MAIN(TestVectorLimits)
#include "tst_vectorlimits.moc"
