// SPDX-License-Identifier: LGPL-2.1-or-later
#include "SetFixture.h"
#include "sets/PackageSetData.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;
using SorrelKit::Device;
using SorrelKit::Error;
using SorrelKit::Package;
using SorrelKit::PackageSet;
using SorrelKit::SetPackage;
using SorrelKit::SplitChoice;

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

/// The split @p name in the file @p path.
Member split(const char *path, const char *name, const QStringList &abis = {})
{
    SetManifest manifest;
    manifest.split = name;
    return memberOf(path, manifest, abis);
}

/// The same, with the name of the split as that of the file.
Member named(const char *name, const QStringList &abis = {})
{
    return split(qPrintable(latin(name) + latin(".apk")), name, abis);
}

Member base(const QStringList &abis = {})
{
    return memberOf("base.apk", {}, abis);
}

/// The files that @p device gets, without their suffix.
QString found(const QVector<Member> &members, const Device &device = phone())
{
    return chosen(zip(members), device).join(QLatin1Char(' ')).remove(latin(".apk"));
}

/// A package of a set whose manifest cannot be read.
Member unreadable(const char *path)
{
    return {latin(path), "no archive"};
}

} // namespace

class TestPackageSet : public QObject
{
    Q_OBJECT

private slots:
    void noSet();
    void everyPackage();
    void kindsByNames_data();
    void kindsByNames();
    void languages();
    void densities();
    void processors();
    void nativeCodeOfTheBase();
    void modules();
    void conditions();
    void usedModules();
    void configurationsOfModules();
    void basesForVersions();
    void wholeApplications();
    void variantsByFileNames();
    void unreadableManifests();
    void otherApplications();
    void requiredSplits_data();
    void requiredSplits();
    void versionsOfSplits();
    void badDevices();
    void packageAlone();
    void unpackedLibraries_data();
    void unpackedLibraries();
    void expansionFiles();
    void expansionFilesUpToTheCeiling();
    void describedSplits();
    void packageForADevice();
    void filesAndCopies();
    void readingHasABudget();
    void namesUpToTheCeiling();
    void damagedByteByByte();
};

void TestPackageSet::noSet()
{
    QVERIFY(PackageSet().packages().isEmpty());
    const SplitChoice choice = PackageSet().splitsFor(phone());
    QCOMPARE(choice.code(), SplitChoice::Code::CannotRead);
    QVERIFY(!choice.message().isEmpty());
    QVERIFY(!SplitChoice().fits());
    QCOMPARE(found({split("de.apk", "config.de")}),
             latin("1: could not find AndroidManifest.xml: the set has no base package"));
}

void TestPackageSet::everyPackage()
{
    SetManifest camera;
    camera.split = "camera";
    camera.isFeature = true;
    camera.minSdk = 24;
    SetManifest cameraDe;
    cameraDe.split = "camera.config.de";
    cameraDe.configForSplit = "camera";
    const QVector<Member> members{base(list("x86")),
                                  {latin("icon.png"), "picture"},
                                  memberOf("camera.apk", camera),
                                  memberOf("camera.config.de.apk", cameraDe),
                                  named("config.arm64_v8a", list("arm64-v8a")),
                                  named("config.xxhdpi"),
                                  memberOf("standalones/standalone-x86_hdpi.apk", {}, list("x86"))};
    PackageDevice file(zip(members, Compression::Stored));
    const QList<SetPackage> packages = PackageSet(Package(&file)).packages();
    QStringList texts;
    for (const SetPackage &package : packages) {
        QStringList densities;
        for (const int density : package.screenDensities())
            densities.append(QString::number(density));
        texts.append(QStringList{package.path(), package.splitName(), QString::number(int(package.kind())),
                                 package.module(), package.abis().join(QLatin1Char(',')),
                                 package.languages().join(QLatin1Char(',')), densities.join(QLatin1Char(',')),
                                 QString::number(package.minSdkVersion())}
                         .join(QLatin1Char('|')));
    }
    QCOMPARE(texts, QStringList({
                        latin("base.apk||1|base|x86|||1"),
                        latin("camera.apk|camera|2|camera||||24"),
                        latin("camera.config.de.apk|camera.config.de|3|camera||de||1"),
                        latin("config.arm64_v8a.apk|config.arm64_v8a|3|base|arm64-v8a|||1"),
                        latin("config.xxhdpi.apk|config.xxhdpi|3|base|||480|1"),
                        latin("standalones/standalone-x86_hdpi.apk||4|base|x86||240|1"),
                    }));
    QCOMPARE(packages.constFirst().bytes(), qint64(members.constFirst().content.size()));
    QCOMPARE(packages.constFirst().packedBytes(), packages.constFirst().bytes());
}

