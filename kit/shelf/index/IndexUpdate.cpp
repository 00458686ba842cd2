// SPDX-License-Identifier: LGPL-2.1-or-later
#include "shelf/index/IndexUpdate.h"

#include "shelf/index/IconKind.h"
#include "shelf/index/PathPrefix.h"
#include "workers/PackageFolder.h"

#include <QFile>
#include <QSet>

#include <algorithm>
#include <poll.h>
#include <unistd.h>

namespace SorrelKit {

namespace {

/// How often a package is read that changes meanwhile.
constexpr int MaxRounds = 2;
/// The time after which a waiting process looks whether it is its turn.
constexpr int TurnMs = 20;

QList<QByteArray> wordsOf(const QByteArray &launcherIcons)
{
    return launcherIcons.isEmpty() ? QList<QByteArray>() : launcherIcons.split(',');
}

bool hasDrawn(const QByteArray &drawn, const QByteArray &word)
{
    return drawn.contains(',' + word + ',');
}

} // namespace

bool IndexUpdate::run(const Order &order)
{
    m_order = order;
    m_order.program.arguments = order.content.arguments();
    m_error = ShelfError();
    m_status.clear();
    m_found.clear();
    m_entered.clear();
    m_unknown.clear();
    IndexDatabase &database = m_file.database();
    database.clearError();
    if (refuseToWrite())
        return false;
    if (!waitForTurn())
        return false;
    look();
    m_known = IndexReader(database).files();
    if (!database.error())
        writeDifferences();
    QList<QByteArray> paths;
    if (!database.error() && !isStopped())
        paths = unread();
    m_done = 0;
    m_total = int(paths.size());
    for (int round = 0; round < MaxRounds && !paths.isEmpty(); ++round) {
        QList<QByteArray> again;
        if (!read(paths, m_order, &again))
            break;
        paths = again;
        m_total += int(again.size());
    }
    setError(database.error());
    database.clearError();
    m_file.lock()->endRefresh();
    return !m_error;
}

bool IndexUpdate::isStopped() const
{
    pollfd stop{m_order.stop, POLLIN, 0};
    return m_order.stop >= 0 && ::poll(&stop, 1, 0) > 0;
}

bool IndexUpdate::waitForTurn() const
{
    while (!m_file.lock()->tryToRefresh()) {
        pollfd stop{m_order.stop, POLLIN, 0};
        if (::poll(&stop, 1, TurnMs) > 0)
            return false;
    }
    return true;
}

// The status of each file is that before it is read.
void IndexUpdate::look()
{
    const auto take = [this](const QByteArray &file) {
        const FileStatus status = FileStatus::of(file);
        if (status.exists() && !m_status.contains(file)) {
            m_status.insert(file, status);
            m_found.append(file);
        }
    };
    for (const QByteArray &folder : qAsConst(m_order.folders)) {
        PackageFolder::walk(folder, take, [this](const QByteArray &below, bool isComplete) {
            m_entered.append(below);
            if (!isComplete) {
                m_unknown.append(below);
                setError(ShelfError(ShelfError::Code::NoFolder,
                                    QStringLiteral("%1 cannot be read").arg(QString::fromUtf8(below))));
            }
            return !isStopped();
        });
    }
    for (const QByteArray &file : qAsConst(m_order.files))
        take(file);
    std::sort(m_found.begin(), m_found.end());
}

// Whether nothing can be written; sets the error.
bool IndexUpdate::refuseToWrite()
{
    const IndexDatabase &database = m_file.database();
    if (database.isWritable())
        return false;
    setError(m_file.error() ? m_file.error()
                            : ShelfError(ShelfError::Code::ReadOnly,
                                         QStringLiteral("%1 cannot be written").arg(database.fileName())));
    return true;
}

// Rows whose files were found stay; so do those of folders that this order has not, and of folders that cannot be read.
void IndexUpdate::writeDifferences()
{
    if (isStopped())
        return;
    const QSet<QByteArray> files(m_order.files.cbegin(), m_order.files.cend());
    QList<QByteArray> vanished;
    for (auto known = m_known.cbegin(); known != m_known.cend(); ++known) {
        const bool isCovered = files.contains(known.key())
                               || (isBelowAny(known.key(), m_order.folders) && !isBelowAny(known.key(), m_unknown));
        if (isCovered && !m_status.contains(known.key()))
            vanished.append(known.key());
    }
    QList<QByteArray> added;
    for (const QByteArray &path : qAsConst(m_found)) {
        if (!m_known.contains(path))
            added.append(path);
    }
    if (vanished.isEmpty() && added.isEmpty())
        return;
    QHash<qint64, QByteArray> vanishedInodes;
    for (const QByteArray &path : qAsConst(vanished))
        vanishedInodes.insert(m_known.value(path).status.inode, path);
    QSet<QByteArray> moved;
    IndexWriter writer(m_file.database());
    if (!m_file.database().begin())
        return;
    for (const QByteArray &path : qAsConst(added)) {
        const FileStatus status = m_status.value(path);
        const QByteArray old = vanishedInodes.take(status.inode);
        IndexReader::KnownFile known = m_known.value(old);
        if (old.isEmpty() || !known.status.isSameFile(status)) {
            writer.addWaiting(path);
            continue;
        }
        writer.move(known.id, path, status);
        moved.insert(old);
        known.status = status;
        m_known.insert(path, known);
    }
    for (const QByteArray &path : qAsConst(vanished)) {
        if (!moved.contains(path))
            writer.remove(m_known.value(path).id);
    }
    if (m_file.database().commit() && m_listener.changed)
        m_listener.changed(writer.takeChanges());
}

QList<QByteArray> IndexUpdate::unread() const
{
    const QList<QByteArray> words = wordsOf(m_order.content.launcherIcons);
    QSet<qint64> reported;
    if (m_order.keepsReports)
        reported = IndexReader(m_file.database()).reported(m_order.content.content());
    const auto isRead = [&](const QByteArray &path) {
        const auto known = m_known.constFind(path);
        return known != m_known.constEnd() && known->status == m_status.value(path)
               && (known->isVerified || !m_order.content.includesSignatures)
               && (!m_order.keepsReports || reported.contains(known->id))
               && std::all_of(words.cbegin(), words.cend(),
                              [&](const QByteArray &word) { return hasDrawn(known->drawn, word); });
    };
    QList<QByteArray> paths;
    std::copy_if(m_found.cbegin(), m_found.cend(), std::back_inserter(paths),
                 [&](const QByteArray &path) { return !isRead(path); });
    return paths;
}

bool IndexUpdate::read(const QList<QByteArray> &paths, const Order &order, QList<QByteArray> *again)
{
    WorkerPool pool(order.program, order.jobs);
    pool.setStop(order.stop);
    const bool isRun = pool.run(paths, [&](const std::vector<WorkerPool::Outcome> &outcomes) {
        if (!write(paths, outcomes, again))
            return false;
        m_done += int(outcomes.size());
        if (m_listener.progress)
            m_listener.progress(m_done, m_total);
        return true;
    });
    if (!isRun)
        setError(ShelfError(ShelfError::Code::NoWorker, pool.errorText()));
    return isRun && !m_file.database().error() && !isStopped();
}

bool IndexUpdate::write(const QList<QByteArray> &paths, const std::vector<WorkerPool::Outcome> &outcomes,
                        QList<QByteArray> *again)
{
    IndexDatabase &database = m_file.database();
    IndexWriter writer(database);
    // Decoded before the transaction, which keeps other writers waiting.
    std::vector<PackageFacts> facts;
    facts.reserve(outcomes.size());
    for (const WorkerPool::Outcome &outcome : outcomes)
        facts.push_back(PackageFacts::fromReport(outcome.report, outcome.errorCode));
    if (!database.begin())
        return false;
    for (size_t i = 0; i < outcomes.size(); ++i) {
        const QByteArray &path = paths.at(outcomes[i].index);
        const FileStatus status = FileStatus::of(path);
        if (!(status == m_status.value(path))) {
            m_status.insert(path, status);
            if (status.exists())
                again->append(path);
            continue;
        }
        const IndexReader::KnownFile known = m_known.value(path);
        const bool isSame = known.status == status;
        QByteArray drawn = isSame && !known.drawn.isEmpty() ? known.drawn : QByteArray(",");
        for (const QByteArray &word : wordsOf(m_order.content.launcherIcons)) {
            if (!hasDrawn(drawn, word))
                drawn += word + ',';
        }
        writer.write(path, status, facts[i], drawn, m_order.content.includesSignatures || (isSame && known.isVerified));
        if (m_order.keepsReports)
            writer.writeReport(path, m_order.content.content(), facts[i].report);
    }
    if (!database.commit())
        return false;
    if (m_listener.changed)
        m_listener.changed(writer.takeChanges());
    return true;
}

QList<qint64> IndexUpdate::draw(const QList<qint64> &ids, const ShelfIcon &kind, const Order &order)
{
    m_order = order;
    m_error = ShelfError();
    IndexDatabase &database = m_file.database();
    database.clearError();
    QList<qint64> drawn;
    if (refuseToWrite())
        return drawn;
    const QList<QByteArray> paths = IndexReader(database).filesWithoutIcon(ids, kind).values();
    QHash<QByteArray, FileStatus> statuses;
    for (const QByteArray &path : paths)
        statuses.insert(path, FileStatus::of(path));
    m_order.content.launcherIcons = IconKind::word(kind);
    m_order.program.arguments = m_order.content.arguments();
    WorkerPool pool(m_order.program, qMin(order.jobs, qMax(1, int(paths.size()))));
    pool.setStop(order.stop);
    const bool isRun = pool.run(paths, [&](const std::vector<WorkerPool::Outcome> &outcomes) {
        IndexWriter writer(database);
        if (!database.begin())
            return false;
        for (const WorkerPool::Outcome &outcome : outcomes) {
            const QByteArray &path = paths.at(outcome.index);
            const FileStatus status = statuses.value(path);
            if (FileStatus::of(path) == status)
                drawn += writer.writeIcons(path, status, PackageFacts::fromReport(outcome.report, outcome.errorCode),
                                           IconKind::number(kind));
        }
        return database.commit();
    });
    if (!isRun)
        setError(ShelfError(ShelfError::Code::NoWorker, pool.errorText()));
    setError(database.error());
    database.clearError();
    return drawn;
}

void IndexUpdate::setError(const ShelfError &error)
{
    if (!m_error)
        m_error = error;
}

} // namespace SorrelKit
