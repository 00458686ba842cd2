// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef WORKERPROCESS_H
#define WORKERPROCESS_H

#include <QByteArray>
#include <QList>

#include <sys/types.h>

/// The program of a worker: its path, or its name in PATH, and its arguments.
struct WorkerProgram {
    QByteArray path;
    QList<QByteArray> arguments;
};

/**
 * A child process with a pipe to its standard input and a pipe from its standard output. Standard error is that of this
 * process. Sending and receiving never block, so neither process can wait for the other forever.
 *
 * The caller blocks or ignores SIGPIPE; the child gets the default action, and blocks no signal. The destructor kills
 * the process.
 */
class WorkerProcess
{
public:
    WorkerProcess() = default;
    ~WorkerProcess() { end(); }

    /// Starts the process. Returns 0, or the number of the error.
    int start(const WorkerProgram &program);

    /// The descriptor to wait for before receive().
    int output() const { return m_output; }
    /// The descriptor to wait for before flush(); -1 when nothing waits to be sent.
    int blockedInput() const { return m_unsent.isEmpty() ? -1 : m_input; }

    /// Sends @p bytes: what the pipe takes now, and the rest with later calls of flush().
    void send(const QByteArray &bytes);
    void flush();
    /// Appends received bytes to @p bytes, at most about 1 MiB. Returns false after the last byte, when the process has
    /// closed its output.
    bool receive(QByteArray *bytes);

    /// Closes the input of the process, so a worker without files ends by itself.
    void closeInput();
    /// Waits until the process writes or ends, for at most @p seconds.
    void wait(int seconds) const;
    /// Kills the process unless it has ended. Returns the signal that ended it, or 0 when it exited.
    int end();

private:
    Q_DISABLE_COPY(WorkerProcess)

    pid_t m_process = -1;
    int m_input = -1;
    int m_output = -1;
    QByteArray m_unsent;
};

#endif
