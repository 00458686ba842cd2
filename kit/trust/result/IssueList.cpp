// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/result/IssueList.h"

namespace SorrelKit {

namespace {

void addIssue(QList<SignatureIssue> &list, const SignatureIssue &issue)
{
    if (list.size() < IssueList::MaxIssues)
        list.append(issue);
    else if (list.size() == IssueList::MaxIssues)
        list.append(SignatureIssue(SignatureIssue::Code::TooManyIssues, issue.scheme()));
}

} // namespace

void IssueList::addError(SignatureIssue::Code code, const QString &subject, const QString &detail)
{
    addIssue(m_errors, SignatureIssue(code, m_scheme, subject, detail));
}

void IssueList::addWarning(SignatureIssue::Code code, const QString &subject, const QString &detail)
{
    addIssue(m_warnings, SignatureIssue(code, m_scheme, subject, detail));
}

} // namespace SorrelKit
