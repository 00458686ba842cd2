// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/SignerWeaknesses.h"

namespace SorrelKit {

namespace {

using Code = SignatureIssue::Code;

QString weakHashOf(const Certificate &certificate)
{
    const QString algorithm = certificate.signatureAlgorithm();
    if (algorithm.contains(QLatin1String("md5"), Qt::CaseInsensitive))
        return QStringLiteral("MD5");
    const bool isSha1 = algorithm.contains(QLatin1String("sha1"), Qt::CaseInsensitive);
    return isSha1 ? QStringLiteral("SHA-1") : QString();
}

} // namespace

SignerWeaknesses::SignerWeaknesses(IssueList *issues, const QDateTime &now) : m_issues(issues), m_now(now) {}

void SignerWeaknesses::find(const Certificate &certificate)
{
    if (certificate.isNull() || m_known.contains(certificate.der()))
        return;
    m_known.insert(certificate.der());
    const QString subject = certificate.subject();
    const QString hash = weakHashOf(certificate);
    if (!hash.isEmpty())
        m_issues->addWarning(Code::WeakHash, subject, hash + QLatin1String(" in the certificate"));
    const bool isCurve = certificate.keyAlgorithm() == QLatin1String("EC");
    const int bits = certificate.keyBits();
    if (bits > 0 && bits < MinModulusBits && !isCurve)
        m_issues->addWarning(Code::WeakKey, subject,
                             QStringLiteral("%1 bits of %2").arg(bits).arg(certificate.keyAlgorithm()));
    if (certificate.isDebug())
        m_issues->addWarning(Code::DebugCertificate, subject);
    if (certificate.notAfter().isValid() && m_now > certificate.notAfter())
        m_issues->addWarning(Code::Expired, subject, certificate.notAfter().toString(Qt::ISODate));
    if (certificate.notBefore().isValid() && m_now < certificate.notBefore())
        m_issues->addWarning(Code::NotYetValid, subject, certificate.notBefore().toString(Qt::ISODate));
}

} // namespace SorrelKit
