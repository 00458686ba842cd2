// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BOUNDS_H
#define BOUNDS_H

#include "Cost.h"

#include <QString>

namespace fixture {

/**
 * What any input may take: of memory, 64 MiB and six times the bytes that were read of it, after inflating; of
 * processor time, 2 s for each MiB of the file, and for a smaller one. What the process itself has already, Qt's
 * libraries above all, is counted as 16 MiB of the 64.
 */
class Bounds
{
public:
    static constexpr qint64 FixedMemory = 48 << 20;
    static constexpr int MemoryPerByte = 6;
    static constexpr double Seconds = 2;

    /// What is wrong with @p taken by a file of @p fileSize bytes that inflates to @p inflatedSize; empty when nothing.
    /// @p fixedMemory takes the place of FixedMemory.
    static QString excess(const Cost &taken, qint64 fileSize, qint64 inflatedSize, qint64 fixedMemory = FixedMemory);
};

} // namespace fixture

#endif
