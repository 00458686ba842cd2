// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FORMATFAULT_H
#define FORMATFAULT_H

#include <QString>

/// Why a resource table or a binary XML document cannot be read to its end, or a table cannot be rewritten.
enum class FormatFault {
    None,

    NoDocument,      ///< not a document chunk that ends within the bytes
    DamagedDocument, ///< a damaged chunk, or an element without an end
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
    DamagedType,        ///< a type chunk whose offsets do not end within it
    DamagedEntry,       ///< an entry that does not end within its chunk
    PoolNotFound,       ///< the header of a package leads to no string pool
    TooManyPackages,    ///< more than Limits::MaxPackages
    TooManyTypes,       ///< more than ResourceTable::MaxTypeChunks
    TableTooLarge,      ///< the rewritten table would exceed TableRewriter::MaxTableBytes
};

/// The text of @p fault in English ("damaged chunk in resource table"); empty for FormatFault::None.
QString formatFaultText(FormatFault fault);

#endif
