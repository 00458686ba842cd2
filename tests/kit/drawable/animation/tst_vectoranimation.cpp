// SPDX-License-Identifier: LGPL-2.1-or-later
#include "BinaryXml.h"
#include "DrawableFixture.h"
#include "ResourcesFixture.h"
#include "drawable/animation/VectorAnimation.h"
#include "drawable/source/DrawableAttributes.h"
#include "format/AndroidAttributes.h"

#include <QtTest>

#include <cmath>
#include <limits>

using namespace SorrelKit;
using namespace fixture;

Q_DECLARE_METATYPE(XmlElement)

namespace {

constexpr quint32 LinearId = 0x010c000b;
constexpr int MaxInt = std::numeric_limits<int>::max();
constexpr int Endless = -1;
constexpr int Reverse = 2;
constexpr qreal InitialX = 5;

XmlAttribute reference(quint32 id, quint32 resource)
{
    XmlAttribute attribute;
    attribute.id = id;
    attribute.value = {ValueType::Reference, resource};
    return attribute;
}

XmlAttribute linear()
{
    return reference(Attr::Interpolator, LinearId);
}

/// An animator of @p property with a steady pace.
XmlElement animator(const char *property, const Attributes &attributes, const Elements &children = {})
{
    return element(latin("objectAnimator"),
                   Attributes{text(Attr::PropertyName, latin(property)), linear()} + attributes, children);
}

/// An animator of translateX from 0 to @p to.
XmlElement move(float to, int duration, const Attributes &others = {})
{
    return animator("translateX",
                    Attributes{number(Attr::ValueFrom, 0), number(Attr::ValueTo, to), integer(Attr::Duration, duration)}
                        + others);
}

XmlElement together(const Elements &animators)
{
    return element(latin("set"), {}, animators);
}

XmlElement sequence(const Elements &animators)
{
    return element(latin("set"), {integer(Attr::Ordering, 1)}, animators);
}

XmlElement target(const char *name, const QString &file)
{
    return element(latin("target"), {text(Attr::Name, latin(name)), text(Attr::Animation, file)});
}

/// A vector with a path "path" in a group "group", and an animation of one of them.
struct Scene {
    explicit Scene(const XmlElement &root, const char *name = "group", const Budget &limits = iconBudget())
        : studio(limits), animated(element(latin("animated-vector"), {}, {target(name, latin("move.xml"))}))
    {
        studio.files.add(latin("move.xml"), binaryXml(root));
    }

    static XmlElement vector()
    {
        const XmlElement path =
            element(latin("path"), {text(Attr::Name, latin("path")), text(Attr::PathData, latin("M0,0L8,0")),
                                    color(Attr::FillColor, Red), number(Attr::FillAlpha, 0.5F)});
        const XmlElement group =
            element(latin("group"), {text(Attr::Name, latin("group")), number(Attr::TranslateX, InitialX)}, {path});
        return element(latin("vector"), {text(Attr::Name, latin("vector"))}, {group});
    }
    XmlElement at(qint64 time)
    {
        XmlElement vector = Scene::vector();
        VectorAnimation(animated, studio.loader).apply(&vector, time);
        return vector;
    }
    XmlElement groupAt(qint64 time) { return at(time).children.constFirst(); }
    XmlElement pathAt(qint64 time) { return groupAt(time).children.constFirst(); }
    qreal numberAt(qint64 time, quint32 id) { return DrawableAttributes(groupAt(time), studio.loader).number(id, -1); }
    AnimationClock clockAt(qint64 time)
    {
        AnimationClock clock(time);
        VectorAnimation(animated, studio.loader).noteOn(&clock);
        return clock;
    }

    Studio studio;
    XmlElement animated;
};

} // namespace

class TestVectorAnimation : public QObject
{
    Q_OBJECT

private slots:
    void numbers_data();
    void numbers();
    void colors();
    void paths();
    void alongAPath();
    void pathsOfDifferentCommands_data();
    void pathsOfDifferentCommands();
    void partsByTheirNames();
    void withoutAnimationNothingChanges_data();
    void withoutAnimationNothingChanges();
    void clockHasTheNextChange_data();
    void clockHasTheNextChange();
    void errors_data();
    void errors();
    void targetsStayInTheBudget();
    void morphsStayInTheBudget();
    void hostileNumbers();
};

