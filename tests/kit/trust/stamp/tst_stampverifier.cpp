// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "OpenedBlock.h"
#include "RawZip.h"
#include "StampBuilder.h"

#include "archive/ZipArchive.h"
#include "trust/stamp/StampVerifier.h"

#include <QtTest>

#include <functional>
#include <limits>

using namespace SorrelKit;
using Kind = ContentDigest::Kind;
using Scheme = Signer::Scheme;

namespace {

const char *const memberName = "stamp-cert-sha256";
const QByteArray jarManifest = "Manifest-Version: 1.0\r\n\r\n";
const QByteArray chunked256(32, 'c');
const QByteArray chunked512(64, 'd');
const QByteArray verity(40, 'e');

QByteArray hashOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

SchemeResult resultOf(Scheme scheme, const QVector<QVector<ContentDigest>> &digestsOfSigners)
{
    SchemeResult result(scheme);
    result.isFound = true;
    for (const QVector<ContentDigest> &digests : digestsOfSigners) {
        VerifiedSigner signer;
        signer.digests = digests;
        result.signers.append(signer);
    }
    return result;
}

/// The schemes that a stamp of goodStamp() is for.
QVector<SchemeResult> allSchemes()
{
    return {resultOf(Scheme::V1, {{}}),
            resultOf(Scheme::V2, {{{Kind::ChunkedSha512, 0x0104, chunked512}},
                                  {{Kind::VeritySha256, 0x0421, verity}, {Kind::ChunkedSha256, 0x0103, chunked256}}}),
            resultOf(Scheme::V3, {{{Kind::ChunkedSha256, 0x0103, chunked256}}})};
}

fixture::StampBuilder goodStamp()
{
    fixture::StampBuilder stamp(fixture::TestKey::rsa());
    stamp.schemes = {
        {1, {{4, hashOf(jarManifest)}}}, {2, {{1, chunked256}, {2, chunked512}, {3, verity}}}, {3, {{1, chunked256}}}};
    return stamp;
}

fixture::StampBuilder timedStamp(const QByteArray &time)
{
    fixture::StampBuilder stamp = goodStamp();
    stamp.attributes = {{fixture::StampBuilder::TimeAttribute, time}};
    return stamp;
}

/// A package with @p value in its signing block.
QByteArray packageOf(const QByteArray &value, const QByteArray &hash, quint32 id = fixture::StampBuilder::Id)
{
    const QByteArray zip = fixture::rawZip({{memberName, hash}, {"META-INF/MANIFEST.MF", jarManifest}});
    return fixture::SigningBlockBuilder(zip).pair(id, value).build();
}

SchemeResult verifyPackage(const QByteArray &package, const QVector<SchemeResult> &schemes = allSchemes(),
                           qint64 work = std::numeric_limits<qint64>::max(),
                           qint64 bytes = std::numeric_limits<qint64>::max())
{
    ZipArchive archive(package);
    if (!archive.open())
        qFatal("no archive");
    const SigningBlock block(archive.source(), archive.directory());
    Budget budget(work, bytes);
    SchemeResult result = StampVerifier::verify(archive, block, schemes, &budget);
    if (budget.bytesLeft() != bytes)
        qFatal("bytes are still held");
    return result;
}

SchemeResult verify(const fixture::StampBuilder &stamp, const QVector<SchemeResult> &schemes = allSchemes())
{
    return verifyPackage(packageOf(stamp.build(), stamp.certificateHash()), schemes);
}

QStringList messagesOf(const SchemeResult &result)
{
    QStringList messages;
    for (const SignatureIssue &issue : result.issues.errors())
        messages.append(issue.message());
    return messages;
}

QByteArray lineageTo(const fixture::TestKey &key, const QByteArray &certificate)
{
    const fixture::TestKey first = fixture::TestKey::rsa(2);
    const auto level = [](const fixture::TestKey &owner, const QByteArray &der) {
        return fixture::LineageLevel{owner, der, 0x0103, 31, -1, nullptr, nullptr};
    };
    return fixture::lineage({level(first, first.certificate()), level(key, certificate)});
}

using Change = std::function<void(fixture::StampBuilder &)>;

} // namespace

