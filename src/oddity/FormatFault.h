// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FORMATFAULT_H
#define FORMATFAULT_H

#include <QString>

/// Why a resource table or a binary XML document cannot be read to its end, or a table cannot be rewritten.
enum class FormatFault {
    None,

    NoDocument,      ///< not a document that ends within the bytes
    DamagedDocument, ///< a damaged chunk
    DamagedPool,     ///< a document without a string pool, or with a damaged one
    DamagedElement,  ///< attributes that do not end within their element
    UnnamedElement,  ///< an element without a name
    NoElement,       ///< a document without an element
    ElementsTooDeep, ///< more than Limits::MaxElementDepth
    TooManyNodes,    ///< more than Limits::MaxNodes
    TextsTooLong,    ///< more than XmlReader::MaxCharacters

    NoTable,            ///< not a table chunk that ends within the bytes
    TableWithinTable,   ///< a table chunk in a table
    DamagedTableHeader, ///< the header of the table or of a package lacks fields
    DamagedTableChunk,  ///< bytes that are no chunk, or a chunk that ends after the one around it
    DamagedTablePool,   ///< a string pool that is not sound
    UncountedPackage,   ///< more packages than the header of the table counts
    DamagedTypeSpec,    ///< a type spec without a type, or with more resources than its package has room for
    UnspecifiedType,    ///< a type chunk without a type spec before it
    DamagedLibrary,     ///< a list of libraries that does not end within its chunk, or with a wrong package id
    DamagedOverlay,     ///< a list of resources that others may overlay, which does not end within its chunk
    DamagedAliases,     ///< a list of staged aliases that does not end within its chunk, or has one twice
    DamagedType,        ///< a type chunk without a type, or whose offsets do not end within it
    DamagedEntry,       ///< an entry that does not end within its chunk
    PoolNotFound,       ///< the header of a package leads to no string pool
    TooManyPackages,    ///< more than Limits::MaxPackages
    TooManyTypes,       ///< more than ResourceTable::MaxTypeChunks
    TooManyAliases,     ///< more than ResourceTable::MaxAliases
    TableTooLarge,      ///< the rewritten table would exceed TableRewriter::MaxTableBytes
};

/// The text of @p fault in English ("damaged chunk in resource table"); empty for FormatFault::None.
QString formatFaultText(FormatFault fault);

#endif
