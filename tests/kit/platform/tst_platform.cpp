// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "PlatformFixture.h"

#include "package/PackageAccess.h"
#include "platform/PlatformData.h"

#include <SorrelKit/Package.h>
#include <SorrelKit/Platform.h>
#include <SorrelKit/Resources.h>

#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;
using SorrelKit::Error;
using SorrelKit::Package;
using SorrelKit::PackageAccess;
using SorrelKit::Platform;
using SorrelKit::PlatformData;
using SorrelKit::Resources;

namespace {

constexpr const char *Variable = "SORREL_PLATFORM";

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

// A package whose label and version name are these resources.
QByteArray packageReferringTo(quint32 label, const QByteArray &table = emptyTable())
{
    XmlBuilder manifest = packageManifest();
    manifest
        .start(latin("manifest"),
               {plainText(latin("package"), latin("org.example.app")), androidReference(latin("versionName"), label)})
        .empty(latin("application"), {androidReference(latin("label"), label)})
        .end(latin("manifest"));
    return package(table, manifest.build());
}

// The color @p id as the package sees it; 0 for none.
quint32 color(const Package &package, quint32 id)
{
    return PackageAccess::data(package)->resolver().resource(id).value.argb().value_or(0);
}

QByteArray ownTable(quint32 reference)
{
    return TableBuilder()
        .package(PackageBuilder()
                     .types({latin("string")})
                     .keys({latin("name")})
                     .type(TypeBuilder(1).value(0, Reference, reference)))
        .build();
}

} // namespace

class TestPlatform : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void nonePlatformHasNoError();
    void variableNamesThePlatform();
    void statesItsApiLevel_data();
    void statesItsApiLevel();
    void errorIsThatOfTheFile_data();
    void errorIsThatOfTheFile();
    void damagedTableKeepsWhatIsBeforeTheFault();
    void hasTheManifest();

    void packageHasNoPlatformByDefault();
    void labelsAreInTheLanguageOfTheUser();
    void ownReferencesLeadToThePlatform();
    void missingResourcesResolveToNothing();
    void packageWithItsOwnPlatformResourcesUsesThem();
    void referencesHaveNames();
    void stagedIdsAreThoseOfTheirAliases();
    void platformIsOpenedOnlyForItsResources();
    void copiesShareTheFile();
    void hostilePlatformsStayWithinBounds();

private:
    QString file(const char *name) const { return m_directory.filePath(latin(name)); }

    QTemporaryDir m_directory;
    QByteArray m_platform;
};

void TestPlatform::initTestCase()
{
    m_platform = package(platformTable(), platformManifest());
    writeFile(file("framework.apk"), m_platform);
}

void TestPlatform::init()
{
    qunsetenv(Variable);
}

void TestPlatform::nonePlatformHasNoError()
{
    for (const Platform &none : {Platform(), Platform(QString())}) {
        QVERIFY(!none.isValid());
        QCOMPARE(none.error(), Error());
        QCOMPARE(none.apiLevel(), 0);
        QVERIFY(none.fileName().isEmpty());
    }
}

void TestPlatform::variableNamesThePlatform()
{
    qputenv(Variable, QFile::encodeName(file("framework.apk")));
    QCOMPARE(Platform::installed().fileName(), file("framework.apk"));
    QVERIFY(Platform::installed().isValid());
    qputenv(Variable, QByteArray("/does/not/exist"));
    QCOMPARE(Platform::installed().error().code(), Error::Code::CannotOpen);
    qputenv(Variable, QByteArray());
    QVERIFY(Platform::installed().fileName().isEmpty());
    QCOMPARE(Platform::installed().error(), Error());
}

void TestPlatform::statesItsApiLevel_data()
{
    QTest::addColumn<QByteArray>("manifest");
    QTest::addColumn<int>("level");
    const auto manifest = [](const QVector<Attribute> &root, const QVector<Attribute> &sdk) {
        return packageManifest()
            .start(latin("manifest"), root)
            .empty(latin("uses-sdk"), sdk)
            .end(latin("manifest"))
            .build();
    };
    const Attribute version = androidValue(latin("versionCode"), Integer, 34);
    QTest::newRow("the level that it targets") << platformManifest() << 29;
    QTest::newRow("its version") << manifest({version}, {}) << 34;
    QTest::newRow("both") << manifest({version}, {androidValue(latin("targetSdkVersion"), Integer, 29)}) << 29;
    QTest::newRow("none") << manifest({}, {}) << 0;
    QTest::newRow("a preview") << manifest({}, {androidText(latin("targetSdkVersion"), latin("Tiramisu"))}) << 0;
    QTest::newRow("below zero") << manifest({}, {androidValue(latin("targetSdkVersion"), Integer, -1)}) << 0;
    QTest::newRow("another document") << XmlBuilder::manifest().empty(latin("resources")).build() << 0;
    QTest::newRow("damaged") << platformManifest().left(100) << 0;
}

