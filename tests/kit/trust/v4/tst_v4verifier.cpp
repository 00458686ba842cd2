// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "GuardedBytes.h"
#include "IdSigBuilder.h"

#include "archive/ByteSource.h"
#include "limits/Budget.h"
#include "trust/block/MerkleTree.h"
#include "trust/block/SigningBlock.h"
#include "trust/crypto/CertificateData.h"
#include "trust/v4/IdSigFile.h"
#include "trust/v4/V4Verifier.h"

#include <QCryptographicHash>
#include <QtTest>

#include <functional>
#include <limits>

using namespace SorrelKit;
using Change = std::function<void(fixture::IdSigBuilder &)>;
using Code = SignatureIssue::Code;
using Kind = ContentDigest::Kind;

Q_DECLARE_METATYPE(Change)

namespace {

const QByteArray testPackage = QByteArray(4096, 'a') + QByteArray("the second page");

SchemeResult counterpartOf(const fixture::TestKey &key, const QVector<ContentDigest> &digests,
                           Signer::Scheme scheme = Signer::Scheme::V3)
{
    SchemeResult result(scheme);
    result.isFound = true;
    VerifiedSigner signer;
    signer.signer.certificate = Certificate::fromDer(fixture::certificateOf(key));
    signer.digests = digests;
    result.signers.append(signer);
    return result;
}

/// The v3 signature that fits an IdSigBuilder as it is.
SchemeResult fittingCounterpart(Signer::Scheme scheme = Signer::Scheme::V3)
{
    return counterpartOf(fixture::TestKey::rsa(), {{Kind::ChunkedSha256, 0x0103, QByteArray(32, 'd')}}, scheme);
}

/// The same. It is made once, because making its certificate takes longer than most calls of verify().
const SchemeResult &usualCounterpart()
{
    static const SchemeResult result = fittingCounterpart();
    return result;
}

SchemeResult verify(const QByteArray &idsig, const SchemeResult &counterpart = usualCounterpart(),
                    const QByteArray &package = testPackage, qint64 work = std::numeric_limits<qint64>::max(),
                    qint64 bytes = std::numeric_limits<qint64>::max())
{
    BytesInMemory packageSource{SharedBytes(package)};
    const fixture::GuardedBytes guarded(idsig);
    BytesInMemory idsigSource{SharedBytes(guarded.inBlock(), guarded.owner())};
    Budget budget(work, bytes);
    SchemeResult result = V4Verifier::verify(packageSource, idsigSource, counterpart, &budget);
    if (budget.bytesLeft() != bytes)
        qFatal("bytes are still held");
    return result;
}

QStringList messagesOf(const SchemeResult &result)
{
    QStringList messages;
    for (const SignatureIssue &issue : result.issues.errors())
        messages.append(issue.message());
    return messages;
}

fixture::SigningInfo infoOfV31()
{
    fixture::SigningInfo info;
    info.schemeId = SigningBlock::SchemeV31;
    info.key = fixture::TestKey::ec(2);
    info.method.key = SignatureMethod::Key::Ec;
    info.algorithm = 0x0201;
    info.apkDigest = QByteArray(32, 'e');
    return info;
}

} // namespace

/// V4Verifier and IdSigFile.
class TestV4Verifier : public QObject
{
    Q_OBJECT

private slots:
    void verifies();
    void verifiesEveryAlgorithm_data();
    void verifiesEveryAlgorithm();
    void verifiesWithASalt();
    void verifiesWithoutTree();
    void verifiesTheInfoOfTheScheme();
    void comparesTheStrongestDigest();
    void hasEveryError_data();
    void hasEveryError();
    void refusesCounterparts();
    void refusesEveryOtherByte();
    void refusesEveryOtherByteOfThePackage();
    void refusesEveryPrefix();
    void refusesHostileSizes_data();
    void refusesHostileSizes();
    void boundsItsInfos();
    void staysInItsBudget();
};

void TestV4Verifier::verifies()
{
    const SchemeResult result = verify(fixture::IdSigBuilder(testPackage).build());
    QCOMPARE(messagesOf(result), QStringList());
    QVERIFY(result.isVerified());
    QCOMPARE(result.scheme, Signer::Scheme::V4);
    QCOMPARE(result.signers.size(), 1);
    const SignerFields &signer = result.signers.first().signer;
    QCOMPARE(signer.certificate.der(), fixture::certificateOf(fixture::TestKey::rsa()));
    QCOMPARE(signer.scheme, Signer::Scheme::V4);
    QCOMPARE(signer.minSdkVersion, 30);
}

