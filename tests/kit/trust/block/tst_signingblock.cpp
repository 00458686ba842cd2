// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "OpenedBlock.h"
#include "RawZip.h"
#include "SigningBlockBuilder.h"

#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

using Code = SignatureIssue::Code;

namespace {

constexpr quint32 FirstId = 0x11111111;
constexpr quint32 SecondId = 0x22222222;
constexpr int MagicSize = 16;
constexpr int SizeSize = 8;

QByteArray someZip()
{
    return rawZip({{"a", "text"}});
}

SigningBlockBuilder someBlock()
{
    return SigningBlockBuilder(someZip()).pair(FirstId, "first").pair(SecondId, "second");
}

QString faultOf(const QByteArray &package)
{
    const OpenedBlock opened(package);
    const SigningBlock &block = opened.verifier->block();
    if (block.isGood())
        return QStringLiteral("good");
    if (block.fault() == Code::None)
        return QStringLiteral("missing");
    return SignatureIssue(block.fault(), Signer::Scheme::None, QString(), block.faultDetail()).message();
}

} // namespace

/// SigningBlock.
class TestSigningBlock : public QObject
{
    Q_OBJECT

private slots:
    void findsValues();
    void readsTheFirstOfTwoValues();
    void skipsUnknownValuesAndPadding();
    void readsAnEmptyBlock();
    void findsTheBlockBeforeAComment();
    void isMissingWithoutItsMagic();
    void refusesDamagedBlocks_data();
    void refusesDamagedBlocks();
    void refusesZip64();
    void refusesALocatorOfZip64();
    void countsPairs();
    void readsValuesUpToTheLimit();
    void refusesEveryCutBlock();
};

void TestSigningBlock::findsValues()
{
    const SigningBlockBuilder builder = someBlock();
    const QByteArray package = builder.build();
    const OpenedBlock opened(package);
    QVERIFY(opened.verifier->hasBlock());
    const SigningBlock &block = opened.verifier->block();
    QCOMPARE(block.ids(), (QVector<quint32>{FirstId, SecondId}));
    QCOMPARE(block.value(FirstId), QByteArray("first"));
    QCOMPARE(block.value(SecondId), QByteArray("second"));
    QCOMPARE(block.valueSize(SecondId), 6);
    QVERIFY(block.contains(SecondId));
    QVERIFY(!block.contains(SigningBlock::SchemeV2));
    QCOMPARE(block.value(SigningBlock::SchemeV2), QByteArray());
    QCOMPARE(block.valueSize(SigningBlock::SchemeV2), 0);
    QCOMPARE(block.blockAt(), builder.blockAt());
    QCOMPARE(block.directoryAt(), builder.blockAt() + builder.block().size());
    QCOMPARE(block.endAt(), package.size() - ZipEndSize);
}

void TestSigningBlock::readsTheFirstOfTwoValues()
{
    const OpenedBlock opened(someBlock().pair(FirstId, "other").build());
    QCOMPARE(opened.verifier->block().value(FirstId), QByteArray("first"));
    QCOMPARE(opened.verifier->block().ids().size(), 3);
}

void TestSigningBlock::skipsUnknownValuesAndPadding()
{
    const BlockSigner signer(TestKey::ec(), {0x0201});
    OpenedBlock opened(
        SigningBlockBuilder(someZip(), true).pair(FirstId, "any").v2({signer}).pair(SecondId, QByteArray()).build());
    QVERIFY(opened.verifier->block().contains(SigningBlock::Padding));
    const SchemeResult result = opened.verifier->verifyV2({});
    QVERIFY2(result.isVerified(), qPrintable(messageOf(result)));
}

void TestSigningBlock::readsAnEmptyBlock()
{
    OpenedBlock opened(SigningBlockBuilder(someZip()).build());
    QVERIFY(opened.verifier->hasBlock());
    QVERIFY(opened.verifier->block().ids().isEmpty());
    QVERIFY(!opened.verifier->verifyV2({}).isFound);
    QVERIFY(!opened.verifier->verifyV3({}).isFound);
    QVERIFY(!opened.verifier->verifyV31({}).isFound);
}

