// SPDX-License-Identifier: LGPL-2.1-or-later
//
// sorrel: the commands that need QtCore and libsorrelkitcore alone. It becomes another program for the rest.

#include "CommandLine.h"
#include "FilesCommand.h"
#include "InfoCommand.h"
#include "ManifestCommand.h"
#include "OtherProgram.h"
#include "ResourcesCommand.h"
#include "ScanCommand.h"
#include "WorkerCommand.h"

int main(int argc, char *argv[])
{
    const Program program = OtherProgram::needed(argc, argv);
    if (program != Program::Core)
        return OtherProgram::become(program, argc, argv);
    return CommandLine::run(argc, argv,
                            {
                                CommandLine::entry<InfoCommand>("info"),
                                CommandLine::entry<ManifestCommand>("manifest"),
                                CommandLine::entry<ResourcesCommand>("resources"),
                                CommandLine::entry<FilesCommand>("files"),
                                CommandLine::entry<ScanCommand>("scan"),
                                CommandLine::entry<WorkerCommand>("worker"),
                            });
}
