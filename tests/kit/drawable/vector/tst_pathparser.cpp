// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DrawableFixture.h"
#include "drawable/paint/PathPainter.h"
#include "drawable/vector/PathParser.h"

#include <QRandomGenerator>
#include <QtTest>

#include <cmath>

using namespace SorrelKit;
using fixture::described;

namespace {

constexpr qint64 Plenty = 1 << 20;

// The elements of a path with their coordinates, rounded to a hundredth: "M 0 0 L 1 2 C 1 2 3 4 5 6".
QString elements(const QPainterPath &path)
{
    QStringList words;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.type != QPainterPath::CurveToDataElement)
            words += element.isMoveTo() ? "M" : element.isLineTo() ? "L" : "C";
        // No negative zero.
        words += QString::number(std::round(element.x * 100) / 100 + 0.0);
        words += QString::number(std::round(element.y * 100) / 100 + 0.0);
    }
    return words.join(' ');
}

// The largest distance of a point on a path from the ellipse around a center.
qreal offEllipse(const QPainterPath &path, QPointF center, qreal radiusX, qreal radiusY)
{
    qreal worst = 0;
    for (int i = 0; i <= 100; ++i) {
        const QPointF point = path.pointAtPercent(i / 100.0) - center;
        worst = qMax(worst, std::abs(std::hypot(point.x() / radiusX, point.y() / radiusY) - 1));
    }
    return worst;
}

} // namespace

class TestPathParser : public QObject
{
    Q_OBJECT

private slots:
    void commands_data();
    void commands();
    void numbers_data();
    void numbers();
    void numbersAreTheClosestDoubles();
    void arcs_data();
    void arcs();
    void anArcTooSmallToReachIsEnlarged();
    void aTurnedArcIsTurned();
    void anArcThatIsNoneIsALine_data();
    void anArcThatIsNoneIsALine();
    void whatIsTooShortToBeSeenHasCaps_data();
    void whatIsTooShortToBeSeenHasCaps();
    void lettersWithoutNumbers();
    void faults_data();
    void faults();
    void segmentsAreCounted_data();
    void segmentsAreCounted();
    void whatIsBeyondTheBudgetIsLeftOut();
    void anythingIsRead();
};

