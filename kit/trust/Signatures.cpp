// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Signatures.h>

#include "trust/SetVerifier.h"
#include "trust/SignaturesData.h"
#include "trust/SignerComparison.h"

namespace SorrelKit {

Signatures::Signatures() : d(new SignaturesData)
{
    d->errors.append(SignatureIssue(SignatureIssue::Code::CannotOpen, Signer::Scheme::None));
}

Signatures::Signatures(SignaturesData *data) : d(data) {}

Signatures::Signatures(const Package &package, const SignatureRequest &request) : Signatures()
{
    const SetVerifier verifier(package, request);
    if (verifier.isOpen())
        verifier.verify(d.data());
    else
        d->errors = {
            SignatureIssue(SignatureIssue::Code::CannotOpen, Signer::Scheme::None, {}, package.error().message())};
}

Signatures::Signatures(const Signatures &other) = default;
Signatures::Signatures(Signatures &&other) noexcept = default;
Signatures &Signatures::operator=(const Signatures &other) = default;
Signatures &Signatures::operator=(Signatures &&other) noexcept = default;
Signatures::~Signatures() = default;

bool Signatures::isVerified() const
{
    return d->isVerified();
}

QList<Signer::Scheme> Signatures::schemes() const
{
    return d->schemes;
}

QList<Signer> Signatures::signers() const
{
    return SignerComparison::currentSigners(*d);
}

QList<Signer> Signatures::signers(Signer::Scheme scheme) const
{
    return d->signers.value(scheme);
}

Certificate Signatures::stamp() const
{
    return d->stamp;
}

QList<SignatureIssue> Signatures::errors() const
{
    return d->errors;
}

QList<SignatureIssue> Signatures::warnings() const
{
    return d->warnings;
}

int Signatures::minSdkVersion() const
{
    return d->sdk.min;
}

int Signatures::maxSdkVersion() const
{
    return d->sdk.max;
}

QList<Signatures> Signatures::packages() const
{
    QList<Signatures> packages;
    for (const SignaturesData::Pointer &each : d->packages)
        packages.append(Signatures(each.data()));
    return packages;
}

QString Signatures::name() const
{
    return d->name;
}

Signer::Match Signatures::compareSigners(const Signatures &installed, const Signatures &update)
{
    if (!installed.isVerified() || !update.isVerified())
        return Signer::Match::Unverified;
    return SignerComparison::compare(installed.signers(), update.signers());
}

bool Signatures::sameSigner(const Signatures &installed, const Signatures &update)
{
    const Signer::Match match = compareSigners(installed, update);
    return match == Signer::Match::Same || match == Signer::Match::Rotated || match == Signer::Match::Rollback;
}

} // namespace SorrelKit