void TestVectorAnimation::numbers_data()
{
    QTest::addColumn<XmlElement>("root");
    QTest::addColumn<QVector<int>>("times");
    QTest::addColumn<QVector<qreal>>("expected");
    const auto row = [](const char *name, const XmlElement &root, const QVector<int> &times,
                        const QVector<qreal> &expected) { QTest::newRow(name) << root << times << expected; };
    row("to", move(10, 100), {0, 25, 100, 1000}, {0, 2.5, 10, 10});
    row("usual pace and time",
        element(latin("objectAnimator"),
                {text(Attr::PropertyName, latin("translateX")), number(Attr::ValueFrom, 0), number(Attr::ValueTo, 10)}),
        {0, 75, 150, 300}, {0, 1.4645, 5, 10});
    row("no time", move(10, 0), {0, 1}, {10, 10});
    row("negative time", move(10, -5), {0, 1}, {10, 10});
    row("later", move(10, 100, {integer(Attr::StartOffset, 50)}), {0, 49, 50, 100, 150}, {0, 0, 0, 5, 10});
    row("from the part's value", animator("translateX", {number(Attr::ValueTo, 15), integer(Attr::Duration, 100)}),
        {0, 50, 100}, {5, 10, 15});
    row("a single value is the last",
        animator("translateX", {number(Attr::ValueFrom, 15), integer(Attr::Duration, 100)}), {0, 50, 100}, {5, 10, 15});
    row("pixels",
        animator("translateX", {pixels(Attr::ValueFrom, 2), pixels(Attr::ValueTo, 4), integer(Attr::Duration, 100)}),
        {0, 50}, {2, 3});
    row("repeated", move(10, 100, {integer(Attr::RepeatCount, 1)}), {50, 100, 150, 200, 250}, {5, 0, 5, 10, 10});
    row("back", move(10, 100, {integer(Attr::RepeatCount, 1), integer(Attr::RepeatMode, Reverse)}),
        {50, 100, 150, 200, 250}, {5, 10, 5, 0, 0});
    row("endless", move(10, 100, {integer(Attr::RepeatCount, Endless)}), {50, 100, 1050}, {5, 0, 5});
    row("endless back", move(10, 100, {integer(Attr::RepeatCount, Endless), integer(Attr::RepeatMode, Reverse)}),
        {50, 150, 199, 1010}, {5, 5, 0.1, 1});
    row("one after the other", sequence({move(10, 100), move(20, 100, {integer(Attr::StartOffset, 50)})}),
        {50, 100, 120, 150, 200, 300}, {5, 10, 10, 0, 10, 20});
    row("never, after one without an end", sequence({move(10, 100, {integer(Attr::RepeatCount, Endless)}), move(7, 1)}),
        {350}, {5});
    row("together", together({move(10, 100), move(20, 200)}), {50, 100, 150, 250}, {5, 10, 15, 20});
    row("the last to end counts", together({move(20, 200, {integer(Attr::StartOffset, 50)}), move(10, 400)}),
        {40, 100, 300, 400}, {1, 2.5, 7.5, 10});
    row("the first to end counts before both start",
        together({animator("translateX", {number(Attr::ValueFrom, 3), number(Attr::ValueTo, 4),
                                          integer(Attr::Duration, 100), integer(Attr::StartOffset, 300)}),
                  animator("translateX", {number(Attr::ValueFrom, 1), number(Attr::ValueTo, 2),
                                          integer(Attr::Duration, 100), integer(Attr::StartOffset, 100)})}),
        {0, 150, 250, 350}, {1, 1.5, 2, 3.5});
    row("sets in sets", sequence({together({move(1, 10), move(10, 100)}), sequence({move(20, 100)})}), {50, 150, 200},
        {5, 10, 20});
    row("time alone", sequence({element(latin("animator"), {integer(Attr::Duration, 100)}), move(10, 100)}), {50, 150},
        {0, 5});
    const auto frame = [](float value, const Attributes &others = {}) {
        return element(latin("keyframe"), Attributes{number(Attr::Value, value)} + others);
    };
    const auto holder = [](const Elements &keyframes) {
        return element(
            latin("objectAnimator"), {linear(), integer(Attr::Duration, 100)},
            {element(latin("propertyValuesHolder"), {text(Attr::PropertyName, latin("translateX"))}, keyframes)});
    };
    row("keyframes", holder({frame(0), frame(10), frame(0)}), {0, 25, 50, 75, 100}, {0, 5, 10, 5, 0});
    row("keyframes at fractions",
        holder({frame(0, {number(Attr::Fraction, 0)}), frame(10, {number(Attr::Fraction, 0.2F)}),
                frame(20, {number(Attr::Fraction, 1)})}),
        {10, 20, 60}, {5, 10, 15});
    row("keyframes within", holder({frame(10, {number(Attr::Fraction, 0.5F)})}), {0, 25, 50, 75, 100},
        {5, 7.5, 10, 7.5, 5});
    row("pace of a keyframe", holder({frame(0), frame(10, {reference(Attr::Interpolator, 0x010c0000)})}), {50, 100},
        {2.5, 10});
    row("values of a holder",
        element(latin("objectAnimator"), {linear(), integer(Attr::Duration, 100)},
                {element(latin("propertyValuesHolder"), {text(Attr::PropertyName, latin("translateX")),
                                                         number(Attr::ValueFrom, 0), number(Attr::ValueTo, 10)})}),
        {50}, {5});
    row("beyond the end",
        animator("translateX", {reference(Attr::Interpolator, 0x010c0008), number(Attr::ValueFrom, 0),
                                number(Attr::ValueTo, 10), integer(Attr::Duration, 100)}),
        {50}, {5});
}

