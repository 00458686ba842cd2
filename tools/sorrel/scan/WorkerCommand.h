// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef WORKERCOMMAND_H
#define WORKERCOMMAND_H

#include "Command.h"
#include "ReportContent.h"

#include <QCommandLineOption>
#include <QStringList>

/**
 * `sorrel worker`, which a WorkerPool starts and people do not: reads paths from standard input, each with a NUL behind it,
 * and answers each by a line on standard output: the error's code, a space, and the report as JSON. It ends with its
 * input, and is killed when the process that started it ends, by a signal too.
 *
 * The kernel ends it by SIGALRM when a file takes too long. When memory runs out, it answers so, and ends: what the
 * interrupted work has left behind is gone with it.
 */
class WorkerCommand : public Command
{
public:
    /// Memory and time that one file may take. 0 is no limit.
    struct Limits {
        qint64 memory = 0; ///< bytes of data that the whole worker may have, not counting code
        double seconds = 0;
    };

    /// The arguments that start a worker of this process.
    static QStringList commandLine(const ReportContent &content, const Limits &limits);

    QString name() const override { return QStringLiteral("worker"); }
    QString summary() const override { return QStringLiteral("Reads packages for 'sorrel scan'."); }
    bool isInternal() const override { return true; }
    int minArguments() const override { return 7; }
    int maxArguments() const override { return 7; }
    int run(const QCommandLineParser &parser, Console &console) const override;
};

#endif
