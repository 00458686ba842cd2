// SPDX-License-Identifier: LGPL-2.1-or-later
#include "SigningBlockBuilder.h"

#include "Bytes.h"

#include <utility>

namespace fixture {

namespace {

using SorrelKit::Digest;
using SorrelKit::HashAlgorithm;
using SorrelKit::SignatureMethod;

constexpr int PageSize = 4096;

// Written here once more, so that a wrong number in the library's own table is found.
SignatureMethod methodOf(quint32 algorithm)
{
    using Key = SignatureMethod::Key;
    switch (algorithm) {
    case 0x0101:
        return {Key::RsaPss, HashAlgorithm::Sha256};
    case 0x0102:
        return {Key::RsaPss, HashAlgorithm::Sha512};
    case 0x0104:
        return {Key::Rsa, HashAlgorithm::Sha512};
    case 0x0201:
    case 0x0423:
        return {Key::Ec, HashAlgorithm::Sha256};
    case 0x0202:
        return {Key::Ec, HashAlgorithm::Sha512};
    case 0x0301:
    case 0x0425:
        return {Key::Dsa, HashAlgorithm::Sha256};
    default:
        return {Key::Rsa, HashAlgorithm::Sha256};
    }
}

bool isKnown(quint32 algorithm)
{
    const QVector<quint32> known{0x0101, 0x0102, 0x0103, 0x0104, 0x0201, 0x0202, 0x0301, 0x0421, 0x0423, 0x0425};
    return known.contains(algorithm);
}

QByteArray u64(qint64 value)
{
    return Bytes().u32(value & 0xffffffff).u32(value >> 32).data();
}

QByteArray numbered(const QVector<NumberedBytes> &elements)
{
    QVector<QByteArray> list;
    for (const NumberedBytes &each : elements)
        list.append(Bytes().u32(each.id).raw(prefixed(each.bytes)).data());
    return prefixed(prefixedAll(list));
}

template <typename T>
void change(const std::function<void(T &)> &function, T &value)
{
    if (function)
        function(value);
}

} // namespace

QByteArray prefixed(const QByteArray &bytes)
{
    return Bytes().u32(bytes.size()).raw(bytes).data();
}

QByteArray prefixedAll(const QVector<QByteArray> &elements)
{
    QByteArray result;
    for (const QByteArray &each : elements)
        result += prefixed(each);
    return result;
}

BlockSigner::BlockSigner(const TestKey &signingKey, const QVector<quint32> &ids)
    : key(signingKey), algorithms(ids), certificates({signingKey.certificate()}), publicKey(signingKey.publicKey())
{
}

BlockSigner &BlockSigner::sdk(int min, int max)
{
    minSdk = quint32(min);
    maxSdk = quint32(max);
    return *this;
}

BlockSigner &BlockSigner::attribute(quint32 id, const QByteArray &bytes)
{
    attributes.append({id, bytes});
    return *this;
}

BlockSigner &BlockSigner::attribute(quint32 id, quint32 value)
{
    return attribute(id, Bytes().u32(value).data());
}

QByteArray lineage(const QVector<LineageLevel> &levels, quint32 version)
{
    QByteArray result = Bytes().u32(version).data();
    for (int i = 0; i < levels.size(); ++i) {
        const LineageLevel &level = levels.at(i);
        const quint32 parent = i == 0 ? 0 : levels.at(i - 1).algorithm;
        QByteArray data = Bytes()
                              .raw(prefixed(level.certificate))
                              .u32(level.signedAlgorithm < 0 ? parent : level.signedAlgorithm)
                              .data();
        change(level.onSignedData, data);
        const QByteArray signature = i == 0 ? QByteArray() : levels.at(i - 1).key.sign(methodOf(parent), data);
        // The last level signs nothing.
        const quint32 next = i + 1 == levels.size() ? 0 : level.algorithm;
        QByteArray bytes = Bytes().raw(prefixed(data)).u32(level.flags).u32(next).raw(prefixed(signature)).data();
        change(level.onLevel, bytes);
        result += prefixed(bytes);
    }
    return result;
}

SigningBlockBuilder::SigningBlockBuilder(const QByteArray &zip, bool isAligned) : m_isAligned(isAligned)
{
    constexpr int OffsetAt = 16;
    const auto endAt = int(zip.lastIndexOf("PK\5\6"));
    const auto directoryAt = int(peek32(zip, endAt + OffsetAt));
    m_members = zip.left(directoryAt);
    if (isAligned)
        m_members += QByteArray((PageSize - directoryAt % PageSize) % PageSize, '\0');
    m_directory = zip.mid(directoryAt, endAt - directoryAt);
    m_end = zip.mid(endAt);
    m_blockAt = int(m_members.size());
    poke32(m_end, OffsetAt, m_blockAt);
}

SigningBlockBuilder &SigningBlockBuilder::v2(const QVector<BlockSigner> &signers)
{
    return scheme(V2, signers);
}

SigningBlockBuilder &SigningBlockBuilder::v3(const QVector<BlockSigner> &signers)
{
    return scheme(V3, signers);
}

SigningBlockBuilder &SigningBlockBuilder::v31(const QVector<BlockSigner> &signers)
{
    return scheme(V31, signers);
}

SigningBlockBuilder &SigningBlockBuilder::scheme(quint32 id, const QVector<BlockSigner> &signers)
{
    QVector<QByteArray> list;
    for (const BlockSigner &signer : signers)
        list.append(signerBytes(signer, id != V2));
    return pair(id, prefixed(prefixedAll(list)));
}

SigningBlockBuilder &SigningBlockBuilder::pair(quint32 id, const QByteArray &value)
{
    m_pairs.append({id, value});
    return *this;
}

SigningBlockBuilder &SigningBlockBuilder::onLastValue(const std::function<void(QByteArray &value)> &change)
{
    change(m_pairs.last().bytes);
    return *this;
}

QByteArray SigningBlockBuilder::signerBytes(const BlockSigner &signer, bool isV3) const
{
    QVector<NumberedBytes> digests;
    for (const quint32 algorithm : signer.algorithms)
        digests.append({algorithm, contentDigest(algorithm)});
    change(signer.onDigests, digests);
    QVector<QByteArray> attributes;
    for (const NumberedBytes &each : signer.attributes)
        attributes.append(Bytes().u32(each.id).raw(each.bytes).data());
    Bytes dataBytes;
    dataBytes.raw(numbered(digests)).raw(prefixed(prefixedAll(signer.certificates)));
    if (isV3)
        dataBytes.u32(signer.minSdk).u32(signer.maxSdk);
    QByteArray data = dataBytes.raw(prefixed(prefixedAll(attributes))).data();
    change(signer.onSignedData, data);

    QVector<NumberedBytes> signatures;
    for (const quint32 algorithm : signer.algorithms)
        signatures.append(
            {algorithm, isKnown(algorithm) ? signer.key.sign(methodOf(algorithm), data) : QByteArray("unknown")});
    change(signer.onSignatures, signatures);
    Bytes bytes;
    bytes.raw(prefixed(data));
    if (isV3) {
        bytes.u32(signer.outerMinSdk < 0 ? signer.minSdk : signer.outerMinSdk)
            .u32(signer.outerMaxSdk < 0 ? signer.maxSdk : signer.outerMaxSdk);
    }
    QByteArray result = bytes.raw(numbered(signatures)).raw(prefixed(signer.publicKey)).data();
    change(signer.onSigner, result);
    return result;
}

QByteArray SigningBlockBuilder::block() const
{
    constexpr int SizeSize = 8;
    constexpr int PairHeadSize = SizeSize + 4;
    const QByteArray magic = "APK Sig Block 42";
    QByteArray pairs;
    const auto add = [&pairs](quint32 id, const QByteArray &value) {
        pairs += Bytes().raw(u64(value.size() + 4)).u32(id).raw(value).data();
    };
    for (const NumberedBytes &each : m_pairs)
        add(each.id, each.bytes);
    if (m_isAligned) {
        const int size = 2 * SizeSize + int(pairs.size()) + PairHeadSize + int(magic.size());
        add(PaddingId, QByteArray((PageSize - size % PageSize) % PageSize, '\0'));
    }
    const QByteArray size = u64(pairs.size() + SizeSize + magic.size());
    return size + pairs + size + magic;
}

QByteArray SigningBlockBuilder::value(quint32 id) const
{
    for (const NumberedBytes &each : m_pairs) {
        if (each.id == id)
            return each.bytes;
    }
    return {};
}

QByteArray SigningBlockBuilder::buildWith(const QByteArray &block) const
{
    constexpr int OffsetAt = 16;
    QByteArray end = m_end;
    poke32(end, OffsetAt, m_blockAt + block.size());
    return m_members + block + m_directory + end;
}

QByteArray SigningBlockBuilder::build() const
{
    return buildWith(block());
}

QByteArray SigningBlockBuilder::contentDigest(quint32 algorithm) const
{
    switch (algorithm) {
    case 0x0102:
    case 0x0104:
    case 0x0202:
        return chunkedDigest(HashAlgorithm::Sha512);
    case 0x0421:
    case 0x0423:
    case 0x0425:
        return verityDigest();
    default:
        return chunkedDigest(HashAlgorithm::Sha256);
    }
}

QByteArray SigningBlockBuilder::chunkedDigest(HashAlgorithm algorithm) const
{
    constexpr int ChunkSize = 1 << 20;
    QByteArray digests;
    int count = 0;
    for (const QByteArray &section : {m_members, m_directory, m_end}) {
        for (int at = 0; at < section.size(); at += ChunkSize) {
            const QByteArray chunk = section.mid(at, ChunkSize);
            digests += Digest::of(algorithm, Bytes().u8(0xa5).u32(chunk.size()).raw(chunk).data());
            ++count;
        }
    }
    return Digest::of(algorithm, Bytes().u8(0x5a).u32(count).raw(digests).data());
}

QByteArray SigningBlockBuilder::verityDigest() const
{
    const QByteArray salt(8, '\0');
    const QByteArray content = m_members + m_directory + m_end;
    QByteArray level = content;
    do {
        level += QByteArray((PageSize - level.size() % PageSize) % PageSize, '\0');
        QByteArray hashes;
        for (int at = 0; at < level.size(); at += PageSize)
            hashes += Digest::of(HashAlgorithm::Sha256, QByteArray(salt + level.mid(at, PageSize)));
        level = hashes;
    } while (level.size() > PageSize);
    level += QByteArray(PageSize - level.size(), '\0');
    return Digest::of(HashAlgorithm::Sha256, QByteArray(salt + level)) + u64(content.size());
}

} // namespace fixture
