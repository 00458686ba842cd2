// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "BinaryXml.h"
#include "DrawableFixture.h"
#include "drawable/RotateDrawable.h"
#include "drawable/source/AnimationClock.h"
#include "format/AndroidAttributes.h"
#include "icon/IconErrorTable.h"
#include "icon/IconRenderer.h"

#include <SorrelKit/DrawableRenderer.h>

#include <QtTest>

using namespace fixture;
using namespace SorrelKit;

Q_DECLARE_METATYPE(XmlElement)

namespace {

constexpr int Size = 16;

QString latin(const char *value)
{
    return QString::fromLatin1(value);
}

XmlElement frame(QRgb value, int duration)
{
    return element(latin("item"), {drawable(value), integer(Attr::Duration, duration)});
}

XmlElement animation(const Elements &items, bool isOneShot = false)
{
    return element(latin("animation-list"), {boolean(Attr::OneShot, isOneShot)}, items);
}

XmlElement around(const XmlElement &drawable, int duration)
{
    return element(latin("item"), {integer(Attr::Duration, duration)}, {drawable});
}

/// An icon that is one document.
struct Icon {
    explicit Icon(const XmlElement &root)
        : resolver(ResourceTables(), Configuration::phone(Configuration::MediumDensity)), renderer(resolver, files)
    {
        files.add(latin("icon.xml"), binaryXml(root));
        icon.value = {ValueType::String, 0};
        icon.text = latin("icon.xml");
    }

    QVector<IconFrame> frames(int size = Size) { return renderer.frames(icon, IconRequest(size)); }

    Files files;
    ResourceResolver resolver;
    IconRenderer renderer;
    ResolvedValue icon;
};

QVector<int> durations(const QVector<IconFrame> &frames)
{
    QVector<int> result;
    for (const IconFrame &frame : frames)
        result.append(frame.duration());
    return result;
}

QVector<QRgb> colors(const QVector<IconFrame> &frames)
{
    QVector<QRgb> result;
    for (const IconFrame &frame : frames)
        result.append(frame.image().pixel(Size / 2, Size / 2));
    return result;
}

} // namespace

class TestIconFrames : public QObject
{
    Q_OBJECT

private slots:
    void values();
    void animations_data();
    void animations();
    void framesAreIcons();
    void turnsInTwelveSteps();
    void theSlowestAnimationCounts();
    void framesUpToTheCeiling();
    void drawnFramesUpToTheCeiling();
    void equalPicturesAreOneFrame();
    void animatedVectors();
    void bytesUpToTheCeiling();
    void workUpToTheCeiling();
    void iconsThatCannotBeDrawn_data();
    void iconsThatCannotBeDrawn();
    void framesOfAPackage();
};

void TestIconFrames::values()
{
    const IconFrame none;
    QVERIFY(none.image().isNull());
    QCOMPARE(none.duration(), 0);
    IconFrame one(QImage(1, 1, QImage::Format_ARGB32), 5);
    IconFrame copy = one;
    copy.swap(one);
    QCOMPARE(copy.duration(), 5);
    QVERIFY(one.image() == copy.image());
}

