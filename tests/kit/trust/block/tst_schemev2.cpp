// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "OpenedBlock.h"
#include "RawZip.h"
#include "SigningBlockBuilder.h"
#include "trust/block/SchemeV2.h"

#include <QtTest>

#include <utility>

using namespace SorrelKit;
using namespace fixture;

using Scheme = Signer::Scheme;
using Numbered = QVector<NumberedBytes>;

namespace {

QByteArray someZip()
{
    return rawZip({{"AndroidManifest.xml", "manifest"}, {"classes.dex", "code"}});
}

TestKey key()
{
    return TestKey::rsa();
}

QByteArray signedBy(const QVector<BlockSigner> &signers)
{
    return SigningBlockBuilder(someZip(), true).v2(signers).build();
}

SchemeResult verify(const QByteArray &package, SdkRange sdk = {})
{
    OpenedBlock opened(package);
    return opened.verifier->verifyV2(sdk);
}

/// Changes the bytes of one element of a list of signatures or digests.
std::function<void(Numbered &)> flipping(int number)
{
    return [number](Numbered &list) { list[number].bytes[5] = char(list[number].bytes[5] ^ 1); };
}

} // namespace

/// SchemeV2 and SignerBlock, by packages that are damaged in one field.
class TestSchemeV2 : public QObject
{
    Q_OBJECT

private slots:
    void hasEveryErrorText_data();
    void hasEveryErrorText();
    void warnsOfWhatAndroidIgnores_data();
    void warnsOfWhatAndroidIgnores();
    void verifiesSeveralSigners();
    void refusesAPackageWithOneBadSigner();
    void limitsSigners();
    void verifiesTheStrongestSignatureOfEachVersion_data();
    void verifiesTheStrongestSignatureOfEachVersion();
    void comparesTheDigestsOfVerifiedSignatures();
    void needsAnAlgorithmForTheFirstVersion();
    void findsNothingBeforeNougat();
    void looksForV3OnlyFromPieOn();
    void acceptsSignedBytesBehindTheAttributes();
    void limitsTheElementsOfLists_data();
    void limitsTheElementsOfLists();
};

