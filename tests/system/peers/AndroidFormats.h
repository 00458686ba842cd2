// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ANDROIDFORMATS_H
#define ANDROIDFORMATS_H

#include <cstdint>
#include <string>
#include <vector>

/// Documents and tables as Android's own resource library (Debian: android-libandroidfw-dev) reads them, as text.
namespace android_formats {

/// The elements of the document @p bytes up to the end of the root, as Android's package manager reads them: a line for
/// each start ("start manifest"), its attributes, and each end. "refused" when Android refuses the document.
std::string document(const std::string &bytes);

/// The values of the resources @p ids in the table @p bytes, a line each ("7f010000 sw0 de type 3 data 0 text Hallo").
/// "refused" when Android refuses the table; "no memory" when the library cannot take the memory for as many packages as
/// the header counts, at which a phone ends the program.
std::string table(const std::string &bytes, const std::vector<std::uint32_t> &ids);

} // namespace android_formats

#endif
