// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGELINT_H
#define PACKAGELINT_H

#include "FileName.h"
#include "Finding.h"
#include "IconCheck.h"
#include "SignatureCheck.h"

#include <QJsonArray>
#include <QString>
#include <QVector>

/**
 * Checks the package, or set of packages, in a file for oddities that its readers may fail at: libsorrel's ApkFile,
 * SorrelKit, other readers of ZIP archives, and Android. The constructor runs all checks and closes the file.
 * LintChecks.h has the checks.
 *
 * Time and memory are bounded like those of SorrelKit::Package; this takes a few times as much, and the time of
 * SorrelKit::Signatures with such a check. No package ends the
 * process. Several threads may construct objects at a time.
 */
class PackageLint
{
public:
    /// @p makeIconCheck makes a further check of the launchers' icons, such as DrawnIconCheck. @p checkSignatures checks
    /// the signatures, such as SignatureLint.
    explicit PackageLint(const FileName &file, const IconCheckFactory &makeIconCheck = {},
                         const SignatureCheck &checkSignatures = {});

    /// SorrelKit::Package::error() and its text. Findings may give the reason.
    int errorCode() const { return m_errorCode; }
    QString errorText() const { return m_errorText; }
    bool failed() const { return m_errorCode != 0; }

    /// In the order of LintChecks::All.
    const QVector<Finding> &findings() const { return m_findings; }
    /// The findings as objects of "check", "severity" ("note", "warning", "error"), "subject" and "text".
    QJsonArray toJson() const;

private:
    int m_errorCode = 0;
    QString m_errorText;
    QVector<Finding> m_findings;
};

#endif
