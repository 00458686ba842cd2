// SPDX-License-Identifier: LGPL-2.1-or-later
#include "CertificateReport.h"

#include "AndroidVersion.h"
#include "SignatureNames.h"

#include <QJsonArray>

#include <limits>

using SorrelKit::Certificate;
using SorrelKit::PastSigner;
using SorrelKit::Signer;

namespace {

QString hexOf(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex());
}

// Empty for a date that is damaged.
QString dateText(const QDateTime &date)
{
    return date.toUTC().toString(Qt::ISODate);
}

QString keyText(const Certificate &certificate)
{
    return certificate.keyAlgorithm().isEmpty()
               ? QStringLiteral("unknown")
               : QStringLiteral("%1, %2 bits").arg(certificate.keyAlgorithm()).arg(certificate.keyBits());
}

QString rangeText(const Signer &signer)
{
    if (signer.minSdkVersion() <= 1 && signer.maxSdkVersion() == std::numeric_limits<int>::max())
        return {};
    return QStringLiteral(", for ") + AndroidVersion::range(signer.minSdkVersion(), signer.maxSdkVersion());
}

} // namespace

QString CertificateReport::name(const Certificate &certificate)
{
    return certificate.subject().isEmpty() ? QStringLiteral("a certificate without a name") : certificate.subject();
}

QString CertificateReport::sha256(const Certificate &certificate)
{
    return hexOf(certificate.fingerprint());
}

namespace {

QJsonObject fieldsOf(const Certificate &certificate)
{
    return {
        {QStringLiteral("subject"), certificate.subject()},
        {QStringLiteral("issuer"), certificate.issuer()},
        {QStringLiteral("serial"), certificate.serialNumber()},
        {QStringLiteral("notBefore"), dateText(certificate.notBefore())},
        {QStringLiteral("notAfter"), dateText(certificate.notAfter())},
        {QStringLiteral("sha256"), CertificateReport::sha256(certificate)},
        {QStringLiteral("sha1"), hexOf(certificate.fingerprint(QCryptographicHash::Sha1))},
        {QStringLiteral("md5"), hexOf(certificate.fingerprint(QCryptographicHash::Md5))},
        {QStringLiteral("signatureAlgorithm"), certificate.signatureAlgorithm()},
    };
}

} // namespace

QJsonObject CertificateReport::toJson(const Certificate &certificate)
{
    return {
        {QStringLiteral("certificate"), fieldsOf(certificate)},
        {QStringLiteral("publicKey"),
         QJsonObject{{QStringLiteral("algorithm"), certificate.keyAlgorithm()},
                     {QStringLiteral("bits"), certificate.keyBits()},
                     {QStringLiteral("sha256"), hexOf(certificate.publicKeyFingerprint())}}},
    };
}

QJsonObject CertificateReport::toJson(const Signer &signer)
{
    QJsonArray lineage;
    for (const PastSigner &past : signer.lineage()) {
        QJsonObject json = toJson(past.certificate());
        json.insert(QStringLiteral("capabilities"),
                    QJsonArray::fromStringList(SignatureNames::capabilities(past.capabilities())));
        lineage.append(json);
    }
    QJsonObject json = toJson(signer.certificate());
    json.insert(QStringLiteral("scheme"), Signer::schemeName(signer.scheme()));
    json.insert(QStringLiteral("minSdkVersion"), signer.minSdkVersion());
    json.insert(QStringLiteral("maxSdkVersion"), signer.maxSdkVersion());
    json.insert(QStringLiteral("lineage"), lineage);
    return json;
}

void CertificateReport::addRows(const Certificate &certificate, int indent, ReportRows *rows)
{
    const QString space(indent, QLatin1Char(' '));
    const auto add = [&](const char *key, const QString &value) {
        rows->add(space + QLatin1String(key), value.isEmpty() ? QStringLiteral("none") : value);
    };
    add("subject", certificate.subject());
    add("issuer", certificate.issuer());
    add("serial number", certificate.serialNumber());
    add("valid from", dateText(certificate.notBefore()));
    add("valid until", dateText(certificate.notAfter()));
    add("signed with", certificate.signatureAlgorithm());
    add("key", keyText(certificate));
    add("key SHA-256", hexOf(certificate.publicKeyFingerprint()));
    add("SHA-256", sha256(certificate));
    add("SHA-1", hexOf(certificate.fingerprint(QCryptographicHash::Sha1)));
    add("MD5", hexOf(certificate.fingerprint(QCryptographicHash::Md5)));
}

void CertificateReport::addRows(const Signer &signer, int indent, ReportRows *rows)
{
    constexpr int Step = 2;
    const QString space(indent, QLatin1Char(' '));
    rows->add(space + QStringLiteral("signer"),
              QStringLiteral("by scheme ") + Signer::schemeName(signer.scheme()) + rangeText(signer));
    addRows(signer.certificate(), indent + Step, rows);
    for (const PastSigner &past : signer.lineage()) {
        const QStringList capabilities = SignatureNames::capabilities(past.capabilities());
        rows->add(space + QStringLiteral("  lineage"),
                  capabilities.isEmpty() ? QStringLiteral("without capabilities")
                                         : QStringLiteral("with ") + SignatureNames::joined(capabilities));
        addRows(past.certificate(), indent + 2 * Step, rows);
    }
}
