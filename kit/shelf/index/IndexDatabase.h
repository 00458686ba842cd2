// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_INDEXDATABASE_H
#define SORRELKIT_INDEXDATABASE_H

#include <SorrelKit/ShelfError.h>

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>

namespace SorrelKit {

/**
 * A connection to an SQLite file by Qt's driver, with the errors of SQLite as ShelfError. Use it from the thread that
 * opened it. The destructor closes it; no query of it may be left then.
 */
class IndexDatabase
{
public:
    enum class Mode {
        Create,    ///< read and write; the file is made when it is missing
        ReadOnly,  ///< the file exists
        Immutable, ///< the same where no file beside it can be made, and nobody writes
    };

    IndexDatabase();
    ~IndexDatabase() { close(); }

    /// Opens @p fileName after closing another one. Returns false and sets error() when that fails. The file is not
    /// read.
    bool open(const QString &fileName, Mode mode);
    void close();
    bool isOpen() const { return m_isOpen; }
    bool isWritable() const { return m_isWritable; }
    const QString &fileName() const { return m_fileName; }

    /// A forward-only query of @p sql, prepared. An invalid one fails when it is run.
    QSqlQuery prepare(const QString &sql);
    /// Runs @p query, whose values are bound. Returns false and sets error() when it fails.
    bool run(QSqlQuery &query);
    /// Runs the statement @p sql, which has no values.
    bool execute(const QString &sql);
    /// The number that the statement @p sql returns first; 0 when it fails, which sets error().
    qint64 number(const QString &sql);
    /// Steps to the next row of @p query. Returns false behind the last one, and when reading fails, which sets
    /// error().
    bool next(QSqlQuery &query);

    /// Begins a transaction that writes.
    bool begin() { return execute(QStringLiteral("BEGIN IMMEDIATE")); }
    /// Commits it; when that fails, or error() is set, nothing of it is written.
    bool commit();
    void rollBack();

    /// The first error since clearError().
    const ShelfError &error() const { return m_error; }
    void clearError() { m_error = ShelfError(); }

private:
    Q_DISABLE_COPY(IndexDatabase)

    void setError(const QSqlError &error);

    QString m_connection;
    QString m_fileName;
    QSqlDatabase m_database;
    ShelfError m_error;
    bool m_isOpen = false;
    bool m_isWritable = false;
};

} // namespace SorrelKit

#endif
