// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MEMORYLIMIT_H
#define MEMORYLIMIT_H

namespace fixture {

/// Whether the tools of this build limit their memory. AddressSanitizer keeps more data than the program, so it has no
/// limit.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool canLimitMemory = false;
#elif defined(__has_feature)
constexpr bool canLimitMemory = !__has_feature(address_sanitizer);
#else
constexpr bool canLimitMemory = true;
#endif

} // namespace fixture

#endif
