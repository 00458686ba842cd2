// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SHELFTHREAD_H
#define SORRELKIT_SHELFTHREAD_H

#include "shelf/index/IndexFile.h"

#include <QMutex>
#include <QString>
#include <QThread>
#include <QWaitCondition>

#include <deque>
#include <functional>

namespace SorrelKit {

/// The thread that writes the index of a Shelf: it does one job after another, with a connection of its own. The
/// destructor ends the job at work, drops the others, and waits for the thread.
class ShelfThread : private QThread
{
public:
    /// A job gets the index, which may have failed to open, and a descriptor that is readable when it shall end.
    using Job = std::function<void(IndexFile &file, int stop)>;

    /// Starts the thread for the index @p fileName.
    explicit ShelfThread(const QString &fileName);
    ~ShelfThread() override;

    void add(const Job &job);

private:
    void run() override;

    const QString m_fileName;
    int m_stop[2] = {-1, -1}; ///< the ends of a pipe
    QMutex m_mutex;
    QWaitCondition m_hasJob;
    std::deque<Job> m_jobs;
    bool m_isEnding = false;
};

} // namespace SorrelKit

#endif