Q_DECLARE_METATYPE(Change)

/// StampVerifier and StampBlock.
class TestStampVerifier : public QObject
{
    Q_OBJECT

private slots:
    void verifies();
    void verifiesWithRealSignatures();
    void verifiesTheSchemesThatCount();
    void verifiesAttributes();
    void hasEveryError_data();
    void hasEveryError();
    void findsNoStamp();
    void needsTheMember();
    void refusesEveryOtherByte();
    void refusesEveryPrefix();
    void refusesHostileSizes_data();
    void refusesHostileSizes();
    void boundsItsLists();
    void staysInItsBudget();
};

void TestStampVerifier::verifies()
{
    const fixture::StampBuilder stamp = goodStamp();
    const SchemeResult result = verify(stamp);
    QCOMPARE(messagesOf(result), QStringList());
    QVERIFY(result.isVerified());
    QCOMPARE(result.scheme, Scheme::Stamp);
    QCOMPARE(result.signers.size(), 1);
    QCOMPARE(result.signers.first().signer.certificate.der(), stamp.certificate);
    QCOMPARE(result.signers.first().signer.scheme, Scheme::Stamp);
    QVERIFY(result.signers.first().signer.lineage.isEmpty());
}

void TestStampVerifier::verifiesWithRealSignatures()
{
    fixture::StampBuilder stamp(fixture::TestKey::rsa());
    const QByteArray zip = fixture::rawZip({{memberName, stamp.certificateHash()}, {"classes.dex", "code"}});
    fixture::SigningBlockBuilder builder(zip);
    const fixture::BlockSigner signer(fixture::TestKey::rsa(2), {0x0103, 0x0104});
    const QVector<fixture::NumberedBytes> digests{{1, builder.contentDigest(0x0103)},
                                                  {2, builder.contentDigest(0x0104)}};
    stamp.schemes = {{2, digests}, {3, digests}};
    const QByteArray package = builder.v2({signer}).v3({signer}).pair(fixture::StampBuilder::Id, stamp.build()).build();
    fixture::OpenedBlock opened(package);
    const SchemeResult v2 = opened.verify(Scheme::V2);
    const SchemeResult v3 = opened.verify(Scheme::V3);
    QVERIFY(v2.isVerified() && v3.isVerified());
    QCOMPARE(messagesOf(verifyPackage(package, {v2, v3})), QStringList());
}

void TestStampVerifier::verifiesTheSchemesThatCount()
{
    const QVector<SchemeResult> all = allSchemes();
    fixture::StampBuilder stamp = goodStamp();
    for (const SchemeResult &each : all)
        QVERIFY(verify(stamp, {each}).isVerified());

    // A signature for another scheme does not count.
    stamp.schemes[1].digests.first().bytes = QByteArray(32, 'x');
    QVERIFY(verify(stamp, {all.at(0), all.at(2)}).isVerified());
    QVERIFY(!verify(stamp, all).isVerified());
    stamp = goodStamp();
    stamp.schemes.append({9, {{1, chunked256}}});
    QVERIFY(verify(stamp).isVerified());

    // A scheme that did not verify does not count.
    SchemeResult failed = all.at(1);
    failed.issues.addError(SignatureIssue::Code::ContentChanged);
    QCOMPARE(messagesOf(verify(stamp, {failed})),
             QStringList{"the source stamp is for another package: no v1, v2 or v3"});
    QCOMPARE(messagesOf(verify(stamp, {resultOf(Scheme::V4, {{{Kind::ChunkedSha256, 0, chunked256}}})})),
             QStringList{"the source stamp is for another package: no v1, v2 or v3"});

    // v3.1 has the digests of v3.
    const SchemeResult newer = resultOf(Scheme::V31, {{{Kind::ChunkedSha256, 0x0103, chunked256}}});
    const SchemeResult other = resultOf(Scheme::V31, {{{Kind::ChunkedSha512, 0x0104, chunked512}}});
    QVERIFY(verify(stamp, {newer}).isVerified());
    QVERIFY(!verify(stamp, {other}).isVerified());
    QVERIFY(verify(stamp, {all.at(2), other}).isVerified());
    QVERIFY(verify(stamp, {other, all.at(2)}).isVerified());
}

