// SPDX-License-Identifier: LGPL-2.1-or-later
#include "table/ResourceValues.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

constexpr size_t SmallIndex = 1 << 12;
constexpr size_t LeastBlock = 64;
constexpr qint64 ValuesOfATile = 4096; ///< on average, which fit the fastest cache
constexpr qint64 LeastTile = 16;       ///< resources

bool isBefore(const ResourceEntry &left, const ResourceEntry &right)
{
    return left.entryIndex() < right.entryIndex();
}

} // namespace

void ResourceValues::reserve(int typeId, int count)
{
    if (typeId <= 0)
        return;
    if (typeId != m_lastType)
        m_types[size_t(m_lastType)].sortWhenMostAreNew();
    m_lastType = typeId;
    m_types[size_t(typeId)].reserve(size_t(count));
}

void ResourceValues::sort()
{
    for (Values &values : m_types)
        values.sort();
}

// A block has a place that does not move when more values come, so that none is copied.
void ResourceValues::Values::reserve(size_t count)
{
    if (!m_blocks.empty() && count <= m_blocks.back().capacity() - m_blocks.back().size())
        return;
    m_blocks.emplace_back();
    m_blocks.back().reserve(qMax(count, LeastBlock));
}

// However types alternate, a value is sorted as often as their number doubles.
void ResourceValues::Values::sortWhenMostAreNew()
{
    if (m_appended >= m_sorted.size())
        sort();
}

void ResourceValues::Values::sort()
{
    if (m_appended == 0)
        return;
    const size_t count = m_sorted.size() + m_appended;
    if (!m_sorted.empty())
        m_blocks.insert(m_blocks.begin(), std::move(m_sorted));
    // A few values with large indices are not worth a count for every index.
    if (!m_isSorted && m_smallest == 0 && size_t(m_largest) / 4 <= qMax(count, SmallIndex)) {
        m_sorted = sortedByCounting(count);
    } else if (m_isSorted && m_blocks.size() == 1) {
        m_sorted = std::move(m_blocks.front());
        m_sorted.shrink_to_fit();
    } else {
        m_sorted = Block();
        m_sorted.reserve(count);
        for (const Block &block : m_blocks)
            m_sorted.insert(m_sorted.end(), block.cbegin(), block.cend());
        if (!m_isSorted)
            std::stable_sort(m_sorted.begin(), m_sorted.end(), isBefore);
    }
    m_blocks = {};
    m_appended = 0;
    m_isSorted = true;
    m_isSortedByBlock = true;
}

// Precondition: no index is negative.
ResourceValues::Block ResourceValues::Values::sortedByCounting(size_t count) const
{
    std::vector<int> places(size_t(m_largest) + 2);
    for (const Block &block : m_blocks) {
        for (const ResourceEntry &value : block)
            ++places[size_t(value.entryIndex()) + 1];
    }
    std::partial_sum(places.begin(), places.end(), places.begin());
    Block sorted(count);
    visitInTiles(count, [&places, &sorted](const ResourceEntry &value) {
        sorted[size_t(places[size_t(value.entryIndex())]++)] = value;
    });
    return sorted;
}

// Visits the values of each resource in their order. Of blocks that are sorted, the values of some resources come
// before those of the next ones, so that what is written for them is in the processor's cache.
template <typename Visit>
void ResourceValues::Values::visitInTiles(size_t count, const Visit &visit) const
{
    const qint64 tileSize = qMax(LeastTile, (qint64(m_largest) + 1) * ValuesOfATile / qint64(count));
    const size_t tiles = size_t(m_largest / tileSize) + 1;
    if (!m_isSortedByBlock || tiles * m_blocks.size() > count) {
        for (const Block &block : m_blocks)
            std::for_each(block.cbegin(), block.cend(), visit);
        return;
    }
    std::vector<Block::const_iterator> next;
    for (const Block &block : m_blocks)
        next.push_back(block.cbegin());
    for (qint64 end = tileSize; end - tileSize <= m_largest; end += tileSize) {
        for (size_t i = 0; i < m_blocks.size(); ++i) {
            for (; next[i] != m_blocks[i].cend() && next[i]->entryIndex() < end; ++next[i])
                visit(*next[i]);
        }
    }
}

bool ResourceValues::hasResourceOfMoreThan(int count) const
{
    for (const Values &values : m_types) {
        const Block &stored = values.sorted();
        for (size_t first = 0, last = size_t(count); last < stored.size(); ++first, ++last) {
            if (!isBefore(stored[first], stored[last]))
                return true;
        }
    }
    return false;
}

ResourceValues::Range ResourceValues::values(int typeId, int entry) const
{
    if (typeId <= 0 || typeId > LargestTypeId)
        return {nullptr, nullptr};
    const Block &stored = m_types[size_t(typeId)].sorted();
    const ResourceEntry wanted(entry, 0, 0, 0);
    const auto [first, last] = std::equal_range(stored.data(), stored.data() + stored.size(), wanted, isBefore);
    return {first, last};
}
