// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Bounds.h"
#include "RawZip.h"
#include "SigningBlockBuilder.h"
#include "archive/ZipArchive.h"
#include "format/AndroidAttributes.h"

#include <SorrelKit/PackageDiff.h>

#include <QtTest>

using namespace fixture;
using namespace SorrelKit;

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

fixture::Attribute text(const char *name, const char *value)
{
    return androidText(latin(name), latin(value));
}

fixture::Attribute number(const char *name, int value)
{
    return androidValue(latin(name), Integer, value);
}

fixture::Attribute boolean(const char *name, bool value)
{
    return androidValue(latin(name), Boolean, value ? -1 : 0);
}

/// A manifest of org.example.app that a test fills.
class ManifestText
{
public:
    explicit ManifestText(const QVector<fixture::Attribute> &own = {}, const char *package = "org.example.app")
    {
        m_builder.attributeId(latin("name"), Attr::Name)
            .attributeId(latin("exported"), Attr::Exported)
            .attributeId(latin("permission"), Attr::Permission)
            .attributeId(latin("required"), Attr::Required)
            .attributeId(latin("label"), Attr::Label)
            .attributeId(latin("glEsVersion"), Attr::GlEsVersion)
            .attributeId(latin("minSdkVersion"), Attr::MinSdkVersion)
            .attributeId(latin("targetSdkVersion"), Attr::TargetSdkVersion)
            .attributeId(latin("versionCode"), Attr::VersionCode)
            .attributeId(latin("versionName"), Attr::VersionName)
            .startNamespace(latin("android"), androidUri);
        QVector<fixture::Attribute> attributes{plainText(latin("package"), latin(package))};
        attributes += own;
        m_builder.start(latin("manifest"), attributes);
    }

    ManifestText &add(const char *element, const QVector<fixture::Attribute> &attributes)
    {
        m_builder.empty(latin(element), attributes);
        return *this;
    }
    ManifestText &application(const QVector<fixture::Attribute> &attributes = {})
    {
        m_builder.start(latin("application"), attributes);
        m_isOpen = true;
        return *this;
    }
    ManifestText &launcher(const QVector<fixture::Attribute> &attributes)
    {
        m_builder.start(latin("activity"), attributes).launcherFilter().end(latin("activity"));
        return *this;
    }
    QByteArray build()
    {
        if (m_isOpen)
            m_builder.end(latin("application"));
        return m_builder.end(latin("manifest")).build();
    }

private:
    XmlBuilder m_builder;
    bool m_isOpen = false;
};

QByteArray packageOf(ManifestText manifest, const QVector<Member> &others = {})
{
    return fixture::package(emptyTable(), manifest.build(), others);
}

PackageDiff diffOf(const QByteArray &before, const QByteArray &after)
{
    PackageDevice beforeDevice(before);
    PackageDevice afterDevice(after);
    const Package beforePackage(&beforeDevice);
    const Package afterPackage(&afterDevice);
    return PackageDiff(beforePackage, afterPackage);
}

PackageDiff diffOf(ManifestText before, ManifestText after)
{
    return diffOf(packageOf(std::move(before)), packageOf(std::move(after)));
}

/// "+name=after", "-name=before", "~name=before>after".
QStringList textsOf(const QList<TextChange> &changes)
{
    QStringList texts;
    for (const TextChange &change : changes) {
        const QString values[] = {change.after(), change.before(), change.before() + QLatin1Char('>') + change.after()};
        const int kind = int(change.kind());
        texts.append(QLatin1Char("+-~"[kind]) + change.name() + QLatin1Char('=') + values[kind]);
    }
    return texts;
}

QStringList textsOf(const QList<ComponentChange> &changes)
{
    QStringList texts;
    for (const ComponentChange &change : changes) {
        const Component component = change.kind() == TextChange::Kind::Removed ? change.before() : change.after();
        texts.append(latin(change.isOpened() ? "!" : "") + QLatin1Char("+-~"[int(change.kind())])
                     + component.name().section(QLatin1Char('.'), -1));
    }
    return texts;
}

QStringList textsOf(const QList<MemberChange> &changes)
{
    QStringList texts;
    for (const MemberChange &change : changes)
        texts.append(QLatin1Char("+-~"[int(change.kind())]) + change.package() + QLatin1Char(':') + change.path());
    return texts;
}

