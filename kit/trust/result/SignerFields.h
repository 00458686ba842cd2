// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SIGNERFIELDS_H
#define SORRELKIT_SIGNERFIELDS_H

#include <SorrelKit/Signer.h>

#include <limits>

namespace SorrelKit {

/// The values of a Signer while they are found out.
struct SignerFields {
    Certificate certificate;
    Signer::Scheme scheme = Signer::Scheme::None;
    int minSdkVersion = 0;
    int maxSdkVersion = std::numeric_limits<int>::max();
    QList<PastSigner> lineage;

    Signer toSigner() const { return {certificate, scheme, minSdkVersion, maxSdkVersion, lineage}; }
};

} // namespace SorrelKit

#endif