void TestVectorAnimation::numbers()
{
    QFETCH(XmlElement, root);
    QFETCH(QVector<int>, times);
    QFETCH(QVector<qreal>, expected);
    Scene scene(root);
    for (int i = 0; i < times.size(); ++i) {
        const qreal found = scene.numberAt(times.at(i), Attr::TranslateX);
        if (std::abs(found - expected.at(i)) > 1e-3)
            QFAIL(qPrintable(latin("at %1: %2 for %3").arg(times.at(i)).arg(found).arg(expected.at(i))));
    }
    QCOMPARE(scene.studio.error(), QString());
}

void TestVectorAnimation::colors()
{
    Scene scene(animator("fillColor", {color(Attr::ValueFrom, Black), color(Attr::ValueTo, 0x00ffffff),
                                       integer(Attr::Duration, 100)}),
                "path");
    const auto colorAt = [&scene](qint64 time) { return scene.pathAt(time).attribute(Attr::FillColor)->value.data; };
    QCOMPARE(colorAt(0), 0xff000000u);
    // Half of the light is more than half of the number.
    QVERIFY(isNear(colorAt(50), 0x80bababa, 1));
    QCOMPARE(colorAt(100), 0x00ffffffu);
    QCOMPARE(scene.studio.error(), QString());
}

void TestVectorAnimation::paths()
{
    const auto morph = [](const char *from, const char *to) {
        return animator("pathData", {text(Attr::ValueFrom, latin(from)), text(Attr::ValueTo, latin(to)),
                                     integer(Attr::Duration, 100)});
    };
    const auto dataAt = [](const XmlElement &root, qint64 time) {
        Scene scene(root, "path");
        const QString data = scene.pathAt(time).attribute(Attr::PathData)->text;
        return scene.studio.error().isEmpty() ? data.simplified() : scene.studio.error();
    };
    QCOMPARE(dataAt(morph("M0,0 L10,0 l1-1z", "M4,4 L20,1 l1,1z"), 50), latin("M2 2 L15 0.5 l1 0 z"));
    QCOMPARE(dataAt(morph("M0,0L1,1", "M4,4L5,5"), 0), latin("M0 0 L1 1"));
    QCOMPARE(dataAt(morph("M0,0L1,1", "M4,4L5,5"), 100), latin("M4 4 L5 5"));
    QCOMPARE(dataAt(morph("M0,0 A1,2 3 0 1 9,8", "M0,0 A3,2 3 0 1 9,9"), 50), latin("M0 0 A2 2 3 0 1 9 8.5"));
    const XmlElement onward =
        animator("pathData", {text(Attr::ValueTo, latin("M0,0L4,2")), integer(Attr::Duration, 100)});
    QCOMPARE(dataAt(onward, 50), latin("M0 0 L6 1"));
}

