// SPDX-License-Identifier: LGPL-2.1-or-later
#include "stream/DeviceReader.h"

#include <QIODevice>

namespace {

constexpr qint64 BufferSize = 1 << 14; ///< the number of bytes that QIODevice fetches at once

}

void DeviceReader::setDevice(QIODevice *device)
{
    m_device = device;
    m_buffer.clear();
    m_next = nullptr;
    m_end = nullptr;
    m_taken = 0;
    m_isTooLong = false;
}

bool DeviceReader::look()
{
    release();
    if (!m_device->isSequential())
        return false;
    // The device's own bytesAvailable() also counts bytes that it could still deliver.
    const qint64 buffered = m_device->QIODevice::bytesAvailable();
    const qint64 size = qMin(qMin(buffered, BufferSize), MaxBytes - m_taken);
    if (size <= 0)
        return false;
    if (m_buffer.isEmpty())
        m_buffer.resize(int(BufferSize));
    const qint64 found = m_device->peek(m_buffer.data(), size);
    m_next = m_buffer.constData();
    m_end = m_next + qMax(qint64(0), found);
    return found > 0;
}

void DeviceReader::release()
{
    const qint64 taken = m_next != nullptr ? m_next - m_buffer.constData() : 0;
    // QIODevice::skip() would make an extra call of the device, for no bytes.
    if (taken > 0)
        m_device->read(m_buffer.data(), taken);
    m_taken += taken;
    m_next = nullptr;
    m_end = nullptr;
}

qint64 DeviceReader::read(char *data, qint64 size)
{
    release();
    const qint64 left = MaxBytes - m_taken;
    const qint64 delivered = left > 0 ? m_device->read(data, qMin(size, left)) : 0;
    m_taken += qMax(qint64(0), delivered);
    m_isTooLong = size > left && m_taken == MaxBytes;
    return delivered;
}
