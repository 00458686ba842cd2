// SPDX-License-Identifier: LGPL-2.1-or-later
#include "JarCheck.h"

#include "trust/jar/JarVerifier.h"

#include <QtTest>

using namespace SorrelKit;
using namespace fixture;
using Code = SignatureIssue::Code;
using Hash = HashAlgorithm;

namespace {

const QString manifestName = QStringLiteral("META-INF/MANIFEST.MF");
const QString fileName = QStringLiteral("META-INF/CERT.SF");
const QString blockName = QStringLiteral("META-INF/CERT.RSA");

void replace(QByteArray &bytes, const QByteArray &from, const QByteArray &to)
{
    if (!bytes.contains(from))
        qFatal("the fixture has no %s", from.constData());
    bytes.replace(from, to);
}

/// Changes the first character of the first digest behind @p attribute.
void breakDigest(QByteArray &bytes, const QByteArray &attribute)
{
    const int at = int(bytes.indexOf(attribute + ": ") + attribute.size() + 2);
    bytes[at] = bytes.at(at) == 'A' ? 'B' : 'A';
}

} // namespace

Q_DECLARE_METATYPE(QVector<fixture::Member>)

/// JarVerifier, and SignatureFile.
class TestJarVerifier : public QObject
{
    Q_OBJECT

private slots:
    void verifiesWhatWasSigned_data();
    void verifiesWhatWasSigned();
    void findsTheScheme();
    void hasAllErrors_data();
    void hasAllErrors();
    void hasAllWarnings_data();
    void hasAllWarnings();
    void choosesDigestsByTheLevel();
    void verifiesSectionsOfAnExtendedManifest();
    void skipsWhatAndroidSkips_data();
    void skipsWhatAndroidSkips();
    void takesSeveralSigners();
    void hasAMostOfSigners();
    void findsStrippedSignatures_data();
    void findsStrippedSignatures();
    void needsNoDigestOfMetaFiles();
};

void TestJarVerifier::verifiesWhatWasSigned_data()
{
    QTest::addColumn<int>("digest");
    QTest::addColumn<QByteArray>("lineEnd");
    QTest::addColumn<bool>("isDeflated");
    for (const Hash hash : {Hash::Sha1, Hash::Sha256, Hash::Sha384, Hash::Sha512}) {
        for (const char *const end : {"\r\n", "\n", "\r"})
            QTest::addRow("%s %d %d", Digest::name(hash), end[0], int(qstrlen(end)))
                << int(hash) << QByteArray(end) << (hash == Hash::Sha1);
    }
}

void TestJarVerifier::verifiesWhatWasSigned()
{
    QFETCH(int, digest);
    QFETCH(QByteArray, lineEnd);
    QFETCH(bool, isDeflated);
    for (const TestKey &key : {TestKey::rsa(), TestKey::dsa(), TestKey::ec()}) {
        JarOptions options;
        options.digests = {Hash(digest)};
        options.lineEnd = lineEnd;
        options.certificateDer = key.certificate();
        const QVector<Member> members = signedMembers(options, key);
        const SchemeResult result = verifyJar(zip(members, isDeflated ? Compression::Deflated : Compression::Stored));
        QCOMPARE(errorsOf(result), QString());
        const bool isWeak = options.digests == QVector<Hash>{Hash::Sha1};
        QCOMPARE(warningsOf(result),
                 isWeak ? QStringLiteral("META-INF/MANIFEST.MF: a hash is weak: SHA-1") : QString());
        QVERIFY(result.isFound);
        QVERIFY(result.isVerified());
        QCOMPARE(result.scheme, Signer::Scheme::V1);
        QCOMPARE(int(result.signers.size()), 1);
        QCOMPARE(result.signers.first().signer.certificate.der(), options.certificateDer);
        QCOMPARE(result.signers.first().signer.scheme, Signer::Scheme::V1);
    }
}