void TestPlatform::statesItsApiLevel()
{
    QFETCH(QByteArray, manifest);
    writeFile(file("level.apk"), package(platformTable(), manifest));
    QTEST(Platform(file("level.apk")).apiLevel(), "level");
}

void TestPlatform::errorIsThatOfTheFile_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("error");
    QTest::newRow("no archive") << QByteArray("framework") << latin("could not open APK file");
    QTest::newRow("no table") << zip({{latin("AndroidManifest.xml"), platformManifest()}})
                              << latin("could not parse resources.arsc: not a resource table");
    QTest::newRow("a package") << package(platformTable(0x7f), platformManifest())
                               << latin("could not parse resources.arsc: no package has the id 0x01");
    QTest::newRow("no packages") << package(emptyTable(), platformManifest())
                                 << latin("could not parse resources.arsc: no package has the id 0x01");
}

void TestPlatform::errorIsThatOfTheFile()
{
    QFETCH(QByteArray, bytes);
    writeFile(file("other.apk"), bytes);
    const Platform platform(file("other.apk"));
    QTEST(platform.error().message(), "error");
    QVERIFY(!platform.isValid());
    // Packages read as without a platform.
    PackageDevice device(packageReferringTo(PlatformColor));
    Package package(&device);
    package.setPlatform(platform);
    QCOMPARE(color(package, PlatformColor), 0xffaaaaaau);
}

void TestPlatform::damagedTableKeepsWhatIsBeforeTheFault()
{
    const QByteArray shortHeader = Bytes().u16(int(ChunkType::Package)).u16(4).u32(8).data();
    writeFile(file("cut.apk"), package(platformTable(0x01, shortHeader), platformManifest()));
    const Platform platform(file("cut.apk"));
    QCOMPARE(platform.error().code(), Error::Code::BadTable);
    QVERIFY(platform.isValid());
}

void TestPlatform::hasTheManifest()
{
    PlatformData platform(file("framework.apk"));
    QCOMPARE(platform.manifest().children.size(), 2);
    QCOMPARE(platform.manifest().children.at(1).name, latin("permission"));
    QVERIFY(PlatformData(file("none.apk")).manifest().isNull());
}

void TestPlatform::packageHasNoPlatformByDefault()
{
    PackageDevice device(packageReferringTo(PlatformLabel));
    Package package(&device);
    QVERIFY(package.platform().fileName().isEmpty());
    QCOMPARE(package.label(), latin("org.example.app"));
    QVERIFY(package.labels().isEmpty());
    package.setPlatform(Platform(file("framework.apk")));
    QCOMPARE(package.platform().fileName(), file("framework.apk"));
    QCOMPARE(package.label(QLocale::c()), latin("OK"));
    QCOMPARE(package.versionName(), latin("OK"));
    package.setPlatform(Platform());
    QVERIFY(package.platform().fileName().isEmpty());
    QCOMPARE(package.versionName(), QString());
}

void TestPlatform::labelsAreInTheLanguageOfTheUser()
{
    for (const quint32 label : {PlatformLabel, PlatformAlias}) {
        PackageDevice device(packageReferringTo(label));
        Package package(&device);
        package.setPlatform(Platform(file("framework.apk")));
        QCOMPARE(package.label(QLocale(QLocale::German)), latin("Gut"));
        QCOMPARE(package.label(QLocale(QLocale::French)), latin("OK"));
        const QMap<QString, QString> labels{{QString(), latin("OK")}, {latin("de"), latin("Gut")}};
        QCOMPARE(package.labels(), labels);
        QCOMPARE(package.versionName(), latin("OK"));
    }
}

void TestPlatform::ownReferencesLeadToThePlatform()
{
    PackageDevice device(packageReferringTo(0x7f010000, ownTable(PlatformAlias)));
    Package package(&device);
    package.setPlatform(Platform(file("framework.apk")));
    QCOMPARE(package.label(QLocale(QLocale::German)), latin("Gut"));
    QCOMPARE(package.versionName(), latin("OK"));
}

void TestPlatform::missingResourcesResolveToNothing()
{
    PackageDevice device(packageReferringTo(MissingInPlatform));
    Package package(&device);
    package.setPlatform(Platform(file("framework.apk")));
    QCOMPARE(package.label(), latin("org.example.app"));
    QVERIFY(package.labels().isEmpty());
    // The platform has another value, and lacks the next color, which is known without a platform.
    constexpr quint32 NextColor = PlatformColor + 1;
    QCOMPARE(color(package, PlatformColor), ColorOfPlatform);
    QCOMPARE(color(package, NextColor), 0u);
    QCOMPARE(color(Package(), PlatformColor), 0xffaaaaaau);
    QCOMPARE(color(Package(), NextColor), 0xffffffffu);
}

