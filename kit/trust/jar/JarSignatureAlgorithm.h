// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_JARSIGNATUREALGORITHM_H
#define SORRELKIT_JARSIGNATUREALGORITHM_H

#include "trust/crypto/PublicKey.h"
#include "trust/result/SdkRange.h"

#include <QString>

#include <optional>

namespace SorrelKit {

/**
 * An algorithm of signatures in block files, and the versions of Android that know it.
 *
 * A SignerInfo has two identifiers: that of the digest, and that of the signature, which names the kind of the key
 * alone, or with the hash. Android knows some pairs from a level on; some it knew, forgot, and knows again.
 */
struct JarSignatureAlgorithm {
    /// API level from which a signature may be that of signed attributes.
    static constexpr int SignedAttributesFrom = 19;

    SignatureMethod method;
    int knownTo = 0;   ///< the last of the first API levels that know it; 0 when none of them does
    int knownFrom = 1; ///< the API level that knows it, with all later ones

    /// The algorithm with these identifiers, as OpenSSL numbers them; nothing when there is none, or they have
    /// different hashes.
    static std::optional<JarSignatureAlgorithm> find(int digestId, int signatureId);
    /// Whether all versions in @p sdk know it, for signed attributes or not.
    bool isKnown(SdkRange sdk, bool hasSignedAttributes) const;
    /// "SHA-256 with RSA".
    QString name() const;
};

} // namespace SorrelKit

#endif
