// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "OpenedBlock.h"
#include "RawZip.h"
#include "SigningBlockBuilder.h"
#include "trust/block/Lineage.h"
#include "trust/block/SchemeV3.h"

#include <QtTest>

#include <utility>

using namespace SorrelKit;
using namespace fixture;

using Scheme = Signer::Scheme;

namespace {

constexpr int Newest = std::numeric_limits<int>::max();
constexpr quint32 RotationSdk = SigningBlockBuilder::RotationSdkAttribute;

QByteArray someZip()
{
    return rawZip({{"AndroidManifest.xml", "manifest"}, {"classes.dex", "code"}});
}

/// The key and certificate of a level, which are the same in a whole test.
LineageLevel level(int number)
{
    static QMap<int, QByteArray> certificates;
    const TestKey key = TestKey::rsa(number);
    if (!certificates.contains(number))
        certificates.insert(number, key.certificate());
    return {key, certificates.value(number)};
}

BlockSigner signer(int number, int min, int max)
{
    BlockSigner result(TestKey::rsa(number));
    result.certificates = {level(number).certificate};
    return result.sdk(min, max);
}

/// A signer by the last of these levels.
BlockSigner rotated(const QVector<LineageLevel> &levels, int min = 28, int max = Newest)
{
    BlockSigner result(levels.last().key);
    result.certificates = {levels.last().certificate};
    return result.sdk(min, max).attribute(SigningBlockBuilder::LineageAttribute, lineage(levels));
}

BlockSigner rotated(const QVector<int> &numbers, int min = 28, int max = Newest)
{
    QVector<LineageLevel> levels;
    for (const int number : numbers)
        levels.append(level(number));
    return rotated(levels, min, max);
}

QByteArray signedBy(const QVector<BlockSigner> &signers)
{
    return SigningBlockBuilder(someZip()).v3(signers).build();
}

SchemeResult verify(const QByteArray &package, SdkRange sdk = {}, Scheme scheme = Scheme::V3)
{
    OpenedBlock opened(package);
    return opened.verify(scheme, sdk);
}

} // namespace

/// SchemeV3 and Lineage.
class TestSchemeV3 : public QObject
{
    Q_OBJECT

private slots:
    void hasEveryErrorText_data();
    void hasEveryErrorText();
    void coversTheVersionsThatAreAskedFor_data();
    void coversTheVersionsThatAreAskedFor();
    void ordersSignersByVersion();
    void limitsSigners();
    void hasTheLineage();
    void givesTheLastLevelAllCapabilities();
    void verifiesEveryKindOfKeyInALineage();
    void limitsLevels();
    void verifiesRotationInV31();
    void leavesNewVersionsToV31();
    void needsV31ThatV3Names();
    void comparesTheFirstVersionOfV31();
    void doesNotTrustV31ThatIsWrong();
    void needsV3BesideV31();
    void beginsV31AtItsFirstSigner();
    void allowsAVersionInDevelopment();
    void warnsOfUnknownAttributes();
    void findsNothingBeforePie();
};

