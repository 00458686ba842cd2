// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "DesktopEntries.h"
#include "Tool.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;

/// Packages with names and labels that attack desktop entries, and command templates that use them.
class TestDesktopHostile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void namesStayArguments_data();
    void namesStayArguments();
    void templatesKeepTheirArguments_data();
    void templatesKeepTheirArguments();
    void namesThatNoCommandTakes_data();
    void namesThatNoCommandTakes();
    void aLaterLauncherIsWrittenAllTheSame();
    void labels_data();
    void labels();
    void aLongLabelIsCut();
    void errorsSteerNoTerminal();
    void wrongUsage_data();
    void wrongUsage();

private:
    QString write(const QByteArray &bytes) const;
    QString output() const { return m_directory->filePath(QStringLiteral("out/share")); }
    ToolRun desktop(const QString &command, const QString &file) const;
    QString onlyEntry() const;

    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_recorder;
};

void TestDesktopHostile::initTestCase()
{
    for (const char *program : {"sorrel", "desktop-file-validate", "gio"})
        QVERIFY2(!QStandardPaths::findExecutable(QLatin1String(program)).isEmpty(),
                 qPrintable(QStringLiteral("%1 is missing").arg(QLatin1String(program))));
}

void TestDesktopHostile::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_recorder = m_directory->filePath(QStringLiteral("recorder"));
    makeRecorder(m_recorder);
}

