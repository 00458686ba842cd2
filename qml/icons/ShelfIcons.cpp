// SPDX-License-Identifier: LGPL-2.1-or-later
#include "icons/ShelfIcons.h"

#include "icons/PngPicture.h"
#include "icons/SourceNumber.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace SorrelQml {

using SorrelKit::Shelf;
using SorrelKit::ShelfIcon;

namespace {

/// Icons that are drawn together. A small number shows the first ones early, and leaves out those that were cancelled.
constexpr int BatchSize = 24;
/// Icons that are asked for within this time are drawn together.
constexpr int BatchMilliseconds = 20;
/// Another program may have stored an icon.
constexpr int LookMilliseconds = 500;
/// After this time the next batch starts, whatever became of the last one.
constexpr qint64 BatchWait = 10000;
/// A worker gets 60 s for a package.
constexpr qint64 JobWait = 120000;

} // namespace

/// Lives in the thread.
class ShelfIcons::Worker : public QObject
{
public:
    explicit Worker(const std::atomic<bool> &isEnding);

    void take(const std::shared_ptr<IconJob> &job);
    /// Finishes all jobs, and closes the indexes.
    void end();

private:
    struct Waiting {
        std::shared_ptr<IconJob> job;
        qint64 since = -1; ///< when it was sent to the workers; -1 before
    };

    Shelf *shelf(int number);
    /// Finishes @p job when the index knows its icon.
    bool answer(const std::shared_ptr<IconJob> &job);
    /// Answers what can be answered, and sends the next batch.
    void look();
    void sendBatch();
    void endBatch(int number, const QList<qint64> &ids, const ShelfIcon &kind);

    const std::atomic<bool> &m_isEnding;
    std::map<int, std::unique_ptr<Shelf>> m_shelves;
    std::vector<Waiting> m_waiting;
    QElapsedTimer m_clock;
    QTimer m_batchTimer;
    QTimer m_lookTimer;
};

ShelfIcons::Worker::Worker(const std::atomic<bool> &isEnding)
    : m_isEnding(isEnding), m_batchTimer(this), m_lookTimer(this)
{
    m_clock.start();
    m_batchTimer.setSingleShot(true);
    m_batchTimer.setInterval(BatchMilliseconds);
    m_lookTimer.setInterval(LookMilliseconds);
    connect(&m_batchTimer, &QTimer::timeout, this, [this] { look(); });
    connect(&m_lookTimer, &QTimer::timeout, this, [this] { look(); });
}

Shelf *ShelfIcons::Worker::shelf(int number)
{
    const QString fileName = SourceNumber::fileName(number);
    const auto known = m_shelves.find(number);
    if (known != m_shelves.end() && !fileName.isEmpty())
        return known->second.get();
    for (auto open = m_shelves.begin(); open != m_shelves.end();)
        open = SourceNumber::fileName(open->first).isEmpty() ? m_shelves.erase(open) : std::next(open);
    if (fileName.isEmpty())
        return nullptr;
    auto opened = std::make_unique<Shelf>();
    opened->open(fileName);
    // Later, because the end of a batch may close this index.
    connect(opened.get(), &Shelf::iconsDrawn, this, [this, number](const QList<qint64> &ids, const ShelfIcon &kind) {
        QMetaObject::invokeMethod(
            this, [this, number, ids, kind] { endBatch(number, ids, kind); }, Qt::QueuedConnection);
    });
    return m_shelves.emplace(number, std::move(opened)).first->second.get();
}

void ShelfIcons::Worker::take(const std::shared_ptr<IconJob> &job)
{
    if (answer(job))
        return;
    m_waiting.push_back({job});
    if (!m_batchTimer.isActive())
        m_batchTimer.start();
    if (!m_lookTimer.isActive())
        m_lookTimer.start();
}

