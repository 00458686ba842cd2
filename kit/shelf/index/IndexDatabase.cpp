// SPDX-License-Identifier: LGPL-2.1-or-later
#include "shelf/index/IndexDatabase.h"

#include <QSqlError>
#include <QUrl>
#include <QVariant>

#include <atomic>

namespace SorrelKit {

namespace {

/// The time that a statement waits for the writer of another process.
constexpr int BusyMs = 10000;

/// The result codes of SQLite (https://www.sqlite.org/rescode.html), without their extensions.
enum SqliteCode : int {
    SqliteError = 1,
    SqliteBusy = 5,
    SqliteLocked = 6,
    SqliteReadOnly = 8,
    SqliteCorrupt = 11,
    SqliteFull = 13,
    SqliteCannotOpen = 14,
    SqliteNotADatabase = 26,
};

ShelfError::Code codeOf(const QSqlError &error)
{
    constexpr int primaryMask = 0xff;
    switch (error.nativeErrorCode().toInt() & primaryMask) {
    case SqliteBusy:
    case SqliteLocked:
        return ShelfError::Code::Busy;
    case SqliteReadOnly:
        return ShelfError::Code::ReadOnly;
    case SqliteError: // the statements are right, so the tables are not
    case SqliteCorrupt:
    case SqliteNotADatabase:
        return ShelfError::Code::Damaged;
    case SqliteFull:
        return ShelfError::Code::Full;
    case SqliteCannotOpen:
        return ShelfError::Code::CannotOpen;
    default:
        return ShelfError::Code::Failed;
    }
}

QString nextConnectionName()
{
    static std::atomic<int> count{0};
    return QStringLiteral("SorrelKit::Shelf %1").arg(count.fetch_add(1));
}

} // namespace

IndexDatabase::IndexDatabase() : m_connection(nextConnectionName()) {}

bool IndexDatabase::open(const QString &fileName, Mode mode)
{
    close();
    m_fileName = fileName;
    m_database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    if (!m_database.isValid()) {
        m_error = ShelfError(ShelfError::Code::NoDriver,
                             QStringLiteral("Qt has no driver for SQLite, which the index needs"));
        close();
        return false;
    }
    QString options = QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(BusyMs);
    QString name = fileName;
    if (mode != Mode::Create)
        options += QStringLiteral(";QSQLITE_OPEN_READONLY");
    if (mode == Mode::Immutable) {
        options += QStringLiteral(";QSQLITE_OPEN_URI");
        name = QString::fromLatin1(QUrl::fromLocalFile(fileName).toEncoded()) + QStringLiteral("?immutable=1");
    }
    m_database.setConnectOptions(options);
    m_database.setDatabaseName(name);
    m_isOpen = m_database.open();
    m_isWritable = m_isOpen && mode == Mode::Create;
    if (!m_isOpen) {
        setError(m_database.lastError());
        close();
    }
    return m_isOpen;
}

void IndexDatabase::close()
{
    if (!m_database.isValid() && !m_isOpen)
        return;
    m_database.close();
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_connection);
    m_isOpen = m_isWritable = false;
}

QSqlQuery IndexDatabase::prepare(const QString &sql)
{
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (!query.prepare(sql))
        setError(query.lastError());
    return query;
}

bool IndexDatabase::run(QSqlQuery &query)
{
    if (query.exec())
        return true;
    setError(query.lastError());
    return false;
}

bool IndexDatabase::execute(const QString &sql)
{
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (query.exec(sql))
        return true;
    setError(query.lastError());
    return false;
}

qint64 IndexDatabase::number(const QString &sql)
{
    QSqlQuery query = prepare(sql);
    return run(query) && next(query) ? query.value(0).toLongLong() : 0;
}

bool IndexDatabase::next(QSqlQuery &query)
{
    if (query.next())
        return true;
    if (query.lastError().isValid())
        setError(query.lastError());
    return false;
}

bool IndexDatabase::commit()
{
    if (!m_error && execute(QStringLiteral("COMMIT")))
        return true;
    rollBack();
    return false;
}

// SQLite has rolled back already after some errors, so a failure is none.
void IndexDatabase::rollBack()
{
    QSqlQuery query(m_database);
    query.exec(QStringLiteral("ROLLBACK"));
}

void IndexDatabase::setError(const QSqlError &error)
{
    if (m_error)
        return;
    const ShelfError::Code code = codeOf(error);
    m_error = ShelfError(code, QStringLiteral("%1: %2").arg(m_fileName, error.databaseText()));
}

} // namespace SorrelKit
