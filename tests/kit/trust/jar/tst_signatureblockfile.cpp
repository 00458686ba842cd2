// SPDX-License-Identifier: LGPL-2.1-or-later
#include "JarSigner.h"

#include "limits/Budget.h"
#include "trust/jar/JarSignatureAlgorithm.h"
#include "trust/jar/SignatureBlockFile.h"

#include <QtTest>

#include <limits>
#include <utility>

using namespace SorrelKit;
using namespace fixture;
using Code = SignatureIssue::Code;
using Hash = HashAlgorithm;

namespace {

constexpr int Newest = std::numeric_limits<int>::max();
const QByteArray signedFile = "Signature-Version: 1.0\r\n\r\n";

SignatureBlockFile::Result verify(const QByteArray &block, SdkRange sdk = {24, Newest},
                                  const QByteArray &file = signedFile)
{
    Budget budget(400'000'000, 0);
    return SignatureBlockFile::verify(ByteView(block), ByteView(file), sdk, &budget);
}

Code codeOf(const TestKey &key, const JarOptions &options, SdkRange sdk = {24, Newest})
{
    return verify(jarSignatureBlock(signedFile, key, options), sdk).code;
}

TestKey keyOf(const QByteArray &kind)
{
    if (kind == "DSA")
        return TestKey::dsa();
    return kind == "ECDSA" ? TestKey::ec() : TestKey::rsa();
}

} // namespace

/// SignatureBlockFile.
class TestSignatureBlockFile : public QObject
{
    Q_OBJECT

private slots:
    void knowsAlgorithmsFromALevelOn_data();
    void knowsAlgorithmsFromALevelOn();
    void knowsIdentifiersOfSignatures_data();
    void knowsIdentifiersOfSignatures();
    void refusesAnotherFile();
    void refusesEveryFlippedByte_data();
    void refusesEveryFlippedByte();
    void refusesEveryPrefix();
    void takesTheFirstSignerBeforeNougat();
    void demandsAttributes_data();
    void demandsAttributes();
    void findsTheCertificate();
    void refusesADamagedCertificate();
    void takesCertificatesOfAChain();
    void hasAMostOfCertificates();
    void hasAllErrors_data();
    void hasAllErrors();
    void spendsItsWork();
};

void TestSignatureBlockFile::knowsAlgorithmsFromALevelOn_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<int>("hash");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("forgotten"); // from this level to first; 0 when older levels do not know it either
    const auto row = [](const char *kind, Hash hash, int first, int forgotten) {
        QTest::addRow("%s %s", Digest::name(hash), kind) << QByteArray(kind) << int(hash) << first << forgotten;
    };
    row("RSA", Hash::Md5, 1, 0);
    row("RSA", Hash::Sha1, 1, 0);
    row("RSA", Hash::Sha224, 21, 9);
    row("RSA", Hash::Sha256, 18, 9);
    row("RSA", Hash::Sha384, 18, 0);
    row("RSA", Hash::Sha512, 18, 0);
    row("DSA", Hash::Md5, Newest, 0);
    row("DSA", Hash::Sha1, 1, 0);
    row("DSA", Hash::Sha224, 22, 0);
    row("DSA", Hash::Sha256, 22, 0);
    row("DSA", Hash::Sha384, Newest, 0);
    row("DSA", Hash::Sha512, Newest, 0);
    row("ECDSA", Hash::Md5, Newest, 0);
    row("ECDSA", Hash::Sha1, 18, 0);
    row("ECDSA", Hash::Sha224, 21, 0);
    row("ECDSA", Hash::Sha256, 18, 0);
    row("ECDSA", Hash::Sha384, 18, 0);
    row("ECDSA", Hash::Sha512, 18, 0);
}

