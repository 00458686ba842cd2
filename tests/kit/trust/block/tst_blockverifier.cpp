// SPDX-License-Identifier: LGPL-2.1-or-later
#include "OpenedBlock.h"
#include "RawZip.h"
#include "SigningBlockBuilder.h"

#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

using Scheme = Signer::Scheme;

namespace {

QByteArray smallZip()
{
    return rawZip({{"AndroidManifest.xml", "manifest"}, {"classes.dex", "code"}});
}

TestKey keyFor(quint32 algorithm)
{
    switch (algorithm) {
    case 0x0201:
    case 0x0423:
        return TestKey::ec();
    case 0x0202:
        return TestKey::ec(1, "secp384r1");
    case 0x0301:
    case 0x0425:
        return TestKey::dsa();
    default:
        return TestKey::rsa();
    }
}

} // namespace

/// BlockVerifier, with packages that are signed rightly.
class TestBlockVerifier : public QObject
{
    Q_OBJECT

private slots:
    void verifiesEveryAlgorithm_data();
    void verifiesEveryAlgorithm();
};

void TestBlockVerifier::verifiesEveryAlgorithm_data()
{
    QTest::addColumn<int>("scheme");
    QTest::addColumn<quint32>("algorithm");
    for (const Scheme scheme : {Scheme::V2, Scheme::V3, Scheme::V31}) {
        for (const quint32 algorithm :
             {0x0101U, 0x0102U, 0x0103U, 0x0104U, 0x0201U, 0x0202U, 0x0301U, 0x0421U, 0x0423U, 0x0425U})
            QTest::addRow("%d, 0x%04x", int(scheme), algorithm) << int(scheme) << algorithm;
    }
}

void TestBlockVerifier::verifiesEveryAlgorithm()
{
    QFETCH(int, scheme);
    QFETCH(quint32, algorithm);
    const bool isTree = algorithm >= 0x0421;
    SigningBlockBuilder builder(smallZip(), isTree);
    BlockSigner signer(keyFor(algorithm), {algorithm});
    const BlockSigner old(TestKey::rsa(2));
    if (Scheme(scheme) == Scheme::V2)
        builder.v2({signer});
    else if (Scheme(scheme) == Scheme::V3)
        builder.v3({signer});
    else
        builder.v3({BlockSigner(old).sdk(28, 32).attribute(SigningBlockBuilder::RotationSdkAttribute, 33)})
            .v31({signer.sdk(33, std::numeric_limits<int>::max())});
    OpenedBlock opened(builder.build());
    QVERIFY(opened.verifier->hasBlock());
    const SchemeResult result = opened.verify(Scheme(scheme), SdkRange().from(28));
    QVERIFY2(result.isVerified(), qPrintable(messageOf(result)));
    QVERIFY2(result.issues.warnings().isEmpty(), qPrintable(messageOf(result)));
    QCOMPARE(result.signers.size(), 1);
    QCOMPARE(result.signers.first().signer.certificate.der(), signer.certificates.first());
    QCOMPARE(result.signers.first().signer.scheme, Scheme(scheme));
    QCOMPARE(result.signers.first().digests.size(), 1);
    QCOMPARE(result.signers.first().digests.first().digest, builder.contentDigest(algorithm));
    QCOMPARE(opened.verifier->contentDigest(result.signers.first().digests.first().kind),
             builder.contentDigest(algorithm));
    if (Scheme(scheme) == Scheme::V31) {
        const SchemeResult v3 = opened.verify(Scheme::V3);
        QVERIFY2(v3.isVerified(), qPrintable(messageOf(v3)));
    }
}

QTEST_GUILESS_MAIN(TestBlockVerifier)
#include "tst_blockverifier.moc"
