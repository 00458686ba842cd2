// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Cost.h"

#include <QFile>
#include <QThread>

#include <csignal>
#include <malloc.h>
#include <memory>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fixture {

namespace {

// Peak of resident memory in bytes, as the kernel keeps it for this process alone.
qint64 peakMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        qFatal("no /proc/self/status");
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).chopped(2).trimmed().toLongLong() * 1024;
    }
    qFatal("no VmHWM in /proc/self/status");
}

} // namespace

Cost cost(const std::function<void()> &function, unsigned limit)
{
    // What has been freed in here would not count when it is used again in there.
    malloc_trim(0);
    int ends[2];
    if (pipe(ends) != 0)
        qFatal("no pipe");
    const pid_t child = fork();
    if (child == 0) {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        std::signal(SIGALRM, SIG_DFL);
        std::signal(SIGSEGV, SIG_DFL);
        alarm(isInstrumented() ? 10 * limit : limit);
        const qint64 before = peakMemory();
        function();
        const qint64 rise = peakMemory() - before;
        _exit(write(ends[1], &rise, sizeof rise) == sizeof rise ? 0 : 1);
    }
    close(ends[1]);
    Cost result;
    const bool told = read(ends[0], &result.memory, sizeof result.memory) == sizeof result.memory;
    close(ends[0]);
    int status = 0;
    rusage usage = {};
    wait4(child, &status, 0, &usage);
    result.ended = told && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    result.seconds = double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec)
                     + double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
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
