// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Lines.h"

#include "JsonText.h"
#include "Protocol.h"

#include <QJsonDocument>

#include <cerrno>
#include <poll.h>
#include <unistd.h>

bool Viewer::Lines::write(const char *topic, QJsonObject answer)
{
    const QString name = QString::fromLatin1(topic);
    answer.insert(QStringLiteral("topic"), name);
    QByteArray line = jsonText(answer);
    if (line.size() > Protocol::MaxLineBytes)
        line = jsonText({{QStringLiteral("topic"), name},
                         {QStringLiteral("error"), QStringLiteral("the package has too much of it")}});
    line += '\n';
    for (qint64 written = 0; written < line.size();) {
        const ssize_t count = ::write(m_output, line.constData() + written, size_t(line.size() - written));
        if (count < 0 && errno != EINTR)
            return false;
        written += qMax(ssize_t(0), count);
    }
    return true;
}

bool Viewer::Lines::take(bool waits, QJsonObject *request)
{
    int end = int(m_received.indexOf('\n'));
    while (end < 0 && receive(waits))
        end = int(m_received.indexOf('\n'));
    if (end < 0)
        return false;
    *request = QJsonDocument::fromJson(m_received.left(end)).object();
    m_received.remove(0, end + 1);
    return true;
}

bool Viewer::Lines::receive(bool waits)
{
    constexpr int Forever = -1;
    pollfd input{m_input, POLLIN, 0};
    if (!m_isOpen || (::poll(&input, 1, waits ? Forever : 0) <= 0 && !waits))
        return false;
    char bytes[4096];
    const ssize_t count = ::read(m_input, bytes, sizeof bytes);
    if (count < 0 && errno == EINTR)
        return true;
    m_isOpen = count > 0 && m_received.size() <= Protocol::MaxRequestBytes;
    if (m_isOpen)
        m_received.append(bytes, int(count));
    return m_isOpen;
}