QString TestDesktopHostile::write(const QByteArray &bytes) const
{
    const QString path = m_directory->filePath(QStringLiteral("hostile.apk"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("could not write %s", qPrintable(path));
    return path;
}

ToolRun TestDesktopHostile::desktop(const QString &command, const QString &file) const
{
    ToolSetting setting;
    setting.directory = m_directory->path();
    return runSorrel(
        {QStringLiteral("desktop"), QStringLiteral("-o"), output(), QStringLiteral("--exec"), command, file}, setting);
}

QString TestDesktopHostile::onlyEntry() const
{
    const QStringList entries = filesBelow(output()).filter(QRegularExpression(QStringLiteral("\\.desktop$")));
    return entries.size() == 1 ? output() + QLatin1Char('/') + entries.constFirst() : QString();
}

void TestDesktopHostile::namesStayArguments_data()
{
    QTest::addColumn<QString>("package");
    QTest::addColumn<QString>("activity");
    QTest::addColumn<QString>("stem");
    const QString plain = QStringLiteral("org.x");
    QTest::newRow("plain") << plain << "org.x.Main"
                           << "org.x.Main";
    QTest::newRow("of another package") << plain << "org.y.Main"
                                        << "org.x-org.y.Main";
    QTest::newRow("below the package") << plain << "org.x.ui.Main"
                                       << "org.x-org.x.ui.Main";
    QTest::newRow("beyond ASCII") << plain << "org.x.Café"
                                  << "org.x.Café";
    QTest::newRow("spaces") << "org x"
                            << "org x.Main  Activity "
                            << "org_x.Main__Activity_~";
    QTest::newRow("quotes") << plain << "org.x.a\"b'c\""
                            << "org.x.a_b_c_~";
    QTest::newRow("command substitution") << "$(touch hit)"
                                          << "$(touch hit).$(touch hit)"
                                          << "__touch_hit_.__touch_hit_~";
    QTest::newRow("backticks") << plain << "org.x.`touch hit`"
                               << "org.x._touch_hit_~";
    QTest::newRow("variables") << plain << "org.x.$HOME${HOME}"
                               << "org.x._HOME__HOME_~";
    QTest::newRow("backslashes") << plain << "org.x.\\\\a\\n\\s\\"
                                 << "org.x.__a_n_s_~";
    QTest::newRow("field codes") << "%f"
                                 << "%f.%f%u%%c%k%i"
                                 << "_f._f_u__c_k_i~";
    QTest::newRow("lines") << plain << "org.x.a\nExec=hit\r\n[Group]\t"
                           << "org.x.a_Exec_hit___Group__~";
    QTest::newRow("operators") << plain << "org.x.a;b|c&d<e>f*g?h#i~j(k){l}!m"
                               << "org.x.a_b_c_d_e_f_g_h_i_j_k__l__m~";
    QTest::newRow("way out") << "../../../x"
                             << "../../../x.Main"
                             << "_._.._.._x_.._.._.._x.._.._.._x.Main_10~";
    QTest::newRow("absolute path") << "/tmp"
                                   << "/tmp/hit.Main"
                                   << "_tmp__tmp_hit.Main_4~";
    QTest::newRow("long") << plain << QStringLiteral("org.x.") + QString(300, QLatin1Char('a'))
                          << QStringLiteral("org.x.") + QString(161, QLatin1Char('a')) + QStringLiteral("~");
    QTest::newRow("ending of a picture") << plain << "org.x.png"
                                         << "org.x_org.x.png_5~";
    QTest::newRow("dash") << "a-b"
                          << "a-b.c-d"
                          << "a-b_a-b.c-d_3~";
    QTest::newRow("direction") << plain << QStringLiteral("org.x.a\u202eb") << "org.x.a_b~";
}

void TestDesktopHostile::namesStayArguments()
{
    QFETCH(QString, package);
    QFETCH(QString, activity);
    QFETCH(QString, stem);
    const QString name = activity.startsWith(QLatin1Char('.')) ? package + activity : activity;
    const QString file = write(fixture::package(
        emptyTable(), manifestOf(package, {{activity, QStringLiteral("Label"), QStringLiteral("i.png")}}),
        {{QStringLiteral("i.png"), picture(16, 16, 0xff00ff00)}}));
    const QStringList before = filesBelow(m_directory->path());
    const ToolRun result = desktop(m_recorder + QStringLiteral(" --app=:%p/%a \"fixed \\$x\" 100%% @%c %a"), file);
    QCOMPARE(QString::fromUtf8(result.errors), QString());
    QCOMPARE(result.status, 0);

    // Every new file is below the directory, at its expected path.
    QStringList after = filesBelow(m_directory->path());
    for (const QString &old : before)
        QVERIFY(after.removeOne(old));
    const QString expected = QStringLiteral("out/share/applications/") + stem;
    QCOMPARE(after.size(), 2);
    const QString hash = stem.endsWith(QLatin1Char('~')) ? QStringLiteral("[0-9a-f]{32}") : QString();
    QVERIFY2(QRegularExpression(QStringLiteral("^%1%2\\.desktop$").arg(QRegularExpression::escape(expected), hash))
                 .match(after.constFirst())
                 .hasMatch(),
             qPrintable(after.constFirst()));
    const QString entryName = QFileInfo(after.constFirst()).completeBaseName();
    QCOMPARE(after.at(1), QStringLiteral("out/share/icons/hicolor/16x16/apps/%1.png").arg(entryName));
    QCOMPARE(QString::fromUtf8(result.output), m_directory->path() + QLatin1Char('/') + after.at(0) + QLatin1Char('\n')
                                                   + m_directory->path() + QLatin1Char('/') + after.at(1)
                                                   + QLatin1Char('\n'));

    const QString entry = onlyEntry();
    QCOMPARE(entryFaults(entry), QString());
    QCOMPARE(rawValue(entry, QStringLiteral("Icon")), entryName);
    QCOMPARE(QUrl::fromPercentEncoding(rawValue(entry, QStringLiteral("X-Sorrel-Package")).toUtf8()), package);
    QCOMPARE(QUrl::fromPercentEncoding(rawValue(entry, QStringLiteral("X-Sorrel-Component")).toUtf8()), name);
    QCOMPARE(launchEntry(entry), QString());
    const QStringList arguments{QStringLiteral("--app=:") + package + QLatin1Char('/') + name,
                                QStringLiteral("fixed $x"), QStringLiteral("100%"), QLatin1Char('@') + name, name};
    QCOMPARE(recordedArguments(m_recorder), arguments);
    QCOMPARE(contentOf(entry).count('\n'), 9);
}

void TestDesktopHostile::templatesKeepTheirArguments_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QStringList>("arguments");
    const auto row = [](const char *command, const QStringList &arguments) {
        QTest::newRow(command) << QString::fromUtf8(command) << arguments;
    };
    row("", {});
    row("%p", {QStringLiteral("org.x")});
    row("  a   b ", {QStringLiteral("a"), QStringLiteral("b")});
    row("\"\" a \"\"", {QStringLiteral(""), QStringLiteral("a"), QStringLiteral("")});
    row("\"a b\" c\"d e\"f", {QStringLiteral("a b"), QStringLiteral("cd ef")});
    row("\"\\\" \\` \\$ \\\\ \\x '\"", {QStringLiteral("\" ` $ \\ \\x '")});
    row("%%p %%%p%% %%%%", {QStringLiteral("%p"), QStringLiteral("%org.x%"), QStringLiteral("%%")});
    row("\"%a %c %%f\"", {QStringLiteral("org.x.Main org.x.Main %f")});
    row("-n --x=%p", {QStringLiteral("-n"), QStringLiteral("--x=org.x")});
    row("{a,b} [c] !d ^e é", {QStringLiteral("{a,b}"), QStringLiteral("[c]"), QStringLiteral("!d"),
                              QStringLiteral("^e"), QStringLiteral("é")});
    row("\"*?#~;&|<>()\"", {QStringLiteral("*?#~;&|<>()")});
}

void TestDesktopHostile::templatesKeepTheirArguments()
{
    QFETCH(QString, command);
    QFETCH(QStringList, arguments);
    const QString file =
        write(package(emptyTable(), manifestOf(QStringLiteral("org.x"), {{QStringLiteral("org.x.Main")}})));
    QCOMPARE(desktop(m_recorder + QLatin1Char(' ') + command, file).status, 0);
    QCOMPARE(entryFaults(onlyEntry()), QString());
    QCOMPARE(launchEntry(onlyEntry()), QString());
    QCOMPARE(recordedArguments(m_recorder), arguments);
}

void TestDesktopHostile::namesThatNoCommandTakes_data()
{
    QTest::addColumn<QString>("package");
    QTest::addColumn<QString>("activity");
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("text");
    const QString holds = QStringLiteral("the name of the %1 holds characters that no command can");
    QTest::newRow("option") << "-x"
                            << "-x.Main"
                            << "%p"
                            << "-x.Main: the name of the package would be an option of the command";
    QTest::newRow("option in quotes") << "org.x"
                                      << "--x.y"
                                      << "\"%c b\""
                                      << "--x.y: the name of the class would be an option of the command";
    QTest::newRow("no package") << ""
                                << "x.Main"
                                << "--a=%p"
                                << "x.Main: the package has no name";
    QTest::newRow("no activity") << "org.x"
                                 << ""
                                 << "%a"
                                 << ": the activity has no name";
    QTest::newRow("escape") << "org.x" << QStringLiteral("org.x.a\u001b[2J") << "%a"
                            << QStringLiteral("org.x.a\ufffd[2J: ") + holds.arg(QStringLiteral("activity"));
    QTest::newRow("byte of zero") << "org.x" << QString(QLatin1String("org.x.a\0b", 9)) << "a%c"
                                  << QStringLiteral("org.x.a\ufffdb: ") + holds.arg(QStringLiteral("class"));
}

void TestDesktopHostile::namesThatNoCommandTakes()
{
    QFETCH(QString, package);
    QFETCH(QString, activity);
    QFETCH(QString, arguments);
    QFETCH(QString, text);
    const QString file = write(fixture::package(emptyTable(), manifestOf(package, {{activity}})));
    const ToolRun result = desktop(m_recorder + QLatin1Char(' ') + arguments, file);
    QCOMPARE(result.status, 1);
    QCOMPARE(QString::fromUtf8(result.errors), QStringLiteral("sorrel: %1: %2\n").arg(file, text));
    QCOMPARE(result.output, QByteArray());
    QVERIFY(!QFileInfo::exists(output()));
}

void TestDesktopHostile::aLaterLauncherIsWrittenAllTheSame()
{
    const QString file = write(package(
        emptyTable(), manifestOf(QStringLiteral("org.x"), {{QStringLiteral("-a.b")}, {QStringLiteral(".Main")}})));
    const ToolRun result = desktop(m_recorder + QStringLiteral(" %a"), file);
    QCOMPARE(result.status, 1);
    QCOMPARE(filesBelow(output()), QStringList{QStringLiteral("applications/org.x.Main.desktop")});
    QCOMPARE(launchEntry(onlyEntry()), QString());
    QCOMPARE(recordedArguments(m_recorder), QStringList{QStringLiteral("org.x.Main")});
}

void TestDesktopHostile::labels_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("name");
    const auto row = [](const char *what, const QString &label, const QString &value, const QString &name) {
        QTest::newRow(what) << label << value << name;
    };
    const auto same = [&](const char *what, const QString &label) { row(what, label, label, label); };
    same("markup", QStringLiteral("<b>a</b> &amp; \"x\""));
    same("codes", QStringLiteral("%f %k $(touch hit) `x`"));
    same("beyond the first plane", QStringLiteral("😀"));
    same("marks of direction", QStringLiteral("a\u200fb\u200e"));
    row("control characters", QStringLiteral("a\u001b[2Jb\u0007\u007f\u0085c"), QStringLiteral("a[2Jbc"),
        QStringLiteral("a[2Jbc"));
    row("escapes", QStringLiteral("a\nb\tc\rd\\e"), QStringLiteral("a\\nb\\tc\\rd\\\\e"),
        QStringLiteral("a\nb\tc\rd\\e"));
    row("what looks like escapes", QStringLiteral("a\\nb\\s"), QStringLiteral("a\\\\nb\\\\s"),
        QStringLiteral("a\\nb\\s"));
    row("spaces at the ends", QStringLiteral("  a b "), QStringLiteral("\\s a b\\s"), QStringLiteral("  a b "));
    row("directions", QStringLiteral("a\u202eb\u2066c\u202cd"), QStringLiteral("abcd"), QStringLiteral("abcd"));
    row("separators", QStringLiteral("a\u2028b\u2029c"), QStringLiteral("a\\nb\\nc"), QStringLiteral("a\nb\nc"));
    row("other keys", QStringLiteral("a\nExec=hit\n[Desktop Action b]"),
        QStringLiteral("a\\nExec=hit\\n[Desktop Action b]"), QStringLiteral("a\nExec=hit\n[Desktop Action b]"));
    const QString nothing = QStringLiteral("org.x.Main");
    row("empty", QStringLiteral(""), nothing, nothing);
    row("spaces alone", QStringLiteral(" \n"), nothing, nothing);
    row("control characters alone", QStringLiteral("\u0007\u202e"), nothing, nothing);
}

