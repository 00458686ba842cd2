// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/block/MerkleTree.h"

#include "archive/ByteSource.h"
#include "trust/crypto/Digest.h"

#include <QThreadPool>
#include <QVector>

#include <cstring>
#include <limits>

namespace SorrelKit {

namespace {

constexpr qint64 TreePieceSize = 4 << 20;
/// Starting a thread takes about as long as hashing this many bytes.
constexpr qint64 MinHashedBytesOfThread = 128 << 10;

qint64 pagesOf(qint64 size)
{
    return size / MerkleTree::PageSize + (size % MerkleTree::PageSize == 0 ? 0 : 1);
}

/// The pages of each level, from the leaves to the root.
QVector<qint64> levelPages(qint64 contentSize)
{
    QVector<qint64> levels;
    qint64 pages = pagesOf(contentSize);
    do {
        pages = pagesOf(pages * MerkleTree::HashSize);
        levels.append(pages);
    } while (pages > 1);
    return levels;
}

QByteArray pageHash(Digest &digest, const QByteArray &salt, const ByteView &page)
{
    digest.add(salt);
    digest.add(page);
    if (page.size() < MerkleTree::PageSize)
        digest.add(QByteArray(int(MerkleTree::PageSize - page.size()), '\0'));
    return digest.result();
}

/// Writes the hashes of the pages of @p bytes to @p hashes.
void hashPages(const QByteArray &salt, const ByteView &bytes, char *hashes)
{
    Digest digest(HashAlgorithm::Sha256);
    for (qint64 at = 0; at < bytes.size(); at += MerkleTree::PageSize) {
        const QByteArray hash = pageHash(digest, salt, bytes.part(at, MerkleTree::PageSize));
        std::memcpy(hashes, hash.constData(), size_t(qMin(qint64(hash.size()), MerkleTree::HashSize)));
        hashes += MerkleTree::HashSize;
    }
}

/// The hashes of the pages of @p bytes; those of a part of them in each thread.
QByteArray leavesOf(QThreadPool &pool, const QByteArray &salt, const ByteView &bytes)
{
    QByteArray hashes(int(pagesOf(bytes.size()) * MerkleTree::HashSize), '\0');
    char *to = hashes.data();
    const qint64 threads = qBound(qint64(1), bytes.size() / MinHashedBytesOfThread, qint64(pool.maxThreadCount()));
    const qint64 partSize = pagesOf((bytes.size() + threads - 1) / threads) * MerkleTree::PageSize;
    if (threads == 1) {
        hashPages(salt, bytes, to);
        return hashes;
    }
    for (qint64 at = 0; at < bytes.size(); at += partSize) {
        char *const part = to + at / MerkleTree::PageSize * MerkleTree::HashSize;
        pool.start([salt, bytes, at, partSize, part] { hashPages(salt, bytes.part(at, partSize), part); });
    }
    pool.waitForDone();
    return hashes;
}

/// The levels above the content. Each one has the page that is being filled.
class TreeLevels
{
public:
    TreeLevels(qint64 contentSize, const QByteArray &salt, bool keepsTree)
        : m_salt(salt), m_digest(HashAlgorithm::Sha256)
    {
        const QVector<qint64> pages = levelPages(contentSize);
        m_levels.resize(pages.size());
        qint64 at = 0;
        for (int i = int(pages.size()) - 1; i >= 0; --i) {
            m_levels[i].at = at;
            at += pages.at(i) * MerkleTree::PageSize;
        }
        if (keepsTree)
            m_tree = QByteArray(int(at), '\0');
    }

    void addLeaves(const QByteArray &hashes)
    {
        for (int at = 0; at < hashes.size(); at += int(MerkleTree::HashSize))
            add(hashes.mid(at, int(MerkleTree::HashSize)));
    }

    HashTree finish()
    {
        for (int i = 0; i < m_levels.size(); ++i) {
            if (!m_levels.at(i).page.isEmpty())
                closePage(i);
        }
        return {m_root, m_tree};
    }

private:
    struct Level {
        QByteArray page;
        qint64 at = 0; ///< offset of the page in the tree
    };

    void add(const QByteArray &hash)
    {
        m_levels[0].page += hash;
        for (int i = 0; i < m_levels.size() && m_levels.at(i).page.size() == MerkleTree::PageSize; ++i)
            closePage(i);
    }

    // The hash of the page goes to the level above.
    void closePage(int number)
    {
        Level &level = m_levels[number];
        const QByteArray hash = pageHash(m_digest, m_salt, ByteView(level.page));
        if (!m_tree.isEmpty())
            std::memcpy(m_tree.data() + level.at, level.page.constData(), size_t(level.page.size()));
        level.at += MerkleTree::PageSize;
        level.page.clear();
        if (number + 1 < m_levels.size())
            m_levels[number + 1].page += hash;
        else
            m_root = hash;
    }

    const QByteArray m_salt;
    Digest m_digest;
    QVector<Level> m_levels; ///< from the leaves to the root
    QByteArray m_tree;
    QByteArray m_root;
};

} // namespace

HashTree MerkleTree::make(ByteSource &content, const QByteArray &salt, bool keepsTree)
{
    const qint64 size = content.size();
    if (size <= 0 || (keepsTree && treeSize(size) > std::numeric_limits<int>::max()))
        return {};

    QThreadPool pool;
    TreeLevels levels(size, salt, keepsTree);
    for (qint64 at = 0; at < size; at += qMin(TreePieceSize, size - at)) {
        const SharedBytes piece = content.view(at, TreePieceSize);
        if (piece.size() != qMin(TreePieceSize, size - at))
            return {};
        levels.addLeaves(leavesOf(pool, salt, piece.view()));
    }
    return levels.finish();
}

qint64 MerkleTree::treeSize(qint64 contentSize)
{
    qint64 pages = 0;
    for (const qint64 each : levelPages(contentSize))
        pages += each;
    return pages * PageSize;
}

} // namespace SorrelKit
