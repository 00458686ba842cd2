// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SIGNATUREBLOCKFILE_H
#define SORRELKIT_SIGNATUREBLOCKFILE_H

#include "format/ByteView.h"
#include "trust/result/SdkRange.h"

#include <SorrelKit/Certificate.h>
#include <SorrelKit/SignatureIssue.h>

#include <QString>

class Budget;

namespace SorrelKit {

/**
 * A signature block file of v1, META-INF/NAME.RSA: a SignedData of PKCS #7 (RFC 2315, RFC 5652) with the signature of
 * the signature file META-INF/NAME.SF, and with the certificate of the signer. OpenSSL decodes it.
 *
 * The signature is that of the file, or that of attributes, one of which has the file's digest. One SignerInfo has to
 * be right: the first, for versions before Nougat; any, from there on.
 *
 * No signature covers the block itself, so every field has the only value that signers write: versions are 1, the
 * content is data, the list of digests has that of the SignerInfo, parameters are NULL or missing, names are the same
 * byte for byte. The certificate has to be right, too: the key of its issuer, whose certificate is in the block, made
 * its signature, or its own key did. Only a certificate with the identifier of an issuer's key (RFC 5280, 4.2.1.1) may
 * be there without the issuer's.
 */
class SignatureBlockFile
{
public:
    /// Certificates in a block. A chain has three.
    static constexpr int MaxCertificates = 100;
    /// Work of decoding a byte: certificates are made of many small values.
    static constexpr qint64 WorkPerByte = 64;

    struct Result {
        SignatureIssue::Code code = SignatureIssue::Code::None; ///< None when the signature is right
        QString detail;
        Certificate certificate; ///< the signer's; null unless the signature is right
    };

    /// Verifies @p block, which signs @p signatureFile, for all versions in @p sdk.
    static Result verify(const ByteView &block, const ByteView &signatureFile, SdkRange sdk, Budget *budget);
};

} // namespace SorrelKit

#endif
