// SPDX-License-Identifier: LGPL-2.1-or-later
//
// bench_shelf fill INDEX FOLDER: fills an index with icons of 96 pixels.
// bench_shelf list INDEX RUNS: prints the median milliseconds of two ways to list the index with its icons, in turns:
// by
//     SQLite alone, and by Shelf. Each opens the file.
// bench_shelf refresh INDEX RUNS: prints the median milliseconds of refreshing an open index that is up to date.

#include <SorrelKit/Shelf.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <sqlite3.h>
#include <string>
#include <vector>

using SorrelKit::Shelf;
using SorrelKit::ShelfIcon;
using SorrelKit::ShelfItem;

namespace {

constexpr int IconSize = 96;

// The columns of ShelfItem, and the icon. The values are read, and their bytes are counted.
qint64 listBySqlite(const QByteArray &index)
{
    sqlite3 *database = nullptr;
    sqlite3_stmt *statement = nullptr;
    qint64 bytes = 0;
    const char *const sql =
        "SELECT items.id, packages.path, state, error_code, error_text, name, entry, labels, version_name, "
        "version_code, "
        "min_sdk, target_sdk, permissions, signer, size, modified, png FROM packages "
        "JOIN items ON items.package = packages.id LEFT JOIN icons ON icons.item = items.id AND kind = 96 "
        "ORDER BY packages.path, items.position";
    if (sqlite3_open_v2(index.constData(), &database, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK
        || sqlite3_prepare_v2(database, sql, -1, &statement, nullptr) != SQLITE_OK)
        return -1;
    std::vector<std::vector<std::string>> rows;
    const int columns = sqlite3_column_count(statement);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        std::vector<std::string> row;
        for (int i = 0; i < columns; ++i) {
            const auto *const value = static_cast<const char *>(sqlite3_column_blob(statement, i));
            row.emplace_back(value == nullptr ? "" : value, size_t(sqlite3_column_bytes(statement, i)));
            bytes += sqlite3_column_bytes(statement, i);
        }
        rows.push_back(std::move(row));
    }
    sqlite3_finalize(statement);
    sqlite3_close(database);
    return bytes;
}

qint64 listByShelf(const QString &index)
{
    Shelf shelf;
    qint64 bytes = 0;
    if (!shelf.open(index, Shelf::Access::ReadOnly))
        return -1;
    for (const ShelfItem &item : shelf.itemsWithIcons(ShelfIcon(IconSize)))
        bytes += item.icon().size();
    return bytes;
}

void refresh(Shelf &shelf)
{
    QEventLoop loop;
    QObject::connect(&shelf, &Shelf::finished, &loop, &QEventLoop::quit);
    shelf.refresh();
    loop.exec();
}

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

double milliseconds(const std::function<void()> &work)
{
    constexpr double perMillisecond = 1e6;
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / perMillisecond;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() != 4)
        return 2;
    const QString mode = arguments.at(1);
    const QString index = arguments.at(2);
    const int runs = std::max(1, arguments.at(3).toInt());
    Shelf shelf;
    if (mode != QLatin1String("list") && !shelf.open(index))
        return 1;
    if (mode == QLatin1String("fill")) {
        shelf.setIcons({ShelfIcon(IconSize)});
        shelf.setFolders({arguments.at(3)});
        refresh(shelf);
        return shelf.error() ? 1 : 0;
    }
    std::vector<double> first;
    std::vector<double> second;
    for (int i = 0; i < runs; ++i) {
        if (mode == QLatin1String("refresh")) {
            first.push_back(milliseconds([&] { refresh(shelf); }));
            continue;
        }
        first.push_back(milliseconds([&] { listBySqlite(QFile::encodeName(index)); }));
        second.push_back(milliseconds([&] { listByShelf(index); }));
    }
    if (second.empty())
        std::printf("%.3f\n", median(first));
    else
        std::printf("%.3f %.3f\n", median(first), median(second));
    return 0;
}
