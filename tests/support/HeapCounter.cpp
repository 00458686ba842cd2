// SPDX-License-Identifier: LGPL-2.1-or-later
#include "HeapCounter.h"

#include <atomic>
#include <cerrno>
#include <malloc.h>

// Further names of the C library's allocator.
extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
void *__libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void *block);
}

namespace {

std::atomic<std::size_t> usedBytes{0};
std::atomic<std::size_t> peakBytes{0};
std::atomic<std::size_t> allocatedBytes{0};
std::atomic<std::size_t> allocatedBlocks{0};

#if !SORREL_SANITIZED
void *counted(void *block)
{
    if (block == nullptr)
        return nullptr;
    const std::size_t size = malloc_usable_size(block);
    allocatedBytes.fetch_add(size, std::memory_order_relaxed);
    allocatedBlocks.fetch_add(1, std::memory_order_relaxed);
    const std::size_t now = usedBytes.fetch_add(size) + size;
    std::size_t peak = peakBytes.load();
    while (now > peak && !peakBytes.compare_exchange_weak(peak, now)) {
    }
    return block;
}
#endif

} // namespace

std::size_t HeapCounter::used()
{
    return usedBytes.load();
}

std::size_t HeapCounter::peak()
{
    return peakBytes.load();
}

void HeapCounter::forgetPeak()
{
    peakBytes.store(usedBytes.load());
}

std::size_t HeapCounter::allocated()
{
    return allocatedBytes.load();
}

std::size_t HeapCounter::allocations()
{
    return allocatedBlocks.load();
}

#if !SORREL_SANITIZED
extern "C" {

void *malloc(std::size_t size) noexcept
{
    return counted(__libc_malloc(size));
}

void *calloc(std::size_t count, std::size_t size) noexcept
{
    return counted(__libc_calloc(count, size));
}

void *realloc(void *block, std::size_t size) noexcept
{
    const std::size_t before = block != nullptr ? malloc_usable_size(block) : 0;
    void *moved = __libc_realloc(block, size);
    // A block that cannot grow stays as it is; a block of size 0 is freed.
    if (moved == nullptr && size != 0)
        return nullptr;
    usedBytes.fetch_sub(before);
    return counted(moved);
}

void *reallocarray(void *block, std::size_t count, std::size_t size) noexcept
{
    std::size_t bytes = 0;
    if (__builtin_mul_overflow(count, size, &bytes)) {
        errno = ENOMEM;
        return nullptr;
    }
    return realloc(block, bytes);
}

void free(void *block) noexcept
{
    if (block != nullptr)
        usedBytes.fetch_sub(malloc_usable_size(block));
    __libc_free(block);
}

void *memalign(std::size_t alignment, std::size_t size) noexcept
{
    return counted(__libc_memalign(alignment, size));
}

void *aligned_alloc(std::size_t alignment, std::size_t size) noexcept
{
    return memalign(alignment, size);
}

int posix_memalign(void **block, std::size_t alignment, std::size_t size) noexcept
{
    void *made = memalign(alignment, size);
    if (made == nullptr)
        return ENOMEM;
    *block = made;
    return 0;
}
}
#endif
