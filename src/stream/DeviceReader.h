// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICEREADER_H
#define DEVICEREADER_H

#include "limits/Limits.h"

#include <QByteArray>
#include <QtGlobal>

class QIODevice;

/**
 * The bytes of a device, for a caller that asks for a few at a time.
 *
 * A buffered sequential device fetches more than it is asked for, and keeps the rest in the buffer of QIODevice. look()
 * copies these bytes, so that the caller does not call the device for each few of them. look() never makes the device
 * fetch anything: an unbuffered device, or one that delivers less than it is asked for, gets exactly the caller's
 * reads.
 *
 * Copied bytes stay in the device until a read needs it, or until release(). The device is open, belongs to the caller,
 * and may be destroyed before this object.
 */
class DeviceReader
{
public:
    /// Bytes that are read from the device at most.
    static constexpr int MaxBytes = Limits::MaxTableBytes;

    DeviceReader() = default;

    /// Starts anew on @p device. Bytes that were only copied stay in the former device.
    void setDevice(QIODevice *device);
    QIODevice *device() const { return m_device; }

    /// Number of bytes in memory.
    qint64 atHand() const { return m_end - m_next; }
    /// The bytes in memory. Any operation but take() invalidates them.
    const char *next() const { return m_next; }
    /// Consumes @p size of the bytes in memory.
    void take(qint64 size) { m_next += size; }

    /// Copies the content of the device's buffer. Returns whether there are bytes in memory then.
    bool look();

    /// As QIODevice::read(): returns the number of bytes read, negative for a fault of the device.
    qint64 read(char *data, qint64 size);

    /// Reads from the device the bytes that take() has consumed. The others stay in it, and leave the memory.
    void release();

    /// Whether the last read got less because of MaxBytes.
    bool isTooLong() const { return m_isTooLong; }

private:
    Q_DISABLE_COPY(DeviceReader)

    QIODevice *m_device = nullptr;
    QByteArray m_buffer;
    const char *m_next = nullptr; ///< the next byte in the buffer
    const char *m_end = nullptr;  ///< the end of the bytes in the buffer
    qint64 m_taken = 0;           ///< bytes that were read from the device
    bool m_isTooLong = false;
};

#endif