void TestStampVerifier::verifiesAttributes()
{
    QVERIFY(verify(timedStamp(QByteArray::fromHex("0100000000000000"))).isVerified());
    QVERIFY(verify(timedStamp(QByteArray::fromHex("ffffffffffffff7f"))).isVerified());

    fixture::StampBuilder stamp = goodStamp();
    stamp.attributes = {{fixture::StampBuilder::LineageAttribute, lineageTo(stamp.key, stamp.certificate)}};
    const SchemeResult result = verify(stamp);
    QCOMPARE(messagesOf(result), QStringList());
    QCOMPARE(result.signers.first().signer.lineage.size(), 2);
    QCOMPARE(result.signers.first().signer.lineage.last().certificate().der(), stamp.certificate);

    stamp.hasAttributes = false;
    QVERIFY(verify(stamp).isVerified());
    QVERIFY(verify(stamp).signers.first().signer.lineage.isEmpty());
}

void TestStampVerifier::hasEveryError_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("message");
    using Builder = fixture::StampBuilder;
    const auto add = [](const char *name, const char *message, const Change &change) {
        QTest::addRow("%s", name) << change << QString::fromLatin1(message);
    };
    const char *const damaged = "the source stamp is damaged";
    const char *const badTime = "an attribute is damaged: time";
    add("behind the fields", damaged, [](Builder &b) { b.afterFields = "more"; });
    add("behind the stamp", damaged, [](Builder &b) { b.afterStamp = "more"; });
    add("certificate", "a certificate is damaged", [](Builder &b) { b.certificate.chop(1); });
    add("key", "a public key is damaged", [](Builder &b) {
        const QByteArray number = QByteArray::fromHex("06092a864886f70d010101");
        b.certificate.replace(number, QByteArray::fromHex("06092a864886f70d01017f"));
    });
    add("scheme", "the source stamp is for another package: no signature for v2",
        [](Builder &b) { b.schemes[1].id = 4; });
    add("no schemes", "the source stamp is for another package: no signature for v1",
        [](Builder &b) { b.schemes.clear(); });
    add("no signature", "no signature has a known algorithm: v3", [](Builder &b) { b.schemes[2].algorithms.clear(); });
    add("unknown algorithm", "an algorithm is unknown: 0x0105", [](Builder &b) {
        b.schemes[2].algorithms = {0x0103, 0x0105};
    });
    add("algorithm of another key", "a signature is wrong: v1", [](Builder &b) { b.schemes[0].algorithms = {0x0201}; });
    add("manifest", "a signature is wrong: v1", [](Builder &b) { b.schemes[0].digests[0].bytes = hashOf("other"); });
    add("digest", "a signature is wrong: v2", [](Builder &b) { b.schemes[1].digests[2].bytes[0] = 'x'; });
    add("missing digest", "a signature is wrong: v2", [](Builder &b) { b.schemes[1].digests.removeLast(); });
    add("number of a digest", "a signature is wrong: v3", [](Builder &b) { b.schemes[2].digests[0].id = 2; });
    add("second signature of a scheme", "a signature is wrong: v3", [](Builder &b) {
        b.schemes.append({3, {{1, chunked512}}});
    });
    add("no signature of attributes", "no signature has a known algorithm: attributes",
        [](Builder &b) { b.attributeAlgorithms.clear(); });
    add("algorithm of attributes", "a signature is wrong: attributes", [](Builder &b) {
        b.attributeAlgorithms = {0x0103, 0x0101};
    });
    add("unknown attribute", "an attribute is unknown: 0x12345678", [](Builder &b) {
        b.attributes = {{0x12345678, "value"}};
    });
    add("no time", badTime, [](Builder &b) { b = timedStamp(QByteArray(8, '\0')); });
    add("negative time", badTime, [](Builder &b) { b = timedStamp(QByteArray(8, '\xff')); });
    add("short time", badTime, [](Builder &b) { b = timedStamp(QByteArray(7, '\1')); });
    add("long time", badTime, [](Builder &b) { b = timedStamp(QByteArray(9, '\1')); });
    add("lineage", "the lineage of keys is damaged: its version", [](Builder &b) {
        b.attributes = {{Builder::LineageAttribute, "bad"}};
    });
    add("another lineage", "the lineage of keys does not lead to the signer", [](Builder &b) {
        b.attributes = {{Builder::LineageAttribute, lineageTo(b.key, b.key.certificate({"Another"}))}};
    });
}

