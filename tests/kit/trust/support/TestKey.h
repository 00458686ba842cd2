// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTKEY_H
#define TESTKEY_H

#include "trust/crypto/PublicKey.h"

#include <QByteArray>
#include <QDateTime>

#include <memory>

namespace fixture {

/// The fields of a certificate that a test may choose.
struct CertificateFields {
    QByteArray commonName = "Test signer";
    QByteArray issuerName = QByteArray(); ///< null for the subject's
    QByteArray serial = QByteArray("\x01", 1);
    QDateTime notBefore = QDateTime(QDate(2020, 1, 1), QTime(0, 0), Qt::UTC);
    QDateTime notAfter = QDateTime(QDate(2050, 1, 1), QTime(0, 0), Qt::UTC);
    SorrelKit::HashAlgorithm hash = SorrelKit::HashAlgorithm::Sha256;
    int extensionSize = 0;                 ///< bytes of an extension that nobody knows; 0 for none
    QByteArray issuerKeyId = QByteArray(); ///< of the extension with the issuer's key; null for none
};

/**
 * A secret key that is made in the process and never written. Keys of the same arguments are made once, because those of
 * RSA and DSA take a while. Different @p number make different keys.
 */
class TestKey
{
public:
    /// RSA with a modulus of @p bits.
    static TestKey rsa(int number = 1, int bits = 2048);
    /// DSA with a prime of @p bits.
    static TestKey dsa(int number = 1, int bits = 2048);
    /// A key on the curve @p curve, by OpenSSL's name.
    static TestKey ec(int number = 1, const char *curve = "prime256v1");

    /// The SubjectPublicKeyInfo, in DER.
    QByteArray publicKey() const;
    /// A certificate for this key, signed by itself, in DER.
    QByteArray certificate(const CertificateFields &fields = CertificateFields()) const;
    /// The same, signed by @p issuer.
    QByteArray certificate(const CertificateFields &fields, const TestKey &issuer) const;
    /// The signature of @p data by @p method, which fits the key.
    QByteArray sign(const SorrelKit::SignatureMethod &method, const QByteArray &data) const;

private:
    explicit TestKey(std::shared_ptr<EVP_PKEY> key) : m_key(std::move(key)) {}

    std::shared_ptr<EVP_PKEY> m_key;
};

} // namespace fixture

#endif
