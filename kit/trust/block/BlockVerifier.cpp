// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/block/BlockVerifier.h"

#include "limits/HeldBytes.h"
#include "trust/block/SchemeV2.h"
#include "trust/block/SchemeV3.h"

#include <algorithm>

namespace SorrelKit {

namespace {

using Code = SignatureIssue::Code;

const char *kindText(ContentDigest::Kind kind)
{
    switch (kind) {
    case ContentDigest::Kind::ChunkedSha256:
        return "SHA-256";
    case ContentDigest::Kind::ChunkedSha512:
        return "SHA-512";
    case ContentDigest::Kind::VeritySha256:
        break;
    }
    return "SHA-256 of the tree";
}

} // namespace

BlockVerifier::BlockVerifier(ByteSource &source, const ZipDirectory &directory, Budget *budget)
    : m_source(&source), m_directory(&directory), m_block(source, directory), m_budget(budget)
{
    if (!m_block.isGood())
        return;
    m_content = std::make_unique<SignedContent>(source, m_block);
    m_digests = std::make_unique<ContentDigests>(*m_content);
}

QByteArray BlockVerifier::contentDigest(ContentDigest::Kind kind)
{
    return m_digests == nullptr ? QByteArray() : m_digests->digest(kind, m_budget);
}

// Calls @p verify with the value of the scheme, and compares the content with the signers that it returns.
template <typename Verify>
SchemeResult BlockVerifier::verifyScheme(Signer::Scheme scheme, quint32 id, const SdkRange &sdk, Verify verify)
{
    SchemeResult result(scheme);
    if (sdk.isEmpty())
        return result;
    result.isFound = m_block.contains(id) || m_block.fault() != Code::None;
    if (!result.isFound)
        return result;
    if (m_block.fault() != Code::None) {
        result.issues.addError(m_block.fault(), QString(), m_block.faultDetail());
        return result;
    }
    if (!checkMembers(&result.issues))
        return result;
    const qint64 size = m_block.valueSize(id);
    const HeldBytes held(*m_budget, size);
    if (size > SigningBlock::MaxValueBytes || !held || !m_budget->spendWork(size * Budget::ByteWork)) {
        result.issues.addError(Code::TooCostly, QString(), QStringLiteral("the signing block"));
        return result;
    }
    const QByteArray value = m_block.value(id);
    const QVector<CheckedSigner> signers = verify(ByteView(value), &result.issues);
    if (!result.issues.hasErrors())
        checkContent(signers, &result);
    return result;
}

bool BlockVerifier::checkMembers(IssueList *issues)
{
    if (!m_places.has_value())
        m_places = MemberPlaces::check(*m_source, *m_directory, m_block, m_budget);
    if (m_places == MemberPlaces::Result::TooCostly)
        issues->addError(Code::TooCostly, QString(), QStringLiteral("the members"));
    else if (m_places == MemberPlaces::Result::Unsigned)
        issues->addError(Code::BadBlock, QString(), QStringLiteral("a member is in it"));
    return m_places == MemberPlaces::Result::Good;
}

void BlockVerifier::checkContent(const QVector<CheckedSigner> &signers, SchemeResult *result)
{
    QVector<ContentDigest::Kind> kinds;
    for (const CheckedSigner &signer : signers)
        kinds += signer.kinds;
    if (kinds.contains(ContentDigest::Kind::VeritySha256) && !m_content->hasWholePages()) {
        result->issues.addError(Code::BadBlock, QString(), QStringLiteral("it does not consist of pages"));
        return;
    }
    m_digests->compute(kinds, m_budget);
    for (const CheckedSigner &signer : signers) {
        for (const ContentDigest &digest : signer.verified.digests) {
            if (!signer.kinds.contains(digest.kind))
                continue;
            const QByteArray actual = contentDigest(digest.kind);
            // A digest that cannot be computed is empty, and a digest in a signer never is.
            if (actual.isEmpty() && m_budget->bytesLeft() < ContentDigests::PieceSize)
                result->issues.addError(Code::TooCostly, signer.subject, QStringLiteral("the content"));
            else if (actual.isEmpty() || actual != digest.digest)
                result->issues.addError(Code::ContentChanged, signer.subject, QLatin1String(kindText(digest.kind)));
        }
        result->signers.append(signer.verified);
    }
    if (result->issues.hasErrors())
        result->signers.clear();
}

SchemeResult BlockVerifier::verifyV2(SdkRange sdk)
{
    const SdkRange range = sdk.from(SdkRange::Nougat);
    return verifyScheme(Signer::Scheme::V2, SigningBlock::SchemeV2, range,
                        [this, range](const ByteView &value, IssueList *issues) {
                            SchemeV2 scheme(issues, m_budget);
                            return scheme.verify(value, range, m_block.contains(SigningBlock::SchemeV3));
                        });
}

SchemeResult BlockVerifier::verifyV3(SdkRange sdk)
{
    const SdkRange range = sdk.from(SdkRange::Pie);
    return verifyScheme(Signer::Scheme::V3, SigningBlock::SchemeV3, range,
                        [this, range](const ByteView &value, IssueList *issues) {
                            SchemeV3 scheme(Signer::Scheme::V3, issues, m_budget);
                            scheme.setHasV31(m_block.contains(SigningBlock::SchemeV31));
                            const SchemeResult v31 = verifyV31(range);
                            if (v31.isVerified()) {
                                int first = v31.signers.first().signer.minSdkVersion;
                                for (const VerifiedSigner &each : v31.signers)
                                    first = std::min(first, each.signer.minSdkVersion);
                                scheme.setRotation(first);
                            }
                            return scheme.verify(value, range);
                        });
}

SchemeResult BlockVerifier::verifyV31(SdkRange sdk)
{
    const SdkRange range = sdk.from(SdkRange::Tiramisu);
    if (!m_v31.has_value() || m_v31->sdk.min != range.min || m_v31->sdk.max != range.max)
        m_v31 = Known{range, computeV31(range)};
    return m_v31->result;
}

SchemeResult BlockVerifier::computeV31(const SdkRange &sdk)
{
    return verifyScheme(Signer::Scheme::V31, SigningBlock::SchemeV31, sdk,
                        [this, sdk](const ByteView &value, IssueList *issues) {
                            if (!m_block.contains(SigningBlock::SchemeV3))
                                issues->addError(Code::SchemeStripped, QString(), QStringLiteral("v3"));
                            SchemeV3 scheme(Signer::Scheme::V31, issues, m_budget);
                            return scheme.verify(value, sdk);
                        });
}

} // namespace SorrelKit
