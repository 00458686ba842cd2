// SPDX-License-Identifier: LGPL-2.1-or-later
#include "AndroidVersion.h"

#include <QtTest>

#include <limits>

class TestAndroidVersion : public QObject
{
    Q_OBJECT

private slots:
    void text_data();
    void text();
    void withLevel_data();
    void withLevel();
    void range_data();
    void range();
};

void TestAndroidVersion::text_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<QString>("expected");
    QTest::newRow("no level") << 0 << QString();
    QTest::newRow("the first") << 1 << "Android 1.0 (1)";
    QTest::newRow("usual") << 21 << "Android 5.0 (21)";
    QTest::newRow("the last") << 36 << "Android 16 (36)";
    QTest::newRow("newer") << 37 << "SDK 37";
    QTest::newRow("a preview") << 10000 << "a preview of Android";
}

void TestAndroidVersion::text()
{
    QFETCH(int, level);
    QTEST(AndroidVersion::text(level), "expected");
}

void TestAndroidVersion::withLevel_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<QString>("expected");
    QTest::newRow("the first") << 1 << "Android 1.0 (API 1)";
    QTest::newRow("usual") << 24 << "Android 7.0 (API 24)";
    QTest::newRow("newer") << 37 << "API 37";
    QTest::newRow("a preview") << 10000 << "a preview of Android";
}

void TestAndroidVersion::withLevel()
{
    QFETCH(int, level);
    QTEST(AndroidVersion::withLevel(level), "expected");
}

void TestAndroidVersion::range_data()
{
    constexpr int Newest = std::numeric_limits<int>::max();
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<QString>("expected");
    QTest::newRow("all newer ones") << 24 << Newest << "Android 7.0 and later";
    QTest::newRow("all") << 0 << Newest << "Android 1.0 and later";
    QTest::newRow("two") << 24 << 31 << "Android 7.0 to 12";
    QTest::newRow("one") << 28 << 28 << "Android 9";
    QTest::newRow("to one without a name") << 30 << 99 << "Android 11 to SDK 99";
    QTest::newRow("from one without a name") << 98 << 99 << "SDK 98 to SDK 99";
    QTest::newRow("to a preview") << 30 << 10000 << "Android 11 to a preview of Android";
    QTest::newRow("from a preview") << 10000 << Newest << "a preview of Android and later";
}

void TestAndroidVersion::range()
{
    QFETCH(int, first);
    QFETCH(int, last);
    QTEST(AndroidVersion::range(first, last), "expected");
}

QTEST_GUILESS_MAIN(TestAndroidVersion)
#include "tst_androidversion.moc"