void TestSchemeV3::hasEveryErrorText_data()
{
    QTest::addColumn<QByteArray>("package");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *name, const char *error, const QVector<BlockSigner> &signers) {
        QTest::newRow(name) << signedBy(signers) << QString::fromLatin1(error);
    };
    const auto changed = [](BlockSigner each, const std::function<void(BlockSigner &)> &change) {
        change(each);
        return each;
    };
    row("no signer", "there is no signer", {});
    row("first version, again", "signer 1: API levels of a signer differ",
        {changed(signer(1, 28, Newest), [](BlockSigner &each) { each.outerMinSdk = 27; })});
    row("last version, again", "signer 1: API levels of a signer differ",
        {changed(signer(1, 28, Newest), [](BlockSigner &each) { each.outerMaxSdk = 99; })});
    row("versions in the wrong order", "signer 1: a signer is damaged: its API levels", {signer(1, 29, 28)});
    row("negative version", "signer 1: a signer is damaged: its API levels",
        {changed(signer(1, 28, Newest), [](BlockSigner &each) { each.maxSdk = 0xffffffff; })});
    row("signed negative version", "signer 1: a signer is damaged: its API levels",
        {changed(signer(1, 28, Newest), [](BlockSigner &each) {
            each.maxSdk = 0xffffffff;
            each.outerMaxSdk = Newest;
        })});
    row("versions overlap", "signer 2: several signers are for the same API levels: 30 to 2147483647",
        {signer(1, 28, 30), signer(2, 30, Newest)});
    row("same versions", "signer 2: several signers are for the same API levels: 28 to 2147483647",
        {signer(1, 28, Newest), signer(2, 28, Newest)});
    row("version between two signers", "no signer is for some API levels: 30 to 30",
        {signer(1, 28, 29), signer(2, 31, Newest)});
    row("versions before the first", "no signer is for some API levels: 28 to 2147483647", {signer(1, 29, Newest)});
    row("versions behind the last", "no signer is for some API levels: 28 to 2147483647", {signer(1, 28, 32)});
    row("wrong signature", "signer 1: a signature is wrong: 0x0103",
        {changed(signer(1, 28, Newest), [](BlockSigner &each) {
            each.onSignatures = [](QVector<NumberedBytes> &list) { list[0].bytes[0] = char(list[0].bytes[0] ^ 1); };
        })});
    row("changed content", "signer 1: the content was changed: SHA-256",
        {changed(signer(1, 28, Newest), [](BlockSigner &each) {
            each.onDigests = [](QVector<NumberedBytes> &list) { list[0].bytes[0] = char(list[0].bytes[0] ^ 1); };
        })});
    row("v3.1 removed", "signer 1: a signature was removed: v3.1", {signer(1, 28, Newest).attribute(RotationSdk, 33U)});
    row("short rotation", "signer 1: an attribute is damaged: 0x559f8b02",
        {signer(1, 28, Newest).attribute(RotationSdk, "abc")});

    const auto withLineage = [](const QByteArray &bytes, int number = 2) {
        return signer(number, 28, Newest).attribute(SigningBlockBuilder::LineageAttribute, bytes);
    };
    row("no version", "signer 1: the lineage of keys is damaged: its version", {withLineage("abc")});
    row("version", "signer 1: the lineage of keys is damaged: its version",
        {withLineage(lineage({level(1), level(2)}, 2))});
    row("no levels", "signer 1: the lineage of keys is damaged: its levels", {withLineage(lineage({}))});
    row("bytes behind the levels", "signer 1: the lineage of keys is damaged: its levels",
        {withLineage(lineage({level(1), level(2)}) + "abc")});
    row("size of a level", "signer 1: the lineage of keys is damaged: its levels",
        {withLineage(lineage({level(1), level(2)}).chopped(1))});
    const auto damaged = [&withLineage](const std::function<void(LineageLevel &)> &first,
                                        const std::function<void(LineageLevel &)> &second) {
        QVector<LineageLevel> levels{level(1), level(2)};
        first(levels[0]);
        second(levels[1]);
        return withLineage(lineage(levels));
    };
    const auto untouched = [](LineageLevel &) {};
    const auto clearLevel = [](LineageLevel &each) { each.onLevel = [](QByteArray &bytes) { bytes.clear(); }; };
    const auto cutLevel = [](LineageLevel &each) { each.onLevel = [](QByteArray &bytes) { bytes.chop(1); }; };
    row("empty level", "signer 1: the lineage of keys is damaged: level 1", {damaged(clearLevel, untouched)});
    row("cut level", "signer 1: the lineage of keys is damaged: level 2", {damaged(untouched, cutLevel)});
    row("certificate without algorithm", "signer 1: the lineage of keys is damaged: level 2",
        {damaged(untouched, [](LineageLevel &each) { each.onSignedData = [](QByteArray &data) { data.chop(1); }; })});
    row("signed algorithm", "signer 1: the lineage of keys is damaged: level 2, algorithms differ",
        {damaged(untouched, [](LineageLevel &each) { each.signedAlgorithm = 0x0104; })});
    row("unknown algorithm", "signer 1: the lineage of keys is damaged: level 2, 0x0999",
        {damaged([](LineageLevel &each) { each.algorithm = 0x0999; }, untouched)});
    row("algorithm of another key", "signer 1: the lineage of keys is damaged: level 2, 0x0201",
        {damaged(
            [](LineageLevel &each) {
                each.onLevel = [](QByteArray &bytes) { poke32(bytes, 4 + int(peek32(bytes, 0)) + 4, 0x0201); };
            },
            [](LineageLevel &each) { each.signedAlgorithm = 0x0201; })});
    row("signature", "signer 1: the lineage of keys is damaged: level 2, 0x0103",
        {damaged(untouched, [](LineageLevel &each) {
            each.onLevel = [](QByteArray &bytes) { poke8(bytes, int(bytes.size()) - 1, bytes.back() ^ 1); };
        })});
    row("signature of another key", "signer 1: the lineage of keys is damaged: level 2, 0x0103",
        {damaged([](LineageLevel &each) { each.key = TestKey::rsa(3); }, untouched)});
    row("certificate of a level", "signer 1: a certificate is damaged: level 1",
        {damaged([](LineageLevel &each) { each.certificate.chop(1); }, untouched)});
    row("certificate twice", "signer 1: the lineage of keys is damaged: level 3, a certificate occurs twice",
        {withLineage(lineage({level(1), level(2), level(1), level(2)}))});
    row("another signer", "signer 1: the lineage of keys does not lead to the signer",
        {withLineage(lineage({level(1), level(2)}), 3)});
    row("a past signer", "signer 1: the lineage of keys does not lead to the signer",
        {withLineage(lineage({level(1), level(2)}), 1)});
    row("two lineages", "signer 1: an attribute is damaged: 0x3ba06f8c",
        {rotated({1, 2}).attribute(SigningBlockBuilder::LineageAttribute, lineage({level(1), level(2)}))});
    row("shorter lineage later", "signer 2: the lineage of keys does not lead to the signer",
        {rotated({1, 2, 3}, 28, 30), rotated({1, 2}, 31)});
    row("another lineage later", "signer 2: the lineage of keys does not lead to the signer",
        {rotated({1, 2}, 28, 30), rotated({3, 2}, 31)});
}

