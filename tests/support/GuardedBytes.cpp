// SPDX-License-Identifier: LGPL-2.1-or-later
#include "GuardedBytes.h"

#include <cstring>

#include <sys/mman.h>
#include <unistd.h>

namespace fixture {

struct GuardedBytes::Memory {
    explicit Memory(const QByteArray &bytes) : size(std::size_t(bytes.size())), block(std::make_unique<uchar[]>(size))
    {
        const auto page = std::size_t(sysconf(_SC_PAGESIZE));
        const std::size_t readable = (size + page - 1) / page * page;
        mapped = readable + page;
        begin = static_cast<uchar *>(mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        if (begin == MAP_FAILED || mprotect(begin + readable, page, PROT_NONE) != 0)
            qFatal("no memory for a guarded page");
        atEnd = begin + readable - size;
        if (size > 0) {
            std::memcpy(block.get(), bytes.constData(), size);
            std::memcpy(atEnd, bytes.constData(), size);
        }
    }
    ~Memory() { munmap(begin, mapped); }

    std::size_t size;
    std::unique_ptr<uchar[]> block;
    uchar *begin = nullptr;
    std::size_t mapped = 0;
    uchar *atEnd = nullptr;
};

GuardedBytes::GuardedBytes(const QByteArray &bytes) : m_memory(std::make_shared<Memory>(bytes)) {}

ByteView GuardedBytes::inBlock() const
{
    return {m_memory->block.get(), qint64(m_memory->size)};
}

ByteView GuardedBytes::atPageEnd() const
{
    return {m_memory->atEnd, qint64(m_memory->size)};
}

} // namespace fixture