void TestSchemeV2::hasEveryErrorText_data()
{
    QTest::addColumn<QByteArray>("package");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *name, const char *error, const std::function<void(BlockSigner &)> &damage,
                        const QVector<quint32> &algorithms = {0x0103}) {
        BlockSigner signer(key(), algorithms);
        damage(signer);
        QTest::newRow(name) << signedBy({signer}) << QString::fromLatin1(error);
    };
    const auto value = [](const char *name, const char *error, const std::function<void(QByteArray &)> &damage) {
        QTest::newRow(name) << SigningBlockBuilder(someZip()).v2({BlockSigner(key())}).onLastValue(damage).build()
                            << QString::fromLatin1(error);
    };

    const char *const listFault = "the signing block is damaged: the list of signers";
    value("empty value", listFault, [](QByteArray &bytes) { bytes.clear(); });
    value("size of all signers, more", listFault, [](QByteArray &bytes) { poke32(bytes, 0, bytes.size() - 3); });
    value("size of all signers, less", listFault, [](QByteArray &bytes) { poke32(bytes, 0, bytes.size() - 5); });
    value("size of the signer", listFault, [](QByteArray &bytes) { poke32(bytes, 4, bytes.size() - 7); });
    value("negative size", listFault, [](QByteArray &bytes) { poke32(bytes, 0, 0xffffffff); });
    value("bytes behind the signers", listFault, [](QByteArray &bytes) { bytes += 'x'; });
    QTest::newRow("no signer") << signedBy({}) << QStringLiteral("there is no signer");

    const char *const damaged = "signer 1: a signer is damaged";
    row("size of the signed data", damaged,
        [](BlockSigner &signer) { signer.onSigner = [](QByteArray &bytes) { poke32(bytes, 0, 1 << 20); }; });
    row("bytes behind the public key", damaged,
        [](BlockSigner &signer) { signer.onSigner = [](QByteArray &bytes) { bytes += 'x'; }; });
    row("public key cut", damaged,
        [](BlockSigner &signer) { signer.onSigner = [](QByteArray &bytes) { bytes.chop(1); }; });
    row("empty signer", damaged,
        [](BlockSigner &signer) { signer.onSigner = [](QByteArray &bytes) { bytes.clear(); }; });

    const auto signatureBytes = [](int at, qint64 number) {
        return [at, number](BlockSigner &signer) {
            signer.onSigner = [at, number](QByteArray &bytes) {
                poke32(bytes, 4 + int(peek32(bytes, 0)) + at, number);
            };
        };
    };
    row("size of all signatures", damaged, signatureBytes(0, 1 << 20));
    const char *const signatures = "signer 1: a signer is damaged: its signatures";
    row("size of a signature's element", signatures, signatureBytes(4, 1 << 20));
    row("size of a signature", signatures, signatureBytes(12, 255));
    row("bytes behind a signature", signatures, signatureBytes(12, 1));
    row("no signature", "signer 1: no signature has a known algorithm",
        [](BlockSigner &signer) { signer.onSignatures = [](Numbered &list) { list.clear(); }; });
    row("unknown algorithm",
        "signer 1: no signature has a known algorithm; warning: signer 1: an algorithm is unknown: 0x0999",
        [](BlockSigner &) {}, {0x0999});
    row("wrong signature", "signer 1: a signature is wrong: 0x0103",
        [](BlockSigner &signer) { signer.onSignatures = flipping(0); });
    row("empty signature", "signer 1: a signature is wrong: 0x0103",
        [](BlockSigner &signer) { signer.onSignatures = [](Numbered &list) { list[0].bytes.clear(); }; });
    row("signature of another key", "signer 1: a signature is wrong: 0x0103",
        [](BlockSigner &signer) { signer.publicKey = TestKey::rsa(2).publicKey(); });
    row("another kind of key", "signer 1: a signature is wrong: 0x0103",
        [](BlockSigner &signer) { signer.publicKey = TestKey::ec().publicKey(); });
    row("another algorithm", "signer 1: a signature is wrong: 0x0104",
        [](BlockSigner &signer) { signer.onSignatures = [](Numbered &list) { list[0].id = 0x0104; }; });
    row("damaged public key", "signer 1: a public key is damaged",
        [](BlockSigner &signer) { signer.publicKey.chop(1); });
    row("no public key", "signer 1: a public key is damaged", [](BlockSigner &signer) { signer.publicKey.clear(); });

    row("empty signed data", "signer 1: a signer is damaged: its signed data",
        [](BlockSigner &signer) { signer.onSignedData = [](QByteArray &data) { data.clear(); }; });
    row("no attributes", "signer 1: a signer is damaged: its signed data",
        [](BlockSigner &signer) { signer.onSignedData = [](QByteArray &data) { data.chop(4); }; });
    row("no certificate", "signer 1: there is no certificate",
        [](BlockSigner &signer) { signer.certificates.clear(); });
    row("damaged certificate", "signer 1: a certificate is damaged: 1",
        [](BlockSigner &signer) { signer.certificates[0].chop(1); });
    row("empty certificate", "signer 1: a certificate is damaged: 1",
        [](BlockSigner &signer) { signer.certificates[0].clear(); });
    row("damaged second certificate", "signer 1: a certificate is damaged: 2",
        [](BlockSigner &signer) { signer.certificates.append("junk"); });
    row("size of a certificate", "signer 1: a certificate is damaged: 1", [](BlockSigner &signer) {
        signer.onSignedData = [](QByteArray &data) { poke32(data, 4 + int(peek32(data, 0)) + 4, 1 << 20); };
    });
    row("certificate of another key", "signer 1: the certificate has another key than the signer",
        [](BlockSigner &signer) { signer.certificates = {TestKey::rsa(2).certificate()}; });

    const char *const digests = "signer 1: a signer is damaged: its digests";
    row("size of a digest's element", digests,
        [](BlockSigner &signer) { signer.onSignedData = [](QByteArray &data) { poke32(data, 4, 1 << 20); }; });
    row("size of a digest", digests,
        [](BlockSigner &signer) { signer.onSignedData = [](QByteArray &data) { poke32(data, 12, 1 << 20); }; });
    row("short digest", digests,
        [](BlockSigner &signer) { signer.onDigests = [](Numbered &list) { list[0].bytes.chop(1); }; });
    row("empty digest", digests,
        [](BlockSigner &signer) { signer.onDigests = [](Numbered &list) { list[0].bytes.clear(); }; });
    row("no digest", "signer 1: signatures and digests have different algorithms",
        [](BlockSigner &signer) { signer.onDigests = [](Numbered &list) { list.clear(); }; });
    row("digest of another algorithm", "signer 1: signatures and digests have different algorithms",
        [](BlockSigner &signer) { signer.onDigests = [](Numbered &list) { list[0].id = 0x0101; }; });
    row("digests in another order", "signer 1: signatures and digests have different algorithms",
        [](BlockSigner &signer) { signer.onDigests = [](Numbered &list) { std::swap(list[0], list[1]); }; },
        {0x0103, 0x0104});
    row("two digests of one kind", "signer 1: digests of the same content differ",
        [](BlockSigner &signer) { signer.onDigests = flipping(1); }, {0x0101, 0x0103});
    row("SHA-256", "signer 1: the content was changed: SHA-256",
        [](BlockSigner &signer) { signer.onDigests = flipping(0); });
    row("SHA-512", "signer 1: the content was changed: SHA-512",
        [](BlockSigner &signer) { signer.onDigests = flipping(0); }, {0x0104});
    row("Merkle tree", "signer 1: the content was changed: SHA-256 of the tree",
        [](BlockSigner &signer) { signer.onDigests = flipping(1); }, {0x0103, 0x0421});

    row("size of an attribute", "signer 1: an attribute is damaged", [](BlockSigner &signer) {
        signer.attribute(1, "value");
        signer.onSignedData = [](QByteArray &data) { poke32(data, int(data.size()) - 13, 100); };
    });
    row("attribute without id", "signer 1: an attribute is damaged", [](BlockSigner &signer) {
        signer.onSignedData = [](QByteArray &data) { data = data.chopped(4) + prefixed(prefixed("abc")); };
    });
    row("short stripping protection", "signer 1: an attribute is damaged: 0xbeeff00d",
        [](BlockSigner &signer) { signer.attribute(SigningBlockBuilder::StrippingAttribute, "ab"); });
    row("protection of v2 itself", "signer 1: an attribute is damaged: 0xbeeff00d",
        [](BlockSigner &signer) { signer.attribute(SigningBlockBuilder::StrippingAttribute, 2U); });
    row("v3 removed", "signer 1: a signature was removed: v3",
        [](BlockSigner &signer) { signer.attribute(SigningBlockBuilder::StrippingAttribute, 3U); });

    BlockSigner tree(key(), {0x0421});
    QTest::newRow("block off page boundaries") << SigningBlockBuilder(someZip()).v2({tree}).build()
                                               << QStringLiteral("signer 1: no signature has a known algorithm");
    BlockSigner both(key(), {0x0103, 0x0421});
    QTest::newRow("tree of a block off page boundaries")
        << SigningBlockBuilder(someZip()).v2({both}).build()
        << QStringLiteral("the signing block is damaged: it does not consist of pages");
}

