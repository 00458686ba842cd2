// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/crypto/PublicKey.h"

#include "limits/Budget.h"

#include <openssl/bn.h>
#include <openssl/core_names.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/objects.h>
#include <openssl/rsa.h>
#include <openssl/x509.h>

#include <algorithm>
#include <iterator>
#include <memory>

namespace SorrelKit {

namespace {

/// Products of two numbers of 64 bits in the time of inflating a byte.
constexpr qint64 ProductsOfWork = 4;
/// Numbers of the key's length that are multiplied for each bit of an exponent, and on a curve for each bit of its order.
constexpr qint64 StepsOfExponentBit = 2;
constexpr qint64 StepsOfDsaBit = 4;
constexpr qint64 StepsOfCurveBit = 48;

bool isKnownCurve(const EVP_PKEY *key)
{
    char name[32] = {};
    if (EVP_PKEY_get_group_name(key, name, sizeof name, nullptr) != 1)
        return false;
    const int known[] = {NID_secp224r1, NID_X9_62_prime256v1, NID_secp384r1, NID_secp521r1};
    return std::find(std::begin(known), std::end(known), OBJ_txt2nid(name)) != std::end(known);
}

PublicKey::Algorithm algorithmOf(const EVP_PKEY *key)
{
    switch (EVP_PKEY_get_base_id(key)) {
    case EVP_PKEY_RSA:
    case EVP_PKEY_RSA_PSS:
        return PublicKey::Algorithm::Rsa;
    case EVP_PKEY_DSA:
        return PublicKey::Algorithm::Dsa;
    case EVP_PKEY_EC:
        return isKnownCurve(key) ? PublicKey::Algorithm::Ec : PublicKey::Algorithm::Other;
    default:
        return PublicKey::Algorithm::Other;
    }
}

/// Bits of the number @p name of @p key; the most that there may be when it cannot be read.
qint64 numberBits(const EVP_PKEY *key, const char *name)
{
    BIGNUM *number = nullptr;
    if (EVP_PKEY_get_bn_param(key, name, &number) != 1)
        return PublicKey::MaxBits;
    const int bits = BN_num_bits(number);
    BN_free(number);
    return bits;
}

qint64 workOf(const EVP_PKEY *key, PublicKey::Algorithm algorithm, int bits)
{
    const qint64 words = (qint64(bits) + 63) / 64;
    qint64 steps = StepsOfCurveBit * bits;
    if (algorithm == PublicKey::Algorithm::Rsa)
        steps = StepsOfExponentBit * numberBits(key, OSSL_PKEY_PARAM_RSA_E);
    else if (algorithm == PublicKey::Algorithm::Dsa)
        steps = StepsOfDsaBit * numberBits(key, OSSL_PKEY_PARAM_FFC_Q);
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
    PublicKey key = fromOpenSsl(d2i_PUBKEY(nullptr, &at, long(spki.size())));
    ERR_clear_error(); // a host may look at the errors of its own calls
    return at == spki.data() + spki.size() ? key : PublicKey();
}

PublicKey PublicKey::fromOpenSsl(EVP_PKEY *key)
{
    PublicKey result;
    if (key == nullptr)
        return result;
    result.m_key = {key, EVP_PKEY_free};
    result.m_algorithm = algorithmOf(key);
    result.m_bits = EVP_PKEY_get_bits(key);
    result.m_work = workOf(key, result.m_algorithm, result.m_bits);
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