void TestSigningBlock::findsTheBlockBeforeAComment()
{
    QByteArray zip = someZip();
    poke16(zip, int(zip.size()) - 2, 7);
    const OpenedBlock opened(SigningBlockBuilder(zip + "comment").pair(FirstId, "first").build());
    QCOMPARE(opened.verifier->block().value(FirstId), QByteArray("first"));
}

void TestSigningBlock::isMissingWithoutItsMagic()
{
    QCOMPARE(faultOf(someZip()), QStringLiteral("missing"));
    QCOMPARE(faultOf("no archive"), QStringLiteral("missing"));
    const SigningBlockBuilder builder = someBlock();
    for (int i = 1; i <= MagicSize; ++i) {
        QByteArray block = builder.block();
        poke8(block, int(block.size()) - i, 0);
        OpenedBlock opened(builder.buildWith(block));
        QVERIFY(!opened.verifier->hasBlock());
        QVERIFY(!opened.verifier->verifyV2({}).isFound);
        QCOMPARE(opened.verifier->contentDigest(ContentDigest::Kind::ChunkedSha256), QByteArray());
    }
}

void TestSigningBlock::refusesDamagedBlocks_data()
{
    QTest::addColumn<QByteArray>("package");
    QTest::addColumn<QString>("fault");
    const SigningBlockBuilder builder = someBlock();
    const auto row = [&builder](const char *name, const char *fault, const std::function<void(QByteArray &)> &damage) {
        QByteArray block = builder.block();
        damage(block);
        QTest::newRow(name) << builder.buildWith(block)
                            << QStringLiteral("the signing block is damaged: ") + QLatin1String(fault);
    };
    const int footerAt = int(builder.block().size()) - MagicSize - SizeSize;
    const auto pokeBoth = [footerAt](QByteArray &block, int at, qint64 value) {
        poke32(block, at, value);
        poke32(block, footerAt + at, value);
    };
    row("first size", "its sizes differ", [](QByteArray &block) { poke8(block, 0, peek16(block, 0) + 1); });
    row("first size, high", "its sizes differ", [](QByteArray &block) { poke8(block, 7, 1); });
    row("last size", "its sizes differ",
        [footerAt](QByteArray &block) { poke8(block, footerAt, peek16(block, footerAt) - 1); });
    row("magic alone", "its size is wrong", [](QByteArray &block) { block = block.right(MagicSize); });
    row("too small", "its size is wrong", [&](QByteArray &block) { pokeBoth(block, 0, 23); });
    row("beyond the file", "its size is wrong", [&](QByteArray &block) { pokeBoth(block, 0, 0x7fffffff); });
    row("beyond any file", "its size is wrong", [&](QByteArray &block) { pokeBoth(block, 4, 0x7fffffff); });
    row("negative", "its size is wrong", [&](QByteArray &block) { pokeBoth(block, 4, 0xffffffff); });
    const char *const pairFault = "the size of a value is wrong";
    row("value too small", pairFault, [](QByteArray &block) { poke8(block, SizeSize, 3); });
    row("value too large", pairFault, [](QByteArray &block) { poke8(block, SizeSize, 200); });
    row("value far too large", pairFault, [](QByteArray &block) { poke32(block, SizeSize + 4, 0x7fffffff); });
    row("value negative", pairFault, [](QByteArray &block) { poke32(block, SizeSize + 4, 0xffffffff); });
    row("bytes behind values", pairFault, [](QByteArray &block) { poke8(block, SizeSize, 4); });

    QByteArray package = builder.build();
    QTest::newRow("bytes behind the archive") << QByteArray(package + 'x')
                                              << QStringLiteral("the signing block is damaged: "
                                                                "the comment does not end with the file");
    poke16(package, int(package.size()) - 2, 1);
    QTest::newRow("comment beyond the file") << package
                                             << QStringLiteral("the signing block is damaged: "
                                                               "the comment does not end with the file");
    package = builder.build();
    QByteArray gap = package;
    gap.insert(package.size() - ZipEndSize, 'x');
    QTest::newRow("bytes behind the directory") << gap
                                                << QStringLiteral("the signing block is damaged: "
                                                                  "the directory does not end at the end record");
    poke32(package, int(package.size()) - ZipEndSize + 12, 0xfffffff0);
    QTest::newRow("size of the directory") << package
                                           << QStringLiteral("the signing block is damaged: "
                                                             "the directory does not end at the end record");
}

