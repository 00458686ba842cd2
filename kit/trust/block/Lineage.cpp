// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/block/Lineage.h"

#include "limits/Budget.h"
#include "trust/block/PrefixedFields.h"
#include "trust/block/SignatureAlgorithms.h"
#include "trust/block/SignerBlock.h"
#include "trust/crypto/CertificateAccess.h"

#include <algorithm>

namespace SorrelKit {

namespace {

using Code = SignatureIssue::Code;

constexpr quint32 LineageVersion = 1;
constexpr quint32 KnownFlags = 31;

QString levelText(int number)
{
    return QStringLiteral("level %1").arg(number);
}

} // namespace

bool Lineage::fail(Code code, const QString &detail)
{
    m_fault = code;
    m_faultDetail = detail;
    m_levels.clear();
    return false;
}

bool Lineage::read(const ByteView &value, Budget *budget)
{
    PrefixedFields fields(value);
    if (fields.u32() != LineageVersion || fields.hasFailed())
        return fail(Code::BadLineage, QStringLiteral("its version"));
    quint32 algorithm = 0;
    while (fields.hasMore()) {
        const ByteView level = fields.bytes();
        if (fields.hasFailed())
            break;
        if (m_levels.size() == MaxLevels)
            return fail(Code::TooCostly, QStringLiteral("the lineage of keys"));
        if (!readLevel(level, &algorithm, budget))
            return false;
    }
    if (fields.hasFailed() || m_levels.isEmpty())
        return fail(Code::BadLineage, QStringLiteral("its levels"));
    m_levels.last() = PastSigner(m_levels.last().certificate(), PastSigner::Capabilities(int(KnownFlags)));
    return true;
}

bool Lineage::readLevel(const ByteView &bytes, quint32 *algorithm, Budget *budget)
{
    const auto number = int(m_levels.size()) + 1;
    PrefixedFields level(bytes);
    const ByteView signedData = level.bytes();
    const quint32 flags = level.u32();
    const quint32 nextAlgorithm = level.u32();
    const ByteView signature = level.bytes();
    PrefixedFields data(signedData);
    const ByteView der = data.bytes();
    const quint32 signedAlgorithm = data.u32();
    if (level.hasFailed() || data.hasFailed())
        return fail(Code::BadLineage, levelText(number));
    if (!m_levels.isEmpty()) {
        if (signedAlgorithm != *algorithm)
            return fail(Code::BadLineage, levelText(number) + QStringLiteral(", algorithms differ"));
        if (!verifyLevel(*algorithm, signature, signedData, budget))
            return false;
    }
    if (!budget->spendWork(der.size() * SignerBlock::CertificateByteWork))
        return fail(Code::TooCostly, QStringLiteral("the lineage of keys"));
    const Certificate certificate = CertificateAccess::decode(der);
    if (certificate.isNull())
        return fail(Code::BadCertificate, levelText(number));
    if (std::any_of(m_levels.constBegin(), m_levels.constEnd(),
                    [&certificate](const PastSigner &each) { return each.certificate() == certificate; }))
        return fail(Code::BadLineage, levelText(number) + QStringLiteral(", a certificate occurs twice"));
    m_levels.append(PastSigner(certificate, PastSigner::Capabilities(int(flags & KnownFlags))));
    *algorithm = nextAlgorithm;
    return true;
}

bool Lineage::verifyLevel(quint32 algorithm, const ByteView &signature, const ByteView &signedData, Budget *budget)
{
    const QString detail =
        levelText(int(m_levels.size()) + 1) + QStringLiteral(", ") + SignatureAlgorithms::idText(algorithm);
    const SignatureAlgorithm *const known = SignatureAlgorithms::find(algorithm);
    if (known == nullptr)
        return fail(Code::BadLineage, detail);
    const PublicKey &key = CertificateAccess::data(m_levels.last().certificate()).publicKey;
    switch (key.verify(known->method, signature, signedData, budget)) {
    case PublicKey::Result::Good:
        return true;
    case PublicKey::Result::TooCostly:
        return fail(Code::TooCostly, QStringLiteral("the lineage of keys"));
    case PublicKey::Result::Wrong:
    case PublicKey::Result::Mismatched:
        break;
    }
    return fail(Code::BadLineage, detail);
}

bool Lineage::begins(const QList<PastSigner> &first, const QList<PastSigner> &all)
{
    return first.size() <= all.size()
           && std::equal(first.begin(), first.end(), all.begin(),
                         [](const PastSigner &a, const PastSigner &b) { return a.certificate() == b.certificate(); });
}

} // namespace SorrelKit