/// A package for Android 9 and later, to be signed.
QByteArray unsignedPackage(const QByteArray &content = "1")
{
    return packageOf(ManifestText().add("uses-sdk", {number("minSdkVersion", 28)}), {{latin("a"), content}});
}

PackageDiff signedDiffOf(const QByteArray &before, const QByteArray &after)
{
    PackageDevice beforeDevice(before);
    PackageDevice afterDevice(after);
    const Package beforePackage(&beforeDevice);
    const Package afterPackage(&afterDevice);
    return PackageDiff(beforePackage, afterPackage, Signatures(beforePackage), Signatures(afterPackage));
}

QByteArray signedByV3(const BlockSigner &signer, const QByteArray &content = "1")
{
    return SigningBlockBuilder(unsignedPackage(content)).v3({signer}).build();
}

/// The second key, with a lineage that begins with the first one.
BlockSigner rotatedSigner()
{
    const TestKey first = TestKey::rsa(1);
    const TestKey second = TestKey::rsa(2);
    BlockSigner signer(second);
    return signer.attribute(SigningBlockBuilder::LineageAttribute,
                            lineage({{first, first.certificate()}, {second, signer.certificates.constFirst()}}));
}

QByteArray splitOf(const char *name, const QVector<Member> &members, const char *package = "org.example.app")
{
    const QByteArray manifest = XmlBuilder::manifest()
                                    .empty(latin("manifest"), {plainText(latin("package"), latin(package)),
                                                               plainText(latin("split"), latin(name))})
                                    .build();
    return fixture::package(emptyTable(), manifest, members);
}

QByteArray membersWithNames(int count, char first)
{
    QVector<RawMember> members;
    for (int i = 0; i < count; ++i) {
        RawMember member;
        member.name = first + QByteArray::number(i).rightJustified(99, '0');
        member.headerAt = 0;
        member.crc = first;
        members.append(member);
    }
    return rawZip(members);
}

} // namespace

class TestPackageDiff : public QObject
{
    Q_OBJECT

private slots:
    void equalPackages();
    void anotherApplication();
    void facts();
    void permissions();
    void features();
    void components();
    void launchers();
    void labels();
    void nativeAbis();
    void members();
    void otherBytes();
    void sets();
    void aSetAndAPackage();
    void unsignedPackagesAreUnverified();
    void signers_data();
    void signers();
    void schemes();
    void signersOfASet();
    void packagesThatCannotBeRead();
    void damagedPackages();
    void directoriesUpToTheCeiling();
    void bytesUpToTheCeiling();
    void boundsHold_data();
    void boundsHold();
};

void TestPackageDiff::equalPackages()
{
    const QByteArray bytes = packageOf(ManifestText().add("uses-permission", {text("name", "p")}), {{latin("a"), "1"}});
    const PackageDiff diff = diffOf(bytes, bytes);
    QVERIFY(diff.isEmpty());
    QVERIFY(diff.isComplete());
    QVERIFY(diff.isSameApplication());
    QVERIFY(!diff.hasOtherBytes());
    QCOMPARE(diff.fileSize().packedBefore(), qint64(bytes.size()));
    QCOMPARE(diff.fileSize().packedGrowth(), qint64(0));
    QVERIFY(diff.fileSize().sizeAfter() > 0);
}

void TestPackageDiff::anotherApplication()
{
    const PackageDiff diff = diffOf(ManifestText(), ManifestText({}, "org.other"));
    QVERIFY(!diff.isSameApplication());
    QCOMPARE(textsOf(diff.facts()), QStringList(latin("~package=org.example.app>org.other")));
    QVERIFY(!diff.isEmpty());
}

void TestPackageDiff::facts()
{
    const PackageDiff diff = diffOf(ManifestText({text("versionName", "1.0"), number("versionCode", 1)})
                                        .add("uses-sdk", {number("minSdkVersion", 19), number("targetSdkVersion", 30)}),
                                    ManifestText({text("versionName", "1.1"), number("versionCode", 2)})
                                        .add("uses-sdk", {number("minSdkVersion", 21), number("targetSdkVersion", 30)})
                                        .add("uses-feature", {number("glEsVersion", 0x30001)}));
    QCOMPARE(textsOf(diff.facts()), QStringList({latin("~versionName=1.0>1.1"), latin("~versionCode=1>2"),
                                                 latin("~minSdkVersion=19>21"), latin("~openGlEsVersion=>3.1")}));
}

