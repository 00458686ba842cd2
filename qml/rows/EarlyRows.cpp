// SPDX-License-Identifier: LGPL-2.1-or-later
#include "rows/EarlyRows.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLocale>
#include <QMutex>
#include <QMutexLocker>
#include <QRunnable>
#include <QSemaphore>
#include <QThreadPool>
#include <QTimer>

#include <atomic>
#include <memory>
#include <utility>

namespace SorrelQml {

using SorrelKit::Shelf;

namespace {

/// The rows of one start(), which its task and take() share.
struct EarlyReading {
    const QString fileName = Shelf::defaultFileName();
    const QLocale locale;
    QElapsedTimer age;
    std::atomic_flag isBegun = ATOMIC_FLAG_INIT; ///< by the task, or by take() when the task has not begun
    QSemaphore isDone;
    bool isRead = false;
    ShelfRows rows;
};

class EarlyTask : public QRunnable
{
public:
    explicit EarlyTask(const std::shared_ptr<EarlyReading> &reading) : m_reading(reading) {}
    ~EarlyTask() override { m_reading->isDone.release(); }

    void run() override
    {
        if (m_reading->isBegun.test_and_set())
            return;
        Shelf shelf;
        if (!shelf.open(m_reading->fileName, Shelf::Access::ReadOnly) || shelf.error())
            return;
        m_reading->rows = RowRequest().read(shelf);
        m_reading->isRead = !shelf.error();
    }

private:
    const std::shared_ptr<EarlyReading> m_reading;
};

QMutex readingMutex;
std::shared_ptr<EarlyReading> lastReading;

std::shared_ptr<EarlyReading> takeReading()
{
    const QMutexLocker locker(&readingMutex);
    return std::exchange(lastReading, nullptr);
}

} // namespace

void EarlyRows::start()
{
    if (QCoreApplication::instance() == nullptr)
        return;
    const auto reading = std::make_shared<EarlyReading>();
    reading->age.start();
    {
        const QMutexLocker locker(&readingMutex);
        lastReading = reading;
    }
    QThreadPool::globalInstance()->start(new EarlyTask(reading));
    QTimer::singleShot(MaxAgeMilliseconds, QCoreApplication::instance(), [] { takeReading(); });
}

std::optional<ShelfRows> EarlyRows::take(const QString &fileName, const RowRequest &request)
{
    const std::shared_ptr<EarlyReading> reading = takeReading();
    if (reading == nullptr)
        return std::nullopt;
    const bool isAsked = QFileInfo(fileName) == QFileInfo(reading->fileName) && request.search.trimmed().isEmpty()
                         && request.language() == reading->locale && !reading->age.hasExpired(MaxAgeMilliseconds);
    // Other tasks of the program may keep the pool busy.
    if (!isAsked || !reading->isBegun.test_and_set())
        return std::nullopt;
    reading->isDone.acquire();
    if (!reading->isRead)
        return std::nullopt;
    ShelfRows rows;
    rows.reserve(reading->rows.size());
    for (const ShelfRow &row : qAsConst(reading->rows)) {
        if (request.accepts(row.item))
            rows.append(row);
    }
    return rows;
}

} // namespace SorrelQml
