// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICEREADER_H
#define DEVICEREADER_H

#include "format/Limits.h"

#include <QByteArray>
#include <QtGlobal>

class QIODevice;

/**
 * The bytes of a device, for a caller that asks for a few at a time.
 *
 * A sequential device that is buffered fetches more than it is asked for, and keeps the rest in the buffer of
 * QIODevice. look() copies these bytes, so that the caller need not ask the device for each few of them. The device
 * itself is never asked for a byte that the same reads would not ask for without look(): an unbuffered device, or one
 * that delivers less than it is asked for, meets the very reads that the caller makes.
 *
 * Bytes that were copied stay in the device until a read needs it, or until release(). Nothing else touches the
 * device, which is open and stays the caller's: it may be destroyed before this object.
 */
class DeviceReader
{
public:
    /// Bytes that are taken from the device at most.
    static constexpr int MaxBytes = Limits::MaxTableBytes;

    DeviceReader() = default;

    /// Starts anew on @p device. Bytes that were only copied stay in the device before.
    void setDevice(QIODevice *device);
    QIODevice *device() const { return m_device; }

    /// Number of the bytes that are at hand.
    qint64 atHand() const { return m_end - m_next; }
    /// The bytes that are at hand; they stay until the next operation but take().
    const char *next() const { return m_next; }
    /// Takes @p size of the bytes that are at hand.
    void take(qint64 size) { m_next += size; }

    /// Copies what the device keeps in its buffer. Returns whether there are bytes at hand then.
    bool look();

    /// As QIODevice::read(): takes @p size bytes, and returns how many there were, negative for a fault of the device.
    qint64 read(char *data, qint64 size);

    /// Takes from the device the bytes at hand that take() has taken; the others stay in it, and are at hand no longer.
    void release();

    /// Whether the last read got less because of MaxBytes.
    bool isTooLong() const { return m_isTooLong; }

private:
    Q_DISABLE_COPY(DeviceReader)

    QIODevice *m_device = nullptr;
    QByteArray m_buffer;
    const char *m_next = nullptr; ///< the bytes at hand, which are in the buffer,
    const char *m_end = nullptr;  ///< end here
    qint64 m_taken = 0;           ///< bytes that were taken from the device
    bool m_isTooLong = false;
};

#endif