void TestSchemeV3::hasEveryErrorText()
{
    QFETCH(QByteArray, package);
    const SchemeResult result = verify(package);
    QVERIFY(result.isFound);
    QVERIFY(!result.isVerified());
    QVERIFY(result.signers.isEmpty());
    QTEST(messageOf(result), "error");
}

void TestSchemeV3::coversTheVersionsThatAreAskedFor_data()
{
    QTest::addColumn<int>("min");
    QTest::addColumn<int>("max");
    QTest::addColumn<bool>("isVerified");
    QTest::addRow("all of the signer") << 29 << 32 << true;
    QTest::addRow("a part") << 30 << 31 << true;
    QTest::addRow("one before") << 28 << 32 << false;
    QTest::addRow("one behind") << 29 << 33 << false;
    QTest::addRow("older ones, which do not know v3") << 1 << 32 << false;
}

void TestSchemeV3::coversTheVersionsThatAreAskedFor()
{
    QFETCH(int, min);
    QFETCH(int, max);
    QTEST(verify(signedBy({signer(1, 29, 32)}), {min, max}).isVerified(), "isVerified");
}

void TestSchemeV3::ordersSignersByVersion()
{
    const SchemeResult result = verify(signedBy({signer(2, 31, Newest), signer(1, 24, 30)}));
    QVERIFY2(result.isVerified(), qPrintable(messageOf(result)));
    QCOMPARE(result.signers.size(), 2);
    QCOMPARE(result.signers.at(0).signer.minSdkVersion, 24);
    QCOMPARE(result.signers.at(0).signer.maxSdkVersion, 30);
    QCOMPARE(result.signers.at(0).signer.certificate.der(), level(1).certificate);
    QCOMPARE(result.signers.at(1).signer.minSdkVersion, 31);
    QCOMPARE(result.signers.at(1).signer.maxSdkVersion, Newest);
}

void TestSchemeV3::limitsSigners()
{
    const TestKey key = TestKey::ec();
    const auto signers = [&key](int count) {
        QVector<BlockSigner> result;
        for (int i = 0; i < count; ++i) {
            BlockSigner each(key, {0x0201});
            result.append(each.sdk(28 + i, i + 1 == count ? Newest : 28 + i));
        }
        return result;
    };
    QVERIFY(verify(signedBy(signers(SchemeV3::MaxSigners))).isVerified());
    QCOMPARE(messageOf(verify(signedBy(signers(SchemeV3::MaxSigners + 1)))),
             QStringLiteral("there are too many signers: 64"));
}

void TestSchemeV3::hasTheLineage()
{
    QVector<LineageLevel> levels{level(1), level(2), level(3)};
    levels[0].flags = 0;
    levels[1].flags = 0xff;
    const SchemeResult result = verify(signedBy({rotated(levels)}));
    QVERIFY2(result.isVerified(), qPrintable(messageOf(result)));
    const QList<PastSigner> found = result.signers.first().signer.lineage;
    QCOMPARE(found.size(), 3);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(found.at(i).certificate().der(), level(i + 1).certificate);
    QCOMPARE(int(found.at(0).capabilities()), 0);
    QCOMPARE(int(found.at(1).capabilities()), 31);
    // A later signer continues the lineage.
    QVERIFY(verify(signedBy({signer(1, 28, 29), rotated({1, 2}, 30, 31), rotated({1, 2, 3}, 32)})).isVerified());
}

