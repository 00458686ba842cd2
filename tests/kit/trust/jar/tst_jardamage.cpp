// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "JarCheck.h"
#include "RawZip.h"

#include "archive/ZipArchive.h"
#include "limits/Budget.h"
#include "trust/jar/JarVerifier.h"

#include <QtTest>

using namespace SorrelKit;
using namespace fixture;
using Code = SignatureIssue::Code;
using Hash = HashAlgorithm;

namespace {

const QString manifestName = QStringLiteral("META-INF/MANIFEST.MF");
const QString blockName = QStringLiteral("META-INF/CERT.RSA");

} // namespace

/// Damaged and hostile packages that are signed by v1.
class TestJarDamage : public QObject
{
    Q_OBJECT

private slots:
    void refusesEveryChangedByte_data();
    void refusesEveryChangedByte();
    void refusesEveryPrefix_data();
    void refusesEveryPrefix();
    void refusesBytesAroundTheArchive();
    void refusesTwoMembersOfOneName();
    void refusesNamesThatAreNoText();
    void takesAsManySectionsAsMembers();
    void endsWithItsBudget();
    void boundsManifests();
    void boundsBlocks();
};

void TestJarDamage::refusesEveryChangedByte_data()
{
    QTest::addColumn<bool>("hasManifestDigest");
    QTest::addColumn<bool>("hasMainDigest");
    QTest::addColumn<bool>("hasTwoDigests");
    QTest::addRow("digest of the manifest") << true << false << false;
    QTest::addRow("digests of everything") << true << true << false;
    QTest::addRow("digests of sections") << false << true << false;
    QTest::addRow("two digests") << true << false << true;
}

void TestJarDamage::refusesEveryChangedByte()
{
    QFETCH(bool, hasManifestDigest);
    QFETCH(bool, hasMainDigest);
    QFETCH(bool, hasTwoDigests);
    JarOptions options;
    options.hasManifestDigest = hasManifestDigest;
    options.hasMainDigest = hasMainDigest;
    if (hasTwoDigests)
        options.digests = {Hash::Sha1, Hash::Sha256};
    // Only sections with digests of their own are parsed where they are changed; else any other byte changes a digest,
    // so the bits take turns there.
    const bool needsAllBits = !hasManifestDigest;
    const QVector<int> flips{0x01, 0x20, 0x80};
    const QVector<Member> members = signedMembers(options);
    QVERIFY(verifyJar(members).isVerified());
    for (int number = 0; number < members.size(); ++number) {
        if (members.at(number).name == blockName)
            continue; // see TestSignatureBlockFile
        QVector<Member> others = members;
        QByteArray &content = others[number].content;
        for (int i = 0; i < content.size(); ++i) {
            for (const int bits : needsAllBits ? flips : flips.mid(i % int(flips.size()), 1)) {
                const char before = content.at(i);
                content[i] = char(before ^ bits);
                if (verifyJar(others).isVerified())
                    QFAIL(qPrintable(QStringLiteral("%1: byte %2 ^ %3").arg(others[number].name).arg(i).arg(bits)));
                content[i] = before;
            }
        }
        for (int i = 0; i < members.at(number).name.size(); ++i) {
            others[number].name[i] = QChar(members.at(number).name.at(i).unicode() ^ 1);
            QVERIFY(!verifyJar(others).isVerified());
            others[number].name = members.at(number).name;
        }
    }
}

void TestJarDamage::refusesEveryPrefix_data()
{
    QTest::addColumn<QString>("name");
    for (const Member &member : signedMembers())
        QTest::addRow("%s", qPrintable(member.name)) << member.name;
    QTest::addRow("the archive") << QString();
}

void TestJarDamage::refusesEveryPrefix()
{
    QFETCH(QString, name);
    const QVector<Member> members = signedMembers();
    const QByteArray whole = zip(members, Compression::Stored);
    QVector<Member> copy = members;
    const int size = int(name.isNull() ? whole.size() : contentOf(copy, name).size());
    for (int i = 0; i < size; ++i) {
        if (name.isNull()) {
            ZipArchive archive(whole.left(i));
            Budget budget(JarWork, JarBytes);
            QVERIFY(!archive.open() || !JarVerifier(archive, &budget).verify({24, NewestSdk}, {}).isVerified());
        } else {
            QVector<Member> others = members;
            contentOf(others, name).truncate(i);
            QVERIFY(!verifyJar(others).isVerified());
        }
    }
}

void TestJarDamage::refusesBytesAroundTheArchive()
{
    const auto errorsOf = [](const QByteArray &package) {
        ZipArchive archive(package);
        Budget budget(JarWork, JarBytes);
        QStringList messages;
        if (!archive.open())
            return QStringList{"no archive"};
        const SchemeResult result = JarVerifier(archive, &budget).verify({24, NewestSdk}, {});
        for (const SignatureIssue &issue : result.issues.errors())
            messages.append(issue.message());
        return messages;
    };
    const QStringList begin{"a member cannot be read: the archive does not begin with a member"};
    const QStringList end{"a member cannot be read: the archive does not end with its comment"};
    const QByteArray good = zip(signedMembers(), Compression::Stored);
    QCOMPARE(errorsOf(good), QStringList());
    QCOMPARE(errorsOf("dex\n" + good), begin);
    QCOMPARE(errorsOf(good + 'x'), end);

    constexpr int EndSize = 22;
    QByteArray withComment = good + "comment";
    withComment[good.size() - 2] = 7;
    QCOMPARE(errorsOf(withComment), QStringList());
    withComment[good.size() - 2] = 6;
    QCOMPARE(errorsOf(withComment), end);
    withComment[good.size() - 2] = 8;
    QCOMPARE(errorsOf(withComment), end);

    // The offsets count from the first byte of the file, so only the signature of the first member is missing.
    QByteArray moved = "dex\n" + good;
    const int endAt = int(moved.size()) - EndSize;
    const auto add = [&moved](int at) { poke32(moved, at, peek32(moved, at) + 4); };
    add(endAt + 16);
    int at = int(peek32(moved, endAt + 16));
    while (peek32(moved, at) == 0x02014b50) {
        add(at + 42);
        at += 46 + peek16(moved, at + 28) + peek16(moved, at + 30) + peek16(moved, at + 32);
    }
    QCOMPARE(at, endAt);
    QCOMPARE(errorsOf(moved), begin);
}

