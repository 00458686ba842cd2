// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TABLESCAN_H
#define TABLESCAN_H

#include "RawBytes.h"

/**
 * Tells in which forms a resource table keeps its types, of which libsorrel reads the classic one alone: an offset of
 * 32 bits for each entry, and an entry for each value. Goes over the chunks and the offsets once, until one is damaged.
 */
class TableScan
{
public:
    explicit TableScan(const QByteArray &bytes);

    bool isSparse() const { return m_isSparse; }
    bool hasShortOffsets() const { return m_hasShortOffsets; }
    bool isCompact() const { return m_isCompact; }
    /// Whether several resources of a type have one entry, with a simple value. libsorrel reads no value of others.
    bool hasSharedEntries() const { return m_hasSharedEntries; }

private:
    void scanChunks(qint64 at, qint64 end, bool isInPackage);
    void scanType(qint64 at, qint64 headerSize, qint64 size);

    RawBytes m_bytes;
    bool m_isSparse = false;
    bool m_hasShortOffsets = false;
    bool m_isCompact = false;
    bool m_hasSharedEntries = false;
};

#endif
