// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ISSUELIST_H
#define SORRELKIT_ISSUELIST_H

#include <SorrelKit/SignatureIssue.h>

#include <QList>
#include <QString>

namespace SorrelKit {

/// The errors and warnings of one scheme of a package. Keeps the first MaxIssues of each kind, and a last one that says
/// so.
class IssueList
{
public:
    static constexpr int MaxIssues = 255;

    explicit IssueList(Signer::Scheme scheme = Signer::Scheme::None) : m_scheme(scheme) {}

    void addError(SignatureIssue::Code code, const QString &subject = QString(), const QString &detail = QString());
    void addWarning(SignatureIssue::Code code, const QString &subject = QString(), const QString &detail = QString());

    bool hasErrors() const { return !m_errors.isEmpty(); }
    const QList<SignatureIssue> &errors() const { return m_errors; }
    const QList<SignatureIssue> &warnings() const { return m_warnings; }

private:
    Signer::Scheme m_scheme;
    QList<SignatureIssue> m_errors;
    QList<SignatureIssue> m_warnings;
};

} // namespace SorrelKit

#endif
