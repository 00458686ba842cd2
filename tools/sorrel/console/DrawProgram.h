// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRAWPROGRAM_H
#define DRAWPROGRAM_H

#include <QByteArray>

/**
 * `sorrel-draw`, the program for the commands that need QtGui. `sorrel` itself starts several times faster, because the
 * system does not load libraries for drawing. The program is installed beside no command: its path is relative to that
 * of `sorrel`, so a moved installation and the build tree work.
 */
namespace DrawProgram {

/// Whether the arguments @p argv of main() name a command that draws, or are those of `sorrel lint --draw`.
bool isNeeded(int argc, char *argv[]);
/// Its path in the bytes of the system; empty when the path of this process is unknown.
QByteArray path();
/// Becomes this program, with the arguments @p argv of main(). When that fails, prints an error and returns an
/// ExitStatus.
int become(char *argv[]);

} // namespace DrawProgram

#endif
