// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/block/ContentDigests.h"

#include "limits/HeldBytes.h"
#include "trust/block/MerkleTree.h"
#include "trust/block/SignedContent.h"
#include "trust/crypto/Digest.h"

#include <QSemaphore>
#include <QThread>
#include <QThreadPool>

#include <atomic>
#include <cstring>

namespace SorrelKit {

namespace {

using Kind = ContentDigest::Kind;

constexpr qint64 ChunkSize = 1 << 20;
constexpr char ChunkMark = '\xa5';
constexpr char ContentMark = '\x5a';
constexpr int TreeSaltSize = 8;
constexpr int TreeLengthSize = 8;

HashAlgorithm hashOf(Kind kind)
{
    return kind == Kind::ChunkedSha512 ? HashAlgorithm::Sha512 : HashAlgorithm::Sha256;
}

qint64 chunksOf(qint64 size)
{
    return size / ChunkSize + (size % ChunkSize == 0 ? 0 : 1);
}

QByteArray markedCount(char mark, qint64 count)
{
    QByteArray bytes(1 + int(sizeof(quint32)), mark);
    qToLittleEndian(quint32(count), bytes.data() + 1);
    return bytes;
}

/// The digests of all chunks, of one kind. Threads write theirs to different places.
struct ChunkDigests {
    Kind kind;
    QByteArray bytes;
    char *to; ///< the same bytes
};

/// Writes the digests of the chunks of @p bytes, whose first one has the number @p chunk. False when one fails.
bool hashChunks(const ByteView &bytes, const ChunkDigests &digests, qint64 chunk)
{
    const int size = ContentDigests::size(digests.kind);
    Digest digest(hashOf(digests.kind));
    for (qint64 at = 0; at < bytes.size(); at += ChunkSize) {
        const ByteView part = bytes.part(at, ChunkSize);
        digest.add(markedCount(ChunkMark, part.size()));
        digest.add(part);
        const QByteArray result = digest.result();
        if (result.size() != size)
            return false;
        std::memcpy(digests.to + chunk * size, result.constData(), size_t(size));
        ++chunk;
    }
    return true;
}

} // namespace

int ContentDigests::size(Kind kind)
{
    return Digest::size(hashOf(kind)) + (kind == Kind::VeritySha256 ? TreeLengthSize : 0);
}

QByteArray ContentDigests::digest(Kind kind, Budget *budget)
{
    compute({kind}, budget);
    return m_digests.value(kind);
}

void ContentDigests::compute(const QVector<Kind> &kinds, Budget *budget)
{
    QVector<Kind> chunked;
    for (const Kind kind : kinds) {
        if (kind != Kind::VeritySha256 && !m_digests.contains(kind) && !chunked.contains(kind))
            chunked.append(kind);
    }
    const bool needsTree = kinds.contains(Kind::VeritySha256) && !m_digests.contains(Kind::VeritySha256);
    if (chunked.isEmpty() && !needsTree)
        return;
    // Each thread has a piece, and another one waits for it.
    const qint64 wanted = qMin(2 * qint64(QThread::idealThreadCount()), MaxHeldBytes / PieceSize);
    const qint64 pieces = qBound(qint64(1), budget->bytesLeft() / PieceSize, wanted);
    const HeldBytes held(*budget, pieces * PieceSize);
    if (!held)
        return;
    if (!chunked.isEmpty())
        computeChunked(chunked, int(pieces));
    if (needsTree)
        computeTree();
}

void ContentDigests::computeChunked(const QVector<Kind> &kinds, int pieces)
{
    qint64 chunks = 0;
    for (const SignedContent::Section &section : m_content->sections())
        chunks += chunksOf(section.size);
    QVector<ChunkDigests> digests;
    for (const Kind kind : kinds)
        digests.append({kind, QByteArray(int(chunks * size(kind)), '\0'), nullptr});
    for (ChunkDigests &each : digests)
        each.to = each.bytes.data();

    std::atomic<bool> isGood(true);
    QSemaphore room(pieces);
    const auto hash = [&digests, &isGood](const SharedBytes &bytes, qint64 chunk) {
        for (const ChunkDigests &each : qAsConst(digests)) {
            if (!hashChunks(bytes.view(), each, chunk))
                isGood = false;
        }
    };
    {
        QThreadPool pool; // its destructor waits for the threads
        qint64 chunk = 0;
        for (const SignedContent::Section &section : m_content->sections()) {
            for (qint64 at = 0; at < section.size && isGood; at += PieceSize) {
                const qint64 count = qMin(PieceSize, section.size - at);
                room.acquire();
                const SharedBytes bytes = m_content->view(section.at + at, count);
                if (bytes.size() != count)
                    isGood = false;
                // A single chunk is hashed sooner than a thread starts.
                const bool isShort = count <= ChunkSize;
                const auto run = [&hash, &room, bytes, chunk] {
                    hash(bytes, chunk);
                    room.release();
                };
                if (isShort)
                    run();
                else
                    pool.start(run);
                chunk += chunksOf(count);
            }
        }
    }
    if (!isGood)
        return;
    for (const ChunkDigests &each : qAsConst(digests)) {
        Digest digest(hashOf(each.kind));
        digest.add(markedCount(ContentMark, chunks));
        digest.add(each.bytes);
        m_digests.insert(each.kind, digest.result());
    }
}

void ContentDigests::computeTree()
{
    const QByteArray root = MerkleTree::make(*m_content, QByteArray(TreeSaltSize, '\0'), false).root;
    if (root.size() != MerkleTree::HashSize)
        return;
    QByteArray length(TreeLengthSize, '\0');
    qToLittleEndian(quint64(m_content->size()), length.data());
    m_digests.insert(Kind::VeritySha256, root + length);
}

} // namespace SorrelKit
