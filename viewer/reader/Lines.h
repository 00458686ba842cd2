// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_LINES_H
#define VIEWER_LINES_H

#include <QByteArray>
#include <QJsonObject>

namespace Viewer {

/// Lines of JSON on two descriptors of the system. It needs no event loop.
class Lines
{
public:
    /// Reads from @p input and writes to @p output, which stay the caller's.
    Lines(int input, int output) : m_input(input), m_output(output) {}

    /// Writes @p answer, with its topic, as a line. Returns false when nobody reads it. An answer beyond
    /// Protocol::MaxLineBytes is replaced by an error of its topic.
    bool write(const char *topic, QJsonObject answer);

    /// Takes the next request. Without one, @p waits until there is one or the input ends. Returns false when there is
    /// none; isOpen() then returns whether more may come. What is no JSON object is an empty request.
    bool take(bool waits, QJsonObject *request);
    bool isOpen() const { return m_isOpen; }

private:
    bool receive(bool waits);

    int m_input;
    int m_output;
    QByteArray m_received;
    bool m_isOpen = true;
};

} // namespace Viewer

#endif
