// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PackageScan.h"

#include "Command.h"
#include "Console.h"
#include "JsonText.h"
#include "PackageReport.h"
#include "ProgressBar.h"
#include "WorkerPool.h"

#include <QJsonDocument>
#include <QMap>

#include <cstdio>
#include <limits>

namespace {

/// The number of reports for each worker that may wait for an earlier one.
constexpr int WindowPerJob = 64;

QString complaint(const QByteArray &report)
{
    const QJsonObject error = QJsonDocument::fromJson(report).object().value(QLatin1String("error")).toObject();
    return error.value(QLatin1String("text")).toString();
}

} // namespace

void PackageScan::add(const QStringList &arguments)
{
    PackagePaths paths;
    for (const QString &argument : arguments) {
        if (argument == QLatin1String("-"))
            paths.addList(stdin, m_options.separator());
        else
            paths.add(FileName(argument));
    }
    m_files += paths.files();
    m_faults += paths.faults();
}

int PackageScan::run(bool isOrdered, const Take &take) const
{
    int status = Success;
    for (const PackagePaths::Fault &fault : m_faults) {
        Console::complain(fault.name.text(), fault.text);
        status = CannotRead;
    }
    WorkerPool pool(m_program, WorkerCommand::commandLine(m_content, m_options.limits()), m_options.jobs());
    ProgressBar progress(int(m_files.size()), m_options.showsProgress());
    QMap<int, QByteArray> waiting;
    int next = 0;
    int done = 0;
    const auto deliver = [&](const WorkerPool::Outcome &outcome) {
        const FileName file = m_files.at(outcome.index);
        QByteArray report = outcome.report;
        if (report.isEmpty()) {
            const auto code = ScanError::Code(outcome.errorCode);
            report = jsonText(PackageReport::failure(file, code, ScanError::text(code)));
        }
        progress.clear();
        if (outcome.errorCode != 0) {
            Console::complain(file.text(), complaint(report));
            status = CannotRead;
        }
        waiting.insert(isOrdered ? outcome.index : next, report);
        bool goesOn = true;
        for (; goesOn && waiting.contains(next); ++next)
            goesOn = take(waiting.take(next));
        progress.setDone(++done);
        return goesOn;
    };
    const int window = isOrdered ? WindowPerJob * m_options.jobs() : std::numeric_limits<int>::max();
    if (!pool.run(m_files, deliver, window)) {
        progress.clear();
        Console::complain(QStringLiteral("workers"), pool.errorText());
        status = CannotRead;
    }
    return status;
}
