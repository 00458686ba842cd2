// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Files.h"
#include "IdSigBuilder.h"
#include "JarSigner.h"
#include "SigningBlockBuilder.h"

#include "format/AndroidAttributes.h"

#include <SorrelKit/Signatures.h>

#include <QTemporaryDir>
#include <QtTest>

using namespace SorrelKit;
using namespace fixture;
using Builder = SigningBlockBuilder;
using Code = SignatureIssue::Code;
using Scheme = Signer::Scheme;

namespace {

/// The values in the manifest of a test's package; a value of 0 is left out.
struct Facts {
    int minSdk = 24;
    int targetSdk = 0;
    int sandbox = 0;
    QString split = QString();
};

QByteArray manifestOf(const Facts &facts)
{
    XmlBuilder builder;
    builder.attributeId(QStringLiteral("minSdkVersion"), Attr::MinSdkVersion)
        .attributeId(QStringLiteral("targetSdkVersion"), Attr::TargetSdkVersion)
        .attributeId(QStringLiteral("targetSandboxVersion"), Attr::TargetSandboxVersion)
        .startNamespace(QStringLiteral("android"), androidUri);
    QVector<fixture::Attribute> root{plainText(QStringLiteral("package"), QStringLiteral("org.example.app"))};
    if (!facts.split.isEmpty())
        root.append(plainText(QStringLiteral("split"), facts.split));
    if (facts.sandbox > 0)
        root.append(androidValue(QStringLiteral("targetSandboxVersion"), Integer, facts.sandbox));
    QVector<fixture::Attribute> sdk{androidValue(QStringLiteral("minSdkVersion"), Integer, facts.minSdk)};
    if (facts.targetSdk > 0)
        sdk.append(androidValue(QStringLiteral("targetSdkVersion"), Integer, facts.targetSdk));
    return builder.start(QStringLiteral("manifest"), root)
        .empty(QStringLiteral("uses-sdk"), sdk)
        .end(QStringLiteral("manifest"))
        .build();
}

QVector<Member> membersOf(const Facts &facts)
{
    return {{QStringLiteral("AndroidManifest.xml"), manifestOf(facts)},
            {QStringLiteral("classes.dex"), QByteArray(100, 'c')}};
}

QByteArray unsignedPackage(const Facts &facts = Facts())
{
    return fixture::zip(membersOf(facts), Compression::Stored);
}

QByteArray signedByV1(const Facts &facts, const TestKey &key, const JarOptions &options = JarOptions())
{
    return fixture::zip(signedJar(membersOf(facts), key, options), Compression::Stored);
}

QByteArray signedByV2(const Facts &facts = Facts(), int key = 1)
{
    return Builder(unsignedPackage(facts)).v2({BlockSigner(TestKey::rsa(key))}).build();
}

/// A signer of v3 by @p key whose lineage begins with key @p first.
BlockSigner rotated(int first, int key, int minSdk = 28)
{
    const TestKey from = TestKey::rsa(first);
    const TestKey to = TestKey::rsa(key);
    return BlockSigner(to)
        .sdk(minSdk, std::numeric_limits<int>::max())
        .attribute(Builder::LineageAttribute, lineage({{from, from.certificate()}, {to, to.certificate()}}));
}

Signatures verified(const QByteArray &bytes, int minSdk = 0, int maxSdk = 0)
{
    PackageDevice device(bytes);
    SignatureRequest request;
    request.setMinSdkVersion(minSdk);
    request.setMaxSdkVersion(maxSdk);
    return Signatures(Package(&device), request);
}

QString textOf(const QList<SignatureIssue> &issues)
{
    QStringList texts;
    for (const SignatureIssue &each : issues)
        texts.append((Signer::schemeName(each.scheme()) + QLatin1Char(' ') + each.message()).trimmed());
    return texts.join(QStringLiteral("; "));
}

QString schemesOf(const Signatures &signatures)
{
    QStringList names;
    for (const Scheme scheme : signatures.schemes())
        names.append(Signer::schemeName(scheme));
    return names.join(QLatin1Char(' '));
}

Certificate certificateOf(int key)
{
    return Certificate::fromDer(TestKey::rsa(key).certificate());
}

} // namespace

