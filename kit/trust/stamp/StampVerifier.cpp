// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/stamp/StampVerifier.h"

#include "archive/ZipArchive.h"
#include "limits/HeldBytes.h"
#include "trust/block/Lineage.h"
#include "trust/block/SignatureAlgorithms.h"
#include "trust/block/SignerBlock.h"
#include "trust/block/SigningBlock.h"
#include "trust/crypto/CertificateAccess.h"

#include <QMap>
#include <QtEndian>

namespace SorrelKit {

namespace {

using Code = SignatureIssue::Code;

constexpr quint32 StampTimeAttribute = 0xe43c5946;
constexpr quint32 StampLineageAttribute = 0x9d6303f7;
constexpr qint64 StampTimeSize = 8;

/// The numbers of digests in a stamp.
enum StampDigest : quint32 {
    ChunkedSha256Digest = 1,
    ChunkedSha512Digest = 2,
    VeritySha256Digest = 3,
    ManifestSha256Digest = 4,
};

StampDigest stampDigest(ContentDigest::Kind kind)
{
    switch (kind) {
    case ContentDigest::Kind::ChunkedSha256:
        break;
    case ContentDigest::Kind::VeritySha256:
        return VeritySha256Digest;
    case ContentDigest::Kind::ChunkedSha512:
        return ChunkedSha512Digest;
    }
    return ChunkedSha256Digest;
}

/// The number of a scheme in a stamp; 0 for one that stamps do not sign.
quint32 stampScheme(Signer::Scheme scheme)
{
    switch (scheme) {
    case Signer::Scheme::V1:
        return 1;
    case Signer::Scheme::V2:
        return 2;
    case Signer::Scheme::V3:
    case Signer::Scheme::V31:
        return 3;
    case Signer::Scheme::None:
    case Signer::Scheme::V4:
    case Signer::Scheme::Stamp:
        break;
    }
    return 0;
}

void appendStampNumber(QByteArray &bytes, quint32 number)
{
    char encoded[sizeof number];
    qToLittleEndian(number, encoded);
    bytes.append(encoded, int(sizeof encoded));
}

QString stampMember()
{
    return QStringLiteral("stamp-cert-sha256");
}

} // namespace

SchemeResult StampVerifier::verify(ZipArchive &archive, const SigningBlock &block, const QVector<SchemeResult> &schemes,
                                   Budget *budget)
{
    StampVerifier verifier(archive, budget);
    verifier.verifyStamp(block, schemes);
    return verifier.m_result;
}

bool StampVerifier::fail(Code code, const QString &detail)
{
    m_result.issues.addError(code, QString(), detail);
    return false;
}

void StampVerifier::verifyStamp(const SigningBlock &block, const QVector<SchemeResult> &schemes)
{
    const bool hasBlock = block.contains(StampBlock::Id);
    m_result.isFound = hasBlock || m_archive.contains(stampMember());
    if (!m_result.isFound)
        return;
    if (!hasBlock) {
        fail(Code::NoStamp, block.contains(StampBlock::OldId) ? QStringLiteral("version 1") : QString());
        return;
    }
    const qint64 size = block.valueSize(StampBlock::Id);
    const HeldBytes held(*m_budget, size);
    if (size > SigningBlock::MaxValueBytes || !held || !m_budget->spendWork(size * Budget::ByteWork)) {
        fail(Code::TooCostly);
        return;
    }
    const QByteArray value = block.value(StampBlock::Id);
    StampBlock stamp;
    if (!stamp.read(ByteView(value))) {
        fail(Code::BadStamp);
        return;
    }
    if (checkCertificate(stamp.certificate()) && checkSchemes(stamp, schemes)
        && (!stamp.hasAttributes() || checkAttributes(stamp)))
        m_result.signers.append({m_signer, {}});
}

bool StampVerifier::checkCertificate(const ByteView &der)
{
    if (!m_archive.contains(stampMember()))
        return fail(Code::BadStamp, QStringLiteral("no ") + stampMember());
    const qint64 hashSize = Digest::size(HashAlgorithm::Sha256);
    const QByteArray hash = m_archive.file(stampMember(), hashSize, m_budget);
    if (hash.size() != hashSize)
        return fail(Code::BadStamp, stampMember());
    if (!m_budget->spendWork(der.size() * SignerBlock::CertificateByteWork))
        return fail(Code::TooCostly);
    m_signer.certificate = CertificateAccess::decode(der);
    m_signer.scheme = Signer::Scheme::Stamp;
    if (m_signer.certificate.isNull())
        return fail(Code::BadCertificate);
    if (CertificateAccess::data(m_signer.certificate).publicKey.isNull())
        return fail(Code::BadPublicKey);
    return Digest::of(HashAlgorithm::Sha256, der) == hash || fail(Code::StampDiffers, QStringLiteral("certificate"));
}

bool StampVerifier::checkSchemes(const StampBlock &stamp, const QVector<SchemeResult> &schemes)
{
    QMap<quint32, const SchemeResult *> verified;
    for (const SchemeResult &scheme : schemes) {
        const quint32 number = stampScheme(scheme.scheme);
        const bool isSecond = scheme.scheme == Signer::Scheme::V31 && verified.contains(number);
        if (number != 0 && !isSecond && scheme.isVerified())
            verified.insert(number, &scheme);
    }
    for (auto each = verified.cbegin(); each != verified.cend(); ++each) {
        if (!checkScheme(stamp, each.key(), *each.value()))
            return false;
    }
    return !verified.isEmpty() || fail(Code::StampDiffers, QStringLiteral("no v1, v2 or v3"));
}

bool StampVerifier::checkScheme(const StampBlock &stamp, quint32 number, const SchemeResult &scheme)
{
    const QString name = QStringLiteral("v%1").arg(number);
    const QByteArray digests = signedDigests(scheme);
    if (digests.isEmpty())
        return fail(Code::StampDiffers, QStringLiteral("no digest for ") + name);
    bool isSigned = false;
    for (const StampBlock::Scheme &each : stamp.schemes()) {
        if (each.id != number)
            continue;
        if (!checkSignatures(each.signatures, ByteView(digests), name))
            return false;
        isSigned = true;
    }
    return isSigned || fail(Code::StampDiffers, QStringLiteral("no signature for ") + name);
}

bool StampVerifier::checkSignatures(const QVector<StampBlock::Signature> &signatures, const ByteView &data,
                                    const QString &detail)
{
    const PublicKey &key = CertificateAccess::data(m_signer.certificate).publicKey;
    for (const StampBlock::Signature &each : signatures) {
        const SignatureAlgorithm *const algorithm = SignatureAlgorithms::find(each.algorithm);
        if (algorithm == nullptr)
            return fail(Code::UnknownAlgorithm, SignatureAlgorithms::idText(each.algorithm));
        switch (key.verify(algorithm->method, each.bytes, data, m_budget)) {
        case PublicKey::Result::Good:
            break;
        case PublicKey::Result::TooCostly:
            return fail(Code::TooCostly);
        case PublicKey::Result::Wrong:
        case PublicKey::Result::Mismatched:
            return fail(Code::BadSignature, detail);
        }
    }
    return !signatures.isEmpty() || fail(Code::NoKnownSignature, detail);
}

bool StampVerifier::checkAttributes(const StampBlock &stamp)
{
    if (!checkSignatures(stamp.attributeSignatures(), stamp.signedAttributes(), QStringLiteral("attributes")))
        return false;
    for (const StampBlock::Attribute &each : stamp.attributes()) {
        if (each.id == StampTimeAttribute) {
            if (!checkTime(each.value))
                return false;
        } else if (each.id == StampLineageAttribute) {
            if (!checkLineage(each.value))
                return false;
        } else {
            return fail(Code::UnknownAttribute, SignatureAlgorithms::idText(each.id));
        }
    }
    return true;
}

// The time is a number of seconds, more than none.
bool StampVerifier::checkTime(const ByteView &value)
{
    const auto seconds = value.has(0, StampTimeSize) ? qFromLittleEndian<qint64>(value.data()) : qint64(0);
    return (value.size() == StampTimeSize && seconds > 0) || fail(Code::BadAttribute, QStringLiteral("time"));
}

bool StampVerifier::checkLineage(const ByteView &value)
{
    Lineage lineage;
    if (!lineage.read(value, m_budget))
        return fail(lineage.fault(), lineage.faultDetail());
    if (lineage.levels().last().certificate() != m_signer.certificate)
        return fail(Code::LineageDiffers);
    m_signer.lineage = lineage.levels();
    return true;
}

// The digests of all signers, in the order of their numbers; empty when there are none.
QByteArray StampVerifier::signedDigests(const SchemeResult &scheme)
{
    QMap<quint32, QByteArray> digests;
    if (scheme.scheme == Signer::Scheme::V1) {
        const SharedBytes manifest = m_archive.content(QStringLiteral("META-INF/MANIFEST.MF"),
                                                       qMin(MaxManifestBytes, m_budget->bytesLeft()), m_budget);
        if (!manifest.isEmpty())
            digests.insert(ManifestSha256Digest, Digest::of(HashAlgorithm::Sha256, manifest.view()));
    }
    for (const VerifiedSigner &signer : scheme.signers) {
        for (const ContentDigest &digest : signer.digests)
            digests.insert(stampDigest(digest.kind), digest.digest);
    }
    QByteArray result;
    for (auto each = digests.cbegin(); each != digests.cend(); ++each) {
        appendStampNumber(result, quint32(2 * sizeof(quint32)) + quint32(each.value().size()));
        appendStampNumber(result, each.key());
        appendStampNumber(result, quint32(each.value().size()));
        result += each.value();
    }
    return result;
}

} // namespace SorrelKit
