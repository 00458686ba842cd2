// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LINTCASES_H
#define LINTCASES_H

#include "LintCase.h"

namespace fixture {

/// At least one for each check, except those of signatures.
QVector<LintCase> lintCases();

} // namespace fixture

#endif