void TestStampVerifier::hasEveryError()
{
    QFETCH(Change, change);
    QFETCH(QString, message);
    fixture::StampBuilder stamp = goodStamp();
    change(stamp);
    const SchemeResult result = verify(stamp);
    QCOMPARE(messagesOf(result), QStringList{message});
    QVERIFY(result.isFound);
    QVERIFY(!result.isVerified());
}

void TestStampVerifier::findsNoStamp()
{
    const fixture::StampBuilder stamp = goodStamp();
    const SchemeResult none = verifyPackage(fixture::rawZip({{"classes.dex", "code"}}));
    QVERIFY(!none.isFound);
    QCOMPARE(messagesOf(none), QStringList());

    const SchemeResult stripped = verifyPackage(fixture::rawZip({{memberName, stamp.certificateHash()}}));
    QVERIFY(stripped.isFound);
    QCOMPARE(messagesOf(stripped), QStringList{"there is no source stamp"});
    const QByteArray old = packageOf(stamp.build(), stamp.certificateHash(), fixture::StampBuilder::OldId);
    QCOMPARE(messagesOf(verifyPackage(old)), QStringList{"there is no source stamp: version 1"});
}

void TestStampVerifier::needsTheMember()
{
    const fixture::StampBuilder stamp = goodStamp();
    const QByteArray zip = fixture::rawZip({{"META-INF/MANIFEST.MF", jarManifest}});
    const QByteArray without = fixture::SigningBlockBuilder(zip).pair(fixture::StampBuilder::Id, stamp.build()).build();
    const SchemeResult result = verifyPackage(without);
    QVERIFY(result.isFound);
    QCOMPARE(messagesOf(result), QStringList{"the source stamp is damaged: no stamp-cert-sha256"});

    const QByteArray hash = stamp.certificateHash();
    for (const QByteArray &bad : {QByteArray(), hash.left(31), hash + 'x'})
        QCOMPARE(messagesOf(verifyPackage(packageOf(stamp.build(), bad))),
                 QStringList{"the source stamp is damaged: stamp-cert-sha256"});
    QCOMPARE(messagesOf(verifyPackage(packageOf(stamp.build(), QByteArray(32, 'x')))),
             QStringList{"the source stamp is for another package: certificate"});
}

void TestStampVerifier::refusesEveryOtherByte()
{
    fixture::StampBuilder stamp = timedStamp(QByteArray(8, '\1'));
    stamp.attributes.append({fixture::StampBuilder::LineageAttribute, lineageTo(stamp.key, stamp.certificate)});
    const QByteArray good = stamp.build();
    const QByteArray hash = stamp.certificateHash();
    QVERIFY(verifyPackage(packageOf(good, hash)).isVerified());
    for (int at = 0; at < good.size(); ++at) {
        QByteArray other = good;
        other[at] = char(other.at(at) ^ (at % 2 == 0 ? 0x01 : 0x80));
        QVERIFY2(!verifyPackage(packageOf(other, hash)).isVerified(), qPrintable(QStringLiteral("offset %1").arg(at)));
    }
    for (int at = 0; at < hash.size() * 8; ++at) {
        QByteArray other = hash;
        other[at / 8] = char(other.at(at / 8) ^ 1 << at % 8);
        QVERIFY(!verifyPackage(packageOf(good, other)).isVerified());
    }
}

