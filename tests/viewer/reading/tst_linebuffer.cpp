// SPDX-License-Identifier: LGPL-2.1-or-later
#include "LineBuffer.h"

#include <QtTest>

using Viewer::LineBuffer;

class TestLineBuffer : public QObject
{
    Q_OBJECT

private slots:
    void lines();
    void pieces();
    void limit_data();
    void limit();
};

void TestLineBuffer::lines()
{
    LineBuffer lines(8);
    QByteArray line;
    QVERIFY(!lines.take(&line));
    QVERIFY(!lines.hasRest());
    lines.add("one\n\ntwo\nth");
    QVERIFY(lines.take(&line));
    QCOMPARE(line, QByteArray("one"));
    QVERIFY(lines.take(&line));
    QCOMPARE(line, QByteArray());
    QVERIFY(lines.take(&line));
    QCOMPARE(line, QByteArray("two"));
    QVERIFY(!lines.take(&line));
    QVERIFY(lines.hasRest());
    lines.add("ree\n");
    QVERIFY(lines.take(&line));
    QCOMPARE(line, QByteArray("three"));
    QVERIFY(!lines.hasRest());
    QVERIFY(!lines.isTooLong());
}

void TestLineBuffer::pieces()
{
    const QByteArray text("first\nsecond\n\nfourth\n");
    LineBuffer lines(8);
    QList<QByteArray> taken;
    for (const char byte : text) {
        lines.add(QByteArray(1, byte));
        for (QByteArray line; lines.take(&line);)
            taken.append(line);
    }
    QCOMPARE(taken, (QList<QByteArray>{"first", "second", "", "fourth"}));
}

void TestLineBuffer::limit_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isTooLong");
    QTest::newRow("a line of the limit") << QByteArray("12345678\n") << false;
    QTest::newRow("a line above it") << QByteArray("123456789\n") << true;
    QTest::newRow("a part of the limit") << QByteArray("12345678") << false;
    QTest::newRow("a part above it") << QByteArray("123456789") << true;
    QTest::newRow("behind another line") << QByteArray("1\n123456789") << true;
}

void TestLineBuffer::limit()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isTooLong);
    LineBuffer lines(8);
    lines.add(bytes);
    QByteArray line;
    while (lines.take(&line)) {
    }
    QCOMPARE(lines.isTooLong(), isTooLong);
    // Nothing follows a line that is too long.
    lines.add("\nmore\n");
    QCOMPARE(lines.take(&line), !isTooLong);
}

QTEST_GUILESS_MAIN(TestLineBuffer)
#include "tst_linebuffer.moc"
