// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef NAMEHASH_H
#define NAMEHASH_H

#include "format/ByteView.h"

/**
 * A hash of the names of an archive's members that strangers cannot steer: SipHash-1-3 (Aumasson and Bernstein) with a
 * key that is drawn when the process asks first. Without a secret key, an archive could have names of one hash, and
 * finding them would take quadratic time. Qt 5's own hash of bytes is a checksum, whose key changes nothing about that.
 */
namespace NameHash {

struct Hashed {
    quint64 hash = 0;
    bool isPlain = true; ///< each byte is ASCII and not zero
};

/// The hash of @p name, and what reading it shows besides.
Hashed of(const ByteView &name);

} // namespace NameHash

#endif
