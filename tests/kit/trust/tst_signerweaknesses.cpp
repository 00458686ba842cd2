// SPDX-License-Identifier: LGPL-2.1-or-later
#include "TestKey.h"

#include "trust/SignerWeaknesses.h"

#include <QtTest>

using namespace SorrelKit;
using fixture::CertificateFields;
using fixture::TestKey;
using Code = SignatureIssue::Code;

namespace {

const QDateTime now(QDate(2030, 6, 15), QTime(12, 0), Qt::UTC);

QStringList warnings(const QByteArray &der)
{
    IssueList issues;
    SignerWeaknesses weaknesses(&issues, now);
    weaknesses.find(Certificate::fromDer(der));
    QStringList texts;
    for (const SignatureIssue &each : issues.warnings())
        texts.append(each.message());
    return texts;
}

} // namespace

/// SignerWeaknesses.
class TestSignerWeaknesses : public QObject
{
    Q_OBJECT

private slots:
    void soundCertificatesHaveNone();
    void hashes();
    void keys();
    void debugCertificates();
    void validity();
    void isFoundOnce();
};

void TestSignerWeaknesses::soundCertificatesHaveNone()
{
    QCOMPARE(warnings(TestKey::ec().certificate()), QStringList());
    QCOMPARE(warnings(TestKey::rsa(1, SignerWeaknesses::MinModulusBits).certificate()), QStringList());
    QCOMPARE(warnings(TestKey::ec(1, "secp224r1").certificate()), QStringList());
    QCOMPARE(warnings(QByteArray()), QStringList());
}

void TestSignerWeaknesses::hashes()
{
    CertificateFields fields;
    fields.hash = HashAlgorithm::Sha1;
    QCOMPARE(warnings(TestKey::ec().certificate(fields)),
             QStringList(QStringLiteral("CN=Test signer: a hash is weak: SHA-1 in the certificate")));
    fields.hash = HashAlgorithm::Md5;
    QCOMPARE(warnings(TestKey::rsa().certificate(fields)),
             QStringList(QStringLiteral("CN=Test signer: a hash is weak: MD5 in the certificate")));
}

void TestSignerWeaknesses::keys()
{
    QCOMPARE(warnings(TestKey::rsa(1, 1024).certificate()),
             QStringList(QStringLiteral("CN=Test signer: a key is weak: 1024 bits of RSA")));
}

void TestSignerWeaknesses::debugCertificates()
{
    CertificateFields fields;
    fields.commonName = "Android Debug";
    QCOMPARE(warnings(TestKey::ec().certificate(fields)),
             QStringList(QStringLiteral("CN=Android Debug: the certificate is for tests")));
}

void TestSignerWeaknesses::validity()
{
    CertificateFields fields;
    fields.notAfter = now;
    QCOMPARE(warnings(TestKey::ec().certificate(fields)), QStringList());
    fields.notAfter = now.addSecs(-1);
    QCOMPARE(warnings(TestKey::ec().certificate(fields)),
             QStringList(QStringLiteral("CN=Test signer: the certificate has expired: 2030-06-15T11:59:59Z")));
    fields = {};
    fields.notBefore = now.addSecs(1);
    QCOMPARE(warnings(TestKey::ec().certificate(fields)),
             QStringList(QStringLiteral("CN=Test signer: the certificate is not valid yet: 2030-06-15T12:00:01Z")));
}

void TestSignerWeaknesses::isFoundOnce()
{
    IssueList issues;
    SignerWeaknesses weaknesses(&issues, now);
    const Certificate weak = Certificate::fromDer(TestKey::rsa(1, 1024).certificate());
    weaknesses.find(weak);
    weaknesses.find(weak);
    QCOMPARE(issues.warnings().size(), 1);
}

QTEST_GUILESS_MAIN(TestSignerWeaknesses)
#include "tst_signerweaknesses.moc"