void TestJarVerifier::findsTheScheme()
{
    QVERIFY(!verifyJar(unsignedMembers()).isFound);
    QVector<Member> members = signedMembers();
    const auto without = [&members](const QString &name) {
        QVector<Member> others;
        for (const Member &each : qAsConst(members)) {
            if (each.name != name)
                others.append(each);
        }
        return verifyJar(others);
    };
    QVERIFY(!without(manifestName).isFound);
    QVERIFY(!without(blockName).isFound);
    QVERIFY(without(fileName).isFound);
    QVERIFY(!without(fileName).isVerified());
}

void TestJarVerifier::hasAllErrors_data()
{
    QTest::addColumn<QVector<Member>>("members");
    QTest::addColumn<QString>("errors");
    const auto row = [](const char *name, const QVector<Member> &members, const char *errors) {
        QTest::addRow("%s", name) << members << QString::fromLatin1(errors);
    };
    const auto edited = [](const QString &name, const Edit &edit) {
        QVector<Member> members = signedMembers();
        edit(contentOf(members, name));
        return members;
    };
    const auto withManifest = [](const Edit &edit) {
        JarOptions options;
        options.editManifest = edit;
        return signedMembers(options);
    };
    const auto withFile = [](const Edit &edit, bool hasManifestDigest = true) {
        JarOptions options;
        options.editSignatureFile = edit;
        options.hasManifestDigest = hasManifestDigest;
        options.hasMainDigest = true;
        return signedMembers(options);
    };
    const auto append = [](const QByteArray &text) { return [text](QByteArray &bytes) { bytes += text; }; };
    const auto swap = [](const QByteArray &from, const QByteArray &to) {
        return [from, to](QByteArray &bytes) { replace(bytes, from, to); };
    };
    QVector<Member> members = signedMembers();

    row("no manifest", unsignedMembers(), "there is no META-INF/MANIFEST.MF");
    row("no block", members.mid(0, 5), "there is no signer");
    row("no signature file", members.mid(0, 4) + members.mid(5), "there is no signer");
    row("block", edited(blockName, [](QByteArray &bytes) { bytes.chop(1); }), "CERT: a signature block is damaged");
    row("signature file", edited(fileName, swap("1.0", "1.1")), "CERT: a signature is wrong");
    row("manifest", edited(manifestName, swap("1.0 (", "1.1 (")), "CERT: the manifest was changed");
    row("section", edited(manifestName, swap("Name: a.txt", "Name: a.txt\r\nX: y")),
        "CERT: the manifest was changed; CERT: a section of the manifest was changed: a.txt");
    row("main attributes", withFile([](QByteArray &b) { breakDigest(b, "-Manifest-Main-Attributes"); }),
        "CERT: the manifest was changed: main attributes");
    row("section's digest", withFile([](QByteArray &b) { breakDigest(b, "SHA-256-Digest"); }, false),
        "CERT: a section of the manifest was changed: a.txt");
    row("section without a digest", withFile(swap("a.txt\r\nSHA-256-", "a.txt\r\nSHA-999-"), false),
        "CERT: no digest has a known algorithm: a.txt");
    row("no name", withManifest(append("X: y\r\n")),
        "META-INF/MANIFEST.MF: a manifest or signature file is damaged: "
        "section 4 has no name");
    row("two sections", withManifest(append("Name: a.txt\r\n")), "a.txt: a section occurs twice");
    row("missing", withManifest(append("Name: c\r\n")), "c: a member is missing");
    row("directory", withManifest(append("Name: res/\r\n")), "res/: a member is missing");
    row("no digest", withManifest(swap("a.txt\r\nSHA-256-", "a.txt\r\nSHA-999-")),
        "a.txt: no digest has a known algorithm");
    row("no Base64", withManifest(swap("a.txt\r\nSHA-256-Digest: ", "a.txt\r\nSHA-256-Digest: !")),
        "a.txt: a member was changed: SHA-256");
    row("added", members + QVector<Member>{{QStringLiteral("c"), "c"}}, "c: a member is not in the manifest");
    row("removed", members.mid(1), "a.txt: a member is missing");
    row("renamed",
        edited(manifestName, [](QByteArray &) {}).mid(1) + QVector<Member>{{QStringLiteral("b.txt"), "hello"}},
        "a.txt: a member is missing; b.txt: a member is not in the manifest");
    row("changed", edited(QStringLiteral("a.txt"), [](QByteArray &bytes) { bytes = "hellO"; }),
        "a.txt: a member was changed: SHA-256");
    row("unsigned", withFile([](QByteArray &b) { b.truncate(b.indexOf("Name: classes.dex")); }),
        "classes.dex: a member is not signed");
    row("nothing signed", signedJar({}, TestKey::rsa()), "there is no signer: no member is signed");
    row("no version", withFile(swap("Signature-Version", "X")),
        "CERT: a manifest or signature file is damaged: Signature-Version is missing; there is no signer");
    JarOptions weak;
    weak.signatureHash = Hash::Sha224;
    weak.signatureAlgorithm = "2a864886f70d01010a"; // RSASSA-PSS
    row("algorithm", signedMembers(weak), "CERT: an algorithm is unknown");
    JarOptions lonely;
    lonely.hasCertificate = false;
    row("no certificate", signedMembers(lonely), "CERT: there is no certificate");

    QVector<Member> two = signedMembers();
    JarOptions partial;
    partial.name = "OTHER";
    partial.editSignatureFile = [](QByteArray &b) { b.truncate(b.indexOf("Name: classes.dex")); };
    addJarSigner(two, TestKey::rsa(2), partial);
    row("signers differ", two, "classes.dex: members have different signers");
}