void TestDesktopHostile::labels()
{
    QFETCH(QString, label);
    QFETCH(QString, value);
    QFETCH(QString, name);
    const QString file =
        write(package(emptyTable(), manifestOf(QStringLiteral("org.x"), {{QStringLiteral(".Main"), label}})));
    QCOMPARE(desktop(m_recorder, file).status, 0);
    const QString entry = onlyEntry();
    QCOMPARE(entryFaults(entry), QString());
    QCOMPARE(rawValue(entry, QStringLiteral("Name")), value);
    QCOMPARE(rawValue(entry, QStringLiteral("Exec")), m_recorder);
    QCOMPARE(namesInLocales(entry, {QStringLiteral("C")}).value(QStringLiteral("C")), name);
}

void TestDesktopHostile::aLongLabelIsCut()
{
    const auto shown = [&](const QString &label) {
        const QString file =
            write(package(emptyTable(), manifestOf(QStringLiteral("org.x"), {{QStringLiteral(".Main"), label}})));
        desktop(m_recorder, file);
        return entryFaults(onlyEntry()) + rawValue(onlyEntry(), QStringLiteral("Name"));
    };
    QCOMPARE(shown(QString(10000, QChar(0xe4))), QString(1000, QChar(0xe4)));
    QCOMPARE(shown(QString(1000, QLatin1Char('a'))), QString(1000, QLatin1Char('a')));
    QCOMPARE(shown(QLatin1Char('a') + QStringLiteral("😀").repeated(5000)),
             QLatin1Char('a') + QStringLiteral("😀").repeated(499));
}

