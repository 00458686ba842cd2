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

QString Signer::schemeName(Scheme scheme)
{
    switch (scheme) {
    case Scheme::None:
        break;
    case Scheme::V1:
        return QStringLiteral("v1");
    case Scheme::V2:
        return QStringLiteral("v2");
    case Scheme::V3:
        return QStringLiteral("v3");
    case Scheme::V31:
        return QStringLiteral("v3.1");
    case Scheme::V4:
        return QStringLiteral("v4");
    case Scheme::Stamp:
        return QStringLiteral("stamp");
    }
    return {};
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