void TestJarVerifier::hasAllErrors()
{
    QFETCH(QVector<Member>, members);
    const SchemeResult result = verifyJar(members);
    QVERIFY(!result.isVerified());
    QTEST(errorsOf(result), "errors");
}

void TestJarVerifier::hasAllWarnings_data()
{
    QTest::addColumn<QVector<Member>>("members");
    QTest::addColumn<QString>("warnings");
    const auto with = [](const char *name, const QByteArray &content) {
        return signedMembers() + QVector<Member>{{QString::fromLatin1(name), content}};
    };
    const auto row = [](const char *name, const QVector<Member> &members, const char *warnings) {
        QTest::addRow("%s", name) << members << QString::fromLatin1(warnings);
    };
    row("lonely block", with("META-INF/X.RSA", "x"),
        "X: a signature block has no signature file; "
        "META-INF/X.RSA: a member is not protected by signatures");
    row("service", with("META-INF/services/x", "x"), "META-INF/services/x: a member is not protected by signatures");
    row("another case", with("META-INF/x.rsa", "x"), "META-INF/x.rsa: a member is not protected by signatures");
    row("lonely signature file", with("META-INF/X.SF", "x"), "META-INF/X.SF: a member is not protected by signatures");
    row("directory", with("dir/", ""), "");
    row("directory below META-INF", with("META-INF/", ""), "");
    row("content of a directory", with("dir/", "x"), "dir/: a member is not protected by signatures");
    JarOptions options;
    options.hasManifestDigest = false;
    row("no digest of the manifest", signedMembers(options),
        "CERT: the manifest was changed: only the sections are verified");
    options = {};
    options.digests = {JarOptions::Hash::Sha1};
    row("weak digests", signedMembers(options), "META-INF/MANIFEST.MF: a hash is weak: SHA-1");
    options = {};
    options.schemes = "1, x, 2, 999";
    row("unknown scheme", signedMembers(options),
        "CERT: a signature scheme is unknown: v1; "
        "CERT: a signature scheme is unknown: v999");
}

void TestJarVerifier::hasAllWarnings()
{
    QFETCH(QVector<Member>, members);
    const SchemeResult result = verifyJar(members, {24, NewestSdk}, {2});
    QCOMPARE(errorsOf(result), QString());
    QVERIFY(result.isVerified());
    QTEST(warningsOf(result), "warnings");
}

