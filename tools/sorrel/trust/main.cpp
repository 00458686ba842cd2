// SPDX-License-Identifier: LGPL-2.1-or-later
//
// sorrel-trust: the commands of sorrel that verify signatures, and draw nothing.

#include "CommandLine.h"
#include "InfoCommand.h"
#include "LintCommand.h"
#include "ReportLint.h"
#include "WorkerCommand.h"

namespace {

class TrustWorker : public WorkerCommand
{
public:
    TrustWorker() : WorkerCommand({addLint}) {}
};

} // namespace

int main(int argc, char *argv[])
{
    return CommandLine::run(argc, argv,
                            {
                                CommandLine::entry<InfoCommand>("info"),
                                CommandLine::entry<LintCommand>("lint"),
                                CommandLine::entry<TrustWorker>("worker"),
                            });
}
