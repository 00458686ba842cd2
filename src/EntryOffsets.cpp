// SPDX-License-Identifier: LGPL-2.1-or-later
#include "EntryOffsets.h"

#include <algorithm>

namespace {

constexpr qint32 NoEntry = -1;

}

EntryOffsets::EntryOffsets(const QVector<qint32> &offsets)
{
    m_items.reserve(int(offsets.size() - std::count(offsets.cbegin(), offsets.cend(), NoEntry)));
    for (int entry = 0; entry < offsets.size(); ++entry) {
        if (offsets.at(entry) != NoEntry)
            m_items.append({offsets.at(entry), entry});
    }
    const auto byOffset = [](const Item &left, const Item &right) { return left.offset < right.offset; };
    if (!std::is_sorted(m_items.cbegin(), m_items.cend(), byOffset))
        std::stable_sort(m_items.begin(), m_items.end(), byOffset);
}

int EntryOffsets::entryAt(qint64 offset)
{
    const bool expected = m_next < m_items.size() && m_items.at(m_next).offset == offset;
    if (!expected) {
        const auto found = std::lower_bound(m_items.cbegin(), m_items.cend(), offset,
                                            [](const Item &item, qint64 wanted) { return item.offset < wanted; });
        m_next = int(found - m_items.cbegin());
    }
    int entry = -1;
    for (; m_next < m_items.size() && m_items.at(m_next).offset == offset; ++m_next)
        entry = m_items.at(m_next).entry;
    return entry;
}
