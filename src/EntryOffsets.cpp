// SPDX-License-Identifier: LGPL-2.1-or-later
#include "EntryOffsets.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr qint32 NoEntry = -1;
constexpr int GroupSize = 8;
constexpr int FirstCapacity = 256;

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

EntryOffsets::EntryOffsets(const QVector<qint32> &offsets)
{
    m_items.reserve(size_t(qMin(offsets.size(), FirstCapacity)));
    int entry = 0;
    for (; offsets.size() - entry >= GroupSize; entry += GroupSize) {
        if (!isWithoutEntries(offsets.constData() + entry))
            appendEntries(offsets.constData(), entry, GroupSize);
    }
    appendEntries(offsets.constData(), entry, offsets.size() - entry);
    const auto byOffset = [](const Item &left, const Item &right) { return left.offset < right.offset; };
    if (!std::is_sorted(m_items.cbegin(), m_items.cend(), byOffset))
        std::stable_sort(m_items.begin(), m_items.end(), byOffset);
}

// Every offset is written, and the next one over it when there is no entry: which of them have one is nothing that a
// processor could guess.
void EntryOffsets::appendEntries(const qint32 *offsets, int first, int count)
{
    const size_t old = m_items.size();
    m_items.resize(old + size_t(count));
    Item *item = m_items.data() + old;
    for (int entry = first; entry < first + count; ++entry) {
        *item = {offsets[entry], entry};
        item += offsets[entry] != NoEntry ? 1 : 0;
    }
    m_items.resize(size_t(item - m_items.data()));
}

int EntryOffsets::search(qint64 offset)
{
    const bool expected = m_next < m_items.size() && m_items[m_next].offset == offset;
    if (!expected) {
        const auto found = std::lower_bound(m_items.cbegin(), m_items.cend(), offset,
                                            [](const Item &item, qint64 wanted) { return item.offset < wanted; });
        m_next = size_t(found - m_items.cbegin());
    }
    int entry = -1;
    for (; m_next < m_items.size() && m_items[m_next].offset == offset; ++m_next)
        entry = m_items[m_next].entry;
    return entry;
}