void TestV4Verifier::verifiesEveryAlgorithm_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("hash");
    using Key = SignatureMethod::Key;
    const auto add = [](const char *name, int id, Key key, HashAlgorithm hash) {
        QTest::addRow("%s", name) << id << int(key) << int(hash);
    };
    add("PSS SHA-256", 0x0101, Key::RsaPss, HashAlgorithm::Sha256);
    add("PSS SHA-512", 0x0102, Key::RsaPss, HashAlgorithm::Sha512);
    add("RSA SHA-256", 0x0103, Key::Rsa, HashAlgorithm::Sha256);
    add("RSA SHA-512", 0x0104, Key::Rsa, HashAlgorithm::Sha512);
    add("EC SHA-256", 0x0201, Key::Ec, HashAlgorithm::Sha256);
    add("EC SHA-512", 0x0202, Key::Ec, HashAlgorithm::Sha512);
    add("DSA SHA-256", 0x0301, Key::Dsa, HashAlgorithm::Sha256);
}

void TestV4Verifier::verifiesEveryAlgorithm()
{
    QFETCH(int, id);
    QFETCH(int, key);
    QFETCH(int, hash);
    fixture::IdSigBuilder builder(testPackage);
    fixture::SigningInfo &info = builder.infos.first();
    info.method = {SignatureMethod::Key(key), HashAlgorithm(hash)};
    info.algorithm = quint32(id);
    if (info.method.key == SignatureMethod::Key::Dsa)
        info.key = fixture::TestKey::dsa();
    else if (info.method.key == SignatureMethod::Key::Ec)
        info.key = fixture::TestKey::ec();
    const SchemeResult counterpart = counterpartOf(info.key, {{Kind::ChunkedSha256, 0, info.apkDigest}});
    QCOMPARE(messagesOf(verify(builder.build(), counterpart)), QStringList());

    info.algorithm = id == 0x0103 ? 0x0104 : 0x0103;
    QCOMPARE(messagesOf(verify(builder.build(), counterpart)), QStringList{"signer 1: a signature is wrong"});
}

void TestV4Verifier::verifiesWithASalt()
{
    for (const int size : {1, 8, V4Verifier::MaxSaltBytes}) {
        fixture::IdSigBuilder builder(testPackage);
        builder.salt = QByteArray(size, 's');
        const QByteArray padded = builder.salt + QByteArray(64 - size, '\0');
        const auto hashOf = [&padded](const QByteArray &page) {
            return QCryptographicHash::hash(padded + page + QByteArray(4096 - page.size(), '\0'),
                                            QCryptographicHash::Sha256);
        };
        builder.tree = hashOf(testPackage.left(4096)) + hashOf(testPackage.mid(4096));
        builder.tree.append(QByteArray(4096 - builder.tree.size(), '\0'));
        builder.rootHash = hashOf(builder.tree);
        QCOMPARE(messagesOf(verify(builder.build())), QStringList());
        builder.salt[0] = 'S';
        QVERIFY(!verify(builder.build()).isVerified());
    }
}

void TestV4Verifier::verifiesWithoutTree()
{
    fixture::IdSigBuilder builder(testPackage);
    builder.hasTree = false;
    QVERIFY(verify(builder.build()).isVerified());
    QCOMPARE(messagesOf(verify(builder.build(), fittingCounterpart(), testPackage + 'x')),
             QStringList{"signer 1: a signature is wrong"});
}

void TestV4Verifier::verifiesTheInfoOfTheScheme()
{
    fixture::IdSigBuilder builder(testPackage);
    const SchemeResult newer = counterpartOf(fixture::TestKey::ec(2),
                                             {{Kind::ChunkedSha256, 0x0201, QByteArray(32, 'e')}}, Signer::Scheme::V31);
    QCOMPARE(messagesOf(verify(builder.build(), newer)),
             QStringList{"the v4 signature is for another package: no v3.1"});

    builder.infos.append(infoOfV31());
    QVERIFY(verify(builder.build(), fittingCounterpart()).isVerified());
    QVERIFY(verify(builder.build(), newer).isVerified());
    QCOMPARE(verify(builder.build(), newer).signers.first().signer.certificate.der(),
             fixture::certificateOf(fixture::TestKey::ec(2)));
    QCOMPARE(messagesOf(verify(builder.build(), fittingCounterpart(Signer::Scheme::V31))),
             (QStringList{"signer 2: the signature schemes have different signers",
                          "signer 2: the v4 signature is for another package: digest"}));

    // The info of the other scheme must be right, too.
    for (const int other : {0, 1}) {
        fixture::IdSigBuilder wrong = builder;
        wrong.infos[other].method.hash = HashAlgorithm::Sha512;
        QVERIFY(!verify(wrong.build(), fittingCounterpart()).isVerified());
        QVERIFY(!verify(wrong.build(), newer).isVerified());
    }
}

