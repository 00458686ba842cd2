// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FAILURE_H
#define FAILURE_H

#include <QString>

#include <cstdio>
#include <cstdlib>

namespace bench {

/// Ends the program with status 1, and a line on standard error: what cannot be done cannot be measured.
[[noreturn]] inline void fail(const QString &message)
{
    std::fprintf(stderr, "%s\n", qPrintable(message));
    std::exit(1);
}

} // namespace bench

#endif
