// SPDX-License-Identifier: LGPL-2.1-or-later
#include "SetFixture.h"

#include <QtTest>

using namespace fixture;
using SorrelKit::Device;
using SorrelKit::Package;
using SorrelKit::PackageSet;
using SorrelKit::SetPackage;
using SorrelKit::SplitChoice;

namespace {

// Aliases of processors and densities in the table.
constexpr int Arm7 = 2;
constexpr int Arm64 = 3;
constexpr int X86 = 4;
constexpr int Mdpi = 3;
constexpr int Hdpi = 5;
constexpr int Xxhdpi = 7;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

ProtobufWriter forAbi(const QVector<int> &values, const QVector<int> &others = {})
{
    return ProtobufWriter().message(1, abiTargeting(values, others));
}

ProtobufWriter forLanguage(const char *values, const char *others)
{
    return ProtobufWriter().message(3, languageTargeting(list(values), list(others)));
}

ProtobufWriter forDensity(const QVector<int> &values, const QVector<int> &others = {})
{
    return ProtobufWriter().message(4, densityTargeting(values, others));
}

/// The paths that a phone gets of a set with these modules; every package in @p paths is a split of nothing in particular.
QStringList ofModules(const QVector<ProtobufWriter> &modules, const char *paths, const Device &device = phone())
{
    QVector<Member> members;
    for (const QString &path : list(paths))
        members.append({path, packageOf({})});
    return chosen(setOf(tocOf({variantOf({}, modules)}), members), device);
}

/// A set as bundletool makes one: splits from SDK 21 on, and whole applications for older devices.
QByteArray usualSet()
{
    const auto base =
        moduleOf("base", {apkOf("splits/base-master.apk", ProtobufWriter().message(5, sdkTargeting({21}))),
                          apkOf("splits/base-arm64_v8a.apk", forAbi({Arm64}, {Arm7})),
                          apkOf("splits/base-armeabi_v7a.apk", forAbi({Arm7}, {Arm64})),
                          apkOf("splits/base-de.apk", forLanguage("de", "en fr")),
                          apkOf("splits/base-en.apk", forLanguage("en", "de fr")),
                          apkOf("splits/base-fr.apk", forLanguage("fr", "de en")),
                          apkOf("splits/base-mdpi.apk", forDensity({Mdpi}, {Hdpi, Xxhdpi})),
                          apkOf("splits/base-hdpi.apk", forDensity({Hdpi}, {Mdpi, Xxhdpi})),
                          apkOf("splits/base-xxhdpi.apk", forDensity({Xxhdpi}, {Mdpi, Hdpi})),
                          apkOf("instant/instant-base-master.apk", {}, 5)});
    const auto later = moduleOf("extra", {apkOf("splits/extra-master.apk")}, 2);
    const auto old = [](const char *path, int abi, int other) {
        return variantOf(ProtobufWriter().message(1, sdkTargeting({1}, {21})).message(2, abiTargeting({abi}, {other})),
                         {moduleOf("base", {apkOf(path, {}, 4)})});
    };
    const QByteArray toc = tocOf({old("standalones/standalone-armeabi_v7a.apk", Arm7, X86),
                                  old("standalones/standalone-x86.apk", X86, Arm7),
                                  variantOf(ProtobufWriter().message(1, sdkTargeting({21}, {1})), {base, later}, 1)});
    const auto split = [](const char *path, const char *name, const QStringList &abis = {}) {
        SetManifest manifest;
        manifest.split = name;
        return memberOf(path, manifest, abis);
    };
    SetManifest master;
    master.minSdk = 21;
    master.isSplitRequired = true;
    SetManifest standalone;
    standalone.minSdk = 14;
    return setOf(toc, {memberOf("splits/base-master.apk", master),
                       split("splits/base-arm64_v8a.apk", "config.arm64_v8a", list("arm64-v8a")),
                       split("splits/base-armeabi_v7a.apk", "config.armeabi_v7a", list("armeabi-v7a")),
                       split("splits/base-de.apk", "config.de"), split("splits/base-en.apk", "config.en"),
                       split("splits/base-fr.apk", "config.fr"), split("splits/base-mdpi.apk", "config.mdpi"),
                       split("splits/base-hdpi.apk", "config.hdpi"), split("splits/base-xxhdpi.apk", "config.xxhdpi"),
                       split("splits/extra-master.apk", "extra"), memberOf("instant/instant-base-master.apk", master),
                       memberOf("standalones/standalone-armeabi_v7a.apk", standalone, list("armeabi-v7a")),
                       memberOf("standalones/standalone-x86.apk", standalone, list("x86"))});
}

} // namespace

