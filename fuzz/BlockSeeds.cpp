// SPDX-License-Identifier: LGPL-2.1-or-later
#include "BlockSeeds.h"

#include "Bytes.h"
#include "RawZip.h"
#include "SigningBlockBuilder.h"

#include <limits>

using namespace fixture;

namespace {

QByteArray inputOf(BlockInput kind, const QByteArray &bytes)
{
    return char(kind) + bytes;
}

QByteArray attribute(quint32 id, const QByteArray &value)
{
    return prefixed(Bytes().u32(id).raw(value).data());
}

} // namespace

QByteArray blockZip()
{
    return rawZip({{"AndroidManifest.xml", "manifest"}, {"classes.dex", "code"}});
}

QVector<Member> blockSeeds()
{
    constexpr int Newest = std::numeric_limits<int>::max();
    QVector<Member> seeds;
    const auto add = [&seeds](const char *name, const QByteArray &bytes) {
        seeds.append({QString::fromLatin1(name), bytes});
    };
    const TestKey key = TestKey::ec();
    const TestKey next = TestKey::ec(2);
    LineageLevel first{key, key.certificate(), 0x0201};
    const LineageLevel second{next, next.certificate(), 0x0201};
    const QByteArray levels = lineage({first, second});
    BlockSigner signer(key, {0x0201});
    signer.certificates = {first.certificate};
    BlockSigner rotated(next, {0x0201});
    rotated.certificates = {second.certificate};
    rotated.attribute(SigningBlockBuilder::LineageAttribute, levels);

    const SigningBlockBuilder v2 = SigningBlockBuilder(blockZip()).v2({signer});
    const SigningBlockBuilder v3 = SigningBlockBuilder(blockZip()).v3({BlockSigner(rotated).sdk(24, Newest)});
    const SigningBlockBuilder v31 =
        SigningBlockBuilder(blockZip())
            .v3({BlockSigner(signer).sdk(24, 32).attribute(SigningBlockBuilder::RotationSdkAttribute, 33U)})
            .v31({BlockSigner(rotated).sdk(33, Newest)});
    add("v2.apk", v2.build());
    add("v3.apk", v3.build());
    add("v31.apk", v31.build());
    add("tree.apk", SigningBlockBuilder(blockZip(), true).v3({BlockSigner(TestKey::rsa(), {0x0421, 0x0104})}).build());
    add("value-v2", inputOf(BlockInput::ValueV2, v2.value(SigningBlockBuilder::V2)));
    add("value-v3", inputOf(BlockInput::ValueV3, v3.value(SigningBlockBuilder::V3)));
    add("value-v31", inputOf(BlockInput::ValueV31, v31.value(SigningBlockBuilder::V31)));
    add("lineage", inputOf(BlockInput::Lineage, levels));
    const QByteArray none = Bytes().u16(0).data();
    add("signed-v2", inputOf(BlockInput::SignedV2,
                             none + attribute(SigningBlockBuilder::StrippingAttribute, Bytes().u32(9).data())));
    const QByteArray digests = prefixed(Bytes().u32(0x0201).raw(prefixed(QByteArray(32, 'd'))).data());
    add("signed-digest", inputOf(BlockInput::SignedV2, Bytes().u16(digests.size()).raw(digests).data()));
    const QByteArray levelsOfV3 = Bytes().u32(28).u32(Newest).data();
    add("signed-v3",
        inputOf(BlockInput::SignedV3, levelsOfV3 + none + attribute(SigningBlockBuilder::LineageAttribute, levels)));
    add("signed-rotation",
        inputOf(BlockInput::SignedV3,
                levelsOfV3 + none + attribute(SigningBlockBuilder::RotationSdkAttribute, Bytes().u32(33).data())));
    add("signed-v31",
        inputOf(BlockInput::SignedV31, Bytes().u32(33).u32(Newest).data() + none
                                           + attribute(SigningBlockBuilder::DevelopmentAttribute, QByteArray())));
    return seeds;
}
