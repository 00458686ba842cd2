// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"

#include <QByteArray>
#include <QRandomGenerator>
#include <QVector>

#include <cstring>

/*
 * Mutations that know ZIP archives. A changed byte count moves the directory and its end record away from where the
 * archive says they are, and a reader stops there. Half of the mutations therefore change a field of a header, the
 * directory or the end record, double or drop a record, or correct the offsets again.
 */

extern "C" size_t LLVMFuzzerMutate(uint8_t *data, size_t size, size_t maxSize);
extern "C" size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t maxSize, unsigned int seed);

using namespace fixture;

namespace {

constexpr int LocalSize = 30;
constexpr int RecordSize = 46;
constexpr int EndSize = 22;

struct Field {
    int at;
    int width;
};

// The fields that lead somewhere: flags, methods, sizes, offsets and lengths.
constexpr Field localFields[] = {{6, 2}, {8, 2}, {14, 4}, {18, 4}, {22, 4}, {26, 2}, {28, 2}};
constexpr Field recordFields[] = {{8, 2}, {10, 2}, {16, 4}, {20, 4}, {24, 4}, {28, 2}, {30, 2}, {32, 2}, {42, 4}};
constexpr Field endFields[] = {{4, 2}, {6, 2}, {8, 2}, {10, 2}, {12, 4}, {16, 4}, {20, 2}};

QVector<int> placesOf(const QByteArray &bytes, const char *signature, int size)
{
    QVector<int> places;
    for (int at = int(bytes.indexOf(signature)); at >= 0 && at + size <= bytes.size();
         at = int(bytes.indexOf(signature, at + 1)))
        places.append(at);
    return places;
}

// A value that may matter: near the old one, a limit, or an offset in the file.
qint64 valueFor(const QByteArray &bytes, int at, int width, QRandomGenerator &random)
{
    const qint64 old = width == 2 ? peek16(bytes, at) : peek32(bytes, at);
    switch (random.bounded(5)) {
    case 0:
        return old + random.bounded(7) - 3;
    case 1:
        return random.bounded(2) == 0 ? 0 : -1;
    case 2:
        return qint64(1) << random.bounded(8 * width);
    case 3:
        return random.bounded(int(bytes.size()) + 2);
    default:
        return random.generate();
    }
}

template <int count>
void changeField(QByteArray &bytes, const QVector<int> &places, const Field (&fields)[count], QRandomGenerator &random)
{
    if (places.isEmpty())
        return;
    const Field field = fields[random.bounded(count)];
    const int at = places.at(random.bounded(int(places.size()))) + field.at;
    const qint64 value = valueFor(bytes, at, field.width, random);
    if (field.width == 2)
        poke16(bytes, at, value & 0xffff);
    else
        poke32(bytes, at, value & 0xffffffff);
}

// Doubles a record of the directory, drops it, or puts it in the place of another one.
void rearrange(QByteArray &bytes, const QVector<int> &records, QRandomGenerator &random)
{
    if (records.isEmpty())
        return;
    const int at = records.at(random.bounded(int(records.size())));
    const int size = RecordSize + peek16(bytes, at + 28) + peek16(bytes, at + 30) + peek16(bytes, at + 32);
    const QByteArray record = bytes.mid(at, size);
    const int other = records.at(random.bounded(int(records.size())));
    switch (random.bounded(3)) {
    case 0:
        bytes.insert(other, record);
        break;
    case 1:
        bytes.remove(at, size);
        break;
    default:
        bytes.replace(other, int(record.size()), record);
    }
}

// Makes the end record say where the directory is and how many records it has.
void correctEnd(QByteArray &bytes)
{
    const QVector<int> records = placesOf(bytes, "PK\1\2", RecordSize);
    const QVector<int> ends = placesOf(bytes, "PK\5\6", EndSize);
    if (records.isEmpty() || ends.isEmpty() || ends.last() < records.first())
        return;
    const int end = ends.last();
    poke16(bytes, end + 8, records.size());
    poke16(bytes, end + 10, records.size());
    poke32(bytes, end + 12, end - records.first());
    poke32(bytes, end + 16, records.first());
}

// Lets each record lead to one of the members' headers.
void correctOffsets(QByteArray &bytes, QRandomGenerator &random)
{
    const QVector<int> headers = placesOf(bytes, "PK\3\4", LocalSize);
    if (headers.isEmpty())
        return;
    for (const int record : placesOf(bytes, "PK\1\2", RecordSize))
        poke32(bytes, record + 42, headers.at(random.bounded(int(headers.size()))));
}

} // namespace

size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t maxSize, unsigned int seed)
{
    QRandomGenerator random(seed);
    if (random.bounded(2) == 0)
        return LLVMFuzzerMutate(data, size, maxSize);

    QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    switch (random.bounded(6)) {
    case 0:
        changeField(bytes, placesOf(bytes, "PK\3\4", LocalSize), localFields, random);
        break;
    case 1:
        changeField(bytes, placesOf(bytes, "PK\1\2", RecordSize), recordFields, random);
        break;
    case 2:
        changeField(bytes, placesOf(bytes, "PK\5\6", EndSize), endFields, random);
        break;
    case 3:
        rearrange(bytes, placesOf(bytes, "PK\1\2", RecordSize), random);
        correctEnd(bytes);
        break;
    case 4:
        correctOffsets(bytes, random);
        break;
    default:
        correctEnd(bytes);
    }
    const size_t length = qMin(size_t(bytes.size()), maxSize);
    std::memcpy(data, bytes.constData(), length);
    return length;
}
