// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef STRINGPOOL_H
#define STRINGPOOL_H

#include <SorrelExport.h>

#include <QByteArray>
#include <QString>
#include <QVector>
#include <QWeakPointer>

class Extractor;

/**
 * A string pool chunk (type 0x0001): the strings of a document, of a resource table, or of one of its packages, by
 * index. Offsets are from the chunk's start:
 *
 * | offset        | width               | field                                                             |
 * |---------------|---------------------|-------------------------------------------------------------------|
 * | 0             | 8 bytes             | chunk header (see ChunkWalker), read by the caller                |
 * | 8             | u32                 | string count                                                      |
 * | 12            | u32                 | style count, not used                                             |
 * | 16            | u32                 | flags; 0x100: the strings are UTF-8, else UTF-16; others not used |
 * | 20            | u32                 | strings start: offset of the string data                          |
 * | 24            | u32                 | styles start: offset of the style data, 0 when there is none      |
 * | header size   | 4 x string count    | offset of each string within the string data                      |
 * | ...           | 4 x style count     | style offsets, skipped                                            |
 * | strings start | to styles start, or the chunk's end | string data                                       |
 *
 * A string in the data:
 *
 * | encoding | length in UTF-16 units | length in bytes      | text  | terminator                       |
 * |----------|------------------------|----------------------|-------|----------------------------------|
 * | UTF-8    | 1 byte, or 2 with 0x80 set in the first | the same | bytes | a zero byte; only its room is checked |
 * | UTF-16   | 1 unit, or 2 with 0x8000 set in the first | none | units | a zero unit; only its room is checked |
 *
 * Every string's place is checked when the pool is loaded; it is decoded when it is asked for, so that the pool takes
 * no more memory than the chunk's data does. Strings may stand within each other, up to a ceiling: no tool writes such
 * a pool, and decoding one would multiply its data. Const operations only read.
 */
class StringPool
{
public:
    /// How many times the data the strings at distinct places may be, all together, when they are more than a little.
    static constexpr int MaxOverlap = 2;

    /// An empty pool; @p name is for error texts alone.
    SORREL_EXPORT explicit StringPool(const QString &name);
    SORREL_EXPORT void setName(const QString &name);

    /**
     * Reads a pool whose chunk header has just been read, within the boundary that was pushed for it; @p headerSize is
     * that header's header size. Replaces the content as a whole, or leaves it when a fault is recorded on @p reader:
     * one of the reader's own, "string pool contains bad count" (a negative one), "string pool contains bad index" (an
     * offset outside the data), "string extends past stringblock end" or "strings overlap in string pool".
     */
    SORREL_EXPORT void load(Extractor *reader, int headerSize);

    /// Number of strings.
    int count() const { return int(m_offsets.size()); }

    /**
     * The string at @p index, or a null string when there is none; "bad index in <name> pool" is then recorded on the
     * reader that the pool was loaded through, while that exists. With SORREL_ASSERTIONS, a negative index is asserted
     * against: some documents have one.
     */
    SORREL_EXPORT QString get(int index) const;

    /// Place of the string at @p index, from 0 to count() - 1, in the pool's data: two strings at one place are equal.
    qint32 offsetAt(int index) const { return m_offsets.at(index); }

    /// Index of the first string that equals @p text, or -1. Takes time in proportion to the pool.
    SORREL_EXPORT int find(const QString &text) const;

    /**
     * The text of a typed value (see ResourceTypes) outside any table: a reference is only marked as one. Colours,
     * hexadecimal numbers and unknown types with the top bit set print with eight more digits f in front, and
     * dimensions and fractions as their data word; both are kept on purpose.
     */
    SORREL_EXPORT QString valueToString(int type, int data) const;

    /// Drops the strings; the name stays.
    SORREL_EXPORT void clear();

private:
    /// A string's text within the data: in bytes or units, by the encoding.
    struct Span {
        qint64 start;
        int length;
    };

    bool readOffsets(Extractor *reader, int stringCount, qint64 dataSize);
    void readData(Extractor *reader, qint64 dataSize);
    /// The lengths of all strings, or -1 when there is no room for one of them in the data.
    qint64 checkedLength() const;
    bool multipliesItsData(qint64 length) const;
    Span spanAt(qint32 offset) const;
    Span utf8SpanAt(qint64 offset) const;
    Span utf16SpanAt(qint64 offset) const;
    qint64 dataLength() const;
    QString decode(qint32 offset) const;

    QString m_name;
    QWeakPointer<QString> m_errorSink;
    QVector<qint32> m_offsets;
    bool m_isUtf8 = false;
    QByteArray m_data; ///< the string data, as it is in the file
};

#endif
