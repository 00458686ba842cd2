// SPDX-License-Identifier: LGPL-2.1-or-later
#include "SequentialBytes.h"

#include <cstring>

SequentialBytes::SequentialBytes(const QByteArray &bytes) : m_bytes(bytes)
{
    open(ReadOnly);
}

qint64 SequentialBytes::readData(char *data, qint64 size)
{
    size = qMin(size, m_bytes.size() - m_at);
    if (size <= 0)
        return 0;
    std::memcpy(data, m_bytes.constData() + m_at, size_t(size));
    m_at += size;
    return size;
}
