// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGELINT_H
#define PACKAGELINT_H

#include "Finding.h"

#include <QJsonArray>
#include <QString>
#include <QVector>

/**
 * What is odd in the package, or set of packages, in a file, and what its readers would trip over: libsorrel's ApkFile,
 * SorrelKit, other readers of ZIP archives, Android. All is looked at when the object is made; the file is closed then.
 * LintChecks.h has the checks.
 *
 * Time and memory are bounded as those of SorrelKit::Package are, of which this takes some times as much, and no
 * package ends the process. Objects may be made in several threads at a time.
 */
class PackageLint
{
public:
    explicit PackageLint(const QString &fileName);

    /// SorrelKit::Package::error() and its text. There may be findings that tell why.
    int errorCode() const { return m_errorCode; }
    QString errorText() const { return m_errorText; }
    bool failed() const { return m_errorCode != 0; }

    /// In the order of LintChecks::All.
    const QVector<Finding> &findings() const { return m_findings; }
    /// The same, as objects of "check", "severity" ("note", "warning", "error"), "subject" and "text".
    QJsonArray toJson() const;

private:
    int m_errorCode = 0;
    QString m_errorText;
    QVector<Finding> m_findings;
};

#endif