void TestV4Verifier::comparesTheStrongestDigest()
{
    const auto digest = [](Kind kind, char byte) { return ContentDigest{kind, 0, QByteArray(32, byte)}; };
    fixture::IdSigBuilder builder(testPackage);
    builder.infos.first().apkDigest = QByteArray(32, 'v');
    const fixture::TestKey key = builder.infos.first().key;
    const QVector<ContentDigest> two{digest(Kind::VeritySha256, 'v'), digest(Kind::ChunkedSha256, 'c')};
    QVERIFY(verify(builder.build(), counterpartOf(key, two)).isVerified());
    const QVector<ContentDigest> three = two + QVector<ContentDigest>{digest(Kind::ChunkedSha512, 's')};
    QVERIFY(!verify(builder.build(), counterpartOf(key, three)).isVerified());
    builder.infos.first().apkDigest = QByteArray(32, 's');
    QVERIFY(verify(builder.build(), counterpartOf(key, three)).isVerified());
}

void TestV4Verifier::hasEveryError_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("message");
    using Builder = fixture::IdSigBuilder;
    const auto add = [](const char *message, const Change &change) {
        QTest::addRow("%s", message) << change << QString::fromLatin1(message);
    };
    add("the version of the v4 signature is unknown: 1", [](Builder &b) { b.version = 1; });
    add("the version of the v4 signature is unknown: 3", [](Builder &b) { b.version = 3; });
    add("an algorithm is unknown: hash 2", [](Builder &b) { b.hashAlgorithm = 2; });
    add("the v4 signature is damaged: page size", [](Builder &b) { b.pageBits = 13; });
    add("the v4 signature is damaged: salt",
        [](Builder &b) { b.salt = QByteArray(V4Verifier::MaxSaltBytes + 1, 's'); });
    add("the root hash is wrong", [](Builder &b) { b.salt = "salt"; });
    add("the v4 signature is damaged: signing info", [](Builder &b) { b.afterInfos = "more"; });
    add("signer 1: an algorithm is unknown: 0x0105", [](Builder &b) { b.infos.first().algorithm = 0x0105; });
    add("signer 1: a public key is damaged", [](Builder &b) {
        // The number of an unknown algorithm.
        const QByteArray number = QByteArray::fromHex("06092a864886f70d010101");
        const QByteArray unknown = QByteArray::fromHex("06092a864886f70d01017f");
        fixture::SigningInfo &info = b.infos.first();
        info.publicKey = info.key.publicKey().replace(number, unknown);
        info.certificate = fixture::certificateOf(info.key).replace(number, unknown);
    });
    add("signer 1: a signature is wrong", [](Builder &b) { b.infos.first().algorithm = 0x0104; });
    add("signer 1: a certificate is damaged", [](Builder &b) { b.infos.first().certificate = "certificate"; });
    add("signer 1: the certificate has another key than the signer",
        [](Builder &b) { b.infos.first().publicKey = fixture::TestKey::rsa(2).publicKey(); });
    add("signer 1: the signature schemes have different signers", [](Builder &b) {
        fixture::CertificateFields fields;
        fields.commonName = "Other";
        b.infos.first().certificate = b.infos.first().key.certificate(fields);
    });
    add("signer 1: the v4 signature is for another package: digest",
        [](Builder &b) { b.infos.first().apkDigest = QByteArray(32, 'x'); });
    add("the root hash is wrong", [](Builder &b) { b.rootHash = QByteArray(32, 'r'); });
    add("the hash tree is wrong", [](Builder &b) { b.tree[b.tree.size() - 1] = 'x'; });
    add("the hash tree is wrong: size", [](Builder &b) { b.tree += QByteArray(4096, '\0'); });
}

void TestV4Verifier::hasEveryError()
{
    QFETCH(Change, change);
    QFETCH(QString, message);
    fixture::IdSigBuilder builder(testPackage);
    change(builder);
    const SchemeResult result = verify(builder.build());
    QCOMPARE(messagesOf(result), QStringList{message});
    QVERIFY(result.isFound);
    QVERIFY(!result.isVerified());
}

void TestV4Verifier::refusesCounterparts()
{
    const QByteArray idsig = fixture::IdSigBuilder(testPackage).build();
    const QStringList none{"the v4 signature is for another package: no v2 or v3"};
    QCOMPARE(messagesOf(verify(idsig, SchemeResult(Signer::Scheme::V3))), none);
    SchemeResult counterpart = fittingCounterpart();
    counterpart.issues.addError(Code::BadSignature);
    QCOMPARE(messagesOf(verify(idsig, counterpart)), none);

    counterpart = fittingCounterpart();
    counterpart.signers += counterpart.signers;
    QCOMPARE(messagesOf(verify(idsig, counterpart)),
             QStringList{"signer 1: the signature schemes have different signers"});
    counterpart = fittingCounterpart();
    counterpart.signers.first().digests.clear();
    QCOMPARE(messagesOf(verify(idsig, counterpart)),
             QStringList{"signer 1: the v4 signature is for another package: digest"});
}

