// SPDX-License-Identifier: LGPL-2.1-or-later
#include "GuardedBytes.h"
#include "JarSigner.h"

#include "limits/Budget.h"
#include "trust/jar/JarDigests.h"
#include "trust/jar/JarManifest.h"

#include <QtTest>

#include <limits>

using namespace SorrelKit;
using Fault = JarManifest::Fault;

namespace {

constexpr qint64 Much = std::numeric_limits<qint64>::max();

JarManifest parsed(const QByteArray &file)
{
    Budget budget(Much, Much);
    return JarManifest(file, &budget);
}

QByteArray mainOf(const JarManifest &manifest)
{
    return manifest.mainSection().toByteArray();
}

QByteArray section(const JarManifest &manifest, int number)
{
    return manifest.section(number).toByteArray();
}

QByteArray value(const QByteArray &text, const char *name)
{
    return JarManifest::value(ByteView(text), name);
}

QByteArray sections(int count)
{
    QByteArray file = "V: 1\n\n";
    for (int i = 0; i < count; ++i)
        file += "Name: " + QByteArray::number(i) + "\n\n";
    return file;
}

QByteArray algorithms(const QByteArray &text, SdkRange sdk)
{
    QByteArray names;
    for (const JarDigest &each : jarDigests(ByteView(text), "-Digest", sdk))
        names += Digest::name(each.algorithm) + QByteArray(each.value.isEmpty() ? "! " : " ");
    return names.trimmed();
}

} // namespace

/// JarManifest, and the digests in its sections.
class TestJarManifest : public QObject
{
    Q_OBJECT

private slots:
    void findsSections_data();
    void findsSections();
    void foldsLines();
    void excludesEmptyLinesFromSections();
    void ignoresTheCaseOfNames();
    void takesTheFirstAttributeOfAName();
    void acceptsLinesWithoutAValue();
    void findsEverySection();
    void refusesSectionsWithoutAName_data();
    void refusesSectionsWithoutAName();
    void refusesTwoSectionsOfOneName();
    void hasAMostOfSections();
    void spendsItsWork();
    void readsEveryPrefix();
    void choosesDigests_data();
    void choosesDigests();
};

void TestJarManifest::findsSections_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::addRow("CR LF") << QByteArray("\r\n");
    QTest::addRow("LF") << QByteArray("\n");
    QTest::addRow("CR") << QByteArray("\r");
}

void TestJarManifest::findsSections()
{
    QFETCH(QByteArray, end);
    const QByteArray head = "V: 1" + end + "W: 2" + end + end;
    const QByteArray first = "Name: a" + end + "X: 3" + end + end;
    const QByteArray second = "Name: b" + end;
    const JarManifest manifest = parsed(head + first + second);
    QCOMPARE(manifest.fault(), Fault::None);
    QCOMPARE(mainOf(manifest), head);
    QCOMPARE(manifest.count(), 2);
    QCOMPARE(section(manifest, 0), first);
    QCOMPARE(section(manifest, 1), second);
    QCOMPARE(manifest.name(0), QByteArray("a"));
    QCOMPARE(manifest.name(1), QByteArray("b"));
    QCOMPARE(value(head, "W"), QByteArray("2"));
    QCOMPARE(value(first, "X"), QByteArray("3"));
    QVERIFY(value(second, "X").isNull());
}

void TestJarManifest::foldsLines()
{
    const QByteArray name(200, 'n');
    const QByteArray line = fixture::jarLine("Name", name);
    QCOMPARE(line.indexOf("\r\n"), 70);
    QCOMPARE(line.indexOf("\r\n", 72), 72 + 70);
    const JarManifest manifest = parsed("V: 1\n\n" + line);
    QCOMPARE(manifest.count(), 1);
    QCOMPARE(manifest.name(0), name);
    QCOMPARE(section(manifest, 0), line);
    // A continuation has no line before it at the start of a section.
    QCOMPARE(value(" x\nV: 1\n", "V"), QByteArray("1"));
    QCOMPARE(value("V: 1\n 2\n  3\n \n", "V"), QByteArray("12 3"));
}

