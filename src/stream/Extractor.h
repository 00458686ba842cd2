// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef EXTRACTOR_H
#define EXTRACTOR_H

#include <SorrelExport.h>

#include "stream/DeviceReader.h"
#include "stream/Diagnostics.h"

#include <QByteArray>
#include <QSharedPointer>
#include <QStack>
#include <QString>
#include <QVector>
#include <QWeakPointer>
#include <QtEndian>

class QIODevice;

/**
 * The cursor through which every decoder reads: little-endian integers and arrays from a device, within a stack of
 * nested end positions, the boundaries.
 *
 * **The error contract.** A fault is recorded as a text and does not stop anything: later reads are attempted, and
 * return real data when they are in bounds. A failed integer read returns 0 and moves nothing. A failed array read
 * returns an empty array or, when the device ran short, one of full size with zeros at its end. errorString() returns
 * the last text. Decoders need not test every read: they test failed() before they act on a result, and in every loop
 * whose count comes from the file.
 *
 * | text                  | meaning                                                             |
 * |-----------------------|---------------------------------------------------------------------|
 * | "chunk too short"     | a read or skip would cross the innermost boundary                   |
 * | "file too short"      | the device delivered fewer bytes than requested, or could not seek  |
 * | "bad input"           | the byte count of an array is negative, or no multiple of its width |
 * | "boundary out of bounds" | a region was opened that ends after the enclosing one            |
 * | "file too long"       | more than MaxBytes were requested of the device                     |
 * | "too many steps back" | the file moved the reader back more than MaxStepsBack times         |
 * | "too many chunks"     | more than MaxRegions regions were opened                            |
 *
 * Integers are signed, because most callers need that; callers mask those that are unsigned in the format.
 * Positions are compared in 64 bits; one that would not fit 32 bits is out of bounds.
 *
 * Operations with SORREL_EXPORT are visible to programs; those that decoders call for every field are inline as well.
 */
class Extractor
{
public:
    /// Skips of a negative length at most. Files of build tools have none.
    static constexpr int MaxStepsBack = 256;
    /// Zero bytes at most in an array, in place of bytes that the device did not deliver.
    static constexpr int MaxZeroTail = 1 << 24;
    static constexpr int MaxBytes = DeviceReader::MaxBytes;
    /// Regions at most. Each chunk is one, and may have only 8 bytes.
    static constexpr int MaxRegions = 1 << 20;

    /**
     * A reader at position 0 of @p device, unbounded. The device is open and belongs to the caller; the reader's
     * destructor does not use it. Within a region, a sequential device may be at an earlier byte than the reader. Both
     * are at the same byte when the outermost region is closed, and after release().
     */
    SORREL_EXPORT explicit Extractor(QIODevice *device);

    /// Starts anew on @p device: no error, position 0, no boundary. The former device stays at its byte.
    SORREL_EXPORT void setDevice(QIODevice *device);

    /// Moves a sequential device to the end of the consumed bytes, also while a region is open.
    void release() { m_source.release(); }

    SORREL_EXPORT void setError(const QString &text);
    SORREL_EXPORT bool failed() const { return !m_error->isEmpty(); }

    /// The oddities of what was read since the device was set.
    Diagnostics &diagnostics() { return m_diagnostics; }
    const Diagnostics &diagnostics() const { return m_diagnostics; }

    /// The recorded error alone; empty without one.
    QString fault() const { return *m_error; }
    /// The recorded error, then ": " and the device's own error text, which a QIODevice practically always has.
    SORREL_EXPORT QString errorString() const;

    /**
     * The place of the recorded error. It ends with the reader; objects that may outlive the reader hold it weakly and
     * set errors through it.
     */
    SORREL_EXPORT QWeakPointer<QString> errorSink() const;

    SORREL_EXPORT qint8 get8() { return getInteger<qint8>(); }
    SORREL_EXPORT qint16 get16() { return getInteger<qint16>(); }
    SORREL_EXPORT qint32 get32() { return getInteger<qint32>(); }

