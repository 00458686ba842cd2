// SPDX-License-Identifier: LGPL-2.1-or-later
#include "TestKey.h"

#include "trust/crypto/CertificateAccess.h"

#include <QtTest>

using namespace SorrelKit;

/// Certificate, and how it is decoded.
class TestCertificate : public QObject
{
    Q_OBJECT

private slots:
    void hasTheFieldsOfTheFile();
    void hasNamesOfAnyAlphabet();
    void printsSerialNumbers_data();
    void printsSerialNumbers();
    void refusesEveryPrefix();
    void refusesMoreThanTheLimit();
    void knowsTheDebugCertificate();
    void isNothingByDefault();
};

void TestCertificate::hasTheFieldsOfTheFile()
{
    fixture::CertificateFields fields;
    fields.commonName = "Subject";
    fields.issuerName = "Issuer";
    const fixture::TestKey key = fixture::TestKey::rsa();
    const QByteArray der = key.certificate(fields);
    const Certificate certificate = Certificate::fromDer(der);
    QVERIFY(!certificate.isNull());
    QCOMPARE(certificate.der(), der);
    QCOMPARE(certificate.subject(), QStringLiteral("CN=Subject"));
    QCOMPARE(certificate.issuer(), QStringLiteral("CN=Issuer"));
    QCOMPARE(certificate.serialNumber(), QStringLiteral("1"));
    QCOMPARE(certificate.notBefore(), fields.notBefore);
    QCOMPARE(certificate.notAfter(), fields.notAfter);
    QCOMPARE(certificate.signatureAlgorithm(), QStringLiteral("sha256WithRSAEncryption"));
    QCOMPARE(certificate.keyAlgorithm(), QStringLiteral("RSA"));
    QCOMPARE(certificate.keyBits(), 2048);
    QCOMPARE(certificate.publicKeyDer(), key.publicKey());
    QCOMPARE(certificate.fingerprint(), QCryptographicHash::hash(der, QCryptographicHash::Sha256));
    QCOMPARE(certificate.fingerprint(QCryptographicHash::Md5), QCryptographicHash::hash(der, QCryptographicHash::Md5));
    QCOMPARE(certificate.publicKeyFingerprint(), QCryptographicHash::hash(key.publicKey(), QCryptographicHash::Sha256));
    QVERIFY(!certificate.isDebug());
    QVERIFY(certificate == Certificate::fromDer(der));
    QVERIFY(certificate != Certificate());
}

void TestCertificate::hasNamesOfAnyAlphabet()
{
    fixture::CertificateFields fields;
    fields.commonName = "Größe, Ωμέγα";
    QCOMPARE(Certificate::fromDer(fixture::TestKey::ec().certificate(fields)).subject(),
             QStringLiteral("CN=Größe\\, Ωμέγα"));
}

void TestCertificate::printsSerialNumbers_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::addRow("zero") << QByteArray("\0", 1) << QStringLiteral("0");
    QTest::addRow("odd digits") << QByteArray("\x01\xf0") << QStringLiteral("1f0");
    QTest::addRow("20 bytes") << QByteArray(20, '\x7f') << QStringLiteral("7f").repeated(20);
}

void TestCertificate::printsSerialNumbers()
{
    QFETCH(QByteArray, bytes);
    fixture::CertificateFields fields;
    fields.serial = bytes;
    QTEST(Certificate::fromDer(fixture::TestKey::ec().certificate(fields)).serialNumber(), "text");
}

void TestCertificate::refusesEveryPrefix()
{
    const QByteArray der = fixture::TestKey::ec().certificate();
    for (int size = 0; size < der.size(); ++size)
        QVERIFY(Certificate::fromDer(QByteArray(der.constData(), size)).isNull());
    QVERIFY(Certificate::fromDer(der + '\0').isNull());
}

void TestCertificate::refusesMoreThanTheLimit()
{
    fixture::CertificateFields fields;
    fields.extensionSize = int(CertificateData::MaxBytes) - 1000;
    QVERIFY(!Certificate::fromDer(fixture::TestKey::ec().certificate(fields)).isNull());
    fields.extensionSize = int(CertificateData::MaxBytes);
    QVERIFY(Certificate::fromDer(fixture::TestKey::ec().certificate(fields)).isNull());
}

void TestCertificate::knowsTheDebugCertificate()
{
    fixture::CertificateFields fields;
    fields.commonName = "Android Debug";
    QVERIFY(Certificate::fromDer(fixture::TestKey::ec().certificate(fields)).isDebug());
    fields.commonName = "Android Debugger";
    QVERIFY(!Certificate::fromDer(fixture::TestKey::ec().certificate(fields)).isDebug());
}

void TestCertificate::isNothingByDefault()
{
    const Certificate certificate;
    QVERIFY(certificate.isNull());
    QVERIFY(certificate.der().isEmpty());
    QVERIFY(certificate.fingerprint().isEmpty());
    QVERIFY(certificate.publicKeyFingerprint().isEmpty());
    QVERIFY(certificate.keyAlgorithm().isEmpty());
    QCOMPARE(certificate.keyBits(), 0);
    QVERIFY(!certificate.isDebug());
}

QTEST_GUILESS_MAIN(TestCertificate)
#include "tst_certificate.moc"
