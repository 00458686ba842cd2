// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_CERTIFICATE_H
#define SORRELKIT_CERTIFICATE_H

#include <SorrelKit/TrustExport.h>

#include <QByteArray>
#include <QCryptographicHash>
#include <QDateTime>
#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

namespace SorrelKit {

class CertificateData;

/**
 * The X.509 certificate (RFC 5280) of a signer. Android compares certificates as bytes: nobody vouches for them, their
 * names are what the signer wrote, and their validity has no effect.
 *
 * The values stay valid when the package is gone. Copies share their data and are cheap. Every operation takes constant
 * time, fingerprints the time of hashing the certificate, and cannot fail. Different objects may be used in different
 * threads.
 *
 * @since 0.5.1
 */
class SORRELTRUST_EXPORT Certificate
{
    Q_GADGET
    Q_PROPERTY(bool null READ isNull CONSTANT)
    Q_PROPERTY(QString subject READ subject CONSTANT)
    Q_PROPERTY(QString issuer READ issuer CONSTANT)
    Q_PROPERTY(QString serialNumber READ serialNumber CONSTANT)
    Q_PROPERTY(QDateTime notBefore READ notBefore CONSTANT)
    Q_PROPERTY(QDateTime notAfter READ notAfter CONSTANT)
    Q_PROPERTY(QString signatureAlgorithm READ signatureAlgorithm CONSTANT)
    Q_PROPERTY(QString keyAlgorithm READ keyAlgorithm CONSTANT)
    Q_PROPERTY(int keyBits READ keyBits CONSTANT)

public:
    /// No certificate. @since 0.5.1
    Certificate();
    /// A copy of @p other. @since 0.5.1
    Certificate(const Certificate &other);
    /// Takes the value of @p other. @since 0.5.1
    Certificate(Certificate &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    Certificate &operator=(const Certificate &other);
    /// Takes the value of @p other. @since 0.5.1
    Certificate &operator=(Certificate &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~Certificate();
    /// Exchanges the values of two certificates. @since 0.5.1
    void swap(Certificate &other) noexcept { d.swap(other.d); }
    /// The certificate in @p der; a null one when the bytes are damaged, or others follow them. @since 0.5.1
    static Certificate fromDer(const QByteArray &der);

    /// Whether there is no certificate: all values are empty, and the fingerprints too. @since 0.5.1
    bool isNull() const;
    /// The certificate's bytes, in DER. @since 0.5.1
    QByteArray der() const;
    /// The subject's distinguished name in the form of RFC 2253 ("CN=Jane,O=Example,C=DE"); it may have any characters,
    /// so a program that shows it has to make it harmless. @since 0.5.1
    QString subject() const;
    /// The issuer's distinguished name, in the same form. @since 0.5.1
    QString issuer() const;
    /// The serial number in lower-case hexadecimal digits, without leading zeros, with "-" before a negative one ("1f").
    /// @since 0.5.1
    QString serialNumber() const;
    /// The begin of the validity, in UTC; null when it is damaged. @since 0.5.1
    QDateTime notBefore() const;
    /// The end of the validity, in UTC; null when it is damaged. @since 0.5.1
    QDateTime notAfter() const;
    /// The name of the algorithm by which the issuer signed ("sha256WithRSAEncryption"), or its dotted number when it
    /// has no known name. @since 0.5.1
    QString signatureAlgorithm() const;
    /// "RSA", "DSA" or "EC"; empty for another one, or a key that is damaged. @since 0.5.1
    QString keyAlgorithm() const;
    /// Bits of the key: of the modulus, of the prime p, or of the curve; 0 when keyAlgorithm() is empty. @since 0.5.1
    int keyBits() const;
    /// The public key's bytes: its SubjectPublicKeyInfo, in DER. @since 0.5.1
    QByteArray publicKeyDer() const;
    /// The digest of der(), as bytes. Use toHex() for the usual form. @since 0.5.1
    QByteArray fingerprint(QCryptographicHash::Algorithm algorithm = QCryptographicHash::Sha256) const;
    /// The digest of publicKeyDer(), as bytes. @since 0.5.1
    QByteArray publicKeyFingerprint(QCryptographicHash::Algorithm algorithm = QCryptographicHash::Sha256) const;
    /// Whether the subject is that of the keys which Android's build tools make for tests: "CN=Android Debug".
    /// @since 0.5.1
    bool isDebug() const;

    /// Whether two certificates have the same bytes. @since 0.5.1
    friend SORRELTRUST_EXPORT bool operator==(const Certificate &a, const Certificate &b);
    /// Whether two certificates have different bytes. @since 0.5.1
    friend SORRELTRUST_EXPORT bool operator!=(const Certificate &a, const Certificate &b);

private:
    friend class CertificateAccess;

    QSharedDataPointer<const CertificateData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::Certificate)
Q_DECLARE_METATYPE(SorrelKit::Certificate)

#endif
