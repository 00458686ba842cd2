// SPDX-License-Identifier: LGPL-2.1-or-later
#include "table/PackageValues.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr size_t SmallIndex = 1 << 12;

bool isBefore(const ResourceEntry &left, const ResourceEntry &right)
{
    return left.entryIndex() < right.entryIndex();
}

// Precondition: no index is negative.
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

void PackageValues::reserve(int typeId, int count)
{
    if (typeId <= 0)
        return;
    Values &values = m_types[size_t(typeId)];
    const size_t needed = values.size() + size_t(count);
    if (needed > values.capacity())
        values.reserve(qMax(needed, 2 * values.capacity()));
}

void PackageValues::sort()
{
    for (Values &values : m_types) {
        if (std::is_sorted(values.cbegin(), values.cend(), isBefore)) {
            values.shrink_to_fit();
            continue;
        }
        // As unsigned, negative indices are the largest.
        quint32 largest = 0;
        for (const ResourceEntry &value : values)
            largest = qMax(largest, quint32(value.entryIndex()));
        // A few values with large indices are not worth a count for every index.
        if (largest / 4 <= qMax(values.size(), SmallIndex))
            values = sortedByCounting(values, int(largest));
        else
            std::stable_sort(values.begin(), values.end(), isBefore);
    }
}

bool PackageValues::hasResourceOfMoreThan(int count) const
{
    for (const Values &stored : m_types) {
        for (size_t first = 0, last = size_t(count); last < stored.size(); ++first, ++last) {
            if (!isBefore(stored[first], stored[last]))
                return true;
        }
    }
    return false;
}

PackageValues::Range PackageValues::values(int typeId, int entry) const
{
    if (typeId <= 0 || typeId > LargestTypeId)
        return {nullptr, nullptr};
    const Values &stored = m_types[size_t(typeId)];
    const ResourceEntry wanted(entry, 0, 0, 0);
    const auto [first, last] = std::equal_range(stored.data(), stored.data() + stored.size(), wanted, isBefore);
    return {first, last};
}
