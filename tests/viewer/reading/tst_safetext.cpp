// SPDX-License-Identifier: LGPL-2.1-or-later
#include "SafeText.h"

#include <QtTest>

using namespace Viewer;

namespace {

QString bytes(const char *text)
{
    return QString::fromUtf8(text);
}

} // namespace

class TestSafeText : public QObject
{
    Q_OBJECT

private slots:
    void fields_data();
    void fields();
    void parts();
    void lines();
    void cuts();
};

void TestSafeText::fields_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("safe");
    QTest::newRow("plain") << bytes("Notes & <b>more</b>") << bytes("Notes & <b>more</b>");
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("white space") << bytes(" a\n\tb\u2028c  d ") << bytes("a b c d");
    QTest::newRow("control characters") << bytes("a\x1b[2Jb") << bytes("a\uFFFD[2Jb");
    QTest::newRow("an override of direction") << bytes("gpj.\u202Eexe") << bytes("gpj.\uFFFDexe");
    QTest::newRow("an isolate without an end") << bytes("a\u2067b") << bytes("a\uFFFDb");
    QTest::newRow("right to left") << bytes("\u05E9\u05DC\u05D5\u05DD!")
                                   << bytes("\u2068\u05E9\u05DC\u05D5\u05DD!\u2069");
}

void TestSafeText::fields()
{
    QFETCH(QString, text);
    QFETCH(QString, safe);
    QCOMPARE(safeText(text), safe);
}

void TestSafeText::parts()
{
    QCOMPARE(safePart(bytes("Notes")), bytes("\u2068Notes\u2069"));
    QCOMPARE(safePart(bytes("\u05E9")), bytes("\u2068\u05E9\u2069"));
    QCOMPARE(safePart(QString()), QString());
}

void TestSafeText::lines()
{
    QCOMPARE(safeLines(bytes("<a>\n\t<b\u202E/>\n")), bytes("<a>\n    <b\uFFFD/>\n"));
    QCOMPARE(safeLines(bytes("\u05E9\nb")), bytes("\u2068\u05E9\u2069\nb"));
    QCOMPARE(safeLines(QString()), QString());
}

void TestSafeText::cuts()
{
    const QString most(MaxSafeText, QLatin1Char('a'));
    QCOMPARE(safeText(most), most);
    QCOMPARE(safeText(most + QLatin1Char('b')), most + bytes("\u2026"));
    // White space does not count, but only so much of it is looked at.
    QCOMPARE(safeText(QString(MaxSafeText, QLatin1Char(' ')) + bytes("a")), bytes("a"));
    QCOMPARE(safeText(QString(3 * MaxSafeText, QLatin1Char(' ')) + bytes("a")), bytes("\u2026"));
}

QTEST_GUILESS_MAIN(TestSafeText)
#include "tst_safetext.moc"
