// SPDX-License-Identifier: LGPL-2.1-or-later
#include "LogCapture.h"

namespace fixture {

LogCapture *LogCapture::s_current = nullptr;

LogCapture::LogCapture() : m_previous(qInstallMessageHandler(&LogCapture::handle))
{
    Q_ASSERT(s_current == nullptr);
    s_current = this;
}

LogCapture::~LogCapture()
{
    qInstallMessageHandler(m_previous);
    s_current = nullptr;
}

QStringList LogCapture::texts() const
{
    QStringList texts;
    for (const Line &line : m_lines)
        texts.append(line.text);
    return texts;
}

void LogCapture::handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    s_current->m_lines.append({type, QString::fromUtf8(context.category), QString::fromUtf8(context.file), context.line,
                               QString::fromUtf8(context.function), text});
}

} // namespace fixture
