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
    std::vector<size_t> places(size_t(largest) + 2);
    for (const ResourceEntry &value : values)
        ++places[size_t(value.entryIndex()) + 1];
    std::partial_sum(places.begin(), places.end(), places.begin());
    std::vector<ResourceEntry> sorted(values.size());
    for (const ResourceEntry &value : values)
        sorted[places[size_t(value.entryIndex())]++] = value;
    return sorted;
}

} // namespace

void ResourceValues::reserve(int typeId, int count)
{
    if (typeId <= 0)
        return;
    Values &values = m_types[size_t(typeId)];
    if (size_t(count) > values.capacity() - values.size())
        values.reserve(values.size() + qMax(size_t(count), values.size() / 2));
}

void ResourceValues::sort()
{
    for (Values &values : m_types) {
        if (!std::is_sorted(values.cbegin(), values.cend(), isBefore)) {
            const auto [smallest, largest] = std::minmax_element(values.cbegin(), values.cend(), isBefore);
            // A few values with large indices are not worth a count for every index.
            if (smallest->entryIndex() >= 0 && size_t(largest->entryIndex()) / 4 <= qMax(values.size(), SmallIndex))
                values = sortedByCounting(values, largest->entryIndex());
            else
                std::stable_sort(values.begin(), values.end(), isBefore);
        }
        values.shrink_to_fit();
    }
}

bool ResourceValues::hasResourceOfMoreThan(int count) const
{
    for (const Values &values : m_types) {
        for (size_t first = 0, last = size_t(count); last < values.size(); ++first, ++last) {
            if (!isBefore(values[first], values[last]))
                return true;
        }
    }
    return false;
}

ResourceValues::Range ResourceValues::values(int typeId, int entry) const
{
    if (typeId <= 0 || typeId > LargestTypeId)
        return {nullptr, nullptr};
    const Values &values = m_types[size_t(typeId)];
    const ResourceEntry wanted(entry, 0, 0, 0);
    const auto [first, last] = std::equal_range(values.data(), values.data() + values.size(), wanted, isBefore);
    return {first, last};
}
