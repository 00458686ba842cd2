// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SIGNINGBLOCKBUILDER_H
#define SIGNINGBLOCKBUILDER_H

#include "TestKey.h"

#include <QByteArray>
#include <QVector>

#include <functional>
#include <limits>

/// Packages with a signing block, signed rightly unless a test damages them.
namespace fixture {

/// A number and bytes: an attribute, a digest or a signature in a signer.
struct NumberedBytes {
    quint32 id;
    QByteArray bytes;
};

/// @p bytes behind their number.
QByteArray prefixed(const QByteArray &bytes);
/// Elements behind their numbers, one after another, without the number of bytes of all.
QByteArray prefixedAll(const QVector<QByteArray> &elements);

/// A signer of v2, v3 or v3.1. Fields may be changed before it is given to the builder; the functions may damage what
/// the builder makes.
struct BlockSigner {
    /// The true fields for the key @p signingKey and the algorithms @p ids, with a certificate that is made for it.
    explicit BlockSigner(const TestKey &signingKey, const QVector<quint32> &ids = {0x0103});

    BlockSigner &sdk(int min, int max);
    BlockSigner &attribute(quint32 id, const QByteArray &bytes);
    /// An attribute whose value is an integer of 32 bits.
    BlockSigner &attribute(quint32 id, quint32 value);

    TestKey key;
    QVector<quint32> algorithms; ///< of the digests and signatures
    QVector<QByteArray> certificates;
    QByteArray publicKey;
    quint32 minSdk = 28; ///< of v3, in the signed data
    quint32 maxSdk = std::numeric_limits<int>::max();
    qint64 outerMinSdk = -1; ///< of v3, in the signer; -1 for the same
    qint64 outerMaxSdk = -1;
    QVector<NumberedBytes> attributes;
    std::function<void(QVector<NumberedBytes> &digests)> onDigests;       ///< before they are signed
    std::function<void(QByteArray &data)> onSignedData;                   ///< before it is signed
    std::function<void(QVector<NumberedBytes> &signatures)> onSignatures; ///< behind the signing
    std::function<void(QByteArray &signer)> onSigner;                     ///< the whole signer, without its size
};

/// A level of a lineage: a certificate, and the key that signs the next one.
struct LineageLevel {
    TestKey key;
    QByteArray certificate;
    quint32 algorithm = 0x0103; ///< by which the key signs the next level
    quint32 flags = 31;
    qint64 signedAlgorithm = -1; ///< of the parent, in the signed data; -1 for the true one
    std::function<void(QByteArray &data)> onSignedData = nullptr; ///< before it is signed
    std::function<void(QByteArray &level)> onLevel = nullptr;     ///< the whole level, without its size
};

/// The value of the attribute with the lineage.
QByteArray lineage(const QVector<LineageLevel> &levels, quint32 version = 1);

/// Writes a signing block into a ZIP archive without one.
class SigningBlockBuilder
{
public:
    enum Id : quint32 {
        V2 = 0x7109871a,
        V3 = 0xf05368c0,
        V31 = 0x1b93ad61,
        PaddingId = 0x42726577,
        StrippingAttribute = 0xbeeff00d,
        LineageAttribute = 0x3ba06f8c,
        RotationSdkAttribute = 0x559f8b02,
        DevelopmentAttribute = 0xc2a6b3ba,
    };

    /// The archive @p zip. An archive that is @p isAligned gets zeros before its directory, and padding in the block, so
    /// that the block consists of pages; digests of Merkle trees need that.
    explicit SigningBlockBuilder(const QByteArray &zip, bool isAligned = false);

    // Pairs are written in the order of these calls.
    SigningBlockBuilder &v2(const QVector<BlockSigner> &signers);
    SigningBlockBuilder &v3(const QVector<BlockSigner> &signers);
    SigningBlockBuilder &v31(const QVector<BlockSigner> &signers);
    SigningBlockBuilder &pair(quint32 id, const QByteArray &value);
    /// The value of the last pair, to damage it.
    SigningBlockBuilder &onLastValue(const std::function<void(QByteArray &value)> &change);

    /// The package.
    QByteArray build() const;
    /// The package, whose block is @p block whatever that is.
    QByteArray buildWith(const QByteArray &block) const;
    /// The block from its first size to its magic.
    QByteArray block() const;
    /// The value of the first pair with this id.
    QByteArray value(quint32 id) const;
    /// The place of the block in the package.
    int blockAt() const { return m_blockAt; }
    /// The digest of the content that belongs to the signature algorithm @p algorithm.
    QByteArray contentDigest(quint32 algorithm) const;

private:
    SigningBlockBuilder &scheme(quint32 id, const QVector<BlockSigner> &signers);
    QByteArray signerBytes(const BlockSigner &signer, bool isV3) const;
    QByteArray chunkedDigest(SorrelKit::HashAlgorithm algorithm) const;
    QByteArray verityDigest() const;

    QByteArray m_members; ///< and what precedes the block otherwise
    QByteArray m_directory;
    QByteArray m_end;
    int m_blockAt = 0;
    bool m_isAligned;
    QVector<NumberedBytes> m_pairs;
};

} // namespace fixture

#endif
