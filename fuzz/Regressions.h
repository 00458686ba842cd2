// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef REGRESSIONS_H
#define REGRESSIONS_H

#include "ZipBuilder.h"

#include <QVector>

/*
 * Inputs that once did harm, each by its name and as small as shows it. The replay runs them in every test run, and the
 * fuzzers start from them, too.
 */

QVector<fixture::Member> tableRegressions();
QVector<fixture::Member> documentRegressions();
/// Of whole packages, as archives.
QVector<fixture::Member> packageRegressions();
QVector<fixture::Member> pictureRegressions();

#endif
