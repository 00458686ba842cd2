// SPDX-License-Identifier: LGPL-2.1-or-later
//
// sorrel-shelf: the commands of sorrel that use an index of packages.

#include "CommandLine.h"
#include "FindCommand.h"

int main(int argc, char *argv[])
{
    return CommandLine::run(argc, argv,
                            {
                                CommandLine::entry<FindCommand>("find"),
                            });
}
