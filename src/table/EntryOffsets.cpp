// SPDX-License-Identifier: LGPL-2.1-or-later
#include "table/EntryOffsets.h"

#include "format/TypeChunk.h"
#include "stream/Extractor.h"

#include <algorithm>

namespace {

constexpr auto NoEntry = qint32(TypeChunk::NoDenseOffset);
constexpr int GroupSize = 8;
constexpr int PieceSize = 2048; ///< a multiple of GroupSize

// All bits are set in the offset of no entry.
bool isWithoutEntries(const qint32 *group)
{
    qint32 bits = NoEntry;
    for (int i = 0; i < GroupSize; ++i)
        bits &= group[i];
    return bits == NoEntry;
}

} // namespace

EntryOffsets::EntryOffsets(Extractor *reader, int count)
{
    qint32 piece[PieceSize];
    int size = PieceSize;
    for (int first = 0; first < count && size == PieceSize; first += size) {
        size = reader->get32s(piece, qMin(count - first, PieceSize));
        for (int at = 0; at < size; at += GroupSize) {
            // Most offsets of a large table are none.
            if (size - at >= GroupSize && isWithoutEntries(piece + at))
                continue;
            for (int i = at; i < qMin(size, at + GroupSize); ++i) {
                if (piece[i] != NoEntry)
                    m_items.append({piece[i], first + i});
            }
        }
    }
    const auto byOffset = [](const EntryOffset &left, const EntryOffset &right) { return left.offset < right.offset; };
    if (!std::is_sorted(m_items.cbegin(), m_items.cend(), byOffset))
        std::stable_sort(m_items.begin(), m_items.end(), byOffset);
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
