// SPDX-License-Identifier: LGPL-2.1-or-later
#include "rows/ShelfRow.h"

#include "rows/ShortText.h"

#include <QCollator>

#include <algorithm>
#include <vector>

namespace SorrelQml {

using SorrelKit::Shelf;
using SorrelKit::ShelfItem;

namespace {

struct SortedRow {
    ShelfRow row;
    QCollatorSortKey key;

    bool operator<(const SortedRow &other) const
    {
        const int order = key.compare(other.key);
        if (order != 0)
            return order < 0;
        const int names = QString::compare(row.item.packageName(), other.row.item.packageName());
        return names != 0 ? names < 0 : row.id() < other.row.id();
    }
};

bool isBelow(const QByteArray &path, const QList<QByteArray> &folders)
{
    return std::any_of(folders.cbegin(), folders.cend(), [&](const QByteArray &folder) {
        return path.startsWith(folder) && (folder.endsWith('/') || path.mid(folder.size(), 1) == "/");
    });
}

} // namespace

bool ShelfRow::looksLike(const ShelfRow &other) const
{
    return label == other.label && item.state() == other.item.state() && item.modified() == other.item.modified()
           && item.nativePath() == other.item.nativePath() && item.packageName() == other.item.packageName()
           && item.entryName() == other.item.entryName() && item.versionName() == other.item.versionName()
           && item.errorText() == other.item.errorText();
}

bool RowRequest::accepts(const ShelfItem &item) const
{
    const bool hasNoLauncher = item.state() == ShelfItem::State::Ready && item.entryName().isEmpty();
    return !(launchersOnly && hasNoLauncher) && (folders.isEmpty() || isBelow(item.nativePath(), folders));
}

ShelfRows RowRequest::read(const Shelf &shelf) const
{
    const QCollator collator(language());
    const QList<ShelfItem> items = search.trimmed().isEmpty() ? shelf.items() : shelf.find(search);
    const QStringList labels = ShelfItem::labelsOf(items, language());
    std::vector<SortedRow> sorted;
    sorted.reserve(std::size_t(items.size()));
    for (int i = 0; i < int(items.size()); ++i) {
        const ShelfItem &item = items.at(i);
        if (!accepts(item))
            continue;
        const QString label = shortText(labels.at(i));
        sorted.push_back({{item, label}, collator.sortKey(label)});
    }
    std::sort(sorted.begin(), sorted.end());
    ShelfRows rows;
    rows.reserve(int(sorted.size()));
    for (const SortedRow &row : sorted)
        rows.append(row.row);
    return rows;
}

} // namespace SorrelQml
