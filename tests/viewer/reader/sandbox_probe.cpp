// SPDX-License-Identifier: LGPL-2.1-or-later
//
// sandbox_probe FILE ACTION [PATH]: confines itself with FILE readable, prints the names of what confines it, and does
// ACTION. Exits with 0 when the action succeeds, else with the number of the error.

#include "Sandbox.h"

#include <QRunnable>
#include <QThreadPool>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

class Counter : public QRunnable
{
public:
    explicit Counter(std::atomic<int> *count) : m_count(count) {}
    void run() override { ++*m_count; }

private:
    std::atomic<int> *m_count;
};

int failure(bool hasSucceeded)
{
    return hasSucceeded ? 0 : errno;
}

int act(const char *action, const char *path)
{
    const auto is = [action](const char *name) { return std::strcmp(action, name) == 0; };
    if (is("read"))
        return failure(::open(path, O_RDONLY) >= 0);
    if (is("write"))
        return failure(::open(path, O_WRONLY) >= 0);
    if (is("append"))
        return failure(::open(path, O_RDWR | O_APPEND) >= 0);
    if (is("create"))
        return failure(::open(path, O_CREAT | O_WRONLY, 0600) >= 0);
    if (is("truncate"))
        return failure(::truncate(path, 0) == 0);
    if (is("remove"))
        return failure(::unlink(path) == 0);
    if (is("rename"))
        return failure(::rename(path, "/tmp/renamed") == 0);
    if (is("chmod"))
        return failure(::chmod(path, 0777) == 0);
    if (is("socket"))
        return failure(::socket(AF_INET, SOCK_STREAM, 0) >= 0);
    if (is("unix"))
        return failure(::socket(AF_UNIX, SOCK_STREAM, 0) >= 0);
    if (is("exec"))
        return failure(::execl("/bin/true", "true", nullptr) == 0);
    if (is("fork"))
        return failure(::fork() >= 0);
    if (is("trace"))
        return failure(::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0);
    if (is("signal"))
        return failure(::kill(::getppid(), 0) == 0);
    if (is("code"))
        return failure(::mmap(nullptr, 4096, PROT_READ | PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) != MAP_FAILED);
    if (is("unprotect")) {
        void *const page = ::mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        return failure(::mprotect(page, 4096, PROT_READ | PROT_EXEC) == 0);
    }
    if (is("thread")) {
        int result = 1;
        std::thread([&result] { result = 0; }).join();
        return result;
    }
    if (is("pool")) {
        QThreadPool pool;
        std::atomic<int> count{0};
        for (int i = 0; i < 8; ++i)
            pool.start(new Counter(&count));
        pool.waitForDone();
        return count == 8 ? 0 : 1;
    }
    return EINVAL;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc < 3)
        return EINVAL;
    std::puts(qPrintable(Viewer::Sandbox::enter({argv[1]}).join(QLatin1Char(' '))));
    std::fflush(stdout);
    const int result = act(argv[2], argc > 3 ? argv[3] : "");
    ::_exit(result);
}
