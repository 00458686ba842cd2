// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/v4/V4Verifier.h"

#include "archive/ByteSource.h"
#include "limits/HeldBytes.h"
#include "trust/block/MerkleTree.h"
#include "trust/block/SignatureAlgorithms.h"
#include "trust/block/SignerBlock.h"
#include "trust/block/SigningBlock.h"
#include "trust/crypto/CertificateAccess.h"
#include "trust/result/SdkRange.h"
#include "trust/v4/IdSigFile.h"

#include <algorithm>
#include <cstring>

namespace SorrelKit {

namespace {

using Code = SignatureIssue::Code;

constexpr quint32 HashAlgorithmSha256 = 1;
constexpr int PageBits = 12;
constexpr qint64 ComparedPieceSize = 1 << 20;

bool isSame(const ByteView &a, const QByteArray &b)
{
    return a.size() == b.size() && (b.isEmpty() || std::memcmp(a.data(), b.constData(), size_t(b.size())) == 0);
}

bool checkHashing(const IdSigFile &file, IssueList &issues)
{
    if (file.hashAlgorithm() != HashAlgorithmSha256)
        issues.addError(Code::UnknownAlgorithm, QString(), QStringLiteral("hash %1").arg(file.hashAlgorithm()));
    else if (file.pageBits() != PageBits)
        issues.addError(Code::BadV4Signature, QString(), QStringLiteral("page size"));
    else if (file.salt().size() > V4Verifier::MaxSaltBytes)
        issues.addError(Code::BadV4Signature, QString(), QStringLiteral("salt"));
    return !issues.hasErrors();
}

/// The certificate of @p info, whose key signed it; null with an issue when it did not.
Certificate verifiedSigner(const IdSigFile &file, const IdSigFile::SigningInfo &info, qint64 packageSize,
                           const QString &subject, IssueList &issues, Budget *budget)
{
    const auto fail = [&issues, &subject](Code code, const QString &detail = QString()) {
        issues.addError(code, subject, detail);
        return Certificate();
    };
    Certificate certificate = CertificateAccess::decode(info.certificate);
    if (certificate.isNull())
        return fail(Code::BadCertificate);
    const CertificateData &data = CertificateAccess::data(certificate);
    if (!isSame(info.publicKey, data.publicKeyDer))
        return fail(Code::KeysDiffer);
    if (data.publicKey.isNull())
        return fail(Code::BadPublicKey);
    const SignatureAlgorithm *const algorithm = SignatureAlgorithms::find(info.algorithm);
    if (algorithm == nullptr)
        return fail(Code::UnknownAlgorithm, SignatureAlgorithms::idText(info.algorithm));
    const QByteArray signedData = file.signedData(info, packageSize);
    switch (data.publicKey.verify(algorithm->method, info.signature, ByteView(signedData), budget)) {
    case PublicKey::Result::Good:
        break;
    case PublicKey::Result::TooCostly:
        return fail(Code::TooCostly);
    case PublicKey::Result::Wrong:
    case PublicKey::Result::Mismatched:
        return fail(Code::BadSignature);
    }
    return certificate;
}

/// Whether the signer of @p counterpart signed @p info, too, and the same content.
void compareWithCounterpart(const IdSigFile::SigningInfo &info, const Certificate &certificate,
                            const SchemeResult &counterpart, const QString &subject, IssueList &issues)
{
    const VerifiedSigner &signer = counterpart.signers.first();
    if (counterpart.signers.size() != 1 || certificate != signer.signer.certificate)
        issues.addError(Code::SignersDiffer, subject);
    const auto weaker = [](const ContentDigest &a, const ContentDigest &b) { return a.kind < b.kind; };
    const auto strongest = std::max_element(signer.digests.cbegin(), signer.digests.cend(), weaker);
    if (strongest == signer.digests.cend() || !isSame(info.apkDigest, strongest->digest))
        issues.addError(Code::V4Differs, subject, QStringLiteral("digest"));
}

/// @p salt as fs-verity hashes it before each page: with zeros up to the next block of SHA-256.
QByteArray paddedSalt(const ByteView &salt)
{
    constexpr int BlockSize = 64;
    return salt.isEmpty() ? QByteArray() : salt.toByteArray().leftJustified(BlockSize, '\0');
}

bool hasTree(ByteSource &idsig, const IdSigFile &file, const QByteArray &tree)
{
    const qint64 size = tree.size();
    for (qint64 at = 0; at < size; at += qMin(ComparedPieceSize, size - at)) {
        const qint64 count = qMin(ComparedPieceSize, size - at);
        const SharedBytes piece = idsig.view(file.treeAt() + at, count);
        if (piece.size() != count || std::memcmp(piece.view().data(), tree.constData() + at, size_t(count)) != 0)
            return false;
    }
    return true;
}

void checkContent(ByteSource &package, ByteSource &idsig, const IdSigFile &file, IssueList &issues, Budget *budget)
{
    const qint64 treeSize = file.hasTree() ? MerkleTree::treeSize(package.size()) : 0;
    if (file.hasTree() && file.treeSize() != treeSize) {
        issues.addError(Code::HashTreeDiffers, QString(), QStringLiteral("size"));
        return;
    }
    const HeldBytes held(*budget, treeSize);
    if (!held) {
        issues.addError(Code::TooCostly);
        return;
    }
    const HashTree hashes = MerkleTree::make(package, paddedSalt(file.salt()), file.hasTree());
    if (hashes.root.isEmpty() || !isSame(file.rootHash(), hashes.root))
        issues.addError(Code::RootHashDiffers);
    else if (file.hasTree() && !hasTree(idsig, file, hashes.tree))
        issues.addError(Code::HashTreeDiffers);
}

} // namespace

SchemeResult V4Verifier::verify(ByteSource &package, ByteSource &idsig, const SchemeResult &counterpart, Budget *budget)
{
    SchemeResult result(Signer::Scheme::V4);
    result.isFound = true;
    IssueList &issues = result.issues;
    IdSigFile file;
    if (!file.read(idsig)) {
        issues.addError(file.fault(), QString(), file.faultDetail());
        return result;
    }
    if (!counterpart.isVerified()) {
        issues.addError(Code::V4Differs, QString(), QStringLiteral("no v2 or v3"));
        return result;
    }
    if (!checkHashing(file, issues))
        return result;

    const quint32 wanted = counterpart.scheme == Signer::Scheme::V31 ? quint32(SigningBlock::SchemeV31) : 0;
    for (int i = 0; i < file.signingInfos().size(); ++i) {
        const IdSigFile::SigningInfo &info = file.signingInfos().at(i);
        const QString subject = SignerBlock::subjectOf(i + 1);
        const Certificate certificate = verifiedSigner(file, info, package.size(), subject, issues, budget);
        if (certificate.isNull())
            return result;
        if (info.schemeId != wanted)
            continue;
        compareWithCounterpart(info, certificate, counterpart, subject, issues);
        VerifiedSigner signer;
        signer.signer.certificate = certificate;
        signer.signer.scheme = Signer::Scheme::V4;
        signer.signer.minSdkVersion = SdkRange::R;
        result.signers.append(signer);
    }
    if (result.signers.isEmpty())
        issues.addError(Code::V4Differs, QString(), QStringLiteral("no v3.1"));
    if (!issues.hasErrors())
        checkContent(package, idsig, file, issues, budget);
    return result;
}

} // namespace SorrelKit
