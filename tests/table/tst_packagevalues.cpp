// SPDX-License-Identifier: LGPL-2.1-or-later
#include "table/PackageValues.h"

#include <QMap>
#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>
#include <limits>

namespace {

/// Data words of a resource's values, in their order.
QVector<int> dataOf(const PackageValues &values, int typeId, int entry)
{
    QVector<int> data;
    for (const ResourceEntry &value : values.values(typeId, entry))
        data.append(value.data());
    return data;
}

/// Values of type 1 with these entry indices. Their data words count up from 0.
PackageValues valuesAt(const QVector<int> &entries)
{
    PackageValues values;
    int data = 0;
    for (const int entry : entries)
        values.append(1, {entry, 0, 0, data++});
    values.sort();
    return values;
}

} // namespace

class TestPackageValues : public QObject
{
    Q_OBJECT

private slots:
    void anEntryKeepsItsFields_data();
    void anEntryKeepsItsFields();
    void nothingIsFoundInNothing();
    void valuesOfAResourceStayInTheirOrder();
    void typesAreApart();
    void entriesMayComeInAnyOrder_data();
    void entriesMayComeInAnyOrder();
    void everyOrderAnswersAlike_data();
    void everyOrderAnswersAlike();
    void countIsOfWhatWasAppended();
    void typesBelowOneAreCountedAndDropped();
    void largestNumberOfValues();
    void copiesAreIndependent();
};

void TestPackageValues::anEntryKeepsItsFields_data()
{
    QTest::addColumn<int>("entryIndex");
    QTest::addColumn<int>("configIndex");
    QTest::addColumn<int>("dataType");
    QTest::addColumn<int>("data");
    constexpr int Largest = std::numeric_limits<int>::max();
    constexpr int Smallest = std::numeric_limits<int>::min();
    QTest::newRow("zeros") << 0 << 0 << 0 << 0;
    QTest::newRow("small") << 1 << 2 << 3 << 4;
    QTest::newRow("largest") << Largest << ResourceEntry::MaxConfigs - 1 << 0x7f << Largest;
    QTest::newRow("smallest") << 0 << 0 << -0x80 << Smallest;
    QTest::newRow("a type of all bits") << 5 << 1 << -1 << -1;
}

void TestPackageValues::anEntryKeepsItsFields()
{
    QFETCH(const int, entryIndex);
    QFETCH(const int, configIndex);
    QFETCH(const int, dataType);
    QFETCH(const int, data);
    const ResourceEntry entry(entryIndex, configIndex, dataType, data);
    QCOMPARE(entry.entryIndex(), entryIndex);
    QCOMPARE(entry.configIndex(), configIndex);
    QCOMPARE(entry.dataType(), dataType);
    QCOMPARE(entry.data(), data);
    QCOMPARE(sizeof entry, size_t(12));
}

void TestPackageValues::nothingIsFoundInNothing()
{
    PackageValues values;
    values.sort();
    for (const int typeId : {-1, 0, 1, 0x7f, 0x80, 1000})
        QCOMPARE(dataOf(values, typeId, 0), QVector<int>());
    QVERIFY(!values.hasResourceOfMoreThan(0));
}

void TestPackageValues::valuesOfAResourceStayInTheirOrder()
{
    const PackageValues values = valuesAt({2, 7, 2, 0, 7, 2});
    QCOMPARE(dataOf(values, 1, 0), QVector<int>({3}));
    QCOMPARE(dataOf(values, 1, 1), QVector<int>());
    QCOMPARE(dataOf(values, 1, 2), QVector<int>({0, 2, 5}));
    QCOMPARE(dataOf(values, 1, 7), QVector<int>({1, 4}));
    QCOMPARE(dataOf(values, 1, 8), QVector<int>());
    QCOMPARE(dataOf(values, 1, -1), QVector<int>());
}

void TestPackageValues::typesAreApart()
{
    PackageValues values;
    values.append(1, {3, 0, 0, 10});
    values.append(PackageValues::LargestTypeId, {3, 0, 0, 20});
    values.append(2, {3, 0, 0, 30});
    values.append(1, {3, 0, 0, 40});
    values.sort();
    QCOMPARE(dataOf(values, 1, 3), QVector<int>({10, 40}));
    QCOMPARE(dataOf(values, 2, 3), QVector<int>({30}));
    QCOMPARE(dataOf(values, PackageValues::LargestTypeId, 3), QVector<int>({20}));
    QCOMPARE(dataOf(values, 3, 3), QVector<int>());
}