void TestPackageSet::kindsByNames_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("facts");
    const auto row = [](const char *path, const char *facts) { QTest::newRow(path) << latin(path) << latin(facts); };
    row("base.apk", "1 base");
    row("splits/base-master.apk", "1 base");
    row("splits/base-master_2.apk", "1 base");
    row("splits/base-de.apk", "3 base de");
    row("splits/base-arm64_v8a_2.apk", "3 base arm64-v8a");
    row("splits/base-x86_64.apk", "3 base x86_64");
    row("splits/base-x86_3.apk", "3 base x86");
    row("splits/base-armeabi.apk", "3 base armeabi");
    row("splits/camera-tvdpi.apk", "3 camera 213");
    row("splits/camera-master.apk", "2 camera");
    row("config.zh-rTW.apk", "3 base zh");
    row("config.b+sr+Latn.apk", "3 base sr");
    row("config.de_de_rAT.apk", "3 base de");
    row("config.fr_de.apk", "3 base fr de");
    row("split_config.armeabi_v7a.apk", "3 base armeabi-v7a");
    row("split_camera.config.420dpi.apk", "3 camera 420");
    row("config.nodpi.apk", "3 base 65535");
    row("universal.apk", "4 ");
    row("standalones/standalone-mips64_ldpi.apk", "4 standalone mips64 120");
    row("other.apk", "0 ");
    row("config.german.apk", "3 base");
    row(".apk", "0 ");
    row("-.apk", "0 ");
}

void TestPackageSet::kindsByNames()
{
    QFETCH(QString, path);
    QFETCH(QString, facts);
    PackageDevice file(zip({memberOf("x/base.apk", {}), {path, "no archive"}}));
    const QList<SetPackage> packages = PackageSet(Package(&file)).packages();
    QCOMPARE(packages.size(), 2);
    const SetPackage &package = packages.constLast();
    QString text = QStringLiteral("%1 %2").arg(int(package.kind())).arg(package.module());
    for (const QString &name : package.abis() + package.languages())
        text += QLatin1Char(' ') + name;
    for (const int density : package.screenDensities())
        text += QLatin1Char(' ') + QString::number(density);
    QCOMPARE(text, facts);
}

void TestPackageSet::languages()
{
    const QVector<Member> members{base(), named("config.de"), named("config.en"), named("config.iw"),
                                  split("base-other_lang.apk", "config.other_lang")};
    QCOMPARE(found(members), latin("base config.de config.en"));
    QCOMPARE(found(members, withLocales("en-GB")), latin("base config.en"));
    QCOMPARE(found(members, withLocales("he")), latin("base config.iw"));
    QCOMPARE(found(members, withLocales("ja fr")), latin("base base-other_lang"));
    QCOMPARE(found({base(), named("config.de")}, withLocales("ja")), latin("base"));
}

void TestPackageSet::densities()
{
    const QVector<Member> members{base(), named("config.mdpi"), named("config.hdpi"), named("config.xxhdpi")};
    QCOMPARE(found(members, withDensity(480)), latin("base config.xxhdpi"));
    QCOMPARE(found(members, withDensity(320)), latin("base config.xxhdpi"));
    QCOMPARE(found(members, withDensity(240)), latin("base config.hdpi"));
    QCOMPARE(found(members, withDensity(120)), latin("base config.mdpi"));
    QCOMPARE(found(members, withDensity(640)), latin("base config.xxhdpi"));
}

