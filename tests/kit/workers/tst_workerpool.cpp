// SPDX-License-Identifier: LGPL-2.1-or-later
#include "workers/WorkerPool.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// A worker whose files are orders to it.
WorkerProgram bash()
{
    return {"bash", {SORREL_TEST_WORKER}};
}

QList<QByteArray> goodFiles(int count)
{
    QList<QByteArray> files;
    for (int i = 0; i < count; ++i)
        files.append(QByteArray::number(i));
    return files;
}

QByteArray reportOf(const QByteArray &path)
{
    return "{\"path\":\"" + path + "\"}";
}

using Outcomes = std::vector<WorkerPool::Outcome>;

/// The outcomes in the order of the pool.
Outcomes run(const QList<QByteArray> &files, int jobs)
{
    Outcomes all;
    WorkerPool pool(bash(), jobs);
    const bool isRun = pool.run(files, [&](const Outcomes &outcomes) {
        all.insert(all.end(), outcomes.begin(), outcomes.end());
        return true;
    });
    return isRun ? all : Outcomes();
}

void sort(Outcomes &outcomes)
{
    std::sort(outcomes.begin(), outcomes.end(),
              [](const WorkerPool::Outcome &a, const WorkerPool::Outcome &b) { return a.index < b.index; });
}

} // namespace

class TestWorkerPool : public QObject
{
    Q_OBJECT

private slots:
    void aBadFileCostsItself_data();
    void aBadFileCostsItself();
    void everyFileIsBad();
    void oneWorkerKeepsTheOrder();
    void reportsOfAnySize_data();
    void reportsOfAnySize();
    void pathsThatFillThePipe();
    void theWindowEndsBehindTheFirstUnfinishedFile();
    void stopsWhenTheReceiverHasEnough();
    void aProgramThatIsMissing();
    void fewerProcessesThanWanted();
};

void TestWorkerPool::aBadFileCostsItself_data()
{
    QTest::addColumn<QByteArray>("order");
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("jobs");
    QTest::addColumn<int>("code");
    const auto rows = [](const char *order, int code) {
        for (const int place : {0, 50, 99}) {
            for (const int jobs : {1, 3}) {
                QTest::newRow(qPrintable(QStringLiteral("%1 at %2, %3").arg(QLatin1String(order)).arg(place).arg(jobs)))
                    << QByteArray(order) << place << jobs << code;
            }
        }
    };
    rows("crash", ScanError::WorkerDied);
    rows("time", ScanError::TooMuchTime);
    rows("memory", ScanError::TooMuchMemory);
    rows("exit", ScanError::WorkerDied);
    rows("close", ScanError::WorkerDied);
    rows("text", ScanError::WorkerDied);
    rows("no code", ScanError::WorkerDied);
    rows("no object", ScanError::WorkerDied);
    rows("no end", ScanError::WorkerDied);
}

void TestWorkerPool::aBadFileCostsItself()
{
    QFETCH(QByteArray, order);
    QFETCH(int, place);
    QFETCH(int, jobs);
    QFETCH(int, code);
    QList<QByteArray> files = goodFiles(100);
    files[place] = order;
    Outcomes outcomes = run(files, jobs);
    QCOMPARE(int(outcomes.size()), 100);
    sort(outcomes);
    for (int i = 0; i < 100; ++i) {
        const WorkerPool::Outcome &outcome = outcomes[size_t(i)];
        QCOMPARE(outcome.index, i);
        QCOMPARE(outcome.errorCode, i == place ? code : 0);
        // Only a worker without memory can still report.
        const bool hasReport = i != place || code == ScanError::TooMuchMemory;
        QCOMPARE(outcome.report, hasReport ? reportOf(files.at(i)) : QByteArray());
    }
}

void TestWorkerPool::everyFileIsBad()
{
    QList<QByteArray> files;
    for (int i = 0; i < 10; ++i) {
        for (const char *order : {"crash", "memory", "text", "time"})
            files.append(QByteArray(order));
    }
    Outcomes outcomes = run(files, 2);
    QCOMPARE(int(outcomes.size()), 40);
    sort(outcomes);
    const int codes[] = {ScanError::WorkerDied, ScanError::TooMuchMemory, ScanError::WorkerDied,
                         ScanError::TooMuchTime};
    for (int i = 0; i < 40; ++i) {
        QCOMPARE(outcomes[size_t(i)].index, i);
        QCOMPARE(outcomes[size_t(i)].errorCode, codes[i % 4]);
    }
}

void TestWorkerPool::oneWorkerKeepsTheOrder()
{
    const Outcomes outcomes = run(goodFiles(5000), 1);
    QCOMPARE(int(outcomes.size()), 5000);
    for (int i = 0; i < 5000; ++i) {
        QCOMPARE(outcomes[size_t(i)].index, i);
        QCOMPARE(outcomes[size_t(i)].report, reportOf(QByteArray::number(i)));
    }
}

void TestWorkerPool::reportsOfAnySize_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("code");
    const int frame = int(QByteArray("0 {\"path\":\"large\",\"body\":\"\"}").size());
    QTest::newRow("larger than a pipe") << (1 << 20) << 0;
    QTest::newRow("the limit") << WorkerPool::MaxAnswerBytes - frame << 0;
    // Without a line end within the limit. The pool reads at most a MiB more before it looks.
    QTest::newRow("beyond the limit") << WorkerPool::MaxAnswerBytes + (2 << 20) << int(ScanError::WorkerDied);
}

