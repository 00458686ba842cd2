// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_KEYGROUPS_H
#define SORRELKIT_KEYGROUPS_H

#include <QtGlobal>

#include <cstddef>
#include <vector>

namespace SorrelKit {

/**
 * Groups numbers by keys, in the order of adding. A hash table in two vectors, because a node of QHash for each of a
 * hundred languages costs more than everything else that is done with the language.
 *
 * The key has a qHash() and can be compared. Numbers are added from 0 on, each once.
 */
template <typename Key>
class KeyGroups
{
public:
    static constexpr int None = -1;
    /// The numbers that the first addition makes room for; a power of two, as after each doubling.
    static constexpr std::size_t FirstSize = 32;

    /// Numbers with one key.
    struct Group {
        Key key;
        int first = None;
        int last = None;
        int count = 0;
        int nextInBucket = None;
    };

    /// Adds the next number to the group of @p key.
    void add(const Key &key)
    {
        const int number = int(m_next.size());
        m_next.push_back(None);
        Group &group = groupOf(key);
        if (group.first == None)
            group.first = number;
        else
            m_next[std::size_t(group.last)] = number;
        group.last = number;
        ++group.count;
    }
    /// The number after @p number in its group; None after the last.
    int next(int number) const { return m_next[std::size_t(number)]; }
    /// The first number with @p key; None without one.
    int first(const Key &key) const
    {
        const Group *const group = find(key);
        return group != nullptr ? group->first : None;
    }
    /// Count of the numbers with @p key.
    int count(const Key &key) const
    {
        const Group *const group = find(key);
        return group != nullptr ? group->count : 0;
    }

private:
    std::size_t bucketOf(const Key &key) const
    {
        // The lowest bits of a hash may be few for short texts.
        const quint64 hash = quint64(quint32(qHash(key))) * 0x9e3779b1U;
        return std::size_t(hash >> 12 ^ hash) & (m_buckets.size() - 1);
    }
    const Group *find(const Key &key) const
    {
        if (m_buckets.empty())
            return nullptr;
        int number = m_buckets[bucketOf(key)];
        while (number != None && !(m_groups[std::size_t(number)].key == key))
            number = m_groups[std::size_t(number)].nextInBucket;
        return number != None ? &m_groups[std::size_t(number)] : nullptr;
    }
    Group &groupOf(const Key &key)
    {
        const Group *const known = find(key);
        if (known != nullptr)
            return m_groups[std::size_t(known - m_groups.data())];
        if (m_groups.size() >= m_buckets.size())
            grow();
        Group group;
        group.key = key;
        m_groups.push_back(group);
        link(int(m_groups.size()) - 1);
        return m_groups.back();
    }
    void link(int number)
    {
        Group &group = m_groups[std::size_t(number)];
        int &bucket = m_buckets[bucketOf(group.key)];
        group.nextInBucket = bucket;
        bucket = number;
    }
    void grow()
    {
        m_buckets.assign(m_buckets.empty() ? FirstSize : 2 * m_buckets.size(), None);
        m_groups.reserve(m_buckets.size());
        m_next.reserve(m_buckets.size());
        for (int number = 0; number < int(m_groups.size()); ++number)
            link(number);
    }

    std::vector<Group> m_groups;
    std::vector<int> m_buckets; ///< the number of the last group of each; a power of two
    std::vector<int> m_next;    ///< by number
};

} // namespace SorrelKit

#endif
