// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_BLOCKVERIFIER_H
#define SORRELKIT_BLOCKVERIFIER_H

#include "trust/block/ContentDigests.h"
#include "trust/block/MemberPlaces.h"
#include "trust/block/SignedContent.h"
#include "trust/block/SignerBlock.h"
#include "trust/block/SigningBlock.h"
#include "trust/result/SchemeResult.h"
#include "trust/result/SdkRange.h"

#include <QByteArray>

#include <memory>
#include <optional>

class Budget;
class ByteSource;
class ZipDirectory;

namespace SorrelKit {

/**
 * Verifies the signatures in the signing block of a package: v2, v3 and v3.1.
 *
 * A scheme is found when the block has a value with its id, and a version in the range knows the scheme. When there is
 * a block but it is damaged, each scheme counts as found, with an error: the block's content is unknown.
 *
 * The work of signatures is spent from the budget. The digests of the content are not: they take time in proportion to
 * the file, and are computed only when all signatures are right. One thread at a time.
 */
class BlockVerifier
{
public:
    /// Finds the block of the open archive in @p source, whose directory is @p directory. All three outlive this object.
    BlockVerifier(ByteSource &source, const ZipDirectory &directory, Budget *budget);

    /// Whether the package has a signing block that can be read.
    bool hasBlock() const { return m_block.isGood(); }
    const SigningBlock &block() const { return m_block; }

    /// v2, for the versions of @p sdk from 24 on.
    SchemeResult verifyV2(SdkRange sdk);
    /// v3, for the versions of @p sdk from 28 on. Also verifies v3.1, because it narrows the versions that v3 is for.
    SchemeResult verifyV3(SdkRange sdk);
    /// v3.1, for the versions of @p sdk from 33 on.
    SchemeResult verifyV31(SdkRange sdk);

    /// The digest of the content, computed once. Empty when there is no block, or the content cannot be read.
    QByteArray contentDigest(ContentDigest::Kind kind);

private:
    /// A result that was computed.
    struct Known {
        SdkRange sdk;
        SchemeResult result;
    };

    template <typename Verify>
    SchemeResult verifyScheme(Signer::Scheme scheme, quint32 id, const SdkRange &sdk, Verify verify);
    SchemeResult computeV31(const SdkRange &sdk);
    /// Whether all members are before the block; otherwise, @p issues has an error.
    bool checkMembers(IssueList *issues);
    void checkContent(const QVector<CheckedSigner> &signers, SchemeResult *result);

    ByteSource *m_source;
    const ZipDirectory *m_directory;
    const SigningBlock m_block;
    Budget *m_budget;
    std::unique_ptr<SignedContent> m_content; ///< null without a block
    std::unique_ptr<ContentDigests> m_digests;
    std::optional<MemberPlaces::Result> m_places;
    std::optional<Known> m_v31;
};

} // namespace SorrelKit

#endif
