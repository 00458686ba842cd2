// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LOGCAPTURE_H
#define LOGCAPTURE_H

#include <QString>
#include <QStringList>
#include <QVector>

namespace fixture {

/// Collects the messages of Qt's log while it exists. Only one object may exist at a time.
class LogCapture
{
public:
    struct Line {
        QtMsgType type;
        QString category;
        QString file;
        int line;
        QString function;
        QString text;
    };

    LogCapture();
    ~LogCapture();

    QVector<Line> lines() const { return m_lines; }
    QStringList texts() const;
    bool contains(const QString &text) const { return texts().contains(text); }

private:
    Q_DISABLE_COPY(LogCapture)

    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text);

    static LogCapture *s_current;
    QtMessageHandler m_previous;
    QVector<Line> m_lines;
};

} // namespace fixture

#endif
