// SPDX-License-Identifier: LGPL-2.1-or-later
#include "LineBuffer.h"

void Viewer::LineBuffer::add(const QByteArray &bytes)
{
    if (!m_isTooLong)
        m_bytes += bytes;
}

bool Viewer::LineBuffer::take(QByteArray *line)
{
    if (m_isTooLong)
        return false;
    const int end = int(m_bytes.indexOf('\n', m_searched));
    const int size = (end < 0 ? int(m_bytes.size()) : end) - m_start;
    if (size > m_maxBytes) {
        m_isTooLong = true;
        m_bytes.clear();
        m_start = m_searched = 0;
        return false;
    }
    if (end < 0) {
        // Lines are removed together: removing each would move the bytes behind it each time.
        m_bytes.remove(0, m_start);
        m_start = 0;
        m_searched = int(m_bytes.size());
        return false;
    }
    *line = m_bytes.mid(m_start, size);
    m_start = m_searched = end + 1;
    return true;
}
