// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SIGNERCOMPARISON_H
#define SORRELKIT_SIGNERCOMPARISON_H

#include "trust/SignaturesData.h"

#include <QList>

namespace SorrelKit {

/// Compares the signers of packages as Android's package manager does.
namespace SignerComparison {

/// The signers on a device of the newest version that the package was verified for.
QList<Signer> currentSigners(const SignaturesData &signatures);

/**
 * How the signers of an installed package and of its update relate.
 *
 * Two packages have the same signers when the sets of their certificates are equal. A single signer may have changed the
 * key: the lineage of the update then has the installed package's certificate, with the capability to hand over its
 * data. An update may also have an older key, when the lineage of the installed package's signer allows rollbacks to it.
 */
Signer::Match compare(const QList<Signer> &installed, const QList<Signer> &update);

} // namespace SignerComparison

} // namespace SorrelKit

#endif
