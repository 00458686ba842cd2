// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_CONTENTDIGESTS_H
#define SORRELKIT_CONTENTDIGESTS_H

#include "trust/result/SchemeResult.h"

#include <QByteArray>
#include <QMap>
#include <QVector>

class Budget;

namespace SorrelKit {

class SignedContent;

/**
 * The digests of all content of a package (APK Signature Scheme v2, "Integrity-protected contents").
 *
 * Chunked digests: each section is divided into chunks of 1 MiB, the last one of a section may be shorter. The digest of
 * a chunk is that of 0xa5, its size in 4 bytes, and its bytes. The digest of the content is that of 0x5a, the number of
 * chunks in 4 bytes, and the digests of all chunks.
 *
 * Merkle tree: the root hash of MerkleTree with a salt of 8 zeros, and the size of the content in 8 bytes.
 *
 * Each digest is computed once, on all processors. The calling thread reads the content, in pieces that hold at most
 * MaxHeldBytes where they cannot be mapped. The threads have ended when a function returns. One thread at a time.
 */
class ContentDigests
{
public:
    /// Bytes of a piece, which one thread hashes: a whole number of chunks.
    static constexpr qint64 PieceSize = 4 << 20;
    /// Bytes of the pieces that threads have at the same time.
    static constexpr qint64 MaxHeldBytes = 32 << 20;

    /// The digests of @p content, which outlives this object.
    explicit ContentDigests(SignedContent &content) : m_content(&content) {}

    /// The digest of this kind. Empty when the content cannot be read, or @p budget has no bytes for a piece.
    QByteArray digest(ContentDigest::Kind kind, Budget *budget);
    /// Computes these digests, unless they are known. The chunked ones are computed together.
    void compute(const QVector<ContentDigest::Kind> &kinds, Budget *budget);
    /// Bytes of a digest of this kind.
    static int size(ContentDigest::Kind kind);

private:
    void computeChunked(const QVector<ContentDigest::Kind> &kinds, int pieces);
    void computeTree();

    SignedContent *m_content;
    QMap<ContentDigest::Kind, QByteArray> m_digests;
};

} // namespace SorrelKit

#endif
