// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/treemap/TreemapLayout.h"

#include <QtTest>

#include <algorithm>

using Viewer::TreemapLayout;

class TestTreemapLayout : public QObject
{
    Q_OBJECT

private slots:
    void knownExample();
    void areasAreProportional_data();
    void areasAreProportional();
    void emptySizes();
    void emptyPlace();
    void sizesBelowThePrecision();
    void stepsAreBounded_data();
    void stepsAreBounded();
};

// The sizes 6, 6, 4, 3, 2, 2, 1 in 6 by 4 have a known squarified layout.
void TestTreemapLayout::knownExample()
{
    const TreemapLayout layout({6, 6, 4, 3, 2, 2, 1}, QRectF(0, 0, 6, 4));
    const QVector<QRectF> expected{{0, 0, 3, 2},
                                   {0, 2, 3, 2},
                                   {3, 0, 12.0 / 7, 7.0 / 3},
                                   {3 + 12.0 / 7, 0, 9.0 / 7, 7.0 / 3},
                                   {3, 7.0 / 3, 1.2, 5.0 / 3},
                                   {4.2, 7.0 / 3, 1.2, 5.0 / 3},
                                   {5.4, 7.0 / 3, 0.6, 5.0 / 3}};
    QCOMPARE(layout.rects().size(), expected.size());
    for (int i = 0; i < int(expected.size()); ++i) {
        const QRectF &rect = layout.rects().at(i);
        QCOMPARE(rect.left() + 1, expected.at(i).left() + 1);
        QCOMPARE(rect.top() + 1, expected.at(i).top() + 1);
        QCOMPARE(rect.width(), expected.at(i).width());
        QCOMPARE(rect.height(), expected.at(i).height());
    }
}

void TestTreemapLayout::areasAreProportional_data()
{
    QTest::addColumn<QVector<qint64>>("sizes");
    QTest::newRow("one") << QVector<qint64>{5};
    QTest::newRow("equal") << QVector<qint64>(1000, 7);
    QVector<qint64> falling;
    for (qint64 size = qint64(1) << 40; size > 0; size /= 2)
        falling.append(size);
    QTest::newRow("falling") << falling;
    QVector<qint64> steps;
    for (int i = 3000; i > 0; --i)
        steps.append(i);
    QTest::newRow("steps") << steps;
}

void TestTreemapLayout::areasAreProportional()
{
    QFETCH(const QVector<qint64>, sizes);
    const QRectF place(10, 20, 800, 300);
    const TreemapLayout layout(sizes, place);
    double all = 0;
    for (const qint64 size : sizes)
        all += double(size);
    double area = 0;
    for (int i = 0; i < int(sizes.size()); ++i) {
        const QRectF &rect = layout.rects().at(i);
        const double expected = double(sizes.at(i)) / all * 800 * 300;
        // The smallest parts of a large place have few digits left.
        QVERIFY(qAbs(rect.width() * rect.height() - expected) <= 1e-6 * expected + 1e-7);
        area += rect.width() * rect.height();
        QVERIFY(place.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(rect));
        const int neighbours = qMin(i, 20);
        for (int other = i - neighbours; other < i; ++other) {
            const QRectF common = rect & layout.rects().at(other);
            QVERIFY(common.width() < 1e-6 || common.height() < 1e-6);
        }
    }
    QVERIFY(qAbs(area - 800 * 300) < 1e-3);
}

void TestTreemapLayout::emptySizes()
{
    const TreemapLayout layout({3, 1, 0, 0}, QRectF(0, 0, 40, 10));
    QCOMPARE(layout.rects(), (QVector<QRectF>{{0, 0, 30, 10}, {30, 0, 10, 10}, {}, {}}));
    QCOMPARE(TreemapLayout({0, 0}, QRectF(0, 0, 40, 10)).rects(), QVector<QRectF>(2));
    QCOMPARE(TreemapLayout({}, QRectF(0, 0, 40, 10)).rects(), QVector<QRectF>());
}

void TestTreemapLayout::emptyPlace()
{
    QCOMPARE(TreemapLayout({3, 1}, QRectF(0, 0, 0, 10)).rects(), QVector<QRectF>(2));
    QCOMPARE(TreemapLayout({3, 1}, QRectF(0, 0, -5, 10)).rects(), QVector<QRectF>(2));
}

// A size that is too small for the precision of the place may have no area, but no other one suffers.
void TestTreemapLayout::sizesBelowThePrecision()
{
    QVector<qint64> sizes(60000, qint64(1) << 46);
    sizes.append(QVector<qint64>(5535, 1));
    const QRectF place(0, 0, 1000, 700);
    const TreemapLayout layout(sizes, place);
    for (int i = 0; i < int(sizes.size()); ++i) {
        const QRectF &rect = layout.rects().at(i);
        QVERIFY(rect.isEmpty() || place.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(rect));
        QVERIFY(i >= 60000 || qAbs(rect.width() * rect.height() - 700000.0 / 60000) < 1e-6);
    }
    QVERIFY(layout.steps() <= 2 * sizes.size());
}

void TestTreemapLayout::stepsAreBounded_data()
{
    QTest::addColumn<QVector<qint64>>("sizes");
    constexpr int Most = 65535;
    QTest::newRow("equal") << QVector<qint64>(Most, 1);
    QVector<qint64> falling;
    for (int i = 0; i < Most; ++i)
        falling.append((qint64(1) << 46) >> (i / 2500));
    QTest::newRow("falling") << falling;
    QVector<qint64> steps;
    for (int i = Most; i > 0; --i)
        steps.append(i);
    QTest::newRow("steps") << steps;
}

void TestTreemapLayout::stepsAreBounded()
{
    QFETCH(const QVector<qint64>, sizes);
    for (const QRectF &place : {QRectF(0, 0, 1000, 700), QRectF(0, 0, 3, 2000)}) {
        const TreemapLayout layout(sizes, place);
        QVERIFY(layout.steps() >= sizes.size());
        QVERIFY(layout.steps() <= 2 * sizes.size());
    }
}

QTEST_MAIN(TestTreemapLayout)
#include "tst_treemaplayout.moc"
