// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Signer.h>

#include <QSharedData>

#include <limits>

namespace SorrelKit {

class SignerData : public QSharedData
{
public:
    Certificate certificate;
    Signer::Scheme scheme = Signer::Scheme::None;
    int minSdkVersion = 0;
    int maxSdkVersion = std::numeric_limits<int>::max();
    QList<PastSigner> lineage;
};

Signer::Signer() : d(new SignerData) {}

Signer::Signer(const Certificate &certificate, Scheme scheme, int minSdkVersion, int maxSdkVersion,
               const QList<PastSigner> &lineage)
    : Signer()
{
    d->certificate = certificate;
    d->scheme = scheme;
    d->minSdkVersion = minSdkVersion;
    d->maxSdkVersion = maxSdkVersion;
    d->lineage = lineage;
}

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
