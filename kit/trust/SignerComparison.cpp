// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/SignerComparison.h"

#include <QSet>

#include <algorithm>

namespace SorrelKit {

namespace {

QSet<QByteArray> certificatesOf(const QList<Signer> &signers)
{
    QSet<QByteArray> certificates;
    for (const Signer &each : signers)
        certificates.insert(each.certificate().der());
    return certificates;
}

/// Whether @p signer changed the key from @p past, and lets it do @p capability.
bool trusts(const Signer &signer, const Certificate &past, PastSigner::Capability capability)
{
    const QList<PastSigner> lineage = signer.lineage();
    return std::any_of(lineage.cbegin(), lineage.cend(), [&](const PastSigner &each) {
        return each.certificate() == past && each.capabilities().testFlag(capability);
    });
}

} // namespace

QList<Signer> SignerComparison::currentSigners(const SignaturesData &signatures)
{
    for (const Signer::Scheme scheme : {Signer::Scheme::V31, Signer::Scheme::V3}) {
        const QList<Signer> signers = signatures.signers.value(scheme);
        const auto newest = std::max_element(signers.cbegin(), signers.cend(), [](const Signer &a, const Signer &b) {
            return a.maxSdkVersion() < b.maxSdkVersion();
        });
        if (newest != signers.cend())
            return {*newest};
    }
    const QList<Signer> ofV2 = signatures.signers.value(Signer::Scheme::V2);
    return ofV2.isEmpty() ? signatures.signers.value(Signer::Scheme::V1) : ofV2;
}

Signer::Match SignerComparison::compare(const QList<Signer> &installed, const QList<Signer> &update)
{
    using Match = Signer::Match;
    if (installed.isEmpty() || update.isEmpty())
        return Match::Unverified;
    if (certificatesOf(installed) == certificatesOf(update))
        return Match::Same;
    if (installed.size() > 1 || update.size() > 1)
        return Match::Different;
    const Signer &before = installed.first();
    const Signer &after = update.first();
    if (trusts(after, before.certificate(), PastSigner::Capability::InstalledData))
        return Match::Rotated;
    return trusts(before, after.certificate(), PastSigner::Capability::Rollback) ? Match::Rollback : Match::Different;
}

} // namespace SorrelKit
