// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "OpenedBlock.h"
#include "RawZip.h"
#include "SigningBlockBuilder.h"
#include "trust/crypto/CertificateAccess.h"

#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

using Code = SignatureIssue::Code;

namespace {

QByteArray someZip()
{
    return rawZip({{"a", "text"}});
}

QByteArray der(char tag, const QByteArray &content)
{
    const auto size = int(content.size());
    return QByteArray(1, tag) + char(0x83) + char(size >> 16) + char(size >> 8) + char(size) + content;
}

/// The public key of RSA with these bits, all of which are set; nobody has the secret one.
QByteArray rsaKey(int bits, int exponentBits)
{
    const auto number = [](int size) { return der(2, QByteArray(1, '\0') + QByteArray(size / 8, '\xff')); };
    const QByteArray algorithm = QByteArray::fromHex("300d06092a864886f70d0101010500");
    return der(0x30, algorithm + der(3, QByteArray(1, '\0') + der(0x30, number(bits) + number(exponentBits))));
}

/// Whether the errors are of this kind alone.
bool hasOnly(const SchemeResult &result, Code code)
{
    return result.issues.hasErrors()
           && std::all_of(result.issues.errors().begin(), result.issues.errors().end(),
                          [code](const SignatureIssue &issue) { return issue.code() == code; });
}

} // namespace

/// BlockVerifier with packages that want to cost much. Costs are counted in the units of Budget.
class TestBlockLimits : public QObject
{
    Q_OBJECT

private slots:
    void needsItsBudget();
    void stopsAtTheFirstSignerTooMany();
    void doesNotVerifyByHugeKeys_data();
    void doesNotVerifyByHugeKeys();
    void boundsManyLargeKeys();
    void stopsAtTheFirstLevelTooMany();
    void paysForLargeCertificates();
    void paysForLevelsOfALineage();
    void paysForMembers();
    void boundsIssues();
};

void TestBlockLimits::needsItsBudget()
{
    const QByteArray package = SigningBlockBuilder(someZip())
                                   .v2({BlockSigner(TestKey::rsa())})
                                   .v3({BlockSigner(TestKey::ec(), {0x0201})})
                                   .build();
    for (const auto verify : {&BlockVerifier::verifyV2, &BlockVerifier::verifyV3}) {
        OpenedBlock enough(package);
        QVERIFY(((*enough.verifier).*verify)({}).isVerified());
        const qint64 work = OpenedBlock::Work - enough.budget.workLeft();
        QVERIFY(work > 0);
        OpenedBlock exact(package, work);
        QVERIFY(((*exact.verifier).*verify)({}).isVerified());
        for (qint64 less = 0; less < work; less += 1 + work / 500) {
            OpenedBlock opened(package, less);
            const SchemeResult result = ((*opened.verifier).*verify)({});
            QVERIFY(result.isFound);
            QVERIFY2(hasOnly(result, Code::TooCostly), qPrintable(messageOf(result)));
        }
        OpenedBlock last(package, work - 1);
        QVERIFY(hasOnly(((*last.verifier).*verify)({}), Code::TooCostly));
        for (const qint64 bytes : {qint64(0), qint64(4000), ContentDigests::PieceSize - 1}) {
            OpenedBlock small(package, OpenedBlock::Work, bytes);
            const SchemeResult result = ((*small.verifier).*verify)({});
            QVERIFY2(hasOnly(result, Code::TooCostly), qPrintable(messageOf(result)));
            QCOMPARE(small.budget.bytesLeft(), bytes);
        }
    }
}

void TestBlockLimits::stopsAtTheFirstSignerTooMany()
{
    const QVector<BlockSigner> signers(1000, BlockSigner(TestKey::ec(), {0x0201}));
    const SigningBlockBuilder builder = SigningBlockBuilder(someZip()).v2(signers).v3(signers);
    OpenedBlock opened(builder.build());
    QVERIFY(hasOnly(opened.verifier->verifyV2({}), Code::TooManySigners));
    QVERIFY(hasOnly(opened.verifier->verifyV3({}), Code::TooManySigners));
    const qint64 size = builder.value(SigningBlockBuilder::V2).size() + builder.value(SigningBlockBuilder::V3).size();
    const qint64 ofMembers = MemberPlaces::HeaderWork + Budget::ValueWork;
    QCOMPARE(OpenedBlock::Work - opened.budget.workLeft(), size * Budget::ByteWork + ofMembers);
}

void TestBlockLimits::doesNotVerifyByHugeKeys_data()
{
    QTest::addColumn<QByteArray>("publicKey");
    QTest::addRow("exponent as long as the modulus") << rsaKey(PublicKey::MaxBits, PublicKey::MaxBits);
    QTest::addRow("long modulus") << rsaKey(PublicKey::MaxBits + 8, 16);
    QTest::addRow("a megabyte") << rsaKey(8000000, 8000000);
}

void TestBlockLimits::doesNotVerifyByHugeKeys()
{
    QFETCH(QByteArray, publicKey);
    BlockSigner signer(TestKey::rsa());
    signer.publicKey = publicKey;
    OpenedBlock opened(SigningBlockBuilder(someZip()).v2({signer}).build());
    const SchemeResult result = opened.verifier->verifyV2({});
    QVERIFY2(hasOnly(result, Code::TooCostly), qPrintable(messageOf(result)));
}

