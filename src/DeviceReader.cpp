// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DeviceReader.h"

#include <QIODevice>

#include <cstring>
#include <limits>

namespace {

constexpr qint64 BufferSize = 1 << 14;

}

void DeviceReader::setDevice(QIODevice *device)
{
    release();
    m_device = device;
    m_buffer.clear();
    m_next = nullptr;
    m_end = nullptr;
    m_mostAtOnce = std::numeric_limits<qint64>::max();
    m_taken = 0;
    m_available = 0;
    m_isTooLong = false;
}

bool DeviceReader::look(qint64 mayFetch)
{
    if ((!m_isLookedAt && atHand() > 0) || !m_device->isSequential())
        return atHand() > 0;
    release();
    if (mayFetch >= BufferSize)
        return false;
    // Asking costs a ZIP member as much as some hundred bytes.
    if (m_taken >= m_available)
        m_available = m_taken + m_device->bytesAvailable();
    const qint64 size = qMin(qMin(m_available, qint64(MaxBytes)) - m_taken, BufferSize);
    if (size <= 0)
        return false;
    const qint64 found = m_device->peek(buffer(), size);
    m_isLookedAt = found > 0;
    m_next = m_buffer.constData();
    m_end = m_next + qMax(qint64(0), found);
    return m_isLookedAt;
}

void DeviceReader::release()
{
    if (!m_isLookedAt)
        return;
    const qint64 taken = m_next - m_buffer.constData();
    // Not by QIODevice::skip(), which asks the device for no bytes in no place besides.
    if (taken > 0)
        m_device->read(m_buffer.data(), taken);
    m_taken += taken;
    m_isLookedAt = false;
    m_next = m_end;
}

qint64 DeviceReader::read(char *data, qint64 size, qint64 mayFetch)
{
    release();
    const qint64 fetched = atHand();
    if (fetched > 0)
        size = qMin(size, m_mostAtOnce);
    const qint64 taken = qMin(size, fetched);
    if (taken > 0)
        std::memcpy(data, m_next, size_t(taken));
    take(taken);
    const qint64 missing = size - taken;
    if (missing == 0)
        return size;

    qint64 delivered = 0;
    if (missing >= BufferSize || missing > mayFetch - fetched) {
        delivered = readDevice(data + taken, missing);
    } else {
        delivered = qMin(missing, fetch(mayFetch - fetched));
        if (delivered > 0) {
            std::memcpy(data + taken, m_next, size_t(delivered));
            take(delivered);
        }
    }
    return taken > 0 ? taken + qMax(qint64(0), delivered) : delivered;
}

qint64 DeviceReader::fetch(qint64 most)
{
    const qint64 asked = qMin(most, BufferSize);
    const qint64 delivered = readDevice(buffer(), asked);
    if (delivered > 0 && delivered < asked)
        m_mostAtOnce = delivered;
    m_next = m_buffer.constData();
    m_end = m_next + qMax(qint64(0), delivered);
    return delivered;
}

// The one place where the device is read.
qint64 DeviceReader::readDevice(char *data, qint64 size)
{
    const qint64 left = MaxBytes - m_taken;
    const qint64 delivered = left > 0 ? m_device->read(data, qMin(size, left)) : 0;
    m_taken += qMax(qint64(0), delivered);
    m_isTooLong = size > left && m_taken == MaxBytes;
    return delivered;
}

char *DeviceReader::buffer()
{
    if (m_buffer.isEmpty())
        m_buffer.resize(int(BufferSize));
    return m_buffer.data();
}
