// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef OTHERPROGRAM_H
#define OTHERPROGRAM_H

#include "Program.h"

#include <QByteArray>

/**
 * The programs for the commands that need more libraries than `sorrel` itself. `sorrel` starts several times faster,
 * because the system loads no library that the command does not need. These programs are installed beside no command:
 * their paths are relative to that of `sorrel`, so a moved installation and the build tree work.
 */
namespace OtherProgram {

/// The program for the arguments @p argv of main(). CommandList.h has the program of each command, and the options that
/// need another one.
Program needed(int argc, char *argv[]);
/// The path of @p program in the bytes of the system, for the process of `sorrel`; empty when the path of this process is
/// unknown.
QByteArray path(Program program);
/// Becomes @p program, with the arguments of main(), and returns an ExitStatus. Program::Shelf is a module, which this
/// process loads: starting another process would take as long as all of `sorrel find`. When the program is missing,
/// prints an error.
int become(Program program, int argc, char *argv[]);
/// The main() of a module.
constexpr char ModuleMain[] = "sorrelModuleMain";

} // namespace OtherProgram

#endif
