// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/jar/SignatureBlockFile.h"

#include "limits/Budget.h"
#include "trust/crypto/CertificateAccess.h"
#include "trust/jar/JarSignatureAlgorithm.h"

#include <openssl/err.h>
#include <openssl/pkcs7.h>
#include <openssl/x509v3.h>

#include <memory>

namespace SorrelKit {

namespace {

using Code = SignatureIssue::Code;
using BlockResult = SignatureBlockFile::Result;

template <typename Encode>
QByteArray encoded(Encode encode)
{
    uchar *data = nullptr;
    const int size = encode(&data);
    const std::unique_ptr<uchar, void (*)(uchar *)> owner(data, [](uchar *each) { OPENSSL_free(each); });
    return size > 0 ? QByteArray(reinterpret_cast<const char *>(data), size) : QByteArray();
}

QByteArray derOf(const X509_NAME *name)
{
    return encoded([name](uchar **out) { return i2d_X509_NAME(name, out); });
}

BlockResult refused(Code code, const char *detail = "")
{
    return {code, QString::fromLatin1(detail), Certificate()};
}

/// The identifier of an algorithm, by OpenSSL's number; NID_undef with parameters other than NULL.
int idOf(const X509_ALGOR *algorithm)
{
    const ASN1_OBJECT *object = nullptr;
    int type = V_ASN1_UNDEF;
    X509_ALGOR_get0(&object, &type, nullptr, algorithm);
    return type == V_ASN1_UNDEF || type == V_ASN1_NULL ? OBJ_obj2nid(object) : NID_undef;
}

/// Whether all sets, sequences and parts with the tag 0 in @p block are marked as constructed values. OpenSSL takes some
/// without the mark.
bool hasConstructedSets(const ByteView &block)
{
    const uchar *at = block.data();
    const uchar *const end = at + block.size();
    while (at < end) {
        long size = 0;
        int tag = 0;
        int kind = 0;
        const int form = ASN1_get_object(&at, &size, &tag, &kind, end - at);
        if ((form & 0x80) != 0)
            return false;
        const bool isConstructed = (form & V_ASN1_CONSTRUCTED) != 0;
        const bool isSet = kind == V_ASN1_UNIVERSAL && (tag == V_ASN1_SEQUENCE || tag == V_ASN1_SET);
        if (!isConstructed && (isSet || (kind == V_ASN1_CONTEXT_SPECIFIC && tag == 0)))
            return false;
        at += isConstructed ? 0 : size;
    }
    return true;
}

/// The block, as OpenSSL decodes it, and the signature file.
class SignedData
{
public:
    SignedData(const PKCS7_SIGNED *data, const ByteView &block, const ByteView &signatureFile, SdkRange sdk,
               Budget *budget)
        : m_data(data), m_block(block), m_file(signatureFile), m_sdk(sdk), m_budget(budget)
    {
    }

    BlockResult verify() const;

private:
    BlockResult verify(PKCS7_SIGNER_INFO *info) const;
    BlockResult verify(PKCS7_SIGNER_INFO *info, X509 *x509, const JarSignatureAlgorithm &algorithm) const;
    BlockResult checkCertificate(X509 *x509) const;
    bool hasDigest(int id) const;
    X509 *certificateOf(const PKCS7_SIGNER_INFO *info) const;
    /// The DER encoding of a certificate; empty when the block has another one.
    QByteArray bytesOf(X509 *x509) const;
    PublicKey::Result verifyBy(X509 *issuer, X509 *x509) const;