void TestJarVerifier::choosesDigestsByTheLevel()
{
    JarOptions options;
    options.digests = {Hash::Sha1, Hash::Sha256};
    options.signatureHash = Hash::Sha1;
    options.editManifest = [](QByteArray &bytes) { breakDigest(bytes, "SHA1-Digest"); };
    const QVector<Member> old = signedMembers(options);
    QVERIFY(verifyJar(old, {18, NewestSdk}).isVerified());
    QCOMPARE(errorsOf(verifyJar(old, {17, NewestSdk})), QStringLiteral("a.txt: a member was changed: SHA-1"));
    QCOMPARE(errorsOf(verifyJar(old, {8, 17})), QStringLiteral("a.txt: a member was changed: SHA-1"));
    options.editManifest = [](QByteArray &bytes) { breakDigest(bytes, "SHA-256-Digest"); };
    const QVector<Member> recent = signedMembers(options);
    QVERIFY(verifyJar(recent, {8, 17}).isVerified());
    QCOMPARE(errorsOf(verifyJar(recent, {17, NewestSdk})), QStringLiteral("a.txt: a member was changed: SHA-256"));
    QCOMPARE(errorsOf(verifyJar(recent, {18, NewestSdk})), QStringLiteral("a.txt: a member was changed: SHA-256"));
    // The digests of sections are chosen in the same way.
    options.editManifest = {};
    options.hasManifestDigest = false;
    options.editSignatureFile = [](QByteArray &bytes) { breakDigest(bytes, "SHA1-Digest"); };
    QVERIFY(verifyJar(signedMembers(options), {18, NewestSdk}).isVerified());
    QVERIFY(!verifyJar(signedMembers(options), {17, NewestSdk}).isVerified());
}

void TestJarVerifier::verifiesSectionsOfAnExtendedManifest()
{
    for (const bool hasMainDigest : {false, true}) {
        JarOptions options;
        options.hasMainDigest = hasMainDigest;
        QVector<Member> members = signedMembers(options);
        contentOf(members, manifestName) += "Name: META-INF/CERT.SF\r\nX: y\r\n\r\n";
        const SchemeResult result = verifyJar(members);
        // Nothing proves the first section when there is no digest of it.
        QCOMPARE(result.isVerified(), hasMainDigest);
        QCOMPARE(errorsOf(result), hasMainDigest ? QString() : QStringLiteral("CERT: the manifest was changed"));
        QCOMPARE(warningsOf(result).contains(QStringLiteral("only the sections")), hasMainDigest);
    }
    JarOptions options;
    options.createdBy = "1.0 signtool";
    options.hasManifestDigest = false;
    options.hasMainDigest = true;
    options.editSignatureFile = [](QByteArray &bytes) { breakDigest(bytes, "-Digest-Manifest-Main-Attributes"); };
    QVERIFY(verifyJar(signedMembers(options)).isVerified());
}

void TestJarVerifier::skipsWhatAndroidSkips_data()
{
    QTest::addColumn<QByteArray>("added");
    QTest::addColumn<QString>("reason");
    QTest::addRow("no name") << QByteArray("X: y\r\n") << QStringLiteral("section 4 has no name");
    QTest::addRow("two sections") << QByteArray("Name: a.txt\r\n") << QStringLiteral("two sections for a.txt");
    QTest::addRow("another section") << QByteArray("Name: c\r\n") << QStringLiteral("c is not in the manifest");
}

void TestJarVerifier::skipsWhatAndroidSkips()
{
    QFETCH(QByteArray, added);
    QFETCH(QString, reason);
    JarOptions options;
    options.name = "OTHER";
    options.hasManifestDigest = false;
    options.editSignatureFile = [&added](QByteArray &bytes) { bytes += added; };
    const QString text = QStringLiteral("OTHER: a manifest or signature file is damaged: ") + reason;
    QCOMPARE(errorsOf(verifyJar(signedMembers(options))), text + QStringLiteral("; there is no signer"));

    QVector<Member> members = signedMembers();
    addJarSigner(members, TestKey::rsa(2), options);
    const SchemeResult result = verifyJar(members);
    QVERIFY(result.isVerified());
    QCOMPARE(int(result.signers.size()), 1);
    QVERIFY(textsOf(result.issues.warnings()).contains(text));
    QVERIFY(warningsOf(result).contains(QStringLiteral("META-INF/OTHER.RSA: a member is not protected")));
    // The signature comes first.
    options.editSignature = [](QByteArray &bytes) { bytes[9] = char(bytes.at(9) ^ 1); };
    members = signedMembers();
    addJarSigner(members, TestKey::rsa(2), options);
    QCOMPARE(errorsOf(verifyJar(members)), QStringLiteral("OTHER: a signature is wrong"));
}

