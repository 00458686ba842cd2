// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/crypto/CertificateAccess.h"

namespace SorrelKit {

Certificate CertificateAccess::decode(const ByteView &der)
{
    Certificate certificate;
    certificate.d = CertificateData::decode(der).data();
    return certificate;
}

} // namespace SorrelKit
