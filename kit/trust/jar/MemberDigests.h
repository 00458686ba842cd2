// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_MEMBERDIGESTS_H
#define SORRELKIT_MEMBERDIGESTS_H

#include "trust/jar/JarDigests.h"

#include <QtGlobal>

#include <vector>

class ZipArchive;

namespace SorrelKit {

/**
 * Compares members of an archive with their digests. Each member is read once, and inflated once, for all of its
 * digests.
 *
 * The calling thread reads the packed bytes; threads of a pool inflate and hash them, as many as there are processors,
 * up to MaxThreads. At most MaxQueuedBytes of packed bytes wait or are worked on, and each thread has a buffer of
 * PieceBytes, so memory does not grow with the members. A member of more packed bytes than MaxMemberBytes is read piece
 * by piece, in the calling thread. The threads end with check().
 *
 * A hostile archive can inflate to a thousand times its size, and its members may share bytes. So the sum of all packed
 * bytes is at most the size of the archive, and that of the inflated ones is limited by it.
 */
class MemberDigests
{
public:
    static constexpr int MaxThreads = 8;
    static constexpr qint64 MaxQueuedBytes = 32 << 20;
    static constexpr qint64 MaxMemberBytes = 8 << 20;
    static constexpr qint64 PieceBytes = 256 << 10;
    /// Members that make a task of the pool have this many packed bytes, or there is one.
    static constexpr qint64 TaskBytes = 1 << 20;
    static constexpr int TaskMembers = 256;
    /// Inflated bytes of all members: this many, and as many times the size of the archive.
    static constexpr qint64 MaxInflatedBytes = 256 << 20;
    static constexpr qint64 MaxInflatedRatio = 8;

    enum class State {
        Right,
        Wrong,      ///< a digest is another one
        Unreadable, ///< the member is damaged, or delivers fewer or more bytes than the archive says
        TooCostly,  ///< with this member, all would be more than the limits above
    };
    struct Result {
        State state = State::Unreadable;
        HashAlgorithm algorithm = HashAlgorithm::Sha256; ///< of the first wrong digest
    };

    /// For members of @p archive, which is open and outlives this object.
    explicit MemberDigests(ZipArchive &archive) : m_archive(archive) {}

    /// Adds member @p number of the archive, which has to have @p digests; there is one at least.
    void add(int number, std::vector<JarDigest> digests) { m_members.push_back({number, std::move(digests), {}}); }
    /// Compares all members. The results are in the order of add().
    std::vector<Result> check();

private:
    struct Member {
        int number;
        std::vector<JarDigest> digests;
        Result result;
    };

    ZipArchive &m_archive;
    std::vector<Member> m_members;
};

} // namespace SorrelKit

#endif