// One processor for all packages, though some have code for a better one.
void TestPackageSet::processors()
{
    const QVector<Member> members{base(), named("config.arm64_v8a", list("arm64-v8a")),
                                  named("config.armeabi_v7a", list("armeabi-v7a")), named("config.x86", list("x86"))};
    QCOMPARE(found(members), latin("base config.arm64_v8a"));
    QCOMPARE(found(members, withAbis("armeabi-v7a arm64-v8a")), latin("base config.armeabi_v7a"));
    QCOMPARE(found(members, withAbis("x86_64 x86")), latin("base config.x86"));
    QCOMPARE(found(members, withAbis("mips")),
             latin("5: no native code for mips, only for arm64-v8a, armeabi-v7a, x86"));
    SetManifest module;
    module.split = "camera.config.x86";
    module.configForSplit = "camera";
    SetManifest camera;
    camera.split = "camera";
    camera.isFeature = true;
    const QVector<Member> withModule =
        members + QVector<Member>{memberOf("camera.apk", camera), memberOf("camera-x86.apk", module, list("x86"))};
    QCOMPARE(found(withModule, withAbis("arm64-v8a x86")), latin("base camera config.arm64_v8a"));
}

void TestPackageSet::nativeCodeOfTheBase()
{
    QCOMPARE(found({base(list("armeabi-v7a x86"))}), latin("base"));
    QCOMPARE(found({base(list("x86"))}), latin("5: no native code for arm64-v8a, armeabi-v7a, only for x86"));
}

void TestPackageSet::modules()
{
    const auto module = [](const char *name, const char *delivery) {
        SetManifest manifest;
        manifest.split = name;
        manifest.isFeature = true;
        manifest.delivery = delivery;
        return memberOf(qPrintable(latin(name) + latin(".apk")), manifest);
    };
    QCOMPARE(found({base(), module("plain", nullptr), module("now", "install-time"), module("later", "on-demand"),
                    module("follow", "fast-follow")}),
             latin("base plain now"));
}

void TestPackageSet::conditions()
{
    SetManifest manifest;
    manifest.split = "camera";
    manifest.isFeature = true;
    manifest.delivery = "install-time";
    manifest.feature = "android.hardware.camera";
    manifest.conditionSdk = 24;
    const QVector<Member> members{base(), memberOf("camera.apk", manifest)};
    Device device = withSdk(24);
    QCOMPARE(found(members, device), latin("base"));
    device.setFeatures(list("other android.hardware.camera"));
    QCOMPARE(found(members, device), latin("base camera"));
    PackageDevice file(zip(members));
    QCOMPARE(PackageSet(Package(&file)).splitsFor(device).packages().constLast().reason(),
             SetPackage::Reason::Condition);
    device.setSdkVersion(23);
    QCOMPARE(found(members, device), latin("base"));
}

void TestPackageSet::usedModules()
{
    const auto module = [](const char *name, const char *used, const char *delivery) {
        SetManifest manifest;
        manifest.split = name;
        manifest.isFeature = true;
        manifest.usesSplit = used;
        manifest.delivery = delivery;
        return memberOf(qPrintable(latin(name) + latin(".apk")), manifest);
    };
    const Member a = module("a", "b", nullptr);
    const Member b = module("b", "c", "on-demand");
    QCOMPARE(found({base(), a, b, module("c", "a", "on-demand")}), latin("base a b c"));
    QCOMPARE(found({base(), a, b}), latin("7: the set lacks a required module: c"));
    QCOMPARE(found({base(), b}), latin("base"));
}

void TestPackageSet::configurationsOfModules()
{
    const auto configuration = [](const char *name, const char *module) {
        SetManifest manifest;
        manifest.split = name;
        manifest.configForSplit = module;
        return memberOf(qPrintable(latin(name) + latin(".apk")), manifest);
    };
    SetManifest later;
    later.split = "later";
    later.isFeature = true;
    later.delivery = "on-demand";
    QCOMPARE(found({base(), named("now"), memberOf("later.apk", later), configuration("now.config.de", "now"),
                    configuration("now.config.hdpi", "now"), configuration("now.config.mdpi", "now"),
                    configuration("later.config.de", "later"), configuration("config.xhdpi", "")}),
             latin("base now config.xhdpi now.config.de now.config.hdpi"));
}

