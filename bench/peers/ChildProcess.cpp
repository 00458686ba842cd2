// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ChildProcess.h"

#include <chrono>
#include <fstream>
#include <limits>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// The standard streams of the new process.
class DroppedOutput
{
public:
    DroppedOutput()
    {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&m_actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&m_actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    }
    ~DroppedOutput() { posix_spawn_file_actions_destroy(&m_actions); }
    DroppedOutput(const DroppedOutput &) = delete;
    DroppedOutput &operator=(const DroppedOutput &) = delete;

    const posix_spawn_file_actions_t *actions() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions = {};
};

std::vector<char *> pointers(std::vector<std::string> &texts)
{
    std::vector<char *> result;
    result.reserve(texts.size() + 1);
    for (std::string &text : texts)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

int exitStatus(int waitStatus)
{
    return WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : 128 + WTERMSIG(waitStatus);
}

} // namespace

ChildProcess ChildProcess::run(const std::vector<std::string> &arguments)
{
    const DroppedOutput output;
    std::vector<std::string> texts = arguments;
    const std::vector<char *> argv = pointers(texts);
    ChildProcess result;
    rusage usage = {};
    int waitStatus = 0;
    pid_t child = 0;

    const auto start = std::chrono::steady_clock::now();
    if (posix_spawnp(&child, argv[0], output.actions(), nullptr, argv.data(), environ) != 0)
        return result;
    if (wait4(child, &waitStatus, 0, &usage) != child)
        return result;
    const auto end = std::chrono::steady_clock::now();

    result.seconds = std::chrono::duration<double>(end - start).count();
    result.status = exitStatus(waitStatus);
    result.peakKib = usage.ru_maxrss;
    return result;
}

long ChildProcess::ownPeakKib()
{
    // getrusage() counts this process in its parent.
    std::ifstream status("/proc/self/status");
    std::string key;
    while (status >> key) {
        long value = 0;
        if (key == "VmHWM:" && status >> value)
            return value;
        status.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    }
    return 0;
}
