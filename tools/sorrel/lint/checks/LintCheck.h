// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LINTCHECK_H
#define LINTCHECK_H

#include "Finding.h"

/// A check: its name, which stays the same from version to version, how much its findings matter, and what they mean.
/// The texts live as long as the program.
struct LintCheck {
    const char *name;
    Severity severity;
    const char *meaning;
};

#endif
