// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RESOURCEVALUES_H
#define RESOURCEVALUES_H

#include <QtGlobal>

#include <vector>

/// One stored value of a resource: the value that it has in one configuration.
class ResourceEntry
{
public:
    /// Number of configurations that a value can be told to have one of.
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
    /// ResourceTypes::ValueType, sign-extended from 8 bits.
    int dataType() const { return qint8(m_configAndType & 0xff); }
    /// The data word.
    int data() const { return m_data; }

private:
    int m_entryIndex = 0;
    int m_data = 0;
    int m_configAndType = 0;
};

/**
 * The simple values of a package: for each resource those of its configurations, in the order of the file. A value takes
 * 12 bytes, where the file has 20 for it. Values are appended, then sorted, then looked up. A value type: copies
 * are independent. The const operations only read.
 */
class ResourceValues
{
public:
    /// Type ids are signed bytes. What is given for one below 1 is dropped, as no lookup finds it.
    static constexpr int LargestTypeId = 0x7f;

    /// Consecutive values in the storage.
    struct Range {
        const ResourceEntry *first;
        const ResourceEntry *last;
        const ResourceEntry *begin() const { return first; }
        const ResourceEntry *end() const { return last; }
    };

    ResourceValues() : m_types(LargestTypeId + 1) {}

    /// Makes room for @p count values of a type, which come next. Those of a type that mostly come together are sorted
    /// when another type's begin, so that what they took on the way serves those.
    void reserve(int typeId, int count);
    void append(int typeId, const ResourceEntry &value)
    {
        ++m_count;
        if (typeId > 0)
            m_types[size_t(typeId)].append(value);
    }
    /// Number of values that were appended.
    int count() const { return m_count; }

    /// Brings the values in the order in which they are looked up; each type takes time in proportion to its values.
    void sort();

    /// Whether a resource has more than @p count values. Precondition: they are sorted.
    bool hasResourceOfMoreThan(int count) const;
    /// The values of the resource with the index @p entry of a type, in the order of the file. Precondition: sorted.
    Range values(int typeId, int entry) const;

private:
    using Block = std::vector<ResourceEntry>;

    class Values
    {
    public:
        void append(const ResourceEntry &value)
        {
            if (m_blocks.empty())
                m_blocks.emplace_back();
            Block &block = m_blocks.back();
            m_isSorted = m_isSorted && value.entryIndex() >= m_largest;
            m_isSortedByBlock = m_isSortedByBlock && (block.empty() || value.entryIndex() >= block.back().entryIndex());
            m_smallest = qMin(m_smallest, value.entryIndex());
            m_largest = qMax(m_largest, value.entryIndex());
            block.push_back(value);
            ++m_appended;
        }
        void reserve(size_t count);
        void sort();
        void sortWhenMostAreNew();

        const Block &sorted() const { return m_sorted; }

    private:
        Block sortedByCounting(size_t count) const;
        template <typename Visit>
        void visitInTiles(size_t count, const Visit &visit) const;

        Block m_sorted;              ///< the values of an earlier sort()
        std::vector<Block> m_blocks; ///< those that were appended since
        size_t m_appended = 0;       ///< number of those
        bool m_isSorted = true;      ///< all of them together
        bool m_isSortedByBlock = true;
        int m_smallest = 0; ///< of the entry indices, and 0
        int m_largest = 0;
    };

    std::vector<Values> m_types; ///< by type id
    int m_lastType = 0;          ///< of which values were appended
    int m_count = 0;
};

#endif
