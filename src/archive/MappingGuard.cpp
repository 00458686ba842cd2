// SPDX-License-Identifier: LGPL-2.1-or-later
#include "archive/MappingGuard.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <mutex>

#include <sys/mman.h>
#include <unistd.h>

namespace {

// A guarded range. The handler may run in any thread while another one changes a slot, so it takes no lock: it reads
// the version before and after the range, and skips a slot that changes, which cannot be the one of its own fault.
struct Slot {
    std::atomic<quint32> version{0}; ///< odd while the range is written
    std::atomic<std::uintptr_t> begin{0};
    std::atomic<std::uintptr_t> end{0};
};

std::array<Slot, MappingGuard::MaxMappings> guardedRanges;
std::mutex mutex; ///< of everything but what the handler reads
std::uintptr_t pageSize = 0;
struct sigaction previous = {};
bool isInstalled = false;

void setRange(Slot &slot, std::uintptr_t begin, std::uintptr_t end)
{
    slot.version.fetch_add(1);
    slot.begin = begin;
    slot.end = end;
    slot.version.fetch_add(1);
}

std::uintptr_t endOfRangeAt(std::uintptr_t address)
{
    for (const Slot &slot : guardedRanges) {
        const quint32 version = slot.version;
        const std::uintptr_t begin = slot.begin;
        const std::uintptr_t end = slot.end;
        if (version % 2 == 0 && slot.version == version && address >= begin && address < end)
            return end;
    }
    return 0;
}

void pass(int signal, siginfo_t *info, void *context)
{
    if ((previous.sa_flags & SA_SIGINFO) != 0 && previous.sa_sigaction != nullptr) {
        previous.sa_sigaction(signal, info, context);
    } else if (previous.sa_handler != SIG_DFL && previous.sa_handler != SIG_IGN) {
        previous.sa_handler(signal);
    } else {
        // The read is repeated, and the signal has its usual effect.
        struct sigaction usual = {};
        usual.sa_handler = SIG_DFL;
        ::sigaction(SIGBUS, &usual, nullptr);
    }
}

void handleBusError(int signal, siginfo_t *info, void *context)
{
    const int savedErrno = errno;
    const auto address = reinterpret_cast<std::uintptr_t>(info->si_addr);
    const std::uintptr_t end = info->si_code == BUS_ADRERR ? endOfRangeAt(address) : 0;
    const std::uintptr_t page = address - address % pageSize;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the address of the fault is a number.
    void *const start = reinterpret_cast<void *>(page);
    // mmap() is a bare system call, so it may be called here.
    if (end == 0 || ::mmap(start, end - page, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0) == MAP_FAILED)
        pass(signal, info, context);
    errno = savedErrno;
}

bool isHandlerInPlace()
{
    struct sigaction current = {};
    return ::sigaction(SIGBUS, nullptr, &current) == 0 && (current.sa_flags & SA_SIGINFO) != 0
           && current.sa_sigaction == handleBusError;
}

bool installOnce()
{
    if (isInstalled)
        return isHandlerInPlace();
    pageSize = std::uintptr_t(::sysconf(_SC_PAGESIZE));
    struct sigaction action = {};
    action.sa_sigaction = handleBusError;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_RESTART;
    ::sigemptyset(&action.sa_mask);
    isInstalled = ::sigaction(SIGBUS, nullptr, &previous) == 0 && ::sigaction(SIGBUS, &action, nullptr) == 0;
    return isInstalled;
}

} // namespace

int MappingGuard::guard(const void *begin, quint64 size)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (!installOnce())
        return -1;
    for (int number = 0; number < MaxMappings; ++number) {
        Slot &slot = guardedRanges[std::size_t(number)];
        if (slot.begin == 0) {
            const auto address = reinterpret_cast<std::uintptr_t>(begin);
            setRange(slot, address, address + size);
            return number;
        }
    }
    return -1;
}

void MappingGuard::release(int number)
{
    const std::lock_guard<std::mutex> lock(mutex);
    setRange(guardedRanges[std::size_t(number)], 0, 0);
}
