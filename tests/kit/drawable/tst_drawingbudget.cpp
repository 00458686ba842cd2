// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DrawableFixture.h"
#include "drawable/ShapeDrawable.h"
#include "drawable/paint/Downscaler.h"
#include "drawable/paint/PictureSample.h"
#include "drawable/vector/PathParser.h"
#include "drawable/vector/PathTrim.h"
#include "format/AndroidAttributes.h"
#include "icon/IconRenderer.h"

#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

Q_DECLARE_METATYPE(XmlElement)

namespace {

constexpr int Side = 64;
constexpr qint64 Pixels = Side * Side;
constexpr qint64 Pass = Pixels / Canvas::PixelsPerWork;
constexpr qint64 CanvasBytes = 4 * Pixels;
constexpr qint64 Plenty = qint64(1) << 40;
const QString picturePath = QStringLiteral("picture.png");

XmlElement list(int count, const XmlElement &inner)
{
    return element("layer-list", {}, Elements(count, element("item", {}, {inner})));
}

XmlElement vector(const QString &data, const Attributes &more = {})
{
    return element("vector", {number(Attr::ViewportWidth, Side), number(Attr::ViewportHeight, Side)},
                   {element("path", Attributes{text(Attr::PathData, data), color(Attr::FillColor, Red)} + more)});
}

// Whether all of @p root is drawn within @p budget. Spends from the budget.
bool isDrawn(const XmlElement &root, Budget *budget)
{
    QImage picture(100, 80, QImage::Format_ARGB32);
    picture.fill(Red);
    Studio studio(*budget);
    studio.files.add(picturePath, picture);
    Canvas canvas(QSize(Side, Side), studio.budget);
    const DrawablePointer drawable = studio.load(root);
    if (drawable != nullptr)
        drawable->draw(canvas, QRectF(0, 0, Side, Side));
    *budget = studio.budget;
    return drawable != nullptr && !studio.loader.error() && !canvas.isSpent();
}

// The smallest budget of bytes that suffices to draw all of @p root.
qint64 bytesOf(const XmlElement &root)
{
    qint64 tooLittle = 0;
    qint64 enough = IconRenderer::MaxBytes;
    while (enough - tooLittle > 1) {
        const qint64 middle = (tooLittle + enough) / 2;
        Budget budget(Plenty, middle);
        (isDrawn(root, &budget) ? enough : tooLittle) = middle;
    }
    return enough;
}

} // namespace

/// All costs of drawing are spent from one budget. tst_drawableloader tests the costs of reading files.
class TestDrawingBudget : public QObject
{
    Q_OBJECT

private slots:
    void everythingCosts_data();
    void everythingCosts();
    void paintingEndsWhenTheWorkIsSpent();
    void aCanvasWithoutRoomStaysEmpty();
};