void TestJarVerifier::takesSeveralSigners()
{
    QVector<Member> members = signedMembers();
    JarOptions options;
    options.name = "sub/OTHER";
    addJarSigner(members, TestKey::ec(), options);
    const SchemeResult result = verifyJar(members);
    QCOMPARE(errorsOf(result), QString());
    QCOMPARE(warningsOf(result), QString());
    QCOMPARE(int(result.signers.size()), 2);
    QCOMPARE(result.signers.at(0).signer.certificate.keyAlgorithm(), QStringLiteral("RSA"));
    QCOMPARE(result.signers.at(1).signer.certificate.keyAlgorithm(), QStringLiteral("EC"));
}

void TestJarVerifier::hasAMostOfSigners()
{
    QVector<Member> members = signedMembers();
    for (int i = 1; i < JarVerifier::MaxSigners; ++i) {
        JarOptions options;
        options.name = QByteArray::number(i);
        addJarSigner(members, TestKey::ec(i), options);
    }
    QCOMPARE(int(verifyJar(members).signers.size()), JarVerifier::MaxSigners);
    members.append({QStringLiteral("META-INF/X.EC"), "x"});
    QCOMPARE(errorsOf(verifyJar(members)), QStringLiteral("there are too many signers"));
}

void TestJarVerifier::findsStrippedSignatures_data()
{
    QTest::addColumn<QByteArray>("listed");
    QTest::addColumn<QVector<int>>("found");
    QTest::addColumn<int>("max");
    QTest::addColumn<QString>("errors");
    const QString v2 = QStringLiteral("CERT: a signature was removed: v2");
    const QString v3 = QStringLiteral("CERT: a signature was removed: v3");
    QTest::addRow("v2") << QByteArray("2") << QVector<int>() << NewestSdk << v2;
    QTest::addRow("v2, found") << QByteArray("2") << QVector<int>{2} << NewestSdk << QString();
    QTest::addRow("v2, another found") << QByteArray("2") << QVector<int>{3} << NewestSdk << v2;
    QTest::addRow("v2 for Nougat") << QByteArray("2") << QVector<int>() << 24 << v2;
    QTest::addRow("v2 before Nougat") << QByteArray("2") << QVector<int>() << 23 << QString();
    QTest::addRow("v3 for Pie") << QByteArray("3") << QVector<int>() << 28 << v3;
    QTest::addRow("v3 before Pie") << QByteArray("3") << QVector<int>() << 27 << QString();
    QTest::addRow("both") << QByteArray(" 2 , 3 ") << QVector<int>() << NewestSdk << v2 + QStringLiteral("; ") + v3;
    QTest::addRow("v3 of both") << QByteArray("x,2,,3") << QVector<int>{2} << NewestSdk << v3;
    QTest::addRow("none") << QByteArray("") << QVector<int>() << NewestSdk << QString();
}

void TestJarVerifier::findsStrippedSignatures()
{
    QFETCH(QByteArray, listed);
    QFETCH(QVector<int>, found);
    QFETCH(int, max);
    JarOptions options;
    options.schemes = listed;
    const SchemeResult result = verifyJar(signedMembers(options), {18, max}, found);
    QTEST(errorsOf(result), "errors");
    QCOMPARE(result.isVerified(), errorsOf(result).isEmpty());
}

void TestJarVerifier::needsNoDigestOfMetaFiles()
{
    QVector<Member> members = signedMembers();
    members.append({QStringLiteral("META-INF/x"), "x"});
    QVERIFY(verifyJar(members).isVerified());
    members.last().name = QStringLiteral("meta-inf/x");
    QCOMPARE(errorsOf(verifyJar(members)), QStringLiteral("meta-inf/x: a member is not in the manifest"));
    members.last().name = QStringLiteral("META-INF");
    QCOMPARE(errorsOf(verifyJar(members)), QStringLiteral("META-INF: a member is not in the manifest"));
}

QTEST_GUILESS_MAIN(TestJarVerifier)
#include "tst_jarverifier.moc"
