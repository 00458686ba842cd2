// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ScanOptions.h"

#include <QThread>

namespace {

constexpr int MaxJobs = 1024;
/// A worker has about 10 MiB of data before it reads anything.
constexpr int MinMegabytes = 32;
constexpr int MaxMegabytes = 1 << 20;
constexpr int DefaultMegabytes = 1024;
constexpr double MinSeconds = 0.001;
constexpr double MaxSeconds = 86400;
constexpr int DefaultSeconds = 60;

} // namespace

ScanOptions::ScanOptions()
    : m_jobs({QStringLiteral("j"), QStringLiteral("jobs")},
             QStringLiteral("Number of worker processes; by default one for each processor."), QStringLiteral("N"),
             QString::number(QThread::idealThreadCount())),
      m_maxMemory(QStringLiteral("max-memory"),
                  QStringLiteral("Memory limit of a worker in MiB; by default %1.").arg(DefaultMegabytes),
                  QStringLiteral("MIB"), QString::number(DefaultMegabytes)),
      m_timeout(QStringLiteral("timeout"),
                QStringLiteral("Time limit for a file in seconds; by default %1.").arg(DefaultSeconds),
                QStringLiteral("SECONDS"), QString::number(DefaultSeconds)),
      m_noProgress(QStringLiteral("no-progress"), QStringLiteral("Do not show progress, even on a terminal.")),
      m_null({QStringLiteral("0"), QStringLiteral("null")},
             QStringLiteral("Expect a NUL after each path on standard input, as 'find -print0' writes it."))
{
}

void ScanOptions::addTo(QCommandLineParser &parser) const
{
    parser.addOptions({m_jobs, m_maxMemory, m_timeout, m_noProgress, m_null});
}

bool ScanOptions::read(const QCommandLineParser &parser)
{
    double jobs = 0;
    double megabytes = 0;
    if (!readNumber(parser, m_jobs, 1, MaxJobs, &jobs)
        || !readNumber(parser, m_maxMemory, MinMegabytes, MaxMegabytes, &megabytes)
        || !readNumber(parser, m_timeout, MinSeconds, MaxSeconds, &m_limits.seconds))
        return false;
    m_jobCount = int(jobs);
    m_limits.memory = qint64(megabytes * (1 << 20));
    m_showsProgress = !parser.isSet(m_noProgress);
    m_separator = parser.isSet(m_null) ? '\0' : '\n';
    return true;
}

bool ScanOptions::readNumber(const QCommandLineParser &parser, const QCommandLineOption &option, double min, double max,
                             double *number)
{
    bool isNumber = false;
    *number = parser.value(option).toDouble(&isNumber);
    if (isNumber && *number >= min && *number <= max)
        return true;
    m_error = QStringLiteral("--%1 is a number from %2 to %3, not '%4'.")
                  .arg(option.names().constLast())
                  .arg(min)
                  .arg(int(max))
                  .arg(parser.value(option));
    return false;
}
