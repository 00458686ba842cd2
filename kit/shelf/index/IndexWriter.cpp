// SPDX-License-Identifier: LGPL-2.1-or-later
#include "shelf/index/IndexWriter.h"

#include "shelf/index/PathPrefix.h"

#include <QVariant>

#include <algorithm>

namespace SorrelKit {

namespace {

// SQLite stores a null text as NULL.
QString notNull(const QString &text)
{
    return text.isNull() ? QStringLiteral("") : text;
}

QByteArray notNull(const QByteArray &bytes)
{
    return bytes.isNull() ? QByteArray("") : bytes;
}

} // namespace

void IndexWriter::setFolders(const QList<QByteArray> &folders)
{
    m_database.execute(QStringLiteral("DELETE FROM folders"));
    for (const QByteArray &folder : folders)
        runWith(QStringLiteral("INSERT OR IGNORE INTO folders (path) VALUES (?)"), {folder});
}

void IndexWriter::removeBelow(const QList<QByteArray> &folders, const QList<QByteArray> &others)
{
    if (folders.isEmpty())
        return;
    QList<qint64> packages;
    QSqlQuery query = m_database.prepare(QStringLiteral("SELECT id, path FROM packages"));
    for (bool isRun = m_database.run(query); isRun && m_database.next(query);) {
        const QByteArray path = query.value(1).toByteArray();
        if (isBelowAny(path, folders) && !isBelowAny(path, others))
            packages.append(query.value(0).toLongLong());
    }
    query.finish();
    for (const qint64 package : qAsConst(packages))
        remove(package);
}

void IndexWriter::addWaiting(const QByteArray &path)
{
    runWith(
        QStringLiteral("INSERT OR IGNORE INTO packages (path, device, inode, size, modified, changed, drawn, verified, "
                       "state, error_code, error_text, name, version_name, version_code, min_sdk, target_sdk, "
                       "permissions, signer) VALUES (?, 0, 0, -1, 0, 0, '', 0, ?, 0, '', '', '', 0, 0, 0, '', '')"),
        {path, int(ShelfItem::State::Waiting)});
    const qint64 package = packageAt(path, nullptr);
    PackageFacts waiting;
    waiting.items.append(PackageFacts::Item());
    if (itemsOf(package).isEmpty())
        writeItems(package, waiting);
}

void IndexWriter::move(qint64 package, const QByteArray &path, const FileStatus &status)
{
    runWith(QStringLiteral("UPDATE packages SET path = ?, changed = ? WHERE id = ?"), {path, status.changed, package});
    const QList<StoredItem> items = itemsOf(package);
    for (const StoredItem &item : items)
        m_changes.changed.append(item.id);
}

void IndexWriter::remove(qint64 package)
{
    const QList<StoredItem> items = itemsOf(package);
    for (const StoredItem &item : items)
        m_changes.removed.append(item.id);
    runWith(QStringLiteral("DELETE FROM packages WHERE id = ?"), {package});
}

void IndexWriter::write(const QByteArray &path, const FileStatus &status, const PackageFacts &facts,
                        const QByteArray &drawn, bool isVerified)
{
    FileStatus known;
    if (packageAt(path, &known) == 0)
        addWaiting(path);
    const qint64 package = packageAt(path, &known);
    QString signer = facts.signer;
    QString words = facts.words;
    if (isVerified && !facts.isVerified) {
        signer = signerOf(package);
        words += signer;
    }
    runWith(QStringLiteral("UPDATE packages SET device = ?, inode = ?, size = ?, modified = ?, changed = ?, drawn = ?, "
                           "verified = ?, state = ?, error_code = ?, error_text = ?, name = ?, version_name = ?, "
                           "version_code = ?, min_sdk = ?, target_sdk = ?, permissions = ?, signer = ? WHERE id = ?"),
            {status.device, status.inode, status.size, status.modified, status.changed,
             QString::fromLatin1(notNull(drawn)), isVerified ? 1 : 0, int(facts.state), facts.errorCode,
             notNull(facts.errorText), notNull(facts.packageName), notNull(facts.versionName), facts.versionCode,
             facts.minSdkVersion, facts.targetSdkVersion, notNull(facts.permissions), notNull(signer), package});
    if (!(known == status)) {
        runWith(QStringLiteral("DELETE FROM icons WHERE item IN (SELECT id FROM items WHERE package = ?)"), {package});
        runWith(QStringLiteral("DELETE FROM reports WHERE package = ?"), {package});
    }
    writeItems(package, facts);
    runWith(QStringLiteral("DELETE FROM words WHERE package = ?"), {package});
    runWith(QStringLiteral("INSERT INTO words (package, text) VALUES (?, ?)"), {package, notNull(words)});
}

void IndexWriter::writeReport(const QByteArray &path, const QByteArray &content, const QByteArray &report)
{
    if (report.isEmpty())
        return;
    runWith(QStringLiteral("INSERT OR REPLACE INTO reports (package, content, report) VALUES (?, ?, ?)"),
            {packageAt(path, nullptr), QString::fromLatin1(content), report});
}

QList<qint64> IndexWriter::writeIcons(const QByteArray &path, const FileStatus &status, const PackageFacts &facts,
                                      qint64 kind)
{
    QList<qint64> ids;
    FileStatus known;
    const qint64 package = packageAt(path, &known);
    if (package == 0 || !(known == status))
        return ids;
    const QList<StoredItem> items = itemsOf(package);
    for (const StoredItem &item : items) {
        const auto drawn = std::find_if(facts.items.cbegin(), facts.items.cend(), [&](const PackageFacts::Item &each) {
            return each.entry == item.entry && !each.icons.isEmpty();
        });
        writeIconsOf(item.id, drawn == facts.items.cend() ? QVector<PackageFacts::Icon>{{kind, {}}} : drawn->icons);
        ids.append(item.id);
    }
    return ids;
}

// An item whose launcher remains keeps its id, and so does the single item of a package without a launcher that gets
// its first one, or that loses its last one.
void IndexWriter::writeItems(qint64 package, const PackageFacts &facts)
{
    QList<StoredItem> stored = itemsOf(package);
    QVector<qint64> ids(facts.items.size(), 0);
    const auto keep = [&](int i, const auto &isKept) {
        const auto found = std::find_if(stored.begin(), stored.end(), isKept);
        if (ids.at(i) != 0 || found == stored.end())
            return;
        ids[i] = found->id;
        stored.erase(found);
    };
    for (int i = 0; i < int(facts.items.size()); ++i)
        keep(i, [&](const StoredItem &each) { return each.entry == facts.items.at(i).entry; });
    for (int i = 0; i < int(facts.items.size()); ++i)
        keep(i, [&](const StoredItem &each) { return each.entry.isEmpty() || facts.items.at(i).entry.isEmpty(); });
    for (const StoredItem &gone : qAsConst(stored)) {
        runWith(QStringLiteral("DELETE FROM items WHERE id = ?"), {gone.id});
        m_changes.removed.append(gone.id);
    }
    for (int i = 0; i < int(facts.items.size()); ++i) {
        const PackageFacts::Item &item = facts.items.at(i);
        if (ids.at(i) != 0) {
            runWith(QStringLiteral("UPDATE items SET position = ?, entry = ?, labels = ? WHERE id = ?"),
                    {i, notNull(item.entry), notNull(item.labels), ids.at(i)});
            m_changes.changed.append(ids.at(i));
        } else {
            QSqlQuery query = m_database.prepare(
                QStringLiteral("INSERT INTO items (package, position, entry, labels) VALUES (?, ?, ?, ?)"));
            query.addBindValue(package);
            query.addBindValue(i);
            query.addBindValue(notNull(item.entry));
            query.addBindValue(notNull(item.labels));
            m_database.run(query);
            ids[i] = query.lastInsertId().toLongLong();
            m_changes.added.append(ids.at(i));
        }
        writeIconsOf(ids.at(i), item.icons);
    }
}

void IndexWriter::writeIconsOf(qint64 item, const QVector<PackageFacts::Icon> &icons)
{
    for (const PackageFacts::Icon &icon : icons)
        runWith(QStringLiteral("INSERT OR REPLACE INTO icons (item, kind, png) VALUES (?, ?, ?)"),
                {item, icon.kind, notNull(icon.png)});
}

qint64 IndexWriter::packageAt(const QByteArray &path, FileStatus *status)
{
    QSqlQuery query = m_database.prepare(
        QStringLiteral("SELECT id, device, inode, size, modified, changed FROM packages WHERE path = ?"));
    query.addBindValue(path);
    if (!m_database.run(query) || !m_database.next(query))
        return 0;
    if (status != nullptr)
        *status = {query.value(1).toLongLong(), query.value(2).toLongLong(), query.value(3).toLongLong(),
                   query.value(4).toLongLong(), query.value(5).toLongLong()};
    return query.value(0).toLongLong();
}

QString IndexWriter::signerOf(qint64 package)
{
    QSqlQuery query = m_database.prepare(QStringLiteral("SELECT signer FROM packages WHERE id = ?"));
    query.addBindValue(package);
    return m_database.run(query) && m_database.next(query) ? query.value(0).toString() : QString();
}

QList<IndexWriter::StoredItem> IndexWriter::itemsOf(qint64 package)
{
    QList<StoredItem> items;
    QSqlQuery query =
        m_database.prepare(QStringLiteral("SELECT id, entry FROM items WHERE package = ? ORDER BY position"));
    query.addBindValue(package);
    for (bool isRun = m_database.run(query); isRun && m_database.next(query);)
        items.append({query.value(0).toLongLong(), query.value(1).toString()});
    return items;
}

IndexWriter::Changes IndexWriter::takeChanges()
{
    Changes changes;
    std::swap(changes, m_changes);
    return changes;
}

void IndexWriter::runWith(const QString &sql, const QList<QVariant> &values)
{
    QSqlQuery query = m_database.prepare(sql);
    for (const QVariant &value : values)
        query.addBindValue(value);
    m_database.run(query);
}

} // namespace SorrelKit
