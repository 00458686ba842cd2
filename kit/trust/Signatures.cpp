// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Signatures.h>

#include "trust/SignaturesData.h"

namespace SorrelKit {

Signatures::Signatures() : d(new SignaturesData)
{
    d->errors.append(SignatureIssue(SignatureIssue::Code::CannotOpen, Signer::Scheme::None));
}

Signatures::Signatures(const Package &package, const SignatureRequest &request) : Signatures()
{
    Q_UNUSED(package)
    Q_UNUSED(request)
}

Signatures::Signatures(const Signatures &other) = default;
Signatures::Signatures(Signatures &&other) noexcept = default;
Signatures &Signatures::operator=(const Signatures &other) = default;
Signatures &Signatures::operator=(Signatures &&other) noexcept = default;
Signatures::~Signatures() = default;

bool Signatures::isVerified() const
{
    return d->errors.isEmpty();
}

QList<Signer::Scheme> Signatures::schemes() const
{
    return d->signers.keys();
}

QList<Signer> Signatures::signers() const
{
    const QList<Signer::Scheme> tried{Signer::Scheme::V31, Signer::Scheme::V3, Signer::Scheme::V2, Signer::Scheme::V1};
    for (const Signer::Scheme scheme : tried) {
        const QList<Signer> found = signers(scheme);
        if (!found.isEmpty())
            return found;
    }
    return {};
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
    return d->packages;
}

QString Signatures::name() const
{
    return d->name;
}

Signatures::SignerMatch Signatures::compareSigners(const Signatures &installed, const Signatures &update)
{
    Q_UNUSED(installed)
    Q_UNUSED(update)
    return SignerMatch::Unverified;
}

bool Signatures::sameSigner(const Signatures &installed, const Signatures &update)
{
    const SignerMatch match = compareSigners(installed, update);
    return match == SignerMatch::Same || match == SignerMatch::Rotated || match == SignerMatch::Rollback;
}

} // namespace SorrelKit
