// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef KITSEEDS_H
#define KITSEEDS_H

#include "ZipBuilder.h"

#include <QByteArray>
#include <QString>
#include <QVector>

/*
 * The surroundings and the seeds of the inputs of the kit's harnesses. All use one table and its files: colours, a
 * colour state list, a gradient, pictures, a vector, and layers that refer to the input drawable.
 */

constexpr quint32 InputDrawable = 0x7f020000;
/// The path of the input drawable's file.
QString inputPath();

/// The table and the files that it names, without the file at inputPath().
QByteArray kitTable();
QVector<fixture::Member> kitFiles();

/// Seeds of the drawable harness: some made here, and the drawables of the sample packages in @p samples that are
/// built.
QVector<fixture::Member> drawableSeeds(const QString &samples);
/// Seeds of the path harness: bytes that choose the path and the way it is painted.
QVector<fixture::Member> pathSeeds();
/// Seeds of the package harness: tables with manifests, packages and sets.
QVector<fixture::Member> kitPackageSeeds();

/// Inputs that once crashed or ran long, reduced and named after the fault.
QVector<fixture::Member> drawableRegressions();
QVector<fixture::Member> kitPackageRegressions();

#endif