void TestSignatureBlockFile::knowsAlgorithmsFromALevelOn()
{
    QFETCH(QByteArray, kind);
    QFETCH(int, hash);
    QFETCH(int, first);
    QFETCH(int, forgotten);
    const TestKey key = keyOf(kind);
    // Nothing changes at the other levels.
    QVector<int> levels{1, 35};
    for (const int changing : {9, 18, 21, 22, JarSignatureAlgorithm::SignedAttributesFrom})
        levels += {changing - 1, changing};
    for (const bool hasAttributes : {false, true}) {
        JarOptions options;
        options.signatureHash = Hash(hash);
        options.hasSignedAttributes = hasAttributes;
        const QByteArray block = jarSignatureBlock(signedFile, key, options);
        const int from = hasAttributes ? qMax(first, JarSignatureAlgorithm::SignedAttributesFrom) : first;
        for (const int level : std::as_const(levels)) {
            const bool isKnown = level >= from || (!hasAttributes && level < forgotten);
            const SignatureBlockFile::Result result = verify(block, {level, level});
            const Code refused = first == Newest ? Code::UnknownAlgorithm : Code::UnsupportedAlgorithm;
            QCOMPARE(result.code, isKnown ? Code::None : refused);
            QCOMPARE(result.certificate.isNull(), !isKnown);
            const bool isKnownFromThere = level >= from;
            QCOMPARE(verify(block, {level, Newest}).code == Code::None, isKnownFromThere);
        }
    }
}

void TestSignatureBlockFile::knowsIdentifiersOfSignatures_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QByteArray>("identifier");
    QTest::addColumn<int>("hash");
    QTest::addColumn<int>("first");
    const auto row = [](const char *name, const char *kind, const char *identifier, Hash hash, int first) {
        QTest::addRow("%s", name) << QByteArray(kind) << QByteArray(identifier) << int(hash) << first;
    };
    row("md5WithRSAEncryption", "RSA", "2a864886f70d010104", Hash::Md5, 21);
    row("sha1WithRSAEncryption", "RSA", "2a864886f70d010105", Hash::Sha1, 1);
    row("sha224WithRSAEncryption", "RSA", "2a864886f70d01010e", Hash::Sha224, 21);
    row("sha256WithRSAEncryption", "RSA", "2a864886f70d01010b", Hash::Sha256, 18);
    row("sha384WithRSAEncryption", "RSA", "2a864886f70d01010c", Hash::Sha384, 21);
    row("sha512WithRSAEncryption", "RSA", "2a864886f70d01010d", Hash::Sha512, 21);
    row("dsaWithSHA1", "DSA", "2a8648ce380403", Hash::Sha1, 9);
    row("dsa-with-SHA224", "DSA", "608648016503040301", Hash::Sha224, 21);
    row("dsa-with-SHA256", "DSA", "608648016503040302", Hash::Sha256, 21);
    row("ecdsa-with-SHA1", "ECDSA", "2a8648ce3d0401", Hash::Sha1, 18);
    row("ecdsa-with-SHA224", "ECDSA", "2a8648ce3d040301", Hash::Sha224, 21);
    row("ecdsa-with-SHA256", "ECDSA", "2a8648ce3d040302", Hash::Sha256, 21);
    row("ecdsa-with-SHA384", "ECDSA", "2a8648ce3d040303", Hash::Sha384, 21);
    row("ecdsa-with-SHA512", "ECDSA", "2a8648ce3d040304", Hash::Sha512, 21);
}

void TestSignatureBlockFile::knowsIdentifiersOfSignatures()
{
    QFETCH(QByteArray, kind);
    QFETCH(QByteArray, identifier);
    QFETCH(int, hash);
    QFETCH(int, first);
    JarOptions options;
    options.signatureAlgorithm = identifier;
    options.signedHash = Hash(hash);
    for (const Hash digest : {Hash::Md5, Hash::Sha1, Hash::Sha224, Hash::Sha256, Hash::Sha384, Hash::Sha512}) {
        options.signatureHash = digest;
        const QByteArray block = jarSignatureBlock(signedFile, keyOf(kind), options);
        if (digest != options.signedHash) {
            QCOMPARE(verify(block).code, Code::UnknownAlgorithm);
            continue;
        }
        QCOMPARE(verify(block, {first, Newest}).code, Code::None);
        if (first > 1)
            QCOMPARE(verify(block, {first - 1, Newest}).code, Code::UnsupportedAlgorithm);
    }
}

