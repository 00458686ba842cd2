// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FINDING_H
#define FINDING_H

#include <QString>

/// How much what was found matters to those who read the package.
enum class Severity {
    Note,    ///< worth knowing; readers do with it
    Warning, ///< some readers see something else, or nothing
    Error,   ///< the package, or a part of it, cannot be read, or not be installed
};

/// "note", "warning" or "error".
QString severityName(Severity severity);

/// Something odd in a package. Texts may hold what stands in the package, and go through printableText() to a terminal.
struct Finding {
    QString check; ///< name of the check that found it, as LintChecks.h has it
    Severity severity = Severity::Note;
    QString subject; ///< the member or launcher that it is about; empty for the package as a whole
    QString text;    ///< what is odd, and what follows from it, in one English sentence
};

#endif
