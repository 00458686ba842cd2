// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ResourceValues.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr size_t SmallIndex = 1 << 12;
constexpr size_t LeastBlock = 64;

bool isBefore(const ResourceEntry &left, const ResourceEntry &right)
{
    return left.entryIndex() < right.entryIndex();
}

} // namespace

void ResourceValues::reserve(int typeId, int count)
{
    if (typeId > 0)
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
    if (!blocks.empty() && count <= blocks.back().capacity() - blocks.back().size())
        return;
    blocks.emplace_back();
    blocks.back().reserve(qMax(count, LeastBlock));
}

void ResourceValues::Values::sort()
{
    size_t count = 0;
    for (const std::vector<ResourceEntry> &block : blocks)
        count += block.size();
    // A few values with large indices are not worth a count for every index.
    if (!isSorted && smallest == 0 && size_t(largest) / 4 <= qMax(count, SmallIndex)) {
        stored = sortedByCounting(count);
    } else {
        stored.reserve(count);
        for (const std::vector<ResourceEntry> &block : blocks)
            stored.insert(stored.end(), block.cbegin(), block.cend());
        if (!isSorted)
            std::stable_sort(stored.begin(), stored.end(), isBefore);
    }
    blocks = {};
}

// Precondition: no index is negative.
std::vector<ResourceEntry> ResourceValues::Values::sortedByCounting(size_t count) const
{
    std::vector<int> places(size_t(largest) + 2);
    for (const std::vector<ResourceEntry> &block : blocks) {
        for (const ResourceEntry &value : block)
            ++places[size_t(value.entryIndex()) + 1];
    }
    std::partial_sum(places.begin(), places.end(), places.begin());
    std::vector<ResourceEntry> sorted(count);
    for (const std::vector<ResourceEntry> &block : blocks) {
        for (const ResourceEntry &value : block)
            sorted[size_t(places[size_t(value.entryIndex())]++)] = value;
    }
    return sorted;
}

bool ResourceValues::hasResourceOfMoreThan(int count) const
{
    for (const Values &values : m_types) {
        const std::vector<ResourceEntry> &stored = values.stored;
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
    const std::vector<ResourceEntry> &stored = m_types[size_t(typeId)].stored;
    const ResourceEntry wanted(entry, 0, 0, 0);
    const auto [first, last] = std::equal_range(stored.data(), stored.data() + stored.size(), wanted, isBefore);
    return {first, last};
}