void TestPathParser::commands_data()
{
    QTest::addColumn<QString>("data");
    QTest::addColumn<QString>("expected");

    QTest::newRow("nothing") << ""
                             << "";
    QTest::newRow("M") << "M1 2"
                       << "M 1 2";
    QTest::newRow("M repeated") << "M1 2 3 4 5 6"
                                << "M 1 2 L 3 4 L 5 6";
    QTest::newRow("m at first") << "m1 2"
                                << "M 1 2";
    QTest::newRow("m repeated") << "m1 2 3 4 5 6"
                                << "M 1 2 L 4 6 L 9 12";
    QTest::newRow("m after a line") << "M1 1L5 5m1 2L0 0"
                                    << "M 1 1 L 5 5 M 6 7 L 0 0";
    QTest::newRow("L") << "M1 2L3 4"
                       << "M 1 2 L 3 4";
    QTest::newRow("L repeated") << "M1 2L3 4 5 6"
                                << "M 1 2 L 3 4 L 5 6";
    QTest::newRow("l") << "M1 2l3 4"
                       << "M 1 2 L 4 6";
    QTest::newRow("l repeated") << "M1 2l3 4 5 6"
                                << "M 1 2 L 4 6 L 9 12";
    QTest::newRow("H") << "M1 2H3"
                       << "M 1 2 L 3 2";
    QTest::newRow("h") << "M1 2h3"
                       << "M 1 2 L 4 2";
    QTest::newRow("h repeated") << "M1 2h3 4"
                                << "M 1 2 L 4 2 L 8 2";
    QTest::newRow("V") << "M1 2V3"
                       << "M 1 2 L 1 3";
    QTest::newRow("v") << "M1 2v3"
                       << "M 1 2 L 1 5";
    QTest::newRow("V repeated") << "M1 2V3 4"
                                << "M 1 2 L 1 3 L 1 4";
    QTest::newRow("C") << "M1 2C3 4 5 6 7 8"
                       << "M 1 2 C 3 4 5 6 7 8";
    QTest::newRow("C repeated") << "M0 0C1 1 2 2 3 0 4 1 5 2 6 0"
                                << "M 0 0 C 1 1 2 2 3 0 C 4 1 5 2 6 0";
    QTest::newRow("c") << "M1 2c3 4 5 6 7 8"
                       << "M 1 2 C 4 6 6 8 8 10";
    QTest::newRow("c repeated") << "M1 1c1 0 2 1 3 1 1 0 2 1 3 1"
                                << "M 1 1 C 2 1 3 2 4 2 C 5 2 6 3 7 3";
    QTest::newRow("S after C") << "M0 0C1 1 2 2 3 0S5 1 6 0"
                               << "M 0 0 C 1 1 2 2 3 0 C 4 -2 5 1 6 0";
    QTest::newRow("s after c") << "M1 0c1 1 2 2 3 0s2 1 3 0"
                               << "M 1 0 C 2 1 3 2 4 0 C 5 -2 6 1 7 0";
    QTest::newRow("S repeated") << "M0 0S1 1 2 0 3 1 4 0"
                                << "M 0 0 C 0 0 1 1 2 0 C 3 -1 3 1 4 0";
    QTest::newRow("S after a line") << "M0 0L3 3S5 1 6 0"
                                    << "M 0 0 L 3 3 C 3 3 5 1 6 0";
    QTest::newRow("S after Q") << "M0 0Q3 3 6 0S9 1 12 0"
                               << "M 0 0 C 2 2 4 2 6 0 C 6 0 9 1 12 0";
    QTest::newRow("Q") << "M0 0Q3 3 6 0"
                       << "M 0 0 C 2 2 4 2 6 0";
    QTest::newRow("q") << "M1 1q3 3 6 0"
                       << "M 1 1 C 3 3 5 3 7 1";
    QTest::newRow("q repeated") << "M1 1q3 3 6 0 3 3 6 0"
                                << "M 1 1 C 3 3 5 3 7 1 C 9 3 11 3 13 1";
    QTest::newRow("T after Q") << "M0 0Q3 3 6 0T12 0"
                               << "M 0 0 C 2 2 4 2 6 0 C 8 -2 10 -2 12 0";
    QTest::newRow("t after q") << "M1 0q3 3 6 0t6 0"
                               << "M 1 0 C 3 2 5 2 7 0 C 9 -2 11 -2 13 0";
    QTest::newRow("T repeated") << "M0 0Q3 3 6 0T12 0 18 0"
                                << "M 0 0 C 2 2 4 2 6 0 C 8 -2 10 -2 12 0 C 14 2 16 2 18 0";
    QTest::newRow("T after a line") << "M0 0L6 0T12 3"
                                    << "M 0 0 L 6 0 C 6 0 8 1 12 3";
    QTest::newRow("T after C") << "M0 0C1 1 2 2 3 0T6 3"
                               << "M 0 0 C 1 1 2 2 3 0 C 3 0 4 1 6 3";
    QTest::newRow("Z") << "M1 2L3 4L5 0Z"
                       << "M 1 2 L 3 4 L 5 0 L 1 2";
    QTest::newRow("z") << "M1 2L3 4L5 0z"
                       << "M 1 2 L 3 4 L 5 0 L 1 2";
    QTest::newRow("after Z") << "M1 2L3 4L5 0Zl2 2"
                             << "M 1 2 L 3 4 L 5 0 L 1 2 M 1 2 L 3 4";
    QTest::newRow("m after Z") << "M1 2L3 4L5 0Zm2 2L0 0"
                               << "M 1 2 L 3 4 L 5 0 L 1 2 M 3 4 L 0 0";
    QTest::newRow("S after Z") << "M1 1C2 2 3 3 4 1ZS3 3 5 5"
                               << "M 1 1 C 2 2 3 3 4 1 L 1 1 M 1 1 C 1 1 3 3 5 5";
    QTest::newRow("Z twice") << "M1 2L3 4L5 0ZZ"
                             << "M 1 2 L 3 4 L 5 0 L 1 2";
    QTest::newRow("Z at first") << "Z M1 2 L3 4"
                                << "M 1 2 L 3 4";
    QTest::newRow("a line at first") << "L3 4"
                                     << "M 0 0 L 3 4";
    QTest::newRow("a curve at first") << "c1 1 2 2 3 0"
                                      << "M 0 0 C 1 1 2 2 3 0";
}

