// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DrawableFixture.h"
#include "drawable/paint/Gravity.h"
#include "format/AndroidAttributes.h"

#include <QtTest>

using namespace fixture;
using namespace SorrelKit;

Q_DECLARE_METATYPE(XmlElement)

namespace {

constexpr int Start = Gravity::Relative | 0x03;
constexpr int End = Gravity::Relative | 0x05;

QString latin(const char *value)
{
    return QString::fromLatin1(value);
}

XmlAttribute mirrored(bool value = true)
{
    return boolean(Attr::AutoMirrored, value);
}

/// A vector whose left half is red.
XmlElement vector(const Attributes &more = {})
{
    const XmlElement half =
        element(latin("path"), {text(Attr::PathData, latin("M0,0H5V10H0Z")), color(Attr::FillColor, Red)});
    return element(latin("vector"),
                   Attributes{number(Attr::ViewportWidth, 10), number(Attr::ViewportHeight, 10)} + more, {half});
}

/// A picture whose left half is red.
XmlElement bitmap(const Attributes &more = {})
{
    return element(latin("bitmap"), Attributes{text(Attr::Src, latin("half.png"))} + more);
}

XmlElement list(const char *name, const Attributes &attributes, const XmlElement &shown)
{
    return element(latin(name), attributes, {element(latin("item"), {}, {shown})});
}

/// Whether the red half is on the right where the layout runs in @p direction.
bool isOnTheRight(const XmlElement &root, Configuration::LayoutDirection direction)
{
    constexpr int Size = 20;
    Files files;
    QImage half(Size, Size, QImage::Format_ARGB32);
    half.fill(Qt::transparent);
    for (int y = 0; y < Size; ++y) {
        for (int x = 0; x < Size / 2; ++x)
            half.setPixel(x, y, Red);
    }
    files.add(latin("half.png"), half);
    Budget budget = iconBudget();
    Configuration device = Configuration::phone(Configuration::MediumDensity);
    device.layoutDirection = direction;
    const ResourceResolver resolver(ResourceTables(), device, &budget);
    DrawableInflater loader(resolver, files, budget, 1);
    Canvas canvas(QSize(Size, Size), budget);
    const DrawablePointer drawable = loader.fromElement(root);
    if (drawable != nullptr)
        drawable->draw(canvas, QRectF(0, 0, Size, Size));
    const QRect area = areaOf(canvas.image(), Red);
    if (area != QRect(0, 0, Size / 2, Size) && area != QRect(Size / 2, 0, Size / 2, Size))
        qFatal("neither half is red");
    return area.left() > 0;
}

} // namespace

/// Layouts that run from right to left: mirrored drawables, and places that depend on the direction.
class TestMirroredDrawables : public QObject
{
    Q_OBJECT

private slots:
    void elements_data();
    void elements();
    void twiceMirroredIsNotMirrored();
    void layersHaveAStartAndAnEnd_data();
    void layersHaveAStartAndAnEnd();
    void gravities_data();
    void gravities();
};

void TestMirroredDrawables::elements_data()
{
    QTest::addColumn<XmlElement>("root");
    QTest::addColumn<bool>("isMirrored");
    QTest::newRow("vector") << vector({mirrored()}) << true;
    QTest::newRow("vector without") << vector() << false;
    QTest::newRow("vector against") << vector({mirrored(false)}) << false;
    QTest::newRow("bitmap") << bitmap({mirrored()}) << true;
    QTest::newRow("bitmap without") << bitmap() << false;
    QTest::newRow("animated vector") << element(latin("animated-vector"), {}, {vector({mirrored()})}) << true;
    QTest::newRow("selector") << list("selector", {mirrored()}, bitmap()) << true;
    QTest::newRow("selector of a mirrored one") << list("selector", {mirrored()}, vector({mirrored()})) << true;
    QTest::newRow("selector without") << list("selector", {}, vector({mirrored()})) << false;
    QTest::newRow("level list") << list("level-list", {mirrored()}, vector({mirrored()})) << false;
    QTest::newRow("animation") << list("animation-list", {}, bitmap({mirrored()})) << false;
    QTest::newRow("layers") << list("layer-list", {}, bitmap({mirrored()})) << true;
    QTest::newRow("layers themselves") << list("layer-list", {mirrored()}, bitmap()) << false;
    QTest::newRow("inset") << element(latin("inset"), {mirrored()}, {vector()}) << false;
}

void TestMirroredDrawables::elements()
{
    QFETCH(XmlElement, root);
    QFETCH(bool, isMirrored);
    QVERIFY(!isOnTheRight(root, Configuration::LeftToRight));
    QCOMPARE(isOnTheRight(root, Configuration::RightToLeft), isMirrored);
}

void TestMirroredDrawables::twiceMirroredIsNotMirrored()
{
    const XmlElement group =
        element(latin("group"), {number(Attr::ScaleX, -1), number(Attr::PivotX, 5)}, vector().children);
    const XmlElement root = element(latin("vector"), vector({mirrored()}).attributes, {group});
    QVERIFY(isOnTheRight(root, Configuration::LeftToRight));
    QVERIFY(!isOnTheRight(root, Configuration::RightToLeft));
}

void TestMirroredDrawables::layersHaveAStartAndAnEnd_data()
{
    QTest::addColumn<quint32>("edge");
    QTest::addColumn<bool>("leftToRight");
    QTest::addColumn<bool>("rightToLeft");
    QTest::newRow("left") << Attr::Left << true << true;
    QTest::newRow("right") << Attr::Right << false << false;
    QTest::newRow("start") << Attr::Start << true << false;
    QTest::newRow("end") << Attr::End << false << true;
}

void TestMirroredDrawables::layersHaveAStartAndAnEnd()
{
    QFETCH(quint32, edge);
    QFETCH(bool, leftToRight);
    QFETCH(bool, rightToLeft);
    const XmlElement root =
        element(latin("layer-list"), {}, {element(latin("item"), {drawable(Red), pixels(edge, 10)})});
    QCOMPARE(isOnTheRight(root, Configuration::LeftToRight), leftToRight);
    QCOMPARE(isOnTheRight(root, Configuration::RightToLeft), rightToLeft);
}

void TestMirroredDrawables::gravities_data()
{
    QTest::addColumn<int>("gravity");
    QTest::addColumn<bool>("leftToRight");
    QTest::addColumn<bool>("rightToLeft");
    QTest::newRow("left") << 0x03 << false << false;
    QTest::newRow("right") << 0x05 << true << true;
    QTest::newRow("start") << Start << false << true;
    QTest::newRow("end") << End << true << false;
}

void TestMirroredDrawables::gravities()
{
    QFETCH(int, gravity);
    QFETCH(bool, leftToRight);
    QFETCH(bool, rightToLeft);
    const XmlElement item =
        element(latin("item"), {drawable(Red), pixels(Attr::Width, 10), integer(Attr::Gravity, gravity)});
    const XmlElement root = element(latin("layer-list"), {}, {item});
    QCOMPARE(isOnTheRight(root, Configuration::LeftToRight), leftToRight);
    QCOMPARE(isOnTheRight(root, Configuration::RightToLeft), rightToLeft);
    QCOMPARE(Gravity::absolute(Gravity::Relative | Gravity::Fill, true), Gravity::Fill);
    QCOMPARE(Gravity::absolute(Gravity::Relative | Gravity::Center, true), Gravity::Center);
}

QTEST_GUILESS_MAIN(TestMirroredDrawables)
#include "tst_mirroreddrawables.moc"