void TestBlockLimits::boundsManyLargeKeys()
{
    // Each signature costs a part of the budget, which is not enough for all.
    BlockSigner signer(TestKey::rsa());
    signer.publicKey = rsaKey(PublicKey::MaxBits, 1024);
    signer.onSignatures = [](QVector<NumberedBytes> &list) { list[0].bytes = QByteArray(2048, '\1'); };
    const PublicKey key = PublicKey::fromDer(ByteView(signer.publicKey));
    OpenedBlock opened(SigningBlockBuilder(someZip()).v3(QVector<BlockSigner>(64, signer)).build(), 10 * key.work());
    const SchemeResult result = opened.verifier->verifyV3({});
    QVERIFY(!result.isVerified());
    QCOMPARE(result.issues.errors().size(), 64);
    QCOMPARE(result.issues.errors().first().code(), Code::BadSignature);
    QCOMPARE(result.issues.errors().last().code(), Code::TooCostly);
    QVERIFY(opened.budget.workLeft() >= 0);
}

void TestBlockLimits::stopsAtTheFirstLevelTooMany()
{
    const TestKey key = TestKey::ec();
    const QByteArray certificate = key.certificate();
    QVector<LineageLevel> levels(3000, LineageLevel{key, certificate, 0x0201});
    for (int i = 0; i < levels.size(); ++i)
        levels[i].certificate = i < 100 ? key.certificate() : certificate;
    BlockSigner signer(key, {0x0201});
    signer.attribute(SigningBlockBuilder::LineageAttribute, lineage(levels));
    OpenedBlock opened(SigningBlockBuilder(someZip()).v3({signer}).build());
    const SchemeResult result = opened.verifier->verifyV3({});
    QCOMPARE(messageOf(result), QStringLiteral("signer 1: verification takes too much: the lineage of keys"));
    const qint64 ofLevels = 64 * (certificate.size() * 10 + PublicKey::fromDer(ByteView(signer.publicKey)).work());
    QVERIFY(OpenedBlock::Work - opened.budget.workLeft() < 2 * ofLevels + 20 * signer.attributes.first().bytes.size());
}

void TestBlockLimits::paysForLargeCertificates()
{
    CertificateFields fields;
    fields.extensionSize = int(CertificateData::MaxBytes) - 1000;
    BlockSigner signer(TestKey::ec(), {0x0201});
    signer.certificates = QVector<QByteArray>(7, signer.key.certificate(fields));
    const QByteArray package = SigningBlockBuilder(someZip()).v2({signer}).build();
    OpenedBlock enough(package);
    const SchemeResult result = enough.verifier->verifyV2({});
    QVERIFY2(result.isVerified(), qPrintable(messageOf(result)));
    const qint64 bytes = 7 * qint64(signer.certificates.first().size());
    QVERIFY(OpenedBlock::Work - enough.budget.workLeft() > bytes * SignerBlock::CertificateByteWork);
    OpenedBlock little(package, bytes * SignerBlock::CertificateByteWork);
    QCOMPARE(messageOf(little.verifier->verifyV2({})),
             QStringLiteral("signer 1: verification takes too much: its certificates"));
}

void TestBlockLimits::paysForLevelsOfALineage()
{
    CertificateFields fields;
    fields.extensionSize = 500000;
    const TestKey key = TestKey::ec();
    const LineageLevel first{key, key.certificate(fields), 0x0201};
    const LineageLevel second{key, key.certificate(), 0x0201};
    BlockSigner signer(key, {0x0201});
    signer.certificates = {second.certificate};
    signer.attribute(SigningBlockBuilder::LineageAttribute, lineage({first, second}));
    const QByteArray package = SigningBlockBuilder(someZip()).v3({signer}).build();
    OpenedBlock enough(package);
    QVERIFY(enough.verifier->verifyV3({}).isVerified());
    OpenedBlock little(package, first.certificate.size() * SignerBlock::CertificateByteWork);
    QCOMPARE(messageOf(little.verifier->verifyV3({})),
             QStringLiteral("signer 1: verification takes too much: the lineage of keys"));
}

void TestBlockLimits::paysForMembers()
{
    QVector<RawMember> members(10000, RawMember{"a", QByteArray()});
    const BlockSigner signer(TestKey::ec(), {0x0201});
    const QByteArray package = SigningBlockBuilder(rawZip(members)).v2({signer}).v3({signer}).build();
    OpenedBlock enough(package);
    QVERIFY(enough.verifier->verifyV2({}).isVerified());
    QVERIFY(OpenedBlock::Work - enough.budget.workLeft() > members.size() * Budget::ValueWork);
    // The places of members are compared once.
    const qint64 left = enough.budget.workLeft();
    QVERIFY(enough.verifier->verifyV3({}).isVerified());
    QVERIFY(left - enough.budget.workLeft() < members.size() * Budget::ValueWork);
    OpenedBlock little(package, members.size() * Budget::ValueWork);
    QCOMPARE(messageOf(little.verifier->verifyV2({})), QStringLiteral("verification takes too much: the members"));
    QCOMPARE(messageOf(little.verifier->verifyV3({})), QStringLiteral("verification takes too much: the members"));
}

void TestBlockLimits::boundsIssues()
{
    BlockSigner signer(TestKey::ec(), {0x0201});
    for (int i = 0; i < SignerBlock::MaxElements; ++i)
        signer.attribute(quint32(i), QByteArray());
    OpenedBlock opened(SigningBlockBuilder(someZip()).v2(QVector<BlockSigner>(10, signer)).build());
    const SchemeResult result = opened.verifier->verifyV2({});
    QVERIFY(result.isVerified());
    QCOMPARE(result.issues.warnings().size(), IssueList::MaxIssues + 1);
    QCOMPARE(result.issues.warnings().last().code(), Code::TooManyIssues);
}

QTEST_GUILESS_MAIN(TestBlockLimits)
#include "tst_blocklimits.moc"