void TestJarDamage::refusesTwoMembersOfOneName()
{
    QVector<RawMember> members;
    for (const Member &each : signedMembers())
        members.append({each.name.toUtf8(), each.content});
    QVERIFY(verifyJar(rawZip(members)).isVerified());
    for (int i = 0; i < members.size(); ++i) {
        QVector<RawMember> others = members;
        others.append(others.at(i));
        const SchemeResult result = verifyJar(rawZip(others));
        QCOMPARE(errorsOf(result), QString::fromUtf8(members.at(i).name) + QStringLiteral(": a member occurs twice"));
    }
}

void TestJarDamage::refusesNamesThatAreNoText()
{
    JarOptions options;
    options.editManifest = [](QByteArray &bytes) { bytes.replace("Name: a.txt", "Name: \xff.txt"); };
    QVector<RawMember> raw;
    for (const Member &each : signedMembers(options))
        raw.append({each.name.toUtf8(), each.content});
    raw.first().name = "\xff.txt";
    const QString error = QString::fromUtf8("ÿ.txt: a member cannot be read: the name is no text");
    QCOMPARE(errorsOf(verifyJar(rawZip(raw))), error);
}

void TestJarDamage::takesAsManySectionsAsMembers()
{
    constexpr int Members = 0xffff - 3; // and the three files of the signature
    QVector<Member> members;
    for (int i = 0; i < Members; ++i)
        members.append({QStringLiteral("res/layout/layout_of_number_%1.xml").arg(i), QByteArray::number(i)});
    for (const bool hasManifestDigest : {true, false}) {
        JarOptions options;
        options.hasManifestDigest = hasManifestDigest;
        options.hasMainDigest = true;
        QVector<RawMember> raw;
        for (const Member &each : signedJar(members, TestKey::rsa(), options))
            raw.append({each.name.toUtf8(), each.content});
        const QByteArray package = rawZip(raw);
        const SchemeResult result = verifyJar(package, {18, NewestSdk});
        QCOMPARE(errorsOf(result), QString());
        QVERIFY(result.isVerified());
    }
}

void TestJarDamage::endsWithItsBudget()
{
    const QByteArray package = zip(signedMembers());
    ZipArchive archive(package);
    QVERIFY(archive.open());
    const auto isVerified = [&archive](qint64 work, qint64 bytes) {
        Budget budget(work, bytes);
        const SchemeResult result = JarVerifier(archive, &budget).verify({24, NewestSdk}, {});
        const bool isTooCostly =
            !result.issues.errors().isEmpty() && result.issues.errors().first().code() == Code::TooCostly;
        if (result.isVerified() == isTooCostly || budget.bytesLeft() != bytes)
            qFatal("the reason is another one: %s", qPrintable(errorsOf(result)));
        return result.isVerified();
    };
    qint64 work = 0;
    for (; !isVerified(work, JarBytes); work += 97)
        QVERIFY(work < 1'000'000);
    QVERIFY(work > 10'000);
    qint64 bytes = 0;
    for (; !isVerified(JarWork, bytes); bytes += 7)
        QVERIFY(bytes < 100'000);
    QVERIFY(bytes > 1'000);
}

void TestJarDamage::boundsManifests()
{
    for (const bool isTooLong : {false, true}) {
        JarOptions options;
        options.editManifest = [isTooLong](QByteArray &bytes) {
            bytes += QByteArray(int(JarVerifier::MaxManifestBytes - bytes.size()) + int(isTooLong), '\n');
        };
        options.hasSectionDigests = false;
        options.editSignatureFile = [](QByteArray &bytes) {
            for (const Member &each : unsignedMembers())
                bytes += jarLine("Name", each.name.toUtf8()) + "\r\n";
        };
        const SchemeResult result = verifyJar(zip(signedMembers(options)));
        QCOMPARE(errorsOf(result),
                 isTooLong ? manifestName + QStringLiteral(": verification takes too much") : QString());
    }
}

void TestJarDamage::boundsBlocks()
{
    for (const bool isTooLong : {false, true}) {
        JarOptions options;
        options.editBlock = [isTooLong](QByteArray &bytes) {
            bytes += QByteArray(int(JarVerifier::MaxBlockBytes - bytes.size()) + int(isTooLong), '\0');
        };
        const SchemeResult result = verifyJar(zip(signedMembers(options)));
        QCOMPARE(errorsOf(result), isTooLong ? blockName + QStringLiteral(": verification takes too much") : QString());
    }
}

QTEST_GUILESS_MAIN(TestJarDamage)
#include "tst_jardamage.moc"
