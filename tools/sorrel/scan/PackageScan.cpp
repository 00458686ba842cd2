// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PackageScan.h"

#include "Command.h"
#include "Console.h"
#include "JsonText.h"
#include "PackageReport.h"
#include "ProgressBar.h"

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

int PackageScan::complainOfFaults() const
{
    for (const PackagePaths::Fault &fault : m_faults)
        Console::complain(fault.name.text(), fault.text);
    return m_faults.isEmpty() ? Success : CannotRead;
}

int PackageScan::run(bool isOrdered, const Take &take) const
{
    int status = complainOfFaults();
    WorkerPool pool({m_program, WorkerCommand::order(m_content, m_options.limits()).arguments()}, m_options.jobs());
    QList<QByteArray> paths;
    for (const FileName &file : m_files)
        paths.append(file.path());
    ProgressBar progress(int(m_files.size()), m_options.showsProgress());
    QMap<int, QByteArray> waiting;
    int next = 0;
    int done = 0;
    const auto deliver = [&](const std::vector<WorkerPool::Outcome> &outcomes) {
        QVector<QByteArray> reports;
        progress.clear();
        for (const WorkerPool::Outcome &outcome : outcomes) {
            const QByteArray report = reportOf(outcome);
            if (outcome.errorCode != 0) {
                Console::complain(m_files.at(outcome.index).text(), complaint(report));
                status = CannotRead;
            }
            if (isOrdered)
                waiting.insert(outcome.index, report);
            else
                reports.append(report);
        }
        for (; waiting.contains(next); ++next)
            reports.append(waiting.take(next));
        const bool goesOn = reports.isEmpty() || take(reports);
        done += int(outcomes.size());
        progress.setDone(done);
        return goesOn;
    };
    const int window = isOrdered ? WindowPerJob * m_options.jobs() : std::numeric_limits<int>::max();
    if (!pool.run(paths, deliver, window)) {
        progress.clear();
        Console::complain(QStringLiteral("workers"), pool.errorText());
        status = CannotRead;
    }
    return status;
}

QByteArray PackageScan::reportOf(const WorkerPool::Outcome &outcome) const
{
    if (!outcome.report.isEmpty())
        return outcome.report;
    const auto code = ScanError::Code(outcome.errorCode);
    return jsonText(PackageReport::failure(m_files.at(outcome.index), code, ScanError::text(code)));
}