void TestV4Verifier::refusesEveryOtherByte()
{
    for (const bool hasTree : {false, true}) {
        fixture::IdSigBuilder builder(testPackage);
        builder.hasTree = hasTree;
        if (!hasTree)
            builder.infos.append(infoOfV31());
        const QByteArray good = builder.build();
        QVERIFY(verify(good).isVerified());
        for (int at = 0; at < good.size(); ++at) {
            QByteArray other = good;
            other[at] = char(other.at(at) ^ (at % 2 == 0 ? 0x01 : 0x80));
            QVERIFY2(!verify(other).isVerified(), qPrintable(QStringLiteral("offset %1").arg(at)));
        }
    }
}

void TestV4Verifier::refusesEveryOtherByteOfThePackage()
{
    const QByteArray idsig = fixture::IdSigBuilder(testPackage).build();
    for (int at = 0; at < testPackage.size(); at += 13) {
        QByteArray other = testPackage;
        other[at] = char(other.at(at) ^ 1);
        QVERIFY(!verify(idsig, usualCounterpart(), other).isVerified());
    }
    // A zero more is in the padding of the last page.
    QVERIFY(!verify(idsig, usualCounterpart(), testPackage + '\0').isVerified());
    QVERIFY(!verify(idsig, usualCounterpart(), testPackage.left(testPackage.size() - 1)).isVerified());
    QVERIFY(!verify(idsig, usualCounterpart(), QByteArray()).isVerified());
}

void TestV4Verifier::refusesEveryPrefix()
{
    fixture::IdSigBuilder builder(testPackage);
    const QByteArray good = builder.build();
    builder.hasTree = false;
    const auto sizeWithoutTree = int(builder.build().size());
    for (int size = 0; size < good.size(); ++size)
        QCOMPARE(verify(good.left(size)).isVerified(), size == sizeWithoutTree);
    QCOMPARE(messagesOf(verify(good + 'x')), QStringList{"the v4 signature is damaged: hash tree"});
    QCOMPARE(messagesOf(verify(good.left(2))), QStringList{"the v4 signature is damaged: version"});
    QCOMPARE(messagesOf(verify(good.left(20))), QStringList{"the v4 signature is damaged: hashing info"});
}

void TestV4Verifier::refusesHostileSizes_data()
{
    QTest::addColumn<quint32>("size");
    for (const quint32 size : {0U, 0x7fffffffU, 0xffffffffU})
        QTest::addRow("%#x", size) << size;
}

void TestV4Verifier::refusesHostileSizes()
{
    QFETCH(quint32, size);
    fixture::IdSigBuilder builder(testPackage);
    builder.infos.append(infoOfV31());
    const QByteArray good = builder.build();
    // Any four bytes may be a size.
    for (int at = 4; at < good.size() - builder.tree.size(); ++at) {
        QByteArray other = good;
        fixture::poke32(other, at, size);
        if (other != good)
            QVERIFY2(!verify(other).isVerified(), qPrintable(QStringLiteral("offset %1").arg(at)));
    }
}

void TestV4Verifier::boundsItsInfos()
{
    fixture::IdSigBuilder builder(testPackage);
    QByteArray &additional = builder.infos.first().additionalData;
    builder.hasTree = false;
    additional.clear();
    constexpr int BeforeInfos = 4 + 4 + 4 + 1 + 4 + 4 + 32 + 4;
    const auto others = int(builder.build().size()) - BeforeInfos;
    additional = QByteArray(int(IdSigFile::MaxInfoBytes) - others, 'x');
    QVERIFY(verify(builder.build()).isVerified());
    additional += 'x';
    QCOMPARE(messagesOf(verify(builder.build())), QStringList{"the v4 signature is damaged: signing info"});
    additional.clear();
    builder.salt = QByteArray(int(IdSigFile::MaxInfoBytes), 'x');
    QCOMPARE(messagesOf(verify(builder.build())), QStringList{"the v4 signature is damaged: hashing info"});
}

void TestV4Verifier::staysInItsBudget()
{
    const QByteArray idsig = fixture::IdSigBuilder(testPackage).build();
    const qint64 tree = MerkleTree::treeSize(testPackage.size());
    const qint64 unlimited = std::numeric_limits<qint64>::max();
    QVERIFY(verify(idsig, usualCounterpart(), testPackage, unlimited, tree).isVerified());
    QCOMPARE(messagesOf(verify(idsig, usualCounterpart(), testPackage, unlimited, tree - 1)),
             QStringList{"verification takes too much"});
    QCOMPARE(messagesOf(verify(idsig, usualCounterpart(), testPackage, 0)),
             QStringList{"signer 1: verification takes too much"});
}

QTEST_GUILESS_MAIN(TestV4Verifier)
#include "tst_v4verifier.moc"
