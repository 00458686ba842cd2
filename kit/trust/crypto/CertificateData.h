// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_CERTIFICATEDATA_H
#define SORRELKIT_CERTIFICATEDATA_H

#include "trust/crypto/PublicKey.h"

#include <SorrelKit/Certificate.h>

#include <QByteArray>
#include <QDateTime>
#include <QSharedData>
#include <QString>

namespace SorrelKit {

/// The fields of a certificate, decoded by OpenSSL.
class CertificateData : public QSharedData
{
public:
    QByteArray der;
    QString subject;
    QString issuer;
    QByteArray issuerDer; ///< as in the certificate
    QString serialNumber;
    QByteArray serialDer; ///< the INTEGER, as in the certificate
    QDateTime notBefore;
    QDateTime notAfter;
    QString signatureAlgorithm;
    QByteArray publicKeyDer;
    PublicKey publicKey; ///< no key when it is damaged or has an algorithm that OpenSSL does not know
};

/// Makes certificates, and reaches into them.
class CertificateAccess
{
public:
    /// Bytes of a certificate. Those in use have some thousands.
    static constexpr qint64 MaxBytes = 1 << 20;

    /// The certificate that the bytes @p der are, from their first to their last; a null one when they are damaged, or
    /// more than MaxBytes.
    static Certificate decode(const ByteView &der);
    /// The fields of @p certificate, which must not be null.
    static const CertificateData &data(const Certificate &certificate) { return *certificate.d; }
};

} // namespace SorrelKit

#endif
