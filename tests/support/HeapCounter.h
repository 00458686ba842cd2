// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HEAPCOUNTER_H
#define HEAPCOUNTER_H

#include <cstddef>

/**
 * Counts the heap of this process. A program that links this file gets an allocator that counts every block with its
 * usable size and then calls the C library. Libraries and plugins of the program use the same allocator. Sanitizers
 * have an allocator of their own, so every number is 0 in their builds.
 */
namespace HeapCounter {

/// Bytes of the blocks in use.
std::size_t used();
/// The largest value of used() since the program started, or since forgetPeak().
std::size_t peak();
void forgetPeak();
/// Bytes of all blocks since the program started, including freed ones. A resized block counts again.
std::size_t allocated();
/// Number of these blocks.
std::size_t allocations();

} // namespace HeapCounter

#endif
