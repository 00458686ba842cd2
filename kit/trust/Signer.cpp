// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Signer.h>

#include "trust/SignerData.h"

namespace SorrelKit {

Signer::Signer() : d(new SignerData) {}
Signer::Signer(const Signer &other) = default;
Signer::Signer(Signer &&other) noexcept = default;
Signer &Signer::operator=(const Signer &other) = default;
Signer &Signer::operator=(Signer &&other) noexcept = default;
Signer::~Signer() = default;

Certificate Signer::certificate() const
{
    return d->certificate;
}

Signer::Scheme Signer::scheme() const
{
    return d->scheme;
}

int Signer::minSdkVersion() const
{
    return d->minSdkVersion;
}

int Signer::maxSdkVersion() const
{
    return d->maxSdkVersion;
}

QList<PastSigner> Signer::lineage() const
{
    return d->lineage;
}

} // namespace SorrelKit
