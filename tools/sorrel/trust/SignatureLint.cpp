// SPDX-License-Identifier: LGPL-2.1-or-later
#include "SignatureLint.h"

#include "SignatureNames.h"

#include <SorrelKit/Package.h>

#include <algorithm>

using SorrelKit::SignatureIssue;
using SorrelKit::Signatures;
using SorrelKit::Signer;

namespace {

/// Android 7.0, the first version that knows more than v1.
constexpr int FirstWithV2 = 24;

// The text of the kind alone, as a sentence begins.
QString kindText(const SignatureIssue &issue)
{
    QString text = SignatureIssue(issue.code(), issue.scheme()).message();
    if (!text.isEmpty())
        text[0] = text.at(0).toUpper();
    return text;
}

} // namespace

void SignatureLint::check(const SorrelKit::Package &package, FindingList *findings)
{
    SignatureLint(Signatures(package), findings).run();
}

void SignatureLint::run()
{
    addErrors();
    addWarnings();
    if (m_signatures.isVerified() && m_signatures.schemes() == QList<Signer::Scheme>{Signer::Scheme::V1}
        && m_signatures.maxSdkVersion() >= FirstWithV2)
        m_findings->add(LintChecks::V1Only, QString(),
                        QStringLiteral("The package is signed by scheme v1 alone; Android 7.0 and later accept changes "
                                       "outside of its members, and take longer to install it."));
}

QList<SignatureLint::Kind> SignatureLint::kindsOf(const QList<SignatureIssue> &issues)
{
    QList<Kind> kinds;
    for (const SignatureIssue &issue : issues) {
        auto kind = std::find_if(kinds.begin(), kinds.end(),
                                 [&](const Kind &each) { return each.first.code() == issue.code(); });
        if (kind == kinds.end())
            kind = kinds.insert(kinds.end(), {issue, {}, 0});
        ++kind->count;
        if (issue.scheme() != Signer::Scheme::None && !kind->schemes.contains(issue.scheme()))
            kind->schemes.append(issue.scheme());
    }
    return kinds;
}

void SignatureLint::add(const LintCheck &check, const Kind &kind, const QString &consequence)
{
    QStringList facts;
    if (!kind.schemes.isEmpty())
        facts.append(SignatureNames::schemesText(kind.schemes));
    if (kind.count > 1)
        facts.append(FindingList::counted(kind.count, QStringLiteral("time")));
    else if (!kind.first.detail().isEmpty())
        facts.append(FindingList::shortened(kind.first.detail()));
    const QString where = facts.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(facts.join(QStringLiteral(", ")));
    m_findings->add(check, kind.count == 1 ? kind.first.subject() : QString(),
                    kindText(kind.first) + where + QStringLiteral("; ") + consequence);
}

void SignatureLint::addErrors()
{
    const QList<Kind> kinds = kindsOf(m_signatures.errors());
    const bool isUnsigned = m_signatures.schemes().isEmpty() && std::any_of(kinds.cbegin(), kinds.cend(), isNotSigned);
    if (isUnsigned)
        m_findings->add(LintChecks::Unsigned, QString(),
                        QStringLiteral("The package has no signature; Android does not install it."));
    for (const Kind &kind : kinds) {
        // A package without a signature lacks each scheme, too.
        if (!isUnsigned || (!isNotSigned(kind) && kind.first.code() != SignatureIssue::Code::SchemeRequired))
            add(LintChecks::NotVerified, kind, QStringLiteral("the package is not verified."));
    }
}

// Other warnings have no effect on who can install or change the package.
void SignatureLint::addWarnings()
{
    for (const Kind &kind : kindsOf(m_signatures.warnings())) {
        switch (kind.first.code()) {
        case SignatureIssue::Code::WeakHash:
        case SignatureIssue::Code::WeakKey:
            add(LintChecks::WeakSignature, kind, QStringLiteral("others may be able to forge the signature."));
            break;
        case SignatureIssue::Code::DebugCertificate:
            add(LintChecks::DebugCertificate, kind, QStringLiteral("shops refuse the package."));
            break;
        case SignatureIssue::Code::Expired:
        case SignatureIssue::Code::NotYetValid:
            add(LintChecks::ExpiredCertificate, kind, QStringLiteral("Android installs the package all the same."));
            break;
        case SignatureIssue::Code::UnprotectedMember:
            add(LintChecks::UnprotectedMember, kind,
                QStringLiteral("anyone can change it for devices that use this scheme."));
            break;
        default:
            break;
        }
    }
}
