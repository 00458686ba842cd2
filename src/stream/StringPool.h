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
 * A string pool chunk (see StringPoolView for its fields): the strings of a document, of a resource table, or of one of
 * its packages, by index. Styles are skipped. The terminators of strings are not read, but must fit into the data.
 *
 * load() checks the place of every string. A string is decoded when it is asked for, so that the pool takes no more
 * memory than the chunk's data. Strings may overlap up to a ceiling: no tool writes such a pool, and decoding one would
 * multiply its data. Const operations only read.
 */
class StringPool
{
public:
    /// Total length of strings at distinct offsets at most, in lengths of the data. Small totals are not checked.
    static constexpr int MaxOverlap = 2;

    /// An empty pool. Error texts contain @p name.
    SORREL_EXPORT explicit StringPool(const QString &name);
    SORREL_EXPORT void setName(const QString &name);

    /**
     * Reads a pool after its chunk header, within the boundary of the chunk; @p headerSize is the header's own size
     * field. Replaces the content as a whole, or keeps it when a fault is recorded on @p reader: one of the reader's
     * own, "string pool contains bad count" (a negative one), "string pool contains bad index" (an offset outside the
     * data), "string extends past stringblock end" or "strings overlap in string pool".
     */
    SORREL_EXPORT void load(Extractor *reader, int headerSize);

    /// Number of strings.
    int count() const { return int(m_offsets.size()); }

    /**
     * The string at @p index, or a null string when it does not exist; then "bad index in <name> pool" is recorded on
     * the reader that loaded the pool, while that exists. With SORREL_ASSERTIONS, a negative index fails an assertion:
     * some documents have one.
     */
    SORREL_EXPORT QString get(int index) const;

    /// Offset of the string at @p index in the pool's data. Strings with one offset are equal. Precondition: @p index
    /// is from 0 to count() - 1.
    qint32 offsetAt(int index) const { return m_offsets.at(index); }

    /// Index of the first string that equals @p text, or -1. Decodes the strings one by one.
    SORREL_EXPORT int find(const QString &text) const;

    /**
     * The text of a typed value (see TypedValue) outside any table; a reference becomes "@?". Colours, hexadecimal
     * numbers and unknown types with the top bit set print with eight more digits f in front, and dimensions and
     * fractions as their data word; both are kept on purpose.
     */
    SORREL_EXPORT QString valueToString(int type, int data) const;

    /// Drops the strings; the name stays.
    SORREL_EXPORT void clear();

private:
    /// A string's text within the data, in bytes (UTF-8) or units (UTF-16).
    struct Span {
        qint64 start;
        int length;
    };

    bool readOffsets(Extractor *reader, int stringCount, qint64 dataSize);
    void readData(Extractor *reader, qint64 dataSize);
    /// The total length of all strings, or -1 when one of them does not fit into the data.
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
    QByteArray m_data; ///< the string data
};

#endif