void TestIconFrames::animations_data()
{
    QTest::addColumn<XmlElement>("root");
    QTest::addColumn<QVector<QRgb>>("expectedColors");
    QTest::addColumn<QVector<int>>("expectedDurations");
    using Colors = QVector<QRgb>;
    using Times = QVector<int>;
    const int refresh = AnimationClock::RefreshTime;
    QTest::newRow("still") << filled(Red) << Colors{Red} << Times{0};
    QTest::newRow("list") << animation({frame(Red, 100), frame(Green, 50), frame(Blue, 200)})
                          << Colors{Red, Green, Blue} << Times{100, 50, 200};
    QTest::newRow("once") << animation({frame(Red, 100), frame(Green, 50), frame(Blue, 200)}, true)
                          << Colors{Red, Green, Blue} << Times{100, 50, 0};
    QTest::newRow("a single frame") << animation({frame(Red, 100)}) << Colors{Red} << Times{0};
    QTest::newRow("frames for no time") << animation({frame(Red, 0), frame(Green, -7)}) << Colors{Red, Green}
                                        << Times{refresh, refresh};
    QTest::newRow("frames without a time") << animation({element(latin("item"), {drawable(Red)}), frame(Green, 30)})
                                           << Colors{Red, Green} << Times{refresh, 30};
    QTest::newRow("other elements") << animation(
        {element(latin("frame"), {drawable(Blue)}), frame(Red, 1), frame(Green, 2)})
                                    << Colors{Red, Green} << Times{1, 2};
    QTest::newRow("far too long") << animation({frame(Red, 0x7fffffff), frame(Green, 0x7fffffff)}) << Colors{Red}
                                  << Times{int(AnimationClock::MaxTime)};
    QTest::newRow("in layers") << element(latin("layer-list"), {},
                                          {element(latin("item"), {}, {animation({frame(Red, 10), frame(Green, 20)})})})
                               << Colors{Red, Green} << Times{10, 20};
    QTest::newRow("in a frame") << animation({frame(Red, 10), around(animation({frame(Green, 4), frame(Blue, 7)}), 10)})
                                << Colors{Red, Blue, Green, Blue} << Times{10, 1, 4, 5};
    QTest::newRow("after one that is shown once")
        << animation({frame(Red, 100), around(animation({frame(Green, 30), frame(Blue, 30)}), 1)}, true)
        << Colors{Red, Blue} << Times{100, 20};
}

void TestIconFrames::animations()
{
    QFETCH(XmlElement, root);
    QFETCH(QVector<QRgb>, expectedColors);
    QFETCH(QVector<int>, expectedDurations);
    Icon icon(root);
    const QVector<IconFrame> frames = icon.frames();
    QCOMPARE(durations(frames), expectedDurations);
    QCOMPARE(colors(frames), expectedColors);
    QVERIFY(!icon.renderer.error());
}

void TestIconFrames::framesAreIcons()
{
    Icon icon(animation({frame(Red, 100), frame(Green, 50)}));
    IconRequest request(Size);
    request.setDevicePixelRatio(2);
    const QVector<IconFrame> frames = icon.renderer.frames(icon.icon, request);
    QCOMPARE(frames.size(), 2);
    QCOMPARE(frames.constFirst().image(), icon.renderer.icon(icon.icon, request));
    QCOMPARE(frames.constLast().image().size(), QSize(2 * Size, 2 * Size));
    QCOMPARE(frames.constLast().image().devicePixelRatio(), qreal(2));
}

void TestIconFrames::turnsInTwelveSteps()
{
    // A bar from the middle to the top.
    const XmlElement bar =
        element(latin("path"), {text(Attr::PathData, latin("M7,0H9V8H7Z")), color(Attr::FillColor, Red)});
    const XmlElement vector =
        element(latin("vector"), {number(Attr::ViewportWidth, 16), number(Attr::ViewportHeight, 16)}, {bar});
    Icon icon(element(latin("animated-rotate"), {}, {vector}));
    const QVector<IconFrame> frames = icon.frames();
    QCOMPARE(durations(frames), QVector<int>(RotateDrawable::AnimatedFrames, RotateDrawable::AnimatedFrameTime));
    QCOMPARE(areaOf(frames.at(0).image(), Red), QRect(7, 0, 2, 8));
    QCOMPARE(areaOf(frames.at(3).image(), Red), QRect(8, 7, 8, 2));
    QCOMPARE(areaOf(frames.at(6).image(), Red), QRect(7, 8, 2, 8));
    QCOMPARE(areaOf(frames.at(9).image(), Red), QRect(0, 7, 8, 2));
    QVERIFY(frames.at(1).image() != frames.at(0).image() && frames.at(1).image() != frames.at(2).image());
}

void TestIconFrames::theSlowestAnimationCounts()
{
    const auto layer = [](const XmlElement &drawable) { return element(latin("item"), {}, {drawable}); };
    Icon icon(element(latin("layer-list"), {},
                      {layer(animation({frame(Red, 30), frame(Green, 30)})),
                       layer(animation({frame(Nothing, 50), frame(Blue, 50)}))}));
    const QVector<IconFrame> frames = icon.frames();
    // Equal pictures in a row are one frame.
    QCOMPARE(durations(frames), QVector<int>({30, 20, 50}));
    QCOMPARE(colors(frames), QVector<QRgb>({Red, Green, Blue}));
}

