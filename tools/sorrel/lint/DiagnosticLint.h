// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DIAGNOSTICLINT_H
#define DIAGNOSTICLINT_H

#include <SorrelKit/Package.h>

class FindingList;

/// Reports the diagnostics of a package: what Android refuses, and what it takes although it is odd.
namespace DiagnosticLint {

/// Adds a finding for each diagnostic of @p package. Those that Android takes are left out when another check of lint
/// reports the same fact of every member.
void run(const SorrelKit::Package &package, FindingList *findings);

} // namespace DiagnosticLint

#endif
