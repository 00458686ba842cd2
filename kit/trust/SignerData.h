// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SIGNERDATA_H
#define SORRELKIT_SIGNERDATA_H

#include <SorrelKit/Signer.h>

#include <QSharedData>

#include <limits>

namespace SorrelKit {

/// The values of a signer, see there.
struct SignerFields {
    Certificate certificate;
    Signer::Scheme scheme = Signer::Scheme::None;
    int minSdkVersion = 0;
    int maxSdkVersion = std::numeric_limits<int>::max();
    QList<PastSigner> lineage;
};

class SignerData : public QSharedData, public SignerFields
{
};

} // namespace SorrelKit

#endif
