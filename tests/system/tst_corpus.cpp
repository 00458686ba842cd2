// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ApkFile.h"
#include "Walker.h"

#include <QDirIterator>
#include <QtTest>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace fixture;

namespace {

constexpr unsigned SecondsForAPackage = 60;

} // namespace

/// Reads every package below the directory that the environment variable SORREL_CORPUS names, when it is set.
class TestCorpus : public QObject
{
    Q_OBJECT

private slots:
    void packageIsRead_data();
    void packageIsRead();
};

void TestCorpus::packageIsRead_data()
{
    QTest::addColumn<QString>("path");
    const QString corpus = qEnvironmentVariable("SORREL_CORPUS");
    if (corpus.isEmpty())
        QSKIP("SORREL_CORPUS does not name a directory of packages", "the macro wants a second argument");
    QVERIFY2(QFileInfo(corpus).isDir(), qPrintable(corpus));
    QDirIterator files(corpus, {QStringLiteral("*.apk")}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        QTest::newRow(qPrintable(path)) << path;
    }
}

// In a process of its own, so that a crash, a hang or an assertion is told with the package's name.
void TestCorpus::packageIsRead()
{
    QFETCH(QString, path);
    const pid_t child = fork();
    if (child == 0) {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        std::signal(SIGALRM, SIG_DFL);
        alarm(SecondsForAPackage);
        ApkFile apk(path);
        visit(apk);
        _exit(0);
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY2(!WIFSIGNALED(status) || WTERMSIG(status) != SIGALRM, "not done within a minute");
    QVERIFY2(!WIFSIGNALED(status), qPrintable(QStringLiteral("ended by signal %1").arg(WTERMSIG(status))));
    QCOMPARE(WEXITSTATUS(status), 0);
}

QTEST_GUILESS_MAIN(TestCorpus)
#include "tst_corpus.moc"