    /**
     * Consumes @p count bytes. A negative count moves the position back but not a sequential device: the two then
     * differ, which is kept on purpose.
     *
     * On a random-access device the seek goes to the old position plus twice the count. This is kept on purpose, for
     * compatibility; members of an archive are sequential and never get there.
     */
    SORREL_EXPORT void skip(int count) { skip64(count); }
    /// skip() for a computed count. One beyond 32 bits is out of bounds.
    SORREL_EXPORT void skip64(qint64 count)
    {
        if (count > 0 && isAtHand(count))
            take(int(count));
        else if (count != 0)
            skipSlowly(count);
    }

    /**
     * The next @p size bytes, more than 0, when they are in memory and end before the boundary, else null. The next
     * read invalidates them. take() consumes them. For decoders of small records.
     */
    const char *atHand(int size) const { return isAtHand(size) ? m_source.next() : nullptr; }
    /// Consumes @p size bytes that atHand() returned.
    void take(int size)
    {
        m_source.take(size);
        position += size;
    }

    /**
     * An array read; the argument counts bytes, not elements. Memory grows while the device delivers. When the device
     * ran short, at most MaxZeroTail zero bytes follow.
     */
    SORREL_EXPORT QVector<quint8> getu8_vector(int byteCount);
    SORREL_EXPORT QVector<quint16> getu16_vector(int byteCount);
    SORREL_EXPORT QVector<quint32> getu32_vector(int byteCount);
    /// As getu8_vector(), without the zeros at the end.
    QByteArray getBytes(int byteCount);

    /**
     * Reads @p count integers as that many calls of get32() would, and stops at the first that fails. Returns the
     * integers that were read: fewer than @p count only when a fault was recorded.
     */
    SORREL_EXPORT QVector<qint32> get32s(int count);
    /// The same into @p values, which have room for @p count. Returns the number of integers that were read.
    int get32s(qint32 *values, int count);

    /**
     * Opens a region of @p length bytes from here; nothing is read past its end until it is closed. One that would
     * end after the enclosing region records a fault, and is opened as wide as it claims to be.
     */
    SORREL_EXPORT void pushBoundary(int length);
    /// pushBoundary() for a computed length. One beyond 32 bits is out of bounds.
    SORREL_EXPORT void pushBoundary64(qint64 length);
    /// Consumes the rest of the innermost region, and closes it. Precondition: a region is open.
    SORREL_EXPORT void popBoundary();

    /// Bytes from here to the innermost boundary; negative in a region of negative length.
    qint64 remaining() const { return qint64(boundary) - position; }

    /// Bytes consumed since the device was set; not the device's own position. Only the reader writes it.
    int position = 0;
    /// The position that no read may pass; 0x7fffffff when there is no region. Only the reader writes it.
    int boundary = 0;

private:
    Q_DISABLE_COPY(Extractor)

    template <typename T>
    T getInteger()
    {
        constexpr int width = sizeof(T);
        if (!isAtHand(width))
            return getSlowly<T>();
        const T value = qFromLittleEndian<T>(m_source.next());
        take(width);
        return value;
    }
    template <typename T>
    T getSlowly();
    template <typename T>
    QVector<T> getVector(int byteCount);
    bool mayGetBytes(int byteCount, int width);
    template <typename Array>
    int fill(Array &array, int byteCount);
    bool isAtHand(qint64 size) const { return size <= m_source.atHand() && size <= remaining(); }
    void skipSlowly(qint64 count);
    void move(qint64 count);
    void consume(qint64 count);
    void setDeviceError();

    DeviceReader m_source;
    Diagnostics m_diagnostics;
    QSharedPointer<QString> m_error;
    QStack<int> m_boundaries;
    int m_stepsBack = 0;
    int m_regions = 0; ///< number opened so far
};

#endif
