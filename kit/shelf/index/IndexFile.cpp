// SPDX-License-Identifier: LGPL-2.1-or-later
#include "shelf/index/IndexFile.h"

#include "shelf/index/IndexSchema.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QVariant>

#include <unistd.h>

namespace SorrelKit {

namespace {

using Code = ShelfError::Code;

bool mayWrite(const QString &path)
{
    return ::access(QFile::encodeName(path).constData(), W_OK) == 0;
}

/// The ending of an empty file beside an index in which a query met damage.
const QLatin1String damagedEnding("-damaged");

// Whether another file may take the place of one with this error.
bool isReplaced(const ShelfError &error)
{
    return error.code() == Code::Damaged || error.code() == Code::LaterVersion;
}

} // namespace

bool IndexFile::open(const QString &fileName, bool isReadOnly)
{
    close();
    const QString name = QFileInfo(fileName).absoluteFilePath();
    m_error = isReadOnly ? openToRead(name) : openOne(name);
    if (!isReplaced(m_error) || isReadOnly)
        return m_database.isOpen();
    ShelfError error = m_error;
    for (int number = 2; number <= LastNumber && isReplaced(error); ++number) {
        const QString other = QStringLiteral("%1.%2").arg(name).arg(number);
        error = openOne(other);
        if (m_database.isOpen())
            m_error = ShelfError(m_error.code(), QStringLiteral("%1; %2 is used instead").arg(m_error.text(), other));
    }
    return m_database.isOpen();
}

void IndexFile::close()
{
    m_database.close();
    m_database.clearError();
    m_lock.reset();
    m_error = ShelfError();
}

void IndexFile::markDamaged()
{
    if (!m_database.isWritable())
        return;
    QFile mark(m_database.fileName() + damagedEnding);
    mark.open(QIODevice::WriteOnly);
}

ShelfError IndexFile::openOne(const QString &fileName)
{
    const QFileInfo file(fileName);
    if (file.exists() && !mayWrite(fileName)) {
        const ShelfError error = openToRead(fileName);
        return error ? error : ShelfError(Code::ReadOnly, QStringLiteral("%1 cannot be written").arg(fileName));
    }
    const QString folder = file.absolutePath();
    if (!file.exists() && (!QDir().mkpath(folder) || !mayWrite(folder)))
        return ShelfError(Code::ReadOnly,
                          QStringLiteral("%1 cannot be made: the folder cannot be written").arg(fileName));
    if (!mayWrite(folder)) {
        const ShelfError error = openToRead(fileName);
        return error ? error
                     : ShelfError(Code::ReadOnly,
                                  QStringLiteral("%1 cannot be written: its folder is read-only").arg(fileName));
    }
    m_lock = std::make_unique<IndexLock>(QFile::encodeName(fileName));
    m_lock->beginOpening();
    const bool isAlone = m_lock->join();
    // A program that ends as it should leaves no log behind.
    const bool hasLog = QFileInfo(fileName + QStringLiteral("-wal")).size() > 0;
    m_database.clearError();
    ShelfError error;
    if (!m_database.open(fileName, IndexDatabase::Mode::Create))
        error = m_database.error();
    else
        error = check(fileName, true);
    if (!error && ((isAlone && hasLog) || QFileInfo::exists(fileName + damagedEnding))) {
        QSqlQuery query = m_database.prepare(QStringLiteral("PRAGMA quick_check(1)"));
        const bool isSound =
            m_database.run(query) && m_database.next(query) && query.value(0).toString() == QLatin1String("ok");
        if (isSound)
            QFile::remove(fileName + damagedEnding);
        else
            error = ShelfError(Code::Damaged, QStringLiteral("%1 is damaged").arg(fileName));
    }
    if (!error)
        error = connectionSettings();
    if (error) {
        m_database.close();
        m_lock.reset();
    } else {
        m_lock->endOpening();
    }
    m_database.clearError();
    return error;
}

// Without permission to make files beside it, an index can be read while nobody writes.
ShelfError IndexFile::openToRead(const QString &fileName)
{
    m_database.clearError();
    ShelfError error;
    if (!QFileInfo::exists(fileName))
        return ShelfError(Code::CannotOpen, QStringLiteral("%1 does not exist").arg(fileName));
    for (const IndexDatabase::Mode mode : {IndexDatabase::Mode::ReadOnly, IndexDatabase::Mode::Immutable}) {
        m_database.clearError();
        error = m_database.open(fileName, mode) ? check(fileName, false) : m_database.error();
        if (!error)
            error = connectionSettings();
        if (!error || isReplaced(error) || error.code() == Code::NoDriver)
            break;
    }
    if (error)
        m_database.close();
    m_database.clearError();
    return error;
}

ShelfError IndexFile::check(const QString &fileName, bool mayPrepare)
{
    using IndexSchema::Kind;
    const Kind kind = IndexSchema::kindOf(m_database);
    switch (kind) {
    case Kind::Current:
        return {};
    case Kind::Unknown:
        return m_database.error();
    case Kind::Other:
        return ShelfError(Code::LaterVersion,
                          QStringLiteral("%1 is of a later version or of another program").arg(fileName));
    case Kind::Empty:
    case Kind::Older:
        break;
    }
    if (!mayPrepare)
        return ShelfError(Code::CannotOpen, QStringLiteral("%1 has no index yet").arg(fileName));
    if (IndexSchema::prepare(m_database))
        return {};
    // Its full-text search has the tokenizer "trigram" since 3.34.
    if (kind == Kind::Empty && m_database.error().code() == Code::Damaged)
        return ShelfError(Code::NoDriver, m_database.error().text());
    return m_database.error();
}

ShelfError IndexFile::connectionSettings()
{
    if (m_database.isWritable()) {
        m_database.execute(QStringLiteral("PRAGMA synchronous = NORMAL"));
        m_database.execute(QStringLiteral("PRAGMA foreign_keys = ON"));
    }
    return m_database.error();
}

} // namespace SorrelKit
