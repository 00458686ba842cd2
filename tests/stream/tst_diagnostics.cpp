// SPDX-License-Identifier: LGPL-2.1-or-later
#include "LogCapture.h"
#include "stream/Diagnostics.h"

#include <QtTest>

using namespace fixture;
using Code = Diagnostics::Code;

class TestDiagnostics : public QObject
{
    Q_OBJECT

private slots:
    void eachIsPrinted_data();
    void eachIsPrinted();
    void linesAreOfTheCaller();
    void itemsUpToTheCeiling();
    void quietOnesAreKept();
};

void TestDiagnostics::eachIsPrinted_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("line");
    const auto row = [](Code code, const char *line) { QTest::newRow(line) << int(code) << QString::fromLatin1(line); };
    row(Code::UnexpectedTableChunk, "Skipping unexpected 0x002a chunk");
    row(Code::UnknownStringPool, "Skipping unknown string pool at 2a");
    row(Code::UnexpectedDocumentChunk, "Unexpected chunk 0x002a");
    row(Code::UnknownElementNamespace, "Unknown namespace a for element b");
    row(Code::UnknownAttributeNamespace, "Unknown namespace a");
    row(Code::NoAndroidNamespace, "Android namespace not defined");
}

void TestDiagnostics::eachIsPrinted()
{
    QFETCH(int, code);
    QFETCH(QString, line);
    const LogCapture log;
    Diagnostics diagnostics;
    diagnostics.add(SORREL_LOGGER, {Code(code), 42, QStringLiteral("a"), QStringLiteral("b")});
    QCOMPARE(log.texts(), QStringList{line});
    QCOMPARE(diagnostics.items().size(), 1);
    QCOMPARE(int(diagnostics.items().first().code), code);
    QCOMPARE(diagnostics.items().first().number, 42U);
    QCOMPARE(diagnostics.items().first().uri, QStringLiteral("a"));
    QCOMPARE(diagnostics.items().first().name, QStringLiteral("b"));
}

void TestDiagnostics::linesAreOfTheCaller()
{
    const LogCapture log;
    Diagnostics diagnostics;
    diagnostics.add(QMessageLogger("file", 7, "function"), {Code::NoAndroidNamespace});
    QCOMPARE(log.lines().size(), 1);
    QCOMPARE(log.lines().first().type, QtDebugMsg);
    QCOMPARE(log.lines().first().category, QStringLiteral("default"));
    QCOMPARE(log.lines().first().file, QStringLiteral("file"));
    QCOMPARE(log.lines().first().line, 7);
    QCOMPARE(log.lines().first().function, QStringLiteral("function"));
}

void TestDiagnostics::itemsUpToTheCeiling()
{
    const LogCapture log;
    Diagnostics diagnostics;
    for (int i = 0; i < Diagnostics::MaxItems; ++i)
        diagnostics.add(SORREL_LOGGER, {Code::NoAndroidNamespace});
    QCOMPARE(log.lines().size(), int(Diagnostics::MaxItems));
    diagnostics.add(SORREL_LOGGER, {Code::NoAndroidNamespace});
    QCOMPARE(log.lines().size(), int(Diagnostics::MaxItems));
    QCOMPARE(diagnostics.items().size(), int(Diagnostics::MaxItems));
    diagnostics.clear();
    diagnostics.add(SORREL_LOGGER, {Code::NoAndroidNamespace});
    QCOMPARE(diagnostics.items().size(), 1);
}

void TestDiagnostics::quietOnesAreKept()
{
    const LogCapture log;
    Diagnostics diagnostics;
    diagnostics.setQuiet();
    diagnostics.add(SORREL_LOGGER, {Code::NoAndroidNamespace});
    QVERIFY(log.lines().isEmpty());
    QCOMPARE(diagnostics.items().size(), 1);
}

QTEST_GUILESS_MAIN(TestDiagnostics)
#include "tst_diagnostics.moc"