void TestStampVerifier::refusesEveryPrefix()
{
    const fixture::StampBuilder stamp = timedStamp(QByteArray(8, '\1'));
    const QByteArray good = stamp.build();
    for (int size = 0; size < good.size(); ++size) {
        QVERIFY(!verifyPackage(packageOf(good.left(size), stamp.certificateHash())).isVerified());
        if (size < 4)
            continue;
        QByteArray whole = good.left(size);
        fixture::poke32(whole, 0, size - 4);
        fixture::StampBuilder shorter = stamp;
        shorter.hasAttributes = false;
        QCOMPARE(verifyPackage(packageOf(whole, stamp.certificateHash())).isVerified(), whole == shorter.build());
    }
}

void TestStampVerifier::refusesHostileSizes_data()
{
    QTest::addColumn<quint32>("size");
    for (const quint32 size : {0U, 0x7fffffffU, 0xffffffffU})
        QTest::addRow("%#x", size) << size;
}

void TestStampVerifier::refusesHostileSizes()
{
    QFETCH(quint32, size);
    const fixture::StampBuilder stamp = timedStamp(QByteArray(8, '\1'));
    const QByteArray good = stamp.build();
    // Any four bytes may be a size.
    for (int at = 0; at <= good.size() - 4; ++at) {
        QByteArray other = good;
        fixture::poke32(other, at, size);
        if (other != good)
            QVERIFY2(!verifyPackage(packageOf(other, stamp.certificateHash())).isVerified(),
                     qPrintable(QStringLiteral("offset %1").arg(at)));
    }
}

void TestStampVerifier::boundsItsLists()
{
    constexpr int Most = StampBlock::MaxElements;
    const QStringList damaged{"the source stamp is damaged"};
    fixture::StampBuilder stamp = goodStamp();
    while (stamp.schemes.size() < Most)
        stamp.schemes.append(fixture::StampedScheme{9, {}});
    QVERIFY(verify(stamp).isVerified());
    stamp.schemes.append(fixture::StampedScheme{9, {}});
    QCOMPARE(messagesOf(verify(stamp)), damaged);

    stamp = goodStamp();
    stamp.schemes[0].algorithms.fill(0x0103, Most);
    QVERIFY(verify(stamp).isVerified());
    stamp.schemes[0].algorithms.append(0x0103);
    QCOMPARE(messagesOf(verify(stamp)), damaged);

    stamp = timedStamp(QByteArray(8, '\1'));
    stamp.attributes.fill(stamp.attributes.first(), Most);
    QVERIFY(verify(stamp).isVerified());
    stamp.attributes.append(stamp.attributes.first());
    QCOMPARE(messagesOf(verify(stamp)), damaged);
}

void TestStampVerifier::staysInItsBudget()
{
    const fixture::StampBuilder stamp = goodStamp();
    const QByteArray value = stamp.build();
    const QByteArray package = packageOf(value, stamp.certificateHash());
    const QVector<SchemeResult> schemes{allSchemes().last()};
    const qint64 unlimited = std::numeric_limits<qint64>::max();
    const QStringList tooCostly{"verification takes too much"};
    QVERIFY(verifyPackage(package, schemes, unlimited, value.size()).isVerified());
    QCOMPARE(messagesOf(verifyPackage(package, schemes, unlimited, value.size() - 1)), tooCostly);

    // However much work is left, it is verified or refused, and the first enough is enough for all more.
    qint64 enough = 0;
    while (!verifyPackage(package, schemes, enough).isVerified()) {
        QVERIFY(!verifyPackage(package, schemes, enough).issues.errors().isEmpty());
        enough += 500;
        QVERIFY(enough < 10000000);
    }
    QVERIFY(enough > value.size());
    QCOMPARE(messagesOf(verifyPackage(package, schemes, value.size() - 1)), tooCostly);
}

QTEST_GUILESS_MAIN(TestStampVerifier)
#include "tst_stampverifier.moc"