void TestSignatureBlockFile::refusesAnotherFile()
{
    for (const bool hasAttributes : {false, true}) {
        JarOptions options;
        options.hasSignedAttributes = hasAttributes;
        const QByteArray block = jarSignatureBlock(signedFile, TestKey::rsa(), options);
        for (int i = 0; i < signedFile.size(); ++i) {
            QByteArray other = signedFile;
            other[i] = char(other.at(i) ^ 1);
            QCOMPARE(verify(block, {24, Newest}, other).code, Code::BadSignature);
            QCOMPARE(verify(block, {24, Newest}, signedFile.left(i)).code, Code::BadSignature);
        }
    }
}

void TestSignatureBlockFile::refusesEveryFlippedByte_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<bool>("hasAttributes");
    QTest::addRow("RSA") << QByteArray("RSA") << false;
    QTest::addRow("RSA, attributes") << QByteArray("RSA") << true;
    QTest::addRow("DSA") << QByteArray("DSA") << false;
    QTest::addRow("ECDSA") << QByteArray("ECDSA") << false;
}

// No byte of a block with the signer's certificate alone is unprotected.
void TestSignatureBlockFile::refusesEveryFlippedByte()
{
    QFETCH(QByteArray, kind);
    QFETCH(bool, hasAttributes);
    JarOptions options;
    options.hasSignedAttributes = hasAttributes;
    options.certificate.extensionSize = 20;
    const QByteArray block = jarSignatureBlock(signedFile, keyOf(kind), options);
    QCOMPARE(verify(block).code, Code::None);
    const QVector<int> flips{0x01, 0x20, 0x80};
    const bool needsAllBits = kind == "RSA" && !hasAttributes;
    for (int i = 0; i < block.size(); ++i) {
        for (const int bits : needsAllBits ? flips : flips.mid(i % int(flips.size()), 1)) {
            QByteArray other = block;
            other[i] = char(other.at(i) ^ bits);
            const SignatureBlockFile::Result result = verify(other);
            if (result.code == Code::None)
                QFAIL(qPrintable(QStringLiteral("byte %1 ^ %2 is not protected").arg(i).arg(bits)));
            QVERIFY(result.certificate.isNull());
        }
    }
}

void TestSignatureBlockFile::refusesEveryPrefix()
{
    const QByteArray block = jarSignatureBlock(signedFile, TestKey::rsa());
    for (int size = 0; size < block.size(); ++size) {
        const QByteArray prefix(block.constData(), size);
        QCOMPARE(verify(prefix).code, Code::BadSignatureBlock);
    }
}

void TestSignatureBlockFile::takesTheFirstSignerBeforeNougat()
{
    JarOptions options;
    options.hasWrongInfoFirst = true;
    const QByteArray block = jarSignatureBlock(signedFile, TestKey::rsa(), options);
    QCOMPARE(verify(block, {23, Newest}).code, Code::BadSignature);
    QCOMPARE(verify(block, {24, Newest}).code, Code::None);
}

void TestSignatureBlockFile::demandsAttributes_data()
{
    QTest::addColumn<bool>("hasContentType");
    QTest::addColumn<bool>("hasMessageDigest");
    QTest::addColumn<int>("newest");
    QTest::addColumn<bool>("isRight");
    QTest::addRow("both") << true << true << Newest << true;
    QTest::addRow("no type") << false << true << 24 << false;
    QTest::addRow("no type before Nougat") << false << true << 23 << true;
    QTest::addRow("no digest") << true << false << 24 << false;
    QTest::addRow("no digest before Nougat") << true << false << 23 << false;
}

