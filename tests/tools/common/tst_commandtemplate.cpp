// SPDX-License-Identifier: LGPL-2.1-or-later
#include "CommandTemplate.h"

#include <QtTest>

namespace {

QStringList withFile(const QString &text, const QString &file)
{
    QString fault;
    const CommandTemplate command(text, QStringLiteral("f"));
    return command.arguments([&file](QChar, bool, QString *) { return file; }, &fault);
}

} // namespace

class TestCommandTemplate : public QObject
{
    Q_OBJECT

private slots:
    void arguments_data();
    void arguments();
    void errors_data();
    void errors();
    void stopsAtAFault();
    void knowsItsCodes();
};

void TestCommandTemplate::arguments_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("expected");
    using List = QStringList;
    QTest::newRow("words") << "adb install %f" << List{"adb", "install", "a b;$(c).apk"};
    QTest::newRow("many spaces") << "  adb   %f " << List{"adb", "a b;$(c).apk"};
    QTest::newRow("within an argument") << "run --file=%f%%" << List{"run", "--file=a b;$(c).apk%"};
    QTest::newRow("quotes") << R"("/opt/my host/run" "a;b" "" %f)"
                            << List{"/opt/my host/run", "a;b", "", "a b;$(c).apk"};
    QTest::newRow("escapes") << R"(run "\"\`\$\\ \n")" << List{"run", R"("`$\ \n)"};
    QTest::newRow("a value is no code") << "run %f%f" << List{"run", "a b;$(c).apka b;$(c).apk"};
}

void TestCommandTemplate::arguments()
{
    QFETCH(QString, text);
    QFETCH(QStringList, expected);
    QCOMPARE(CommandTemplate(text, QStringLiteral("f")).errorText(), QString());
    QCOMPARE(withFile(text, QStringLiteral("a b;$(c).apk")), expected);
    QCOMPARE(withFile(QStringLiteral("run %f"), QStringLiteral("%f%%")), (QStringList{"run", "%f%%"}));
}

void TestCommandTemplate::errors_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("error");
    QTest::newRow("nothing") << " "
                             << "The command names no program.";
    QTest::newRow("empty program") << R"("" %f)"
                                   << "The command names no program.";
    QTest::newRow("code as the program") << "%f"
                                         << "The program of the command, '%f', may hold neither % nor =.";
    QTest::newRow("variable") << "A=b run"
                              << "The program of the command, 'A=b', may hold neither % nor =.";
    QTest::newRow("unknown code") << "run %p"
                                  << "'%p' is no code of the command; there are %f and %%.";
    QTest::newRow("lone percent sign") << "run 5%"
                                       << "'%' is no code of the command; there are %f and %%.";
    QTest::newRow("pipe") << "run %f | tee"
                          << "In the command, | has to stand in double quotes; there is no shell.";
    QTest::newRow("open quote") << "run \"%f"
                                << "In the command, a double quote is not closed.";
    QTest::newRow("line end") << "run\n%f"
                              << "The command holds a control character.";
    QTest::newRow("half a pair") << "run " + QString(QChar(0xdc80)) << "The command is not UTF-8.";
}

void TestCommandTemplate::errors()
{
    QFETCH(QString, text);
    QTEST(CommandTemplate(text, QStringLiteral("f")).errorText(), "error");
}

void TestCommandTemplate::stopsAtAFault()
{
    QString fault;
    int calls = 0;
    const auto refuse = [&calls](QChar code, bool isFirst, QString *problem) {
        ++calls;
        *problem = QStringLiteral("%1 %2").arg(code).arg(isFirst);
        return QString();
    };
    const CommandTemplate command(QStringLiteral("run -%b %a"), QStringLiteral("ab"));
    QCOMPARE(command.arguments(refuse, &fault), QStringList());
    QCOMPARE(fault, QStringLiteral("b 0"));
    QCOMPARE(calls, 1);
}

void TestCommandTemplate::knowsItsCodes()
{
    QVERIFY(CommandTemplate(QStringLiteral("run a%f"), QStringLiteral("f")).has(QLatin1Char('f')));
    QVERIFY(!CommandTemplate(QStringLiteral("run %%f"), QStringLiteral("f")).has(QLatin1Char('f')));
}

QTEST_GUILESS_MAIN(TestCommandTemplate)
#include "tst_commandtemplate.moc"
