// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SIGNATUREALGORITHMS_H
#define SORRELKIT_SIGNATUREALGORITHMS_H

#include "trust/crypto/PublicKey.h"
#include "trust/result/SchemeResult.h"

#include <QString>

namespace SorrelKit {

/// An algorithm that v2 and later schemes know by a number: how signed data is signed, and which digest of the content
/// is in it.
struct SignatureAlgorithm {
    quint32 id = 0;
    SignatureMethod method;
    ContentDigest::Kind kind = ContentDigest::Kind::ChunkedSha256;
    int minSdkVersion = 0; ///< the first API level that knows it
};

/// The algorithms that Android knows.
namespace SignatureAlgorithms {

/// The algorithm with the number @p id; null when it is unknown. The result is never destroyed.
const SignatureAlgorithm *find(quint32 id);
/// "0x0103", as in Android's documents.
QString idText(quint32 id);

} // namespace SignatureAlgorithms

} // namespace SorrelKit

#endif