void TestIconFrames::framesUpToTheCeiling()
{
    const auto framesOf = [](int count, bool *isError) {
        Elements items;
        for (int i = 0; i < count; ++i)
            items.append(frame(i % 2 == 0 ? Red : Green, 10));
        Icon icon(animation(items));
        const int found = int(icon.frames(1).size());
        *isError = icon.renderer.error().code() == IconError::Code::TooMuch;
        return found;
    };
    bool isError = true;
    QCOMPARE(framesOf(IconRenderer::MaxFrames, &isError), int(IconRenderer::MaxFrames));
    QVERIFY(!isError);
    QCOMPARE(framesOf(IconRenderer::MaxFrames + 1, &isError), int(IconRenderer::MaxFrames));
    QVERIFY(isError);
}

void TestIconFrames::drawnFramesUpToTheCeiling()
{
    const auto durationOf = [](int count, bool *isError) {
        const auto layer = [](const XmlElement &drawable) { return element(latin("item"), {}, {drawable}); };
        Icon icon(element(latin("layer-list"), {},
                          {layer(animation({frame(Red, 10), frame(Red, 10)})),
                           layer(animation({frame(Nothing, 10), frame(Nothing, 10 * (count - 1))}))}));
        const QVector<IconFrame> frames = icon.frames(1);
        *isError = icon.renderer.error().code() == IconError::Code::TooMuch;
        return frames.size() == 1 ? frames.constFirst().duration() : -1;
    };
    bool isError = true;
    QCOMPARE(durationOf(IconRenderer::MaxDrawnFrames, &isError), 10 * IconRenderer::MaxDrawnFrames);
    QVERIFY(!isError);
    QCOMPARE(durationOf(IconRenderer::MaxDrawnFrames + 1, &isError), 10 * IconRenderer::MaxDrawnFrames);
    QVERIFY(isError);
}

void TestIconFrames::equalPicturesAreOneFrame()
{
    Icon icon(animation({frame(Red, 10), frame(Red, 20), frame(Green, 5), frame(Red, 1)}));
    QCOMPARE(durations(icon.frames()), QVector<int>({30, 5, 1}));
    // The last picture stays.
    Icon once(animation({frame(Red, 10), frame(Green, 20), frame(Green, 5)}, true));
    QCOMPARE(durations(once.frames()), QVector<int>({10, 0}));
}

void TestIconFrames::animatedVectors()
{
    const auto iconOf = [](int repeatCount) {
        const XmlElement path =
            element(latin("path"), {text(Attr::Name, latin("path")), text(Attr::PathData, latin("M0,0H1V1H0Z")),
                                    color(Attr::FillColor, Blue)});
        const XmlElement vector =
            element(latin("vector"), {number(Attr::ViewportWidth, 1), number(Attr::ViewportHeight, 1)}, {path});
        const XmlElement target =
            element(latin("target"), {text(Attr::Name, latin("path")), text(Attr::Animation, latin("blink.xml"))});
        Icon icon(element(latin("animated-vector"), {}, {vector, target}));
        icon.files.add(latin("blink.xml"),
                       binaryXml(element(latin("objectAnimator"),
                                         {text(Attr::PropertyName, latin("fillColor")), color(Attr::ValueFrom, Red),
                                          color(Attr::ValueTo, Green), integer(Attr::Duration, 70),
                                          integer(Attr::RepeatCount, repeatCount)})));
        return icon.renderer.icon(icon.icon, IconRequest(Size)).pixel(0, 0) == Blue ? icon.frames()
                                                                                    : QVector<IconFrame>();
    };
    const QVector<IconFrame> once = iconOf(0);
    QCOMPARE(durations(once), QVector<int>({33, 33, 4, 0}));
    QCOMPARE(colors(once).constFirst(), Red);
    QCOMPARE(colors(once).constLast(), Green);
    const QVector<IconFrame> endless = iconOf(-1);
    QCOMPARE(durations(endless), QVector<int>({33, 33, 4}));
    QCOMPARE(colors(endless), colors(once).mid(0, 3));
}

