// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/jar/MemberDigests.h"

#include "archive/ZipArchive.h"

#include <QRunnable>
#include <QSemaphore>
#include <QThread>
#include <QThreadPool>

#include <zlib.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace SorrelKit {

namespace {

using MemberResult = MemberDigests::Result;
using MemberState = MemberDigests::State;

/// All digests of a member's bytes, which come piece by piece.
class MemberHasher
{
public:
    explicit MemberHasher(const std::vector<JarDigest> &wanted) : m_wanted(wanted)
    {
        for (const JarDigest &each : wanted)
            m_digests.push_back(std::make_unique<Digest>(each.algorithm));
    }

    void add(const ByteView &bytes)
    {
        m_size += bytes.size();
        for (const auto &each : m_digests)
            each->add(bytes);
    }
    /// The result of a member that has to have @p size bytes.
    MemberResult result(qint64 size)
    {
        if (m_size != size || m_wanted.empty())
            return {};
        for (size_t i = 0; i < m_wanted.size(); ++i) {
            const QByteArray digest = m_digests.at(i)->result();
            if (digest.isEmpty() || digest != m_wanted.at(i).value)
                return {MemberState::Wrong, m_wanted.at(i).algorithm};
        }
        return {MemberState::Right, HashAlgorithm::Sha256};
    }

private:
    const std::vector<JarDigest> &m_wanted;
    std::vector<std::unique_ptr<Digest>> m_digests;
    qint64 m_size = 0;
};

/// Inflates deflated data that comes piece by piece, and hashes what it makes.
class MemberInflater
{
public:
    MemberInflater() { m_isGood = inflateInit2(&m_stream, -MAX_WBITS) == Z_OK; }
    ~MemberInflater() { inflateEnd(&m_stream); }

    /// Begins another member of @p size bytes.
    void begin(qint64 size)
    {
        m_isGood = inflateReset(&m_stream) == Z_OK;
        m_isAtEnd = false;
        m_left = size;
        m_buffer.resize(int(MemberDigests::PieceBytes));
    }
    /// False when the data ended, is damaged, or makes more bytes than it should.
    bool add(const ByteView &packed, MemberHasher &hasher)
    {
        m_stream.next_in = const_cast<Bytef *>(packed.data());
        m_stream.avail_in = uInt(packed.size());
        while (m_isGood && !m_isAtEnd && m_stream.avail_in > 0)
            inflatePiece(hasher);
        while (m_isGood && !m_isAtEnd && m_stream.avail_out == 0)
            inflatePiece(hasher);
        return m_isGood && !m_isAtEnd;
    }
    /// Whether the data was whole.
    bool isWhole() const { return m_isGood && m_isAtEnd && m_left == 0; }

private:
    Q_DISABLE_COPY(MemberInflater)

    void inflatePiece(MemberHasher &hasher)
    {
        m_stream.next_out = reinterpret_cast<Bytef *>(m_buffer.data());
        m_stream.avail_out = uInt(m_buffer.size());
        const int status = ::inflate(&m_stream, Z_NO_FLUSH);
        const qint64 made = m_buffer.size() - qint64(m_stream.avail_out);
        m_isAtEnd = status == Z_STREAM_END;
        m_isGood = (status == Z_OK || status == Z_STREAM_END || status == Z_BUF_ERROR) && made <= m_left;
        if (!m_isGood)
            return;
        m_left -= made;
        hasher.add(ByteView(reinterpret_cast<const uchar *>(m_buffer.constData()), made));
    }

    z_stream m_stream{};
    QByteArray m_buffer;
    qint64 m_left = 0;
    bool m_isGood = false;
    bool m_isAtEnd = false;
};

/// A member whose packed bytes are read.
struct ReadMember {
    SharedBytes bytes;
    ZipArchive::Data data;
    const std::vector<JarDigest> *digests = nullptr;
    MemberResult *result = nullptr;
};

/// Hashes some members in a thread of the pool.
class MemberTask : public QRunnable
{
public:
    MemberTask(std::vector<ReadMember> members, qint64 bytes, QSemaphore *room)
        : m_members(std::move(members)), m_bytes(bytes), m_room(room)
    {
    }

