// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Tool.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;

namespace {

const QString draw = QStringLiteral("sorrel-draw");
const QString trust = QStringLiteral("sorrel-trust");
const QString sample = QStringLiteral(SORREL_SAMPLES_DIR "/notes.aapt2.apk");

/// A prefix with a copy of `sorrel`, and no other program.
class Prefix
{
public:
    Prefix()
    {
        const QString installed = QStandardPaths::findExecutable(QStringLiteral("sorrel"));
        m_installed = QFileInfo(installed).path() + QStringLiteral("/../" SORREL_LIBEXECDIR "/sorrel/");
        m_isValid = QDir(m_root.path()).mkpath(QStringLiteral("bin")) && QFile::copy(installed, sorrel())
                    && QDir(m_root.path()).mkpath(path(SORREL_LIBEXECDIR "/sorrel"));
    }

    bool isValid() const { return m_isValid; }
    QString path(const char *name) const { return m_root.filePath(QLatin1String(name)); }
    QString sorrel() const { return path("bin/sorrel"); }
    /// Copies the installed program @p name into the prefix.
    bool add(const QString &name) const { return QFile::copy(m_installed + name, other(name)); }
    /// Makes a shell script the program @p name.
    bool addScript(const QString &name, const QByteArray &script) const
    {
        QFile file(other(name));
        return file.open(QIODevice::WriteOnly) && file.write("#!/bin/bash\n" + script) > 0
               && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

private:
    QString other(const QString &name) const { return path(SORREL_LIBEXECDIR "/sorrel/") + name; }

    QTemporaryDir m_root;
    QString m_installed; ///< the directory of the installed programs
    bool m_isValid = false;
};

} // namespace

/// The programs that `sorrel` becomes for the commands that need more libraries.
class TestOtherProgram : public QObject
{
    Q_OBJECT

private slots:
    void isFoundInAMovedInstallation();
    void isThatOfTheCommand_data();
    void isThatOfTheCommand();
    void isFoundThroughALink();
    void isTheSameProcess();
    void getsTheBytesOfItsArguments();
    void whenMissingIsAnError();
    void isNotInThePath();
};

void TestOtherProgram::isFoundInAMovedInstallation()
{
    const Prefix prefix;
    QVERIFY(prefix.isValid() && prefix.add(draw));
    const ToolRun moved = runTool(prefix.sorrel(), {QStringLiteral("icon"), sample});
    QCOMPARE(moved.status, 0);
    QVERIFY(moved.output.startsWith("\x89PNG"));
    QCOMPARE(moved.output, runSorrel({QStringLiteral("icon"), sample}).output);
    const QStringList scan{QStringLiteral("scan"), QStringLiteral("--icon"), QStringLiteral("24"), sample};
    QCOMPARE(runTool(prefix.sorrel(), scan).output, runSorrel(scan).output);
}

void TestOtherProgram::isThatOfTheCommand_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("program");
    const QByteArray none;
    const QByteArray forDrawing("draw\n");
    const QByteArray forTrust("trust\n");
    QTest::newRow("a command of sorrel itself") << "info --json" << none;
    QTest::newRow("an option that needs signatures") << "info --json --signer" << forTrust;
    QTest::newRow("a file with the name of this option") << "info -- --signer" << none;
    QTest::newRow("the option of another command") << "manifest --signer" << none;
    QTest::newRow("a command for signatures") << "lint" << forTrust;
    QTest::newRow("an option that needs drawing") << "lint --draw" << forDrawing;
    QTest::newRow("a command that draws") << "icon" << forDrawing;
    QTest::newRow("an unknown command") << "trust" << none;
}

// The arguments are wrong, so `sorrel` itself prints nothing on standard output.
void TestOtherProgram::isThatOfTheCommand()
{
    QFETCH(QString, arguments);
    QFETCH(QByteArray, program);
    const Prefix prefix;
    QVERIFY(prefix.isValid() && prefix.addScript(draw, "echo draw\n") && prefix.addScript(trust, "echo trust\n"));
    QCOMPARE(runTool(prefix.sorrel(), arguments.split(QLatin1Char(' '))).output, program);
}

