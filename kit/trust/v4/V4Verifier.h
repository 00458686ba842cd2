// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_V4VERIFIER_H
#define SORRELKIT_V4VERIFIER_H

#include "trust/result/SchemeResult.h"

class Budget;
class ByteSource;

namespace SorrelKit {

/// Verifies v4 signatures: a signature on the root of the hash tree of the whole file, in a file of its own. It needs
/// another signature in the package, whose signer and digest it repeats.
class V4Verifier
{
public:
    /// Bytes of a salt, fs-verity's limit. apksigner writes none.
    static constexpr int MaxSaltBytes = 32;

    /**
     * The signature in @p idsig on @p package, which v2, v3 or v3.1 verified with @p counterpart. With v3.1, the signing
     * info of v3.1 counts, otherwise the first one. All signing infos must be right.
     *
     * Another hash or page size, a salt above MaxSaltBytes, and bytes behind the last field are errors. The tree may be
     * missing. A salt is hashed before each page as fs-verity does (Linux, Documentation/filesystems/fsverity.rst).
     *
     * Cost: the hashes of the whole package, on all processors, unless a cheaper check fails; the tree, which has a
     * 127th of the package's size, is held in @p budget. Signatures spend theirs.
     */
    static SchemeResult verify(ByteSource &package, ByteSource &idsig, const SchemeResult &counterpart, Budget *budget);
};

} // namespace SorrelKit

#endif
