// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ENTRYOFFSETS_H
#define ENTRYOFFSETS_H

#include <QVarLengthArray>

class Extractor;

/// One offset of a type chunk, and the index of its entry.
struct EntryOffset {
    qint32 offset;
    int entry;
};
Q_DECLARE_TYPEINFO(EntryOffset, Q_PRIMITIVE_TYPE);

/**
 * The dense offset array of a type chunk (see TypeChunk), for the reverse question: which entry starts at an offset? Of
 * several entries with one offset, the last one. TypeChunk::NoDenseOffset is never found.
 *
 * Entries are read in their order in the file, which usually is that of their indices. Asking for ascending offsets
 * costs a step each, anything else a binary search.
 */
class EntryOffsets
{
public:
    /// Reads the offsets of @p count entries from @p reader, or as many as come before a fault.
    EntryOffsets(Extractor *reader, int count);

    /// Number of entries that have an offset.
    int count() const { return int(m_items.size()); }

    /// Index of the entry at @p offset, or -1.
    int entryAt(qint64 offset)
    {
        const EntryOffset *next = m_items.constData() + m_next;
        if (m_next + 1 >= m_items.size() || next[0].offset != offset || next[1].offset == offset)
            return search(offset);
        ++m_next;
        return next->entry;
    }

private:
    int search(qint64 offset);

    QVarLengthArray<EntryOffset, 128> m_items; ///< by offset, then by entry
    int m_next = 0;                            ///< the item after the one found last
};

#endif