void TestSchemeV2::hasEveryErrorText()
{
    QFETCH(QByteArray, package);
    const SchemeResult result = verify(package);
    QVERIFY(result.isFound);
    QVERIFY(!result.isVerified());
    QVERIFY(result.signers.isEmpty());
    QTEST(messageOf(result), "error");
}

void TestSchemeV2::warnsOfWhatAndroidIgnores_data()
{
    QTest::addColumn<QByteArray>("package");
    QTest::addColumn<QString>("warning");
    QTest::newRow("attribute") << signedBy({BlockSigner(key()).attribute(0x1234, "value")})
                               << QStringLiteral("warning: signer 1: an attribute is unknown: 0x1234");
    QTest::newRow("scheme") << signedBy({BlockSigner(key()).attribute(SigningBlockBuilder::StrippingAttribute, 9U)})
                            << QStringLiteral("warning: signer 1: a signature scheme is unknown: 9");
    QTest::newRow("algorithm") << signedBy({BlockSigner(key(), {0x0999, 0x0103})})
                               << QStringLiteral("warning: signer 1: an algorithm is unknown: 0x0999");
}

void TestSchemeV2::warnsOfWhatAndroidIgnores()
{
    QFETCH(QByteArray, package);
    const SchemeResult result = verify(package);
    QVERIFY(result.isVerified());
    QTEST(messageOf(result), "warning");
}

