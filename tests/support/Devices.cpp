// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Devices.h"

#include <cstring>

namespace fixture {

SequentialDevice::SequentialDevice(const QByteArray &bytes, OpenMode mode) : m_bytes(bytes)
{
    open(mode);
}

qint64 SequentialDevice::readData(char *data, qint64 size)
{
    if (m_at == m_bytes.size())
        return m_answerAtEnd;
    const int count = int(qMin(qMin(size, qint64(m_largestRead)), qint64(m_bytes.size() - m_at)));
    std::memcpy(data, m_bytes.constData() + m_at, size_t(count));
    m_at += count;
    return count;
}

qint64 SequentialDevice::writeData(const char *, qint64)
{
    return -1;
}

} // namespace fixture
