// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DrawableFixture.h"
#include "ResourcesFixture.h"
#include "format/AndroidAttributes.h"
#include "theme/Theme.h"

#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

namespace {

// Attributes of the theme.
constexpr quint32 ColorAttr = 0x7f010000;
constexpr quint32 AlphaAttr = 0x7f010001;
constexpr quint32 DrawableAttr = 0x7f010002;
constexpr quint32 DimensionAttr = 0x7f010003;
constexpr quint32 ListAttr = 0x7f010004;
constexpr quint32 EmptyAttr = 0x7f010005;
constexpr quint32 OtherColorAttr = 0x7f010006;
constexpr quint32 GradientAttr = 0x7f010007;
constexpr quint32 LoopAttr = 0x7f010008;
constexpr quint32 UnknownAttr = 0x01010435;

constexpr quint32 StyleId = 0x7f020000;
constexpr quint32 ColorId = 0x7f030000;
constexpr quint32 DrawableId = 0x7f040000;
constexpr qint64 Half = 0x3f000000; // as a float
constexpr qint64 TwoPixels = 2 << 8;

constexpr int AttributeType = int(ValueType::Attribute);
constexpr int ColorType = int(ValueType::FirstColor);
constexpr QSize Size(8, 8);

const QRect Everything(0, 0, 8, 8);
const QRect LeftHalf(0, 0, 4, 8);

XmlAttribute themed(quint32 id, quint32 attribute)
{
    XmlAttribute result;
    result.id = id;
    result.value = {ValueType::Attribute, attribute};
    return result;
}

Attribute androidTheme(const char *name, quint32 attribute)
{
    return androidValue(latin(name), AttributeType, attribute);
}

XmlBuilder document()
{
    XmlBuilder builder;
    builder.attributeId(latin("color"), Attr::Color)
        .attributeId(latin("alpha"), Attr::Alpha)
        .attributeId(latin("drawable"), Attr::Drawable)
        .attributeId(latin("startColor"), Attr::StartColor)
        .attributeId(latin("endColor"), Attr::EndColor);
    return builder;
}

QByteArray colorList(const QVector<Attribute> &item)
{
    return document().start(latin("selector")).empty(latin("item"), item).end(latin("selector")).build();
}

ResourceTables tables(quint32 parent)
{
    const QVector<QByteArray> items{
        mapItem(ColorAttr, AttributeType, OtherColorAttr),
        mapItem(AlphaAttr, int(ValueType::Float), Half),
        mapItem(DrawableAttr, Reference, DrawableId),
        mapItem(DimensionAttr, int(ValueType::Dimension), TwoPixels),
        mapItem(ListAttr, Reference, ColorId),
        mapItem(EmptyAttr, int(ValueType::Null), 1),
        mapItem(OtherColorAttr, ColorType, Red),
        mapItem(GradientAttr, Reference, ColorId + 1),
        mapItem(LoopAttr, Reference, ColorId + 2),
    };
    PackageBuilder package;
    package.types({latin("attr"), latin("style"), latin("color"), latin("drawable")})
        .type(TypeBuilder(2).entry(0, mapOf(items, parent)))
        .type(TypeBuilder(3).value(0, String, 0).value(1, String, 1).value(2, String, 2))
        .type(TypeBuilder(4).value(0, String, 3));
    return {QSharedPointer<const ResourceTable>(
        new ResourceTable(TableBuilder()
                              .strings(names({"res/list.xml", "res/gradient.xml", "res/loop.xml", "res/drawable.xml"}))
                              .package(package)
                              .build()))};
}

/// A studio with a theme.
struct ThemedStudio {
    explicit ThemedStudio(quint32 parent = 0)
        : budget(iconBudget()),
          resolver(tables(parent), Configuration::phone(Configuration::MediumDensity), &budget),
          loader(resolver, files, budget, 1)
    {
        files.add(latin("res/list.xml"),
                  colorList({androidTheme("color", ColorAttr), androidTheme("alpha", AlphaAttr)}));
        files.add(latin("res/gradient.xml"), document()
                                                 .empty(latin("gradient"), {androidTheme("startColor", ColorAttr),
                                                                            androidTheme("endColor", ColorAttr)})
                                                 .build());
        files.add(latin("res/loop.xml"), colorList({androidTheme("color", LoopAttr)}));
        files.add(latin("res/drawable.xml"),
                  document().empty(latin("color"), {androidTheme("color", ColorAttr)}).build());
        theme.applyStyle(StyleId, Theme::Apply::Forced);
        loader.setTheme(&theme);
    }

    QImage draw(const XmlElement &root)
    {
        Canvas canvas(Size, budget);
        const DrawablePointer drawable = loader.fromElement(root);
        if (drawable == nullptr)
            return {};
        drawable->draw(canvas, QRectF(QPointF(), QSizeF(Size)));
        return canvas.image();
    }
    QString error() const { return described(loader.error()); }

    Files files;
    Budget budget;
    ResourceResolver resolver;
    Theme theme{resolver};
    DrawableInflater loader;
};

XmlElement colored(quint32 attribute)
{
    return element(latin("color"), {themed(Attr::Color, attribute)});
}

XmlElement item(const Attributes &attributes)
{
    return element(latin("item"), attributes);
}

XmlElement path(const char *data, const XmlAttribute &fill)
{
    return element(latin("path"), {text(Attr::PathData, latin(data)), fill});
}

XmlElement vectorOf(const XmlAttribute &fill, const Attributes &attributes = {}, const Elements &others = {})
{
    Attributes all{number(Attr::ViewportWidth, 8), number(Attr::ViewportHeight, 8)};
    all += attributes;
    return element(latin("vector"), all, others + Elements{path("M0 0h8v8h-8z", fill)});
}

// A green left half below a path that is filled.
XmlElement aboveGreen(const XmlAttribute &fill)
{
    return vectorOf(fill, {}, {path("M0 0h4v8h-4z", color(Attr::FillColor, Green))});
}

} // namespace

