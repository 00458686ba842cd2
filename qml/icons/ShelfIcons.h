// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELQML_SHELFICONS_H
#define SORRELQML_SHELFICONS_H

#include "icons/IconResponse.h"

#include <SorrelKit/Shelf.h>

#include <QElapsedTimer>
#include <QObject>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <map>
#include <memory>
#include <vector>

namespace SorrelQml {

/**
 * Icons of indexes, in one thread: stored ones are read and decoded, others are drawn by worker processes, a few at a
 * time, and stored for later. The pictures in an index were written by workers, so no bytes of a stranger are decoded
 * here.
 */
class ShelfIcons : private QThread
{
public:
    ShelfIcons();
    ~ShelfIcons() override;

    /// Begins @p job. May be called in any thread, before end().
    void add(const std::shared_ptr<IconJob> &job);
    /// Ends the thread and the workers. Jobs that are left are finished with an error.
    void end();

private:
    class Worker;

    void run() override;

    std::unique_ptr<Worker> m_worker;
    std::atomic<bool> m_isEnding{false};
};

} // namespace SorrelQml

#endif
