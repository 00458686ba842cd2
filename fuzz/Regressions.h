// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef REGRESSIONS_H
#define REGRESSIONS_H

#include "ZipBuilder.h"

#include <QVector>

/*
 * Inputs that once crashed or ran long, reduced and named after the fault. The replay runs them in every test run, and
 * the fuzzers use them as seeds.
 */

QVector<fixture::Member> tableRegressions();
QVector<fixture::Member> documentRegressions();
/// Whole packages, as archives.
QVector<fixture::Member> packageRegressions();
QVector<fixture::Member> pictureRegressions();

#endif