class TestTocChoice : public QObject
{
    Q_OBJECT

private slots:
    void usualSets_data();
    void usualSets();
    void reasons();
    void weights();
    void languages_data();
    void languages();
    void densities_data();
    void densities();
    void processors_data();
    void processors();
    void sdkVersionsOfPackages();
    void modulesForDevices();
    void severalProcessors();
    void variants();
    void variantsOfProcessorsAndScreens();
    void textures_data();
    void textures();
    void assets();
    void nothingFits_data();
    void nothingFits();
    void damagedTables();
    void damagedByteByByte();
};

void TestTocChoice::usualSets_data()
{
    QTest::addColumn<Device>("device");
    QTest::addColumn<QString>("paths");
    QTest::newRow("phone") << phone()
                           << latin("splits/base-master.apk splits/base-arm64_v8a.apk splits/base-de.apk "
                                    "splits/base-en.apk splits/base-xxhdpi.apk");
    QTest::newRow("lowest SDK of splits")
        << withSdk(21)
        << latin("splits/base-master.apk splits/base-arm64_v8a.apk splits/base-de.apk splits/base-en.apk "
                 "splits/base-xxhdpi.apk");
    QTest::newRow("before splits") << withSdk(20) << latin("standalones/standalone-armeabi_v7a.apk");
    QTest::newRow("32 bits") << withAbis("armeabi-v7a armeabi")
                             << latin("splits/base-master.apk splits/base-armeabi_v7a.apk splits/base-de.apk "
                                      "splits/base-en.apk splits/base-xxhdpi.apk");
    QTest::newRow("no language") << withLocales("ja")
                                 << latin("splits/base-master.apk splits/base-arm64_v8a.apk splits/base-xxhdpi.apk");
    QTest::newRow("too old") << withSdk(13) << latin("4: needs SDK 14, and the device has SDK 13");
    QTest::newRow("another processor") << withAbis("x86")
                                       << latin("5: no native code for x86, only for arm64-v8a, armeabi-v7a");
    QTest::newRow("another processor, before splits") << [] {
        Device device = withAbis("mips");
        device.setSdkVersion(19);
        return device;
    }() << latin("5: no native code for mips, only for armeabi-v7a, x86");
}

void TestTocChoice::usualSets()
{
    QFETCH(Device, device);
    QFETCH(QString, paths);
    QCOMPARE(chosen(usualSet(), device).join(QLatin1Char(' ')), paths);
}

void TestTocChoice::reasons()
{
    PackageDevice file(usualSet());
    const SplitChoice choice = PackageSet(Package(&file)).splitsFor(phone());
    QVERIFY(choice.fits());
    QCOMPARE(choice.message(), QString());
    QStringList reasons;
    for (const SetPackage &package : choice.packages())
        reasons.append(QStringLiteral("%1 %2").arg(int(package.reason())).arg(package.reasonText()));
    QCOMPARE(reasons,
             QStringList({latin("1 for every device"), latin("4 native code for arm64-v8a"), latin("5 language de"),
                          latin("5 language en"), latin("6 screen of 480 dots per inch")}));
    const QList<SetPackage> all = PackageSet(Package(&file)).packages();
    QCOMPARE(all.size(), 13);
    for (const SetPackage &package : all)
        QCOMPARE(package.reason(), SetPackage::Reason::None);
}

void TestTocChoice::weights()
{
    PackageDevice file(usualSet());
    const SplitChoice choice = PackageSet(Package(&file)).splitsFor(phone());
    qint64 packed = 0;
    qint64 unpacked = 0;
    for (const SetPackage &package : choice.packages()) {
        packed += package.packedBytes();
        unpacked += package.bytes();
        QVERIFY(package.packedBytes() < package.bytes());
    }
    QCOMPARE(choice.downloadBytes(), packed);
    QCOMPARE(choice.libraryBytes(), qint64(4));
    QCOMPARE(choice.installedBytes(), unpacked + 4);
    SetManifest split;
    split.split = "config.de";
    QCOMPARE(choice.packages().at(2).bytes(), qint64(packageOf(split).size()));
}

