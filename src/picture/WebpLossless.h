// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef WEBPLOSSLESS_H
#define WEBPLOSSLESS_H

#include <QByteArray>

/**
 * The prefix codes of a WebP lossless stream (VP8L), read to find the memory that a decoder takes for them.
 *
 * A picture may have different prefix codes for each block of its pixels, in groups of five. A small picture, the
 * entropy image, has the number of the group of each block. A group may be as short as 20 bits in the file, but a
 * decoder makes lookup tables of up to 20 KB of it, so that 300 KB of file may take a gigabyte. The transforms come
 * before the entropy image. Some transforms are small pictures as well, and are read to get past them.
 *
 * Meets raw input. Every bit is read once, and every round of a loop reads a bit. A stream that is cut off or
 * contradicts itself is not valid.
 */
class WebpLossless
{
public:
    /// Reads the stream of a picture of @p width by @p height pixels; @p bytes starts after the header with the size.
    WebpLossless(const QByteArray &bytes, int width, int height);

    bool isValid() const { return m_valid; }
    /// Groups that a decoder makes tables for: one more than the largest number in the entropy image.
    int groupCount() const { return m_groupCount; }
    /// Bytes of these tables at most.
    qint64 tableBytes() const;
    /// Bits that were read.
    qint64 bitsRead() const { return m_at; }

private:
    struct PrefixCode {
        static constexpr int MaxLength = 15;
        quint16 countOfLength[MaxLength + 1] = {};
        QByteArray symbols; ///< two bytes each, by code
        int single = -1;    ///< the only symbol, whose code has no bits
    };

    qint64 bitsLeft() const { return qint64(m_bytes.size()) * 8 - m_at; }
    /// The next bits, 25 at least.
    quint32 nextBits() const;
    /// Takes up to 25 bits.
    quint32 bits(int count);
    void readTransforms(int *width, int height);
    /// Reads a picture without an entropy image of its own, and returns the largest red and green in it.
    int readSmallPicture(qint64 width, qint64 height);
    int readCacheBits();
    PrefixCode readCode(int alphabetSize);
    PrefixCode readLengths(int alphabetSize);
    int symbol(const PrefixCode &code);
    qint64 lengthOf(int prefix);
    void fail() { m_valid = false; }

    static PrefixCode made(const QByteArray &lengths, bool *complete);

    QByteArray m_bytes;
    qint64 m_at = 0; ///< in bits
    bool m_valid = true;
    int m_cacheBits = 0;
    int m_groupCount = 1;
};

#endif