    void run() override
    {
        MemberInflater inflater;
        for (const ReadMember &each : m_members)
            *each.result = hash(each, inflater);
        m_members.clear();
        m_room->release(int(m_bytes));
    }

private:
    static MemberResult hash(const ReadMember &member, MemberInflater &inflater)
    {
        MemberHasher hasher(*member.digests);
        if (member.bytes.size() != member.data.packedSize)
            return {};
        if (member.data.method == ZipDirectory::Stored) {
            hasher.add(member.bytes.view());
            return hasher.result(member.data.size);
        }
        inflater.begin(member.data.size);
        inflater.add(member.bytes.view(), hasher);
        return inflater.isWhole() ? hasher.result(member.data.size) : MemberResult();
    }

    std::vector<ReadMember> m_members;
    qint64 m_bytes;
    QSemaphore *m_room;
};

/// Hashes a member piece by piece, in the calling thread.
MemberResult hashInPieces(ByteSource &source, const ZipArchive::Data &data, const std::vector<JarDigest> &digests)
{
    MemberHasher hasher(digests);
    MemberInflater inflater;
    inflater.begin(data.size);
    const bool isStored = data.method == ZipDirectory::Stored;
    bool goesOn = true;
    for (qint64 at = 0; goesOn && at < data.packedSize; at += MemberDigests::PieceBytes) {
        const qint64 size = std::min(MemberDigests::PieceBytes, data.packedSize - at);
        const QByteArray piece = source.read(data.at + at, size);
        if (piece.size() != size)
            return {};
        if (isStored)
            hasher.add(ByteView(piece));
        else
            goesOn = inflater.add(ByteView(piece), hasher);
    }
    return isStored || inflater.isWhole() ? hasher.result(data.size) : MemberResult();
}

/// Passes members to the pool, several at once.
class MemberQueue
{
public:
    MemberQueue() : m_room(int(MemberDigests::MaxQueuedBytes))
    {
        m_pool.setMaxThreadCount(qBound(1, QThread::idealThreadCount(), MemberDigests::MaxThreads));
    }
    ~MemberQueue() { finish(); }

    void add(ReadMember member)
    {
        m_bytes += member.data.packedSize;
        m_waiting.push_back(std::move(member));
        if (m_bytes >= MemberDigests::TaskBytes || int(m_waiting.size()) == MemberDigests::TaskMembers)
            start();
    }
    /// Waits until @p bytes more may be read.
    void makeRoom(qint64 bytes) { m_room.acquire(int(bytes)); }
    /// Waits until all members are hashed. A few need no thread.
    void finish()
    {
        if (m_pool.activeThreadCount() == 0)
            MemberTask(std::move(m_waiting), m_bytes, &m_room).run();
        else
            start();
        m_waiting.clear();
        m_bytes = 0;
        m_pool.waitForDone();
    }

private:
    Q_DISABLE_COPY(MemberQueue)

    void start()
    {
        if (!m_waiting.empty())
            m_pool.start(new MemberTask(std::move(m_waiting), m_bytes, &m_room));
        m_waiting.clear();
        m_bytes = 0;
    }

    QSemaphore m_room; ///< bytes that may be read
    QThreadPool m_pool;
    std::vector<ReadMember> m_waiting;
    qint64 m_bytes = 0; ///< of m_waiting
};

} // namespace

std::vector<MemberDigests::Result> MemberDigests::check()
{
    ByteSource &source = m_archive.source();
    qint64 packedLeft = source.size();
    qint64 inflatedLeft = MaxInflatedBytes + MaxInflatedRatio * source.size();
    {
        MemberQueue queue;
        for (Member &member : m_members) {
            const std::optional<ZipArchive::Data> data = m_archive.data(member.number);
            const ZipDirectory::Member claimed = m_archive.directory().member(member.number);
            const bool isKnown =
                data && (data->method == ZipDirectory::Stored || data->method == ZipDirectory::Deflated);
            // A stored member whose sizes differ is read differently by others.
            if (!isKnown || (data->isStored() && claimed.packedSize != claimed.size))
                continue;
            if (data->packedSize > packedLeft || data->size > inflatedLeft) {
                member.result.state = State::TooCostly;
                continue;
            }
            packedLeft -= data->packedSize;
            inflatedLeft -= data->size;
            if (data->packedSize > MaxMemberBytes) {
                member.result = hashInPieces(source, *data, member.digests);
                continue;
            }
            queue.makeRoom(data->packedSize);
            queue.add({source.view(data->at, data->packedSize), *data, &member.digests, &member.result});
        }
        queue.finish();
    }
    std::vector<Result> results;
    for (const Member &member : m_members)
        results.push_back(member.result);
    return results;
}

} // namespace SorrelKit
