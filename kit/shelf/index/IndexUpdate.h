// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_INDEXUPDATE_H
#define SORRELKIT_INDEXUPDATE_H

#include "shelf/index/IndexFile.h"
#include "shelf/index/IndexReader.h"
#include "shelf/index/IndexWriter.h"
#include "workers/WorkerOrder.h"
#include "workers/WorkerPool.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QStringList>

#include <functional>

namespace SorrelKit {

/**
 * Brings an index up to date: compares folders with it, and writes what worker processes read of the packages that are
 * new or changed. The first transaction has what is known without reading a package: new ones that wait, moved and
 * vanished ones. The facts of packages follow in batches, so a process that ends at any point loses only what it has
 * not written, and the next update reads that.
 *
 * A package that changes while it is read is read again; one that changes twice waits for the next update.
 */
class IndexUpdate
{
public:
    /// The folders and files to bring up to date, and how.
    struct Order {
        QList<QByteArray> folders; ///< absolute paths
        QList<QByteArray> files;   ///< absolute paths of packages besides those below the folders
        WorkerProgram program;     ///< its arguments are made from `content`
        WorkerOrder content;
        bool keepsReports = false; ///< whether the reports of workers are stored, too
        int jobs = 1;
        int stop = -1; ///< a descriptor that is readable when the work shall end; -1 for none
    };
    /// Receives what was committed. Functions may be empty.
    struct Listener {
        std::function<void(const IndexWriter::Changes &)> changed;
        std::function<void(int done, int total)> progress;
    };

    /// Writes to @p file, which is open and lives longer.
    IndexUpdate(IndexFile &file, const Listener &listener) : m_file(file), m_listener(listener) {}

    /// Brings the index up to date. Waits while another process does that. Returns false and sets error() when a part
    /// could not be read or written.
    bool run(const Order &order);
    /// Draws and stores icons for the items @p ids. Returns the items that got one.
    QList<qint64> draw(const QList<qint64> &ids, const ShelfIcon &kind, const Order &order);

    const ShelfError &error() const { return m_error; }
    /// The packages that the last run() found, in the order of the paths.
    const QList<QByteArray> &found() const { return m_found; }
    /// The folders that the last run() entered.
    const QList<QByteArray> &entered() const { return m_entered; }

private:
    bool waitForTurn() const;
    bool isStopped() const;
    void look();
    bool refuseToWrite();
    void writeDifferences();
    QList<QByteArray> unread() const;
    bool read(const QList<QByteArray> &paths, const Order &order, QList<QByteArray> *again);
    bool write(const QList<QByteArray> &paths, const std::vector<WorkerPool::Outcome> &outcomes,
               QList<QByteArray> *again);
    void setError(const ShelfError &error);

    IndexFile &m_file;
    const Listener m_listener;
    Order m_order;
    ShelfError m_error;
    QHash<QByteArray, IndexReader::KnownFile> m_known;
    QHash<QByteArray, FileStatus> m_status; ///< of the files that were found
    QList<QByteArray> m_found;
    QList<QByteArray> m_entered;
    QList<QByteArray> m_unknown; ///< folders that could not be read
    int m_done = 0;
    int m_total = 0;
};

} // namespace SorrelKit

#endif