void TestIconFrames::bytesUpToTheCeiling()
{
    constexpr int Most = int(IconRenderer::MaxFrameBytes / (4 * IconRenderer::MaxSize * IconRenderer::MaxSize));
    const auto framesOf = [](int count) {
        Elements items;
        for (int i = 0; i < count; ++i)
            items.append(frame(i % 2 == 0 ? Red : Green, 10));
        return int(Icon(animation(items)).frames(IconRenderer::MaxSize).size());
    };
    QCOMPARE(framesOf(Most), Most);
    QCOMPARE(framesOf(Most + 1), Most);
}

void TestIconFrames::workUpToTheCeiling()
{
    // Each frame paints the whole picture as often as it can.
    Elements layers;
    for (int i = 0; i < 60; ++i)
        layers.append(element(
            latin("item"), {},
            {element(
                latin("vector"),
                {number(Attr::ViewportWidth, 1), number(Attr::ViewportHeight, 1), number(Attr::Alpha, 0.5F)},
                {element(latin("path"), {text(Attr::PathData, latin("M0,0H1V1H0Z")), color(Attr::FillColor, Red)})})}));
    Elements items;
    for (int i = 0; i < 16; ++i)
        items.append(around(element(latin("layer-list"), {}, layers), 10));
    Icon icon(animation(items));
    const QVector<IconFrame> frames = icon.frames(IconRenderer::MaxSize);
    QCOMPARE(icon.renderer.error().code(), IconError::Code::TooMuch);
    QVERIFY(!frames.isEmpty());
    QVERIFY(frames.size() < 16);
}

void TestIconFrames::iconsThatCannotBeDrawn_data()
{
    QTest::addColumn<XmlElement>("root");
    QTest::addColumn<int>("size");
    QTest::addColumn<IconError::Code>("code");
    QTest::newRow("size") << filled(Red) << 0 << IconError::Code::InvalidSize;
    QTest::newRow("large") << filled(Red) << IconRenderer::MaxSize + 1 << IconError::Code::InvalidSize;
    QTest::newRow("unknown") << element(latin("unknown")) << Size << IconError::Code::Unsupported;
    QTest::newRow("no frames") << animation({}) << Size << IconError::Code::Damaged;
    QTest::newRow("a first frame that is nothing")
        << animation({element(latin("item"), {integer(Attr::Duration, 5)}), frame(Red, 5)}) << Size
        << IconError::Code::Damaged;
}

void TestIconFrames::iconsThatCannotBeDrawn()
{
    QFETCH(XmlElement, root);
    QFETCH(int, size);
    QFETCH(IconError::Code, code);
    Icon icon(root);
    QVERIFY(icon.frames(size).isEmpty());
    QCOMPARE(icon.renderer.error().code(), code);
}

void TestIconFrames::framesOfAPackage()
{
    const XmlElement filter =
        element(latin("intent-filter"), {},
                {element(latin("action"), {text(Attr::Name, latin("android.intent.action.MAIN"))}),
                 element(latin("category"), {text(Attr::Name, latin("android.intent.category.LAUNCHER"))})});
    const XmlElement activity =
        element(latin("activity"), {text(Attr::Name, latin("a.B")), text(Attr::Icon, latin("icon.xml"))}, {filter});
    PackageDevice device(emptyTable(),
                         binaryXml(element(latin("manifest"), {}, {element(latin("application"), {}, {activity})})),
                         {{latin("icon.xml"), binaryXml(animation({frame(Red, 100), frame(Green, 50)}))}});
    const Package sample(&device);
    DrawableRenderer renderer(sample);
    const IconRequest request(Size);
    QCOMPARE(colors(renderer.frames(request)), QVector<QRgb>({Red, Green}));
    QCOMPARE(durations(renderer.frames(sample.launchers().constFirst(), request)), QVector<int>({100, 50}));
    QVERIFY(renderer.frames(Entry(), request).isEmpty());
    QCOMPARE(renderer.error().code(), IconError::Code::Missing);
    QVERIFY(renderer.frames(0x7f010000, request).isEmpty());
    QCOMPARE(renderer.error().code(), IconError::Code::NotDrawable);
}

QTEST_GUILESS_MAIN(TestIconFrames)
#include "tst_iconframes.moc"
