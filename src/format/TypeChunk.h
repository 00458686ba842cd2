// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TYPECHUNK_H
#define TYPECHUNK_H

#include "format/ChunkView.h"
#include "format/Configuration.h"
#include "format/EntryView.h"

/**
 * A type chunk of a resource table: the values of one type's resources in one configuration. Offsets are from the
 * chunk's start:
 *
 * | offset        | width   | field                                                           |
 * |---------------|---------|-----------------------------------------------------------------|
 * | 0             | 8 bytes | chunk header (see ChunkView)                                    |
 * | 8             | u8      | type id: 1 + index of the type's name in the package's pool     |
 * | 9             | u8      | flags: the encoding of the offsets, see below                   |
 * | 10            | 2 bytes | reserved                                                        |
 * | 12            | u32     | entry count                                                     |
 * | 16            | u32     | entries start: offset of the first entry                        |
 * | 20            |         | configuration (see Configuration)                               |
 * | header size   |         | the offset of each entry from entries start                     |
 * | entries start |         | entries (see EntryView), one after another, to the chunk's end  |
 *
 * The offsets, by flags:
 *
 * | flags | offsets                                                                                    |
 * |-------|--------------------------------------------------------------------------------------------|
 * | 0     | dense: u32 for each resource of the type, 0xffffffff for none                              |
 * | 2     | short (Android 14): u16 for each resource of the type, in units of 4 bytes, 0xffff for none |
 * | 1     | sparse: index u16 and offset u16 in units of 4 bytes, by ascending index                   |
 *
 * Android takes a configuration of any size: bytes that it does not have are 0, and one that claims more than the header
 * has goes on in the chunk. Offsets and entries start at multiples of 4.
 *
 * Meets raw input.
 */
class TypeChunk
{
public:
    enum Flag : quint8 {
        SparseFlag = 0x01,
        ShortOffsetsFlag = 0x02,
    };
    static constexpr int FlagsAt = 9;
    static constexpr int EntryCountAt = 12;
    static constexpr int EntriesStartAt = 16;
    static constexpr int ConfigurationAt = 20;
    static constexpr int OffsetSize = 4;                 ///< of a dense offset, and of a sparse one with its index
    static constexpr quint32 NoDenseOffset = 0xffffffff; ///< of a resource without a value here
    /// The offset of a resource without a value here, in any encoding.
    static constexpr qint64 NoEntry = -1;
    /// Resources of a type at most: an id has 16 bits for the index.
    static constexpr int MaxEntries = 1 << 16;
    /// Slots of a chunk at most: Android refuses more.
    static constexpr int MaxSlots = 0xffff;
    /// Bytes of a configuration that Android knows.
    static constexpr int ConfigurationSize = 64;

    /// An offset, and the index of its resource.
    struct Slot {
        int index = 0;
        qint64 offset = NoEntry;
    };

    TypeChunk() = default;
    /// @p chunk is of the type ChunkType::Type. Not valid when Android refuses it: it has no type, too many slots, or
    /// offsets that do not end before the entries.
    explicit TypeChunk(const ChunkView &chunk);

    bool isValid() const { return m_isValid; }
    quint8 typeId() const { return m_bytes.u8(8); }
    /// Decodes the configuration on each call.
    Configuration configuration() const { return Configuration::read(m_bytes.from(ConfigurationAt)); }
    /// The configuration's record, its size included; cut where the header ends.
    ByteView configurationBytes() const;
    /// Whether the configuration claims no bytes, or more than the header has.
    bool hasOddConfiguration() const;
    bool isSparse() const { return (m_bytes.u8(FlagsAt) & SparseFlag) != 0; }
    bool hasShortOffsets() const { return (m_bytes.u8(FlagsAt) & ShortOffsetsFlag) != 0; }

    /// Number of slots: resources, or in a sparse chunk entries.
    int slotCount() const { return m_slotCount; }
    /// Precondition: @p number is less than slotCount().
    Slot slot(int number) const;
    /// The offset of the resource with the index @p index within the entries, or NoEntry. A sparse chunk is searched by
    /// bisection.
    qint64 offset(int index) const;
    /// The entry at @p offset, which may be any number.
    EntryView entryAt(qint64 offset) const;
    /// The entries, to the end of the chunk.
    ByteView entries() const { return m_bytes.from(m_bytes.u32(EntriesStartAt)); }

private:
    ByteView m_bytes;
    ByteView m_offsets;
    int m_slotCount = 0;
    bool m_isValid = false;
};

Q_DECLARE_TYPEINFO(TypeChunk, Q_MOVABLE_TYPE);

#endif