void TestPackageDiff::permissions()
{
    const auto permission = [](const char *name) { return QVector<fixture::Attribute>{text("name", name)}; };
    const PackageDiff diff =
        diffOf(ManifestText().add("uses-permission", permission("stays")).add("uses-permission", permission("goes")),
               ManifestText()
                   .add("uses-permission", permission("z"))
                   .add("uses-permission", permission("stays"))
                   .add("uses-permission-sdk-23", permission("a")));
    QCOMPARE(textsOf(diff.permissions()), QStringList({latin("+z="), latin("+a="), latin("-goes=")}));
}

void TestPackageDiff::features()
{
    const auto feature = [](const char *name, bool isRequired) {
        return QVector<fixture::Attribute>{text("name", name), boolean("required", isRequired)};
    };
    const PackageDiff diff =
        diffOf(ManifestText().add("uses-feature", feature("camera", false)).add("uses-feature", feature("gps", true)),
               ManifestText()
                   .add("uses-feature", feature("camera", false))
                   .add("uses-feature", feature("camera", true))
                   .add("uses-feature", feature("nfc", false)));
    QCOMPARE(textsOf(diff.features()),
             QStringList({latin("+nfc=optional"), latin("-gps=required"), latin("~camera=optional>required")}));
}

void TestPackageDiff::components()
{
    const auto named = [](const char *name, bool isExported, const char *permission = nullptr) {
        QVector<fixture::Attribute> attributes{text("name", name), boolean("exported", isExported)};
        if (permission != nullptr)
            attributes.append(text("permission", permission));
        return attributes;
    };
    const PackageDiff diff = diffOf(ManifestText()
                                        .application()
                                        .add("service", named(".Same", true))
                                        .add("service", named(".Gone", true))
                                        .add("service", named(".Closes", true))
                                        .add("service", named(".Opens", false))
                                        .add("service", named(".Guarded", true, "p"))
                                        .add("service", named(".Freed", true, "p")),
                                    ManifestText()
                                        .application()
                                        .add("service", named(".Same", true))
                                        .add("service", named(".Closes", false))
                                        .add("service", named(".Opens", true))
                                        .add("service", named(".Guarded", true, "q"))
                                        .add("service", named(".Freed", true))
                                        .add("service", named(".Hidden", false))
                                        .add("receiver", named(".Same", true)));
    QCOMPARE(textsOf(diff.components()),
             QStringList({latin("!+Same"), latin("!~Opens"), latin("!~Freed"), latin("+Hidden"), latin("-Gone"),
                          latin("~Closes"), latin("~Guarded")}));
    QCOMPARE(diff.components().at(2).before().permission(), latin("p"));
}

void TestPackageDiff::launchers()
{
    const auto named = [](const char *name, bool isExported = true) {
        return QVector<fixture::Attribute>{text("name", name), boolean("exported", isExported)};
    };
    const PackageDiff diff =
        diffOf(ManifestText().application().launcher(named(".A")).launcher(named(".B")).launcher(named(".C")),
               ManifestText().application().launcher(named(".A")).launcher(named(".B", false)).launcher(named(".D")));
    QCOMPARE(textsOf(diff.launchers()),
             QStringList({latin("+org.example.app.D=shown"), latin("-org.example.app.C=shown"),
                          latin("~org.example.app.B=shown>hidden")}));
}

void TestPackageDiff::labels()
{
    const PackageDiff diff = diffOf(ManifestText().application({text("label", "Notes")}),
                                    ManifestText().application({text("label", "Notes 2")}));
    QCOMPARE(textsOf(diff.labels()), QStringList(latin("~=Notes>Notes 2")));
    QCOMPARE(textsOf(diffOf(ManifestText(), ManifestText().application({text("label", "Notes")})).labels()),
             QStringList(latin("+=Notes")));
}

void TestPackageDiff::nativeAbis()
{
    const PackageDiff diff = diffOf(packageOf(ManifestText(), {{latin("lib/x86/a.so"), "1"}}),
                                    packageOf(ManifestText(), {{latin("lib/arm64-v8a/a.so"), "1"}}));
    QCOMPARE(textsOf(diff.nativeAbis()), QStringList({latin("+arm64-v8a="), latin("-x86=")}));
    QCOMPARE(diff.sizes().constFirst().category(), SizeChange::Category::Libraries);
}