/// Signatures: the schemes that count, the facts of the manifest, sets, and files.
class TestSignatures : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsNotVerified();
    void unsignedPackages();
    void schemesByVersion_data();
    void schemesByVersion();
    void schemesOfANewTarget();
    void rangesWithoutAVersion();
    void signersOfSchemesMustAgree_data();
    void signersOfSchemesMustAgree();
    void levelsWithoutASignerAreNoted();
    void damageIsNeverAReasonForAnOlderScheme();
    void updates();
    void sets();
    void setsOfSeveralSigners();
    void setsWithADamagedSplit();
    void v4SignaturesBesideThePackage();
    void filesAreMapped();
    void valuesOutliveThePackage();
};

void TestSignatures::nothingIsNotVerified()
{
    QVERIFY(!Signatures().isVerified());
    QCOMPARE(textOf(Signatures().errors()), QStringLiteral("the package cannot be opened"));
    const Signatures missing{Package(QStringLiteral("/nowhere.apk"))};
    QVERIFY(!missing.isVerified());
    QCOMPARE(textOf(missing.errors()), QStringLiteral("the package cannot be opened: could not open APK file"));
    QVERIFY(!verified(fixture::zip({{QStringLiteral("a"), "b"}})).isVerified());
    QVERIFY(!verified(QByteArray()).isVerified());
}

void TestSignatures::unsignedPackages()
{
    const Signatures signatures = verified(unsignedPackage());
    QVERIFY(!signatures.isVerified());
    QCOMPARE(textOf(signatures.errors()),
             QStringLiteral("the package has no signature that this version of Android accepts"));
    QVERIFY(signatures.schemes().isEmpty());
    QVERIFY(signatures.signers().isEmpty());
    QVERIFY(signatures.stamp().isNull());
}

void TestSignatures::schemesByVersion_data()
{
    QTest::addColumn<QByteArray>("package");
    QTest::addColumn<int>("min");
    QTest::addColumn<int>("max");
    QTest::addColumn<QString>("schemes");
    QTest::addColumn<QString>("errors");
    const TestKey key = TestKey::rsa();
    const QByteArray v1 = signedByV1({21}, key);
    QTest::newRow("v1 alone") << v1 << 0 << 0 << "v1"
                              << "";
    QTest::newRow("v1 alone, new") << v1 << 34 << 0 << "v1"
                                   << "";
    const QByteArray v2 = signedByV2();
    QTest::newRow("v2 alone") << v2 << 0 << 0 << "v2"
                              << "";
    QTest::newRow("v2 alone, old too") << v2 << 23 << 0 << "v2"
                                       << "the package needs a newer signature scheme: v1 for API level 23";
    QTest::newRow("v2 alone, old alone") << v2 << 23 << 23 << ""
                                         << "the package has no signature that this version of Android accepts";
    const QByteArray v3 = Builder(unsignedPackage()).v3({BlockSigner(key)}).build();
    QTest::newRow("v3 alone") << v3 << 28 << 0 << "v3"
                              << "";
    QTest::newRow("v3 alone, Android 7 alone") << v3 << 24 << 27 << ""
                                               << "the package has no signature that this version of Android accepts";
    const QByteArray all = Builder(signedByV1({21}, key)).v2({BlockSigner(key)}).v3({BlockSigner(key)}).build();
    QTest::newRow("all") << all << 0 << 0 << "v1 v2 v3"
                         << "";
    QTest::newRow("all, Android 7") << all << 24 << 0 << "v2 v3"
                                    << "";
    QTest::newRow("all, Android 7 alone") << all << 24 << 27 << "v2"
                                          << "";
    QTest::newRow("all, Android 9") << all << 28 << 0 << "v3"
                                    << "";
    QTest::newRow("all, Android 6 alone") << all << 21 << 23 << "v1"
                                          << "";
    const QByteArray v31 = Builder(unsignedPackage())
                               .v2({BlockSigner(key)})
                               .v3({BlockSigner(key).sdk(28, 32).attribute(Builder::RotationSdkAttribute, 33)})
                               .v31({rotated(1, 2, 33)})
                               .build();
    QTest::newRow("v3.1") << v31 << 0 << 0 << "v2 v3 v3.1"
                          << "";
    QTest::newRow("v3.1, Android 13") << v31 << 33 << 0 << "v3.1"
                                      << "";
    QTest::newRow("v3.1, Android 12 alone") << v31 << 28 << 32 << "v3"
                                            << "";
}

