// SPDX-License-Identifier: LGPL-2.1-or-later
//
// package-shelf INDEX FOLDER...: prints the launchers of all packages below the folders from an index, brings the index
// up to date, and prints what is new. The second run prints the same at once.

#include <SorrelKit/Shelf.h>

#include <QCoreApplication>
#include <QTextStream>

using SorrelKit::Shelf;
using SorrelKit::ShelfItem;

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QStringList folders = application.arguments().mid(1);
    QTextStream output(stdout);
    QTextStream errors(stderr);
    if (folders.size() < 2) {
        errors << "usage: package-shelf INDEX FOLDER...\n";
        return 2;
    }

    Shelf shelf;
    shelf.open(folders.takeFirst());
    if (shelf.error())
        errors << shelf.error().text() << '\n'; // another file may be open all the same
    if (!shelf.isOpen() || !shelf.setFolders(folders))
        return 1;

    const auto print = [&](const ShelfItem &item) {
        const QString fault = item.errorText().isEmpty() ? QString() : QStringLiteral(" (%1)").arg(item.errorText());
        if (item.state() != ShelfItem::State::Waiting)
            output << item.label() << '\t' << item.packageName() << '\t' << item.path() << fault << '\n';
    };
    for (const ShelfItem &item : shelf.items())
        print(item);

    QObject::connect(&shelf, &Shelf::itemsChanged, &shelf, [&](const QList<qint64> &ids) {
        for (const qint64 id : ids)
            print(shelf.item(id));
    });
    QObject::connect(&shelf, &Shelf::finished, &shelf, [&] {
        if (shelf.error())
            errors << shelf.error().text() << '\n';
        QCoreApplication::exit(shelf.error() ? 1 : 0);
    });
    shelf.refresh();
    return QCoreApplication::exec();
}
