// SPDX-License-Identifier: LGPL-2.1-or-later
#include "TestKey.h"

#include <QMap>

#include <openssl/core_names.h>
#include <openssl/dsa.h>
#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/rsa.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>

#include <functional>

namespace fixture {

namespace {

using Key = std::shared_ptr<EVP_PKEY>;

// OpenSSL does what a test asks it for, or the test's fixture is wrong.
void require(bool isDone, const char *what)
{
    if (!isDone)
        qFatal("OpenSSL cannot %s", what);
}

Key shared(EVP_PKEY *key)
{
    require(key != nullptr, "make a key");
    return {key, EVP_PKEY_free};
}

Key cached(const QByteArray &name, const std::function<Key()> &make)
{
    static QMap<QByteArray, Key> keys;
    Key &key = keys[name];
    if (key == nullptr)
        key = make();
    return key;
}

Key makeDsa(int bits)
{
    EVP_PKEY *parameters = nullptr;
    EVP_PKEY_CTX *context = EVP_PKEY_CTX_new_id(EVP_PKEY_DSA, nullptr);
    require(EVP_PKEY_paramgen_init(context) == 1 && EVP_PKEY_CTX_set_dsa_paramgen_bits(context, bits) == 1
                && EVP_PKEY_paramgen(context, &parameters) == 1,
            "choose parameters of DSA");
    EVP_PKEY_CTX_free(context);
    EVP_PKEY *key = nullptr;
    context = EVP_PKEY_CTX_new(parameters, nullptr);
    require(EVP_PKEY_keygen_init(context) == 1 && EVP_PKEY_keygen(context, &key) == 1, "make a key of DSA");
    EVP_PKEY_CTX_free(context);
    EVP_PKEY_free(parameters);
    return shared(key);
}

void setName(X509_NAME *name, const QByteArray &text)
{
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8, reinterpret_cast<const uchar *>(text.constData()),
                               int(text.size()), -1, 0);
}

void setTime(ASN1_TIME *time, const QDateTime &value)
{
    require(ASN1_TIME_set_string_X509(time, value.toUTC().toString(QStringLiteral("yyyyMMddHHmmss'Z'")).toLatin1())
                == 1,
            "write a time");
}

void addExtension(X509 *x509, const char *type, const QByteArray &bytes)
{
    ASN1_OCTET_STRING *value = ASN1_OCTET_STRING_new();
    ASN1_OCTET_STRING_set(value, reinterpret_cast<const uchar *>(bytes.constData()), int(bytes.size()));
    ASN1_OBJECT *object = OBJ_txt2obj(type, 1);
    X509_EXTENSION *extension = X509_EXTENSION_create_by_OBJ(nullptr, object, 0, value);
    X509_add_ext(x509, extension, -1);
    X509_EXTENSION_free(extension);
    ASN1_OBJECT_free(object);
    ASN1_OCTET_STRING_free(value);
}

} // namespace

TestKey TestKey::rsa(int number, int bits)
{
    return TestKey(cached("rsa " + QByteArray::number(bits) + ' ' + QByteArray::number(number),
                          [bits] { return shared(EVP_RSA_gen(unsigned(bits))); }));
}

TestKey TestKey::dsa(int number, int bits)
{
    return TestKey(
        cached("dsa " + QByteArray::number(bits) + ' ' + QByteArray::number(number), [bits] { return makeDsa(bits); }));
}

TestKey TestKey::ec(int number, const char *curve)
{
    return TestKey(cached(QByteArray("ec ") + curve + ' ' + QByteArray::number(number),
                          [curve] { return shared(EVP_EC_gen(curve)); }));
}

QByteArray TestKey::publicKey() const
{
    uchar *data = nullptr;
    const int size = i2d_PUBKEY(m_key.get(), &data);
    require(size > 0, "write a public key");
    const QByteArray result(reinterpret_cast<const char *>(data), size);
    OPENSSL_free(data);
    return result;
}

QByteArray TestKey::certificate(const CertificateFields &fields) const
{
    return certificate(fields, *this);
}

QByteArray TestKey::certificate(const CertificateFields &fields, const TestKey &issuer) const
{
    const std::unique_ptr<X509, decltype(&X509_free)> x509(X509_new(), X509_free);
    X509_set_version(x509.get(), X509_VERSION_3);
    BIGNUM *serial =
        BN_bin2bn(reinterpret_cast<const uchar *>(fields.serial.constData()), int(fields.serial.size()), nullptr);
    BN_to_ASN1_INTEGER(serial, X509_get_serialNumber(x509.get()));
    BN_free(serial);
    setName(X509_get_subject_name(x509.get()), fields.commonName);
    setName(X509_get_issuer_name(x509.get()), fields.issuerName.isNull() ? fields.commonName : fields.issuerName);
    setTime(X509_getm_notBefore(x509.get()), fields.notBefore);
    setTime(X509_getm_notAfter(x509.get()), fields.notAfter);
    X509_set_pubkey(x509.get(), m_key.get());
    if (fields.extensionSize > 0)
        addExtension(x509.get(), "1.3.6.1.4.1.99999.1", QByteArray(fields.extensionSize, 'x'));
    if (!fields.issuerKeyId.isNull()) {
        const QByteArray id = "\x80" + QByteArray(1, char(fields.issuerKeyId.size())) + fields.issuerKeyId;
        addExtension(x509.get(), "2.5.29.35", "0" + QByteArray(1, char(id.size())) + id);
    }
    require(X509_sign(x509.get(), issuer.m_key.get(), SorrelKit::Digest::function(fields.hash)) > 0,
            "sign a certificate");
    uchar *data = nullptr;
    const int size = i2d_X509(x509.get(), &data);
    require(size > 0, "write a certificate");
    const QByteArray result(reinterpret_cast<const char *>(data), size);
    OPENSSL_free(data);
    return result;
}

QByteArray TestKey::sign(const SorrelKit::SignatureMethod &method, const QByteArray &data) const
{
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
    EVP_PKEY_CTX *parameters = nullptr;
    require(
        EVP_DigestSignInit(context.get(), &parameters, SorrelKit::Digest::function(method.hash), nullptr, m_key.get())
            == 1,
        "begin a signature");
    if (method.key == SorrelKit::SignatureMethod::Key::RsaPss) {
        require(EVP_PKEY_CTX_set_rsa_padding(parameters, RSA_PKCS1_PSS_PADDING) == 1
                    && EVP_PKEY_CTX_set_rsa_pss_saltlen(parameters, RSA_PSS_SALTLEN_DIGEST) == 1,
                "set the padding");
    }
    const auto *const bytes = reinterpret_cast<const uchar *>(data.constData());
    size_t size = 0;
    require(EVP_DigestSign(context.get(), nullptr, &size, bytes, size_t(data.size())) == 1, "measure a signature");
    QByteArray signature(int(size), Qt::Uninitialized);
    require(
        EVP_DigestSign(context.get(), reinterpret_cast<uchar *>(signature.data()), &size, bytes, size_t(data.size()))
            == 1,
        "sign");
    signature.truncate(int(size));
    return signature;
}

} // namespace fixture