void TestSignatures::schemesByVersion()
{
    QFETCH(QByteArray, package);
    QFETCH(int, min);
    QFETCH(int, max);
    const Signatures signatures = verified(package, min, max);
    QTEST(textOf(signatures.errors()), "errors");
    QTEST(schemesOf(signatures), "schemes");
    QFETCH(QString, errors);
    QCOMPARE(signatures.isVerified(), errors.isEmpty());
}

void TestSignatures::schemesOfANewTarget()
{
    const TestKey key = TestKey::rsa();
    QVERIFY(verified(signedByV1({21, 29}, key)).isVerified());
    const QByteArray modern = signedByV1({21, 30}, key);
    QCOMPARE(textOf(verified(modern).errors()),
             QStringLiteral("the package needs a newer signature scheme: v2 for target API level 30"));
    QVERIFY(verified(modern, 0, 29).isVerified());
    QVERIFY(verified(Builder(modern).v2({BlockSigner(key)}).build()).isVerified());
    QVERIFY(verified(signedByV1({21, 0, 1}, key)).isVerified());
    const QByteArray sandboxed = signedByV1({21, 0, 2}, key);
    QCOMPARE(textOf(verified(sandboxed).errors()),
             QStringLiteral("the package needs a newer signature scheme: v2 for target sandbox version 2"));
    QVERIFY(verified(sandboxed, 0, 25).isVerified());
}

void TestSignatures::rangesWithoutAVersion()
{
    const Signatures signatures = verified(signedByV2(), 30, 29);
    QVERIFY(!signatures.isVerified());
    QCOMPARE(textOf(signatures.errors()), QStringLiteral("no API level is in the range: 30 to 29"));
}

void TestSignatures::signersOfSchemesMustAgree_data()
{
    QTest::addColumn<QByteArray>("package");
    QTest::addColumn<QString>("errors");
    const TestKey first = TestKey::rsa(1);
    const TestKey second = TestKey::rsa(2);
    const QString differ = QStringLiteral("the signature schemes have different signers: ");
    const QByteArray v1 = signedByV1({21}, first);
    QTest::newRow("v1 and v2") << Builder(v1).v2({BlockSigner(second)}).build() << differ + "v1 and v2";
    QTest::newRow("v1 and one more of v2")
        << Builder(v1).v2({BlockSigner(first), BlockSigner(second)}).build() << differ + "v1 and v2";
    QTest::newRow("v1 and v3") << Builder(v1).v3({BlockSigner(second)}).build() << differ + "v1 and v3";
    const QByteArray none = unsignedPackage();
    QTest::newRow("v2 and v3") << Builder(none).v2({BlockSigner(first)}).v3({BlockSigner(second)}).build()
                               << differ + "v2 and v3";
    QTest::newRow("v2 and v3, rotated") << Builder(none).v2({BlockSigner(first)}).v3({rotated(1, 2)}).build()
                                        << QString();
    QTest::newRow("v2 and v3, the new key in both")
        << Builder(none).v2({BlockSigner(second)}).v3({rotated(1, 2)}).build() << QString();
    QTest::newRow("v2 and v3, rotated from another key")
        << Builder(none).v2({BlockSigner(TestKey::rsa(3))}).v3({rotated(1, 2)}).build() << differ + "v2 and v3";
    QTest::newRow("two signers of v2 and one of v3")
        << Builder(none).v2({BlockSigner(first), BlockSigner(second)}).v3({rotated(1, 2)}).build()
        << differ + "v2 and v3";
    const BlockSigner ofOlder = BlockSigner(first).sdk(28, 32).attribute(Builder::RotationSdkAttribute, 33);
    QTest::newRow("v3 and v3.1")
        << Builder(none).v2({BlockSigner(first)}).v3({ofOlder}).v31({rotated(3, 2, 33)}).build()
        << differ + "v3 and v3.1; " + differ + "v2 and v3.1";
}

