// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BOUNDS_H
#define BOUNDS_H

#include "Cost.h"

#include <QString>

namespace fixture {

/**
 * The bounds of heap use for any input.
 *
 * Memory: 64 MiB and six times the inflated bytes that were read. Tests allow 48 of the 64 MiB, because some memory is
 * not on the heap.
 *
 * Work: bytes and blocks of all allocations, including freed ones, for each MiB of the file or for a smaller file.
 * Budgets bound the work that allocates nothing; docs/limits.md lists them.
 */
class Bounds
{
public:
    static constexpr qint64 FixedMemory = qint64(48) << 20;
    static constexpr qint64 MemoryPerByte = 6;
    static constexpr qint64 Allocated = qint64(4) << 30;
    static constexpr qint64 Allocations = 24'000'000;

    /// The error text when @p taken exceeds the bounds for a file of @p fileSize bytes that inflates to @p
    /// inflatedSize; empty otherwise. @p fixedMemory replaces FixedMemory.
    static QString excess(const Cost &taken, qint64 fileSize, qint64 inflatedSize, qint64 fixedMemory = FixedMemory);
};

} // namespace fixture

#endif
