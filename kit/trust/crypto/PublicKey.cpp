// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/crypto/PublicKey.h"

#include "limits/Budget.h"

#include <openssl/bn.h>
#include <openssl/core_names.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/rsa.h>
#include <openssl/x509.h>

#include <memory>

namespace SorrelKit {

namespace {

/// A product of two numbers of 64 bits takes about as long as inflating a fifth of a byte.
constexpr qint64 ProductsOfWork = 4;
/// Verification by a key on an elliptic curve, and with DSA, multiplies about this many times for each bit.
constexpr qint64 ProductsOfBit = 12;

PublicKey::Algorithm algorithmOf(const EVP_PKEY *key)
{
    switch (EVP_PKEY_get_base_id(key)) {
    case EVP_PKEY_RSA:
    case EVP_PKEY_RSA_PSS:
        return PublicKey::Algorithm::Rsa;
    case EVP_PKEY_DSA:
        return PublicKey::Algorithm::Dsa;
    case EVP_PKEY_EC:
        return PublicKey::Algorithm::Ec;
    default:
        return PublicKey::Algorithm::Other;
    }
}

int exponentBits(const EVP_PKEY *key)
{
    BIGNUM *exponent = nullptr;
    if (EVP_PKEY_get_bn_param(key, OSSL_PKEY_PARAM_RSA_E, &exponent) != 1)
        return PublicKey::MaxBits;
    const int bits = BN_num_bits(exponent);
    BN_free(exponent);
    return bits;
}

qint64 workOf(const EVP_PKEY *key, PublicKey::Algorithm algorithm, int bits)
{
    const qint64 words = (qint64(bits) + 63) / 64;
    const qint64 steps = algorithm == PublicKey::Algorithm::Rsa ? 2 * qint64(exponentBits(key)) : ProductsOfBit * bits;
    return steps * words * words / ProductsOfWork;
}

bool fits(PublicKey::Algorithm algorithm, SignatureMethod::Key wanted)
{
    switch (wanted) {
    case SignatureMethod::Key::Rsa:
    case SignatureMethod::Key::RsaPss:
        return algorithm == PublicKey::Algorithm::Rsa;
    case SignatureMethod::Key::Dsa:
        return algorithm == PublicKey::Algorithm::Dsa;
    case SignatureMethod::Key::Ec:
        return algorithm == PublicKey::Algorithm::Ec;
    }
    return false;
}

} // namespace

PublicKey PublicKey::fromDer(const ByteView &spki)
{
    const uchar *at = spki.data();
    const std::shared_ptr<EVP_PKEY> key(d2i_PUBKEY(nullptr, &at, long(spki.size())), EVP_PKEY_free);
    ERR_clear_error(); // a host may look at the errors of its own calls
    PublicKey result;
    if (key == nullptr || at != spki.data() + spki.size())
        return result;
    result.m_key = key;
    result.m_algorithm = algorithmOf(key.get());
    result.m_bits = EVP_PKEY_get_bits(key.get());
    result.m_work = workOf(key.get(), result.m_algorithm, result.m_bits);
    return result;
}

PublicKey::Result PublicKey::verify(const SignatureMethod &method, const ByteView &signature, const ByteView &data,
                                    Budget *budget) const
{
    if (m_key == nullptr || !fits(m_algorithm, method.key))
        return Result::Mismatched;
    if (m_bits > MaxBits || !budget->spendWork(m_work + data.size() * Budget::ByteWork))
        return Result::TooCostly;

    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
    EVP_PKEY_CTX *parameters = nullptr;
    const bool isGood =
        context != nullptr
        && EVP_DigestVerifyInit(context.get(), &parameters, Digest::function(method.hash), nullptr, m_key.get()) == 1
        && (method.key != SignatureMethod::Key::RsaPss
            || (EVP_PKEY_CTX_set_rsa_padding(parameters, RSA_PKCS1_PSS_PADDING) == 1
                && EVP_PKEY_CTX_set_rsa_pss_saltlen(parameters, RSA_PSS_SALTLEN_DIGEST) == 1))
        && EVP_DigestVerify(context.get(), signature.data(), size_t(signature.size()), data.data(), size_t(data.size()))
               == 1;
    ERR_clear_error();
    return isGood ? Result::Good : Result::Wrong;
}

} // namespace SorrelKit
