// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LINTCASES_H
#define LINTCASES_H

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QVector>

namespace fixture {

/// A package with one fault.
struct LintCase {
    const char *name; ///< of the check; several cases of one check have more text after a comma
    QByteArray bytes;
    QJsonArray findings;  ///< all findings of `sorrel lint --json --draw`
    int errorCode = 0;    ///< in the output
    bool isDrawn = false; ///< whether the same without `--draw` has fewer findings
};

/// At least one for each check.
QVector<LintCase> lintCases();

/// A finding in the form of `sorrel lint --json`.
QJsonObject finding(const char *check, const QString &severity, const QString &subject, const QByteArray &text);

} // namespace fixture

#endif