void TestPackageSet::basesForVersions()
{
    const auto at = [](const char *path, int sdk) {
        SetManifest manifest;
        manifest.minSdk = sdk;
        return memberOf(path, manifest);
    };
    const QVector<Member> members{at("old.apk", 14), at("base.apk", 21), at("new.apk", 31)};
    QCOMPARE(found(members, withSdk(31)), latin("new"));
    QCOMPARE(found(members, withSdk(30)), latin("base"));
    QCOMPARE(found(members, withSdk(20)), latin("old"));
    QCOMPARE(found(members, withSdk(13)), latin("4: needs SDK 14, and the device has SDK 13"));
    QCOMPARE(found({at("a.apk", 21), at("base-master.apk", 21)}), latin("base-master"));
}

void TestPackageSet::wholeApplications()
{
    const auto whole = [](const char *path, int sdk, const char *abis) {
        SetManifest manifest;
        manifest.minSdk = sdk;
        return memberOf(path, manifest, list(abis));
    };
    SetManifest newBase;
    newBase.minSdk = 21;
    const QVector<Member> members{memberOf("splits/base-master.apk", newBase),
                                  whole("standalones/standalone-armeabi_v7a_hdpi.apk", 14, "armeabi-v7a"),
                                  whole("standalones/standalone-armeabi_v7a_xxhdpi.apk", 14, "armeabi-v7a"),
                                  whole("standalones/standalone-x86_xxhdpi.apk", 14, "x86")};
    QCOMPARE(found(members), latin("splits/base-master"));
    QCOMPARE(found(members, withSdk(19)), latin("standalones/standalone-armeabi_v7a_xxhdpi"));
    Device device = withDensity(160);
    device.setSdkVersion(19);
    QCOMPARE(found(members, device), latin("standalones/standalone-armeabi_v7a_hdpi"));
    device.setAbis(list("x86 armeabi-v7a"));
    QCOMPARE(found(members, device), latin("standalones/standalone-x86_xxhdpi"));
    device.setAbis(list("mips"));
    QCOMPARE(found(members, device), latin("5: no native code for mips, only for armeabi-v7a, x86"));
    device.setSdkVersion(13);
    QCOMPARE(found(members, device), latin("4: needs SDK 14, and the device has SDK 13"));
    QCOMPARE(found({whole("universal.apk", 14, "x86 arm64-v8a")}), latin("universal"));
}

void TestPackageSet::variantsByFileNames()
{
    SetManifest second;
    second.minSdk = 23;
    const QVector<Member> members{memberOf("splits/base-master.apk", {}), split("splits/base-de.apk", "config.de"),
                                  memberOf("splits/base-master_2.apk", second),
                                  split("splits/base-de_2.apk", "config.de"), split("splits/base-en.apk", "config.en")};
    QCOMPARE(found(members), latin("splits/base-master_2 splits/base-de_2 splits/base-en"));
    QCOMPARE(found(members, withSdk(22)), latin("splits/base-master splits/base-de splits/base-en"));
}

void TestPackageSet::unreadableManifests()
{
    QCOMPARE(found({base(), unreadable("config.de.apk"), unreadable("config.fr.apk"), unreadable("split_config.en.apk"),
                    unreadable("base-x86.apk"), unreadable("base-arm64_v8a.apk"), unreadable("other.apk")}),
             latin("base config.de split_config.en base-arm64_v8a"));
}

void TestPackageSet::otherApplications()
{
    SetManifest other;
    other.split = "config.de";
    other.package = "org.example.other";
    QCOMPARE(found({base(), memberOf("other.apk", other), named("config.en")}), latin("base config.en"));
}

void TestPackageSet::requiredSplits_data()
{
    QTest::addColumn<bool>("hasIds");
    QTest::newRow("ids") << true;
    QTest::newRow("names") << false;
}