void TestVectorAnimation::alongAPath()
{
    const auto along = [](const char *data, const char *x, const char *y) {
        return element(latin("objectAnimator"),
                       {linear(), integer(Attr::Duration, 100), text(Attr::PathData, latin(data)),
                        text(Attr::PropertyXName, latin(x)), text(Attr::PropertyYName, latin(y))});
    };
    Scene scene(along("M1,2L5,2L5,14", "translateX", "scaleY"));
    const auto pointAt = [&scene](qint64 time) {
        return QPointF(scene.numberAt(time, Attr::TranslateX), scene.numberAt(time, Attr::ScaleY));
    };
    QCOMPARE(pointAt(0), QPointF(1, 2));
    QCOMPARE(pointAt(25), QPointF(5, 2));
    QCOMPARE(pointAt(50), QPointF(5, 6));
    QCOMPARE(pointAt(100), QPointF(5, 14));
    QCOMPARE(scene.studio.error(), QString());
    Scene unknown(along("M1,2L5,2", "fillColor", "nothing"));
    QCOMPARE(unknown.numberAt(50, Attr::TranslateX), InitialX);
    Scene damaged(along("?", "translateX", "translateY"));
    QCOMPARE(damaged.numberAt(50, Attr::TranslateX), InitialX);
    QCOMPARE(damaged.studio.error(), latin("Damaged: no command in path data at 0"));
}

void TestVectorAnimation::pathsOfDifferentCommands_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QString>("error");
    const QString differ = latin("Damaged: animation between paths of different commands");
    QTest::newRow("letter") << latin("M0,0L1,1") << latin("M0,0l1,1") << differ;
    QTest::newRow("fewer") << latin("M0,0L1,1") << latin("M0,0") << differ;
    QTest::newRow("more") << latin("M0,0") << latin("M0,0L1,1") << differ;
    QTest::newRow("damaged start") << latin("M0,0L1,?") << latin("M0,0L1,1")
                                   << latin("Damaged: no number in path data at 7");
    QTest::newRow("damaged end") << latin("M0,0L1,1") << latin("M0,0X")
                                 << latin("Damaged: no command in path data at 4");
}

void TestVectorAnimation::pathsOfDifferentCommands()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    Scene scene(animator("pathData", {text(Attr::ValueFrom, from), text(Attr::ValueTo, to)}), "path");
    QCOMPARE(scene.pathAt(50).attribute(Attr::PathData)->text, latin("M0,0L8,0"));
    QTEST(scene.studio.error(), "error");
}