void TestSignatures::signersOfSchemesMustAgree()
{
    QFETCH(QByteArray, package);
    QTEST(textOf(verified(package).errors()), "errors");
}

void TestSignatures::levelsWithoutASignerAreNoted()
{
    const Signatures signatures = verified(Builder(unsignedPackage()).v3({BlockSigner(TestKey::rsa())}).build());
    QVERIFY(signatures.isVerified());
    QCOMPARE(signatures.minSdkVersion(), 28);
    QCOMPARE(textOf(signatures.warnings()), QStringLiteral("no signer is for some API levels: API levels 24 to 27"));
}

void TestSignatures::damageIsNeverAReasonForAnOlderScheme()
{
    const TestKey key = TestKey::rsa();
    const QByteArray v1 = signedByV1({24}, key);
    QVERIFY(verified(v1).isVerified());
    BlockSigner signer(key);
    signer.onSignatures = [](QVector<NumberedBytes> &signatures) { signatures[0].bytes[0] = '\0'; };
    for (const QByteArray &package : {Builder(v1).v2({signer}).build(), Builder(v1).v3({signer}).build(),
                                      Builder(v1).v2({BlockSigner(key)}).v3({signer}).build()})
        QVERIFY(!verified(package).isVerified());
}

void TestSignatures::updates()
{
    using Match = Signer::Match;
    const Signatures first = verified(signedByV2({}, 1));
    const Signatures second = verified(signedByV2({}, 2));
    const Signatures rotatedOne = verified(Builder(unsignedPackage()).v3({rotated(1, 2)}).build());
    QCOMPARE(Signatures::compareSigners(first, first), Match::Same);
    QCOMPARE(Signatures::compareSigners(first, second), Match::Different);
    QVERIFY(!Signatures::sameSigner(first, second));
    QCOMPARE(Signatures::compareSigners(first, rotatedOne), Match::Rotated);
    QCOMPARE(Signatures::compareSigners(second, rotatedOne), Match::Same);
    QCOMPARE(Signatures::compareSigners(rotatedOne, first), Match::Rollback);
    QVERIFY(Signatures::sameSigner(first, rotatedOne));
    QByteArray bytes = signedByV2({}, 1);
    bytes[bytes.indexOf(QByteArray(100, 'c'))] = 'C';
    const Signatures damaged = verified(bytes);
    QCOMPARE(Signatures::compareSigners(first, damaged), Match::Unverified);
    QCOMPARE(Signatures::compareSigners(damaged, first), Match::Unverified);
    QVERIFY(!Signatures::sameSigner(damaged, damaged));
    QVERIFY(!Signatures::sameSigner(Signatures(), Signatures()));
}

void TestSignatures::sets()
{
    const Facts split{24, 0, 0, QStringLiteral("config.de")};
    const QVector<Member> parts{{QStringLiteral("base.apk"), signedByV2()},
                                {QStringLiteral("de.apk"), signedByV2(split)}};
    for (const Compression compression : {Compression::Stored, Compression::Deflated}) {
        const Signatures signatures = verified(fixture::zip(parts, compression));
        QCOMPARE(textOf(signatures.errors()), QString());
        QVERIFY(signatures.isVerified());
        QCOMPARE(signatures.packages().size(), 2);
        QCOMPARE(signatures.packages().at(0).name(), QString());
        QCOMPARE(signatures.packages().at(1).name(), QStringLiteral("config.de"));
        QCOMPARE(signatures.signers().size(), 1);
        QCOMPARE(signatures.signers().first().certificate(), certificateOf(1));
        QCOMPARE(schemesOf(signatures), QStringLiteral("v2"));
    }
}

void TestSignatures::setsOfSeveralSigners()
{
    const Facts split{24, 0, 0, QStringLiteral("config.de")};
    const Signatures signatures = verified(
        fixture::zip({{QStringLiteral("base.apk"), signedByV2()}, {QStringLiteral("de.apk"), signedByV2(split, 2)}}));
    QVERIFY(!signatures.isVerified());
    QCOMPARE(textOf(signatures.errors()), QStringLiteral("config.de: the packages of the set have different signers"));
    QVERIFY(signatures.signers().isEmpty());
}