void TestPathParser::commands()
{
    QFETCH(QString, data);
    QFETCH(QString, expected);
    Budget budget(Plenty, Plenty);
    const PathParser parser(data, budget);
    QCOMPARE(described(parser.error()), QString());
    QCOMPARE(elements(parser.path()), expected);
}

void TestPathParser::numbers_data()
{
    QTest::addColumn<QString>("data");
    QTest::addColumn<QString>("expected");

    QTest::newRow("commas") << "M1,2L3,4"
                            << "M 1 2 L 3 4";
    QTest::newRow("white space") << "\n M\t1\r\n2 , L 3 ,4 \n"
                                 << "M 1 2 L 3 4";
    QTest::newRow("signs separate") << "M1-2L-3-4"
                                    << "M 1 -2 L -3 -4";
    QTest::newRow("plus") << "M+1+2"
                          << "M 1 2";
    QTest::newRow("points separate") << "M1.5.5L.25.75"
                                     << "M 1.5 0.5 L 0.25 0.75";
    QTest::newRow("no digits after the point") << "M1. 2."
                                               << "M 1 2";
    QTest::newRow("exponents") << "M1e2 1.5E+1L-2.5e1-5e-1"
                               << "M 100 15 L -25 -0.5";
    QTest::newRow("all at once") << "M1.5.5-2e3.5"
                                 << "M 1.5 0.5 L -2000 0.5";
    QTest::newRow("digits without end") << "M0.25000000000000000000000000000000000000001 00000000000000000000000001"
                                        << "M 0.25 1";
    QTest::newRow("less than there is") << "M1e-400 -1e-400"
                                        << "M 0 0";
    QTest::newRow("the greatest") << "M16777216-16777216"
                                  << "M 1.67772e+07 -1.67772e+07";
}

void TestPathParser::numbers()
{
    commands();
}

void TestPathParser::numbersAreTheClosestDoubles()
{
    QRandomGenerator random(5);
    const auto digits = [&random](int count) {
        QString text;
        for (int i = 0; i < count; ++i)
            text += QLatin1Char(char('0' + random.bounded(10)));
        return text;
    };
    for (int i = 0; i < 5000; ++i) {
        const QString text = QLatin1String(random.bounded(2) == 0 ? "-" : "") + digits(1 + random.bounded(7)) + '.'
                             + digits(random.bounded(20));
        Budget budget(Plenty, Plenty);
        const QPainterPath path = PathParser('M' + text + ' ' + text, budget).path();
        QVERIFY2(path.elementCount() == 1 && path.elementAt(0).x == QLocale::c().toDouble(text), qPrintable(text));
    }
}

void TestPathParser::arcs_data()
{
    QTest::addColumn<QString>("data");
    QTest::addColumn<QPointF>("center");
    QTest::addColumn<QPointF>("middle");
    QTest::addColumn<int>("curves");
    // Two circles of radius 5 go through (3, 0) and (3, 8): around (0, 4), and (6, 4). The angles of the arcs are 106
    // and 254 degrees.
    QTest::newRow("small, counter-clockwise") << "M3 0A5 5 0 0 0 3 8" << QPointF(6, 4) << QPointF(1, 4) << 2;
    QTest::newRow("small, clockwise") << "M3 0A5 5 0 0 1 3 8" << QPointF(0, 4) << QPointF(5, 4) << 2;
    QTest::newRow("large, counter-clockwise") << "M3 0A5 5 0 1 0 3 8" << QPointF(0, 4) << QPointF(-5, 4) << 3;
    QTest::newRow("large, clockwise") << "M3 0A5 5 0 1 1 3 8" << QPointF(6, 4) << QPointF(11, 4) << 3;
    QTest::newRow("relative") << "M3 0a5 5 0 1 1 0 8" << QPointF(6, 4) << QPointF(11, 4) << 3;
    QTest::newRow("flags that nothing separates") << "M3 0a5 5 0 110 8" << QPointF(6, 4) << QPointF(11, 4) << 3;
    QTest::newRow("nothing separates anything") << "M3,0a5,5 0 01.0,8" << QPointF(0, 4) << QPointF(5, 4) << 2;
    QTest::newRow("negative radii") << "M3 0A-5-5 0 0 1 3 8" << QPointF(0, 4) << QPointF(5, 4) << 2;
    QTest::newRow("a whole turn more") << "M3 0A5 5 720 0 1 3 8" << QPointF(0, 4) << QPointF(5, 4) << 2;
    QTest::newRow("half a circle") << "M0 0A5 5 0 0 1 0 10" << QPointF(0, 5) << QPointF(5, 5) << 2;
    QTest::newRow("half a circle the other way") << "M0 0A5 5 0 0 0 0 10" << QPointF(0, 5) << QPointF(-5, 5) << 2;
    QTest::newRow("a quarter") << "M5 0A5 5 0 0 1 0 5" << QPointF(0, 0) << QPointF(3.5355, 3.5355) << 1;
}

