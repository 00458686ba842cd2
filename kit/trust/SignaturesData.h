// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SIGNATURESDATA_H
#define SORRELKIT_SIGNATURESDATA_H

#include "trust/result/SdkRange.h"

#include <SorrelKit/SignatureIssue.h>

#include <QExplicitlySharedDataPointer>
#include <QList>
#include <QMap>
#include <QSharedData>
#include <QString>

namespace SorrelKit {

/// The values of Signatures, see there.
class SignaturesData : public QSharedData
{
public:
    using Pointer = QExplicitlySharedDataPointer<SignaturesData>;

    bool isVerified() const { return errors.isEmpty() && !schemes.isEmpty(); }

    QString name;
    SdkRange sdk;
    QList<Signer::Scheme> schemes;               ///< that verified
    QMap<Signer::Scheme, QList<Signer>> signers; ///< of these schemes
    Certificate stamp;
    QList<SignatureIssue> errors;
    QList<SignatureIssue> warnings;
    QList<Pointer> packages;
};

} // namespace SorrelKit

#endif
