// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Shelf.h>

#include "shelf/ShelfPrivate.h"
#include "shelf/WorkerPath.h"
#include "shelf/index/IconKind.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QThread>

#include <algorithm>
#include <unistd.h>

namespace SorrelKit {

namespace {

constexpr int MaxJobs = 1024;
constexpr qint64 MaxWorkerBytes = qint64(1) << 30;
constexpr double MaxWorkerSeconds = 60;

} // namespace

Shelf::Shelf(QObject *parent) : QObject(parent), d(new ShelfPrivate(this))
{
    d->jobs = qBound(1, QThread::idealThreadCount(), MaxJobs);
}

Shelf::~Shelf()
{
    d->thread.reset();
}

QString Shelf::defaultFileName()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + QStringLiteral("/sorrel/shelf.db");
}

bool Shelf::open(const QString &fileName, Access access)
{
    close();
    d->file.open(fileName, access == Access::ReadOnly);
    d->setError(d->file.error());
    if (isOpen())
        Q_EMIT opened();
    return isOpen();
}

void Shelf::close()
{
    d->thread.reset();
    ++d->opening;
    const bool wasOpen = isOpen();
    const bool wasRefreshing = d->isRefreshing;
    d->file.close();
    d->isRefreshing = d->refreshesAgain = false;
    if (wasRefreshing)
        Q_EMIT refreshingChanged();
    if (wasOpen)
        Q_EMIT opened();
}

bool Shelf::isOpen() const
{
    return d->file.database().isOpen();
}

QString Shelf::fileName() const
{
    return isOpen() ? d->file.database().fileName() : QString();
}

ShelfError Shelf::error() const
{
    return d->error;
}

QStringList Shelf::folders() const
{
    QStringList names;
    const auto folders = d->ask<QList<QByteArray>>([](const IndexReader &reader) { return reader.folders(); });
    for (const QByteArray &folder : folders)
        names.append(QFile::decodeName(folder));
    return names;
}

bool Shelf::setFolders(const QStringList &folders)
{
    IndexDatabase &database = d->file.database();
    if (!database.isWritable()) {
        d->setError(ShelfError(ShelfError::Code::ReadOnly, QStringLiteral("no index is open that can be written")));
        return false;
    }
    QList<QByteArray> paths;
    for (const QString &folder : folders.mid(0, MaxFolders))
        paths.append(QFile::encodeName(QDir::cleanPath(QDir(folder).absolutePath())));
    database.clearError();
    IndexWriter writer(database);
    if (database.begin()) {
        const QList<QByteArray> known = IndexReader(database).folders();
        QList<QByteArray> left;
        std::copy_if(known.cbegin(), known.cend(), std::back_inserter(left),
                     [&](const QByteArray &path) { return !paths.contains(path); });
        writer.setFolders(paths);
        writer.removeBelow(left, paths);
        database.commit();
    }
    const ShelfError error = database.error();
    database.clearError();
    if (error) {
        d->setError(error);
        return false;
    }
    Q_EMIT foldersChanged();
    d->report(writer.takeChanges());
    return true;
}

QList<ShelfIcon> Shelf::icons() const
{
    return d->icons;
}

void Shelf::setIcons(const QList<ShelfIcon> &icons)
{
    d->icons.clear();
    for (const ShelfIcon &icon : icons) {
        if (IconKind::isValid(icon) && d->icons.size() < ShelfPrivate::MaxIcons)
            d->icons.append(icon);
    }
}

bool Shelf::isVerifying() const
{
    return d->isVerifying;
}

void Shelf::setVerifying(bool verifying)
{
    d->isVerifying = verifying;
}

int Shelf::jobs() const
{
    return d->jobs;
}

void Shelf::setJobs(int jobs)
{
    d->jobs = qBound(1, jobs, MaxJobs);
}

QString Shelf::workerProgram() const
{
    return d->program.isEmpty() ? workerPath() : d->program;
}

void Shelf::setWorkerProgram(const QString &program)
{
    d->program = program;
}

QList<ShelfItem> Shelf::items() const
{
    return d->ask<QList<ShelfItem>>([](const IndexReader &reader) { return reader.items(); });
}

QList<ShelfItem> Shelf::itemsWithIcons(const ShelfIcon &kind) const
{
    return d->ask<QList<ShelfItem>>([&](const IndexReader &reader) { return reader.itemsWithIcons(kind); });
}

ShelfItem Shelf::item(qint64 id) const
{
    return d->ask<ShelfItem>([&](const IndexReader &reader) { return reader.item(id); });
}

QList<ShelfItem> Shelf::find(const QString &words) const
{
    return d->ask<QList<ShelfItem>>([&](const IndexReader &reader) { return reader.find(words); });
}

QByteArray Shelf::icon(qint64 id, const ShelfIcon &kind, ShelfIcon::State *state) const
{
    if (state != nullptr)
        *state = ShelfIcon::State::NotStored;
    return d->ask<QByteArray>([&](const IndexReader &reader) { return reader.icon(id, kind, state); });
}

