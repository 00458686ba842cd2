// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HARNESS_H
#define HARNESS_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// visit() stops this many entries after the last entry with a value. Otherwise a walk takes as many loads as there are
/// ids.
constexpr int LongestGap = 16;

/// Aborts the process, as a sanitizer does when it finds a fault.
[[noreturn]] inline void failed(const char *text)
{
    std::fprintf(stderr, "ERROR: %s\n", text);
    std::abort();
}

/// Feeds one input to the library and visits everything that a caller can reach in the result. Returns 0.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

#endif
