// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HEAPCOUNTER_H
#define HEAPCOUNTER_H

#include <cstddef>

/**
 * Counts the heap of this process: a program that links this gets an allocator that counts every block, with the bytes
 * that the C library sets aside for it, and leaves the rest to the C library. Libraries and plugins of the program use the
 * same allocator. In a build with sanitizers, which have an allocator of their own, every number is 0.
 */
namespace HeapCounter {

/// Bytes of the blocks that are in use.
std::size_t used();
/// The largest value of used() since the program started, or since forgetPeak().
std::size_t peak();
void forgetPeak();
/// Bytes of all blocks since the program started, freed ones included. A block that is resized counts again.
std::size_t allocated();
/// Number of these blocks.
std::size_t allocations();

} // namespace HeapCounter

#endif
