// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_LINEBUFFER_H
#define VIEWER_LINEBUFFER_H

#include <QByteArray>

namespace Viewer {

/// Bytes that arrive in pieces, as lines of at most a number of bytes. Each byte is searched once, however small the
/// pieces are.
class LineBuffer
{
public:
    explicit LineBuffer(int maxBytes) : m_maxBytes(maxBytes) {}

    /// Adds @p bytes, which do nothing once a line was too long.
    void add(const QByteArray &bytes);
    /// Takes the next whole line, without its end. Returns false when there is none, or when it is too long.
    bool take(QByteArray *line);
    /// Whether take() met a line that is too long, finished or not.
    bool isTooLong() const { return m_isTooLong; }
    /// Bytes that were not taken.
    int size() const { return int(m_bytes.size()) - m_start; }
    /// Whether there is a part of a line.
    bool hasRest() const { return m_bytes.size() > m_start; }

private:
    int m_maxBytes;
    QByteArray m_bytes;
    int m_start = 0;    ///< of the first line that was not taken
    int m_searched = 0; ///< no line ends between m_start and here
    bool m_isTooLong = false;
};

} // namespace Viewer

#endif
