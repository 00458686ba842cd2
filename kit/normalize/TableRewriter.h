// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_TABLEREWRITER_H
#define SORRELKIT_TABLEREWRITER_H

#include "format/ChunkView.h"
#include "limits/Limits.h"
#include "oddity/FormatFault.h"

#include <QByteArray>
#include <QString>

namespace SorrelKit {

/**
 * Rewrites a resource table so that libsorrel reads all of it: every type chunk gets the classic form (see
 * TypeRewriter). All other chunks, and type chunks in that form, are copied byte for byte, and the order of chunks
 * stays. Two things follow from changed types: the sizes of the table and its packages, and the offsets of string pools
 * in the headers of packages. A table header of more than 12 bytes is cut to 12: libsorrel expects the first chunk
 * there. The last chunk of the table or of a package goes when it is cut, as Android ignores it.
 *
 * Meets raw input. Does not check what libsorrel itself refuses, such as a damaged string pool. Needs the memory of the
 * table, of the result and of a TypeRewriter, and time in proportion to their sizes.
 */
class TableRewriter
{
public:
    /// Bytes of a rewritten table, as many as libsorrel reads. Thousands of resources may share one entry, which the
    /// classic form repeats, and a sparse type of one entry may need 256 KiB of offsets for resources without an entry.
    static constexpr qint64 MaxTableBytes = Limits::MaxTableBytes;

    /// Whether libsorrel reads all of @p table: the table can be rewritten, and the result would be the same.
    static bool isClassic(const QByteArray &table);

    /**
     * The rewritten table; @p table itself when it is classic. On a fault, returns an empty array and sets @p fault,
     * which may be null, to NoTable, TableWithinTable, DamagedTableHeader, DamagedTableChunk, DamagedType,
     * DamagedEntry, PoolNotFound or TableTooLarge.
     */
    static QByteArray rewritten(const QByteArray &table, FormatFault *fault = nullptr);

private:
    explicit TableRewriter(const QByteArray &table);

    void measure();
    void measurePackage(const ChunkView &package);
    void measureType(const ChunkView &type);
    void measureEnd(const ChunkList &chunks);
    QByteArray write() const;

    ChunkView m_table;
    ByteView m_rest; ///< the bytes after the table
    FormatFault m_fault = FormatFault::None;
    qint64 m_size = 0; ///< of the result
    bool m_isClassic = true;
};

} // namespace SorrelKit

#endif
