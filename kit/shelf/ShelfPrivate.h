// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SHELFPRIVATE_H
#define SORRELKIT_SHELFPRIVATE_H

#include "shelf/ShelfThread.h"
#include "shelf/ShelfWatcher.h"
#include "shelf/index/IndexFile.h"
#include "shelf/index/IndexReader.h"
#include "shelf/index/IndexUpdate.h"

#include <SorrelKit/Shelf.h>

#include <functional>
#include <memory>

namespace SorrelKit {

/// The state of a Shelf: a connection for queries in its thread, and a thread that writes.
class ShelfPrivate
{
public:
    /// The most kinds of icons of a refresh.
    static constexpr int MaxIcons = 8;

    explicit ShelfPrivate(Shelf *shelf) : q(shelf) {}

    /// Runs @p query with the index, when one is open, and keeps its error.
    template <typename Result>
    Result ask(const std::function<Result(const IndexReader &reader)> &query);
    void setError(const ShelfError &error);
    /// Adds @p job to the thread, which starts with its first job.
    void add(const ShelfThread::Job &job);
    /// Passes @p call to the thread of the shelf; it is dropped when the index is closed meanwhile.
    void post(int opening, const std::function<void()> &call);
    IndexUpdate::Order order() const;
    void startRefresh();
    void endRefresh(const ShelfError &fault, const QList<QByteArray> &entered, const QList<QByteArray> &found);
    void report(const IndexWriter::Changes &changes);

    Shelf *const q;
    IndexFile file;
    ShelfError error;
    std::unique_ptr<ShelfThread> thread;
    std::unique_ptr<ShelfWatcher> watcher;
    QList<ShelfIcon> icons;
    QString program;
    int jobs = 1;
    int opening = 0; ///< the number of the open index
    bool isVerifying = false;
    bool isRefreshing = false;
    bool refreshesAgain = false;
};

} // namespace SorrelKit

#endif