void TestTocChoice::languages_data()
{
    QTest::addColumn<QString>("locales");
    QTest::addColumn<QString>("paths");
    const auto row = [](const char *locales, const char *paths) {
        QTest::newRow(locales) << latin(locales) << latin(paths);
    };
    row("de-AT", "base de");
    row("fr-CA de-DE", "base de fr");
    row("ja", "base rest");
    row("he-IL", "base iw");
    row("iw", "base iw");
    row("zh-Hant-TW", "base zh");
    row("DE", "base de");
    row("fil", "base rest");
}

void TestTocChoice::languages()
{
    QFETCH(QString, locales);
    QFETCH(QString, paths);
    const char *const all = "de fr iw zh";
    QVector<ProtobufWriter> apks{apkOf("base.apk")};
    for (const char *language : {"de", "fr", "iw", "zh"})
        apks.append(apkOf(qPrintable(latin(language) + latin(".apk")), forLanguage(language, all)));
    apks.append(apkOf("rest.apk", forLanguage("", all)));
    const QStringList found = ofModules({moduleOf("base", apks)}, "base.apk de.apk fr.apk iw.apk zh.apk rest.apk",
                                        withLocales(qPrintable(locales)));
    QCOMPARE(found.join(QLatin1Char(' ')).remove(latin(".apk")), paths);
}

void TestTocChoice::densities_data()
{
    QTest::addColumn<int>("density");
    QTest::addColumn<QString>("path");
    QTest::newRow("exact") << 240 << latin("hdpi.apk");
    QTest::newRow("lower than all") << 120 << latin("mdpi.apk");
    QTest::newRow("higher than all") << 640 << latin("xxhdpi.apk");
    QTest::newRow("between: scaled down") << 320 << latin("xxhdpi.apk");
    QTest::newRow("nearer below") << 250 << latin("hdpi.apk");
}

void TestTocChoice::densities()
{
    QFETCH(int, density);
    QFETCH(QString, path);
    const QVector<ProtobufWriter> apks{apkOf("mdpi.apk", forDensity({Mdpi}, {Hdpi, Xxhdpi})),
                                       apkOf("hdpi.apk", forDensity({Hdpi}, {Mdpi, Xxhdpi})),
                                       apkOf("xxhdpi.apk", forDensity({Xxhdpi}, {Mdpi, Hdpi}))};
    QCOMPARE(ofModules({moduleOf("base", apks)}, "mdpi.apk hdpi.apk xxhdpi.apk", withDensity(density)),
             QStringList(path));
}

void TestTocChoice::processors_data()
{
    QTest::addColumn<QString>("abis");
    QTest::addColumn<QString>("path");
    const auto row = [](const char *abis, const char *path) { QTest::newRow(abis) << latin(abis) << latin(path); };
    row("arm64-v8a armeabi-v7a", "arm64.apk");
    row("armeabi-v7a arm64-v8a", "arm7.apk");
    row("mips armeabi-v7a", "arm7.apk");
    row("x86", "rest.apk");
}

void TestTocChoice::processors()
{
    QFETCH(QString, abis);
    QFETCH(QString, path);
    const QVector<ProtobufWriter> apks{apkOf("arm7.apk", forAbi({Arm7}, {Arm64})),
                                       apkOf("arm64.apk", forAbi({Arm64}, {Arm7})),
                                       apkOf("rest.apk", forAbi({}, {Arm64, Arm7}))};
    QCOMPARE(ofModules({moduleOf("base", apks)}, "arm7.apk arm64.apk rest.apk", withAbis(qPrintable(abis))),
             QStringList(path));
}

void TestTocChoice::sdkVersionsOfPackages()
{
    const QVector<ProtobufWriter> apks{apkOf("21.apk", ProtobufWriter().message(5, sdkTargeting({21}, {26}))),
                                       apkOf("26.apk", ProtobufWriter().message(5, sdkTargeting({26}, {21})))};
    const auto found = [&](int sdk) { return ofModules({moduleOf("base", apks)}, "21.apk 26.apk", withSdk(sdk)); };
    QCOMPARE(found(25), QStringList(latin("21.apk")));
    QCOMPARE(found(26), QStringList(latin("26.apk")));
}