void TestPackageDiff::members()
{
    const PackageDiff diff = diffOf(packageOf(ManifestText(), {{latin("assets/a"), "1"}, {latin("old"), ""}}),
                                    packageOf(ManifestText(), {{latin("assets/a"), "123456789"}, {latin("new"), ""}}));
    QCOMPARE(textsOf(diff.members()), QStringList({latin("~:assets/a"), latin("-:old"), latin("+:new")}));
    for (const TextChange::Kind kind : {TextChange::Kind::Added, TextChange::Kind::Removed, TextChange::Kind::Changed})
        QCOMPARE(diff.memberCount(kind), 1);
    QCOMPARE(diff.sizes().size(), 2);
    QCOMPARE(diff.sizes().constFirst().sizeGrowth(), qint64(8));
    QVERIFY(!diff.isEmpty());
    QVERIFY(!diff.hasOtherBytes());
    QCOMPARE(diff.fileSize().sizeGrowth(), qint64(8));
}

void TestPackageDiff::otherBytes()
{
    const Member manifest{latin("AndroidManifest.xml"), smallManifest()};
    const Member other{latin("a"), "1"};
    const PackageDiff diff = diffOf(zip({manifest, other}), zip({other, manifest}));
    QVERIFY(diff.hasOtherBytes());
    QVERIFY(!diff.isEmpty());
    QVERIFY(diff.members().isEmpty());
    QVERIFY(diff.isComplete());
    // A comment makes the file longer.
    QByteArray commented = zip({manifest, other});
    commented[commented.size() - 2] = 1;
    QVERIFY(diffOf(zip({manifest, other}), commented + 'c').hasOtherBytes());
}

void TestPackageDiff::sets()
{
    const QByteArray base = packageOf(ManifestText(), {{latin("a"), "1"}});
    const QByteArray newBase = packageOf(ManifestText(), {{latin("a"), "2"}});
    for (const Compression compression : {Compression::Stored, Compression::Deflated}) {
        const QByteArray before = zip({{latin("config.de.apk"), splitOf("config.de", {{latin("d"), "1"}})},
                                       {latin("config.x86.apk"), splitOf("config.x86", {{latin("x"), "1"}})},
                                       {latin("base.apk"), base}},
                                      compression);
        const QByteArray after = zip({{latin("base.apk"), newBase},
                                      {latin("config.de.apk"), splitOf("config.de", {{latin("d"), "22"}})},
                                      {latin("config.fr.apk"), splitOf("config.fr", {})},
                                      {latin("other.apk"), splitOf("config.it", {}, "org.other")}},
                                     compression);
        const PackageDiff diff = diffOf(before, after);
        QVERIFY(diff.isComplete());
        QVERIFY(diff.isSameApplication());
        QCOMPARE(textsOf(diff.splits()), QStringList({latin("+config.fr="), latin("-config.x86=")}));
        QStringList members = textsOf(diff.members());
        members.sort();
        QCOMPARE(members, QStringList({latin("+config.fr:AndroidManifest.xml"), latin("+config.fr:resources.arsc"),
                                       latin("-config.x86:AndroidManifest.xml"), latin("-config.x86:resources.arsc"),
                                       latin("-config.x86:x"), latin("~:a"), latin("~config.de:d")}));
        QCOMPARE(diff.fileSize().packedAfter(), qint64(after.size()));
        QVERIFY(diffOf(before, before).isEmpty());
    }
}

void TestPackageDiff::aSetAndAPackage()
{
    const QByteArray base = packageOf(ManifestText(), {{latin("a"), "1"}});
    const PackageDiff diff = diffOf(base, zip({{latin("base.apk"), base}}, Compression::Stored));
    QVERIFY(diff.members().isEmpty());
    QVERIFY(diff.hasOtherBytes());
    const QByteArray noBase = zip({{latin("config.de.apk"), splitOf("config.de", {})}});
    QVERIFY(!diffOf(base, noBase).isComplete());
}

void TestPackageDiff::unsignedPackagesAreUnverified()
{
    PackageDevice device(packageOf(ManifestText()));
    const Package package(&device);
    const PackageDiff diff(package, package, Signatures(package), Signatures(package));
    QCOMPARE(diff.signerMatch(), Signer::Match::Unverified);
    QVERIFY(diff.signers().isEmpty());
    QVERIFY(diff.schemes().isEmpty());
    QVERIFY(diff.isEmpty());
}