void TestWorkerPool::reportsOfAnySize()
{
    QFETCH(int, size);
    QFETCH(int, code);
    QList<QByteArray> files = goodFiles(20);
    files[10] = QByteArray("large");
    qputenv("LARGE", QByteArray::number(size));
    const Outcomes outcomes = run(files, 1);
    QCOMPARE(int(outcomes.size()), 20);
    for (int i = 0; i < 20; ++i) {
        const WorkerPool::Outcome &outcome = outcomes[size_t(i)];
        QCOMPARE(outcome.index, i);
        QCOMPARE(outcome.errorCode, i == 10 ? code : 0);
        if (i != 10)
            QCOMPARE(outcome.report, reportOf(files.at(i)));
        else
            QCOMPARE(int(outcome.report.count('x')), code == 0 ? size : 0);
    }
}

// The worker writes while the pool still sends to it.
void TestWorkerPool::pathsThatFillThePipe()
{
    QList<QByteArray> files;
    for (int i = 0; i < 40; ++i)
        files.append("long" + QByteArray(100000 + i, 'x'));
    Outcomes outcomes = run(files, 2);
    QCOMPARE(int(outcomes.size()), 40);
    sort(outcomes);
    for (int i = 0; i < 40; ++i)
        QCOMPARE(outcomes[size_t(i)].report, reportOf(QByteArray::number(100004 + i)));
}

void TestWorkerPool::theWindowEndsBehindTheFirstUnfinishedFile()
{
    constexpr int Window = 32;
    QTemporaryDir directory;
    const QByteArray fifo = QFile::encodeName(directory.filePath(QStringLiteral("hold")));
    QCOMPARE(::mkfifo(fifo.constData(), 0600), 0);
    qputenv("HOLD", fifo);
    QList<QByteArray> files = goodFiles(200);
    files[0] = QByteArray("hold");
    std::vector<bool> isDone(201, false);
    int oldest = 0;
    int farthest = 0;
    WorkerPool pool(bash(), 2);
    const auto deliver = [&](const Outcomes &outcomes) {
        bool isLast = false;
        for (const WorkerPool::Outcome &outcome : outcomes) {
            farthest = qMax(farthest, outcome.index - oldest);
            isDone[size_t(outcome.index)] = true;
            isLast = isLast || (oldest == 0 && outcome.index == Window - 1);
        }
        while (isDone[size_t(oldest)])
            ++oldest;
        // The last file of the window is done, so the first one may end. Opening waits for its worker.
        QFile hold(QFile::decodeName(fifo));
        return !isLast || (hold.open(QIODevice::WriteOnly) && hold.write("\n") == 1);
    };
    QVERIFY(pool.run(files, deliver, Window));
    QCOMPARE(oldest, 200);
    QCOMPARE(farthest, Window - 1);
}

void TestWorkerPool::stopsWhenTheReceiverHasEnough()
{
    int calls = 0;
    {
        WorkerPool pool(bash(), 2);
        QVERIFY(pool.run(goodFiles(100000), [&](const Outcomes &outcomes) {
            ++calls;
            return outcomes.empty();
        }));
    }
    QCOMPARE(calls, 1);
    // The workers were killed, although each still had files.
    QCOMPARE(::waitpid(-1, nullptr, WNOHANG), -1);
    QCOMPARE(errno, ECHILD);
}

void TestWorkerPool::aProgramThatIsMissing()
{
    WorkerPool pool({"/missing/program", {}}, 2);
    QVERIFY(!pool.run(goodFiles(3), [](const Outcomes &) { return true; }));
    QCOMPARE(pool.errorText(), QStringLiteral("/missing/program: No such file or directory"));
}

// Each process needs two descriptors, and four while it starts.
void TestWorkerPool::fewerProcessesThanWanted()
{
    rlimit limit{};
    QCOMPARE(::getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlim_t before = limit.rlim_cur;
    const QDir open(QStringLiteral("/proc/self/fd"));
    const auto limited = [&](int more) {
        limit.rlim_cur =
            rlim_t(open.entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System).size() - 1 + more);
        return ::setrlimit(RLIMIT_NOFILE, &limit) == 0;
    };
    QVERIFY(limited(6));
    Outcomes outcomes = run(goodFiles(400), 40);
    QVERIFY(limited(0));
    WorkerPool none(bash(), 40);
    const bool isRun = none.run(goodFiles(3), [](const Outcomes &) { return true; });
    limit.rlim_cur = before;
    QCOMPARE(::setrlimit(RLIMIT_NOFILE, &limit), 0);
    QCOMPARE(int(outcomes.size()), 400);
    sort(outcomes);
    for (int i = 0; i < 400; ++i)
        QCOMPARE(outcomes[size_t(i)].index, i);
    QVERIFY(!isRun);
    QCOMPARE(none.errorText(), QStringLiteral("bash: Too many open files"));
}

QTEST_GUILESS_MAIN(TestWorkerPool)
#include "tst_workerpool.moc"