void TestJarManifest::excludesEmptyLinesFromSections()
{
    const JarManifest manifest = parsed("\n\r\nV: 1\n\n\n\nName: a\n\n\n");
    QCOMPARE(mainOf(manifest), QByteArray("V: 1\n\n"));
    QCOMPARE(manifest.count(), 1);
    QCOMPARE(section(manifest, 0), QByteArray("Name: a\n\n"));
    QCOMPARE(parsed("\n\n").count(), 0);
    QVERIFY(parsed("\n\n").mainSection().isEmpty());
}

void TestJarManifest::ignoresTheCaseOfNames()
{
    QCOMPARE(parsed("V: 1\n\nnAmE: a\n").name(0), QByteArray("a"));
    QCOMPARE(value("sha1-DIGEST: x\n", "SHA1-Digest"), QByteArray("x"));
    QVERIFY(value(QByteArray("V\0: x\n", 6), "V").isNull());
}

void TestJarManifest::takesTheFirstAttributeOfAName()
{
    QCOMPARE(value("V: 1\nv: 2\n", "V"), QByteArray("1"));
    QCOMPARE(parsed("V: 1\n\nName: a\nName: b\n").name(0), QByteArray("a"));
}

void TestJarManifest::acceptsLinesWithoutAValue()
{
    QCOMPARE(value("V\nW:1\nX: 2: 3\n", "X"), QByteArray("2: 3"));
    QCOMPARE(value("V\n", "V"), QByteArray(""));
    QVERIFY(!value("V\n", "V").isNull());
    QVERIFY(value("W:1\n", "W").isNull());
    QCOMPARE(parsed("V: 1\n\nName\n").name(0), QByteArray());
}

void TestJarManifest::findsEverySection()
{
    const JarManifest manifest = parsed(sections(1000));
    for (int i = 0; i < 1000; ++i)
        QCOMPARE(manifest.find(ByteView(manifest.name(i))), i);
    QCOMPARE(manifest.find(ByteView()), -1);
    const QByteArray missing = "1000";
    QCOMPARE(manifest.find(ByteView(missing)), -1);
}

void TestJarManifest::refusesSectionsWithoutAName_data()
{
    QTest::addColumn<QByteArray>("section");
    QTest::addRow("another attribute") << QByteArray("X: 1\nName: a\n");
    QTest::addRow("a continuation") << QByteArray(" Name: a\n");
    QTest::addRow("no blank") << QByteArray("Name:a\n");
}

void TestJarManifest::refusesSectionsWithoutAName()
{
    QFETCH(QByteArray, section);
    const JarManifest manifest = parsed("V: 1\n\nName: b\n\n" + section);
    QCOMPARE(manifest.fault(), Fault::NoName);
    QCOMPARE(manifest.faultDetail(), QStringLiteral("2"));
}

void TestJarManifest::refusesTwoSectionsOfOneName()
{
    const JarManifest manifest = parsed("V: 1\n\nName: b\n\nName: a\n\nName: b\n");
    QCOMPARE(manifest.fault(), Fault::Duplicate);
    QCOMPARE(manifest.faultDetail(), QStringLiteral("b"));
}

void TestJarManifest::hasAMostOfSections()
{
    QCOMPARE(parsed(sections(JarManifest::MaxSections)).fault(), Fault::None);
    QCOMPARE(parsed(sections(JarManifest::MaxSections + 1)).fault(), Fault::TooCostly);
}

void TestJarManifest::spendsItsWork()
{
    const QByteArray file = sections(100);
    const qint64 work =
        JarManifest::WorkPerByte * file.size() + Budget::ValueWork * 100 + JarManifest::MainWorkPerByte * 6;
    Budget enough(work, Much);
    const JarManifest manifest(file, &enough);
    QCOMPARE(manifest.fault(), Fault::None);
    QCOMPARE(enough.workLeft(), 0);
    QCOMPARE(Much - enough.bytesLeft(), manifest.heldBytes());
    for (const bool isWork : {true, false}) {
        Budget less(isWork ? work - 1 : work, isWork ? Much : manifest.heldBytes() - 1);
        const JarManifest refused(file, &less);
        QCOMPARE(refused.fault(), Fault::TooCostly);
        less.releaseBytes(refused.heldBytes());
        QCOMPARE(less.bytesLeft(), isWork ? Much : manifest.heldBytes() - 1);
    }
}

