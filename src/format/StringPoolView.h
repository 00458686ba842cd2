// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef STRINGPOOLVIEW_H
#define STRINGPOOLVIEW_H

#include "format/ChunkView.h"

#include <QString>

/**
 * The strings of a string pool chunk, each decoded when it is asked for. The view takes no memory of its own and checks
 * nothing in advance. Offsets are from the chunk's start:
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
 * Build tools write characters beyond the basic plane in UTF-8 as two surrogates of three bytes each, as Java does; the
 * view combines them into one character.
 */
class StringPoolView
{
public:
    static constexpr int CountAt = 8;
    static constexpr int FlagsAt = 16;
    static constexpr int StringsStartAt = 20;
    static constexpr int HeaderSize = 28;
    static constexpr int OffsetSize = 4;
    static constexpr int Utf8Flag = 0x100;

    /// Characters of a string at most; the rest is dropped. Labels and paths are far shorter, but the outline of a
    /// vector is one string.
    static constexpr int MaxLength = 1 << 20;

    StringPoolView() = default;
    /// The strings of @p chunk; none when it is not a string pool.
    explicit StringPoolView(const ChunkView &chunk);

    /// Number of strings whose offsets are within the chunk.
    qint64 count() const { return m_count; }
    /// The string at @p index, cut at @p maxLength characters; null when it does not exist or ends outside the pool.
    QString at(qint64 index, int maxLength = MaxLength) const;

private:
    QString utf8At(qint64 at, int maxLength) const;
    QString utf16At(qint64 at, int maxLength) const;

    ByteView m_offsets;
    ByteView m_strings;
    qint64 m_count = 0;
    bool m_isUtf8 = false;
};

#endif
