// SPDX-License-Identifier: LGPL-2.1-or-later
#include "WorkerCommand.h"

#include "Console.h"
#include "JsonText.h"
#include "PackageReport.h"
#include "ProcessLimits.h"

#include "workers/ScanError.h"

#include <cstdio>
#include <cstdlib>
#include <new>
#include <sys/time.h>
#include <unistd.h>

namespace {

// An alarm without a handler ends the process at any point.
void setAlarm(double seconds)
{
    itimerval timer{};
    timer.it_value.tv_sec = time_t(seconds);
    timer.it_value.tv_usec = suseconds_t((seconds - double(timer.it_value.tv_sec)) * 1e6);
    setitimer(ITIMER_REAL, &timer, nullptr);
}

QByteArray answer(const QJsonObject &report)
{
    const int code = report.value(QLatin1String("error")).toObject().value(QLatin1String("code")).toInt();
    return QByteArray::number(code) + ' ' + jsonText(report) + '\n';
}

} // namespace

WorkerOrder WorkerCommand::order(const ReportContent &content, const Limits &limits)
{
    WorkerOrder order;
    order.includesDisabled = content.includesDisabled;
    order.iconSize = content.iconSize;
    order.iconMask = int(content.iconMask);
    order.includesLint = content.includesLint;
    order.lintDrawsIcons = content.lintDrawsIcons;
    order.includesSignatures = content.includesSignatures;
    order.launcherIcons = content.launcherIcons;
    order.maxMemory = limits.memory;
    order.maxSeconds = limits.seconds;
    order.parent = getpid();
    return order;
}

int WorkerCommand::run(const QCommandLineParser &parser, Console &console) const
{
    const WorkerOrder order = WorkerOrder::fromArguments(parser.positionalArguments());
    ReportContent content;
    content.includesDisabled = order.includesDisabled;
    content.iconSize = order.iconSize;
    content.iconMask = SorrelKit::IconMask(order.iconMask);
    content.includesLint = order.includesLint;
    content.lintDrawsIcons = order.lintDrawsIcons;
    content.includesSignatures = order.includesSignatures;
    content.launcherIcons = order.launcherIcons;

    if (!ProcessLimits::endWithParent(pid_t(order.parent)))
        return CannotRead;
    ProcessLimits::limitMemory(order.maxMemory);
    char *line = nullptr;
    size_t capacity = 0;
    bool hasMemory = true;
    while (hasMemory && getdelim(&line, &capacity, '\0', stdin) > 0) {
        const FileName file{QByteArray(line)};
        setAlarm(order.maxSeconds);
        QByteArray reply;
        try {
            const PackageReport report(file, content.includesDisabled);
            QJsonObject json = report.toJson();
            for (const ReportPart add : m_parts)
                add(report, content, &json);
            reply = answer(json);
            setAlarm(0);
        } catch (const std::bad_alloc &) {
            // The alarm stays: the state is unknown, so even the end may take too long.
            ProcessLimits::limitMemory(0);
            reply = answer(
                PackageReport::failure(file, ScanError::TooMuchMemory, ScanError::text(ScanError::TooMuchMemory)));
            hasMemory = false;
        }
        console.write(reply);
        console.flush();
    }
    std::free(line);
    return hasMemory ? Success : CannotRead;
}