void TestSignatureBlockFile::demandsAttributes()
{
    QFETCH(bool, hasContentType);
    QFETCH(bool, hasMessageDigest);
    QFETCH(int, newest);
    QFETCH(bool, isRight);
    JarOptions options;
    options.hasSignedAttributes = true;
    options.hasContentType = hasContentType;
    options.hasMessageDigest = hasMessageDigest;
    QCOMPARE(codeOf(TestKey::rsa(), options, {19, newest}), isRight ? Code::None : Code::BadAttribute);
}

void TestSignatureBlockFile::findsTheCertificate()
{
    const TestKey key = TestKey::rsa();
    JarOptions options;
    CertificateFields others;
    others.serial = QByteArray("\x02", 1);
    options.hasCertificate = false;
    options.otherCertificates = {TestKey::rsa(2).certificate(others), key.certificate()};
    const SignatureBlockFile::Result result = verify(jarSignatureBlock(signedFile, key, options));
    QCOMPARE(result.code, Code::None);
    QCOMPARE(result.certificate.der(), key.certificate());
    options.otherCertificates.removeLast();
    QCOMPARE(codeOf(key, options), Code::NoCertificate);
    others.serial = QByteArray("\x01", 1);
    others.issuerName = "test signer"; // another name, although X.509 compares names without their case
    options.otherCertificates = {key.certificate(others)};
    QCOMPARE(codeOf(key, options), Code::NoCertificate);
    // The first of the issuer and the number counts.
    options.otherCertificates = {TestKey::rsa(2).certificate(), key.certificate()};
    QCOMPARE(codeOf(key, options), Code::BadSignature);
    options.otherCertificates = {TestKey::ec().certificate()};
    QCOMPARE(codeOf(key, options), Code::BadSignature);
}

void TestSignatureBlockFile::refusesADamagedCertificate()
{
    const TestKey key = TestKey::rsa();
    JarOptions options;
    options.certificate.issuerKeyId = "id";
    options.certificateDer = key.certificate(options.certificate, TestKey::rsa(2));
    QCOMPARE(codeOf(key, options), Code::BadCertificate);
    options.certificate.issuerKeyId = QByteArray();
    options.certificate.issuerName = "Nobody";
    options.certificateDer = key.certificate(options.certificate, TestKey::rsa(2));
    QCOMPARE(codeOf(key, options), Code::BadCertificate);
    options.certificateDer = key.certificate(options.certificate);
    QCOMPARE(codeOf(key, options), Code::None);
}

void TestSignatureBlockFile::takesCertificatesOfAChain()
{
    const TestKey key = TestKey::rsa();
    const TestKey authority = TestKey::rsa(2);
    CertificateFields fields;
    fields.commonName = "Authority";
    JarOptions options;
    options.certificate.issuerName = "Authority";
    options.certificateDer = key.certificate(options.certificate, authority);
    options.otherCertificates = {authority.certificate(fields)};
    QCOMPARE(codeOf(key, options), Code::None);
    options.otherCertificates = {TestKey::rsa(3).certificate(fields)};
    QCOMPARE(codeOf(key, options), Code::BadCertificate);
    options.otherCertificates = {TestKey::rsa(3).certificate(fields), authority.certificate(fields)};
    QCOMPARE(codeOf(key, options), Code::None);

    // Without the issuer's certificate, the signer's has to name the issuer's key.
    options.otherCertificates.clear();
    QCOMPARE(codeOf(key, options), Code::BadCertificate);
    options.certificate.issuerKeyId = "id";
    options.certificateDer = key.certificate(options.certificate, authority);
    QCOMPARE(codeOf(key, options), Code::None);

    // Only bytes of the issuer's certificate are unprotected; the signer's stays the same.
    options.otherCertificates = {authority.certificate(fields)};
    const QByteArray block = jarSignatureBlock(signedFile, key, options);
    const int begin = int(block.indexOf(options.otherCertificates.first()));
    const int end = begin + int(options.otherCertificates.first().size());
    int passed = 0;
    for (int i = 0; i < block.size(); ++i) {
        QByteArray other = block;
        other[i] = char(other.at(i) ^ 1);
        const SignatureBlockFile::Result result = verify(other);
        if (result.code != Code::None)
            continue;
        ++passed;
        QCOMPARE(result.certificate.der(), options.certificateDer);
        QVERIFY2(begin <= i && i < end, qPrintable(QStringLiteral("byte %1 is not protected").arg(i)));
    }
    QVERIFY(passed > 0);
}

