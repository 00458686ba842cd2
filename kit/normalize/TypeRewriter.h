// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_TYPEREWRITER_H
#define SORRELKIT_TYPEREWRITER_H

#include "format/TypeChunk.h"

#include <QByteArray>

#include <vector>

namespace SorrelKit {

/**
 * A type chunk, and its classic form, which libsorrel reads: an offset u32 for each resource; the entries in the order of
 * their resources, from where the header says to the end of the chunk, with nothing between them; none compact. libsorrel
 * goes over the entries as they stand, and keeps simple values alone. So each simple entry has one offset, while a map
 * may be shared there, too: it stands where the first of its resources has it.
 *
 * What the chunk says stays: header and configuration to the last byte, and for each resource the entry that
 * TypeChunk::offset() finds. In a sparse chunk that is the first of several entries for one resource; one that the search
 * cannot find, because the indices do not ascend, is none.
 *
 * Meets raw input. Takes up to 2 MiB for the places of the entries, and up to 5 MiB more while it is made. The bytes of
 * the chunk outlive it.
 */
class TypeRewriter
{
public:
    /// Bytes of a chunk's header, and of an entry's, at most: libsorrel takes these sizes for signed.
    static constexpr int MaxHeaderSize = 0x7fff;

    /// @p chunk is of the type ChunkType::Type.
    explicit TypeRewriter(const ChunkView &chunk);

    /// What is wrong with the chunk, in English; empty when it can be rewritten: "damaged type in resource table",
    /// "damaged entry in resource table". Besides damage, these are larger headers than libsorrel takes.
    QString fault() const { return m_fault; }
    /// Whether the chunk is in the classic form already. Bytes between the offsets and the entries do not count; libsorrel
    /// skips them. Precondition: no fault().
    bool isClassic() const { return m_isClassic; }
    /// Bytes of the classic form. Precondition: no fault().
    qint64 size() const { return m_isClassic ? m_chunk.size() : entriesStart() + m_entriesSize; }
    /// Appends the classic form to @p table, which has room for it. Precondition: no fault(), and size() is below 2 GiB.
    void appendTo(QByteArray *table) const;

private:
    /// Where the entry of a resource comes from, and where it goes.
    struct Place {
        int index;       ///< of the resource
        bool isRepeated; ///< whether the entry stands there already
        qint64 from;     ///< offset in the chunk
        qint64 to;       ///< offset in the classic form
    };

    class MapPlaces;

    bool hasSoundHeader() const;
    bool isInOrder() const;
    std::vector<TypeChunk::Slot> foundSlots() const;
    bool placeAll();
    bool place(const TypeChunk::Slot &slot, MapPlaces *maps);
    qint64 entriesStart() const { return m_chunk.headerSize() + qint64(m_resourceCount) * TypeChunk::OffsetSize; }

    ChunkView m_chunk;
    TypeChunk m_type;
    QString m_fault;
    std::vector<Place> m_places; ///< by index
    int m_resourceCount = 0;     ///< that there will be offsets for
    qint64 m_entriesSize = 0;
    bool m_isClassic = false;
};

} // namespace SorrelKit

#endif
