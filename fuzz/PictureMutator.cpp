// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Pictures.h"

#include <QByteArray>
#include <QRandomGenerator>
#include <QVector>
#include <QtEndian>

#include <cstring>

/*
 * Mutations that know the framing of pictures. A decoder stops at the first wrong checksum or size, so half of the
 * mutations correct these in a PNG or WebP file. A few double, drop or move a chunk, or unpack the pixels of a PNG,
 * mutate them and pack them again.
 */

extern "C" size_t LLVMFuzzerMutate(uint8_t *data, size_t size, size_t maxSize);
extern "C" size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t maxSize, unsigned int seed);

namespace {

constexpr int PngSignature = 8;
constexpr int WebpHeader = 12;
constexpr int ChunkHeader = 8;

struct Chunk {
    QByteArray type;
    QByteArray data;
};

// Splits the bytes into chunks as far as their sizes are valid. The last chunk has the rest.
QVector<Chunk> chunksOf(const QByteArray &bytes, int at, bool isPng)
{
    constexpr int ChecksumSize = 4;
    QVector<Chunk> chunks;
    while (bytes.size() - at > ChunkHeader) {
        const char *const header = bytes.constData() + at;
        const quint32 claimed = isPng ? qFromBigEndian<quint32>(header) : qFromLittleEndian<quint32>(header + 4);
        const auto length = int(qMin(qint64(claimed), qint64(bytes.size()) - at - ChunkHeader));
        chunks.append({bytes.mid(isPng ? at + 4 : at, 4), bytes.mid(at + ChunkHeader, length)});
        at += ChunkHeader + length + (isPng ? ChecksumSize : length & 1);
    }
    return chunks;
}

void mutatePixels(QVector<Chunk> &chunks, QRandomGenerator &random)
{
    constexpr int MaxRowBytes = 1 << 16;
    QByteArray packed;
    int first = -1;
    for (int i = 0; i < chunks.size(); ++i) {
        if (chunks.at(i).type != "IDAT")
            continue;
        packed += chunks.at(i).data;
        first = first < 0 ? i : first;
    }
    if (first < 0 || packed.size() > MaxRowBytes / 64)
        return;
    QByteArray prefixed(4, '\0');
    qToBigEndian(quint32(MaxRowBytes), prefixed.data());
    QByteArray rows = qUncompress(prefixed + packed);
    if (rows.isEmpty() || rows.size() > MaxRowBytes)
        return;
    const int size = int(rows.size());
    rows.resize(size + int(random.bounded(64)));
    rows.resize(int(LLVMFuzzerMutate(reinterpret_cast<uint8_t *>(rows.data()), size_t(size), size_t(rows.size()))));
    chunks[first].data = fixture::deflated(rows);
}

void rearrange(QVector<Chunk> &chunks, QRandomGenerator &random)
{
    const int one = int(random.bounded(int(chunks.size())));
    const int other = int(random.bounded(int(chunks.size())));
    switch (random.bounded(4)) {
    case 0:
        chunks.insert(other, Chunk(chunks.at(one)));
        break;
    case 1:
        chunks.remove(one);
        break;
    case 2:
        std::swap(chunks[one], chunks[other]);
        break;
    default:
        chunks[one].type = chunks.at(other).type;
    }
}

QByteArray mended(const QByteArray &bytes, QRandomGenerator &random)
{
    const bool isPng = bytes.startsWith("\x89PNG\r\n\x1a\n");
    if (!isPng && !bytes.startsWith("RIFF"))
        return bytes;
    QVector<Chunk> chunks = chunksOf(bytes, isPng ? PngSignature : WebpHeader, isPng);
    if (!chunks.isEmpty() && random.bounded(4) == 0)
        rearrange(chunks, random);
    if (isPng && random.bounded(2) == 0)
        mutatePixels(chunks, random);
    QByteArray framed;
    for (const Chunk &chunk : chunks) {
        framed += isPng ? fixture::pngChunk(chunk.type.constData(), chunk.data)
                        : fixture::webpChunk(chunk.type.constData(), chunk.data);
    }
    return isPng ? bytes.left(PngSignature) + framed : fixture::webp(framed);
}

} // namespace

size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t maxSize, unsigned int seed)
{
    QRandomGenerator random(seed);
    size = LLVMFuzzerMutate(data, size, maxSize);
    if (random.bounded(2) == 0)
        return size;
    const QByteArray bytes = mended(QByteArray(reinterpret_cast<const char *>(data), int(size)), random);
    const size_t length = qMin(size_t(bytes.size()), maxSize);
    std::memcpy(data, bytes.constData(), length);
    return length;
}
