// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/paint/PathOutline.h"
#include "drawable/vector/PathTrim.h"

#include <QPainter>
#include <QRandomGenerator>
#include <QtTest>

#include <cmath>

using namespace SorrelKit;

namespace {

constexpr int Side = 64;
constexpr int Enlargement = 8;
constexpr qint64 Plenty = qint64(1) << 40;
const QSize canvas(Side, Side);
const QRectF visible(0, 0, Side, Side);

// Enlarged, because a painter replaces curves by lines that are off by some tenths of a pixel.
QImage filled(const QPainterPath &path)
{
    QImage image(canvas * Enlargement, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(Enlargement, Enlargement);
    painter.fillPath(path, Qt::black);
    return image;
}

// The average difference of the opacity of two images.
double difference(const QImage &a, const QImage &b)
{
    qint64 sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            sum += qAbs(qAlpha(a.pixel(x, y)) - qAlpha(b.pixel(x, y)));
    }
    return double(sum) / a.width() / a.height();
}

// Three closed figures of lines and curves, with points up to @p reach beyond the canvas.
QPainterPath randomPath(QRandomGenerator *random, int reach)
{
    const auto point = [&]() {
        return QPointF(random->bounded(Side + 2.0 * reach) - reach, random->bounded(Side + 2.0 * reach) - reach);
    };
    QPainterPath path;
    for (int figure = 0; figure < 3; ++figure) {
        path.moveTo(point());
        for (int i = 0; i < 4; ++i) {
            if (random->bounded(2) == 0) {
                path.lineTo(point());
            } else {
                const QPointF control1 = point();
                const QPointF control2 = point();
                path.cubicTo(control1, control2, point());
            }
        }
        path.closeSubpath();
    }
    path.setFillRule(random->bounded(2) == 0 ? Qt::WindingFill : Qt::OddEvenFill);
    return path;
}

} // namespace

/// The polygons that are painted for a path, and the parts that trimming keeps.
class TestPathOutline : public QObject
{
    Q_OBJECT

private slots:
    void whatIsSeenIsTheSame_data();
    void whatIsSeenIsTheSame();
    void everythingIsWithinTheRectangle();
    void whatIsFarAwayHasFewPoints();
    void transformationsAreApplied();
    void costsMoreTheMoreEdgesCross();
    void isGivenUpWhenItCostsTooMuch();
    void isGivenUpWhenItHasTooManyPoints();
    void trimmingKeepsItsShareOfTheLength_data();
    void trimmingKeepsItsShareOfTheLength();
};

void TestPathOutline::whatIsSeenIsTheSame_data()
{
    QTest::addColumn<int>("reach");
    QTest::newRow("within the canvas") << 0;
    QTest::newRow("a little beyond it") << 20;
    QTest::newRow("around it") << 200;
    QTest::newRow("far around it") << 5000;
}

void TestPathOutline::whatIsSeenIsTheSame()
{
    QFETCH(int, reach);
    QRandomGenerator random(7);
    int painted = 0;
    for (int i = 0; i < 30; ++i) {
        const QPainterPath path = randomPath(&random, reach);
        PathOutline outline(visible, QTransform(), canvas, Plenty);
        QVERIFY(outline.add(path, QTransform()));
        const QImage expected = filled(path);
        const double off = difference(filled(outline.polygons()), expected);
        QVERIFY2(off < 0.5, qPrintable(QStringLiteral("path %1: %2").arg(i).arg(off)));
        painted += difference(expected, filled(QPainterPath())) > 0 ? 1 : 0;
    }
    QVERIFY(painted > 10);
}

void TestPathOutline::everythingIsWithinTheRectangle()
{
    QRandomGenerator random(8);
    for (int i = 0; i < 200; ++i) {
        PathOutline outline(visible, QTransform(), canvas, Plenty);
        QVERIFY(outline.add(randomPath(&random, 100000), QTransform()));
        QVERIFY(visible.adjusted(-1e-9, -1e-9, 1e-9, 1e-9).contains(outline.polygons().controlPointRect()));
        QVERIFY(outline.area() <= Side * Side);
    }
}

void TestPathOutline::whatIsFarAwayHasFewPoints()
{
    QPainterPath path;
    for (int i = 0; i < 1000; ++i)
        path.addEllipse(QPointF(1000000, i * 1000), 90000, 90000);
    PathOutline outline(visible, QTransform(), canvas, Plenty);
    QVERIFY(outline.add(path, QTransform()));
    QVERIFY(outline.polygons().elementCount() < 6 * 1000);
    QCOMPARE(difference(filled(outline.polygons()), filled(QPainterPath())), 0.0);
}

