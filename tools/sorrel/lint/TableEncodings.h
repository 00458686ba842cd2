// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TABLEENCODINGS_H
#define TABLEENCODINGS_H

#include <QByteArray>

class TypeChunk;

/**
 * The encodings that the types of a resource table are in (see TypeChunk and EntryView). libsorrel reads only the
 * classic one: dense offsets, no compact entries, and an entry of its own for each simple value. Chunks after a damaged
 * one are not looked at.
 */
class TableEncodings
{
public:
    explicit TableEncodings(const QByteArray &table);

    bool isSparse() const { return m_isSparse; }
    bool hasShortOffsets() const { return m_hasShortOffsets; }
    bool isCompact() const { return m_isCompact; }
    /// Whether resources of a type share an entry with a simple value. libsorrel finds the value for one of them only.
    bool hasSharedEntries() const { return m_hasSharedEntries; }

private:
    void addType(const TypeChunk &type);

    bool m_isSparse = false;
    bool m_hasShortOffsets = false;
    bool m_isCompact = false;
    bool m_hasSharedEntries = false;
};

#endif
