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

const QString sample = QStringLiteral(SORREL_SAMPLES_DIR "/notes.aapt2.apk");

/// A prefix with a copy of `sorrel`, and no other program.
class Prefix
{
public:
    Prefix()
    {
        const QString installed = QStandardPaths::findExecutable(QStringLiteral("sorrel"));
        const QFileInfo draw(QFileInfo(installed).path()
                             + QStringLiteral("/../" SORREL_LIBEXECDIR "/sorrel/sorrel-draw"));
        m_installedDraw = draw.canonicalFilePath();
        m_isValid = QDir(m_root.path()).mkpath(QStringLiteral("bin")) && QFile::copy(installed, sorrel())
                    && QDir(m_root.path()).mkpath(QFileInfo(drawProgram()).path());
    }

    bool isValid() const { return m_isValid && !m_installedDraw.isEmpty(); }
    QString path(const char *name) const { return m_root.filePath(QLatin1String(name)); }
    QString sorrel() const { return path("bin/sorrel"); }
    /// Copies the installed program for drawing into the prefix.
    bool addDraw() const { return QFile::copy(m_installedDraw, drawProgram()); }
    /// Makes a shell script the program for drawing.
    bool addDrawScript(const QByteArray &script) const
    {
        QFile file(drawProgram());
        return file.open(QIODevice::WriteOnly) && file.write("#!/bin/bash\n" + script) > 0
               && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

private:
    QString drawProgram() const { return path(SORREL_LIBEXECDIR "/sorrel/sorrel-draw"); }

    QTemporaryDir m_root;
    QString m_installedDraw;
    bool m_isValid = false;
};

} // namespace

/// The program that `sorrel` becomes for the commands that draw.
class TestDrawProgram : public QObject
{
    Q_OBJECT

private slots:
    void isFoundInAMovedInstallation();
    void isFoundThroughALink();
    void isTheSameProcess();
    void getsTheBytesOfItsArguments();
    void whenMissingIsAnError();
    void isNotInThePath();
};

void TestDrawProgram::isFoundInAMovedInstallation()
{
    const Prefix prefix;
    QVERIFY(prefix.isValid() && prefix.addDraw());
    const ToolRun moved = runTool(prefix.sorrel(), {QStringLiteral("icon"), sample});
    QCOMPARE(moved.status, 0);
    QVERIFY(moved.output.startsWith("\x89PNG"));
    QCOMPARE(moved.output, runSorrel({QStringLiteral("icon"), sample}).output);
    const QStringList scan{QStringLiteral("scan"), QStringLiteral("--icon"), QStringLiteral("24"), sample};
    QCOMPARE(runTool(prefix.sorrel(), scan).output, runSorrel(scan).output);
}

void TestDrawProgram::isFoundThroughALink()
{
    const Prefix prefix;
    QVERIFY(prefix.isValid() && prefix.addDraw());
    const QString link = prefix.path("other-name");
    QVERIFY(QFile::link(prefix.sorrel(), link));
    const ToolRun linked = runTool(link, {QStringLiteral("icon"), sample});
    QCOMPARE(linked.errors, QByteArray());
    QVERIFY(linked.output.startsWith("\x89PNG"));
}

// A shell may wait for the process, stop it, or write to it.
void TestDrawProgram::isTheSameProcess()
{
    const Prefix prefix;
    QVERIFY(prefix.isValid() && prefix.addDrawScript("echo $$ $0 $#; cat; exit 7\n"));
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

void TestDrawProgram::getsTheBytesOfItsArguments()
{
    const Prefix prefix;
    QVERIFY(prefix.isValid() && prefix.addDrawScript("printf '%s|' \"$@\"\n"));
    const ToolRun run = runShell(QStringLiteral("exec %1 icon %2 '' '-- x'")
                                     .arg(shellWord(QFile::encodeName(prefix.sorrel())), shellWord("\xff\x01 \xc3")));
    QCOMPARE(run.output, QByteArray("icon|\xff\x01 \xc3||-- x|"));
}

void TestDrawProgram::whenMissingIsAnError()
{
    const Prefix prefix;
    QVERIFY(prefix.isValid());
    const QByteArray name = QFile::encodeName(prefix.path("bin/")) + "../" SORREL_LIBEXECDIR "/sorrel/sorrel-draw";
    const ToolRun icon = runTool(prefix.sorrel(), {QStringLiteral("icon"), sample});
    QCOMPARE(icon.status, 1);
    QCOMPARE(icon.output, QByteArray());
    QCOMPARE(icon.errors, "sorrel: the program for drawing, " + name + ": No such file or directory\n");
    const ToolRun scan =
        runTool(prefix.sorrel(), {QStringLiteral("scan"), QStringLiteral("--icon"), QStringLiteral("24"), sample});
    QCOMPARE(scan.status, 1);
    QCOMPARE(scan.output, QByteArray());
    QVERIFY2(scan.errors.startsWith("sorrel: workers: " + name), scan.errors.constData());
    // The other commands work.
    QCOMPARE(runTool(prefix.sorrel(), {QStringLiteral("info"), sample}).status, 0);
    QCOMPARE(runTool(prefix.sorrel(), {QStringLiteral("scan"), sample}).status, 0);
}

void TestDrawProgram::isNotInThePath()
{
    QVERIFY(!QStandardPaths::findExecutable(QStringLiteral("sorrel")).isEmpty());
    QVERIFY(QStandardPaths::findExecutable(QStringLiteral("sorrel-draw")).isEmpty());
}

QTEST_GUILESS_MAIN(TestDrawProgram)
#include "tst_draw_program.moc"
