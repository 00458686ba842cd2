// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_JARDIGESTS_H
#define SORRELKIT_JARDIGESTS_H

#include "trust/crypto/Digest.h"
#include "trust/result/SdkRange.h"

#include <QByteArray>

#include <vector>

namespace SorrelKit {

/// A digest that a section has for some bytes.
struct JarDigest {
    HashAlgorithm algorithm = HashAlgorithm::Sha256;
    QByteArray value; ///< empty when the text in the section is no Base64, or has another length

    /// Whether it is that of @p bytes.
    bool isOf(const ByteView &bytes) const { return !value.isEmpty() && Digest::of(algorithm, bytes) == value; }
};

/**
 * The digests in @p section that versions of Android look at. Their attributes are named after the algorithm, with
 * @p suffix behind it ("-Digest").
 *
 * From API level 18 on, it is the strongest of SHA-512, SHA-384, SHA-256 and SHA1. Before, it is the first one that the
 * attribute Digest-Algorithms lists, or SHA1 without that attribute. For a range with both, there may be two digests,
 * and both have to be right. Empty when one of the versions would find none. Reads each byte of the section once.
 */
std::vector<JarDigest> jarDigests(const ByteView &section, const char *suffix, SdkRange sdk);

} // namespace SorrelKit

#endif