void TestOtherProgram::isFoundThroughALink()
{
    const Prefix prefix;
    QVERIFY(prefix.isValid() && prefix.add(draw));
    const QString link = prefix.path("other-name");
    QVERIFY(QFile::link(prefix.sorrel(), link));
    const ToolRun linked = runTool(link, {QStringLiteral("icon"), sample});
    QCOMPARE(linked.errors, QByteArray());
    QVERIFY(linked.output.startsWith("\x89PNG"));
}

// A shell may wait for the process, stop it, or write to it.
void TestOtherProgram::isTheSameProcess()
{
    const Prefix prefix;
    QVERIFY(prefix.isValid() && prefix.addScript(draw, "echo $$ $0 $#; cat; exit 7\n"));
    QProcess process;
    process.start(prefix.sorrel(), {QStringLiteral("icon"), QStringLiteral("-o"), QStringLiteral("x")});
    QVERIFY(process.waitForStarted());
    const QByteArray id = QByteArray::number(process.processId());
    process.write("from standard input");
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 7);
    const QList<QByteArray> output = process.readAllStandardOutput().split('\n');
    QCOMPARE(output.at(0).split(' ').constFirst(), id);
    QCOMPARE(output.at(0).split(' ').constLast(), QByteArray("3"));
    QCOMPARE(output.at(1), QByteArray("from standard input"));
}

void TestOtherProgram::getsTheBytesOfItsArguments()
{
    const Prefix prefix;
    QVERIFY(prefix.isValid() && prefix.addScript(draw, "printf '%s|' \"$@\"\n"));
    const ToolRun run = runShell(QStringLiteral("exec %1 icon %2 '' '-- x'")
                                     .arg(shellWord(QFile::encodeName(prefix.sorrel())), shellWord("\xff\x01 \xc3")));
    QCOMPARE(run.output, QByteArray("icon|\xff\x01 \xc3||-- x|"));
}

void TestOtherProgram::whenMissingIsAnError()
{
    const Prefix prefix;
    QVERIFY(prefix.isValid());
    const QByteArray name = QFile::encodeName(prefix.path("bin/")) + "../" SORREL_LIBEXECDIR "/sorrel/sorrel-";
    const ToolRun icon = runTool(prefix.sorrel(), {QStringLiteral("icon"), sample});
    QCOMPARE(icon.status, 1);
    QCOMPARE(icon.output, QByteArray());
    QCOMPARE(icon.errors, "sorrel: the program for drawing, " + name + "draw: No such file or directory\n");
    const ToolRun lint = runTool(prefix.sorrel(), {QStringLiteral("lint"), sample});
    QCOMPARE(lint.status, 1);
    QCOMPARE(lint.output, QByteArray());
    QCOMPARE(lint.errors, "sorrel: the program for signatures, " + name + "trust: No such file or directory\n");
    const ToolRun scan =
        runTool(prefix.sorrel(), {QStringLiteral("scan"), QStringLiteral("--icon"), QStringLiteral("24"), sample});
    QCOMPARE(scan.status, 1);
    QCOMPARE(scan.output, QByteArray());
    QVERIFY2(scan.errors.startsWith("sorrel: workers: " + name + "draw"), scan.errors.constData());
    // The other commands work.
    QCOMPARE(runTool(prefix.sorrel(), {QStringLiteral("info"), sample}).status, 0);
    QCOMPARE(runTool(prefix.sorrel(), {QStringLiteral("scan"), sample}).status, 0);
}

void TestOtherProgram::isNotInThePath()
{
    QVERIFY(!QStandardPaths::findExecutable(QStringLiteral("sorrel")).isEmpty());
    QVERIFY(QStandardPaths::findExecutable(draw).isEmpty());
    QVERIFY(QStandardPaths::findExecutable(trust).isEmpty());
}

QTEST_GUILESS_MAIN(TestOtherProgram)
#include "tst_other_program.moc"
