// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef GENERATEDTABLE_H
#define GENERATEDTABLE_H

#include <QByteArray>

namespace bench {

/// What a generated table is like; two tables that differ in the number of values differ in size alone.
struct TableShape {
    int values;         ///< simple values in all; a multiple of the number of configurations
    int configurations; ///< one without qualifiers, and a locale each
    bool mostlyEmpty;   ///< whether three of four offsets lead to no entry
};

/**
 * A resource table with one application package, as the member resources.arsc holds it. Its resources are spread over
 * as few types as they fit in; the first type is named "string". A quarter of the values are texts of the global pool,
 * which holds a text for every hundred values, as the pool of names does; every sixteenth value is a reference, the
 * others are numbers. When it is not mostly empty, the resource at every fourth index, 0x7f010000 first, is a text.
 *
 * A mostly empty table has four type chunks at least for each type, and the entries of one fill the gaps of the next
 * three: a resource then has a value in every fourth chunk. With one configuration, all chunks are of that. There are
 * no type specs, with which four million values and their gaps would not fit into what the library reads.
 */
QByteArray generatedTable(const TableShape &shape);

} // namespace bench

#endif