void TestPackageSet::requiredSplits()
{
    QFETCH(bool, hasIds);
    SetManifest manifest;
    manifest.hasIdsOfSplits = hasIds;
    manifest.requiredSplitTypes = "base__abi,base__density";
    SetManifest abi;
    abi.hasIdsOfSplits = hasIds;
    abi.split = "config.arm64_v8a";
    abi.splitTypes = "base__abi";
    SetManifest density = abi;
    density.split = "config.hdpi";
    density.splitTypes = "base__density";
    const QVector<Member> some{memberOf("base.apk", manifest), memberOf("abi.apk", abi)};
    QCOMPARE(found(some), latin("7: the set lacks a split of a required type: base__density"));
    QCOMPARE(found(some + QVector<Member>{memberOf("density.apk", density)}), latin("base abi density"));
    SetManifest any;
    any.hasIdsOfSplits = hasIds;
    any.isSplitRequired = true;
    const QVector<Member> languages{memberOf("base.apk", any), named("config.de")};
    QCOMPARE(found(languages), latin("base config.de"));
    QCOMPARE(found(languages, withLocales("ja")),
             latin("7: the base requires splits, and there is none for the device"));
}

void TestPackageSet::versionsOfSplits()
{
    SetManifest manifest;
    manifest.split = "config.de";
    manifest.minSdk = 26;
    const QVector<Member> members{base(), memberOf("config.de.apk", manifest)};
    QCOMPARE(found(members, withSdk(26)), latin("base config.de"));
    QCOMPARE(found(members, withSdk(25)), latin("4: needs SDK 26, and the device has SDK 25"));
}

void TestPackageSet::badDevices()
{
    Device device = phone();
    device.setScreenDensity(0);
    QCOMPARE(found({base()}, device), latin("2: screenDensity is missing"));
    QCOMPARE(found({base()}, Device::fromJson("[")).section(QLatin1Char(':'), 0, 1), latin("2: not JSON"));
}

void TestPackageSet::packageAlone()
{
    SetManifest manifest;
    manifest.minSdk = 26;
    const QByteArray bytes = packageOf(manifest, list("x86 arm64-v8a"));
    PackageDevice file(bytes);
    const PackageSet set{Package(&file)};
    QCOMPARE(set.packages().size(), 1);
    const SplitChoice choice = set.splitsFor(withSdk(26));
    QVERIFY(choice.fits());
    QCOMPARE(choice.packages().size(), 1);
    QCOMPARE(choice.packages().constFirst().path(), QString());
    QCOMPARE(choice.packages().constFirst().kind(), SetPackage::Kind::Base);
    QCOMPARE(choice.downloadBytes(), qint64(bytes.size()));
    QCOMPARE(choice.installedBytes(), qint64(bytes.size()) + choice.libraryBytes());
    QCOMPARE(set.splitsFor(withSdk(25)).message(), latin("needs SDK 26, and the device has SDK 25"));
    QCOMPARE(set.splitsFor(withAbis("armeabi-v7a")).code(), SplitChoice::Code::NoNativeCode);
    QCOMPARE(set.packageFor(withSdk(26)).minSdkVersion(), 26);
    SetManifest requiring;
    requiring.isSplitRequired = true;
    PackageDevice incomplete(packageOf(requiring));
    QCOMPARE(PackageSet(Package(&incomplete)).splitsFor(phone()).code(), SplitChoice::Code::MissingPackage);
}

void TestPackageSet::unpackedLibraries_data()
{
    QTest::addColumn<QString>("abis");
    QTest::addColumn<bool>("extracts");
    QTest::addColumn<qint64>("bytes");
    QTest::newRow("first") << latin("arm64-v8a armeabi-v7a") << true << qint64(4 + 6);
    QTest::newRow("second") << latin("mips armeabi-v7a") << true << qint64(8);
    QTest::newRow("used in place") << latin("arm64-v8a") << false << qint64(0);
}

