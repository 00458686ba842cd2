// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ResourceValues.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr size_t SmallIndex = 1 << 12;

bool isBefore(const ResourceEntry &left, const ResourceEntry &right)
{
    return left.entryIndex() < right.entryIndex();
}

// Precondition: every index is from 0 to largest.
std::vector<ResourceEntry> sortedByCounting(const std::vector<ResourceEntry> &values, int largest)
{
    std::vector<int> places(size_t(largest) + 2);
    for (const ResourceEntry &value : values)
        ++places[size_t(value.entryIndex()) + 1];
    std::partial_sum(places.begin(), places.end(), places.begin());
    std::vector<ResourceEntry> sorted(values.size());
    for (const ResourceEntry &value : values)
        sorted[size_t(places[size_t(value.entryIndex())]++)] = value;
    return sorted;
}

} // namespace

void ResourceValues::reserve(int typeId, int count)
{
    if (typeId <= 0)
        return;
    std::vector<ResourceEntry> &values = m_types[size_t(typeId)].stored;
    if (size_t(count) > values.capacity() - values.size())
        values.reserve(values.size() + qMax(size_t(count), values.size() / 2));
}

void ResourceValues::sort()
{
    for (Values &values : m_types)
        values.sort();
}

void ResourceValues::Values::sort()
{
    if (!isSorted) {
        // A few values with large indices are not worth a count for every index.
        if (smallest == 0 && size_t(largest) / 4 <= qMax(stored.size(), SmallIndex))
            stored = sortedByCounting(stored, largest);
        else
            std::stable_sort(stored.begin(), stored.end(), isBefore);
    }
    isSorted = true;
    stored.shrink_to_fit();
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
