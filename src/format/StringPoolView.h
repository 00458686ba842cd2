// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef STRINGPOOLVIEW_H
#define STRINGPOOLVIEW_H

#include "format/ChunkView.h"

#include <QString>

/**
 * The strings of a string pool chunk, each decoded when it is asked for. The view takes no memory of its own and checks
 * no string in advance. Offsets are from the chunk's start:
 *
 * | offset        | width               | field                                                             |
 * |---------------|---------------------|-------------------------------------------------------------------|
 * | 0             | 8 bytes             | chunk header (see ChunkView)                                      |
 * | 8             | u32                 | string count                                                      |
 * | 12            | u32                 | style count                                                       |
 * | 16            | u32                 | flags; 0x100: the strings are UTF-8, else UTF-16                  |
 * | 20            | u32                 | strings start: offset of the string data                          |
 * | 24            | u32                 | styles start: offset of the style data, 0 without styles          |
 * | header size   | 4 x string count    | offset of each string within the string data                      |
 * | ...           | 4 x style count     | offset of each style within the style data                        |
 * | strings start | to styles start, or to the chunk's end | string data                                    |
 *
 * A string in the data:
 *
 * | encoding | length in UTF-16 units                   | length in bytes | text  | terminator  |
 * |----------|------------------------------------------|-----------------|-------|-------------|
 * | UTF-8    | 1 byte, or 2 with 0x80 set in the first   | the same form   | bytes | a zero byte |
 * | UTF-16   | 1 unit, or 2 with 0x8000 set in the first | none            | units | a zero unit |
 *
 * Android refuses a document or a table with a pool that is not sound. In a sound pool:
 *
 * - the header has 28 bytes or more;
 * - the offsets of the strings are within the chunk, and those of the styles begin in it;
 * - with strings, their data begins 3 bytes or more before the chunk's end and ends with a zero byte or unit;
 * - with styles, their data begins behind that of the strings and ends with three words 0xffffffff.
 *
 * Without styles, the start of the styles may be any number. A string exists when it begins in the data before its last
 * byte or unit, and has its terminator. A length in UTF-16 units that is wrong does no harm in UTF-8. A length in bytes
 * is too small by a multiple of 32,768 in long strings, because old build tools cut it to 15 bits.
 *
 * Build tools write characters beyond the basic plane in UTF-8 as two surrogates of three bytes each, as Java does; the
 * view combines them into one character.
 */
class StringPoolView
{
public:
    static constexpr int CountAt = 8;
    static constexpr int StyleCountAt = 12;
    static constexpr int FlagsAt = 16;
    static constexpr int StringsStartAt = 20;
    static constexpr int StylesStartAt = 24;
    static constexpr int HeaderSize = 28;
    static constexpr int OffsetSize = 4;
    static constexpr int Utf8Flag = 0x100;

    /// Characters of a string at most; the rest is dropped. Labels and paths are far shorter, but the outline of a
    /// vector is one string.
    static constexpr int MaxLength = 1 << 20;

    StringPoolView() = default;
    /// The strings of @p chunk; none when it is not a string pool.
    explicit StringPoolView(const ChunkView &chunk);

    /// Whether Android takes the pool.
    bool isSound() const { return m_isSound; }
    /// Whether a pool without styles has a start of styles.
    bool hasOddStyles() const { return m_hasOddStyles; }
    /// Number of strings whose offsets are within the chunk.
    qint64 count() const { return m_count; }
    /// The string at @p index, cut at @p maxLength characters; null when it does not exist or has no end in the pool.
    QString at(qint64 index, int maxLength = MaxLength) const;

private:
    int unit() const { return m_isUtf8 ? 1 : 2; }
    /// Whether a terminator is at @p at in the data.
    bool isEnd(qint64 at) const
    {
        return m_strings.has(at, unit()) && (m_isUtf8 ? m_strings.u8(at) : m_strings.u16(at)) == 0;
    }
    bool hasSoundStrings(const ChunkView &chunk) const;
    bool hasSoundStyles(const ChunkView &chunk) const;
    QString utf8At(qint64 at, int maxLength) const;
    QString utf16At(qint64 at, int maxLength) const;

    ByteView m_offsets;
    ByteView m_strings;
    qint64 m_count = 0;
    bool m_isUtf8 = false;
    bool m_isSound = false;
    bool m_hasOddStyles = false;
};

#endif