bool ShelfIcons::Worker::answer(const std::shared_ptr<IconJob> &job)
{
    if (m_isEnding.load()) {
        job->finish(QImage(), QStringLiteral("the program ends"));
        return true;
    }
    if (job->isCancelled()) {
        job->finish(QImage(), QStringLiteral("cancelled"));
        return true;
    }
    Shelf *const index = shelf(job->url.number);
    if (index == nullptr || !index->isOpen()) {
        job->finish(QImage(), QStringLiteral("the index is not open"));
        return true;
    }
    ShelfIcon::State state = ShelfIcon::State::NotStored;
    const QByteArray png = index->icon(job->url.item, job->kind, &state);
    if (state == ShelfIcon::State::NotStored)
        return false;
    const QImage image = pictureOfPng(png);
    job->finish(image, image.isNull() ? QStringLiteral("the package has no icon that can be drawn") : QString());
    return true;
}

void ShelfIcons::Worker::look()
{
    const qint64 now = m_clock.elapsed();
    const auto isDone = [&](const Waiting &waiting) {
        if (answer(waiting.job))
            return true;
        if (waiting.since < 0 || now - waiting.since < JobWait)
            return false;
        waiting.job->finish(QImage(), QStringLiteral("the icon was not drawn"));
        return true;
    };
    m_waiting.erase(std::remove_if(m_waiting.begin(), m_waiting.end(), isDone), m_waiting.end());
    sendBatch();
    if (m_waiting.empty())
        m_lookTimer.stop();
}

void ShelfIcons::Worker::sendBatch()
{
    const qint64 now = m_clock.elapsed();
    const bool isBusy = std::any_of(m_waiting.cbegin(), m_waiting.cend(), [&](const Waiting &waiting) {
        return waiting.since >= 0 && now - waiting.since < BatchWait;
    });
    const auto first =
        std::find_if(m_waiting.begin(), m_waiting.end(), [](const Waiting &waiting) { return waiting.since < 0; });
    if (isBusy || first == m_waiting.end())
        return;
    const ShelfIcon kind = first->job->kind;
    const int number = first->job->url.number;
    QList<qint64> ids;
    for (auto waiting = first; waiting != m_waiting.end() && ids.size() < BatchSize; ++waiting) {
        if (waiting->since >= 0 || waiting->job->kind != kind || waiting->job->url.number != number)
            continue;
        waiting->since = now;
        if (!ids.contains(waiting->job->url.item))
            ids.append(waiting->job->url.item);
    }
    shelf(number)->drawIcons(ids, kind);
}

// A package that was removed or changed meanwhile has no icon in this batch.
void ShelfIcons::Worker::endBatch(int number, const QList<qint64> &ids, const ShelfIcon &kind)
{
    const auto isDone = [&](const Waiting &waiting) {
        const IconUrl &url = waiting.job->url;
        if (waiting.since < 0 || waiting.job->kind != kind || url.number != number || !ids.contains(url.item))
            return false;
        if (!answer(waiting.job))
            waiting.job->finish(QImage(), QStringLiteral("the package changed, or it is gone"));
        return true;
    };
    m_waiting.erase(std::remove_if(m_waiting.begin(), m_waiting.end(), isDone), m_waiting.end());
    look();
}

void ShelfIcons::Worker::end()
{
    m_batchTimer.stop();
    m_lookTimer.stop();
    for (const Waiting &waiting : std::exchange(m_waiting, {}))
        waiting.job->finish(QImage(), QStringLiteral("the program ends"));
    m_shelves.clear();
}

ShelfIcons::ShelfIcons() : m_worker(new Worker(m_isEnding))
{
    m_worker->moveToThread(this);
    start();
}

ShelfIcons::~ShelfIcons()
{
    end();
}

void ShelfIcons::end()
{
    m_isEnding.store(true);
    quit();
    wait();
}

void ShelfIcons::add(const std::shared_ptr<IconJob> &job)
{
    Worker *const worker = m_worker.get();
    QMetaObject::invokeMethod(
        worker, [worker, job] { worker->take(job); }, Qt::QueuedConnection);
}

void ShelfIcons::run()
{
    exec();
    m_worker->end();
}

} // namespace SorrelQml