void TestPackageSet::unpackedLibraries()
{
    QFETCH(QString, abis);
    QFETCH(bool, extracts);
    QFETCH(qint64, bytes);
    SetManifest manifest;
    manifest.extractsLibraries = extracts;
    const QVector<Member> others{{latin("lib/arm64-v8a/libmore.so"), "sixsix"},
                                 {latin("lib/armeabi-v7a/libmore.so"), "four"},
                                 {latin("lib/arm64-v8a/notes.txt"), "no library"}};
    PackageDevice file(packageOf(manifest, list("arm64-v8a armeabi-v7a"), others));
    const SplitChoice choice = PackageSet(Package(&file)).splitsFor(withAbis(qPrintable(abis)));
    QVERIFY(choice.fits());
    QCOMPARE(choice.libraryBytes(), bytes);
    QCOMPARE(choice.installedBytes(), choice.packages().constFirst().bytes() + bytes);
}

void TestPackageSet::expansionFiles()
{
    const QByteArray data(1000, 'x');
    PackageDevice file(zip({base(), {latin("Android/obb/org.other/main.7.org.example.app.obb"), data}}));
    const PackageSet set{Package(&file)};
    QCOMPARE(set.expansions().size(), 1);
    const SorrelKit::ExpansionFile expansion = set.expansions().constFirst();
    QCOMPARE(expansion.path(), latin("Android/obb/org.other/main.7.org.example.app.obb"));
    QCOMPARE(expansion.installPath(), latin("Android/obb/org.example.app/main.7.org.example.app.obb"));
    QCOMPARE(expansion.bytes(), qint64(1000));
    QVERIFY(expansion.packedBytes() > 0 && expansion.packedBytes() < 1000);
    const SplitChoice choice = set.splitsFor(phone());
    QCOMPARE(choice.expansions().size(), 1);
    const SetPackage package = choice.packages().constFirst();
    QCOMPARE(choice.downloadBytes(), package.packedBytes() + expansion.packedBytes());
    QCOMPARE(choice.installedBytes(), package.bytes() + 1000);
    QVERIFY(set.mismatches().isEmpty());
    QVERIFY(PackageSet().expansions().isEmpty() && SplitChoice().expansions().isEmpty());
}

void TestPackageSet::expansionFilesUpToTheCeiling()
{
    constexpr int Ceiling = SorrelKit::PackageSetData::MaxExpansions;
    QVector<Member> members{base()};
    for (int i = 0; i < Ceiling; ++i)
        members.append({QStringLiteral("%1.obb").arg(i), "x"});
    PackageDevice all(zip(members));
    QCOMPARE(int(PackageSet(Package(&all)).expansions().size()), Ceiling);
    members.append({latin("more.OBB"), "x"});
    PackageDevice more(zip(members));
    QCOMPARE(int(PackageSet(Package(&more)).expansions().size()), Ceiling);
}

void TestPackageSet::describedSplits()
{
    const QByteArray json = R"({"package_name": "org.example.app", "split_apks": [{"file": "base.apk", "id": "base"},)"
                            R"( {"file": "a.apk", "id": "config.fr"}, {"file": "b.apk", "id": "config.de"}]})";
    QCOMPARE(found({base(), unreadable("a.apk"), unreadable("b.apk"), {latin("manifest.json"), json}}),
             latin("base b"));
    PackageDevice file(zip({base(), named("config.fr"), {latin("manifest.json"), json}}));
    const PackageSet set{Package(&file)};
    QCOMPARE(set.mismatches(), QStringList({latin("manifest.json lists a.apk, which the set lacks"),
                                            latin("manifest.json lists b.apk, which the set lacks"),
                                            latin("manifest.json does not list config.fr.apk")}));
}

void TestPackageSet::packageForADevice()
{
    PackageDevice file(zip({base(), named("config.de"), named("config.fr"),
                            named("config.arm64_v8a", list("arm64-v8a")), named("config.x86", list("x86"))}));
    const Package whole(&file);
    QCOMPARE(whole.splits().size(), 4);
    const Package package = PackageSet(whole).packageFor(phone());
    QVERIFY(package.isValid());
    QCOMPARE(package.packageName(), latin("org.example.app"));
    QCOMPARE(package.splits(), list("config.de config.arm64_v8a"));
    QCOMPARE(package.nativeAbis(), list("arm64-v8a"));
    QCOMPARE(PackageSet(whole).packageFor(withAbis("mips")).error().code(), Error::Code::CannotOpen);
}