void TestPathParser::arcs()
{
    QFETCH(QString, data);
    QFETCH(QPointF, center);
    QFETCH(QPointF, middle);
    QFETCH(int, curves);
    Budget budget(Plenty, Plenty);
    const PathParser parser(data, budget);
    QCOMPARE(described(parser.error()), QString());
    QCOMPARE(parser.path().elementCount(), 1 + 3 * curves);
    QVERIFY(offEllipse(parser.path(), center, 5, 5) < 0.001);
    const QPointF off = parser.path().pointAtPercent(0.5) - middle;
    QVERIFY2(std::hypot(off.x(), off.y()) < 0.01, qPrintable(elements(parser.path())));
}

void TestPathParser::anArcTooSmallToReachIsEnlarged()
{
    Budget budget(Plenty, Plenty);
    const PathParser parser("M0 0A2 1 0 0 1 8 0", budget);
    QVERIFY(offEllipse(parser.path(), {4, 0}, 4, 2) < 0.001);
    QVERIFY(parser.path().pointAtPercent(0.5).y() < -1.9);
}

void TestPathParser::aTurnedArcIsTurned()
{
    // An ellipse three times as wide as high, rotated by a right angle, is three times as high as wide.
    Budget budget(Plenty, Plenty);
    const PathParser upright("M1 0A3 1 90 0 1 0 3", budget);
    QVERIFY(offEllipse(upright.path(), {0, 0}, 1, 3) < 0.001);
    // Rotated by 45 degrees clockwise, its long axis goes down to the right.
    const PathParser slanted("M-3-3A3 0.5 45 0 1 3 3", budget);
    const QPainterPath turnedBack = QTransform().rotate(-45).map(slanted.path());
    QVERIFY(offEllipse(turnedBack, {0, 0}, std::sqrt(18), std::sqrt(18) / 6) < 0.001);
    QVERIFY(turnedBack.pointAtPercent(0.5).y() < 0);
}

void TestPathParser::anArcThatIsNoneIsALine_data()
{
    QTest::addColumn<QString>("data");
    QTest::addColumn<QString>("expected");

    QTest::newRow("no width") << "M1 2A0 5 0 0 1 3 8"
                              << "M 1 2 L 3 8";
    QTest::newRow("no height") << "M1 2A5 0 0 0 1 3 8"
                               << "M 1 2 L 3 8";
    QTest::newRow("hardly a width") << "M1 2A1e-310 1 0 0 1 3 8"
                                    << "M 1 2 L 3 8";
    QTest::newRow("to where it begins") << "M1 2A5 5 0 1 1 1 2L3 4"
                                        << "M 1 2 L 3 4";
}

void TestPathParser::anArcThatIsNoneIsALine()
{
    commands();
}

void TestPathParser::whatIsTooShortToBeSeenHasCaps_data()
{
    QTest::addColumn<QString>("data");
    QTest::addColumn<int>("elementCount");
    QTest::newRow("a line to where it is") << "M5 5h0" << 2;
    QTest::newRow("closed at once") << "M5 5z" << 2;
    QTest::newRow("closed at once, and one more") << "M5 5zM7 7z" << 4;
    QTest::newRow("a line back") << "M5 5h1h-1" << 3;
    QTest::newRow("a move alone") << "M5 5" << 1;
}

