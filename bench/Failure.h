// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FAILURE_H
#define FAILURE_H

#include <QString>

#include <cstdio>
#include <cstdlib>

namespace bench {

/// Prints a line on standard error and ends the program with status 1. A step that fails has no time to report.
[[noreturn]] inline void fail(const QString &message)
{
    std::fprintf(stderr, "%s\n", qPrintable(message));
    std::exit(1);
}

} // namespace bench

#endif
