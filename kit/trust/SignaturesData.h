// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SIGNATURESDATA_H
#define SORRELKIT_SIGNATURESDATA_H

#include "trust/SdkRange.h"
#include "trust/SignerData.h"

#include <SorrelKit/Signatures.h>

#include <QMap>
#include <QSharedData>

namespace SorrelKit {

/// The values of Signatures, see there.
struct SignaturesFields {
    QString name;
    SdkRange sdk;
    QList<Signer::Scheme> schemes;               ///< that verified
    QMap<Signer::Scheme, QList<Signer>> signers; ///< of these schemes
    Certificate stamp;
    QList<SignatureIssue> errors;
    QList<SignatureIssue> warnings;
    QList<Signatures> packages;
};

class SignaturesData : public QSharedData, public SignaturesFields
{
};

/// Makes objects of the public classes.
class SignatureAccess
{
public:
    static Signer signer(const SignerFields &fields)
    {
        Signer result;
        static_cast<SignerFields &>(*result.d) = fields;
        return result;
    }
    static Signatures signatures(const SignaturesFields &fields)
    {
        Signatures result;
        static_cast<SignaturesFields &>(*result.d) = fields;
        return result;
    }
};

} // namespace SorrelKit

#endif
