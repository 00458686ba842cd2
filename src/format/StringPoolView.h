// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef STRINGPOOLVIEW_H
#define STRINGPOOLVIEW_H

#include "format/ChunkView.h"

#include <QString>

/**
 * The strings of a string pool chunk, each decoded when it is asked for. Takes no memory of its own, checks nothing in
 * advance, and costs a string's length.
 *
 * Chunk: header, string count u32, style count u32, flags u32 (0x100: UTF-8, else UTF-16), start of the strings u32,
 * start of the styles u32; behind the header, the offset u32 of each string within the strings. A string is its length
 * in UTF-16 units (one unit of the encoding, or two when the first has its top bit set), in UTF-8 its length in bytes in
 * the same manner, then the text.
 *
 * Build tools write characters beyond the basic plane in UTF-8 as two surrogates of three bytes each, as Java does; these
 * are read as the character that they stand for.
 */
class StringPoolView
{
public:
    /// Characters of a string at most; the rest is left out. Labels and paths are far shorter, and documents hold a
    /// path's whole outline in one string.
    static constexpr int MaxLength = 1 << 20;

    StringPoolView() = default;
    /// The strings of @p chunk; none when it is no string pool.
    explicit StringPoolView(const ChunkView &chunk);

    /// Number of strings that there are offsets for.
    qint64 count() const { return m_count; }
    /// The string at @p index; a null string when there is none, or it does not end within the pool.
    /// Of a longer one than @p maxLength, as many characters.
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
