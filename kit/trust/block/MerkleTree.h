// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_MERKLETREE_H
#define SORRELKIT_MERKLETREE_H

#include <QByteArray>

class ByteSource;

namespace SorrelKit {

/// What MerkleTree makes of a content.
struct HashTree {
    QByteArray root; ///< SHA-256 of the root's page, which has 32 bytes; empty when the content cannot be read
    QByteArray tree; ///< the pages of all levels, from the root's down to the leaves; empty unless they were asked for
};

/**
 * The tree of SHA-256 hashes that Android makes of the pages of a file, as fs-verity does.
 *
 * The content is padded with zeros to a multiple of PageSize. The hashes of its pages, one after the other, are the
 * leaves. They are padded to pages too, and the hashes of these are the next level, until a level has one page. Even a
 * content of one page has such a level. The salt is hashed before each page, and is not padded.
 */
class MerkleTree
{
public:
    static constexpr qint64 PageSize = 4096;
    static constexpr qint64 HashSize = 32;

    /// The tree of the whole @p content. Hashes on all processors; reads the content on the calling thread, in pieces
    /// of 4 MiB, which are all the memory besides the tree. The tree is empty unless @p keepsTree.
    ///
    /// Everything is empty when the content has no bytes or delivers fewer than its size, or when the tree is to be
    /// kept and has 2 GiB or more.
    static HashTree make(ByteSource &content, const QByteArray &salt, bool keepsTree);
    /// Bytes of the tree of a content of @p contentSize bytes.
    static qint64 treeSize(qint64 contentSize);
};

} // namespace SorrelKit

#endif
