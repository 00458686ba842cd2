// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BOUNDS_H
#define BOUNDS_H

#include "Cost.h"

#include <QString>

namespace fixture {

/**
 * What any input may take on the heap.
 *
 * Memory: 64 MiB and six times the bytes that were read of the file, after inflating. Tests allow 48 MiB of the 64, and
 * leave the rest for what is not on the heap.
 *
 * Work, for each MiB of the file, and for a smaller one: bytes and blocks that are allocated, freed ones included. Work
 * that allocates nothing is bounded by budgets of its own, which docs/limits.md lists.
 */
class Bounds
{
public:
    static constexpr qint64 FixedMemory = qint64(48) << 20;
    static constexpr qint64 MemoryPerByte = 6;
    static constexpr qint64 Allocated = qint64(4) << 30;
    static constexpr qint64 Allocations = 24'000'000;

    /// What is wrong with @p taken by a file of @p fileSize bytes that inflates to @p inflatedSize; empty when nothing.
    /// @p fixedMemory takes the place of FixedMemory.
    static QString excess(const Cost &taken, qint64 fileSize, qint64 inflatedSize, qint64 fixedMemory = FixedMemory);
};

} // namespace fixture

#endif