void TestTocChoice::modulesForDevices()
{
    const auto conditions =
        ProtobufWriter()
            .message(1, sdkTargeting({24}))
            .message(2, ProtobufWriter().message(1, ProtobufWriter().text(1, "android.hardware.camera")));
    const QVector<ProtobufWriter> modules{
        moduleOf("base", {apkOf("base.apk")}), moduleOf("camera", {apkOf("camera.apk")}, 1, conditions),
        moduleOf("later", {apkOf("later.apk")}, 2), moduleOf("follow", {apkOf("follow.apk")}, 3)};
    const auto found = [&](int sdk, const char *features) {
        Device device = withSdk(sdk);
        device.setFeatures(list(features));
        return ofModules(modules, "base.apk camera.apk later.apk follow.apk", device).join(QLatin1Char(' '));
    };
    QCOMPARE(found(24, "android.hardware.camera"), latin("base.apk camera.apk"));
    QCOMPARE(found(23, "android.hardware.camera"), latin("base.apk"));
    QCOMPARE(found(24, "android.hardware.nfc"), latin("base.apk"));
}

// A variant for several processors at once is better when it has more of the device's.
void TestTocChoice::severalProcessors()
{
    const auto set = [](const QVector<int> &abis) {
        ProtobufWriter writer;
        for (const int abi : abis)
            writer.message(1, ProtobufWriter().number(1, quint64(abi)));
        return writer;
    };
    const auto targeting = [&](const QVector<QVector<int>> &values, const QVector<QVector<int>> &others) {
        ProtobufWriter sets;
        for (const QVector<int> &value : values)
            sets.message(1, set(value));
        for (const QVector<int> &other : others)
            sets.message(2, set(other));
        return ProtobufWriter().message(4, sets);
    };
    const QByteArray toc =
        tocOf({variantOf(targeting({{Arm64}}, {{Arm64, Arm7}, {X86}}), {moduleOf("base", {apkOf("64.apk", {}, 4)})}),
               variantOf(targeting({{Arm64, Arm7}}, {{Arm64}, {X86}}), {moduleOf("base", {apkOf("both.apk", {}, 4)})}),
               variantOf(targeting({{X86}}, {{Arm64}, {Arm64, Arm7}}), {moduleOf("base", {apkOf("x86.apk", {}, 4)})})});
    const QByteArray bytes = setOf(toc, {memberOf("64.apk", {}), memberOf("both.apk", {}), memberOf("x86.apk", {})});
    QCOMPARE(chosen(bytes, withAbis("arm64-v8a armeabi-v7a")), QStringList(latin("both.apk")));
    QCOMPARE(chosen(bytes, withAbis("arm64-v8a")), QStringList(latin("64.apk")));
    QCOMPARE(chosen(bytes, withAbis("x86 armeabi-v7a")), QStringList(latin("x86.apk")));
    QCOMPARE(chosen(bytes, withAbis("mips")),
             QStringList(latin("5: no native code for mips, only for arm64-v8a, armeabi-v7a, x86")));
}

void TestTocChoice::variants()
{
    const auto variant = [](int sdk, const QVector<int> &others, const char *path, int number) {
        return variantOf(ProtobufWriter().message(1, sdkTargeting({sdk}, others)), {moduleOf("base", {apkOf(path)})},
                         number);
    };
    const QByteArray bytes =
        setOf(tocOf({variant(26, {}, "26.apk", 2), variant(21, {}, "21.apk", 3), variant(26, {}, "other.apk", 1)}),
              {memberOf("26.apk", {}), memberOf("21.apk", {}), memberOf("other.apk", {})});
    QCOMPARE(chosen(bytes, withSdk(30)), QStringList(latin("26.apk")));
    QCOMPARE(chosen(bytes, withSdk(25)), QStringList(latin("21.apk")));
    const auto screen = [](const QVector<int> &values, const QVector<int> &others, const char *path) {
        return variantOf(ProtobufWriter().message(3, densityTargeting(values, others)),
                         {moduleOf("base", {apkOf(path)})});
    };
    const QByteArray screens = setOf(tocOf({screen({Mdpi}, {Xxhdpi}, "26.apk"), screen({Xxhdpi}, {Mdpi}, "21.apk")}),
                                     {memberOf("26.apk", {}), memberOf("21.apk", {})});
    QCOMPARE(chosen(screens, withDensity(480)), QStringList(latin("21.apk")));
    QCOMPARE(chosen(screens, withDensity(160)), QStringList(latin("26.apk")));
    QCOMPARE(chosen(setOf(tocOf({screen({Mdpi}, {Xxhdpi}, "26.apk")}), {memberOf("26.apk", {})}), withDensity(480)),
             QStringList(latin("6: no variant is for the device's graphics and a screen of 480 dots per inch")));
}