Q_DECLARE_METATYPE(XmlElement)

class TestThemedDrawables : public QObject
{
    Q_OBJECT

private slots:
    void attributesAreDrawn_data();
    void attributesAreDrawn();
    void statesAreReadWithoutATheme();
    void valueThatIsMissing_data();
    void valueThatIsMissing();
    void missingStyleIsNamed();
    void colorsThatReferToThemselvesEnd();
};

void TestThemedDrawables::attributesAreDrawn_data()
{
    QTest::addColumn<XmlElement>("root");
    QTest::addColumn<QRgb>("color");
    QTest::addColumn<QRect>("area");
    constexpr QRgb HalfRed = 0x80800000; // premultiplied
    QTest::newRow("attribute of an attribute") << colored(ColorAttr) << Red << Everything;
    QTest::newRow("color state list") << colored(ListAttr) << HalfRed << Everything;
    QTest::newRow("tint of a vector") << vectorOf(color(Attr::FillColor, White), {themed(Attr::Tint, ColorAttr)}) << Red
                                      << Everything;
    QTest::newRow("fill of a vector") << vectorOf(themed(Attr::FillColor, OtherColorAttr)) << Red << Everything;
    QTest::newRow("gradient") << vectorOf(themed(Attr::FillColor, GradientAttr)) << Red << Everything;
    QTest::newRow("alpha") << vectorOf(color(Attr::FillColor, Red), {themed(Attr::Alpha, AlphaAttr)}) << HalfRed
                           << Everything;
    QTest::newRow("drawable of a layer") << element(latin("layer-list"), {},
                                                    {item({themed(Attr::Drawable, DrawableAttr)})})
                                         << Red << Everything;
    QTest::newRow("color of a layer") << element(latin("layer-list"), {}, {item({themed(Attr::Drawable, ColorAttr)})})
                                      << Red << Everything;
    QTest::newRow("dimension") << element(latin("inset"), {drawable(Red), themed(Attr::InsetLeft, DimensionAttr)})
                               << Red << QRect(2, 0, 6, 8);
    QTest::newRow("solid shape") << element(latin("shape"), {},
                                            {element(latin("solid"), {themed(Attr::Color, ColorAttr)})})
                                 << Red << Everything;
    QTest::newRow("gradient of a shape") << element(
        latin("shape"), {},
        {element(latin("gradient"), {themed(Attr::StartColor, ColorAttr), themed(Attr::EndColor, ColorAttr)})})
                                         << Red << Everything;
}

void TestThemedDrawables::attributesAreDrawn()
{
    QFETCH(XmlElement, root);
    QFETCH(QRgb, color);
    QFETCH(QRect, area);
    ThemedStudio studio;
    const QImage image = studio.draw(root);
    QCOMPARE(studio.error(), QString());
    QVERIFY(isNear(image.pixel(4, 4), color, 1));
    QCOMPARE(areaOf(image, image.pixel(4, 4)), area);
}

void TestThemedDrawables::statesAreReadWithoutATheme()
{
    ThemedStudio studio;
    const XmlElement root = element(latin("selector"), {},
                                    {item({boolean(Attr::StatePressed, true), themed(Attr::Drawable, UnknownAttr)}),
                                     item({themed(Attr::Drawable, DrawableAttr)})});
    QCOMPARE(areaOf(studio.draw(root), Red), Everything);
    QCOMPARE(studio.error(), QString());
}

void TestThemedDrawables::valueThatIsMissing_data()
{
    QTest::addColumn<XmlElement>("root");
    QTest::addColumn<bool>("hasTheme");
    QTest::addColumn<QString>("error");
    QTest::newRow("no theme") << aboveGreen(themed(Attr::FillColor, ColorAttr)) << false
                              << latin("NoThemeValue: ?0x7f010000 has no value without a theme");
    QTest::newRow("no value") << aboveGreen(themed(Attr::FillColor, UnknownAttr)) << true
                              << latin("NoThemeValue: ?0x01010435 has no value in the theme");
    QTest::newRow("empty") << aboveGreen(themed(Attr::FillColor, EmptyAttr)) << true
                           << latin("Damaged: vector path without the color that it refers to");
}

void TestThemedDrawables::valueThatIsMissing()
{
    QFETCH(XmlElement, root);
    QFETCH(bool, hasTheme);
    QFETCH(QString, error);
    ThemedStudio studio;
    if (!hasTheme)
        studio.loader.setTheme(nullptr);
    QCOMPARE(areaOf(studio.draw(root), Green), LeftHalf);
    QCOMPARE(studio.error(), error);
}

void TestThemedDrawables::missingStyleIsNamed()
{
    ThemedStudio studio(0x01030005);
    QCOMPARE(areaOf(studio.draw(colored(ColorAttr)), Red), Everything);
    QCOMPARE(studio.error(), QString());
    studio.draw(colored(UnknownAttr));
    QCOMPARE(studio.error(),
             latin("NoThemeValue: ?0x01010435 has no value in the theme, whose style 0x01030005 is missing"));
}

void TestThemedDrawables::colorsThatReferToThemselvesEnd()
{
    ThemedStudio studio;
    QCOMPARE(areaOf(studio.draw(aboveGreen(themed(Attr::FillColor, LoopAttr))), Green), LeftHalf);
    QCOMPARE(studio.error(), latin("TooMuch: drawables nested too deeply"));
}

QTEST_GUILESS_MAIN(TestThemedDrawables)
#include "tst_themeddrawables.moc"
