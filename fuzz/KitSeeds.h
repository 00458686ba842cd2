// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef KITSEEDS_H
#define KITSEEDS_H

#include "ZipBuilder.h"

#include <QByteArray>
#include <QString>
#include <QVector>

/*
 * What the kit's harnesses have around their input, and what they start from. One table and its files serve both: colours,
 * a colour state list, a gradient, pictures, a vector, and layers that lead back to the drawable that is the input.
 */

constexpr quint32 InputDrawable = 0x7f020000;
/// The path of that drawable's file.
QString inputPath();

/// The table, and the files that it names, without the one at inputPath().
QByteArray kitTable();
QVector<fixture::Member> kitFiles();

/// Drawables, for the harness of drawables: some made here, and those of the sample packages in @p samples that are built.
QVector<fixture::Member> drawableSeeds(const QString &samples);
/// Paths, for the harness of paths: bytes that choose what is painted, and how.
QVector<fixture::Member> pathSeeds();
/// Tables with manifests, packages and sets, for the harness of packages.
QVector<fixture::Member> kitPackageSeeds();

/// Inputs that once did harm, each by its name and as small as shows it.
QVector<fixture::Member> drawableRegressions();
QVector<fixture::Member> kitPackageRegressions();

#endif