void TestJarManifest::readsEveryPrefix()
{
    const QByteArray file = "V: 1\r\n 2\r\n\r\nName: a\r\nSHA1-Digest: x\r\n y\r\n\r\nName: b\r\n\r\n";
    for (int size = 0; size <= file.size(); ++size) {
        const fixture::GuardedBytes guarded(file.left(size));
        const ByteView view = guarded.atPageEnd();
        const JarManifest manifest =
            parsed(QByteArray::fromRawData(reinterpret_cast<const char *>(view.data()), int(view.size())));
        int total = int(manifest.mainSection().size());
        for (int i = 0; i < manifest.count(); ++i)
            total += int(manifest.section(i).size());
        QVERIFY(total == size || manifest.fault() == Fault::NoName);
        jarDigests(view, "-Digest", SdkRange());
    }
}

void TestJarManifest::choosesDigests_data()
{
    QTest::addColumn<QByteArray>("section");
    QTest::addColumn<int>("min");
    QTest::addColumn<int>("max");
    QTest::addColumn<QByteArray>("algorithms");
    const QByteArray sha1 = "SHA1-Digest: " + QByteArray(20, 'a').toBase64() + '\n';
    const QByteArray sha256 = "SHA-256-Digest: " + QByteArray(32, 'a').toBase64() + '\n';
    const QByteArray sha512 = "SHA-512-Digest: " + QByteArray(64, 'a').toBase64() + '\n';
    const QByteArray md5 = "MD5-Digest: " + QByteArray(16, 'a').toBase64() + '\n';
    const QByteArray all = sha1 + sha256 + sha512 + md5;
    const auto row = [](const char *name, const QByteArray &section, int min, int max, const char *algorithms) {
        QTest::addRow("%s", name) << section << min << max << QByteArray(algorithms);
    };
    row("the strongest", all, 18, 30, "SHA-512");
    row("SHA1 before", all, 8, 17, "SHA-1");
    row("both", all, 17, 18, "SHA-512 SHA-1");
    row("the same", sha1, 17, 18, "SHA-1");
    row("missing before", sha256, 17, 18, "");
    row("missing from then on", md5 + "Digest-Algorithms: MD5\n", 17, 18, "");
    row("listed", all + "Digest-Algorithms: MD5 SHA1\n", 8, 17, "MD5");
    row("listed in any case", all + "digest-algorithms: \t X  md5\n", 8, 17, "MD5");
    row("listed for later", all + "Digest-Algorithms: SHA-512 SHA-256\n", 8, 17, "SHA-256");
    row("listed for these", all + "Digest-Algorithms: SHA-512 SHA-256\n", 9, 17, "SHA-512");
    row("none listed", all + "Digest-Algorithms: \n", 8, 17, "");
    row("SHA", "SHA-Digest: " + QByteArray(20, 'a').toBase64() + '\n', 8, 17, "SHA-1");
    row("SHA from then on", "SHA-Digest: " + QByteArray(20, 'a').toBase64() + '\n', 18, 30, "");
    row("another spelling", "SHA-1-Digest: " + QByteArray(20, 'a').toBase64() + '\n', 1, 30, "");
    row("MD5 from then on", md5, 18, 30, "");
    row("no padding", "SHA1-Digest: " + QByteArray(20, 'a').toBase64(QByteArray::OmitTrailingEquals) + '\n', 18, 30,
        "SHA-1");
    row("a blank", "SHA1-Digest:  " + QByteArray(20, 'a').toBase64() + '\n', 18, 30, "SHA-1!");
    row("no Base64", "SHA1-Digest: !" + QByteArray(20, 'a').toBase64() + '\n', 18, 30, "SHA-1!");
    row("too short", "SHA1-Digest: " + QByteArray(19, 'a').toBase64() + '\n', 18, 30, "SHA-1!");
}

void TestJarManifest::choosesDigests()
{
    QFETCH(QByteArray, section);
    QFETCH(int, min);
    QFETCH(int, max);
    QTEST(algorithms(section, {min, max}), "algorithms");
}

QTEST_GUILESS_MAIN(TestJarManifest)
#include "tst_jarmanifest.moc"
