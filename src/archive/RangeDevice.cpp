// SPDX-License-Identifier: LGPL-2.1-or-later
#include "archive/RangeDevice.h"

RangeDevice::RangeDevice(QIODevice *device, qint64 start, qint64 size)
    : m_device(device),
      m_start(qBound(qint64(0), start, device->size())),
      m_size(qBound(qint64(0), size, device->size() - m_start))
{
}

bool RangeDevice::open(OpenMode mode)
{
    // Unbuffered: the device below has a buffer already.
    return mode == ReadOnly && QIODevice::open(mode | Unbuffered);
}

qint64 RangeDevice::readData(char *data, qint64 size)
{
    size = qMin(size, m_size - pos());
    if (size <= 0)
        return 0;
    return m_device->seek(m_start + pos()) ? m_device->read(data, size) : -1;
}

qint64 RangeDevice::writeData(const char *, qint64)
{
    return -1;
}