void TestSignatures::setsWithADamagedSplit()
{
    const Facts facts{24, 0, 0, QStringLiteral("config.de")};
    QByteArray split = signedByV2(facts);
    const auto at = int(split.indexOf(QByteArray(100, 'c')));
    split[at] = 'C';
    const Signatures signatures =
        verified(fixture::zip({{QStringLiteral("base.apk"), signedByV2()}, {QStringLiteral("de.apk"), split}}));
    QVERIFY(!signatures.isVerified());
    QCOMPARE(signatures.errors().size(), 1);
    QCOMPARE(signatures.errors().first().code(), Code::ContentChanged);
    QVERIFY(signatures.errors().first().subject().startsWith(QLatin1String("config.de")));
    QVERIFY(signatures.packages().at(0).isVerified());
    QVERIFY(!signatures.packages().at(1).isVerified());
}

void TestSignatures::v4SignaturesBesideThePackage()
{
    QTemporaryDir directory;
    const Builder builder = Builder(unsignedPackage()).v2({BlockSigner(TestKey::rsa())});
    const QByteArray package = builder.build();
    IdSigBuilder signature(package);
    signature.infos[0].apkDigest = builder.contentDigest(0x0103);
    const QString fileName = directory.filePath(QStringLiteral("app.apk"));
    writeFile(fileName, package);
    writeFile(fileName + QLatin1String(".idsig"), signature.build());
    QCOMPARE(schemesOf(Signatures{Package(fileName)}), QStringLiteral("v2 v4"));
    SignatureRequest old;
    old.setMaxSdkVersion(29);
    QCOMPARE(schemesOf(Signatures(Package(fileName), old)), QStringLiteral("v2"));

    signature.rootHash[0] = char(signature.rootHash.at(0) ^ 1);
    writeFile(fileName + QLatin1String(".idsig"), signature.build());
    const Signatures beside{Package(fileName)};
    QVERIFY(beside.isVerified());
    QCOMPARE(schemesOf(beside), QStringLiteral("v2"));
    QCOMPARE(textOf(beside.warnings()), QStringLiteral("v4 the root hash is wrong"));
    SignatureRequest request;
    request.setV4SignatureFile(fileName + QLatin1String(".idsig"));
    const Signatures named(Package(fileName), request);
    QVERIFY(!named.isVerified());
    QCOMPARE(textOf(named.errors()), QStringLiteral("v4 the root hash is wrong"));
    request.setV4SignatureFile(directory.filePath(QStringLiteral("missing")));
    QVERIFY(!Signatures(Package(fileName), request).isVerified());
}

void TestSignatures::filesAreMapped()
{
    QTemporaryDir directory;
    QVector<Member> members = membersOf(Facts());
    members.append({QStringLiteral("assets/large"), QByteArray(5 << 20, 'l')});
    const QByteArray package =
        Builder(fixture::zip(members, Compression::Stored)).v2({BlockSigner(TestKey::rsa())}).build();
    const QString fileName = directory.filePath(QStringLiteral("large.apk"));
    writeFile(fileName, package);
    QVERIFY(Signatures{Package(fileName)}.isVerified());
    QByteArray damaged = package;
    damaged[package.size() / 2] = 'L';
    writeFile(fileName, damaged);
    const Signatures signatures{Package(fileName)};
    QCOMPARE(signatures.errors().size(), 1);
    QCOMPARE(signatures.errors().first().code(), Code::ContentChanged);
}

void TestSignatures::valuesOutliveThePackage()
{
    const Signatures signatures = verified(signedByV2());
    const Signatures copy = signatures;
    QCOMPARE(copy.signers(Scheme::V2).size(), 1);
    QCOMPARE(copy.signers(Scheme::V3).size(), 0);
    QCOMPARE(copy.signers().first().certificate().subject(), QStringLiteral("CN=Test signer"));
}

QTEST_GUILESS_MAIN(TestSignatures)
#include "tst_signatures.moc"
