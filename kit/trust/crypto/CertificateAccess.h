// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_CERTIFICATEACCESS_H
#define SORRELKIT_CERTIFICATEACCESS_H

#include "trust/crypto/CertificateData.h"

#include <SorrelKit/Certificate.h>

namespace SorrelKit {

/// Makes certificates, and reaches into them.
class CertificateAccess
{
public:
    /// The certificate in @p der; a null one when CertificateData::decode() refuses the bytes.
    static Certificate decode(const ByteView &der);
    /// The fields of @p certificate, which must not be null.
    static const CertificateData &data(const Certificate &certificate) { return *certificate.d; }
};

} // namespace SorrelKit

#endif
