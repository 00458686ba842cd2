// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SHELFWATCHER_H
#define SORRELKIT_SHELFWATCHER_H

#include <QByteArray>
#include <QFileSystemWatcher>
#include <QList>
#include <QTimer>

#include <functional>

namespace SorrelKit {

/// Watches folders for other names, and packages for other content. Many changes at once are one.
class ShelfWatcher
{
public:
    /// The most paths that are watched, folders first. Others are not noticed.
    static constexpr int MaxPaths = 8192;

    /// Calls @p changed in this thread after a change.
    explicit ShelfWatcher(const std::function<void()> &changed);

    /// Watches these paths and no others. Returns whether one of them is new, so it may have changed before.
    bool watch(const QList<QByteArray> &folders, const QList<QByteArray> &files);
    /// The number of paths that are watched.
    int count() const { return int(m_watcher.directories().size() + m_watcher.files().size()); }

private:
    Q_DISABLE_COPY(ShelfWatcher)

    QFileSystemWatcher m_watcher;
    QTimer m_delay;
};

} // namespace SorrelKit

#endif
