// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/crypto/CertificateData.h"

#include <openssl/asn1.h>
#include <openssl/bio.h>
#include <openssl/bn.h>
#include <openssl/err.h>
#include <openssl/objects.h>
#include <openssl/x509.h>

#include <memory>

namespace SorrelKit {

namespace {

QByteArray bytesOf(BIO *bio)
{
    char *data = nullptr;
    const long size = BIO_get_mem_data(bio, &data);
    return {data, int(size)};
}

QString nameOf(const X509_NAME *name)
{
    const std::unique_ptr<BIO, decltype(&BIO_free)> bio(BIO_new(BIO_s_mem()), BIO_free);
    // RFC 2253, with characters of other alphabets as they are.
    const unsigned long flags = XN_FLAG_RFC2253 & ~(unsigned(ASN1_STRFLGS_ESC_MSB) | unsigned(ASN1_STRFLGS_ESC_CTRL));
    if (bio == nullptr || X509_NAME_print_ex(bio.get(), name, 0, flags | ASN1_STRFLGS_UTF8_CONVERT) < 0)
        return {};
    return QString::fromUtf8(bytesOf(bio.get()));
}

QDateTime timeOf(const ASN1_TIME *time)
{
    tm fields = {};
    if (ASN1_TIME_to_tm(time, &fields) != 1)
        return {};
    return {QDate(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday),
            QTime(fields.tm_hour, fields.tm_min, fields.tm_sec), Qt::UTC};
}

QString serialOf(const ASN1_INTEGER *serial)
{
    const std::unique_ptr<BIGNUM, decltype(&BN_free)> number(ASN1_INTEGER_to_BN(serial, nullptr), BN_free);
    if (number == nullptr)
        return {};
    QByteArray bytes(BN_num_bytes(number.get()), Qt::Uninitialized);
    BN_bn2bin(number.get(), reinterpret_cast<uchar *>(bytes.data()));
    QByteArray digits = bytes.toHex();
    if (digits.startsWith('0'))
        digits.remove(0, 1);
    if (digits.isEmpty())
        digits = "0";
    return QLatin1String(BN_is_negative(number.get()) != 0 ? "-" : "") + QString::fromLatin1(digits);
}

QString algorithmOf(const X509_ALGOR *algorithm)
{
    const ASN1_OBJECT *object = nullptr;
    X509_ALGOR_get0(&object, nullptr, nullptr, algorithm);
    char text[128] = {};
    OBJ_obj2txt(text, sizeof text, object, 0);
    return QString::fromLatin1(text);
}

template <typename Encode>
QByteArray derOf(Encode encode)
{
    uchar *data = nullptr;
    const int size = encode(&data);
    const std::unique_ptr<uchar, void (*)(uchar *)> owner(data, [](uchar *each) { OPENSSL_free(each); });
    return size > 0 ? QByteArray(reinterpret_cast<const char *>(data), size) : QByteArray();
}

} // namespace

QExplicitlySharedDataPointer<CertificateData> CertificateData::decode(const ByteView &der)
{
    QExplicitlySharedDataPointer<CertificateData> data;
    if (der.size() > MaxBytes)
        return data;
    const uchar *at = der.data();
    const std::unique_ptr<X509, decltype(&X509_free)> x509(d2i_X509(nullptr, &at, long(der.size())), X509_free);
    if (x509 != nullptr && at == der.data() + der.size()) {
        data = new CertificateData;
        data->der = der.toByteArray();
        data->subject = nameOf(X509_get_subject_name(x509.get()));
        data->issuer = nameOf(X509_get_issuer_name(x509.get()));
        data->issuerDer = derOf([&](uchar **out) { return i2d_X509_NAME(X509_get_issuer_name(x509.get()), out); });
        data->serialNumber = serialOf(X509_get0_serialNumber(x509.get()));
        data->serialDer = derOf([&](uchar **out) { return i2d_ASN1_INTEGER(X509_get0_serialNumber(x509.get()), out); });
        data->notBefore = timeOf(X509_get0_notBefore(x509.get()));
        data->notAfter = timeOf(X509_get0_notAfter(x509.get()));
        data->signatureAlgorithm = algorithmOf(X509_get0_tbs_sigalg(x509.get()));
        data->publicKeyDer = derOf([&](uchar **out) { return i2d_X509_PUBKEY(X509_get_X509_PUBKEY(x509.get()), out); });
        data->publicKey = PublicKey::fromOpenSsl(X509_get_pubkey(x509.get()));
    }
    ERR_clear_error();
    return data;
}

} // namespace SorrelKit
