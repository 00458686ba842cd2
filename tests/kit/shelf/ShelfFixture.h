// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SHELFFIXTURE_H
#define SHELFFIXTURE_H

#include <QByteArray>
#include <QColor>
#include <QMap>
#include <QString>
#include <QStringList>

#include <SorrelKit/Shelf.h>

namespace fixture {

/// A package for a shelf: its name, its labels by language ("" for every language), its launchers, and the colour of
/// its icon.
struct ShelfPackage {
    QString name = QStringLiteral("org.example.notes");
    QMap<QString, QString> labels = {{QString(), QStringLiteral("Notes")}};
    int launchers = 1;
    QRgb color = 0xff336699;
    int minSdk = 0; ///< 0 for none
    QString permission = QStringLiteral("android.permission.CAMERA");

    QByteArray build() const;
};

/// Waits for the end of a refresh of @p shelf, which it starts. Returns whether it ended within a minute.
bool refreshed(SorrelKit::Shelf &shelf);
/// The labels of all items of @p shelf in the order of their paths.
QStringList labelsOf(const SorrelKit::Shelf &shelf);

} // namespace fixture

#endif
