// SPDX-License-Identifier: LGPL-2.1-or-later
#include "BinaryXml.h"
#include "DrawableFixture.h"
#include "ResourcesFixture.h"
#include "drawable/animation/Interpolator.h"
#include "format/AndroidAttributes.h"

#include <QtTest>

#include <cmath>
#include <limits>

using namespace SorrelKit;
using namespace fixture;

Q_DECLARE_METATYPE(XmlElement)

namespace {

constexpr const char *File = "pace.xml";

XmlAttribute reference(quint32 id)
{
    XmlAttribute attribute;
    attribute.id = Attr::Interpolator;
    attribute.value = {ValueType::Reference, id};
    return attribute;
}

Interpolator read(const XmlElement &root, QString *error = nullptr)
{
    Studio studio;
    studio.files.add(latin(File), binaryXml(root));
    const XmlElement animator = element(latin("objectAnimator"), {text(Attr::Interpolator, latin(File))});
    const Interpolator interpolator = Interpolator::ofElement(animator, studio.loader);
    if (error != nullptr)
        *error = studio.error();
    return interpolator;
}

XmlElement path(const char *data)
{
    return element(latin("pathInterpolator"), {text(Attr::PathData, latin(data))});
}

bool isClose(qreal a, qreal b)
{
    return std::abs(a - b) < 1e-4;
}

} // namespace

class TestInterpolator : public QObject
{
    Q_OBJECT

private slots:
    void elements_data();
    void elements();
    void interpolatorsOfThePlatformAreKnown_data();
    void interpolatorsOfThePlatformAreKnown();
    void withoutOneItAcceleratesAndDecelerates();
    void errors_data();
    void errors();
    void resultsAreBounded_data();
    void resultsAreBounded();
};

void TestInterpolator::elements_data()
{
    QTest::addColumn<XmlElement>("root");
    QTest::addColumn<qreal>("atQuarter");
    QTest::addColumn<qreal>("atHalf");
    QTest::addColumn<qreal>("atEnd");
    const auto row = [](const XmlElement &root, qreal atQuarter, qreal atHalf, qreal atEnd = 1) {
        const QByteArray tag = root.name.toLatin1() + ' ' + QByteArray::number(root.attributes.size());
        QTest::newRow(tag.constData()) << root << atQuarter << atHalf << atEnd;
    };
    row(element(latin("linearInterpolator")), 0.25, 0.5);
    row(element(latin("accelerateInterpolator")), 0.0625, 0.25);
    row(element(latin("accelerateInterpolator"), {number(Attr::Factor, 1.5F)}), 0.015625, 0.125);
    row(element(latin("decelerateInterpolator")), 0.4375, 0.75);
    row(element(latin("decelerateInterpolator"), {number(Attr::Factor, 1.5F)}), 0.578125, 0.875);
    row(element(latin("accelerateDecelerateInterpolator")), 0.146447, 0.5);
    row(element(latin("anticipateInterpolator")), -0.078125, -0.125);
    row(element(latin("anticipateInterpolator"), {number(Attr::Tension, 0)}), 0.015625, 0.125);
    row(element(latin("overshootInterpolator")), 0.859375, 1.125);
    row(element(latin("anticipateOvershootInterpolator")), -0.125, 0.5);
    row(element(latin("anticipateOvershootInterpolator"), {number(Attr::Tension, 2), number(Attr::ExtraTension, 1)}),
        -0.0625, 0.5);
    row(element(latin("bounceInterpolator")), 0.630126, 0.701628, 1.000054);
    row(element(latin("cycleInterpolator")), 1, 0, 0);
    row(element(latin("cycleInterpolator"), {number(Attr::Cycles, 0.5F)}), 0.707107, 1, 0);
    row(element(latin("pathInterpolator"), {number(Attr::ControlX1, 0.5F), number(Attr::ControlY1, 0)}), 0.0625, 0.25);
    row(element(latin("pathInterpolator"), {number(Attr::ControlX1, 0), number(Attr::ControlY1, 0),
                                            number(Attr::ControlX2, 1), number(Attr::ControlY2, 1)}),
        0.25, 0.5);
    row(path("M0,0L0.5,0L0.5,1L1,1"), 0, 0);
    QTest::newRow("corners") << path("M0,0 L0.4,0.8 L1,1") << 0.5 << 0.8 + 0.2 / 6 << 1.0;
    QTest::newRow("without a move") << path("L0.5,0 C 0.7,0 0.6,1 1,1") << 0.0 << 0.0 << 1.0;
    QTest::newRow("curve") << path("M0,0 c0.25,0 0.25,1 0.5,1 L1,1") << 0.5 << 1.0 << 1.0;
}

void TestInterpolator::elements()
{
    QFETCH(XmlElement, root);
    QFETCH(qreal, atQuarter);
    QFETCH(qreal, atHalf);
    QFETCH(qreal, atEnd);
    QString error;
    const Interpolator interpolator = read(root, &error);
    QCOMPARE(error, QString());
    const auto check = [&](qreal at, qreal expected) {
        const qreal found = interpolator.at(at);
        if (!isClose(found, expected))
            QFAIL(qPrintable(latin("at %1: %2 for %3").arg(at).arg(found).arg(expected)));
    };
    check(0, 0);
    check(0.25, atQuarter);
    check(0.5, atHalf);
    check(1, atEnd);
}

