// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGEVALUES_H
#define PACKAGEVALUES_H

#include <QtGlobal>

#include <vector>

/// The value of a resource in one configuration.
class ResourceEntry
{
public:
    /// Configurations of a package at most: an index has 24 bits, one of them for the sign.
    static constexpr int MaxConfigs = 1 << 23;

    ResourceEntry() = default;
    /// @p configIndex is below MaxConfigs.
    ResourceEntry(int entryIndex, int configIndex, int dataType, int data)
        : m_entryIndex(entryIndex), m_data(data), m_configAndType(configIndex * 0x100 | (dataType & 0xff))
    {
    }

    /// Index of the resource in its type.
    int entryIndex() const { return m_entryIndex; }
    /// Index of the configuration among the package's distinct ones.
    int configIndex() const { return m_configAndType >> 8; }
    /// One of ValueType, sign-extended from 8 bits.
    int dataType() const { return qint8(m_configAndType & 0xff); }
    /// The data word.
    int data() const { return m_data; }

private:
    int m_entryIndex = 0;
    int m_data = 0;
    int m_configAndType = 0;
};

/**
 * The simple values of a package: for each resource the values of its configurations, in the order of the file. A value
 * takes 12 bytes here and 20 in the file. Values are appended, then sorted, then looked up. A value type: copies are
 * independent. The const operations only read.
 */
class PackageValues
{
public:
    /// Type ids are signed bytes. Values of a type below 1 are counted and dropped, because no lookup finds them.
    static constexpr int LargestTypeId = 0x7f;

    /// Consecutive values in the storage.
    struct Range {
        const ResourceEntry *first;
        const ResourceEntry *last;
        const ResourceEntry *begin() const { return first; }
        const ResourceEntry *end() const { return last; }
    };

    PackageValues() : m_types(LargestTypeId + 1) {}

    /// Makes room for @p count more values of a type.
    void reserve(int typeId, int count);
    void append(int typeId, const ResourceEntry &value)
    {
        ++m_count;
        if (typeId > 0)
            m_types[size_t(typeId)].push_back(value);
    }
    /// Number of values that were appended.
    int count() const { return m_count; }

    /// Brings the values into the order of the lookups; each type takes time in proportion to its values.
    void sort();

    /// Whether a resource has more than @p count values. Precondition: the values are sorted.
    bool hasResourceOfMoreThan(int count) const;
    /// The values of the resource with the index @p entry of a type, in the order of the file. Precondition: sorted.
    Range values(int typeId, int entry) const;

private:
    using Values = std::vector<ResourceEntry>;

    std::vector<Values> m_types; ///< by type id
    int m_count = 0;
};

#endif