void TestSigningBlock::refusesDamagedBlocks()
{
    QFETCH(QByteArray, package);
    QTEST(faultOf(package), "fault");
    QFETCH(QString, fault);
    OpenedBlock opened(package);
    const SdkRange sdk;
    for (const SchemeResult &result :
         {opened.verifier->verifyV2(sdk), opened.verifier->verifyV3(sdk), opened.verifier->verifyV31(sdk)}) {
        QVERIFY(result.isFound);
        QVERIFY(!result.isVerified());
        QCOMPARE(messageOf(result), fault);
    }
    QVERIFY(opened.verifier->block().ids().isEmpty());
    QCOMPARE(opened.verifier->contentDigest(ContentDigest::Kind::ChunkedSha256), QByteArray());
}

void TestSigningBlock::refusesZip64()
{
    // The record of ZIP64 is where the number of members refers to it, and the offset of the directory is true.
    QByteArray zip = rawZip64({{"a", "text"}});
    const int endAt = int(zip.size()) - ZipEndSize;
    const int directoryAt = int(zip.indexOf("PK\1\2"));
    const QByteArray block = someBlock().block();
    poke16(zip, endAt + 8, 0xffff);
    poke16(zip, endAt + 10, 0xffff);
    poke32(zip, endAt + 12, endAt - directoryAt);
    poke32(zip, endAt + 16, directoryAt + block.size());
    zip.insert(directoryAt, block);
    const int recordAt = int(zip.indexOf("PK\6\6"));
    poke32(zip, recordAt + 48, directoryAt + block.size());
    poke32(zip, int(zip.indexOf("PK\6\7")) + 8, recordAt);
    OpenedBlock opened(zip);
    QVERIFY(opened.directory.isZip64());
    QCOMPARE(faultOf(zip), QStringLiteral("the signing block is damaged: the archive is in the form of ZIP64"));
}

void TestSigningBlock::refusesALocatorOfZip64()
{
    // No version of Android looks whether the end record refers to the locator.
    QByteArray zip = someZip();
    zip.insert(zip.size() - ZipEndSize, QByteArray("PK\6\7") + QByteArray(16, '\0'));
    const int endAt = int(zip.size()) - ZipEndSize;
    poke32(zip, endAt + 12, peek32(zip, endAt + 12) + 20);
    const QByteArray package = SigningBlockBuilder(zip).pair(FirstId, "first").build();
    QVERIFY(!OpenedBlock(package).directory.isZip64());
    QCOMPARE(faultOf(package), QStringLiteral("the signing block is damaged: the archive is in the form of ZIP64"));
}

void TestSigningBlock::countsPairs()
{
    SigningBlockBuilder builder(someZip());
    for (int i = 0; i < SigningBlock::MaxPairs; ++i)
        builder.pair(quint32(i), QByteArray());
    QCOMPARE(faultOf(builder.build()), QStringLiteral("good"));
    builder.pair(0, QByteArray());
    QCOMPARE(faultOf(builder.build()), QStringLiteral("verification takes too much: the block has too many values"));
}

void TestSigningBlock::readsValuesUpToTheLimit()
{
    const auto package = [](qint64 size) {
        return SigningBlockBuilder(someZip()).pair(SigningBlock::SchemeV2, QByteArray(int(size), '\0')).build();
    };
    const OpenedBlock longest(package(SigningBlock::MaxValueBytes));
    QCOMPARE(longest.verifier->block().value(SigningBlock::SchemeV2).size(), SigningBlock::MaxValueBytes);
    OpenedBlock longer(package(SigningBlock::MaxValueBytes + 1));
    QCOMPARE(longer.verifier->block().value(SigningBlock::SchemeV2), QByteArray());
    QCOMPARE(messageOf(longer.verifier->verifyV2({})),
             QStringLiteral("verification takes too much: the signing block"));
}

void TestSigningBlock::refusesEveryCutBlock()
{
    const SigningBlockBuilder builder = someBlock();
    const QByteArray block = builder.block();
    for (int size = 1; size < block.size(); ++size) {
        QVERIFY(faultOf(builder.buildWith(block.left(size))) != QLatin1String("good"));
        QVERIFY(faultOf(builder.buildWith(block.mid(size))) != QLatin1String("good"));
    }
}

QTEST_GUILESS_MAIN(TestSigningBlock)
#include "tst_signingblock.moc"