void TestPackageDiff::signers_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<int>("match");
    QTest::addColumn<int>("changes");

    const QByteArray first = signedByV3(BlockSigner(TestKey::rsa(1)));
    const QByteArray second = signedByV3(BlockSigner(TestKey::rsa(2)));
    const QByteArray rotated = signedByV3(rotatedSigner());
    QByteArray damaged = first;
    damaged[40] = char(~damaged.at(40));
    using Match = Signer::Match;
    QTest::newRow("same") << first << signedByV3(BlockSigner(TestKey::rsa(1)), "2") << int(Match::Same) << 0;
    QTest::newRow("other") << first << second << int(Match::Different) << 2;
    QTest::newRow("rotated") << first << rotated << int(Match::Rotated) << 2;
    QTest::newRow("rolled back") << rotated << first << int(Match::Rollback) << 2;
    QTest::newRow("damaged") << first << damaged << int(Match::Unverified) << 1;
    QTest::newRow("unsigned before") << unsignedPackage() << first << int(Match::Unverified) << 1;
}

void TestPackageDiff::signers()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    QFETCH(int, match);
    QFETCH(int, changes);
    const PackageDiff diff = signedDiffOf(before, after);
    QCOMPARE(int(diff.signerMatch()), match);
    QCOMPARE(int(diff.signers().size()), changes);
    for (const TextChange &signer : diff.signers()) {
        QCOMPARE(signer.name().size(), 64);
        QCOMPARE(signer.before() + signer.after(), latin("CN=Test signer"));
    }
    QVERIFY(!diff.isEmpty());
    // Without signatures, a package that is signed by someone else still differs.
    QVERIFY(!diffOf(before, after).isEmpty());
    QVERIFY(diffOf(before, after).signers().isEmpty());
}

void TestPackageDiff::schemes()
{
    const TestKey key = TestKey::rsa(1);
    const QByteArray before = SigningBlockBuilder(unsignedPackage()).v2({BlockSigner(key)}).build();
    const PackageDiff diff = signedDiffOf(before, signedByV3(BlockSigner(key)));
    QCOMPARE(textsOf(diff.schemes()), QStringList({latin("+v3="), latin("-v2=")}));
    QCOMPARE(diff.signerMatch(), Signer::Match::Same);
    QVERIFY(diff.members().isEmpty());
    QVERIFY(!diff.hasOtherBytes());
    QVERIFY(diffOf(before, signedByV3(BlockSigner(key))).hasOtherBytes());
}

void TestPackageDiff::signersOfASet()
{
    const auto set = [](const TestKey &key) {
        return zip({{latin("base.apk"), signedByV3(BlockSigner(key))}}, Compression::Stored);
    };
    QCOMPARE(signedDiffOf(set(TestKey::rsa(1)), set(TestKey::rsa(2))).signerMatch(), Signer::Match::Different);
    QCOMPARE(signedDiffOf(set(TestKey::rsa(1)), signedByV3(BlockSigner(TestKey::rsa(1)))).signerMatch(),
             Signer::Match::Same);
}

void TestPackageDiff::packagesThatCannotBeRead()
{
    const QByteArray sound = packageOf(ManifestText());
    for (const QByteArray &bytes : {QByteArray(), QByteArray("no package"), zip({{latin("a"), "1"}})}) {
        const PackageDiff diff = diffOf(bytes, sound);
        QVERIFY(!diff.isComplete());
        QVERIFY(!diff.isEmpty());
        QVERIFY(!diff.isSameApplication());
        QCOMPARE(textsOf(diff.facts()), QStringList(latin("~package=>org.example.app")));
        QVERIFY(!diffOf(bytes, bytes).isComplete());
    }
    const PackageDiff nothing{Package(), Package()};
    QVERIFY(!nothing.isComplete());
    QVERIFY(nothing.isEmpty());
}

void TestPackageDiff::damagedPackages()
{
    // Every prefix of a package, and every byte changed: no crash, and never equal to the sound one.
    const QByteArray sound =
        packageOf(ManifestText().add("uses-permission", {text("name", "p")}), {{latin("a"), "12"}});
    for (int i = 0; i < sound.size(); i += 3) {
        QVERIFY(!diffOf(sound, sound.left(i)).isEmpty());
        QByteArray changed = sound;
        changed[i] = char(~changed.at(i));
        QVERIFY(!diffOf(changed, sound).isEmpty());
    }
}

