// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "format/ResourceTable.h"

#include <QByteArray>
#include <QRandomGenerator>
#include <QVector>

#include <cstring>

/*
 * Mutations that know chunks. An added or dropped byte makes the size of every enclosing chunk wrong, and a loader
 * stops at the first wrong size. Half of the mutations therefore correct the sizes, and a few double, drop or move a
 * whole chunk.
 */

extern "C" size_t LLVMFuzzerMutate(uint8_t *data, size_t size, size_t maxSize);
extern "C" size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t maxSize, unsigned int seed);

using namespace fixture;

namespace {

struct Chunk {
    int at;
    int size;
};

// Returns the offset of the first child of the chunk at @p at, or 0 when the chunk has no children.
int childrenOffset(const QByteArray &bytes, int at)
{
    switch (ChunkType(peek16(bytes, at))) {
    case ChunkType::Table:
        return ResourceTable::HeaderSize;
    case ChunkType::Xml:
        return ChunkView::HeaderSize;
    case ChunkType::Package:
        return peek16(bytes, at + 2);
    default:
        return 0;
    }
}

// Lists the chunks from @p at to @p end. Follows their sizes as far as possible, and corrects them so that the chunks
// fill that space.
void repair(QByteArray &bytes, int at, int end, QVector<Chunk> &chunks)
{
    while (end - at >= ChunkView::HeaderSize) {
        const qint64 claimed = peek32(bytes, at + 4);
        int size = int(qBound(qint64(ChunkView::HeaderSize), claimed, qint64(end - at)));
        if (end - at - size < ChunkView::HeaderSize)
            size = end - at;
        poke32(bytes, at + 4, size);
        chunks.append({at, size});
        const int children = childrenOffset(bytes, at);
        if (children >= ChunkView::HeaderSize && children < size)
            repair(bytes, at + children, at + size, chunks);
        at += size;
    }
}

void rearrange(QByteArray &bytes, const QVector<Chunk> &chunks, QRandomGenerator &random)
{
    const Chunk one = chunks.at(random.bounded(chunks.size()));
    const Chunk other = chunks.at(random.bounded(chunks.size()));
    const QByteArray content = bytes.mid(one.at, one.size);
    switch (random.bounded(3)) {
    case 0:
        bytes.insert(other.at, content);
        break;
    case 1:
        if (one.at > 0)
            bytes.remove(one.at, one.size);
        break;
    default:
        bytes.replace(other.at, other.size, content);
    }
}

} // namespace

size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t maxSize, unsigned int seed)
{
    QRandomGenerator random(seed);
    size = LLVMFuzzerMutate(data, size, maxSize);
    if (random.bounded(2) == 0)
        return size;

    QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    QVector<Chunk> chunks;
    repair(bytes, 0, int(bytes.size()), chunks);
    if (!chunks.isEmpty() && random.bounded(4) == 0) {
        rearrange(bytes, chunks, random);
        chunks.clear();
        repair(bytes, 0, int(bytes.size()), chunks);
    }
    const size_t length = qMin(size_t(bytes.size()), maxSize);
    std::memcpy(data, bytes.constData(), length);
    return length;
}