void TestPackageValues::entriesMayComeInAnyOrder_data()
{
    QTest::addColumn<QVector<int>>("entries");
    QTest::newRow("ascending") << QVector<int>{0, 1, 2, 3};
    QTest::newRow("ascending, with gaps") << QVector<int>{5, 100, 70000};
    QTest::newRow("descending") << QVector<int>{9, 8, 3, 0};
    QTest::newRow("a large index, too large to count up to") << QVector<int>{1 << 25, 4, 1 << 24, 4};
    QTest::newRow("the largest") << QVector<int>{std::numeric_limits<int>::max(), 0};
    QTest::newRow("below zero") << QVector<int>{3, -1, std::numeric_limits<int>::min(), 3};
}

void TestPackageValues::entriesMayComeInAnyOrder()
{
    QFETCH(const QVector<int>, entries);
    const PackageValues values = valuesAt(entries);
    for (const int entry : entries) {
        QVector<int> expected;
        for (int i = 0; i < entries.size(); ++i) {
            if (entries.at(i) == entry)
                expected.append(i);
        }
        QCOMPARE(dataOf(values, 1, entry), expected);
    }
}

void TestPackageValues::everyOrderAnswersAlike_data()
{
    QTest::addColumn<int>("largest");
    QTest::newRow("few resources of many values") << 20;
    QTest::newRow("many resources") << 5000;
    QTest::newRow("indices that are not counted") << 100000000;
}

void TestPackageValues::everyOrderAnswersAlike()
{
    QFETCH(const int, largest);
    QRandomGenerator random(3);
    for (int round = 0; round < 20; ++round) {
        PackageValues values;
        QMap<QPair<int, int>, QVector<int>> model;
        for (int chunk = 0; chunk < 30; ++chunk) {
            const int typeId = 1 + random.bounded(3);
            const int count = random.bounded(100);
            // The reserved space may be too small, too large, or missing.
            if (random.bounded(2) == 0)
                values.reserve(typeId, random.bounded(200));
            QVector<int> entries;
            for (int i = 0; i < count; ++i)
                entries.append(random.bounded(largest));
            if (random.bounded(2) == 0)
                std::sort(entries.begin(), entries.end());
            for (const int entry : entries) {
                const int data = int(random.generate());
                values.append(typeId, {entry, chunk, 0, data});
                model[qMakePair(typeId, entry)].append(data);
            }
        }
        values.sort();
        int most = 0;
        for (auto resource = model.cbegin(); resource != model.cend(); ++resource) {
            QCOMPARE(dataOf(values, resource.key().first, resource.key().second), resource.value());
            most = qMax(most, int(resource.value().size()));
        }
        QVERIFY(!values.hasResourceOfMoreThan(most));
        QVERIFY(values.hasResourceOfMoreThan(most - 1));
    }
}

void TestPackageValues::countIsOfWhatWasAppended()
{
    PackageValues values;
    QCOMPARE(values.count(), 0);
    values.reserve(1, 1000);
    QCOMPARE(values.count(), 0);
    values.append(1, {0, 0, 0, 0});
    values.append(2, {0, 0, 0, 0});
    QCOMPARE(values.count(), 2);
    values.sort();
    QCOMPARE(values.count(), 2);
}

void TestPackageValues::typesBelowOneAreCountedAndDropped()
{
    PackageValues values;
    for (const int typeId : {0, -1, -0x80}) {
        values.reserve(typeId, 10);
        values.append(typeId, {0, 0, 0, 1});
    }
    values.sort();
    QCOMPARE(values.count(), 3);
    for (const int typeId : {0, -1, -0x80})
        QCOMPARE(dataOf(values, typeId, 0), QVector<int>());
}

void TestPackageValues::largestNumberOfValues()
{
    const PackageValues values = valuesAt({1, 2, 2, 2, 5, 5});
    QVERIFY(values.hasResourceOfMoreThan(2));
    QVERIFY(!values.hasResourceOfMoreThan(3));
    QVERIFY(!values.hasResourceOfMoreThan(100));
}

void TestPackageValues::copiesAreIndependent()
{
    const PackageValues first = valuesAt({1});
    PackageValues copy = first;
    copy = valuesAt({1, 1});
    QCOMPARE(dataOf(first, 1, 1), QVector<int>({0}));
    QCOMPARE(dataOf(copy, 1, 1), QVector<int>({0, 1}));
}

QTEST_GUILESS_MAIN(TestPackageValues)
#include "tst_packagevalues.moc"
