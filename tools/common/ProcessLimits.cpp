// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ProcessLimits.h"

#include <csignal>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool canLimitMemory = false;
#elif defined(__has_feature)
constexpr bool canLimitMemory = !__has_feature(address_sanitizer);
#else
constexpr bool canLimitMemory = true;
#endif

// A signal handler must not allocate.
QByteArray timeMessage;
const char *timeMessageBytes = nullptr;
size_t timeMessageSize = 0;
int timeStatus = 0;

void handleTooMuchTime(int /*signal*/)
{
    const ssize_t written = ::write(STDERR_FILENO, timeMessageBytes, timeMessageSize);
    Q_UNUSED(written)
    ::_exit(timeStatus);
}

} // namespace

void ProcessLimits::limitMemory(qint64 bytes)
{
    rlimit limit{};
    if (!canLimitMemory || ::getrlimit(RLIMIT_DATA, &limit) != 0)
        return;
    limit.rlim_cur = bytes > 0 ? qMin(rlim_t(bytes), limit.rlim_cur) : limit.rlim_max;
    ::setrlimit(RLIMIT_DATA, &limit);
}

void ProcessLimits::limitProcessorTime(int seconds, const QByteArray &message, int status)
{
    timeMessage = message;
    timeMessageBytes = timeMessage.constData();
    timeMessageSize = size_t(timeMessage.size());
    timeStatus = status;
    struct sigaction action = {};
    action.sa_handler = handleTooMuchTime;
    ::sigaction(SIGXCPU, &action, nullptr);
    // The parent process may have blocked the signal.
    sigset_t timeSignal = {};
    ::sigemptyset(&timeSignal);
    ::sigaddset(&timeSignal, SIGXCPU);
    ::sigprocmask(SIG_UNBLOCK, &timeSignal, nullptr);
    rlimit limit{};
    if (::getrlimit(RLIMIT_CPU, &limit) != 0)
        return;
    limit.rlim_cur = qMin(rlim_t(seconds), limit.rlim_cur);
    ::setrlimit(RLIMIT_CPU, &limit);
}

void ProcessLimits::allowMoreProcessorTime()
{
    std::signal(SIGXCPU, SIG_IGN);
}

bool ProcessLimits::endWithParent(pid_t parent)
{
    // prctl() has no effect when the parent has ended before.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    return ::getppid() == parent;
}
