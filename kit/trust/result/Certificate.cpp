// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Certificate.h>

#include "trust/crypto/CertificateData.h"

namespace SorrelKit {

Certificate::Certificate() = default;
Certificate::Certificate(const Certificate &other) = default;
Certificate::Certificate(Certificate &&other) noexcept = default;
Certificate &Certificate::operator=(const Certificate &other) = default;
Certificate &Certificate::operator=(Certificate &&other) noexcept = default;
Certificate::~Certificate() = default;

Certificate Certificate::fromDer(const QByteArray &der)
{
    Certificate certificate;
    certificate.d = CertificateData::decode(ByteView(der)).data();
    return certificate;
}

bool Certificate::isNull() const
{
    return d == nullptr;
}

QByteArray Certificate::der() const
{
    return isNull() ? QByteArray() : d->der;
}

QString Certificate::subject() const
{
    return isNull() ? QString() : d->subject;
}

QString Certificate::issuer() const
{
    return isNull() ? QString() : d->issuer;
}

QString Certificate::serialNumber() const
{
    return isNull() ? QString() : d->serialNumber;
}

QDateTime Certificate::notBefore() const
{
    return isNull() ? QDateTime() : d->notBefore;
}

QDateTime Certificate::notAfter() const
{
    return isNull() ? QDateTime() : d->notAfter;
}

QString Certificate::signatureAlgorithm() const
{
    return isNull() ? QString() : d->signatureAlgorithm;
}

QString Certificate::keyAlgorithm() const
{
    if (isNull())
        return {};
    switch (d->publicKey.algorithm()) {
    case PublicKey::Algorithm::Rsa:
        return QStringLiteral("RSA");
    case PublicKey::Algorithm::Dsa:
        return QStringLiteral("DSA");
    case PublicKey::Algorithm::Ec:
        return QStringLiteral("EC");
    case PublicKey::Algorithm::None:
    case PublicKey::Algorithm::Other:
        break;
    }
    return {};
}

int Certificate::keyBits() const
{
    return keyAlgorithm().isEmpty() ? 0 : d->publicKey.bits();
}

QByteArray Certificate::publicKeyDer() const
{
    return isNull() ? QByteArray() : d->publicKeyDer;
}

QByteArray Certificate::fingerprint(QCryptographicHash::Algorithm algorithm) const
{
    return isNull() ? QByteArray() : QCryptographicHash::hash(d->der, algorithm);
}

QByteArray Certificate::publicKeyFingerprint(QCryptographicHash::Algorithm algorithm) const
{
    return isNull() ? QByteArray() : QCryptographicHash::hash(d->publicKeyDer, algorithm);
}

bool Certificate::isDebug() const
{
    return !isNull() && d->subject.split(QLatin1Char(',')).contains(QLatin1String("CN=Android Debug"));
}

bool operator==(const Certificate &a, const Certificate &b)
{
    return a.der() == b.der();
}

bool operator!=(const Certificate &a, const Certificate &b)
{
    return !(a == b);
}

} // namespace SorrelKit
