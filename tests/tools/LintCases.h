// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LINTCASES_H
#define LINTCASES_H

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QVector>

namespace fixture {

/// A package in which one thing is odd.
struct LintCase {
    const char *name; ///< of the check that finds it, with more behind a comma when there are several for one
    QByteArray bytes;
    QJsonArray findings; ///< all that `sorrel lint --json` finds
    int errorCode = 0;   ///< that it answers
};

/// At least one for each check.
QVector<LintCase> lintCases();

/// A finding, as `sorrel lint --json` writes it.
QJsonObject finding(const char *check, const QString &severity, const QString &subject, const QByteArray &text);

} // namespace fixture

#endif
