// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef WORKERCOMMAND_H
#define WORKERCOMMAND_H

#include "Command.h"
#include "ReportContent.h"

#include <QCommandLineOption>
#include <QStringList>

/**
 * `sorrel worker`, which only WorkerPool starts. It reads paths from standard input, with a NUL after each, and prints
 * a line for each on standard output: the error code, a space, and the report as JSON. It ends with its input, and the
 * kernel kills it when its parent ends, even by a signal.
 *
 * The kernel ends it by SIGALRM when a file takes too long. When memory runs out, it reports that and ends, because the
 * interrupted work leaves an unknown state.
 */
class WorkerCommand : public Command
{
public:
    /// Limits of memory and time for one file. 0 is no limit.
    struct Limits {
        qint64 memory = 0; ///< bytes of data of the whole worker, not counting code
        double seconds = 0;
    };

    /// The arguments that start a worker for this process.
    static QStringList commandLine(const ReportContent &content, const Limits &limits);

    QString name() const override { return QStringLiteral("worker"); }
    QString summary() const override { return QStringLiteral("Reads packages for 'sorrel scan'."); }
    bool isInternal() const override { return true; }
    int minArguments() const override { return 8; }
    int maxArguments() const override { return 8; }
    int run(const QCommandLineParser &parser, Console &console) const override;
};

#endif
