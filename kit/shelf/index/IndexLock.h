// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_INDEXLOCK_H
#define SORRELKIT_INDEXLOCK_H

#include <QByteArray>
#include <QtGlobal>

namespace SorrelKit {

/**
 * The locks of an index, in the file beside it with the ending "-lock": one that all programs share that may write, one for
 * the program that refreshes, and one for the program that opens the index, which may make its tables. The kernel frees them when the process ends in any way. The file is never
 * removed, because another process may be about to lock it. Without that file, as in a folder that cannot be written,
 * every lock is free.
 */
class IndexLock
{
public:
    /// Opens the lock file of the index @p fileName, in the bytes of the system, and makes it when it is missing.
    explicit IndexLock(const QByteArray &fileName);
    ~IndexLock();

    /// Waits until no other program opens the index.
    void beginOpening();
    /// Lets another program open the index.
    void endOpening();
    /// Joins the programs that use the index. Returns whether there was none.
    bool join();
    /// Tries to become the program that refreshes.
    bool tryToRefresh();
    /// Lets another program refresh.
    void endRefresh();

private:
    Q_DISABLE_COPY(IndexLock)

    bool lock(int type, int place, bool waits = false) const;

    int m_file = -1;
};

} // namespace SorrelKit

#endif
