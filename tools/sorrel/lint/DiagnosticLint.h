// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DIAGNOSTICLINT_H
#define DIAGNOSTICLINT_H

#include "oddity/OddityList.h"

#include <SorrelKit/Package.h>

#include <QString>

class FindingList;

/// Reports diagnostics, each as a finding of its own check (see DiagnosticChecks).
namespace DiagnosticLint {

/// Adds a finding for each diagnostic of @p package.
void run(const SorrelKit::Package &package, FindingList *findings);

/// Adds the same findings for the member @p name, which is neither the manifest nor the table, with these @p oddities.
void reportMember(const QString &name, const OddityList &oddities, FindingList *findings);

} // namespace DiagnosticLint

#endif
