// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LIBRARYLOG_H
#define LIBRARYLOG_H

#include <QMap>
#include <QString>
#include <QtGlobal>

/**
 * Catches what Qt's debug channel is told in the thread that made the object, while it lives; one at a time in a
 * thread, and any number of threads at a time. Other threads, and messages that end the process, go on to the handler
 * that was there before, which is there again when the last one is gone. The debug channel is on meanwhile, whatever
 * rules say.
 *
 * Equal lines are counted; there are as many different ones as the library tells, at most some hundreds.
 */
class LibraryLog
{
public:
    LibraryLog();
    ~LibraryLog();

    /// How often each line was told.
    const QMap<QString, int> &lines() const { return m_lines; }

private:
    Q_DISABLE_COPY(LibraryLog)

    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text);

    static thread_local LibraryLog *s_current;
    QMap<QString, int> m_lines;
};

#endif
