// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HARNESS_H
#define HARNESS_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// How far visit() goes on after the last entry with a value: a walk takes as long as many loads otherwise.
constexpr int LongestGap = 16;

/// Ends the process, as a fault that a sanitizer finds does.
[[noreturn]] inline void failed(const char *text)
{
    std::fprintf(stderr, "ERROR: %s\n", text);
    std::abort();
}

/// Feeds one input to the library, and visits everything that a caller can reach in the result. Returns 0.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

#endif
