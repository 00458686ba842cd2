// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_CERTIFICATEDATA_H
#define SORRELKIT_CERTIFICATEDATA_H

#include "trust/crypto/PublicKey.h"

#include <QByteArray>
#include <QDateTime>
#include <QExplicitlySharedDataPointer>
#include <QSharedData>
#include <QString>

namespace SorrelKit {

/// The fields of a certificate, decoded by OpenSSL.
class CertificateData : public QSharedData
{
public:
    /// Bytes of a certificate. Certificates in use have some thousands.
    static constexpr qint64 MaxBytes = 1 << 20;

    /// The fields of the certificate that the bytes @p der are, from their first to their last; null when they are
    /// damaged, or more than MaxBytes.
    static QExplicitlySharedDataPointer<CertificateData> decode(const ByteView &der);

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

} // namespace SorrelKit

#endif
