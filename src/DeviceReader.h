// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICEREADER_H
#define DEVICEREADER_H

#include <QByteArray>
#include <QtGlobal>

class QIODevice;

/**
 * The bytes of a device, for one who asks for a few at a time: those that come next are kept at hand, so that the
 * device is asked in large pieces. It is never left further on than it would be if each read had gone to it:
 *
 * - What the device itself has at hand is looked at in its buffer, and is taken from it when a read needs the device,
 *   or when release() is called.
 * - Bytes that the caller will take in any case are fetched ahead of time.
 *
 * Both on sequential devices alone. The device is open, and stays the caller's.
 */
class DeviceReader
{
public:
    /// Bytes that are taken from the device at most.
    static constexpr int MaxBytes = 1 << 27;

    DeviceReader() = default;
    /// As release(); the device outlives this object unless that was called.
    ~DeviceReader() { release(); }

    /// Starts anew on @p device.
    void setDevice(QIODevice *device);
    QIODevice *device() const { return m_device; }

    /// Number of the bytes that are at hand.
    qint64 atHand() const { return m_end - m_next; }
    /// The bytes that are at hand; they stay until the next operation but take().
    const char *next() const { return m_next; }
    /// Takes @p size of the bytes that are at hand.
    void take(qint64 size) { m_next += size; }

    /**
     * Looks at what the device has at hand, unless bytes were fetched ahead, or @p mayFetch is so much that reading
     * them is better. Returns whether there are bytes at hand then. The device has no more to be asked for than what it
     * says that it has: it may be a pipe whose other end waits.
     */
    bool look(qint64 mayFetch);

    /**
     * As QIODevice::read(): takes @p size bytes, and returns how many there were, negative for a fault of the device.
     * Of the next @p mayFetch bytes all will be taken in any case. A device that gave less at once than it was asked
     * for would have given no more for this read either.
     */
    qint64 read(char *data, qint64 size, qint64 mayFetch);

    /// Leaves the device where the bytes that were taken end, if they were but looked at.
    void release();

    /// Whether the last read got less because of MaxBytes.
    bool isTooLong() const { return m_isTooLong; }

private:
    Q_DISABLE_COPY(DeviceReader)

    qint64 fetch(qint64 most);
    qint64 readDevice(char *data, qint64 size);
    char *buffer();

    QIODevice *m_device = nullptr;
    QByteArray m_buffer;
    const char *m_next = nullptr; ///< the bytes at hand, which are in the buffer,
    const char *m_end = nullptr;  ///< end here
    bool m_isLookedAt = false;    ///< what is in the buffer is in the device still
    qint64 m_mostAtOnce = 0;      ///< what one read of the device delivers, as far as it is known
    qint64 m_taken = 0;           ///< bytes that were taken from the device
    qint64 m_available = 0;       ///< bytes that it has at hand at least, counted from the start as those are
    bool m_isTooLong = false;
};

#endif
