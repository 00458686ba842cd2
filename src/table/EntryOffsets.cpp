// SPDX-License-Identifier: LGPL-2.1-or-later
#include "table/EntryOffsets.h"

#include "format/TypeChunk.h"
#include "stream/Extractor.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr auto NoEntry = qint32(TypeChunk::NoDenseOffset);
constexpr int GroupSize = 8;
constexpr int PieceSize = 2048; ///< a multiple of that

bool isWithoutEntries(const qint32 *group)
{
    quint64 bits = ~quint64(0);
    for (int i = 0; i < GroupSize; i += 2) {
        quint64 pair = 0;
        std::memcpy(&pair, group + i, sizeof pair);
        bits &= pair;
    }
    return bits == ~quint64(0);
}

} // namespace

EntryOffsets::EntryOffsets(Extractor *reader, int count)
{
    qint32 piece[PieceSize];
    int size = PieceSize;
    for (int left = count; left > 0 && size == PieceSize; left -= size) {
        size = reader->get32s(piece, qMin(left, PieceSize));
        for (int at = 0; at < size; at += GroupSize)
            appendGroup(piece + at, qMin(size - at, GroupSize));
    }
    m_items.resize(m_count);
    const auto byOffset = [](const EntryOffset &left, const EntryOffset &right) { return left.offset < right.offset; };
    if (!std::is_sorted(m_items.cbegin(), m_items.cend(), byOffset))
        std::stable_sort(m_items.begin(), m_items.end(), byOffset);
}

// Every offset is written, and the next one over it when there is no entry: which of them have one is nothing that a
// processor could guess.
void EntryOffsets::appendGroup(const qint32 *offsets, int count)
{
    const int first = m_read;
    m_read += count;
    if (count == GroupSize && isWithoutEntries(offsets))
        return;
    if (m_items.size() - m_count < GroupSize)
        m_items.resize(qMax(m_items.capacity(), 2 * m_count));
    EntryOffset *item = m_items.data() + m_count;
    for (int i = 0; i < count; ++i) {
        *item = {offsets[i], first + i};
        item += offsets[i] != NoEntry ? 1 : 0;
    }
    m_count = int(item - m_items.data());
}

int EntryOffsets::search(qint64 offset)
{
    const bool expected = m_next < m_items.size() && m_items[m_next].offset == offset;
    if (!expected) {
        const auto found =
            std::lower_bound(m_items.cbegin(), m_items.cend(), offset,
                             [](const EntryOffset &item, qint64 wanted) { return item.offset < wanted; });
        m_next = int(found - m_items.cbegin());
    }
    int entry = -1;
    for (; m_next < m_items.size() && m_items[m_next].offset == offset; ++m_next)
        entry = m_items[m_next].entry;
    return entry;
}
