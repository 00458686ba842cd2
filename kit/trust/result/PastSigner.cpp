// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/PastSigner.h>

#include <QSharedData>

namespace SorrelKit {

class PastSignerData : public QSharedData
{
public:
    Certificate certificate;
    PastSigner::Capabilities capabilities;
};

PastSigner::PastSigner() : d(new PastSignerData) {}

PastSigner::PastSigner(const Certificate &certificate, Capabilities capabilities) : PastSigner()
{
    d->certificate = certificate;
    d->capabilities = capabilities;
}

PastSigner::PastSigner(const PastSigner &other) = default;
PastSigner::PastSigner(PastSigner &&other) noexcept = default;
PastSigner &PastSigner::operator=(const PastSigner &other) = default;
PastSigner &PastSigner::operator=(PastSigner &&other) noexcept = default;
PastSigner::~PastSigner() = default;

Certificate PastSigner::certificate() const
{
    return d->certificate;
}

PastSigner::Capabilities PastSigner::capabilities() const
{
    return d->capabilities;
}

} // namespace SorrelKit
