// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef STRINGCACHE_H
#define STRINGCACHE_H

#include <QHash>
#include <QString>

class StringPool;

/**
 * The strings of a pool, each decoded once while this object lives, so that all who ask for one share its memory;
 * strings at one place of the pool's data are one. For the time of one operation: it grows with what is asked for.
 */
class StringCache
{
public:
    /// @p pool outlives the cache. When its content changes, clear() is called.
    explicit StringCache(const StringPool &pool) : m_pool(pool) {}

    /// As StringPool::get().
    QString get(int index);
    /// As StringPool::valueToString().
    QString valueToString(int type, int data);
    void clear() { m_strings.clear(); }

private:
    const StringPool &m_pool;
    QHash<qint32, QString> m_strings; ///< by offset in the pool's data
};

#endif
