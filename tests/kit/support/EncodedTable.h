// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ENCODEDTABLE_H
#define ENCODEDTABLE_H

#include "TableBuilder.h"

#include <QByteArray>

namespace fixture {

/**
 * The resource table @p table, which is in the classic form, with its types in another one; with @p isCompact, simple
 * values in entries of 8 bytes. A type whose offsets do not fit the form keeps its own, and values whose keys do not fit
 * keep their entries. Pools come before types, as build tools have them.
 */
QByteArray encodedTable(const QByteArray &table, TableEncoding encoding, bool isCompact);

} // namespace fixture

#endif