void TestTocChoice::variantsOfProcessorsAndScreens()
{
    const auto variant = [](const ProtobufWriter &targeting, const char *path, int number) {
        return variantOf(targeting, {moduleOf("base", {apkOf(path)})}, number);
    };
    const QVector<Member> members{memberOf("a.apk", {}), memberOf("b.apk", {})};
    const auto forAbiOf = [](int abi) { return ProtobufWriter().message(2, abiTargeting({abi})); };
    const QByteArray abis =
        setOf(tocOf({variant(forAbiOf(Arm64), "a.apk", 1), variant(forAbiOf(Arm7), "b.apk", 2)}), members);
    QCOMPARE(chosen(abis, withAbis("arm64-v8a armeabi-v7a")), QStringList(latin("a.apk")));
    QCOMPARE(chosen(abis, withAbis("armeabi-v7a arm64-v8a")), QStringList(latin("b.apk")));
    const auto forScreen = [](int density) { return ProtobufWriter().message(3, densityTargeting({density})); };
    const QByteArray screens =
        setOf(tocOf({variant(forScreen(Mdpi), "a.apk", 1), variant(forScreen(Xxhdpi), "b.apk", 2)}), members);
    QCOMPARE(chosen(screens, withDensity(160)), QStringList(latin("a.apk")));
    QCOMPARE(chosen(screens, withDensity(480)), QStringList(latin("b.apk")));
    const QByteArray same = setOf(tocOf({variant({}, "a.apk", 1), variant({}, "b.apk", 2)}), members);
    QCOMPARE(chosen(same, phone()), QStringList(latin("b.apk")));
    const auto forTexture = ProtobufWriter().message(5, abiTargeting({9}));
    QCOMPARE(chosen(setOf(tocOf({variant(forTexture, "a.apk", 1)}), members), phone()),
             QStringList(latin("6: no variant is for the device's graphics and a screen of 480 dots per inch")));
}

void TestTocChoice::textures_data()
{
    QTest::addColumn<QString>("extensions");
    QTest::addColumn<QString>("features");
    QTest::addColumn<QString>("path");
    const char *const astc = "GL_KHR_texture_compression_astc_ldr";
    const char *const etc1 = "GL_OES_compressed_ETC1_RGB8_texture";
    QTest::newRow("ASTC") << latin(astc) << latin("reqGlEsVersion=0x30002") << latin("astc.apk");
    QTest::newRow("ETC2") << latin(etc1) << latin("reqGlEsVersion=0x30000") << latin("etc2.apk");
    QTest::newRow("OpenGL ES 2") << latin(etc1) << latin("reqGlEsVersion=0x20000") << latin("rest.apk");
    QTest::newRow("nothing") << QString() << latin("reqGlEsVersion=none") << latin("rest.apk");
}

void TestTocChoice::textures()
{
    QFETCH(QString, extensions);
    QFETCH(QString, features);
    QFETCH(QString, path);
    const auto forTextures = [](const QVector<int> &values, const QVector<int> &others) {
        return ProtobufWriter().message(6, abiTargeting(values, others));
    };
    const QVector<ProtobufWriter> apks{apkOf("astc.apk", forTextures({9}, {10})),
                                       apkOf("etc2.apk", forTextures({10}, {9})),
                                       apkOf("rest.apk", forTextures({}, {9, 10}))};
    Device device = phone();
    device.setGlExtensions(extensions.split(QLatin1Char(' ')));
    device.setFeatures({features});
    QCOMPARE(ofModules({moduleOf("base", apks)}, "astc.apk etc2.apk rest.apk", device), QStringList(path));
}

// The time of delivery is in the manifest of an asset pack.
void TestTocChoice::assets()
{
    SetManifest now;
    now.split = "now";
    now.delivery = "install-time";
    SetManifest later;
    later.split = "later";
    later.delivery = "on-demand";
    const QByteArray toc =
        tocOf({variantOf({}, {moduleOf("base", {apkOf("base.apk")})})},
              {apkOf("asset-slices/now.apk"), apkOf("asset-slices/later.apk"), apkOf("asset-slices/missing.apk")});
    const QByteArray bytes = setOf(toc, {memberOf("base.apk", {}), memberOf("asset-slices/now.apk", now),
                                         memberOf("asset-slices/later.apk", later)});
    QCOMPARE(chosen(bytes, phone()), list("base.apk asset-slices/now.apk"));
}