void TestDrawingBudget::everythingCosts_data()
{
    QTest::addColumn<XmlElement>("root");
    QTest::addColumn<qint64>("work");
    QTest::addColumn<qint64>("bytes");
    constexpr qint64 Work = DrawableLoader::ElementWork;
    constexpr qint64 Bytes = DrawableLoader::ElementBytes;
    QTest::newRow("a colour") << filled(Red) << Work + Pass << Bytes + CanvasBytes;
    QTest::newRow("drawables") << list(9, filled(Red)) << 10 * Work + 9 * Pass << 10 * Bytes + CanvasBytes;
    const auto clipped = [](const XmlElement &inner) { return element("clip", {integer(Attr::Level, 5000)}, {inner}); };
    const auto aboveAColour = [](const XmlElement &inner) {
        return element("layer-list", {}, {element("item", {drawable(Red)}), element("item", {}, {inner})});
    };
    QTest::newRow("a layer") << aboveAColour(clipped(filled(Red))) << 4 * Work + 7 * Pass
                             << 4 * Bytes + 3 * CanvasBytes;
    QTest::newRow("a layer above nothing")
        << clipped(filled(Red)) << 2 * Work + 6 * Pass << 2 * Bytes + 2 * CanvasBytes;
    QTest::newRow("layers in each other") << aboveAColour(clipped(aboveAColour(clipped(filled(Red)))))
                                          << 7 * Work + 13 * Pass << 7 * Bytes + 4 * CanvasBytes;
    // 100 x 80 pixels are decoded, scaled down, and resampled.
    constexpr qint64 Picture = 100 * 80;
    QTest::newRow("a picture") << element("bitmap", {text(Attr::Src, picturePath)})
                               << Work + DrawableLoader::FileWork + 4 * Picture + Picture * Downscaler::WorkPerPixel
                                      + Pixels * PictureSample::WorkPerPixel
                               << Bytes + CanvasBytes + 4 * Picture + 4 * Picture + 2 * CanvasBytes;
    const QString square = QStringLiteral("M0 0h64v64h-64z");
    const qint64 path = 5 * PathParser::SegmentWork + square.size() * PathParser::CharacterWork;
    QTest::newRow("a path") << vector(square) << 2 * Work + path + Pass
                            << 2 * Bytes + CanvasBytes + 5 * PathParser::SegmentBytes;
    QTest::newRow("a path that is trimmed")
        << vector(square, {number(Attr::TrimPathEnd, 0.5F)}) << 2 * Work + path + 5 * PathTrim::ElementWork
        << 2 * Bytes + CanvasBytes + 5 * PathParser::SegmentBytes;
    const auto stroke = [](int dash) {
        return element("shape", {},
                       {element("stroke", {color(Attr::Color, Red), pixels(Attr::Width, 8),
                                           pixels(Attr::DashWidth, dash), pixels(Attr::DashGap, dash)})});
    };
    QTest::newRow("a stroke") << stroke(0) << Work + Pass << Bytes + CanvasBytes;
    QTest::newRow("dashes") << stroke(8) << Work + Pass + 14 * 2 * qint64(ShapeDrawable::DashWork)
                            << Bytes + CanvasBytes;
}

// Drawing costs the work and the bytes of the row, and little more. With one unit of work less, it is not complete.
void TestDrawingBudget::everythingCosts()
{
    QFETCH(XmlElement, root);
    QFETCH(qint64, work);
    QFETCH(qint64, bytes);
    Budget plenty(Plenty, Plenty);
    QVERIFY(isDrawn(root, &plenty));
    const qint64 spent = Plenty - plenty.workLeft();
    QVERIFY2(spent >= work && spent < work + 20000, qPrintable(QString::number(spent - work)));
    Budget exact(spent, Plenty);
    QVERIFY(isDrawn(root, &exact));
    Budget tooLittle(spent - 1, Plenty);
    QVERIFY(!isDrawn(root, &tooLittle));

    const qint64 held = bytesOf(root);
    QVERIFY2(held >= bytes && held < bytes + 2000, qPrintable(QString::number(held - bytes)));
}

void TestDrawingBudget::paintingEndsWhenTheWorkIsSpent()
{
    // Layers that each cover all of the canvas. The last one is blue.
    constexpr int Layers = 100;
    Elements items(Layers - 1, element("item", {drawable(Red)}));
    items.append(element("item", {drawable(Blue)}));
    const XmlElement root = element("layer-list", {}, items);
    const auto colorWithin = [&](qint64 passes) {
        Studio studio(Budget((Layers + 1) * DrawableLoader::ElementWork + passes * Pass, IconRenderer::MaxBytes));
        return studio.draw(root, QSize(Side, Side)).pixel(0, 0);
    };
    QCOMPARE(colorWithin(Layers), Blue);
    QCOMPARE(colorWithin(Layers - 1), Red);
}

void TestDrawingBudget::aCanvasWithoutRoomStaysEmpty()
{
    for (const qint64 bytes : {CanvasBytes, CanvasBytes - 1}) {
        Budget budget(Plenty, bytes);
        Canvas canvas(QSize(Side, Side), budget);
        QCOMPARE(canvas.spendPasses(), bytes == CanvasBytes);
        QCOMPARE(canvas.isSpent(), bytes < CanvasBytes);
    }
}

QTEST_GUILESS_MAIN(TestDrawingBudget)
#include "tst_drawingbudget.moc"
