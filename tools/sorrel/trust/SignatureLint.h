// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SIGNATURELINT_H
#define SIGNATURELINT_H

#include "FindingList.h"

#include <SorrelKit/Signatures.h>

#include <QList>

/**
 * Verifies the signatures of a package, and reports why Android does not install it, and weaknesses. A kind of issue has
 * one finding, however many members or signers have it; `sorrel verify` prints all.
 */
class SignatureLint
{
public:
    SignatureLint(const SorrelKit::Signatures &signatures, FindingList *findings)
        : m_signatures(signatures), m_findings(findings)
    {
    }
    /// A SignatureCheck.
    static void check(const SorrelKit::Package &package, FindingList *findings);

    void run();

private:
    /// The issues of one code.
    struct Kind {
        SorrelKit::SignatureIssue first;
        QList<SorrelKit::Signer::Scheme> schemes; ///< each once
        int count = 0;
    };

    static bool isNotSigned(const Kind &kind)
    {
        return kind.first.code() == SorrelKit::SignatureIssue::Code::NotSigned;
    }
    static QList<Kind> kindsOf(const QList<SorrelKit::SignatureIssue> &issues);
    void addErrors();
    void addWarnings();
    void add(const LintCheck &check, const Kind &kind, const QString &consequence);

    const SorrelKit::Signatures m_signatures;
    FindingList *m_findings;
};

#endif
