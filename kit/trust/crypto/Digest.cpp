// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/crypto/Digest.h"

#include <openssl/evp.h>

namespace SorrelKit {

Digest::Digest(HashAlgorithm algorithm) : m_algorithm(algorithm), m_context(EVP_MD_CTX_new())
{
    begin();
}

Digest::~Digest() = default;

void Digest::Deleter::operator()(EVP_MD_CTX *context) const
{
    EVP_MD_CTX_free(context);
}

void Digest::begin()
{
    m_isGood = m_context != nullptr && EVP_DigestInit_ex(m_context.get(), function(m_algorithm), nullptr) == 1;
}

void Digest::add(const ByteView &bytes)
{
    m_isGood = m_isGood && EVP_DigestUpdate(m_context.get(), bytes.data(), size_t(bytes.size())) == 1;
}

QByteArray Digest::result()
{
    QByteArray digest(size(m_algorithm), Qt::Uninitialized);
    if (!m_isGood || EVP_DigestFinal_ex(m_context.get(), reinterpret_cast<uchar *>(digest.data()), nullptr) != 1)
        digest.clear();
    begin();
    return digest;
}

QByteArray Digest::of(HashAlgorithm algorithm, const ByteView &bytes)
{
    Digest digest(algorithm);
    digest.add(bytes);
    return digest.result();
}

int Digest::size(HashAlgorithm algorithm)
{
    switch (algorithm) {
    case HashAlgorithm::Md5:
        return 16;
    case HashAlgorithm::Sha1:
        return 20;
    case HashAlgorithm::Sha224:
        return 28;
    case HashAlgorithm::Sha256:
        return 32;
    case HashAlgorithm::Sha384:
        return 48;
    case HashAlgorithm::Sha512:
        return 64;
    }
    return 0;
}

const char *Digest::name(HashAlgorithm algorithm)
{
    switch (algorithm) {
    case HashAlgorithm::Md5:
        return "MD5";
    case HashAlgorithm::Sha1:
        return "SHA-1";
    case HashAlgorithm::Sha224:
        return "SHA-224";
    case HashAlgorithm::Sha256:
        return "SHA-256";
    case HashAlgorithm::Sha384:
        return "SHA-384";
    case HashAlgorithm::Sha512:
        return "SHA-512";
    }
    return "";
}

const EVP_MD *Digest::function(HashAlgorithm algorithm)
{
    switch (algorithm) {
    case HashAlgorithm::Md5:
        return EVP_md5();
    case HashAlgorithm::Sha1:
        return EVP_sha1();
    case HashAlgorithm::Sha224:
        return EVP_sha224();
    case HashAlgorithm::Sha256:
        return EVP_sha256();
    case HashAlgorithm::Sha384:
        return EVP_sha384();
    case HashAlgorithm::Sha512:
        return EVP_sha512();
    }
    return nullptr;
}

} // namespace SorrelKit
