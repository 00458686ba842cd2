// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELQML_SHELFROW_H
#define SORRELQML_SHELFROW_H

#include <SorrelKit/Shelf.h>

#include <QByteArray>
#include <QList>
#include <QLocale>
#include <QString>
#include <QVector>

namespace SorrelQml {

/// A row of a ShelfModel: an item of the index, and its label in the locale of the model.
struct ShelfRow {
    SorrelKit::ShelfItem item;
    QString label;

    qint64 id() const { return item.id(); }
    /// Whether a view shows both in the same way.
    bool looksLike(const ShelfRow &other) const;
};

using ShelfRows = QVector<ShelfRow>;

/// Which rows a model has, and in which order.
struct RowRequest {
    /// The folders whose packages are shown, in the bytes of the system; empty for all of the index.
    QList<QByteArray> folders;
    /// Only rows that Shelf::find() finds; all rows when it has no word.
    QString search;
    /// The name of the locale for labels and for the order; empty for the default one.
    QString locale;
    /// Whether readable packages without a launcher have no row.
    bool launchersOnly = false;

    /// The locale for labels and for the order.
    QLocale language() const { return locale.isEmpty() ? QLocale() : QLocale(locale); }
    /// Whether @p item has a row, whatever the search.
    bool accepts(const SorrelKit::ShelfItem &item) const;
    /// Reads the rows from @p shelf, and sorts them as QCollator does by their labels; equal ones by the name of the
    /// package, then by the id. Use it in the thread of the shelf.
    ShelfRows read(const SorrelKit::Shelf &shelf) const;
};

} // namespace SorrelQml

#endif
