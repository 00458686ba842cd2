// SPDX-License-Identifier: LGPL-2.1-or-later
#include "shelf/index/IndexReader.h"

#include "shelf/index/IconKind.h"
#include "shelf/index/ShelfItemData.h"
#include "shelf/index/ShelfTexts.h"

#include <QVariant>

namespace SorrelKit {

namespace {

/// The shortest word that the full-text search finds by its trigrams. Shorter ones, as many Chinese words are, are
/// searched in the texts themselves.
constexpr int TrigramUnits = 3;

#define SORREL_ITEM_COLUMNS                                                                                            \
    "items.id, packages.path, state, error_code, error_text, name, entry, labels, version_name, version_code, "        \
    "min_sdk, target_sdk, permissions, signer, size, modified"
#define SORREL_ITEM_TABLES "packages JOIN items ON items.package = packages.id"
#define SORREL_ITEM_ORDER " ORDER BY packages.path, items.position"

/// The columns of SORREL_ITEM_COLUMNS.
enum Column : int {
    IdColumn,
    PathColumn,
    StateColumn,
    ErrorCodeColumn,
    ErrorTextColumn,
    NameColumn,
    EntryColumn,
    LabelsColumn,
    VersionNameColumn,
    VersionCodeColumn,
    MinSdkColumn,
    TargetSdkColumn,
    PermissionsColumn,
    SignerColumn,
    SizeColumn,
    ModifiedColumn,
    PngColumn,
};

// A phrase of the full-text search.
QString quoted(QString word)
{
    return QLatin1Char('"') + word.replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

} // namespace

QList<ShelfItem> IndexReader::items() const
{
    QSqlQuery query =
        m_database.prepare(QStringLiteral("SELECT " SORREL_ITEM_COLUMNS " FROM " SORREL_ITEM_TABLES SORREL_ITEM_ORDER));
    return take(query, false);
}

QList<ShelfItem> IndexReader::itemsWithIcons(const ShelfIcon &kind) const
{
    QSqlQuery query =
        m_database.prepare(QStringLiteral("SELECT " SORREL_ITEM_COLUMNS ", png FROM " SORREL_ITEM_TABLES
                                          " LEFT JOIN icons ON icons.item = items.id AND kind = ?" SORREL_ITEM_ORDER));
    query.addBindValue(IconKind::number(kind));
    return take(query, true);
}

ShelfItem IndexReader::item(qint64 id) const
{
    QSqlQuery query = m_database.prepare(QStringLiteral("SELECT " SORREL_ITEM_COLUMNS " FROM items JOIN packages "
                                                        "ON packages.id = items.package WHERE items.id = ?"));
    query.addBindValue(id);
    const QList<ShelfItem> items = take(query, false);
    return items.isEmpty() ? ShelfItem() : items.constFirst();
}

QList<ShelfItem> IndexReader::find(const QString &words) const
{
    QStringList phrases;
    QStringList shortWords;
    const QStringList all = ShelfTexts::folded(words).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString &word : all.mid(0, MaxWords))
        (word.size() >= TrigramUnits ? phrases : shortWords).append(word);
    if (phrases.isEmpty() && shortWords.isEmpty())
        return {};
    QStringList conditions;
    if (!phrases.isEmpty())
        conditions.append(QStringLiteral("packages.id IN (SELECT rowid FROM search WHERE search MATCH ?)"));
    for (int i = 0; i < int(shortWords.size()); ++i)
        conditions.append(QStringLiteral("packages.id IN (SELECT package FROM words WHERE instr(text, ?))"));
    QSqlQuery query =
        m_database.prepare(QStringLiteral("SELECT " SORREL_ITEM_COLUMNS " FROM " SORREL_ITEM_TABLES " WHERE ")
                           + conditions.join(QLatin1String(" AND ")) + QStringLiteral(SORREL_ITEM_ORDER));
    if (!phrases.isEmpty()) {
        for (QString &phrase : phrases)
            phrase = quoted(phrase);
        query.addBindValue(phrases.join(QLatin1String(" AND ")));
    }
    for (const QString &word : qAsConst(shortWords))
        query.addBindValue(word);
    return take(query, false);
}

QList<ShelfItem> IndexReader::take(QSqlQuery &query, bool hasIcon) const
{
    QList<ShelfItem> items;
    if (!m_database.run(query))
        return items;
    while (m_database.next(query)) {
        auto *const data = new ShelfItemData;
        data->id = query.value(IdColumn).toLongLong();
        data->path = query.value(PathColumn).toByteArray();
        // Damage that SQLite cannot see may be any number.
        data->state = ShelfItem::State(qBound(0, query.value(StateColumn).toInt(), int(ShelfItem::State::Broken)));
        data->errorCode = query.value(ErrorCodeColumn).toInt();
        data->errorText = query.value(ErrorTextColumn).toString();
        data->packageName = query.value(NameColumn).toString();
        data->entryName = query.value(EntryColumn).toString();
        data->labels = query.value(LabelsColumn).toString();
        data->versionName = query.value(VersionNameColumn).toString();
        data->versionCode = query.value(VersionCodeColumn).toLongLong();
        data->minSdkVersion = query.value(MinSdkColumn).toInt();
        data->targetSdkVersion = query.value(TargetSdkColumn).toInt();
        data->permissions = query.value(PermissionsColumn).toString();
        data->signer = query.value(SignerColumn).toString();
        data->fileSize = qMax(qint64(0), query.value(SizeColumn).toLongLong());
        data->modified = query.value(ModifiedColumn).toLongLong();
        if (hasIcon)
            data->icon = query.value(PngColumn).toByteArray();
        items.append(ShelfItemAccess::item(data));
    }
    return items;
}

QByteArray IndexReader::icon(qint64 item, const ShelfIcon &kind, ShelfIcon::State *state) const
{
    QSqlQuery query = m_database.prepare(QStringLiteral("SELECT png FROM icons WHERE item = ? AND kind = ?"));
    query.addBindValue(item);
    query.addBindValue(IconKind::number(kind));
    const bool isStored = m_database.run(query) && m_database.next(query);
    QByteArray png = isStored ? query.value(0).toByteArray() : QByteArray();
    if (state != nullptr) {
        const ShelfIcon::State stored = png.isEmpty() ? ShelfIcon::State::Missing : ShelfIcon::State::Ready;
        *state = isStored ? stored : ShelfIcon::State::NotStored;
    }
    return png;
}

QList<QByteArray> IndexReader::folders() const
{
    QList<QByteArray> folders;
    QSqlQuery query = m_database.prepare(QStringLiteral("SELECT path FROM folders ORDER BY path"));
    for (bool isRun = m_database.run(query); isRun && m_database.next(query);)
        folders.append(query.value(0).toByteArray());
    return folders;
}

QHash<QByteArray, IndexReader::KnownFile> IndexReader::files() const
{
    QHash<QByteArray, KnownFile> files;
    QSqlQuery query = m_database.prepare(
        QStringLiteral("SELECT path, id, device, inode, size, modified, changed, drawn, verified FROM packages"));
    for (bool isRun = m_database.run(query); isRun && m_database.next(query);) {
        KnownFile file;
        int column = 0;
        const QByteArray path = query.value(column++).toByteArray();
        for (qint64 *number : {&file.id, &file.status.device, &file.status.inode, &file.status.size,
                               &file.status.modified, &file.status.changed})
            *number = query.value(column++).toLongLong();
        file.drawn = query.value(column++).toByteArray();
        file.isVerified = query.value(column).toBool();
        files.insert(path, file);
    }
    return files;
}

QSet<QByteArray> IndexReader::filesWithoutIcon(const QList<qint64> &ids, const ShelfIcon &kind) const
{
    QSet<QByteArray> paths;
    QSqlQuery query = m_database.prepare(
        QStringLiteral("SELECT path FROM items JOIN packages ON packages.id = items.package WHERE items.id = ? "
                       "AND NOT EXISTS (SELECT 1 FROM icons WHERE item = items.id AND kind = ?)"));
    for (const qint64 id : ids) {
        query.bindValue(0, id);
        query.bindValue(1, IconKind::number(kind));
        if (!m_database.run(query))
            break;
        if (m_database.next(query))
            paths.insert(query.value(0).toByteArray());
    }
    return paths;
}

QSet<qint64> IndexReader::reported(const QByteArray &content) const
{
    QSet<qint64> packages;
    QSqlQuery query = m_database.prepare(QStringLiteral("SELECT package FROM reports WHERE content = ?"));
    query.addBindValue(QString::fromLatin1(content));
    for (bool isRun = m_database.run(query); isRun && m_database.next(query);)
        packages.insert(query.value(0).toLongLong());
    return packages;
}

IndexReader::Report IndexReader::report(const QByteArray &path, const QByteArray &content) const
{
    QSqlQuery query =
        m_database.prepare(QStringLiteral("SELECT report, error_code, error_text FROM packages LEFT JOIN reports "
                                          "ON package = packages.id AND content = ? WHERE path = ?"));
    query.addBindValue(QString::fromLatin1(content));
    query.addBindValue(path);
    if (!m_database.run(query) || !m_database.next(query))
        return {};
    return {query.value(0).toByteArray(), query.value(1).toInt(), query.value(2).toString()};
}

} // namespace SorrelKit
