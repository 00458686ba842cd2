// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef COMMANDLINE_H
#define COMMANDLINE_H

#include "Command.h"

#include <memory>
#include <vector>

/**
 * The command line of `sorrel`: the options without a command, the help, and one command of a program. The programs of
 * Program.h share it. They print the same help, which lists the commands of all.
 */
class CommandLine
{
public:
    /// A command that a program has. A command that is not in CommandList.h is used only by the program itself.
    struct Entry {
        const char *name;
        std::unique_ptr<Command> (*make)();
    };

    /// An entry of a command without arguments for its constructor.
    template <typename Type>
    static Entry entry(const char *name)
    {
        return {name, [] { return std::unique_ptr<Command>(std::make_unique<Type>()); }};
    }

    /// Runs the arguments of main() with the commands in @p entries, and returns an ExitStatus.
    static int run(int argc, char *argv[], const std::vector<Entry> &entries);
};

#endif
