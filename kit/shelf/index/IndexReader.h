// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_INDEXREADER_H
#define SORRELKIT_INDEXREADER_H

#include "shelf/index/FileStatus.h"
#include "shelf/index/IndexDatabase.h"

#include <SorrelKit/ShelfIcon.h>
#include <SorrelKit/ShelfItem.h>

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

namespace SorrelKit {

/// Queries of an index. After a query, the error() of the database is that of the query, or an earlier one.
class IndexReader
{
public:
    /// The most words of find(); others are not looked for.
    static constexpr int MaxWords = 16;

    /// A package of the index.
    struct KnownFile {
        qint64 id = 0;
        FileStatus status;
        QByteArray drawn; ///< the words of the icons that it was read with, each between commas
        bool isVerified = false;
    };

    /// A report that is stored.
    struct Report {
        QByteArray json; ///< empty when there is none
        int errorCode = 0;
        QString errorText;
    };

    /// Reads from @p database, which lives longer.
    explicit IndexReader(IndexDatabase &database) : m_database(database) {}

    QList<ShelfItem> items() const;
    QList<ShelfItem> itemsWithIcons(const ShelfIcon &kind) const;
    ShelfItem item(qint64 id) const;
    QList<ShelfItem> find(const QString &words) const;
    QByteArray icon(qint64 item, const ShelfIcon &kind, ShelfIcon::State *state) const;

    QList<QByteArray> folders() const;
    QHash<QByteArray, KnownFile> files() const;
    /// The paths of the packages with items among @p ids that have no icon of @p kind.
    QSet<QByteArray> filesWithoutIcon(const QList<qint64> &ids, const ShelfIcon &kind) const;
    /// The packages that have a report with @p content.
    QSet<qint64> reported(const QByteArray &content) const;
    /// The report of the package at @p path, and its error.
    Report report(const QByteArray &path, const QByteArray &content) const;

private:
    QList<ShelfItem> take(QSqlQuery &query, bool hasIcon) const;

    IndexDatabase &m_database;
};

} // namespace SorrelKit

#endif
