// SPDX-License-Identifier: LGPL-2.1-or-later
#include "WorkerCommand.h"

#include "Console.h"
#include "JsonText.h"
#include "PackageReport.h"
#include "ProcessLimits.h"
#include "ScanError.h"

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

QList<QByteArray> WorkerCommand::arguments(const ReportContent &content, const Limits &limits)
{
    return {
        "worker",
        QByteArray::number(content.includesDisabled ? 1 : 0),
        QByteArray::number(content.iconSize),
        QByteArray::number(int(content.iconMask)),
        QByteArray::number(content.includesLint ? 1 : 0),
        QByteArray::number(content.lintDrawsIcons ? 1 : 0),
        QByteArray::number(content.includesSignatures ? 1 : 0),
        QByteArray::number(limits.memory),
        QByteArray::number(limits.seconds),
        QByteArray::number(getpid()),
    };
}

int WorkerCommand::run(const QCommandLineParser &parser, Console &console) const
{
    const QStringList arguments = parser.positionalArguments();
    ReportContent content;
    content.includesDisabled = arguments.at(0).toInt() != 0;
    content.iconSize = arguments.at(1).toInt();
    content.iconMask = SorrelKit::IconMask(arguments.at(2).toInt());
    content.includesLint = arguments.at(3).toInt() != 0;
    content.lintDrawsIcons = arguments.at(4).toInt() != 0;
    content.includesSignatures = arguments.at(5).toInt() != 0;
    const Limits limits{arguments.at(6).toLongLong(), arguments.at(7).toDouble()};

    if (!ProcessLimits::endWithParent(pid_t(arguments.at(8).toInt())))
        return CannotRead;
    ProcessLimits::limitMemory(limits.memory);
    char *line = nullptr;
    size_t capacity = 0;
    bool hasMemory = true;
    while (hasMemory && getdelim(&line, &capacity, '\0', stdin) > 0) {
        const FileName file{QByteArray(line)};
        setAlarm(limits.seconds);
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