    const PKCS7_SIGNED *m_data;
    ByteView m_block;
    ByteView m_file;
    SdkRange m_sdk;
    Budget *m_budget;
};

BlockResult SignedData::verify() const
{
    if (ASN1_INTEGER_get(m_data->version) != 1)
        return refused(Code::BadSignatureBlock, "version");
    if (m_data->contents == nullptr || OBJ_obj2nid(m_data->contents->type) != NID_pkcs7_data)
        return refused(Code::BadSignatureBlock, "type of the content");
    if (sk_X509_num(m_data->cert) <= 0)
        return refused(Code::NoCertificate);
    if (sk_X509_num(m_data->cert) > SignatureBlockFile::MaxCertificates)
        return refused(Code::TooCostly, "certificates");
    const int infos = sk_PKCS7_SIGNER_INFO_num(m_data->signer_info);
    if (infos <= 0)
        return refused(Code::NoSigner);
    BlockResult first = verify(sk_PKCS7_SIGNER_INFO_value(m_data->signer_info, 0));
    for (int i = 1; i < infos && first.code != Code::None && m_sdk.min >= SdkRange::Nougat; ++i) {
        BlockResult other = verify(sk_PKCS7_SIGNER_INFO_value(m_data->signer_info, i));
        if (other.code == Code::None || other.code == Code::TooCostly)
            return other;
    }
    return first;
}

BlockResult SignedData::verify(PKCS7_SIGNER_INFO *info) const
{
    if (ASN1_INTEGER_get(info->version) != 1)
        return refused(Code::BadSignatureBlock, "version of the signer");
    const int digestId = idOf(info->digest_alg);
    const auto algorithm = JarSignatureAlgorithm::find(digestId, idOf(info->digest_enc_alg));
    if (!algorithm)
        return refused(Code::UnknownAlgorithm);
    if (!hasDigest(digestId))
        return refused(Code::BadSignatureBlock, "list of digests");
    const bool hasAttributes = info->auth_attr != nullptr;
    if (hasAttributes && sk_X509_ATTRIBUTE_num(info->auth_attr) == 0)
        return refused(Code::BadAttribute, "signed attributes");
    if (!algorithm->isKnown(m_sdk, hasAttributes)) {
        BlockResult result = refused(Code::UnsupportedAlgorithm);
        result.detail = algorithm->name() + QLatin1String(hasAttributes ? ", signed attributes" : "");
        return result;
    }
    X509 *const x509 = certificateOf(info);
    if (x509 == nullptr)
        return refused(Code::NoCertificate);
    return verify(info, x509, *algorithm);
}

/// The only value of the attribute of type @p id; null when there is none, or there are several.
const ASN1_TYPE *attributeOf(const STACK_OF(X509_ATTRIBUTE) * attributes, int id)
{
    const int at = X509at_get_attr_by_NID(attributes, id, -1);
    if (at < 0 || X509at_get_attr_by_NID(attributes, id, at) >= 0)
        return nullptr;
    X509_ATTRIBUTE *const attribute = X509at_get_attr(attributes, at);
    return X509_ATTRIBUTE_count(attribute) == 1 ? X509_ATTRIBUTE_get0_type(attribute, 0) : nullptr;
}

/// Whether the attributes are about @p file, and have what Android demands.
Code checkAttributes(const STACK_OF(X509_ATTRIBUTE) * attributes, HashAlgorithm hash, const ByteView &file,
                     SdkRange sdk)
{
    const bool hasType = X509at_get_attr_by_NID(attributes, NID_pkcs9_contentType, -1) >= 0;
    const ASN1_TYPE *const type = attributeOf(attributes, NID_pkcs9_contentType);
    const bool isData =
        type != nullptr && type->type == V_ASN1_OBJECT && OBJ_obj2nid(type->value.object) == NID_pkcs7_data;
    if (!isData && (hasType || sdk.max >= SdkRange::Nougat))
        return Code::BadAttribute;
    const ASN1_TYPE *const digest = attributeOf(attributes, NID_pkcs9_messageDigest);
    if (digest == nullptr || digest->type != V_ASN1_OCTET_STRING)
        return Code::BadAttribute;
    const QByteArray signedDigest(reinterpret_cast<const char *>(ASN1_STRING_get0_data(digest->value.octet_string)),
                                  ASN1_STRING_length(digest->value.octet_string));
    const QByteArray actual = Digest::of(hash, file);
    return !actual.isEmpty() && actual == signedDigest ? Code::None : Code::BadSignature;
}

BlockResult SignedData::verify(PKCS7_SIGNER_INFO *info, X509 *x509, const JarSignatureAlgorithm &algorithm) const
{
    const QByteArray der = bytesOf(x509);
    const Certificate certificate = CertificateAccess::decode(ByteView(der));
    if (certificate.isNull())
        return refused(Code::BadCertificate);

    ByteView content = m_file;
    QByteArray attributes;
    if (info->auth_attr != nullptr) {
        if (!m_budget->spendWork(Budget::ByteWork * m_file.size()))
            return refused(Code::TooCostly);
        const Code code = checkAttributes(info->auth_attr, algorithm.method.hash, m_file, m_sdk);
        if (code != Code::None)
            return refused(code, "signed attributes");
        // They are signed as a SET, and written with a tag of their own.
        attributes = encoded([info](uchar **out) {
            return ASN1_item_i2d(reinterpret_cast<const ASN1_VALUE *>(info->auth_attr), out,
                                 ASN1_ITEM_rptr(PKCS7_ATTR_VERIFY));
        });
        content = ByteView(attributes);
    }
    const ByteView signature(ASN1_STRING_get0_data(info->enc_digest), ASN1_STRING_length(info->enc_digest));
    switch (CertificateAccess::data(certificate).publicKey.verify(algorithm.method, signature, content, m_budget)) {
    case PublicKey::Result::Wrong:
        return refused(Code::BadSignature);
    case PublicKey::Result::Mismatched:
        return refused(Code::BadSignature, "the key has another algorithm");
    case PublicKey::Result::TooCostly:
        return refused(Code::TooCostly);
    case PublicKey::Result::Good:
        break;
    }
    BlockResult result = checkCertificate(x509);
    if (result.code == Code::None)
        result.certificate = certificate;
    return result;
}

BlockResult SignedData::checkCertificate(X509 *x509) const
{
    const QByteArray issuerName = derOf(X509_get_issuer_name(x509));
    bool hasIssuer = false;
    for (int i = 0; i < sk_X509_num(m_data->cert); ++i) {
        X509 *const each = sk_X509_value(m_data->cert, i);
        if (derOf(X509_get_subject_name(each)) != issuerName)
            continue;
        hasIssuer = true;
        const PublicKey::Result result = verifyBy(each, x509);
        if (result != PublicKey::Result::Wrong)
            return result == PublicKey::Result::Good ? BlockResult() : refused(Code::TooCostly);
    }
    const ASN1_OCTET_STRING *const issuerKey = X509_get0_authority_key_id(x509);
    const ASN1_OCTET_STRING *const ownKey = X509_get0_subject_key_id(x509);
    const bool isIssuedByOther =
        issuerKey != nullptr && (ownKey == nullptr || ASN1_OCTET_STRING_cmp(issuerKey, ownKey) != 0);
    if (!hasIssuer && isIssuedByOther)
        return {};
    const PublicKey::Result result = hasIssuer ? PublicKey::Result::Wrong : verifyBy(x509, x509);
    if (result == PublicKey::Result::TooCostly)
        return refused(Code::TooCostly);
    return result == PublicKey::Result::Good ? BlockResult() : refused(Code::BadCertificate, "its signature is wrong");
}

PublicKey::Result SignedData::verifyBy(X509 *issuer, X509 *x509) const
{
    const QByteArray spki =
        encoded([issuer](uchar **out) { return i2d_X509_PUBKEY(X509_get_X509_PUBKEY(issuer), out); });
    const PublicKey key = PublicKey::fromDer(ByteView(spki));
    if (key.isNull())
        return PublicKey::Result::Wrong;
    if (key.bits() > PublicKey::MaxBits || !m_budget->spendWork(key.work() + Budget::ByteWork * m_block.size()))
        return PublicKey::Result::TooCostly;
    return X509_verify(x509, X509_get0_pubkey(issuer)) == 1 ? PublicKey::Result::Good : PublicKey::Result::Wrong;
}

bool SignedData::hasDigest(int id) const
{
    for (int i = 0; i < sk_X509_ALGOR_num(m_data->md_algs); ++i) {
        if (idOf(sk_X509_ALGOR_value(m_data->md_algs, i)) == id)
            return true;
    }
    return false;
}

X509 *SignedData::certificateOf(const PKCS7_SIGNER_INFO *info) const
{
    const QByteArray issuer = derOf(info->issuer_and_serial->issuer);
    for (int i = 0; i < sk_X509_num(m_data->cert); ++i) {
        X509 *const each = sk_X509_value(m_data->cert, i);
        if (ASN1_INTEGER_cmp(X509_get0_serialNumber(each), info->issuer_and_serial->serial) == 0
            && derOf(X509_get_issuer_name(each)) == issuer)
            return each;
    }
    return nullptr;
}

QByteArray SignedData::bytesOf(X509 *x509) const
{
    const QByteArray der = encoded([x509](uchar **out) { return i2d_X509(x509, out); });
    const QByteArray block =
        QByteArray::fromRawData(reinterpret_cast<const char *>(m_block.data()), int(m_block.size()));
    return block.contains(der) ? der : QByteArray();
}

} // namespace

SignatureBlockFile::Result SignatureBlockFile::verify(const ByteView &block, const ByteView &signatureFile,
                                                      SdkRange sdk, Budget *budget)
{
    if (!budget->spendWork(WorkPerByte * block.size()))
        return refused(Code::TooCostly);
    const uchar *at = block.data();
    const std::unique_ptr<PKCS7, decltype(&PKCS7_free)> pkcs7(d2i_PKCS7(nullptr, &at, long(block.size())), PKCS7_free);
    Result result = refused(Code::BadSignatureBlock);
    const bool isSigned = pkcs7 != nullptr && PKCS7_type_is_signed(pkcs7.get()) && pkcs7->d.sign != nullptr;
    if (isSigned && hasConstructedSets(block.part(0, at - block.data())))
        result = SignedData(pkcs7->d.sign, block, signatureFile, sdk, budget).verify();
    ERR_clear_error();
    return result;
}

} // namespace SorrelKit
