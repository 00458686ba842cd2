// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SIGNATURESDATA_H
#define SORRELKIT_SIGNATURESDATA_H

#include "trust/SdkRange.h"

#include <SorrelKit/Signatures.h>

#include <QMap>
#include <QSharedData>

namespace SorrelKit {

class SignaturesData : public QSharedData
{
public:
    QString name;
    SdkRange sdk;
    QMap<Signer::Scheme, QList<Signer>> signers; ///< of the schemes that verified
    Certificate stamp;
    QList<SignatureIssue> errors;
    QList<SignatureIssue> warnings;
    QList<Signatures> packages;
};

} // namespace SorrelKit

#endif
