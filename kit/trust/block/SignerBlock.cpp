// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/block/SignerBlock.h"

#include "limits/Budget.h"
#include "trust/block/ContentDigests.h"
#include "trust/block/SignatureAlgorithms.h"
#include "trust/crypto/CertificateAccess.h"

#include <QMap>

#include <limits>

namespace SorrelKit {

namespace {

using Code = SignatureIssue::Code;

} // namespace

QVector<ByteView> SignerBlock::signersIn(const ByteView &value, int most, IssueList *issues)
{
    QVector<ByteView> result;
    PrefixedFields fields(value);
    PrefixedFields list = fields.fields();
    while (list.hasMore()) {
        if (result.size() == most) {
            issues->addError(Code::TooManySigners, QString(), QString::number(most));
            return {};
        }
        result.append(list.bytes());
    }
    if (list.hasFailed() || !fields.isRead()) {
        issues->addError(Code::BadBlock, QString(), QStringLiteral("the list of signers"));
        return {};
    }
    if (result.isEmpty())
        issues->addError(Code::NoSigner);
    return result;
}

QString SignerBlock::subjectOf(int number)
{
    return QStringLiteral("signer %1").arg(number);
}

SignerBlock::SignerBlock(Form form, const QString &subject, IssueList *issues, Budget *budget)
    : m_form(form), m_subject(subject), m_issues(issues), m_budget(budget)
{
}

CheckedSigner SignerBlock::result(Signer::Scheme scheme) const
{
    CheckedSigner result;
    result.subject = m_subject;
    result.verified.signer.certificate = m_certificates.first();
    result.verified.signer.scheme = scheme;
    if (m_form == Form::V3) {
        result.verified.signer.minSdkVersion = m_sdk.min;
        result.verified.signer.maxSdkVersion = m_sdk.max;
    }
    result.verified.digests = m_digests;
    result.kinds = m_kinds;
    return result;
}

bool SignerBlock::fail(Code code, const QString &detail)
{
    m_issues->addError(code, m_subject, detail);
    return false;
}

bool SignerBlock::fail(Code code, const char *detail)
{
    return fail(code, QString::fromLatin1(detail));
}

bool SignerBlock::verify(const ByteView &bytes, const SdkRange &sdk)
{
    PrefixedFields fields(bytes);
    const ByteView signedData = fields.bytes();
    if (m_form == Form::V3 && !readSdk(&fields, &m_sdk))
        return false;
    const PrefixedFields signatures = fields.fields();
    const ByteView publicKey = fields.bytes();
    if (!fields.isRead())
        return fail(Code::BadSigner);
    return readSignatures(signatures) && verifySignatures(signedData, publicKey, m_form == Form::V3 ? m_sdk : sdk)
           && readSignedData(signedData, publicKey);
}

bool SignerBlock::readSdk(PrefixedFields *fields, SdkRange *sdk)
{
    constexpr quint32 Highest = std::numeric_limits<int>::max();
    const quint32 min = fields->u32();
    const quint32 max = fields->u32();
    if (fields->hasFailed() || max > Highest || min > max)
        return fail(Code::BadSigner, "its API levels");
    *sdk = {int(min), int(max)};
    return true;
}

bool SignerBlock::readSignatures(PrefixedFields fields)
{
    while (fields.hasMore()) {
        PrefixedFields element = fields.fields();
        const quint32 id = element.u32();
        const ByteView signature = element.bytes();
        if (!element.isRead())
            return fail(Code::BadSigner, "its signatures");
        if (m_signatures.size() == MaxElements)
            return fail(Code::TooCostly, "its signatures");
        m_signatures.append({id, signature});
        if (SignatureAlgorithms::find(id) == nullptr)
            m_issues->addWarning(Code::UnknownAlgorithm, m_subject, SignatureAlgorithms::idText(id));
    }
    return !fields.hasFailed() || fail(Code::BadSigner, "its signatures");
}

// A version of Android verifies the signature with the strongest digest among the algorithms that it knows. The result
// has the strongest one of each version that brought new algorithms, so it has those that all versions choose. It is
// empty when the first version of the range knows none.
QVector<SignerBlock::Signature> SignerBlock::signaturesFor(const SdkRange &sdk) const
{
    QMap<int, Signature> best; // by the first version that knows them
    for (const Signature &signature : m_signatures) {
        const SignatureAlgorithm *const algorithm = SignatureAlgorithms::find(signature.id);
        if (algorithm == nullptr || algorithm->minSdkVersion > sdk.max)
            continue;
        const auto other = best.constFind(algorithm->minSdkVersion);
        if (other == best.constEnd() || algorithm->kind > SignatureAlgorithms::find(other->id)->kind)
            best.insert(algorithm->minSdkVersion, signature);
    }
    if (best.isEmpty() || best.firstKey() > sdk.min)
        return {};
    return best.values().toVector();
}

bool SignerBlock::verifySignatures(const ByteView &signedData, const ByteView &publicKey, const SdkRange &sdk)
{
    const QVector<Signature> signatures = signaturesFor(sdk);
    if (signatures.isEmpty())
        return fail(Code::NoKnownSignature);
    if (!m_budget->spendWork(publicKey.size() * CertificateByteWork))
        return fail(Code::TooCostly, "its public key");
    const PublicKey key = PublicKey::fromDer(publicKey);
    if (key.isNull())
        return fail(Code::BadPublicKey);
    for (const Signature &signature : signatures) {
        const SignatureAlgorithm &algorithm = *SignatureAlgorithms::find(signature.id);
        switch (key.verify(algorithm.method, signature.bytes, signedData, m_budget)) {
        case PublicKey::Result::Good:
            if (!m_kinds.contains(algorithm.kind))
                m_kinds.append(algorithm.kind);
            break;
        case PublicKey::Result::Wrong:
        case PublicKey::Result::Mismatched:
            return fail(Code::BadSignature, SignatureAlgorithms::idText(signature.id));
        case PublicKey::Result::TooCostly:
            return fail(Code::TooCostly, "its public key");
        }
    }
    return true;
}

bool SignerBlock::readSignedData(const ByteView &signedData, const ByteView &publicKey)
{
    PrefixedFields fields(signedData);
    const PrefixedFields digests = fields.fields();
    const PrefixedFields certificates = fields.fields();
    SdkRange sdk = m_sdk;
    if (m_form == Form::V3 && !readSdk(&fields, &sdk))
        return false;
    const PrefixedFields attributes = fields.fields();
    if (fields.hasFailed())
        return fail(Code::BadSigner, "its signed data");
    if (!readCertificates(certificates))
        return false;
    if (m_certificates.first().publicKeyDer() != publicKey.toByteArray())
        return fail(Code::KeysDiffer);
    if (sdk.min != m_sdk.min || sdk.max != m_sdk.max)
        return fail(Code::SdkVersionsDiffer);
    if (!readDigests(digests))
        return false;
    QVector<quint32> signatureIds;
    for (const Signature &signature : qAsConst(m_signatures))
        signatureIds.append(signature.id);
    if (signatureIds != m_digestIds)
        return fail(Code::AlgorithmsDiffer);
    return readAttributes(attributes);
}

bool SignerBlock::readCertificates(PrefixedFields fields)
{
    while (fields.hasMore()) {
        const ByteView der = fields.bytes();
        if (m_certificates.size() == MaxElements || !m_budget->spendWork(der.size() * CertificateByteWork))
            return fail(Code::TooCostly, "its certificates");
        m_certificates.append(CertificateAccess::decode(der));
        if (fields.hasFailed() || m_certificates.last().isNull())
            return fail(Code::BadCertificate, QString::number(m_certificates.size()));
    }
    if (fields.hasFailed())
        return fail(Code::BadSigner, "its certificates");
    return !m_certificates.isEmpty() || fail(Code::NoCertificate);
}

bool SignerBlock::readDigests(PrefixedFields fields)
{
    while (fields.hasMore()) {
        PrefixedFields element = fields.fields();
        const quint32 id = element.u32();
        const ByteView bytes = element.bytes();
        if (element.hasFailed())
            return fail(Code::BadSigner, "its digests");
        if (m_digestIds.size() == MaxElements)
            return fail(Code::TooCostly, "its digests");
        m_digestIds.append(id);
        const SignatureAlgorithm *const algorithm = SignatureAlgorithms::find(id);
        if (algorithm == nullptr)
            continue;
        if (bytes.size() != ContentDigests::size(algorithm->kind))
            return fail(Code::BadSigner, "its digests");
        const ContentDigest digest{algorithm->kind, id, bytes.toByteArray()};
        for (const ContentDigest &other : qAsConst(m_digests)) {
            if (other.kind == digest.kind && other.digest != digest.digest)
                return fail(Code::DigestsDiffer);
        }
        m_digests.append(digest);
    }
    return !fields.hasFailed() || fail(Code::BadSigner, "its digests");
}

bool SignerBlock::readAttributes(PrefixedFields fields)
{
    while (fields.hasMore()) {
        PrefixedFields element = fields.fields();
        const quint32 id = element.u32();
        const ByteView value = element.rest();
        if (element.hasFailed())
            return fail(Code::BadAttribute);
        if (m_attributes.size() == MaxElements)
            return fail(Code::TooCostly, "its attributes");
        m_attributes.append({id, value});
    }
    return !fields.hasFailed() || fail(Code::BadAttribute);
}

} // namespace SorrelKit