void TestPathOutline::transformationsAreApplied()
{
    QPainterPath path;
    path.addRect(0, 0, 1, 1);
    PathOutline outline(QRectF(0, 0, 8, 8), QTransform::fromScale(8, 8), canvas, Plenty);
    QVERIFY(outline.add(path, QTransform(3, 0, 0, 20, 2, 1)));
    QCOMPARE(outline.polygons().boundingRect(), QRectF(2, 1, 3, 7));
    QCOMPARE(outline.area(), qint64(3 * 8 + 1) * (7 * 8));
}

void TestPathOutline::costsMoreTheMoreEdgesCross()
{
    const auto cost = [](int lines) {
        QPainterPath path;
        for (int i = 0; i < lines; ++i)
            path.lineTo(i % 2 == 0 ? Side : 0, Side * qreal(i) / lines);
        PathOutline outline(visible, QTransform(), canvas, Plenty);
        return outline.add(path, QTransform()) ? outline.edgeWork() : -1;
    };
    QVERIFY(cost(1) > 0);
    QVERIFY(cost(100) > 10 * cost(10) - cost(1));
    QVERIFY(cost(10000) > 100 * cost(100));
}

void TestPathOutline::isGivenUpWhenItCostsTooMuch()
{
    QRandomGenerator random(9);
    const QPainterPath path = randomPath(&random, 0);
    PathOutline whole(visible, QTransform(), canvas, Plenty);
    QVERIFY(whole.add(path, QTransform()));
    PathOutline enough(visible, QTransform(), canvas, whole.edgeWork());
    QVERIFY(enough.add(path, QTransform()));
    PathOutline tooLittle(visible, QTransform(), canvas, whole.edgeWork() - 1);
    QVERIFY(!tooLittle.add(path, QTransform()));
}

void TestPathOutline::isGivenUpWhenItHasTooManyPoints()
{
    QPainterPath path;
    for (int i = 0; i < PathOutline::MaxPoints; ++i)
        path.lineTo(i % 2, i % 3);
    PathOutline outline(visible, QTransform(), canvas, Plenty);
    QVERIFY(!outline.add(path, QTransform()));
    QVERIFY(outline.polygons().elementCount() < PathOutline::MaxPoints + 8);
}

void TestPathOutline::trimmingKeepsItsShareOfTheLength_data()
{
    QTest::addColumn<qreal>("start");
    QTest::addColumn<qreal>("end");
    QTest::addColumn<qreal>("offset");
    QTest::addColumn<qreal>("share");
    QTest::newRow("nothing trimmed") << 0.0 << 1.0 << 0.0 << 1.0;
    QTest::newRow("the start") << 0.25 << 1.0 << 0.0 << 0.75;
    QTest::newRow("the end") << 0.0 << 0.6 << 0.0 << 0.6;
    QTest::newRow("both") << 0.2 << 0.7 << 0.0 << 0.5;
    QTest::newRow("everything") << 0.4 << 0.4 << 0.0 << 0.0;
    QTest::newRow("moved on") << 0.2 << 0.7 << 0.2 << 0.5;
    QTest::newRow("moved on over the end") << 0.2 << 0.7 << 0.6 << 0.5;
    QTest::newRow("moved back") << 0.3 << 0.7 << -0.2 << 0.4;
    QTest::newRow("from the end to the start") << 0.8 << 0.2 << 0.0 << 0.4;
    QTest::newRow("beyond the range") << -3.0 << 0.5 << 0.0 << 0.5;
}

void TestPathOutline::trimmingKeepsItsShareOfTheLength()
{
    QFETCH(qreal, start);
    QFETCH(qreal, end);
    QFETCH(qreal, offset);
    QFETCH(qreal, share);
    QPainterPath path;
    path.moveTo(30, 10);
    path.arcTo(QRectF(-10, -10, 40, 40), 0, 300);
    path.lineTo(40, 60);
    const QPainterPath trimmed = PathTrim(start, end, offset).trimmed(path);
    QVERIFY(qAbs(trimmed.length() - share * path.length()) < 0.01 * path.length());
    QCOMPARE(PathTrim(start, end, offset).isNone(), trimmed == path);
}

QTEST_GUILESS_MAIN(TestPathOutline)
#include "tst_pathoutline.moc"