void TestTocChoice::nothingFits_data()
{
    QTest::addColumn<QByteArray>("set");
    QTest::addColumn<QString>("text");
    const auto base = moduleOf("base", {apkOf("base.apk")});
    const auto row = [](const char *name, const QByteArray &set, const char *text) {
        QTest::newRow(name) << set << latin(text);
    };
    row("no variant", setOf(tocOf({}), {memberOf("base.apk", {})}), "3: toc.pb has no variant");
    row("missing variant",
        setOf(tocOf({variantOf(ProtobufWriter().message(1, sdkTargeting({21}, {26})), {base})}),
              {memberOf("base.apk", {})}),
        "7: the set lacks the variant for SDK 30");
    row("missing processor",
        setOf(tocOf({variantOf({}, {base, moduleOf("a", {apkOf("a.apk", forAbi({Arm7}, {Arm64}))})})}),
              {memberOf("base.apk", {}), memberOf("a.apk", {})}),
        "7: the set lacks the package for a processor that the device prefers");
    row("missing package", setOf(tocOf({variantOf({}, {base})}), {memberOf("other.apk", {})}),
        "7: the set lacks the package base.apk");
    row("no package", setOf(tocOf({variantOf({}, {})}), {memberOf("base.apk", {})}),
        "7: the set has no base package for the device");
    SetManifest german;
    german.split = "config.de";
    row("unreadable base",
        setOf(tocOf({variantOf({}, {base})}), {memberOf("x/base.apk", {}), {latin("base.apk"), "no archive"}}),
        "1: could not read the manifest of the base package for the device");
    row("no base",
        setOf(tocOf({variantOf({}, {moduleOf("base", {apkOf("de.apk")})})}),
              {memberOf("base.apk", {}), memberOf("de.apk", german)}),
        "7: the set has no base package for the device");
    SetManifest old;
    old.minSdk = 31;
    row("SDK of the manifest", setOf(tocOf({variantOf({}, {base})}), {memberOf("base.apk", old)}),
        "4: needs SDK 31, and the device has SDK 30");
    row("native code of the base",
        setOf(tocOf({variantOf({}, {base})}), {memberOf("base.apk", {}, list("x86 x86_64"))}),
        "5: no native code for arm64-v8a, armeabi-v7a, only for x86, x86_64");
    SetManifest types;
    types.requiredSplitTypes = "base__density,base__abi";
    row("types of splits", setOf(tocOf({variantOf({}, {base})}), {memberOf("base.apk", types)}),
        "7: the set lacks a split of a required type: base__abi, base__density");
}

void TestTocChoice::nothingFits()
{
    QFETCH(QByteArray, set);
    QFETCH(QString, text);
    QCOMPARE(chosen(set, phone()), QStringList(text));
}

void TestTocChoice::damagedTables()
{
    const QVector<Member> packages{memberOf("base.apk", {})};
    const QString text = latin("3: toc.pb is damaged");
    QCOMPARE(chosen(setOf(QByteArray::fromHex("0a05"), packages), phone()), QStringList(text));
    QCOMPARE(chosen(setOf(ProtobufWriter().bytes(9, QByteArray(5 << 20, 'x')).data(), packages), phone()),
             QStringList(text));
    QCOMPARE(chosen(setOf(QByteArray(), packages), phone()), QStringList(text));
}

// A damaged table costs no more than a whole one, and what is chosen is in the set.
void TestTocChoice::damagedByteByByte()
{
    const auto apks = {apkOf("base.apk"), apkOf("de.apk", forLanguage("de", "en")),
                       apkOf("64.apk", forAbi({Arm64}, {Arm7}))};
    const QByteArray toc =
        tocOf({variantOf(ProtobufWriter().message(1, sdkTargeting({21})), {moduleOf("base", apks)})});
    const QVector<Member> packages{memberOf("base.apk", {}), memberOf("de.apk", {}), memberOf("64.apk", {})};
    int others = 0;
    for (int at = 0; at < toc.size(); ++at) {
        for (const char byte : {'\x00', '\x01', '\x7f', '\x80', '\xff'}) {
            QByteArray damaged = toc;
            damaged[at] = byte;
            PackageDevice file(setOf(damaged, packages));
            const SplitChoice choice = PackageSet(Package(&file)).splitsFor(phone());
            QCOMPARE(choice.fits(), choice.message().isEmpty());
            QVERIFY(choice.packages().size() <= 3);
            others += choice.packages().size() != 3 ? 1 : 0;
        }
    }
    QVERIFY(others > 100);
}

QTEST_GUILESS_MAIN(TestTocChoice)
#include "tst_tocchoice.moc"