void TestVectorAnimation::partsByTheirNames()
{
    using Property = QPair<const char *, quint32>;
    const auto valueOf = [](const char *part, const char *property, quint32 id) {
        Scene scene(animator(property, {number(Attr::ValueFrom, 0), number(Attr::ValueTo, 0.5F)}), part);
        const XmlElement vector = scene.at(150);
        const XmlElement &group = vector.children.constFirst();
        for (const XmlElement &found : {vector, group, group.children.constFirst()}) {
            if (found.attribute(Attr::Name)->text == latin(part))
                return DrawableAttributes(found, scene.studio.loader).number(id, -1);
        }
        return qreal(-2);
    };
    QCOMPARE(valueOf("vector", "alpha", Attr::Alpha), 0.25);
    for (const auto &property :
         {Property("rotation", Attr::Rotation), Property("pivotX", Attr::PivotX), Property("pivotY", Attr::PivotY),
          Property("scaleX", Attr::ScaleX), Property("scaleY", Attr::ScaleY), Property("translateX", Attr::TranslateX),
          Property("translateY", Attr::TranslateY)})
        QCOMPARE(valueOf("group", property.first, property.second), 0.25);
    for (const auto &property :
         {Property("fillAlpha", Attr::FillAlpha), Property("strokeAlpha", Attr::StrokeAlpha),
          Property("strokeWidth", Attr::StrokeWidth), Property("trimPathStart", Attr::TrimPathStart),
          Property("trimPathEnd", Attr::TrimPathEnd), Property("trimPathOffset", Attr::TrimPathOffset)})
        QCOMPARE(valueOf("path", property.first, property.second), 0.25);
    // Properties that a part lacks start with their usual value.
    Scene scene(animator("scaleX", {number(Attr::ValueTo, 3), integer(Attr::Duration, 100)}));
    QCOMPARE(scene.numberAt(50, Attr::ScaleX), 2.0);
}

void TestVectorAnimation::withoutAnimationNothingChanges_data()
{
    QTest::addColumn<XmlElement>("root");
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("unknown part") << move(10, 100) << QByteArray("other");
    QTest::newRow("unknown property") << animator("elevation", {number(Attr::ValueTo, 3)}) << QByteArray("group");
    QTest::newRow("no values") << animator("translateX", {}) << QByteArray("group");
    QTest::newRow("text for a number") << animator("translateX", {text(Attr::ValueTo, latin("far"))})
                                       << QByteArray("group");
}

void TestVectorAnimation::withoutAnimationNothingChanges()
{
    QFETCH(XmlElement, root);
    QFETCH(QByteArray, name);
    Scene scene(root, name.constData());
    for (const int time : {0, 50, 1000})
        QCOMPARE(scene.numberAt(time, Attr::TranslateX), InitialX);
    QCOMPARE(scene.studio.error(), QString());
}

void TestVectorAnimation::clockHasTheNextChange_data()
{
    QTest::addColumn<XmlElement>("root");
    QTest::addColumn<int>("time");
    QTest::addColumn<qint64>("delay");
    QTest::addColumn<qint64>("period");
    const auto row = [](const char *name, const XmlElement &root, int time, qint64 delay, qint64 period = 0) {
        QTest::newRow(name) << root << time << delay << period;
    };
    constexpr int FrameTime = VectorAnimation::FrameTime;
    row("start", move(1, 100), 0, FrameTime);
    row("between pictures", move(1, 100), 40, 2 * FrameTime - 40);
    row("last picture", move(1, 100), 99, 1);
    row("end", move(1, 100), 100, 0);
    row("pause", move(1, 100, {integer(Attr::StartOffset, 500)}), 0, 500);
    row("nothing", together({}), 0, 0);
    const XmlElement endless = move(1, 100, {integer(Attr::RepeatCount, Endless)});
    row("endless", endless, 0, FrameTime, 100);
    row("endless, later", endless, 1000, 1023 - 1000, 100);
    row("endless back", move(1, 100, {integer(Attr::RepeatCount, Endless), integer(Attr::RepeatMode, Reverse)}), 0,
        FrameTime, 200);
    row("endless with one that ends", together({endless, move(1, 250)}), 0, FrameTime, 250);
    row("endless after a pause", move(1, 100, {integer(Attr::RepeatCount, Endless), integer(Attr::StartOffset, 30)}), 0,
        30, 130);
    row("without time or end", move(1, 0, {integer(Attr::RepeatCount, Endless)}), 0, 0);
    row("long", move(1, VectorAnimation::MaxSteps * 50), 0, 50);
    row("far too long", move(1, MaxInt, {integer(Attr::RepeatCount, MaxInt), integer(Attr::StartOffset, 7)}), 7,
        AnimationClock::MaxTime / VectorAnimation::MaxSteps - 7);
    row("starts too late", move(1, 100, {integer(Attr::StartOffset, MaxInt)}), 0, AnimationClock::MaxTime);
}

