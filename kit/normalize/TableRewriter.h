// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_TABLEREWRITER_H
#define SORRELKIT_TABLEREWRITER_H

#include "format/ChunkView.h"
#include "format/Limits.h"

#include <QByteArray>
#include <QString>

namespace SorrelKit {

/**
 * Rewrites a resource table so that libsorrel reads all of it: every type chunk gets the classic form (see TypeRewriter).
 * A type chunk that has it, and every other chunk, stays as it is to the byte, and so does the order of them all. What
 * changes besides are the sizes of the table and its packages, and where a package's header says that its pools are, when
 * a type before them has changed its size. A table header of more than 12 bytes is cut to these, behind which libsorrel
 * expects the first chunk.
 *
 * What libsorrel itself refuses, such as a damaged string pool, is not looked at. Meets raw input. Takes the table and the
 * result, and what a TypeRewriter takes; the time goes with their sizes.
 */
class TableRewriter
{
public:
    /// Bytes of a rewritten table at most: those that libsorrel reads. Thousands of resources may share one entry, which
    /// the classic form repeats, and a sparse type of one entry may take 256 KiB for the offsets of those that have none.
    static constexpr qint64 MaxTableBytes = Limits::MaxTableBytes;

    /// Whether libsorrel reads @p table as it is: the table can be rewritten, and nothing in it would change.
    static bool isClassic(const QByteArray &table);

    /**
     * The table rewritten; @p table itself when it is classic. On a fault an empty array, and @p fault, which may be null,
     * is set to what it is, in English:
     *
     * | fault                                  | meaning                                                         |
     * |----------------------------------------|-----------------------------------------------------------------|
     * | "not a resource table"                 | no table chunk that ends within the bytes                       |
     * | "damaged header in resource table"     | that of the table or a package does not have the fields it should |
     * | "damaged chunk in resource table"      | a chunk ends after the one around it, or is no chunk            |
     * | "table within resource table"          |                                                                 |
     * | "string pool not found in resource table" | a package's header leads to no chunk                         |
     * | "damaged type in resource table"       | TypeRewriter::fault()                                           |
     * | "damaged entry in resource table"      | TypeRewriter::fault()                                           |
     * | "resource table takes too much memory" | rewritten, it would exceed MaxTableBytes                        |
     */
    static QByteArray rewritten(const QByteArray &table, QString *fault = nullptr);

private:
    explicit TableRewriter(const QByteArray &table);

    void measure();
    void measurePackage(const ChunkView &package);
    void measureType(const ChunkView &type);
    QByteArray write() const;

    ChunkView m_table;
    ByteView m_rest; ///< what follows the table
    QString m_fault;
    qint64 m_size = 0; ///< of the result
    bool m_isClassic = true;
};

} // namespace SorrelKit

#endif
