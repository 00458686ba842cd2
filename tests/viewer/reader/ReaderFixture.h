// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef READERFIXTURE_H
#define READERFIXTURE_H

#include <QByteArray>

/// Packages for tests of the viewer's reader.
namespace fixture {

/// The package org.example.notes, 1.5 (7), for API levels 24 to 30, with English and German labels. It requests three
/// permissions, has a launcher that is shown and another one that is not, a red icon of 8 pixels, a drawable whose file
/// is missing, and an array.
QByteArray notesPackage();
/// A set of that package and a split for German, which is compressed in the set; with another file.
QByteArray notesSet();
/// The package @p zip, signed by scheme v2.
QByteArray signedPackage(const QByteArray &zip);

} // namespace fixture

#endif