void TestSchemeV2::verifiesSeveralSigners()
{
    const BlockSigner first(key());
    const BlockSigner second(TestKey::ec(), {0x0201});
    const SchemeResult result = verify(signedBy({first, second}));
    QVERIFY2(result.isVerified(), qPrintable(messageOf(result)));
    QCOMPARE(result.signers.size(), 2);
    QCOMPARE(result.signers.at(0).signer.certificate.der(), first.certificates.first());
    QCOMPARE(result.signers.at(1).signer.certificate.der(), second.certificates.first());
    QCOMPARE(result.signers.at(1).signer.minSdkVersion, 0);
    QCOMPARE(result.signers.at(1).signer.maxSdkVersion, std::numeric_limits<int>::max());
}

void TestSchemeV2::refusesAPackageWithOneBadSigner()
{
    BlockSigner bad(TestKey::ec(), {0x0201});
    bad.onSignatures = flipping(0);
    const SchemeResult result = verify(signedBy({BlockSigner(key()), bad}));
    QVERIFY(!result.isVerified());
    QVERIFY(result.signers.isEmpty());
    QCOMPARE(messageOf(result), QStringLiteral("signer 2: a signature is wrong: 0x0201"));
}

void TestSchemeV2::limitsSigners()
{
    const BlockSigner signer(TestKey::ec(), {0x0201});
    QVERIFY(verify(signedBy(QVector<BlockSigner>(SchemeV2::MaxSigners, signer))).isVerified());
    const SchemeResult result = verify(signedBy(QVector<BlockSigner>(SchemeV2::MaxSigners + 1, signer)));
    QCOMPARE(messageOf(result), QStringLiteral("there are too many signers: 10"));
}

void TestSchemeV2::verifiesTheStrongestSignatureOfEachVersion_data()
{
    QTest::addColumn<QVector<quint32>>("algorithms");
    QTest::addColumn<int>("damaged");
    QTest::addColumn<bool>("isVerified");
    const auto row = [](const char *name, const QVector<quint32> &algorithms, int damaged, bool isVerified) {
        QTest::newRow(name) << algorithms << damaged << isVerified;
    };
    // A weaker one of the same version is not looked at, as on Android.
    row("SHA-256 before SHA-512, weaker", {0x0103, 0x0104}, 0, true);
    row("SHA-256 before SHA-512, stronger", {0x0103, 0x0104}, 1, false);
    row("SHA-512 before SHA-256, stronger", {0x0104, 0x0103}, 0, false);
    row("SHA-512 before SHA-256, weaker", {0x0104, 0x0103}, 1, true);
    // The first of equals counts.
    row("first of equals", {0x0103, 0x0101}, 0, false);
    row("second of equals", {0x0103, 0x0101}, 1, true);
    // Pie knows Merkle trees, and Nougat does not.
    row("SHA-256 for Nougat", {0x0103, 0x0421}, 0, false);
    row("tree for Pie", {0x0103, 0x0421}, 1, false);
    row("SHA-512 for Nougat", {0x0421, 0x0104}, 1, false);
    row("tree beside SHA-512", {0x0421, 0x0104}, 0, false);
}

void TestSchemeV2::verifiesTheStrongestSignatureOfEachVersion()
{
    QFETCH(QVector<quint32>, algorithms);
    QFETCH(int, damaged);
    BlockSigner signer(key(), algorithms);
    QVERIFY(verify(signedBy({signer})).isVerified());
    signer.onSignatures = flipping(damaged);
    QTEST(verify(signedBy({signer})).isVerified(), "isVerified");
}