void Shelf::drawIcons(const QList<qint64> &ids, const ShelfIcon &kind)
{
    if (!isOpen())
        return;
    if (ids.isEmpty() || !IconKind::isValid(kind)) {
        d->post(d->opening, [this, ids, kind] { Q_EMIT iconsDrawn(ids, kind); });
        return;
    }
    IndexUpdate::Order order = d->order();
    order.content = WorkerOrder();
    order.content.maxMemory = MaxWorkerBytes;
    order.content.maxSeconds = MaxWorkerSeconds;
    order.content.parent = ::getpid();
    const int opening = d->opening;
    d->add([this, ids, kind, order, opening](IndexFile &file, int stop) {
        IndexUpdate update(file, {});
        IndexUpdate::Order here = order;
        here.stop = stop;
        const QList<qint64> drawn = update.draw(ids, kind, here);
        const ShelfError fault = update.error();
        d->post(opening, [this, ids, drawn, kind, fault] {
            if (fault)
                d->setError(fault);
            if (!drawn.isEmpty())
                Q_EMIT iconsAdded(drawn, kind);
            Q_EMIT iconsDrawn(ids, kind);
        });
    });
}

void Shelf::refresh()
{
    if (!isOpen())
        return;
    if (d->isRefreshing)
        d->refreshesAgain = true;
    else
        d->startRefresh();
}

bool Shelf::isRefreshing() const
{
    return d->isRefreshing;
}

bool Shelf::isWatching() const
{
    return d->watcher != nullptr;
}

void Shelf::setWatching(bool watching)
{
    if (watching == isWatching())
        return;
    d->watcher.reset(watching ? new ShelfWatcher([this] { refresh(); }) : nullptr);
    Q_EMIT watchingChanged();
}

template <typename Result>
Result ShelfPrivate::ask(const std::function<Result(const IndexReader &reader)> &query)
{
    IndexDatabase &database = file.database();
    if (!database.isOpen())
        return Result();
    Result result = query(IndexReader(database));
    if (database.error()) {
        if (database.error().code() == ShelfError::Code::Damaged)
            file.markDamaged();
        setError(database.error());
        database.clearError();
    }
    return result;
}

void ShelfPrivate::setError(const ShelfError &newError)
{
    if (error == newError)
        return;
    error = newError;
    Q_EMIT q->errorChanged();
}

void ShelfPrivate::add(const ShelfThread::Job &job)
{
    if (thread == nullptr)
        thread = std::make_unique<ShelfThread>(file.database().fileName());
    thread->add(job);
}

void ShelfPrivate::post(int from, const std::function<void()> &call)
{
    const auto deliver = [this, from, call] {
        if (from == opening)
            call();
    };
#ifdef __clang_analyzer__
    // It would report Qt's copy as lost, because it does not see that the event loop deletes it.
    deliver();
#else
    QMetaObject::invokeMethod(q, deliver, Qt::QueuedConnection);
#endif
}

IndexUpdate::Order ShelfPrivate::order() const
{
    IndexUpdate::Order order;
    order.program.path = QFile::encodeName(q->workerProgram());
    order.jobs = jobs;
    QList<QByteArray> words;
    for (const ShelfIcon &icon : icons)
        words.append(IconKind::word(icon));
    order.content.launcherIcons = words.join(',');
    order.content.includesSignatures = isVerifying;
    order.content.maxMemory = MaxWorkerBytes;
    order.content.maxSeconds = MaxWorkerSeconds;
    order.content.parent = ::getpid();
    return order;
}

void ShelfPrivate::startRefresh()
{
    isRefreshing = true;
    refreshesAgain = false;
    IndexUpdate::Order wanted = order();
    const QStringList folders = q->folders();
    for (const QString &folder : folders)
        wanted.folders.append(QFile::encodeName(folder));
    const int from = opening;
    add([this, wanted, from](IndexFile &index, int stop) {
        IndexUpdate::Order here = wanted;
        here.stop = stop;
        IndexUpdate update(index, {[this, from](const IndexWriter::Changes &changes) {
                                       post(from, [this, changes] { report(changes); });
                                   },
                                   [this, from](int done, int total) {
                                       post(from, [this, done, total] { Q_EMIT q->progress(done, total); });
                                   }});
        update.run(here);
        const ShelfError fault = update.error();
        const QList<QByteArray> entered = update.entered();
        const QList<QByteArray> found = update.found();
        post(from, [this, fault, entered, found] { endRefresh(fault, entered, found); });
    });
    Q_EMIT q->refreshingChanged();
}

// A path that is watched only now may have changed since it was looked at.
void ShelfPrivate::endRefresh(const ShelfError &fault, const QList<QByteArray> &entered, const QList<QByteArray> &found)
{
    isRefreshing = false;
    setError(fault);
    if (fault.code() == ShelfError::Code::Damaged)
        file.markDamaged();
    if (watcher != nullptr && watcher->watch(entered, found))
        refreshesAgain = true;
    if (refreshesAgain) {
        startRefresh();
        return;
    }
    Q_EMIT q->refreshingChanged();
    Q_EMIT q->finished();
}

void ShelfPrivate::report(const IndexWriter::Changes &changes)
{
    if (!changes.removed.isEmpty())
        Q_EMIT q->itemsRemoved(changes.removed);
    if (!changes.added.isEmpty())
        Q_EMIT q->itemsAdded(changes.added);
    if (!changes.changed.isEmpty())
        Q_EMIT q->itemsChanged(changes.changed);
}

} // namespace SorrelKit
