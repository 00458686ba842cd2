// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TOCSEEDS_H
#define TOCSEEDS_H

#include "ZipBuilder.h"

#include <QVector>

/// Seeds of the harness for tables of contents: one with every field that is read, and one as bundletool writes them.
QVector<fixture::Member> tocSeeds();

#endif
