// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef GUARDEDBYTES_H
#define GUARDEDBYTES_H

#include "format/ByteView.h"

#include <QByteArray>

#include <memory>

namespace fixture {

/**
 * Bytes at places where a read beyond their end is a fault: in a block of the heap of exactly their size, which
 * AddressSanitizer watches, and at the end of a page before one that cannot be read.
 */
class GuardedBytes
{
public:
    explicit GuardedBytes(const QByteArray &bytes);

    ByteView inBlock() const;
    ByteView atPageEnd() const;
    /// Keeps both in memory.
    std::shared_ptr<const void> owner() const { return m_memory; }

private:
    struct Memory;

    std::shared_ptr<const Memory> m_memory;
};

} // namespace fixture

#endif
