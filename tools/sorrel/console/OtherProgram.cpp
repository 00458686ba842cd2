// SPDX-License-Identifier: LGPL-2.1-or-later
#include "OtherProgram.h"

#include "Command.h"
#include "CommandList.h"
#include "Console.h"
#include "FileName.h"
#include "ProgramPath.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <unistd.h>

namespace {

bool isSame(const char *argument, const char *word)
{
    return std::strcmp(argument, word) == 0;
}

// The arguments after "--" are files.
bool hasOption(int argc, char *argv[], const char *option)
{
    char **const end = std::find_if(argv + 2, argv + argc, [](const char *each) { return isSame(each, "--"); });
    return std::any_of(argv + 2, end, [option](const char *each) { return isSame(each, option); });
}

} // namespace

Program OtherProgram::needed(int argc, char *argv[])
{
    if (argc < 2)
        return Program::Core;
    const auto command = std::find_if(std::begin(CommandList), std::end(CommandList),
                                      [argv](const ListedCommand &each) { return isSame(each.name, argv[1]); });
    if (command == std::end(CommandList))
        return Program::Core;
    return command->option != nullptr && hasOption(argc, argv, command->option) ? command->optionProgram
                                                                                : command->program;
}

QByteArray OtherProgram::path(Program program)
{
    QByteArray own = programPath();
    const QByteArray directory = own.left(own.lastIndexOf('/') + 1);
    if (own.isEmpty() || program == Program::Core)
        return own;
    return directory + (program == Program::Trust ? SORREL_TRUST_PROGRAM : SORREL_DRAW_PROGRAM);
}

int OtherProgram::become(Program program, char *argv[])
{
    const QByteArray file = path(program);
    execv(file.constData(), argv);
    const QString subject = program == Program::Trust ? QStringLiteral("signatures") : QStringLiteral("drawing");
    Console::complain(QStringLiteral("the program for %1, %2").arg(subject, FileName(file).text()),
                      QString::fromLocal8Bit(std::strerror(errno)));
    return CannotRead;
}
