// SPDX-License-Identifier: LGPL-2.1-or-later
#include "workers/WorkerProcess.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int PieceBytes = 64 << 10; ///< the capacity of a pipe
constexpr int MaxPieces = 16;

/// The two ends of a pipe. Children do not inherit them. The destructor closes the ends that were not taken.
class Pipe
{
public:
    Pipe() { m_error = ::pipe2(m_ends, O_CLOEXEC) == 0 ? 0 : errno; }
    ~Pipe()
    {
        for (const int end : m_ends) {
            if (end >= 0)
                ::close(end);
        }
    }

    int error() const { return m_error; }
    int readEnd() const { return m_ends[0]; }
    int writeEnd() const { return m_ends[1]; }
    int takeReadEnd() { return take(0); }
    int takeWriteEnd() { return take(1); }

private:
    Q_DISABLE_COPY(Pipe)

    // Only the end of this process does not block.
    int take(int index)
    {
        const int end = m_ends[index];
        m_ends[index] = -1;
        ::fcntl(end, F_SETFL, O_NONBLOCK);
        return end;
    }

    int m_ends[2] = {-1, -1};
    int m_error = 0;
};

void closeEnd(int *end)
{
    if (*end >= 0)
        ::close(*end);
    *end = -1;
}

int spawn(const WorkerProgram &program, int input, int output, pid_t *process)
{
    std::vector<char *> arguments{const_cast<char *>(program.path.constData())};
    for (const QByteArray &argument : program.arguments)
        arguments.push_back(const_cast<char *>(argument.constData()));
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    sigset_t signal = {};
    ::sigemptyset(&signal);
    ::posix_spawnattr_setsigmask(&attributes, &signal);
    ::sigaddset(&signal, SIGPIPE);
    ::posix_spawnattr_setsigdefault(&attributes, &signal);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    const int error =
        ::posix_spawnp(process, program.path.constData(), &actions, &attributes, arguments.data(), environ);
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&actions);
    return error;
}

} // namespace

int WorkerProcess::start(const WorkerProgram &program)
{
    Pipe input;
    Pipe output;
    if (input.error() != 0 || output.error() != 0)
        return input.error() != 0 ? input.error() : output.error();
    const int error = spawn(program, input.readEnd(), output.writeEnd(), &m_process);
    if (error != 0) {
        m_process = -1;
        return error;
    }
    m_input = input.takeWriteEnd();
    m_output = output.takeReadEnd();
    return 0;
}

void WorkerProcess::send(const QByteArray &bytes)
{
    m_unsent += bytes;
    flush();
}

void WorkerProcess::flush()
{
    while (!m_unsent.isEmpty()) {
        const ssize_t size = ::write(m_input, m_unsent.constData(), size_t(m_unsent.size()));
        if (size >= 0)
            m_unsent.remove(0, int(size));
        else if (errno == EAGAIN)
            return;
        else if (errno != EINTR)
            m_unsent.clear(); // The process has ended. receive() reports that.
    }
}

bool WorkerProcess::receive(QByteArray *bytes)
{
    char piece[PieceBytes];
    for (int i = 0; i < MaxPieces; ++i) {
        const ssize_t size = ::read(m_output, piece, sizeof piece);
        if (size == 0)
            return false;
        if (size < 0)
            return errno == EAGAIN || errno == EINTR;
        bytes->append(piece, int(size));
        // A full pipe may have more, and a short one has not: no call for an error.
        if (size < PieceBytes)
            return true;
    }
    return true;
}

void WorkerProcess::closeInput()
{
    closeEnd(&m_input);
}

void WorkerProcess::wait(int seconds) const
{
    pollfd output{m_output, POLLIN, 0};
    ::poll(&output, 1, seconds * 1000);
}

int WorkerProcess::end()
{
    closeEnd(&m_input);
    closeEnd(&m_output);
    if (m_process < 0)
        return 0;
    // A process that has ended already keeps its status.
    ::kill(m_process, SIGKILL);
    int status = 0;
    while (::waitpid(m_process, &status, 0) < 0 && errno == EINTR) {
    }
    m_process = -1;
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}