void TestSchemeV3::givesTheLastLevelAllCapabilities()
{
    QVector<LineageLevel> levels{level(1), level(2)};
    levels[1].flags = 0;
    const SchemeResult result = verify(signedBy({rotated(levels)}));
    QCOMPARE(int(result.signers.first().signer.lineage.last().capabilities()), 31);
}

void TestSchemeV3::verifiesEveryKindOfKeyInALineage()
{
    for (const quint32 algorithm :
         {0x0101U, 0x0102U, 0x0103U, 0x0104U, 0x0201U, 0x0202U, 0x0301U, 0x0421U, 0x0423U, 0x0425U}) {
        const TestKey key = algorithm == 0x0301 || algorithm == 0x0425            ? TestKey::dsa()
                            : (algorithm & 0xf00) == 0x200 || algorithm == 0x0423 ? TestKey::ec()
                                                                                  : TestKey::rsa();
        LineageLevel first{key, key.certificate()};
        first.algorithm = algorithm;
        const SchemeResult result = verify(signedBy({rotated({first, level(2)})}));
        QVERIFY2(result.isVerified(), qPrintable(QString::number(algorithm, 16) + messageOf(result)));
    }
}

void TestSchemeV3::limitsLevels()
{
    const auto levels = [](int count) {
        QVector<LineageLevel> result;
        for (int i = 1; i <= count; ++i) {
            const TestKey key = TestKey::ec(i);
            LineageLevel each{key, key.certificate()};
            each.algorithm = 0x0201;
            result.append(each);
        }
        result.last().key = level(2).key;
        result.last().certificate = level(2).certificate;
        return result;
    };
    const SchemeResult most = verify(signedBy({rotated(levels(Lineage::MaxLevels))}));
    QVERIFY2(most.isVerified(), qPrintable(messageOf(most)));
    QCOMPARE(messageOf(verify(signedBy({rotated(levels(Lineage::MaxLevels + 1))}))),
             QStringLiteral("signer 1: verification takes too much: the lineage of keys"));
}

void TestSchemeV3::verifiesRotationInV31()
{
    const QByteArray package = SigningBlockBuilder(someZip())
                                   .v3({signer(1, 28, 32).attribute(RotationSdk, 33U)})
                                   .v31({rotated({1, 2}, 33)})
                                   .build();
    const SchemeResult old = verify(package);
    QVERIFY2(old.isVerified(), qPrintable(messageOf(old)));
    QCOMPARE(old.signers.first().signer.certificate.der(), level(1).certificate);
    const SchemeResult result = verify(package, {}, Scheme::V31);
    QVERIFY2(result.isVerified(), qPrintable(messageOf(result)));
    QCOMPARE(result.signers.first().signer.scheme, Scheme::V31);
    QCOMPARE(result.signers.first().signer.certificate.der(), level(2).certificate);
    QCOMPARE(result.signers.first().signer.lineage.size(), 2);
    // Only new versions look at it.
    QVERIFY(!verify(package, {1, SdkRange::Tiramisu - 1}, Scheme::V31).isFound);
    QVERIFY(verify(package, {1, SdkRange::Tiramisu}, Scheme::V31).isVerified());
    QVERIFY(verify(package, {1, SdkRange::Tiramisu - 1}).isVerified());
    QVERIFY(verify(package, SdkRange().from(SdkRange::Tiramisu)).isVerified());
}

void TestSchemeV3::leavesNewVersionsToV31()
{
    // A signer of v3.1 for versions before 33 does not replace one of v3: these look at v3 alone.
    const auto package = [](int last, int first) {
        return SigningBlockBuilder(someZip())
            .v3({signer(1, 28, last).attribute(RotationSdk, quint32(first))})
            .v31({rotated({1, 2}, first)})
            .build();
    };
    QVERIFY(verify(package(32, 33)).isVerified());
    QVERIFY(verify(package(33, 34)).isVerified());
    QVERIFY(verify(package(32, 30)).isVerified());
    QCOMPARE(messageOf(verify(package(31, 33))), QStringLiteral("no signer is for some API levels: 28 to 32"));
    QCOMPARE(messageOf(verify(package(29, 30))), QStringLiteral("no signer is for some API levels: 28 to 32"));
    QCOMPARE(messageOf(verify(package(32, 34))), QStringLiteral("no signer is for some API levels: 28 to 33"));
}

