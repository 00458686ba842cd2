// SPDX-License-Identifier: LGPL-2.1-or-later
#include "archive/ByteSource.h"

#include <QIODevice>

#include <cstring>
#include <limits>

qint64 ByteSource::bytesFrom(qint64 at, qint64 count) const
{
    return at < 0 || at > m_size ? 0 : qBound(qint64(0), count, m_size - at);
}

QByteArray ByteSource::read(qint64 at, qint64 count)
{
    count = qMin(bytesFrom(at, count), qint64(std::numeric_limits<int>::max()) - 64);
    if (count == 0)
        return {};
    QByteArray bytes(int(count), Qt::Uninitialized);
    bytes.resize(int(qBound(qint64(0), copy(at, count, bytes.data()), count)));
    return bytes;
}

SharedBytes BytesInMemory::view(qint64 at, qint64 count)
{
    const qint64 existing = bytesFrom(at, count);
    return {m_bytes.view().part(at, existing), std::make_shared<SharedBytes>(m_bytes)};
}

qint64 BytesInMemory::copy(qint64 at, qint64 count, char *data)
{
    std::memcpy(data, m_bytes.view().data() + at, size_t(count));
    return count;
}

BytesOfDevice::BytesOfDevice(QIODevice *device) : ByteSource(device->size()), m_device(device) {}

std::unique_ptr<BytesOfDevice> BytesOfDevice::open(QIODevice *device)
{
    if (device == nullptr || device->isOpen() || device->isSequential() || !device->open(QIODevice::ReadOnly))
        return nullptr;
    // Some devices know only once they are open.
    if (device->isSequential()) {
        device->close();
        return nullptr;
    }
    return std::unique_ptr<BytesOfDevice>(new BytesOfDevice(device));
}

std::unique_ptr<BytesOfDevice> BytesOfDevice::open(std::unique_ptr<QIODevice> device)
{
    auto bytes = open(device.get());
    if (bytes != nullptr)
        bytes->m_own = std::move(device);
    return bytes;
}

BytesOfDevice::~BytesOfDevice()
{
    m_device->close();
}

qint64 BytesOfDevice::copy(qint64 at, qint64 count, char *data)
{
    if (!m_device->seek(at))
        return 0;
    qint64 done = 0;
    while (done < count) {
        const qint64 delivered = m_device->read(data + done, count - done);
        if (delivered <= 0)
            break;
        done += delivered;
    }
    return done;
}

PartOfBytes::PartOfBytes(std::shared_ptr<ByteSource> source, qint64 start, qint64 size)
    : ByteSource(source->bytesFrom(start, size)), m_source(std::move(source)), m_start(start)
{
}

SharedBytes PartOfBytes::view(qint64 at, qint64 count)
{
    const qint64 existing = bytesFrom(at, count);
    return existing > 0 ? m_source->view(m_start + at, existing) : SharedBytes();
}

qint64 PartOfBytes::copy(qint64 at, qint64 count, char *data)
{
    return m_source->copy(m_start + at, count, data);
}