void TestPackageSet::filesAndCopies()
{
    QTemporaryDir directory;
    QFile file(directory.filePath(latin("app.apks")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(zip({base(), named("config.de")}));
    file.close();
    PackageSet set(file.fileName());
    const PackageSet copy(set);
    QCOMPARE(copy.packages().size(), 2);
    PackageSet other;
    other.swap(set);
    QVERIFY(set.packages().isEmpty());
    QCOMPARE(copy.packages().size(), other.packages().size());
}

// A package that is compressed in the set costs the bytes that it claims, and holds them while it is read.
void TestPackageSet::readingHasABudget()
{
    const auto read = [](qint64 size) {
        QVector<Member> members;
        for (const char *language : {"de", "en", "fr"}) {
            SetManifest manifest;
            manifest.split = language;
            members.append({latin(language) + latin(".apk"), deflatedBehindEmptyBlocks(0, packageOf(manifest))});
        }
        members.prepend({latin("base.apk"), deflatedBehindEmptyBlocks(0, packageOf({}))});
        PackageDevice file(zipOfDeflated(members, size));
        int manifests = 0;
        for (const SetPackage &package : PackageSet(Package(&file)).packages())
            manifests += package.kind() == SetPackage::Kind::Feature || package.path() == latin("base.apk") ? 1 : 0;
        return manifests;
    };
    using SorrelKit::PackageSetData;
    constexpr int Some = 100'000;
    QCOMPARE(read(PackageSetData::MaxReadingWork / 4 - Some), 4);
    QCOMPARE(read(PackageSetData::MaxReadingWork / 4), 3);
}

void TestPackageSet::namesUpToTheCeiling()
{
    const auto required = [](int count) {
        SetManifest manifest;
        const QByteArray types = QByteArray("a,").repeated(count - 1) + "b";
        manifest.requiredSplitTypes = types.constData();
        return found({memberOf("base.apk", manifest)});
    };
    QCOMPARE(required(SorrelKit::SetMember::MaxSplitNames), latin("7: the set lacks a split of a required type: a, b"));
    QCOMPARE(required(SorrelKit::SetMember::MaxSplitNames + 1),
             latin("7: the set lacks a split of a required type: a"));
}

// The choice from a damaged set has packages of the set, or a reason.
void TestPackageSet::damagedByteByByte()
{
    const auto stored = [](const SetManifest &manifest, const char *library = nullptr) {
        QVector<Member> members{{latin("AndroidManifest.xml"), manifestOf(manifest)}};
        if (library != nullptr)
            members.append({latin(library), "code"});
        return zip(members, Compression::Stored);
    };
    SetManifest base;
    base.requiredSplitTypes = "abi";
    SetManifest native;
    native.split = "config.arm64_v8a";
    native.splitTypes = "abi";
    native.delivery = "install-time";
    native.conditionSdk = 21;
    const QByteArray whole =
        zip({{latin("base.apk"), stored(base)}, {latin("config.arm64_v8a.apk"), stored(native, "lib/arm64-v8a/a.so")}},
            Compression::Stored);
    QCOMPARE(chosen(whole, phone()).size(), 2);
    int others = 0;
    for (int at = 0; at < whole.size(); ++at) {
        for (const char byte : {'\x00', '\x7f', '\xff'}) {
            QByteArray damaged = whole;
            damaged[at] = byte;
            PackageDevice file(damaged);
            const PackageSet set{Package(&file)};
            const SplitChoice choice = set.splitsFor(phone());
            QCOMPARE(choice.fits(), choice.message().isEmpty());
            QCOMPARE(choice.fits(), !choice.packages().isEmpty());
            QVERIFY(set.packages().size() <= 2);
            for (const SetPackage &package : choice.packages())
                QVERIFY(package.bytes() >= 0 && package.packedBytes() <= damaged.size());
            QCOMPARE(set.packageFor(phone()).isValid(), choice.fits());
            others += choice.packages().size() != 2 ? 1 : 0;
        }
    }
    QVERIFY(others > 100);
}

QTEST_GUILESS_MAIN(TestPackageSet)
#include "tst_packageset.moc"
