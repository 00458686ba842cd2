// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SCHEMERESULT_H
#define SORRELKIT_SCHEMERESULT_H

#include "trust/result/IssueList.h"
#include "trust/result/SignerFields.h"

#include <QByteArray>
#include <QVector>

namespace SorrelKit {

/// A digest of all content of a package, which v2 and later schemes sign.
struct ContentDigest {
    /// How the content is divided. The numbers are in the order of strength.
    enum class Kind {
        ChunkedSha256 = 1, ///< SHA-256 of the digests of chunks of 1 MiB
        VeritySha256 = 2,  ///< root hash of fs-verity's Merkle tree, and the length of the content
        ChunkedSha512 = 3, ///< SHA-512 of the digests of chunks of 1 MiB
    };

    Kind kind = Kind::ChunkedSha256;
    quint32 algorithm = 0; ///< id of the signature algorithm that the digest is listed with
    QByteArray digest;     ///< as signed
};

/// A signer, and what else the signer block has that other schemes refer to.
struct VerifiedSigner {
    SignerFields signer;
    QVector<ContentDigest> digests; ///< of v2 and later
};

/// The result of verifying a package by one scheme.
struct SchemeResult {
    explicit SchemeResult(Signer::Scheme of = Signer::Scheme::None) : scheme(of), issues(of) {}

    /// Whether the package is signed by the scheme, and everything about it is right.
    bool isVerified() const { return isFound && !issues.hasErrors() && !signers.isEmpty(); }

    Signer::Scheme scheme;
    bool isFound = false; ///< whether the package has anything of this scheme
    IssueList issues;
    QVector<VerifiedSigner> signers;
};

} // namespace SorrelKit

#endif