void TestInterpolator::interpolatorsOfThePlatformAreKnown_data()
{
    QTest::addColumn<quint32>("id");
    QTest::addColumn<quint32>("idOfAnimation");
    QTest::addColumn<qreal>("atHalf");
    const auto row = [](const char *name, quint32 id, quint32 idOfAnimation, qreal atHalf) {
        QTest::newRow(name) << id << idOfAnimation << atHalf;
    };
    row("accelerate_quad", 0x010c0000, 0x010a0005, 0.25);
    row("decelerate_quad", 0x010c0001, 0x010a0006, 0.75);
    row("accelerate_cubic", 0x010c0002, 0, 0.125);
    row("decelerate_cubic", 0x010c0003, 0, 0.875);
    row("accelerate_quint", 0x010c0004, 0, 0.03125);
    row("decelerate_quint", 0x010c0005, 0, 0.96875);
    row("accelerate_decelerate", 0x010c0006, 0x010a0004, 0.5);
    row("anticipate", 0x010c0007, 0x010a0007, -0.125);
    row("overshoot", 0x010c0008, 0x010a0008, 1.125);
    row("anticipate_overshoot", 0x010c0009, 0x010a0009, 0.5);
    row("bounce", 0x010c000a, 0x010a000a, 0.701628);
    row("linear", 0x010c000b, 0x010a000b, 0.5);
    row("cycle", 0x010c000c, 0x010a000c, 0);
    row("fast_out_slow_in", 0x010c000d, 0, 0.7756);
    row("linear_out_slow_in", 0x010c000e, 0, 0.8385);
    row("fast_out_linear_in", 0x010c000f, 0, 0.3251);
}

void TestInterpolator::interpolatorsOfThePlatformAreKnown()
{
    QFETCH(quint32, id);
    QFETCH(quint32, idOfAnimation);
    QFETCH(qreal, atHalf);
    for (const quint32 known : {id, idOfAnimation}) {
        if (known == 0)
            continue;
        Studio studio;
        const Interpolator interpolator =
            Interpolator::ofElement(element(latin("set"), {reference(known)}), studio.loader);
        QCOMPARE(studio.error(), QString());
        QVERIFY2(std::abs(interpolator.at(0.5) - atHalf) < 1e-3, qPrintable(QString::number(interpolator.at(0.5))));
    }
}

void TestInterpolator::withoutOneItAcceleratesAndDecelerates()
{
    Studio studio;
    for (const Attributes &attributes : {Attributes{}, Attributes{reference(0)}}) {
        const Interpolator interpolator = Interpolator::ofElement(element(latin("set"), attributes), studio.loader);
        QVERIFY(isClose(interpolator.at(0.25), 0.146447));
    }
    QCOMPARE(studio.error(), QString());
}

void TestInterpolator::errors_data()
{
    QTest::addColumn<XmlElement>("root");
    QTest::addColumn<QString>("expected");
    QTest::newRow("unknown") << element(latin("springInterpolator"))
                             << latin("Unsupported: unsupported interpolator <springInterpolator>");
    QTest::newRow("damaged path") << path("M0,0 ?") << latin("Damaged: no command in path data at 5");
}

void TestInterpolator::errors()
{
    QFETCH(XmlElement, root);
    QString error;
    QVERIFY(isClose(read(root, &error).at(0.5), 0.5));
    QTEST(error, "expected");
    Studio studio;
    QVERIFY(isClose(
        Interpolator::ofElement(element(latin("a"), {text(Attr::Interpolator, latin("none.xml"))}), studio.loader)
            .at(0.5),
        0.5));
    QCOMPARE(studio.error(), latin("Unreadable: none.xml cannot be read"));
}

void TestInterpolator::resultsAreBounded_data()
{
    QTest::addColumn<XmlElement>("root");
    const float huge = std::numeric_limits<float>::max();
    for (const char *const name :
         {"accelerateInterpolator", "decelerateInterpolator", "anticipateInterpolator", "overshootInterpolator",
          "anticipateOvershootInterpolator", "cycleInterpolator", "pathInterpolator"}) {
        for (const float value : {huge, -huge, 0.0F, -1.0F, std::numeric_limits<float>::quiet_NaN()}) {
            const QByteArray tag = QByteArray(name) + ' ' + QByteArray::number(double(value));
            QTest::newRow(tag.constData())
                << element(latin(name), {number(Attr::Factor, value), number(Attr::Tension, value),
                                         number(Attr::ExtraTension, value), number(Attr::Cycles, value),
                                         number(Attr::ControlX1, value), number(Attr::ControlY1, value),
                                         number(Attr::ControlX2, -value), number(Attr::ControlY2, value)});
        }
    }
    QTest::newRow("path that goes back") << path("M0,0 L5,5 L-5,9 C-9,9 9,-9 1,1");
    QTest::newRow("path of nothing") << path("M0,0Z M5,5");
    QTest::newRow("path beyond") << path("M0,0 L0.5,16777216 L1,-16777216");
}

void TestInterpolator::resultsAreBounded()
{
    QFETCH(XmlElement, root);
    const Interpolator interpolator = read(root);
    for (int i = 0; i <= 64; ++i) {
        const qreal result = interpolator.at(i / qreal(64));
        QVERIFY(std::abs(result) <= Interpolator::MaxResult);
    }
}

QTEST_GUILESS_MAIN(TestInterpolator)
#include "tst_interpolator.moc"
