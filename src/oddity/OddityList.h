// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ODDITYLIST_H
#define ODDITYLIST_H

#include "oddity/Oddity.h"

#include <QString>

#include <vector>

/**
 * The oddities that a reader met: each code once, in the order of the first time, with the detail of the first time and
 * the number of times. Memory is bounded by the number of codes. A list without oddities owns no memory.
 */
class OddityList
{
public:
    struct Item {
        Oddity oddity = Oddity::Count;
        QString detail; ///< of the first time: a name, or a number ("12"); may be empty
        qint64 count = 0;
    };

    void add(Oddity oddity) { ++at(oddity).count; }
    /// @p detail may be long; who shows it shortens it.
    void add(Oddity oddity, const QString &detail)
    {
        Item &item = at(oddity);
        if (item.count++ == 0)
            item.detail = detail;
    }
    /// The text of @p number is made the first time alone.
    void add(Oddity oddity, qint64 number)
    {
        Item &item = at(oddity);
        if (item.count++ == 0)
            item.detail = QString::number(number);
    }

    /// The same for @p times times at once.
    void add(Oddity oddity, const QString &detail, qint64 times)
    {
        add(oddity, detail);
        at(oddity).count += times - 1;
    }

    bool isEmpty() const { return m_items.empty(); }
    bool contains(Oddity oddity) const { return find(oddity) != nullptr; }
    /// The item of @p oddity; null when there is none.
    const Item *find(Oddity oddity) const
    {
        for (const Item &item : m_items) {
            if (item.oddity == oddity)
                return &item;
        }
        return nullptr;
    }
    const std::vector<Item> &items() const { return m_items; }

private:
    Item &at(Oddity oddity)
    {
        for (Item &item : m_items) {
            if (item.oddity == oddity)
                return item;
        }
        m_items.emplace_back();
        m_items.back().oddity = oddity;
        return m_items.back();
    }

    std::vector<Item> m_items;
};

#endif
