// SPDX-License-Identifier: LGPL-2.1-or-later
#include "BlockSeeds.h"
#include "Harness.h"

#include "Bytes.h"
#include "GuardedBytes.h"
#include "OpenedBlock.h"
#include "SigningBlockBuilder.h"
#include "trust/block/Lineage.h"

#include <limits>

using namespace fixture;
using namespace SorrelKit;

namespace {

constexpr qint64 MaxWork = 1 << 26;
constexpr qint64 MaxHeld = 32 << 20;

/// A signer whose digests and attributes are those of the input, and whose other fields are right.
class InputSigner
{
public:
    InputSigner(const QByteArray &input, bool isV3) : m_signer(key(), {0x0201})
    {
        m_signer.certificates = {certificate()};
        QByteArray lists = input;
        if (isV3) {
            m_signer.minSdk = peek32(lists.leftJustified(8, '\0'), 0);
            m_signer.maxSdk = peek32(lists.leftJustified(8, '\0'), 4);
            lists = lists.mid(8);
        }
        const int size = peek16(lists.leftJustified(2, '\0'), 0);
        const QByteArray digests = lists.mid(2, size);
        const QByteArray attributes = lists.mid(2 + size);
        m_signer.onSignedData = [digests, attributes](QByteArray &data) {
            const QByteArray own = data.left(4 + int(peek32(data, 0)));
            const QByteArray between = data.mid(own.size()).chopped(4);
            data = (digests.isEmpty() ? own : prefixed(digests)) + between + prefixed(attributes);
        };
    }

    const BlockSigner &signer() const { return m_signer; }
    static TestKey key() { return TestKey::ec(); }
    // Signed once, because a signature on a curve is another one each time.
    static QByteArray certificate()
    {
        static const QByteArray made = key().certificate();
        return made;
    }

private:
    BlockSigner m_signer;
};

void checkResult(const SchemeResult &result, BlockVerifier &verifier, const SdkRange &sdk)
{
    if (!result.isVerified()) {
        if (result.isFound && !result.issues.hasErrors())
            failed("a scheme is not verified for no reason");
        if (!result.signers.isEmpty())
            failed("there are signers although there is an error");
        return;
    }
    if (sdk.isEmpty() || !verifier.hasBlock())
        failed("a scheme verified for nothing");
    for (const VerifiedSigner &each : result.signers) {
        const SignerFields &fields = each.signer;
        if (fields.certificate.isNull() || fields.minSdkVersion > fields.maxSdkVersion)
            failed("a signer is not complete");
        if (!fields.lineage.isEmpty() && fields.lineage.last().certificate() != fields.certificate)
            failed("a lineage leads to another signer");
        bool hasRightDigest = false;
        for (const ContentDigest &digest : each.digests)
            hasRightDigest = hasRightDigest || digest.digest == verifier.contentDigest(digest.kind);
        if (!hasRightDigest)
            failed("no digest of a signer is right");
    }
}

void verifyAll(const QByteArray &package)
{
    const GuardedBytes guarded(package);
    for (const SdkRange sdk : {SdkRange(), SdkRange{28, 32}, SdkRange{33, std::numeric_limits<int>::max()}}) {
        OpenedBlock opened(std::make_unique<BytesInMemory>(SharedBytes(guarded.atPageEnd(), guarded.owner())), MaxWork,
                           MaxHeld);
        BlockVerifier &verifier = *opened.verifier;
        checkResult(verifier.verifyV31(sdk), verifier, sdk);
        checkResult(verifier.verifyV3(sdk), verifier, sdk);
        checkResult(verifier.verifyV2(sdk), verifier, sdk);
        for (const quint32 id : verifier.block().ids()) {
            if (verifier.block().value(id).size() > SigningBlock::MaxValueBytes)
                failed("a value is longer than its limit");
        }
        if (opened.budget.workLeft() < 0 || opened.budget.bytesLeft() != MaxHeld)
            failed("the budget is overdrawn, or bytes were not given back");
    }
}

void readLineage(const QByteArray &bytes)
{
    const GuardedBytes guarded(bytes);
    Budget budget(MaxWork, MaxHeld);
    Lineage lineage;
    const bool isRead = lineage.read(guarded.atPageEnd(), &budget);
    if (isRead == lineage.levels().isEmpty() || isRead != (lineage.fault() == SignatureIssue::Code::None))
        failed("a lineage has no levels and no fault, or both");
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input(reinterpret_cast<const char *>(data), int(size));
    const QByteArray rest = input.mid(1);
    SigningBlockBuilder builder(blockZip());
    const auto older = [] {
        BlockSigner signer(InputSigner::key(), {0x0201});
        signer.certificates = {InputSigner::certificate()};
        return signer.sdk(24, 32).attribute(SigningBlockBuilder::RotationSdkAttribute, 33U);
    };
    switch (BlockInput(input.isEmpty() ? '\0' : input.front())) {
    case BlockInput::ValueV2:
        verifyAll(builder.pair(SigningBlockBuilder::V2, rest).build());
        break;
    case BlockInput::ValueV3:
        verifyAll(builder.pair(SigningBlockBuilder::V3, rest).build());
        break;
    case BlockInput::ValueV31:
        verifyAll(builder.v3({older()}).pair(SigningBlockBuilder::V31, rest).build());
        break;
    case BlockInput::SignedV2:
        verifyAll(builder.v2({InputSigner(rest, false).signer()}).build());
        break;
    case BlockInput::SignedV3:
        verifyAll(builder.v3({InputSigner(rest, true).signer()}).build());
        break;
    case BlockInput::SignedV31:
        verifyAll(builder.v3({older()}).v31({InputSigner(rest, true).signer()}).build());
        break;
    case BlockInput::Lineage:
        readLineage(rest);
        break;
    default:
        verifyAll(input);
        break;
    }
    return 0;
}
