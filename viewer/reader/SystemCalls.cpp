// SPDX-License-Identifier: LGPL-2.1-or-later
#include "SystemCalls.h"

#ifdef SORREL_HAS_SECCOMP

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <iterator>
#include <memory>
#include <sched.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

// Numbers that the processor does not have are negative; libseccomp leaves them out.
constexpr int AllowedCalls[] = {
    // Open descriptors
    SCMP_SYS(close),
    SCMP_SYS(dup),
    SCMP_SYS(fstat),
    SCMP_SYS(fstat64),
    SCMP_SYS(lseek),
    SCMP_SYS(_llseek),
    SCMP_SYS(poll),
    SCMP_SYS(ppoll),
    SCMP_SYS(ppoll_time64),
    SCMP_SYS(pread64),
    SCMP_SYS(read),
    SCMP_SYS(readv),
    SCMP_SYS(write),
    SCMP_SYS(writev),
    SCMP_SYS(getdents64),
    SCMP_SYS(eventfd2),
    SCMP_SYS(pipe2),
    // Names of files
    SCMP_SYS(access),
    SCMP_SYS(faccessat),
    SCMP_SYS(faccessat2),
    SCMP_SYS(fstatat64),
    SCMP_SYS(getcwd),
    SCMP_SYS(lstat),
    SCMP_SYS(lstat64),
    SCMP_SYS(newfstatat),
    SCMP_SYS(readlink),
    SCMP_SYS(readlinkat),
    SCMP_SYS(stat),
    SCMP_SYS(stat64),
    SCMP_SYS(statx),
    // Memory
    SCMP_SYS(brk),
    SCMP_SYS(madvise),
    SCMP_SYS(mremap),
    SCMP_SYS(munmap),
    // Threads
    SCMP_SYS(exit),
    SCMP_SYS(exit_group),
    SCMP_SYS(futex),
    SCMP_SYS(futex_time64),
    SCMP_SYS(getcpu),
    SCMP_SYS(get_robust_list),
    SCMP_SYS(membarrier),
    SCMP_SYS(restart_syscall),
    SCMP_SYS(rseq),
    SCMP_SYS(rt_sigaction),
    SCMP_SYS(rt_sigprocmask),
    SCMP_SYS(rt_sigreturn),
    SCMP_SYS(sched_getaffinity),
    SCMP_SYS(sched_getparam),
    SCMP_SYS(sched_getscheduler),
    SCMP_SYS(sched_get_priority_max),
    SCMP_SYS(sched_get_priority_min),
    SCMP_SYS(sched_yield),
    SCMP_SYS(set_robust_list),
    SCMP_SYS(sigaltstack),
    SCMP_SYS(sigreturn),
    // Time, numbers and names of this process and of the system
    SCMP_SYS(clock_getres),
    SCMP_SYS(clock_getres_time64),
    SCMP_SYS(clock_gettime),
    SCMP_SYS(clock_gettime64),
    SCMP_SYS(clock_nanosleep),
    SCMP_SYS(clock_nanosleep_time64),
    SCMP_SYS(getegid),
    SCMP_SYS(getegid32),
    SCMP_SYS(geteuid),
    SCMP_SYS(geteuid32),
    SCMP_SYS(getgid),
    SCMP_SYS(getgid32),
    SCMP_SYS(getpid),
    SCMP_SYS(getppid),
    SCMP_SYS(getrandom),
    SCMP_SYS(getrlimit),
    SCMP_SYS(getrusage),
    SCMP_SYS(gettid),
    SCMP_SYS(gettimeofday),
    SCMP_SYS(getuid),
    SCMP_SYS(getuid32),
    SCMP_SYS(nanosleep),
    SCMP_SYS(sysinfo),
    SCMP_SYS(time),
    SCMP_SYS(times),
    SCMP_SYS(ugetrlimit),
    SCMP_SYS(uname),
};

constexpr int DeadlyCalls[] = {
    SCMP_SYS(execve), SCMP_SYS(execveat), SCMP_SYS(ptrace), SCMP_SYS(process_vm_readv), SCMP_SYS(process_vm_writev),
};

// The C library has an older call in place of these, but only for this error. The flags of clone3() are in memory,
// where a filter does not see them.
constexpr int MissingCalls[] = {SCMP_SYS(clone3)};

/// A call that is allowed when an argument has given bits.
struct Condition {
    int call;
    scmp_arg_cmp argument;
};

bool isAdded(int result)
{
    // A call that the processor does not have, or for which there is no better rule.
    return result == 0 || result == -EDOM || result == -EEXIST;
}

bool addRules(scmp_filter_ctx filter)
{
    const auto all = [filter](auto &calls, uint32_t action) {
        return std::all_of(std::begin(calls), std::end(calls),
                           [=](int call) { return isAdded(seccomp_rule_add(filter, action, call, 0)); });
    };
    constexpr scmp_datum_t Writing = O_ACCMODE | O_CREAT | O_TRUNC | O_APPEND;
    const auto self = scmp_datum_t(::getpid());
    const Condition conditions[] = {
        {SCMP_SYS(open), {1, SCMP_CMP_MASKED_EQ, Writing, O_RDONLY}},
        {SCMP_SYS(openat), {2, SCMP_CMP_MASKED_EQ, Writing, O_RDONLY}},
        {SCMP_SYS(mmap), {2, SCMP_CMP_MASKED_EQ, PROT_EXEC, 0}},
        {SCMP_SYS(mmap2), {2, SCMP_CMP_MASKED_EQ, PROT_EXEC, 0}},
        {SCMP_SYS(mprotect), {2, SCMP_CMP_MASKED_EQ, PROT_EXEC, 0}},
        // Threads, no processes.
        {SCMP_SYS(clone), {0, SCMP_CMP_MASKED_EQ, CLONE_THREAD, CLONE_THREAD}},
        {SCMP_SYS(tgkill), {0, SCMP_CMP_EQ, self, 0}},
        {SCMP_SYS(prlimit64), {2, SCMP_CMP_EQ, 0, 0}},
        {SCMP_SYS(prctl), {0, SCMP_CMP_EQ, PR_SET_NAME, 0}},
        {SCMP_SYS(prctl), {0, SCMP_CMP_EQ, PR_GET_NAME, 0}},
        {SCMP_SYS(fcntl), {1, SCMP_CMP_EQ, F_GETFD, 0}},
        {SCMP_SYS(fcntl), {1, SCMP_CMP_EQ, F_SETFD, 0}},
        {SCMP_SYS(fcntl), {1, SCMP_CMP_EQ, F_GETFL, 0}},
        {SCMP_SYS(fcntl), {1, SCMP_CMP_EQ, F_DUPFD_CLOEXEC, 0}},
    };
    return all(AllowedCalls, SCMP_ACT_ALLOW) && all(DeadlyCalls, SCMP_ACT_KILL_PROCESS)
           && all(MissingCalls, SCMP_ACT_ERRNO(ENOSYS))
           && std::all_of(std::begin(conditions), std::end(conditions), [filter](const Condition &each) {
                  return isAdded(seccomp_rule_add_array(filter, SCMP_ACT_ALLOW, each.call, 1, &each.argument));
              });
}

} // namespace

bool Viewer::SystemCalls::limit()
{
    const std::unique_ptr<void, void (*)(scmp_filter_ctx)> filter(seccomp_init(SCMP_ACT_ERRNO(EPERM)), seccomp_release);
    return filter != nullptr && addRules(filter.get()) && seccomp_load(filter.get()) == 0;
}

#else

bool Viewer::SystemCalls::limit()
{
    return false;
}

#endif