void TestPlatform::packageWithItsOwnPlatformResourcesUsesThem()
{
    const QByteArray table = TableBuilder()
                                 .strings({latin("Own")})
                                 .package(PackageBuilder(0x01, latin("android"))
                                              .types({latin("a"), latin("b"), latin("c"), latin("string")})
                                              .type(TypeBuilder(4).value(0, String, 0)))
                                 .build();
    PackageDevice device(packageReferringTo(PlatformLabel, table));
    Package package(&device);
    package.setPlatform(Platform(file("missing.apk")));
    QCOMPARE(package.label(), latin("Own"));
}

void TestPlatform::referencesHaveNames()
{
    PackageDevice device(packageReferringTo(PlatformLabel, ownTable(PlatformAlias)));
    Package package(&device);
    QVERIFY(package.manifestXml().contains("android:label=\"@0x01040000\""));
    package.setPlatform(Platform(file("framework.apk")));
    QVERIFY(package.manifestXml().contains("android:label=\"@android:string/ok\""));
    QVERIFY(package.manifestXml(Package::References::Numbers).contains("android:label=\"@0x01040000\""));
    const Resources resources(package);
    QCOMPARE(resources.defaultValue(0x7f010000).text(), latin("@android:string/yes"));
    QCOMPARE(resources.name(PlatformIcon), latin("android:drawable/icon"));
    QCOMPARE(resources.name(MissingInPlatform), QString());
    // A package that is a platform has its own names.
    PackageDevice own(packageReferringTo(PlatformAlias, platformTable()));
    Package framework(&own);
    framework.setPlatform(Platform(file("framework.apk")));
    QVERIFY(framework.manifestXml().contains("android:label=\"@android:string/yes\""));
    QCOMPARE(Resources(framework).name(MissingInPlatform), QString());
}

void TestPlatform::stagedIdsAreThoseOfTheirAliases()
{
    constexpr quint32 Staged = 0x01fe0003;
    const QByteArray aliases = aliasChunk({Staged, 0x01040000});
    const QByteArray table = TableBuilder()
                                 .strings({latin("Hello")})
                                 .package(PackageBuilder(0x01, latin("android"))
                                              .types({latin("a"), latin("b"), latin("c"), latin("string")})
                                              .keys({latin("greeting")})
                                              .type(TypeBuilder(4).value(0, String, 0))
                                              .chunk(aliases))
                                 .build();
    writeFile(file("staged.apk"), fixture::package(table, platformManifest()));
    PackageDevice device(packageReferringTo(0x7f010000, ownTable(Staged)));
    Package package(&device);
    QCOMPARE(package.label(), latin("org.example.app"));
    package.setPlatform(Platform(file("staged.apk")));
    QCOMPARE(package.label(), latin("Hello"));
    QCOMPARE(Resources(package).defaultValue(0x7f010000).text(), latin("@android:string/greeting"));
    package.setPlatform(Platform(file("framework.apk")));
    QCOMPARE(package.label(), latin("org.example.app"));
}

void TestPlatform::platformIsOpenedOnlyForItsResources()
{
    const QString late = file("late.apk");
    const Platform platform(late);
    PackageDevice device(packageReferringTo(
        0x7f010000, TableBuilder()
                        .strings({latin("Own")})
                        .package(PackageBuilder().types({latin("string")}).type(TypeBuilder(1).value(0, String, 0)))
                        .build()));
    Package package(&device);
    package.setPlatform(platform);
    QCOMPARE(package.label(), latin("Own"));
    QCOMPARE(package.versionName(), latin("Own"));
    QCOMPARE(package.error(), Error());
    // It can still be opened, so nothing tried before.
    writeFile(late, m_platform);
    QVERIFY(platform.isValid());
}

void TestPlatform::copiesShareTheFile()
{
    const QString name = file("shared.apk");
    writeFile(name, m_platform);
    const Platform platform(name);
    const Platform copy = platform;
    QVERIFY(platform.isValid());
    QVERIFY(QFile::remove(name));
    QVERIFY(copy.isValid());
    Package package;
    package.setPlatform(platform);
    QVERIFY(package.platform().isValid());
    QVERIFY(!Platform(name).isValid());
}

void TestPlatform::hostilePlatformsStayWithinBounds()
{
    const QByteArray application = packageReferringTo(0x7f010000, ownTable(PlatformAlias));
    for (int at = 0; at < m_platform.size(); ++at) {
        QByteArray damaged = m_platform;
        damaged[at] = char(~damaged.at(at));
        writeFile(file("damaged.apk"), damaged);
        PackageDevice device(application);
        Package package(&device);
        package.setPlatform(Platform(file("damaged.apk")));
        QVERIFY(package.labels().size() <= 2);
        QVERIFY(package.platform().apiLevel() >= 0);
        // The platform is no part of the package.
        QCOMPARE(package.error(), Error());
    }
}

QTEST_GUILESS_MAIN(TestPlatform)
#include "tst_platform.moc"