void TestPackageDiff::directoriesUpToTheCeiling()
{
    // Both directories have room together. Each member takes its record, its name, and some bytes more.
    constexpr int Bytes = 40 << 20;
    constexpr int NameSize = 60000;
    constexpr int RecordBytes = 46 + int(ZipArchive::MemberBytes);
    constexpr int Left = Bytes - (RecordBytes + 1);
    constexpr int LongNames = (Left - RecordBytes - 1) / (RecordBytes + NameSize);
    constexpr int LastName = Left - LongNames * (RecordBytes + NameSize) - RecordBytes;
    const auto archive = [](int lastName) {
        QVector<RawMember> members;
        for (int i = 0; i < LongNames; ++i)
            members.append({QByteArray::number(i).rightJustified(NameSize, '0'), QByteArray()});
        members.append({QByteArray(lastName, 'x'), QByteArray()});
        return rawZip(members);
    };
    const QByteArray small = rawZip({{"a", "1"}});
    const PackageDiff enough = diffOf(small, archive(LastName));
    QCOMPARE(enough.memberCount(TextChange::Kind::Added), LongNames + 1);
    const PackageDiff tooMuch = diffOf(small, archive(LastName + 1));
    QCOMPARE(tooMuch.memberCount(TextChange::Kind::Added), 0);
    QVERIFY(!tooMuch.isComplete());
}

namespace {

/// A device of zeros, whose first and last bytes are those of an archive.
class LargeDevice : public QIODevice
{
public:
    LargeDevice(qint64 zeros, const QByteArray &archive) : m_zeros(zeros), m_archive(archive) {}

    qint64 size() const override { return m_zeros + m_archive.size(); }
    bool isSequential() const override { return false; }

protected:
    qint64 readData(char *data, qint64 count) override
    {
        const qint64 from = pos();
        count = qMin(count, size() - from);
        const qint64 zeros = qBound(qint64(0), m_zeros - from, count);
        std::fill_n(data, zeros, '\0');
        std::copy_n(m_archive.constData() + qMax(qint64(0), from - m_zeros), count - zeros, data + zeros);
        return count;
    }
    qint64 writeData(const char * /*data*/, qint64 /*count*/) override { return -1; }

private:
    qint64 m_zeros;
    QByteArray m_archive;
};

} // namespace

void TestPackageDiff::bytesUpToTheCeiling()
{
    // Data may precede an archive. 1 GiB of each file is compared.
    const QByteArray archive = zip({{latin("AndroidManifest.xml"), smallManifest()}});
    for (const bool isTooLong : {false, true}) {
        const qint64 zeros = isTooLong ? qint64(1) << 30 : (qint64(1) << 30) - (16 << 20);
        LargeDevice before(zeros, archive);
        LargeDevice after(zeros, archive);
        const PackageDiff diff{Package(&before), Package(&after)};
        QVERIFY(diff.isEmpty());
        QCOMPARE(diff.isComplete(), !isTooLong);
    }
}

void TestPackageDiff::boundsHold_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");

    constexpr int Most = 65535;
    const QByteArray many = membersWithNames(Most, 'a');
    QTest::newRow("all came and went") << many << membersWithNames(Most, 'b');
    QTest::newRow("all stayed") << many << many;
    QByteArray moved = many;
    moved[moved.size() - 2] = 1;
    QTest::newRow("all stayed, and are compared") << many << moved + 'c';

    ManifestText components;
    components.application();
    for (int i = 0; i < 20000; ++i)
        components.add("service", {androidText(latin("name"), QStringLiteral(".S%1").arg(i))});
    QTest::newRow("components") << packageOf(components) << packageOf(ManifestText());

    ManifestText permissions;
    for (int i = 0; i < 49000; ++i)
        permissions.add("uses-permission", {androidText(latin("name"), QStringLiteral("p%1").arg(i))});
    QTest::newRow("permissions") << packageOf(ManifestText()) << packageOf(permissions);
}

void TestPackageDiff::boundsHold()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    const Cost taken = cost([&] { diffOf(before, after); });
    QVERIFY(taken.ended);
    const QString excess = Bounds::excess(taken, before.size() + after.size(), before.size() + after.size());
    QVERIFY2(excess.isEmpty(), qPrintable(excess));
}

QTEST_GUILESS_MAIN(TestPackageDiff)
#include "tst_packagediff.moc"
