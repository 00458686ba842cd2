// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef GENERATEDTABLE_H
#define GENERATEDTABLE_H

#include <QByteArray>

namespace bench {

/// The shape of a generated table. Two tables that differ in the number of values differ in size alone.
struct TableShape {
    int values;         ///< simple values in all; a multiple of the number of configurations
    int configurations; ///< one without qualifiers, and a locale each
    bool mostlyEmpty;   ///< whether three of four offsets lead to no entry
};

/**
 * A compiled resource table with one application package. Its resources fill as few types as possible; the first type
 * is named "string". A quarter of the values are texts, every sixteenth value is a reference, the others are numbers.
 * The pool of texts and the pool of names have one string for every hundred values. In a table that is not mostly
 * empty, the resource at every fourth index, 0x7f010000 first, is a text.
 *
 * A mostly empty table has at least four type chunks for each type. The entries of one chunk fill the gaps of the
 * next three, so a resource has a value in every fourth chunk. With one configuration, all chunks are for that one.
 * Type specs are left out unless asked for: with them, four million values and their gaps would exceed the largest
 * table that the library reads.
 */
QByteArray generatedTable(const TableShape &shape);

} // namespace bench

#endif
