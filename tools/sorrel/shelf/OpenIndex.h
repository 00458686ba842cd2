// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef OPENINDEX_H
#define OPENINDEX_H

#include "shelf/index/IndexFile.h"

#include <QString>

/// Opens the index @p argument, or that of the user when it is empty. Prints an error, also when another file is used
/// instead. Returns whether an index is open.
bool openIndex(const QString &argument, bool isReadOnly, SorrelKit::IndexFile *file);

#endif
