// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_INDEXWRITER_H
#define SORRELKIT_INDEXWRITER_H

#include "shelf/index/FileStatus.h"
#include "shelf/index/IndexDatabase.h"
#include "shelf/index/PackageFacts.h"

#include <QList>

namespace SorrelKit {

/**
 * Statements that change an index. Each is called between begin() and commit() of the database, whose error() tells
 * whether it failed; commit() then writes nothing. The ids of items that changed are collected for the signals.
 */
class IndexWriter
{
public:
    /// The items that a transaction changed.
    struct Changes {
        QList<qint64> added;
        QList<qint64> changed;
        QList<qint64> removed;
    };

    /// Writes to @p database, which lives longer.
    explicit IndexWriter(IndexDatabase &database) : m_database(database) {}

    void setFolders(const QList<QByteArray> &folders);
    /// Removes the packages below @p folders that are not below one of @p others.
    void removeBelow(const QList<QByteArray> &folders, const QList<QByteArray> &others);
    /// Adds a package that was not read yet.
    void addWaiting(const QByteArray &path);
    /// The package @p package has the path @p path now, and @p status.
    void move(qint64 package, const QByteArray &path, const FileStatus &status);
    void remove(qint64 package);
    /// Writes the facts of the package at @p path, which was read when it had @p status. Its items keep their ids when
    /// their launchers remain. Its icons and reports stay when the status did. With @p isVerified and facts that are
    /// not verified, the signer stays, too.
    void write(const QByteArray &path, const FileStatus &status, const PackageFacts &facts, const QByteArray &drawn,
               bool isVerified);
    /// Stores a report of the package at @p path.
    void writeReport(const QByteArray &path, const QByteArray &content, const QByteArray &report);
    /// Stores the icons of @p kind in @p facts for all items of the package at @p path, when it still has @p status; an
    /// item without a picture is stored as one that has none. Returns the items.
    QList<qint64> writeIcons(const QByteArray &path, const FileStatus &status, const PackageFacts &facts, qint64 kind);

    /// The changes since the last call.
    Changes takeChanges();

private:
    struct StoredItem {
        qint64 id = 0;
        QString entry;
    };

    qint64 packageAt(const QByteArray &path, FileStatus *status);
    QString signerOf(qint64 package);
    QList<StoredItem> itemsOf(qint64 package);
    void writeItems(qint64 package, const PackageFacts &facts);
    void writeIconsOf(qint64 item, const QVector<PackageFacts::Icon> &icons);
    void runWith(const QString &sql, const QList<QVariant> &values);

    IndexDatabase &m_database;
    Changes m_changes;
};

} // namespace SorrelKit

#endif
