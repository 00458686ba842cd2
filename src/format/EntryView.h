// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ENTRYVIEW_H
#define ENTRYVIEW_H

#include "format/TypedValue.h"

/**
 * An entry of a type chunk: the value of one resource in one configuration. The classic form:
 *
 * | offset | width    | field                                                                        |
 * |--------|----------|------------------------------------------------------------------------------|
 * | 0      | u16      | size of this header                                                          |
 * | 2      | u16      | flags: 0x0001 for a map (style, array, plural)                               |
 * | 4      | u32      | key: index of the entry's name in the package's pool of key names            |
 * | size   | 8 bytes  | simple entry: its value (see TypedValue)                                     |
 * | 8      | u32, u32 | map: id of its parent, 0 for none; item count                                |
 * | size   | 12 bytes each | map: the items, each a name u32 and a value                             |
 *
 * A compact entry (Android 14) has 8 bytes: key u16; flags u16, with 0x0008 set and the value's type in the upper byte;
 * the value's data u32.
 *
 * Several resources of a type may share an entry. Meets raw input.
 */
class EntryView
{
public:
    enum Flag : quint16 {
        MapFlag = 0x0001,
        CompactFlag = 0x0008,
    };
    static constexpr int HeaderSize = 8;
    static constexpr int SimpleSize = HeaderSize + TypedValue::Size; ///< of a simple entry in the classic form
    static constexpr int ItemCountAt = 12;
    static constexpr int MapHeaderSize = 16;
    static constexpr int ItemSize = 12;

    /// An item of a map: an attribute, a quantity or an index, and its value.
    struct Item {
        quint32 name = 0;
        TypedValue value;
    };

    EntryView() = default;
    /// The entry at the start of @p bytes, which reach to the end of its chunk; not valid when it ends after them.
    explicit EntryView(const ByteView &bytes);

    bool isValid() const { return !m_bytes.isEmpty(); }
    bool isMap() const { return !isCompact() && (flags() & MapFlag) != 0; }
    bool isCompact() const { return (flags() & CompactFlag) != 0; }
    quint16 flags() const { return m_bytes.u16(2); }
    quint32 key() const { return isCompact() ? m_bytes.u16(0) : m_bytes.u32(4); }
    /// Precondition: !isMap().
    TypedValue value() const;
    /// The map that this one inherits items from; 0 for none. Precondition: isMap().
    quint32 parent() const { return m_bytes.u32(8); }
    /// Number of items, all of which are within bytes(). Precondition: isMap().
    qint64 itemCount() const { return m_bytes.u32(ItemCountAt); }
    /// Precondition: isMap(), and @p number is less than itemCount().
    Item item(qint64 number) const;
    /// The whole entry, with its value or items.
    const ByteView &bytes() const { return m_bytes; }

private:
    ByteView m_bytes;
};

#endif
