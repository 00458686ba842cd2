// SPDX-License-Identifier: LGPL-2.1-or-later
//
// sorrel: the commands that need no QtGui. It becomes another program for the rest.

#include "CommandLine.h"
#include "DrawProgram.h"
#include "FilesCommand.h"
#include "InfoCommand.h"
#include "LintCommand.h"
#include "ManifestCommand.h"
#include "ReportLint.h"
#include "ResourcesCommand.h"
#include "ScanCommand.h"
#include "WorkerCommand.h"

namespace {

class Worker : public WorkerCommand
{
public:
    Worker() : WorkerCommand({addLint}) {}
};

} // namespace

int main(int argc, char *argv[])
{
    if (DrawProgram::isNeeded(argc, argv))
        return DrawProgram::become(argv);
    return CommandLine::run(argc, argv,
                            {
                                CommandLine::entry<InfoCommand>("info"),
                                CommandLine::entry<ManifestCommand>("manifest"),
                                CommandLine::entry<ResourcesCommand>("resources"),
                                CommandLine::entry<FilesCommand>("files"),
                                CommandLine::entry<LintCommand>("lint"),
                                CommandLine::entry<ScanCommand>("scan"),
                                CommandLine::entry<Worker>("worker"),
                            });
}