void TestSchemeV2::comparesTheDigestsOfVerifiedSignatures()
{
    BlockSigner signer(key(), {0x0103, 0x0104});
    signer.onDigests = flipping(0);
    QVERIFY(verify(signedBy({signer})).isVerified());
    signer.onDigests = flipping(1);
    QCOMPARE(messageOf(verify(signedBy({signer}))), QStringLiteral("signer 1: the content was changed: SHA-512"));
}

void TestSchemeV2::needsAnAlgorithmForTheFirstVersion()
{
    const QByteArray package = signedBy({BlockSigner(key(), {0x0421})});
    QVERIFY(verify(package, SdkRange().from(SdkRange::Pie)).isVerified());
    QCOMPARE(messageOf(verify(package, SdkRange().from(SdkRange::Pie - 1))),
             QStringLiteral("signer 1: no signature has a known algorithm"));
    QCOMPARE(messageOf(verify(package, {1, SdkRange::Pie - 1})),
             QStringLiteral("signer 1: no signature has a known algorithm"));
}

void TestSchemeV2::findsNothingBeforeNougat()
{
    const QByteArray package = signedBy({BlockSigner(key())});
    QVERIFY(!verify(package, {1, SdkRange::Nougat - 1}).isFound);
    QVERIFY(verify(package, {1, SdkRange::Nougat}).isVerified());
}

void TestSchemeV2::looksForV3OnlyFromPieOn()
{
    const BlockSigner signer = BlockSigner(key()).attribute(SigningBlockBuilder::StrippingAttribute, 3U);
    QVERIFY(verify(signedBy({signer}), {1, SdkRange::Pie - 1}).isVerified());
    QVERIFY(!verify(signedBy({signer}), {1, SdkRange::Pie}).isVerified());
    const QByteArray both = SigningBlockBuilder(someZip()).v2({signer}).v3({BlockSigner(key())}).build();
    QVERIFY(verify(both).isVerified());
}

void TestSchemeV2::acceptsSignedBytesBehindTheAttributes()
{
    // apksigner writes an empty list there.
    BlockSigner signer(key());
    signer.onSignedData = [](QByteArray &data) { data += QByteArray(4, '\0'); };
    QVERIFY(verify(signedBy({signer})).isVerified());
}

void TestSchemeV2::limitsTheElementsOfLists_data()
{
    QTest::addColumn<QByteArray>("list");
    for (const char *const list : {"its signatures", "its digests", "its certificates", "its attributes"})
        QTest::newRow(list) << QByteArray(list);
}

void TestSchemeV2::limitsTheElementsOfLists()
{
    QFETCH(QByteArray, list);
    const auto package = [&list](int count) {
        BlockSigner signer(TestKey::ec(), {0x0201});
        const auto fill = [count](Numbered &elements) {
            while (elements.size() < count)
                elements.append({0x0999, QByteArray()});
        };
        if (list != "its digests")
            signer.onSignatures = fill;
        if (list != "its signatures")
            signer.onDigests = fill;
        if (list == "its certificates") {
            signer.onSignatures = signer.onDigests = nullptr;
            signer.certificates = QVector<QByteArray>(count, signer.certificates.first());
        } else if (list == "its attributes") {
            signer.onSignatures = signer.onDigests = nullptr;
            for (int i = 0; i < count; ++i)
                signer.attribute(quint32(i), QByteArray());
        }
        return signedBy({signer});
    };
    // Lists of digests and signatures of different lengths are an error that is found later.
    const SchemeResult most = verify(package(SignerBlock::MaxElements));
    for (const SignatureIssue &issue : most.issues.errors())
        QCOMPARE(issue.code(), SignatureIssue::Code::AlgorithmsDiffer);
    const SchemeResult more = verify(package(SignerBlock::MaxElements + 1));
    QCOMPARE(more.issues.errors().first().message(),
             QStringLiteral("signer 1: verification takes too much: ") + QString::fromLatin1(list));
}

QTEST_GUILESS_MAIN(TestSchemeV2)
#include "tst_schemev2.moc"
