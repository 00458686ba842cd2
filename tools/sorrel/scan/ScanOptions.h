// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SCANOPTIONS_H
#define SCANOPTIONS_H

#include "WorkerCommand.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QString>

/// The options of commands that read many packages with worker processes.
class ScanOptions
{
public:
    ScanOptions();

    void addTo(QCommandLineParser &parser) const;
    /// Reads them from @p parser. Returns false and sets errorText() when one is invalid.
    bool read(const QCommandLineParser &parser);

    int jobs() const { return m_jobCount; }
    const WorkerCommand::Limits &limits() const { return m_limits; }
    bool showsProgress() const { return m_showsProgress; }
    /// The separator behind each path on standard input.
    char separator() const { return m_separator; }
    QString errorText() const { return m_error; }

private:
    bool readNumber(const QCommandLineParser &parser, const QCommandLineOption &option, double min, double max,
                    double *number);

    const QCommandLineOption m_jobs;
    const QCommandLineOption m_maxMemory;
    const QCommandLineOption m_timeout;
    const QCommandLineOption m_noProgress;
    const QCommandLineOption m_null;
    int m_jobCount = 1;
    WorkerCommand::Limits m_limits;
    bool m_showsProgress = true;
    char m_separator = '\n';
    QString m_error;
};

#endif
