// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DrawProgram.h"

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

bool DrawProgram::isNeeded(int argc, char *argv[])
{
    if (argc < 2)
        return false;
    const bool isDrawing =
        std::any_of(std::begin(CommandList), std::end(CommandList), [argv](const ListedCommand &command) {
            return command.isDrawing && std::strcmp(command.name, argv[1]) == 0;
        });
    if (isDrawing || std::strcmp(argv[1], "lint") != 0)
        return isDrawing;
    // The arguments after "--" are files.
    char **const end =
        std::find_if(argv + 2, argv + argc, [](const char *each) { return std::strcmp(each, "--") == 0; });
    return std::any_of(argv + 2, end, [](const char *each) { return std::strcmp(each, "--draw") == 0; });
}

QByteArray DrawProgram::path()
{
    const QByteArray own = programPath();
    return own.isEmpty() ? own : own.left(own.lastIndexOf('/') + 1) + SORREL_DRAW_PROGRAM;
}

int DrawProgram::become(char *argv[])
{
    const QByteArray program = path();
    execv(program.constData(), argv);
    Console::complain(QStringLiteral("the program for drawing, ") + FileName(program).text(),
                      QString::fromLocal8Bit(std::strerror(errno)));
    return CannotRead;
}
