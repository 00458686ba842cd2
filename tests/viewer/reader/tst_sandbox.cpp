// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Files.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <cerrno>
#include <csignal>

using namespace fixture;

// Each test runs sandbox_probe, because a process cannot leave its sandbox.
class TestSandbox : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void names();
    void allows_data();
    void allows();
    void refuses_data();
    void refuses();
    void kills_data();
    void kills();
    void otherFiles_data();
    void otherFiles();
    void foldersAreNoFiles();

private:
    struct Result {
        QStringList sandbox;
        QProcess::ExitStatus how = QProcess::NormalExit;
        int status = 0; ///< or the number of the signal
    };

    /// Runs the probe with @p readable readable, package.apk by default.
    Result run(const QString &action, const QString &path = {}, const QString &readable = {}) const;
    QString file(const char *name) const { return m_directory.filePath(QLatin1String(name)); }

    QTemporaryDir m_directory;
};

TestSandbox::Result TestSandbox::run(const QString &action, const QString &path, const QString &readable) const
{
    QProcess process;
    process.start(QStringLiteral(SORREL_SANDBOX_PROBE),
                  {readable.isEmpty() ? file("package.apk") : readable, action, path});
    if (!process.waitForFinished())
        return {{}, QProcess::CrashExit, -1};
    const QString names = QString::fromLatin1(process.readAllStandardOutput()).trimmed();
    return {names.split(QLatin1Char(' ')), process.exitStatus(), process.exitCode()};
}

void TestSandbox::initTestCase()
{
    writeFile(file("package.apk"), "package");
    writeFile(file("other.txt"), "other");
}

void TestSandbox::names()
{
    const Result result = run(QStringLiteral("read"), file("package.apk"));
    QCOMPARE(result.status, 0);
    QCOMPARE(result.sandbox.contains(QStringLiteral("seccomp")), bool(SORREL_HAS_SECCOMP));
}

void TestSandbox::allows_data()
{
    QTest::addColumn<QString>("action");
    for (const char *const action : {"thread", "pool"})
        QTest::newRow(action) << QString::fromLatin1(action);
}

void TestSandbox::allows()
{
    QFETCH(QString, action);
    const Result result = run(action);
    QCOMPARE(result.how, QProcess::NormalExit);
    QCOMPARE(result.status, 0);
}

void TestSandbox::refuses_data()
{
    QTest::addColumn<QString>("action");
    for (const char *const action : {"write", "append", "create", "truncate", "remove", "rename", "chmod", "socket",
                                     "unix", "fork", "signal", "code", "unprotect"})
        QTest::newRow(action) << QString::fromLatin1(action);
}

void TestSandbox::refuses()
{
    QFETCH(QString, action);
    if (!SORREL_HAS_SECCOMP)
        QSKIP("the program was built without libseccomp", "the macro wants a second argument");
    const QString path = action == QLatin1String("create") ? file("new.txt") : file("package.apk");
    const Result result = run(action, path);
    QCOMPARE(result.how, QProcess::NormalExit);
    // Landlock refuses some of these before, and with another error.
    QVERIFY2(result.status == EPERM || result.status == EACCES, qPrintable(QString::number(result.status)));
    QFile content(file("package.apk"));
    QVERIFY(content.open(QIODevice::ReadOnly));
    QCOMPARE(content.readAll(), QByteArray("package"));
    QVERIFY(!QFile::exists(file("new.txt")));
}

void TestSandbox::kills_data()
{
    QTest::addColumn<QString>("action");
    for (const char *const action : {"exec", "trace"})
        QTest::newRow(action) << QString::fromLatin1(action);
}

void TestSandbox::kills()
{
    QFETCH(QString, action);
    if (!SORREL_HAS_SECCOMP)
        QSKIP("the program was built without libseccomp", "the macro wants a second argument");
    const Result result = run(action);
    QCOMPARE(result.how, QProcess::CrashExit);
    QCOMPARE(result.status, SIGSYS);
}

void TestSandbox::otherFiles_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("status");
    QTest::newRow("the package") << file("package.apk") << 0;
    QTest::newRow("of the system") << QStringLiteral("/usr/bin/env") << 0;
    QTest::newRow("beside the package") << file("other.txt") << EACCES;
    QTest::newRow("accounts") << QStringLiteral("/etc/passwd") << EACCES;
    QTest::newRow("other processes") << QStringLiteral("/proc/1/status") << EACCES;
    QTest::newRow("devices") << QStringLiteral("/dev/tty") << EACCES;
}

void TestSandbox::otherFiles()
{
    QFETCH(QString, path);
    QFETCH(int, status);
    const Result result = run(QStringLiteral("read"), path);
    if (!result.sandbox.contains(QStringLiteral("landlock")))
        QSKIP("the system has no Landlock", "the macro wants a second argument");
    QCOMPARE(result.status, status);
}

void TestSandbox::foldersAreNoFiles()
{
    const Result result = run(QStringLiteral("read"), file("other.txt"), m_directory.path());
    if (!result.sandbox.contains(QStringLiteral("landlock")))
        QSKIP("the system has no Landlock", "the macro wants a second argument");
    QCOMPARE(result.status, EACCES);
}

QTEST_GUILESS_MAIN(TestSandbox)
#include "tst_sandbox.moc"
