// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TYPECHUNK_H
#define TYPECHUNK_H

#include "format/ChunkView.h"
#include "format/Configuration.h"
#include "format/TypedValue.h"

/**
 * An entry of a resource table where it stands: the value of one resource for one configuration.
 *
 * In the classic form: size of the fixed part u16, flags u16, key u32, and for a simple value the value, of 8 bytes; for a
 * map (flag 1) the parent u32 and the number of items u32, each of which is a name u32 and a value. A compact entry (flag
 * 8, Android 14) takes 8 bytes in all: key u16, flags u16 with the data type in the upper byte, data u32.
 */
class EntryView
{
public:
    enum Flag : quint16 {
        MapFlag = 0x0001,
        CompactFlag = 0x0008,
    };
    static constexpr int ItemSize = 12;

    /// One of a map: an attribute, a quantity or an index, and what it is.
    struct Item {
        quint32 name = 0;
        TypedValue value;
    };

    EntryView() = default;
    /// The entry at the start of @p bytes, which go to the end of its chunk; not valid when it does not end within them.
    explicit EntryView(const ByteView &bytes);

    bool isValid() const { return !m_bytes.isEmpty(); }
    bool isMap() const { return !isCompact() && (flags() & MapFlag) != 0; }
    bool isCompact() const { return (flags() & CompactFlag) != 0; }
    quint16 flags() const { return m_bytes.u16(2); }
    quint32 key() const { return isCompact() ? m_bytes.u16(0) : m_bytes.u32(4); }
    /// Precondition: !isMap().
    TypedValue value() const;
    /// The resource that a map takes further items from; 0 for none. Precondition: isMap().
    quint32 parent() const { return m_bytes.u32(8); }
    /// Number of items, all of which are within bytes(). Precondition: isMap().
    qint64 itemCount() const { return m_bytes.u32(12); }
    /// Precondition: isMap(), and @p number is less than itemCount().
    Item item(qint64 number) const;
    /// All of the entry, with its value or items.
    const ByteView &bytes() const { return m_bytes; }

private:
    ByteView m_bytes;
};

/**
 * A type chunk of a resource table: the values of the resources of one type, for one configuration.
 *
 * Header: type id u8, flags u8, 0 u16, entry count u32, start of the entries u32, configuration. Behind it, where each
 * entry stands, by the encoding that the flags tell:
 *
 *     dense       an offset u32 for each resource, 0xffffffff for none
 *     flag 2      an offset u16 for each resource, in units of 4 bytes, 0xffff for none (Android 14)
 *     flag 1      for each entry, the resource's index u16 and its offset u16, in units of 4 bytes, by ascending index
 *
 * Several resources may share an entry. Meets raw input.
 */
class TypeChunk
{
public:
    enum Flag : quint8 {
        SparseFlag = 0x01,
        ShortOffsetsFlag = 0x02,
    };
    /// The offset of a resource that has no value here.
    static constexpr qint64 NoEntry = -1;
    /// Resources of a type at most: an id has 16 bits for the index.
    static constexpr int MaxEntries = 1 << 16;
    static constexpr int ConfigurationAt = 20;

    /// An offset, and the index of the resource that it is for.
    struct Slot {
        int index = 0;
        qint64 offset = NoEntry;
    };

    TypeChunk() = default;
    /// @p chunk is of the type ChunkType::Type. Not valid when its offsets do not end within it.
    explicit TypeChunk(const ChunkView &chunk);

    bool isValid() const { return m_isValid; }
    quint8 typeId() const { return m_bytes.u8(8); }
    const Configuration &configuration() const { return m_configuration; }
    /// The configuration as it stands, its size included; cut where the header ends.
    ByteView configurationBytes() const;
    bool isSparse() const { return (m_bytes.u8(9) & SparseFlag) != 0; }
    bool hasShortOffsets() const { return (m_bytes.u8(9) & ShortOffsetsFlag) != 0; }

    /// Number of slots: of resources, or in a sparse chunk of entries.
    int slotCount() const { return m_slotCount; }
    /// Precondition: @p number is less than slotCount().
    Slot slot(int number) const;
    /// The offset of the resource with the index @p index within the entries, or NoEntry. A sparse chunk is searched as
    /// its order promises.
    qint64 offset(int index) const;
    /// The entry at @p offset, which may be anything.
    EntryView entryAt(qint64 offset) const;
    /// The entries, to the end of the chunk.
    ByteView entries() const { return m_bytes.from(m_bytes.u32(16)); }

private:
    ByteView m_bytes;
    ByteView m_offsets;
    Configuration m_configuration;
    int m_slotCount = 0;
    bool m_isValid = false;
};

#endif
