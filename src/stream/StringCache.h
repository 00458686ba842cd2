// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef STRINGCACHE_H
#define STRINGCACHE_H

#include <QHash>
#include <QString>

class StringPool;

/**
 * The strings of a pool, each decoded once and then shared. For the time of one operation: the cache grows with every
 * string that is asked for.
 */
class StringCache
{
public:
    /// @p pool must outlive the cache. Call clear() when its content changes.
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
