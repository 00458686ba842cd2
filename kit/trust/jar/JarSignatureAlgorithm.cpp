// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/jar/JarSignatureAlgorithm.h"

#include <openssl/objects.h>

#include <algorithm>
#include <iterator>

namespace SorrelKit {

namespace {

using Key = SignatureMethod::Key;

struct JarAlgorithmRow {
    int digestId = 0;
    int signatureId = 0;
    JarSignatureAlgorithm algorithm;
};

constexpr JarAlgorithmRow jarAlgorithmRows[] = {
    {NID_md5, NID_rsaEncryption, {{Key::Rsa, HashAlgorithm::Md5}, 0, 1}},
    {NID_md5, NID_md5WithRSAEncryption, {{Key::Rsa, HashAlgorithm::Md5}, 8, 21}},
    {NID_sha1, NID_rsaEncryption, {{Key::Rsa, HashAlgorithm::Sha1}, 0, 1}},
    {NID_sha1, NID_sha1WithRSAEncryption, {{Key::Rsa, HashAlgorithm::Sha1}, 0, 1}},
    {NID_sha224, NID_rsaEncryption, {{Key::Rsa, HashAlgorithm::Sha224}, 8, 21}},
    {NID_sha224, NID_sha224WithRSAEncryption, {{Key::Rsa, HashAlgorithm::Sha224}, 8, 21}},
    {NID_sha256, NID_rsaEncryption, {{Key::Rsa, HashAlgorithm::Sha256}, 8, 18}},
    {NID_sha256, NID_sha256WithRSAEncryption, {{Key::Rsa, HashAlgorithm::Sha256}, 8, 18}},
    {NID_sha384, NID_rsaEncryption, {{Key::Rsa, HashAlgorithm::Sha384}, 0, 18}},
    {NID_sha384, NID_sha384WithRSAEncryption, {{Key::Rsa, HashAlgorithm::Sha384}, 0, 21}},
    {NID_sha512, NID_rsaEncryption, {{Key::Rsa, HashAlgorithm::Sha512}, 0, 18}},
    {NID_sha512, NID_sha512WithRSAEncryption, {{Key::Rsa, HashAlgorithm::Sha512}, 0, 21}},
    {NID_sha1, NID_dsa, {{Key::Dsa, HashAlgorithm::Sha1}, 0, 1}},
    {NID_sha1, NID_dsaWithSHA1, {{Key::Dsa, HashAlgorithm::Sha1}, 0, 9}},
    {NID_sha224, NID_dsa, {{Key::Dsa, HashAlgorithm::Sha224}, 0, 22}},
    {NID_sha224, NID_dsa_with_SHA224, {{Key::Dsa, HashAlgorithm::Sha224}, 0, 21}},
    {NID_sha256, NID_dsa, {{Key::Dsa, HashAlgorithm::Sha256}, 0, 22}},
    {NID_sha256, NID_dsa_with_SHA256, {{Key::Dsa, HashAlgorithm::Sha256}, 0, 21}},
    {NID_sha1, NID_X9_62_id_ecPublicKey, {{Key::Ec, HashAlgorithm::Sha1}, 0, 18}},
    {NID_sha1, NID_ecdsa_with_SHA1, {{Key::Ec, HashAlgorithm::Sha1}, 0, 18}},
    {NID_sha224, NID_X9_62_id_ecPublicKey, {{Key::Ec, HashAlgorithm::Sha224}, 0, 21}},
    {NID_sha224, NID_ecdsa_with_SHA224, {{Key::Ec, HashAlgorithm::Sha224}, 0, 21}},
    {NID_sha256, NID_X9_62_id_ecPublicKey, {{Key::Ec, HashAlgorithm::Sha256}, 0, 18}},
    {NID_sha256, NID_ecdsa_with_SHA256, {{Key::Ec, HashAlgorithm::Sha256}, 0, 21}},
    {NID_sha384, NID_X9_62_id_ecPublicKey, {{Key::Ec, HashAlgorithm::Sha384}, 0, 18}},
    {NID_sha384, NID_ecdsa_with_SHA384, {{Key::Ec, HashAlgorithm::Sha384}, 0, 21}},
    {NID_sha512, NID_X9_62_id_ecPublicKey, {{Key::Ec, HashAlgorithm::Sha512}, 0, 18}},
    {NID_sha512, NID_ecdsa_with_SHA512, {{Key::Ec, HashAlgorithm::Sha512}, 0, 21}},
};

const char *jarKeyName(Key key)
{
    switch (key) {
    case Key::Dsa:
        return "DSA";
    case Key::Ec:
        return "ECDSA";
    case Key::Rsa:
    case Key::RsaPss:
        break;
    }
    return "RSA";
}

} // namespace

std::optional<JarSignatureAlgorithm> JarSignatureAlgorithm::find(int digestId, int signatureId)
{
    const auto *const row =
        std::find_if(std::begin(jarAlgorithmRows), std::end(jarAlgorithmRows), [&](const JarAlgorithmRow &each) {
            return each.digestId == digestId && each.signatureId == signatureId;
        });
    if (row == std::end(jarAlgorithmRows))
        return {};
    return row->algorithm;
}

bool JarSignatureAlgorithm::isKnown(SdkRange sdk, bool hasSignedAttributes) const
{
    const int from = hasSignedAttributes ? std::max(knownFrom, SignedAttributesFrom) : knownFrom;
    return sdk.min >= from || (!hasSignedAttributes && sdk.max <= knownTo);
}

QString JarSignatureAlgorithm::name() const
{
    return QString::fromLatin1(Digest::name(method.hash)) + QLatin1String(" with ")
           + QLatin1String(jarKeyName(method.key));
}

} // namespace SorrelKit
