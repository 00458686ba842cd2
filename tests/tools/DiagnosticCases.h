// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DIAGNOSTICCASES_H
#define DIAGNOSTICCASES_H

#include "LintCase.h"

namespace fixture {

/// A package for each diagnostic: of the archive, of its members, of the manifest, and of the table.
QVector<LintCase> diagnosticCases();

} // namespace fixture

#endif
