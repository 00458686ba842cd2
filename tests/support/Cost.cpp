// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Cost.h"

#include "HeapCounter.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
#include <QThread>

#include <csignal>
#include <memory>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fixture {

namespace {

constexpr rlim_t WatchdogSeconds = isInstrumented() ? 600 : 60;

void startWatchdog()
{
    for (const int number : {SIGXCPU, SIGSEGV})
        std::signal(number, SIG_DFL);
    const rlimit limit{WatchdogSeconds, WatchdogSeconds};
    if (setrlimit(RLIMIT_CPU, &limit) != 0)
        _exit(1);
}

double seconds(const timeval &time)
{
    return double(time.tv_sec) + double(time.tv_usec) / 1e6;
}

void record(const Cost &cost, const rusage &usage)
{
    const QString path = qEnvironmentVariable("SORREL_COSTS");
    if (path.isEmpty())
        return;
    const QJsonObject line{
        {QStringLiteral("program"), QCoreApplication::applicationName()},
        {QStringLiteral("test"), QLatin1String(QTest::currentTestFunction())},
        {QStringLiteral("row"), QString::fromUtf8(QTest::currentDataTag())},
        {QStringLiteral("ended"), cost.ended},
        {QStringLiteral("memory"), cost.memory},
        {QStringLiteral("allocated"), cost.allocated},
        {QStringLiteral("allocations"), cost.allocations},
        {QStringLiteral("seconds"), seconds(usage.ru_utime) + seconds(usage.ru_stime)},
    };
    QFile file(path);
    if (!file.open(QIODevice::Append))
        qFatal("%s cannot be written", qPrintable(path));
    file.write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
}

} // namespace

Cost cost(const std::function<void()> &function)
{
    int ends[2];
    if (pipe(ends) != 0)
        qFatal("no pipe");
    const pid_t child = fork();
    if (child == 0) {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        startWatchdog();
        HeapCounter::forgetPeak();
        const std::size_t used = HeapCounter::used();
        const std::size_t allocated = HeapCounter::allocated();
        const std::size_t allocations = HeapCounter::allocations();
        function();
        const Cost taken{true, qint64(HeapCounter::peak() - used), qint64(HeapCounter::allocated() - allocated),
                         qint64(HeapCounter::allocations() - allocations)};
        _exit(write(ends[1], &taken, sizeof taken) == sizeof taken ? 0 : 1);
    }
    close(ends[1]);
    Cost result;
    const bool isComplete = read(ends[0], &result, sizeof result) == sizeof result;
    close(ends[0]);
    int status = 0;
    rusage usage = {};
    wait4(child, &status, 0, &usage);
    result.ended = isComplete && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    record(result, usage);
    return result;
}

Cost costInThread(const std::function<void()> &function, unsigned stackSize)
{
    return cost([&function, stackSize] {
        const std::unique_ptr<QThread> thread(QThread::create(function));
        thread->setStackSize(stackSize);
        thread->start();
        thread->wait();
    });
}

} // namespace fixture
