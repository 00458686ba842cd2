// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FINDING_H
#define FINDING_H

#include <QString>

/// How much a finding matters to readers of the package.
enum class Severity {
    Note,    ///< readers cope with it
    Warning, ///< some readers see something else or nothing
    Error,   ///< the package or a part of it cannot be read or installed
};

/// "note", "warning" or "error".
QString severityName(Severity severity);

/// Something odd in a package. Texts may contain texts of the package: pass them through printableText() for a
/// terminal.
struct Finding {
    QString check; ///< name of the check, from LintChecks.h
    Severity severity = Severity::Note;
    QString subject; ///< the member or launcher; empty for the whole package
    QString text;    ///< the oddity and its consequence, in one English sentence
};

#endif
