// SPDX-License-Identifier: LGPL-2.1-or-later
#include "shelf/index/IndexSchema.h"

namespace SorrelKit::IndexSchema {

namespace {

/// The statements that make version N of version N - 1, by N - 1. Version 0 is an empty file. Each list ends with null.
const char *const migrationTo1[] = {
    "CREATE TABLE folders (path BLOB NOT NULL PRIMARY KEY) WITHOUT ROWID",
    "CREATE TABLE packages ("
    "id INTEGER PRIMARY KEY AUTOINCREMENT, path BLOB NOT NULL UNIQUE, "
    "device INTEGER NOT NULL, inode INTEGER NOT NULL, size INTEGER NOT NULL, "
    "modified INTEGER NOT NULL, changed INTEGER NOT NULL, drawn TEXT NOT NULL, verified INTEGER NOT NULL, "
    "state INTEGER NOT NULL, error_code INTEGER NOT NULL, error_text TEXT NOT NULL, "
    "name TEXT NOT NULL, version_name TEXT NOT NULL, version_code INTEGER NOT NULL, "
    "min_sdk INTEGER NOT NULL, target_sdk INTEGER NOT NULL, permissions TEXT NOT NULL, signer TEXT NOT NULL)",
    "CREATE TABLE items ("
    "id INTEGER PRIMARY KEY AUTOINCREMENT, package INTEGER NOT NULL REFERENCES packages (id) ON DELETE CASCADE, "
    "position INTEGER NOT NULL, entry TEXT NOT NULL, labels TEXT NOT NULL)",
    "CREATE INDEX items_of_package ON items (package, position)",
    "CREATE TABLE icons ("
    "id INTEGER PRIMARY KEY, item INTEGER NOT NULL REFERENCES items (id) ON DELETE CASCADE, "
    "kind INTEGER NOT NULL, png BLOB NOT NULL)",
    "CREATE UNIQUE INDEX icons_of_item ON icons (item, kind)",
    "CREATE TABLE reports ("
    "id INTEGER PRIMARY KEY, package INTEGER NOT NULL REFERENCES packages (id) ON DELETE CASCADE, "
    "content TEXT NOT NULL, report BLOB NOT NULL)",
    "CREATE UNIQUE INDEX reports_of_package ON reports (package, content)",
    "CREATE TABLE words ("
    "package INTEGER PRIMARY KEY REFERENCES packages (id) ON DELETE CASCADE, text TEXT NOT NULL)",
    "CREATE VIRTUAL TABLE search USING fts5 (text, content = 'words', content_rowid = 'package', tokenize = 'trigram')",
    "CREATE TRIGGER words_added AFTER INSERT ON words BEGIN "
    "INSERT INTO search (rowid, text) VALUES (new.package, new.text); END",
    "CREATE TRIGGER words_removed AFTER DELETE ON words BEGIN "
    "INSERT INTO search (search, rowid, text) VALUES ('delete', old.package, old.text); END",
    "CREATE TRIGGER words_changed AFTER UPDATE ON words BEGIN "
    "INSERT INTO search (search, rowid, text) VALUES ('delete', old.package, old.text); "
    "INSERT INTO search (rowid, text) VALUES (new.package, new.text); END",
    nullptr,
};
const char *const *const migrations[Version] = {migrationTo1};

int versionOf(IndexDatabase &database)
{
    return int(database.number(QStringLiteral("PRAGMA user_version")));
}

Kind kindOfSnapshot(IndexDatabase &database)
{
    const qint64 application = database.number(QStringLiteral("PRAGMA application_id"));
    const int version = versionOf(database);
    if (!database.error() && application == 0 && version == 0
        && database.number(QStringLiteral("SELECT count(*) FROM sqlite_master")) == 0 && !database.error())
        return Kind::Empty;
    if (database.error())
        return Kind::Unknown;
    if (application != ApplicationId || version < 1 || version > Version)
        return Kind::Other;
    return version == Version ? Kind::Current : Kind::Older;
}

} // namespace

// In one transaction, because another process may make the tables in between.
Kind kindOf(IndexDatabase &database)
{
    if (!database.execute(QStringLiteral("BEGIN")))
        return Kind::Unknown;
    const Kind kind = kindOfSnapshot(database);
    database.execute(QStringLiteral("ROLLBACK"));
    return kind;
}

// Another process may have prepared the file in between, so the version is read again.
bool prepare(IndexDatabase &database)
{
    // It stays with the file. Not in the transaction: SQLite refuses it there.
    if (!database.execute(QStringLiteral("PRAGMA journal_mode = WAL")) || !database.begin())
        return false;
    int version = versionOf(database);
    if (version > Version) {
        database.rollBack();
        return false;
    }
    for (; version < Version; ++version) {
        for (const char *const *sql = migrations[version]; *sql != nullptr; ++sql)
            database.execute(QString::fromLatin1(*sql));
    }
    database.execute(QStringLiteral("PRAGMA application_id = %1").arg(ApplicationId));
    database.execute(QStringLiteral("PRAGMA user_version = %1").arg(Version));
    return database.commit();
}

} // namespace SorrelKit::IndexSchema