void TestVectorAnimation::clockHasTheNextChange()
{
    QFETCH(XmlElement, root);
    QFETCH(int, time);
    Scene scene(root);
    const AnimationClock clock = scene.clockAt(time);
    QTEST(clock.delay(), "delay");
    QTEST(clock.period(), "period");
}

void TestVectorAnimation::errors_data()
{
    QTest::addColumn<XmlElement>("target");
    QTest::addColumn<QString>("error");
    QTest::newRow("no animation") << element(latin("target"), {text(Attr::Name, latin("group"))})
                                  << latin("Damaged: target group of an animated vector without an animation");
    QTest::newRow("no file") << target("group", latin("none.xml")) << latin("Unreadable: none.xml cannot be read");
    QTest::newRow("no document") << target("group", latin("bad.xml"))
                                 << latin("Unreadable: bad.xml: not a binary XML document");
    QTest::newRow("no animator") << target("group", latin("alpha.xml"))
                                 << latin("Unsupported: unsupported animator <alpha>");
}

void TestVectorAnimation::errors()
{
    QFETCH(XmlElement, target);
    Scene scene(move(10, 100));
    scene.studio.files.add(latin("bad.xml"), QByteArray("text"));
    scene.studio.files.add(latin("alpha.xml"), binaryXml(element(latin("alpha"))));
    scene.animated.children.prepend(target);
    QCOMPARE(scene.numberAt(50, Attr::TranslateX), 5.0);
    QTEST(scene.studio.error(), "error");
}

void TestVectorAnimation::targetsStayInTheBudget()
{
    Scene scene(move(10, 100));
    const Elements many(200000, scene.animated.children.constFirst());
    scene.animated.children = many;
    scene.at(50);
    QVERIFY(scene.studio.files.reads() < 20000);
    QVERIFY(!scene.studio.error().isEmpty());
    // Keyframes and sets cost, too.
    Scene animators(together(Elements(200000, animator("translateX", {number(Attr::ValueTo, 1)}))));
    animators.at(50);
    QVERIFY(!animators.studio.error().isEmpty());
}

void TestVectorAnimation::morphsStayInTheBudget()
{
    QString data;
    for (int i = 0; i < 20000; ++i)
        data += latin("L0.123456789,0.123456789 ");
    const XmlElement root = animator("pathData", {text(Attr::ValueFrom, data), text(Attr::ValueTo, data)});
    Scene whole(root, "path");
    QVERIFY(whole.pathAt(150).attribute(Attr::PathData)->text.size() > 400000);
    QCOMPARE(whole.studio.error(), QString());
    Scene cut(root, "path", Budget(1 << 22, 56 << 20));
    QCOMPARE(cut.pathAt(150).attribute(Attr::PathData)->text, latin("M0,0L8,0"));
    QVERIFY(!cut.studio.error().isEmpty());
    Scene small(root, "path", Budget(128 << 20, 3 << 20));
    QCOMPARE(small.pathAt(150).attribute(Attr::PathData)->text, latin("M0,0L8,0"));
}

void TestVectorAnimation::hostileNumbers()
{
    const QVector<float> values{std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                                std::numeric_limits<float>::max(), -std::numeric_limits<float>::max()};
    const QVector<int> integers{std::numeric_limits<int>::min(), -2, 1, MaxInt};
    for (const float value : values) {
        for (const int time : integers) {
            const XmlElement root =
                sequence({move(value, time, {integer(Attr::RepeatCount, time), integer(Attr::StartOffset, time)}),
                          move(-value, MaxInt, {integer(Attr::RepeatCount, MaxInt), integer(Attr::RepeatMode, time)})});
            Scene scene(root);
            for (const qint64 at : {qint64(0), qint64(1), AnimationClock::MaxTime}) {
                QVERIFY(std::isfinite(scene.numberAt(at, Attr::TranslateX)));
                const AnimationClock clock = scene.clockAt(at);
                QVERIFY(clock.delay() >= 0 && clock.delay() <= AnimationClock::MaxTime);
            }
        }
    }
}

QTEST_GUILESS_MAIN(TestVectorAnimation)
#include "tst_vectoranimation.moc"