void TestPathParser::whatIsTooShortToBeSeenHasCaps()
{
    QFETCH(QString, data);
    QFETCH(int, elementCount);
    Budget budget(Plenty, Plenty);
    const PathParser parser(data, budget);
    QCOMPARE(described(parser.error()), QString());
    QCOMPARE(parser.path().elementCount(), elementCount);
    QPainterPathStroker stroker;
    stroker.setWidth(2);
    stroker.setCapStyle(Qt::RoundCap);
    QCOMPARE(stroker.createStroke(parser.path()).contains(QPointF(5.5, 5.5)), elementCount > 1);
}

void TestPathParser::lettersWithoutNumbers()
{
    Budget budget(Plenty, Plenty);
    const QPainterPath plain = PathParser(QStringLiteral("M1 2L3 4M5 6L7 8"), budget).path();
    const PathParser parser(QStringLiteral(" C M1 2 L3 4c a, M5 6LL7 8 m"), budget);
    QCOMPARE(described(parser.error()), QString());
    QVERIFY(parser.path() == plain);
    QVERIFY(PathParser(QStringLiteral("M"), budget).path().isEmpty());
}

void TestPathParser::faults_data()
{
    QTest::addColumn<QString>("data");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("kept");

    QTest::newRow("no command at first") << "1 2 L 3 4"
                                         << "Damaged: no command in path data at 0"
                                         << "";
    QTest::newRow("unknown command") << "M1 2L3 4X5 6"
                                     << "Damaged: no command in path data at 8"
                                     << "M 1 2 L 3 4";
    QTest::newRow("a number after Z") << "M1 2L3 4Z5"
                                      << "Damaged: no command in path data at 9"
                                      << "M 1 2 L 3 4 L 1 2";
    QTest::newRow("a word") << "M1 2 none"
                            << "Damaged: no command in path data at 5"
                            << "M 1 2";
    QTest::newRow("no number") << "M1 2L?"
                               << "Damaged: no number in path data at 5"
                               << "M 1 2";
    QTest::newRow("one number of two") << "M1 2L3 4 5"
                                       << "Damaged: no number in path data at 10"
                                       << "M 1 2 L 3 4";
    QTest::newRow("a command for a number") << "M1 2L3L4 5"
                                            << "Damaged: no number in path data at 6"
                                            << "M 1 2";
    QTest::newRow("a sign alone") << "M1 2L-,3"
                                  << "Damaged: no number in path data at 5"
                                  << "M 1 2";
    QTest::newRow("a point alone") << "M1 2L. 3"
                                   << "Damaged: no number in path data at 5"
                                   << "M 1 2";
    QTest::newRow("an exponent without digits") << "M1 2L1e 3"
                                                << "Damaged: no number in path data at 6"
                                                << "M 1 2";
    QTest::newRow("a digit of another script")
        << QString::fromUtf8("M\xd9\xa1 2") << "Damaged: no number in path data at 1"
        << "";
    QTest::newRow("no flag") << "M1 2A3 3 0 2 1 5 6"
                             << "Damaged: no flag in path data at 11"
                             << "M 1 2";
    QTest::newRow("no flag any more") << "M1 2A3 3 0 1"
                                      << "Damaged: no flag in path data at 12"
                                      << "M 1 2";
    QTest::newRow("too large a number") << "M1 2L3 16777217"
                                        << "Damaged: too large a number in path data at 7"
                                        << "M 1 2";
    QTest::newRow("infinite") << "M1 2L3 1e999"
                              << "Damaged: too large a number in path data at 7"
                              << "M 1 2";
    QTest::newRow("moved too far") << "M16777216 0m1 0"
                                   << "Damaged: too large a coordinate in path data at 15"
                                   << "M 1.67772e+07 0";
    QTest::newRow("a line too far") << "M16777216 0h1"
                                    << "Damaged: too large a coordinate in path data at 13"
                                    << "M 1.67772e+07 0";
    QTest::newRow("a control point too far") << "M16777216 0c1 0 0 0 0 0"
                                             << "Damaged: too large a coordinate in path data at 23"
                                             << "M 1.67772e+07 0";
}