void TestSchemeV3::needsV31ThatV3Names()
{
    const QByteArray package = signedBy({signer(1, 28, Newest).attribute(RotationSdk, 34U)});
    QVERIFY(verify(package, {1, 33}).isVerified());
    QCOMPARE(messageOf(verify(package, {1, 34})), QStringLiteral("signer 1: a signature was removed: v3.1"));
    const QByteArray early = signedBy({signer(1, 28, Newest).attribute(RotationSdk, 30U)});
    QVERIFY(verify(early, {1, 32}).isVerified());
    QVERIFY(!verify(early, {1, 33}).isVerified());
}

void TestSchemeV3::comparesTheFirstVersionOfV31()
{
    const QByteArray package = SigningBlockBuilder(someZip())
                                   .v3({signer(1, 28, 33).attribute(RotationSdk, 33U)})
                                   .v31({rotated({1, 2}, 34)})
                                   .build();
    QCOMPARE(messageOf(verify(package)), QStringLiteral("signer 1: API levels of a signer differ: v3 and v3.1"));
}

void TestSchemeV3::doesNotTrustV31ThatIsWrong()
{
    BlockSigner bad = rotated({1, 2}, 33);
    bad.onSignatures = [](QVector<NumberedBytes> &list) { list[0].bytes[0] = char(list[0].bytes[0] ^ 1); };
    const QByteArray package =
        SigningBlockBuilder(someZip()).v3({signer(1, 28, 32).attribute(RotationSdk, 33U)}).v31({bad}).build();
    QVERIFY(!verify(package, {}, Scheme::V31).isVerified());
    QCOMPARE(messageOf(verify(package)), QStringLiteral("no signer is for some API levels: 28 to 2147483647"));
}

void TestSchemeV3::needsV3BesideV31()
{
    const QByteArray package = SigningBlockBuilder(someZip()).v31({rotated({1, 2}, 33)}).build();
    QCOMPARE(messageOf(verify(package, {}, Scheme::V31)), QStringLiteral("a signature was removed: v3"));
}

void TestSchemeV3::beginsV31AtItsFirstSigner()
{
    const QByteArray package = SigningBlockBuilder(someZip())
                                   .v3({signer(1, 28, 34).attribute(RotationSdk, 35U)})
                                   .v31({rotated({1, 2}, 35, 40)})
                                   .build();
    QVERIFY(verify(package, {1, 34}, Scheme::V31).isVerified());
    QVERIFY(verify(package, {1, 40}, Scheme::V31).isVerified());
    QCOMPARE(messageOf(verify(package, {1, 41}, Scheme::V31)),
             QStringLiteral("no signer is for some API levels: 35 to 41"));
}

void TestSchemeV3::allowsAVersionInDevelopment()
{
    const auto package = [](const QVector<BlockSigner> &newer) {
        return SigningBlockBuilder(someZip()).v3({signer(1, 28, 33).attribute(RotationSdk, 33U)}).v31(newer).build();
    };
    BlockSigner last = rotated({1, 2, 3}, 34);
    QVERIFY(!verify(package({rotated({1, 2}, 33, 34), last}), {}, Scheme::V31).isVerified());
    last.attribute(SigningBlockBuilder::DevelopmentAttribute, QByteArray());
    const SchemeResult result = verify(package({rotated({1, 2}, 33, 34), last}), {}, Scheme::V31);
    QVERIFY2(result.isVerified(), qPrintable(messageOf(result)));
    // More than one version in common is too much.
    QVERIFY(!verify(package({rotated({1, 2}, 33, 35), last}), {}, Scheme::V31).isVerified());
}

void TestSchemeV3::warnsOfUnknownAttributes()
{
    const SchemeResult result = verify(signedBy(
        {signer(1, 28, Newest).attribute(0x1234, "value").attribute(SigningBlockBuilder::DevelopmentAttribute, "")}));
    QVERIFY(result.isVerified());
    QCOMPARE(messagesOf(result), QStringList({QStringLiteral("warning: signer 1: an attribute is unknown: 0x1234"),
                                              QStringLiteral("warning: signer 1: an attribute is unknown: "
                                                             "0xc2a6b3ba")}));
}

void TestSchemeV3::findsNothingBeforePie()
{
    const QByteArray package = signedBy({signer(1, 28, Newest)});
    QVERIFY(!verify(package, {1, SdkRange::Pie - 1}).isFound);
    QVERIFY(verify(package, {1, SdkRange::Pie}).isVerified());
}

QTEST_GUILESS_MAIN(TestSchemeV3)
#include "tst_schemev3.moc"
