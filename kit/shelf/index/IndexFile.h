// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_INDEXFILE_H
#define SORRELKIT_INDEXFILE_H

#include "shelf/index/IndexDatabase.h"
#include "shelf/index/IndexLock.h"

#include <memory>

namespace SorrelKit {

/**
 * Opens an index: chooses the file, makes or migrates its tables, and checks it after a crash. A file that cannot be
 * used is left as it is; the first usable one of NAME.2 to NAME.9 takes its place, and is made when it is missing.
 *
 * Sanity of rows is SQLite's: what an index has in its tables was written by this library.
 */
class IndexFile
{
public:
    /// The last number behind the name of a file that takes the place of another one.
    static constexpr int LastNumber = 9;

    /// Opens @p fileName, or the file in its place. With @p isReadOnly nothing is made, and no other file is used.
    /// Returns whether an index is open. error() may be set even then.
    bool open(const QString &fileName, bool isReadOnly);
    void close();

    /// Makes the next open() check the file, because a query met damage.
    void markDamaged();

    IndexDatabase &database() { return m_database; }
    /// The locks of the open file; null when it cannot be written.
    IndexLock *lock() const { return m_lock.get(); }
    const ShelfError &error() const { return m_error; }

private:
    ShelfError openOne(const QString &fileName);
    ShelfError openToRead(const QString &fileName);
    ShelfError check(const QString &fileName, bool mayPrepare);
    ShelfError connectionSettings();

    IndexDatabase m_database;
    std::unique_ptr<IndexLock> m_lock;
    ShelfError m_error;
};

} // namespace SorrelKit

#endif
