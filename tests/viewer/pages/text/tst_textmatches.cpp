// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/text/TextMatches.h"

#include <QtTest>

using Viewer::TextMatches;

class TestTextMatches : public QObject
{
    Q_OBJECT

private slots:
    void findsAll();
    void nextAndPrevious();
    void nothing();
    void matchesHaveACeiling();
    void wantedTextHasACeiling();
};

void TestTextMatches::findsAll()
{
    const TextMatches matches(QStringLiteral("aaAa <a> b"), QStringLiteral("AA"));
    QCOMPARE(matches.count(), 2);
    QCOMPARE(matches.place(0), 0);
    QCOMPARE(matches.place(1), 2);
    QCOMPARE(matches.length(), 2);
    QVERIFY(!matches.isCut());
}

void TestTextMatches::nextAndPrevious()
{
    const TextMatches matches(QStringLiteral("x..x..x"), QStringLiteral("x"));
    QCOMPARE(matches.nextFrom(0), 0);
    QCOMPARE(matches.nextFrom(1), 1);
    QCOMPARE(matches.nextFrom(6), 2);
    QCOMPARE(matches.nextFrom(7), 0);
    QCOMPARE(matches.lastBefore(0), 2);
    QCOMPARE(matches.lastBefore(1), 0);
    QCOMPARE(matches.lastBefore(7), 2);
}

void TestTextMatches::nothing()
{
    for (const TextMatches &matches :
         {TextMatches(), TextMatches(QStringLiteral("abc"), QString()),
          TextMatches(QStringLiteral("abc"), QStringLiteral("d")), TextMatches(QString(), QStringLiteral("d"))}) {
        QCOMPARE(matches.count(), 0);
        QCOMPARE(matches.nextFrom(0), -1);
        QCOMPARE(matches.lastBefore(5), -1);
    }
}

void TestTextMatches::matchesHaveACeiling()
{
    QVERIFY(!TextMatches(QString(TextMatches::MaxMatches, QLatin1Char('a')), QStringLiteral("a")).isCut());
    const TextMatches matches(QString(TextMatches::MaxMatches + 1, QLatin1Char('a')), QStringLiteral("a"));
    QCOMPARE(matches.count(), TextMatches::MaxMatches);
    QVERIFY(matches.isCut());
}

void TestTextMatches::wantedTextHasACeiling()
{
    const QString text(1000, QLatin1Char('a'));
    QCOMPARE(TextMatches(text, text).length(), TextMatches::MaxWanted);
    QCOMPARE(TextMatches(text, text).count(), 3);
}

QTEST_MAIN(TestTextMatches)
#include "tst_textmatches.moc"
