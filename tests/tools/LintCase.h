// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LINTCASE_H
#define LINTCASE_H

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

/// A finding in the form of `sorrel lint --json`.
inline QJsonObject finding(const char *check, const QString &severity, const QString &subject, const QByteArray &text)
{
    return {{QStringLiteral("check"), QLatin1String(check)},
            {QStringLiteral("severity"), severity},
            {QStringLiteral("subject"), subject},
            {QStringLiteral("text"), QString::fromUtf8(text)}};
}

/// The finding that ApkFile refuses the package, with the @p error "code 1, could not open APK file".
inline QJsonObject apkFileRefuses(const QByteArray &error)
{
    return finding("apkfile-refuses", QStringLiteral("warning"), QString(),
                   "SorrelKit reads the package, ApkFile does not (" + error + ").");
}

} // namespace fixture

#endif