void TestSignatureBlockFile::hasAMostOfCertificates()
{
    const QByteArray other = TestKey::ec().certificate();
    JarOptions options;
    for (int i = 1; i < SignatureBlockFile::MaxCertificates; ++i)
        options.otherCertificates.append(other);
    QCOMPARE(codeOf(TestKey::rsa(), options), Code::None);
    options.otherCertificates.append(other);
    QCOMPARE(codeOf(TestKey::rsa(), options), Code::TooCostly);
}

void TestSignatureBlockFile::hasAllErrors_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("detail");
    const auto row = [](const char *name, const char *from, const char *to, Code code, const char *detail) {
        QTest::addRow("%s", name) << QByteArray::fromHex(from) << QByteArray::fromHex(to) << int(code)
                                  << QString::fromLatin1(detail);
    };
    row("type", "2a864886f70d010702", "2a864886f70d010701", Code::BadSignatureBlock, "");
    row("version", "020101310f", "020103310f", Code::BadSignatureBlock, "version");
    row("content", "300b06092a864886f70d010701", "300b06092a864886f70d010703", Code::BadSignatureBlock,
        "type of the content");
    row("signer's version", "020101301b", "020103301b", Code::BadSignatureBlock, "version of the signer");
    row("list of digests", "310f300d0609608648016503040201", "310f300d0609608648016503040202", Code::BadSignatureBlock,
        "list of digests");
    row("list's parameters", "310f300d06096086480165030402010500", "310f300d06096086480165030402010400",
        Code::BadSignatureBlock, "list of digests");
    row("signature's parameters", "06092a864886f70d0101010500048201", "06092a864886f70d0101010400048201",
        Code::UnknownAlgorithm, "");
}

void TestSignatureBlockFile::hasAllErrors()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QFETCH(int, code);
    QByteArray block = jarSignatureBlock(signedFile, TestKey::rsa());
    QCOMPARE(block.count(from), 1);
    block.replace(from, to);
    const SignatureBlockFile::Result result = verify(block);
    QCOMPARE(result.code, Code(code));
    QTEST(result.detail, "detail");
}

void TestSignatureBlockFile::spendsItsWork()
{
    const QByteArray block = jarSignatureBlock(signedFile, TestKey::rsa());
    Budget enough(1'000'000, 0);
    QCOMPARE(SignatureBlockFile::verify(ByteView(block), ByteView(signedFile), {}, &enough).code,
             Code::UnsupportedAlgorithm);
    const qint64 decoding = SignatureBlockFile::WorkPerByte * block.size();
    QCOMPARE(enough.workLeft(), 1'000'000 - decoding);
    for (qint64 work = 0; work < 1'000'000; work += 5'000) {
        Budget budget(work, 0);
        const Code code = SignatureBlockFile::verify(ByteView(block), ByteView(signedFile), {24, Newest}, &budget).code;
        if (code == Code::None) {
            QVERIFY(work > decoding);
            return;
        }
        QCOMPARE(code, Code::TooCostly);
    }
    QFAIL("a signature takes more than a million");
}

QTEST_GUILESS_MAIN(TestSignatureBlockFile)
#include "tst_signatureblockfile.moc"
