// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DIAGNOSTICCHECKS_H
#define DIAGNOSTICCHECKS_H

#include "LintCheck.h"

#include <SorrelKit/Diagnostic.h>

#include <QString>

#include <vector>

/**
 * The checks of diagnostics: one for each code. Its name is the name of the code in lower case ("bytes-ahead"), and its
 * meaning is the diagnostic's text, with the versions of Android that mind. A finding is an error when Android refuses
 * the package or the file, a warning when other readers see something else, and a note otherwise.
 */
namespace DiagnosticChecks {

/// The check of @p code. Precondition: it is not Code::None.
const LintCheck &of(SorrelKit::Diagnostic::Code code);
/// All of them, in the order of the codes.
const std::vector<LintCheck> &all();

/// The API levels that mind @p diagnostic ("API level 27 and later"); empty for all of them.
QString levels(const SorrelKit::Diagnostic &diagnostic);

} // namespace DiagnosticChecks

#endif