void TestDesktopHostile::errorsSteerNoTerminal()
{
    const QString file =
        write(package(emptyTable(), manifestOf(QStringLiteral("org.x"),
                                               {{QStringLiteral("org.x.\u001b]0;a\u0007\u202e"),
                                                 QStringLiteral("\u001b[2J"), QStringLiteral("none.png")}})));
    for (const char *command : {"run %a", "run"}) {
        const ToolRun result = desktop(QLatin1String(command), file);
        QVERIFY(result.errors.startsWith("sorrel: " + file.toUtf8() + ": org.x."));
        for (const char *steering : {"\u001b", "\u0007", "\u202e"}) {
            QVERIFY(!result.errors.contains(steering));
            QVERIFY(!result.output.contains(steering));
        }
    }
}

void TestDesktopHostile::wrongUsage_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("text");
    const QStringList output{QStringLiteral("-o"), QStringLiteral("share")};
    const auto command = [&](const char *name, const char *text, const char *error) {
        QTest::newRow(name) << output + QStringList{QStringLiteral("--exec"), QString::fromUtf8(text)}
                            << QString(error);
    };
    const QString noDirectory = QStringLiteral("'-o' has to name a directory.");
    QTest::newRow("no directory") << QStringList{QStringLiteral("--exec"), QStringLiteral("run")} << noDirectory;
    QTest::newRow("empty directory") << QStringList{QStringLiteral("-o"), QString(), QStringLiteral("--exec"),
                                                    QStringLiteral("run")}
                                     << noDirectory;
    QTest::newRow("no command") << output << QStringLiteral("'--exec' has to tell what starts a launcher.");
    QTest::newRow("shape") << output
                                  + QStringList{QStringLiteral("--exec"), QStringLiteral("run"),
                                                QStringLiteral("--shape"), QStringLiteral("star")}
                           << QStringLiteral("'star' is no shape; there are circle, rounded, squircle and none.");
    QTest::newRow("size") << output + QStringList{QStringLiteral("--size=16")}
                          << QStringLiteral("Unknown option 'size'.");
    command("empty command", "", "The command names no program.");
    command("spaces", "  ", "The command names no program.");
    command("empty program", "\"\" a", "The command names no program.");
    command("quote", "run \"a", "In the command, a double quote is not closed.");
    command("operator", "run %p; ls", "In the command, ; has to stand in double quotes; there is no shell.");
    command("variable", "$HOME/run", "In the command, $ has to stand in double quotes; there is no shell.");
    command("single quotes", "run '%p'", "In the command, ' has to stand in double quotes; there is no shell.");
    command("code", "run %f", "'%f' is no code of the command; there are %p, %a, %c and %%.");
    command("code at the end", "run 100%", "'%' is no code of the command; there are %p, %a, %c and %%.");
    command("line", "run a\nb", "The command holds a control character.");
    command("names as program", "/opt/%p a", "The program of the command, '/opt/%p', may hold neither % nor =.");
    command("setting as program", "A=b run", "The program of the command, 'A=b', may hold neither % nor =.");
}

void TestDesktopHostile::wrongUsage()
{
    QFETCH(QStringList, options);
    QFETCH(QString, text);
    const QString file = write(package(emptyTable(), manifestOf(QStringLiteral("org.x"), {{QStringLiteral(".Main")}})));
    const QStringList before = filesBelow(m_directory->path());
    ToolSetting setting;
    setting.directory = m_directory->path();
    const ToolRun result = runSorrel(QStringList{QStringLiteral("desktop"), file} + options, setting);
    QCOMPARE(result.status, 2);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(QString::fromUtf8(result.errors), QStringLiteral("sorrel: %1\nTry 'sorrel desktop --help'.\n").arg(text));
    QCOMPARE(filesBelow(m_directory->path()), before);
}

QTEST_GUILESS_MAIN(TestDesktopHostile)
#include "tst_desktop_hostile.moc"
