// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef WORKERCOMMAND_H
#define WORKERCOMMAND_H

#include "Command.h"
#include "ReportPart.h"

#include "workers/WorkerOrder.h"

#include <vector>

/**
 * `sorrel worker`, which only WorkerPool starts. It reads paths from standard input, with a NUL after each, and prints
 * a line for each on standard output: the error code, a space, and the report as JSON. The line of a file is written
 * before the next file is opened, so no line is lost when the worker dies. It ends with its input, and the kernel kills
 * it when its parent ends, even by a signal.
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

    /// @p parts are added to each report, when its content asks for them.
    explicit WorkerCommand(const std::vector<ReportPart> &parts = {}) : m_parts(parts) {}

    /// The order for a worker of this process.
    static WorkerOrder order(const ReportContent &content, const Limits &limits);

    int minArguments() const override { return WorkerOrder::ArgumentCount; }
    int maxArguments() const override { return WorkerOrder::ArgumentCount; }
    int run(const QCommandLineParser &parser, Console &console) const override;

private:
    const std::vector<ReportPart> m_parts;
};

#endif
