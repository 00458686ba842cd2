// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HEAPCOUNTER_H
#define HEAPCOUNTER_H

#include <cstddef>

/**
 * The heap of this process, counted to the byte: a program that this is linked into gets an allocator that counts every
 * block, with the bytes that the C library sets aside for it, and leaves the rest to the C library.
 */
namespace HeapCounter {

/// Bytes in blocks that are in use.
std::size_t used();
/// The largest number of them since the program started, or since forgetPeak().
std::size_t peak();
void forgetPeak();

} // namespace HeapCounter

#endif
