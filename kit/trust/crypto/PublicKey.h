// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PUBLICKEY_H
#define SORRELKIT_PUBLICKEY_H

#include "trust/crypto/Digest.h"

#include <QByteArray>

#include <memory>

using EVP_PKEY = struct evp_pkey_st;

class Budget;

namespace SorrelKit {

/// A way to sign: the key's algorithm, the hash, and the padding of RSA.
struct SignatureMethod {
    enum class Key {
        Rsa,
        RsaPss,
        Dsa,
        Ec
    };

    Key key = Key::Rsa; ///< Rsa is PKCS #1 v1.5. With RsaPss, the salt is as long as the hash, and MGF1 uses the same.
    HashAlgorithm hash = HashAlgorithm::Sha256;
};

/// A public key of RSA, DSA or on an elliptic curve, and OpenSSL's verification by it. The curves are those that Android
/// has: P-224, P-256, P-384 and P-521, by name. Copies share the key; it may be used in several threads.
class PublicKey
{
public:
    enum class Algorithm {
        None,
        Rsa,
        Dsa,
        Ec,
        Other
    };
    enum class Result {
        Good,       ///< the signature is right
        Wrong,      ///< it is not, or it is damaged
        Mismatched, ///< the key has another algorithm than the method
        TooCostly,  ///< verification does not fit in the budget, or the key is longer than MaxBits
    };

    /// Bits of a key. The longest keys in use have 4096 for RSA; Android's own limit is this one.
    static constexpr int MaxBits = 16384;

    /// No key.
    PublicKey() = default;
    /// The key in @p spki, an X.509 SubjectPublicKeyInfo in DER; no key when it is damaged or has bytes behind it.
    static PublicKey fromDer(const ByteView &spki);
    /// The key @p key of OpenSSL, which the result owns; no key when it is null.
    static PublicKey fromOpenSsl(EVP_PKEY *key);

    bool isNull() const { return m_key == nullptr; }
    Algorithm algorithm() const { return m_algorithm; }
    /// Bits of the modulus, of the prime p, or of the curve's order; 0 without a key.
    int bits() const { return m_bits; }
    /// Work of verifying one signature, in the unit of Budget. It grows with the square of bits(), and with the bits of
    /// the exponent.
    qint64 work() const { return m_work; }
    /// Whether @p signature is that of @p data by @p method. Spends work() and a unit for each byte of @p data.
    Result verify(const SignatureMethod &method, const ByteView &signature, const ByteView &data, Budget *budget) const;

private:
    std::shared_ptr<EVP_PKEY> m_key;
    Algorithm m_algorithm = Algorithm::None;
    int m_bits = 0;
    qint64 m_work = 0;
};

} // namespace SorrelKit

#endif
