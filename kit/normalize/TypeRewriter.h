// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_TYPEREWRITER_H
#define SORRELKIT_TYPEREWRITER_H

#include "format/TypeChunk.h"
#include "oddity/FormatFault.h"

#include <QByteArray>

#include <vector>

namespace SorrelKit {

/**
 * Rewrites a type chunk in the classic form that libsorrel reads:
 *
 * - an offset u32 for each resource;
 * - the entries in the order of their resources, from the offset in the header to the end of the chunk, without gaps;
 * - no compact entries.
 *
 * libsorrel reads the entries one after another and keeps only simple values. Each simple entry therefore has one
 * offset. Resources may share a map; it is stored at the place of the first of them.
 *
 * Header and configuration are copied byte for byte, and each resource keeps the entry that TypeChunk::offset() finds.
 * In a sparse chunk with several entries for one resource, that is the first one; an entry that the search cannot find,
 * because the indices do not ascend, is dropped. So is an entry that does not end within the chunk, which has no value
 * for Android either.
 *
 * Meets raw input. Needs up to 2 MiB for the places of the entries, and up to 5 MiB more in the constructor. The bytes
 * of the chunk outlive this object.
 */
class TypeRewriter
{
public:
    /// Bytes of the header of a chunk or of an entry: libsorrel reads these sizes as signed numbers.
    static constexpr int MaxHeaderSize = 0x7ffc;

    /// @p chunk is of the type ChunkType::Type.
    explicit TypeRewriter(const ChunkView &chunk);

    /// DamagedType, DamagedEntry, or None when the chunk can be rewritten. A header above MaxHeaderSize counts as
    /// damaged.
    FormatFault fault() const { return m_fault; }
    /// Whether the chunk is in the classic form already, except for bytes between the offsets and the entries, which
    /// libsorrel skips. Precondition: no fault().
    bool isClassic() const { return m_isClassic; }
    /// Bytes of the classic form. Precondition: no fault().
    qint64 size() const { return m_isClassic ? m_chunk.size() : entriesStart() + m_entriesSize; }
    /// Appends the classic form to @p table, which has room for it. Precondition: no fault(), and size() is below 2
    /// GiB.
    void appendTo(QByteArray *table) const;

private:
    /// The old and the new place of a resource's entry.
    struct Place {
        int index;       ///< of the resource
        bool isRepeated; ///< whether another resource has put the entry there already
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
    FormatFault m_fault = FormatFault::None;
    std::vector<Place> m_places; ///< by index
    int m_resourceCount = 0;     ///< number of offsets in the classic form
    qint64 m_entriesSize = 0;
    bool m_isClassic = false;
};

} // namespace SorrelKit

#endif