void TestPathParser::faults()
{
    QFETCH(QString, data);
    QFETCH(QString, fault);
    QFETCH(QString, kept);
    Budget budget(Plenty, Plenty);
    const PathParser parser(data, budget);
    QCOMPARE(described(parser.error()), fault);
    QCOMPARE(elements(parser.path()), kept);
}

void TestPathParser::segmentsAreCounted_data()
{
    QTest::addColumn<QString>("data");
    QTest::addColumn<qint64>("segments");

    QTest::newRow("lines") << "M0 0L1 1 2 2H3V4h5v6" << qint64(7);
    QTest::newRow("curves") << "M0 0C1 1 2 2 3 3S1 2 3 4Q1 2 3 4T1 2" << qint64(5);
    QTest::newRow("closing") << "M0 0L1 1ZZZ" << qint64(5);
    QTest::newRow("an arc's quarters") << "M3 0A5 5 0 1 1 3 8" << qint64(4);
}

void TestPathParser::segmentsAreCounted()
{
    QFETCH(QString, data);
    QFETCH(qint64, segments);
    Budget budget(Plenty, Plenty);
    const PathParser parser(data, budget);
    QVERIFY(!parser.error());
    QCOMPARE(Plenty - budget.workLeft(), segments * PathParser::SegmentWork + data.size() * PathParser::CharacterWork);
    QCOMPARE(Plenty - budget.bytesLeft(), segments * PathParser::SegmentBytes);
}

void TestPathParser::whatIsBeyondTheBudgetIsLeftOut()
{
    const QString data = "M1 2L3 4 5 6 7 8 9 10";
    const qint64 characters = data.size() * PathParser::CharacterWork;
    const QString tooMuch = "TooMuch: drawing takes too much";
    for (const bool isWork : {true, false}) {
        Budget budget(characters + (isWork ? 3 * PathParser::SegmentWork : Plenty),
                      isWork ? Plenty : 3 * PathParser::SegmentBytes);
        const PathParser parser(data, budget);
        QCOMPARE(described(parser.error()), tooMuch);
        QCOMPARE(elements(parser.path()), QString("M 1 2 L 3 4 L 5 6"));
        const PathParser another("M1 2", budget);
        QCOMPARE(described(another.error()), tooMuch);
        QVERIFY(another.path().isEmpty());
    }
    // A text without a segment costs its characters.
    Budget exact(100 * PathParser::CharacterWork, 0);
    QVERIFY(!PathParser(QString(100, ' '), exact).error());
    Budget tooLittle(100 * PathParser::CharacterWork - 1, 0);
    QCOMPARE(described(PathParser(QString(100, ' '), tooLittle).error()), tooMuch);
}

void TestPathParser::anythingIsRead()
{
    const QStringList pieces = {"M",    "m", "L", "h",  "v",  "C",   "s",         "Q",    "t",      "A", "a", "z",
                                "Z",    "0", "1", "-1", ".5", "1e7", "-16777216", "1e-9", "1e-300", "3", "7", "e5",
                                "e-40", " ", ",", "-",  "+",  ".",   "10",        "0 0",  "1 1",    "x"};
    QRandomGenerator random(4711);
    int whole = 0;
    for (int i = 0; i < 20000; ++i) {
        QString data = "M1 1";
        for (int length = random.bounded(40); length > 0; --length)
            data += pieces.at(random.bounded(pieces.size())) + (random.bounded(2) == 0 ? " " : "");
        Budget budget(Plenty, Plenty);
        const PathParser parser(data, budget);
        whole += described(parser.error()).isEmpty() ? 1 : 0;
        for (int at = 0; at < parser.path().elementCount(); ++at) {
            const QPainterPath::Element element = parser.path().elementAt(at);
            QVERIFY2(std::abs(element.x) < 4 * PathPainter::MaxCoordinate
                         && std::abs(element.y) < 4 * PathPainter::MaxCoordinate,
                     qPrintable(data));
        }
    }
    QVERIFY(whole > 100 && whole < 19900);
}

QTEST_GUILESS_MAIN(TestPathParser)
#include "tst_pathparser.moc"
