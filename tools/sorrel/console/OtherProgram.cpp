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
#include <dlfcn.h>
#include <iterator>
#include <unistd.h>

namespace {

bool isSame(const char *argument, const char *word)
{
    return std::strcmp(argument, word) == 0;
}

// "--option" or "--option=value". The arguments after "--" are files.
bool hasOption(int argc, char *argv[], const char *option)
{
    char **const end = std::find_if(argv + 2, argv + argc, [](const char *each) { return isSame(each, "--"); });
    const size_t length = std::strlen(option);
    return std::any_of(argv + 2, end, [option, length](const char *each) {
        return std::strncmp(each, option, length) == 0 && (each[length] == '\0' || each[length] == '=');
    });
}

/// A program besides `sorrel`.
struct ProgramName {
    const char *path;    ///< relative to the directory of `sorrel`
    const char *subject; ///< for an error
};

ProgramName nameOf(Program program)
{
    switch (program) {
    case Program::Trust:
        return {SORREL_TRUST_PROGRAM, "signatures"};
    case Program::Shelf:
        return {SORREL_SHELF_PROGRAM, "indexes"};
    case Program::Draw:
    case Program::Core:
        break;
    }
    return {SORREL_DRAW_PROGRAM, "drawing"};
}

int failToStart(Program program, const QByteArray &file, const QString &text)
{
    Console::complain(
        QStringLiteral("the program for %1, %2").arg(QLatin1String(nameOf(program).subject), FileName(file).text()),
        text);
    return CannotRead;
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
    return directory + nameOf(program).path;
}

int OtherProgram::become(Program program, int argc, char *argv[])
{
    const QByteArray file = path(program);
    if (program != Program::Shelf) {
        execv(file.constData(), argv);
        return failToStart(program, file, QString::fromLocal8Bit(std::strerror(errno)));
    }
    void *const module = ::dlopen(file.constData(), RTLD_LAZY | RTLD_LOCAL);
    void *const main = module == nullptr ? nullptr : ::dlsym(module, ModuleMain);
    if (main == nullptr)
        return failToStart(program, file, QString::fromLocal8Bit(::dlerror()));
    return reinterpret_cast<int (*)(int, char *[])>(main)(argc, argv);
}
