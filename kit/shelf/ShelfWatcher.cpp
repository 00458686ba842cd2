// SPDX-License-Identifier: LGPL-2.1-or-later
#include "shelf/ShelfWatcher.h"

#include <QFile>
#include <QSet>

namespace SorrelKit {

namespace {

/// The time in which changes gather: copying a package is many.
constexpr int DelayMs = 200;

} // namespace

ShelfWatcher::ShelfWatcher(const std::function<void()> &changed)
{
    m_delay.setSingleShot(true);
    m_delay.setInterval(DelayMs);
    const auto startDelay = [this] { m_delay.start(); };
    QObject::connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_delay, startDelay);
    QObject::connect(&m_watcher, &QFileSystemWatcher::fileChanged, &m_delay, startDelay);
    QObject::connect(&m_delay, &QTimer::timeout, &m_delay, changed);
}

bool ShelfWatcher::watch(const QList<QByteArray> &folders, const QList<QByteArray> &files)
{
    QSet<QString> wanted;
    for (const QList<QByteArray> *paths : {&folders, &files}) {
        for (const QByteArray &path : *paths) {
            if (wanted.size() < MaxPaths)
                wanted.insert(QFile::decodeName(path));
        }
    }
    QStringList gone;
    const QStringList watched = m_watcher.directories() + m_watcher.files();
    for (const QString &path : watched) {
        if (!wanted.remove(path))
            gone.append(path);
    }
    if (!gone.isEmpty())
        m_watcher.removePaths(gone);
    const QStringList added = wanted.values();
    return !added.isEmpty() && m_watcher.addPaths(added).size() < added.size();
}

} // namespace SorrelKit
