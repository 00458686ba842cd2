// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PlatformFixture.h"
#include "format/AndroidAttributes.h"
#include "permissions/PermissionRequests.h"
#include "permissions/PermissionTable.h"

#include <SorrelKit/Package.h>

#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;
using SorrelKit::Package;
using SorrelKit::Permission;
using SorrelKit::PermissionRequest;
using SorrelKit::PermissionRequests;
namespace PermissionTable = SorrelKit::PermissionTable;

namespace {

constexpr qint64 LabelResource = 0x7f010000;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

QString full(const char *constant)
{
    return latin("android.permission.") + latin(constant);
}

/// A manifest with the elements that a test adds to its root.
class Root
{
public:
    explicit Root(int targetSdkVersion = 30, const QString &package = latin("org.example"))
    {
        m_builder.attributeId(latin("label"), Attr::Label)
            .attributeId(latin("name"), Attr::Name)
            .attributeId(latin("protectionLevel"), Attr::ProtectionLevel)
            .attributeId(latin("permissionGroup"), Attr::PermissionGroup)
            .attributeId(latin("description"), Attr::Description)
            .attributeId(latin("targetSdkVersion"), Attr::TargetSdkVersion)
            .attributeId(latin("maxSdkVersion"), Attr::MaxSdkVersion)
            .attributeId(latin("required"), Attr::Required)
            .startNamespace(latin("android"), androidUri)
            .start(latin("manifest"), {plainText(latin("package"), package)})
            .empty(latin("uses-sdk"), {androidValue(latin("targetSdkVersion"), Integer, targetSdkVersion)});
    }

    Root &add(const char *element, const QString &name, QVector<fixture::Attribute> attributes = {})
    {
        attributes.prepend(androidText(latin("name"), name));
        m_builder.empty(latin(element), attributes);
        return *this;
    }
    Root &requests(const char *constant, const QVector<fixture::Attribute> &attributes = {})
    {
        return add("uses-permission", full(constant), attributes);
    }

    QByteArray build() { return m_builder.end(latin("manifest")).build(); }

private:
    XmlBuilder m_builder;
};

QByteArray labels()
{
    return TableBuilder()
        .strings({latin("send notes"), latin("Notizen senden")})
        .package(PackageBuilder()
                     .types({latin("string")})
                     .type(TypeBuilder(1).value(0, String, 0))
                     .type(TypeBuilder(1, ConfigBuilder().locale("de").build()).value(0, String, 1)))
        .build();
}

/// The permissions of the package with the manifest that @p root builds, and the device that they read.
struct Permissions {
    explicit Permissions(Root &root) : device(emptyTable(), root.build()), list(Package(&device).permissions()) {}
    Permission first() const { return list.value(0); }

    PackageDevice device;
    const QList<Permission> list;
};

QStringList namesOf(const QList<Permission> &permissions)
{
    QStringList names;
    for (const Permission &permission : permissions)
        names.append(permission.name().section(QLatin1Char('.'), -1)
                     + (permission.isImplied() ? latin(": ") + permission.impliedReason() : QString()));
    return names;
}

fixture::Attribute number(const char *name, int value)
{
    return androidValue(latin(name), Integer, value);
}

fixture::Attribute isFalse(const char *name)
{
    return androidValue(latin(name), Boolean, 0);
}

/// A platform that declares READ_SMS and GREET, in a group with a label when @p hasGroups is true.
QByteArray platformOf(bool hasGroups)
{
    const QString group = latin("android.permission-group.") + latin(hasGroups ? "SMS" : "UNDEFINED");
    Root root(30, latin("android"));
    root.add("permission-group", latin("android.permission-group.SMS"),
             {androidReference(latin("label"), PlatformLabel)});
    root.add("permission", full("READ_SMS"),
             {androidReference(latin("label"), PlatformAlias), androidText(latin("permissionGroup"), group),
              androidText(latin("description"), latin("Reads messages.")), number("protectionLevel", 0x1001)});
    root.add("permission", full("GREET"), {number("protectionLevel", 2)});
    return package(platformTable(), root.build());
}

/// A platform of the file @p bytes in @p directory.
SorrelKit::Platform platformIn(const QTemporaryDir &directory, const QByteArray &bytes)
{
    return SorrelKit::Platform(writeFile(directory.filePath(latin("platform.apk")), bytes));
}

} // namespace

class TestPermissions : public QObject
{
    Q_OBJECT

private slots:
    void nothing();
    void requestsInTheOrderOfTheManifest();
    void severalRequestsForOnePermission_data();
    void severalRequestsForOnePermission();
    void impliedPermissions_data();
    void impliedPermissions();
    void impliedOnesHaveTheLevelsOfTheirCause();
    void requestsUpToTheCeiling();
    void factsOfThePlatform_data();
    void factsOfThePlatform();
    void theTableIsSorted();
    void unknownPermissions();
    void declaredPermissions();
    void declaredLevels_data();
    void declaredLevels();
    void aPackageCannotDeclareThePlatformsPermissions();
    void permissionsKeepThePackage();
    void wordsOfThePlatform();
    void aPlatformIsAskedFirst();
    void aPlatformWithoutGroups();
    void aPlatformAsAPackage();
    void aDamagedPlatform();
};

void TestPermissions::nothing()
{
    const Permission permission;
    QCOMPARE(permission.name() + permission.label() + permission.description() + permission.group()
                 + permission.groupLabel() + permission.impliedReason(),
             QString());
    QCOMPARE(permission.level(), Permission::Level::Unknown);
    QCOMPARE(int(permission.flags()), 0);
    QVERIFY(!permission.isDeclared() && !permission.isImplied() && permission.isRequired());
    QVERIFY(Package().permissions().isEmpty());
    QVERIFY(Package().permissionNames().isEmpty());
}

void TestPermissions::requestsInTheOrderOfTheManifest()
{
    Root root;
    root.requests("VIBRATE").requests("CAMERA").add("uses-permission-sdk-23", full("BODY_SENSORS"));
    root.requests("CAMERA").add("uses-permission", latin("")).add("uses-feature", latin("no.permission"));
    const Permissions opened(root);
    const QList<Permission> &permissions = opened.list;
    QCOMPARE(namesOf(permissions), QStringList({latin("VIBRATE"), latin("CAMERA"), latin("BODY_SENSORS")}));
    QCOMPARE(permissions.at(1).minSdkVersion(), 0);
    QCOMPARE(permissions.at(2).minSdkVersion(), 23);
}

void TestPermissions::severalRequestsForOnePermission_data()
{
    QTest::addColumn<QByteArray>("manifest");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<bool>("isRequired");
    QTest::newRow("one") << Root().requests("NFC").build() << 0 << 0 << true;
    QTest::newRow("a last level") << Root().requests("NFC", {number("maxSdkVersion", 18)}).build() << 0 << 18 << true;
    QTest::newRow("a negative level") << Root().requests("NFC", {number("maxSdkVersion", -1)}).build() << 0 << 0
                                      << true;
    QTest::newRow("not required") << Root().requests("NFC", {isFalse("required")}).build() << 0 << 0 << false;
    QTest::newRow("two last levels") << Root()
                                            .requests("NFC", {number("maxSdkVersion", 22)})
                                            .requests("NFC", {number("maxSdkVersion", 18), isFalse("required")})
                                            .build()
                                     << 0 << 22 << true;
    QTest::newRow("without a limit behind one")
        << Root().requests("NFC", {number("maxSdkVersion", 22)}).requests("NFC").build() << 0 << 0 << true;
    QTest::newRow("from 23 on") << Root().add("uses-permission-sdk-23", full("NFC"), {isFalse("required")}).build()
                                << 23 << 0 << false;
    QTest::newRow("from 23 on, and always")
        << Root().add("uses-permission-sdk-23", full("NFC")).requests("NFC").build() << 0 << 0 << true;
}

void TestPermissions::severalRequestsForOnePermission()
{
    QFETCH(QByteArray, manifest);
    PackageDevice device(emptyTable(), manifest);
    const QList<Permission> permissions = Package(&device).permissions();
    QCOMPARE(permissions.size(), 1);
    QTEST(permissions.constFirst().minSdkVersion(), "first");
    QTEST(permissions.constFirst().maxSdkVersion(), "last");
    QTEST(permissions.constFirst().isRequired(), "isRequired");
}

void TestPermissions::impliedPermissions_data()
{
    QTest::addColumn<QByteArray>("manifest");
    QTest::addColumn<QStringList>("names");
    const QString old = latin(": targetSdkVersion < 4");
    const QString withWriting = latin("READ_EXTERNAL_STORAGE: requested WRITE_EXTERNAL_STORAGE");
    QTest::newRow("level 3") << Root(3).build()
                             << QStringList({latin("WRITE_EXTERNAL_STORAGE") + old, latin("READ_PHONE_STATE") + old,
                                             withWriting});
    QTest::newRow("level 3, requested") << Root(3)
                                               .requests("READ_EXTERNAL_STORAGE")
                                               .requests("READ_PHONE_STATE")
                                               .requests("WRITE_EXTERNAL_STORAGE")
                                               .build()
                                        << QStringList({latin("READ_EXTERNAL_STORAGE"), latin("READ_PHONE_STATE"),
                                                        latin("WRITE_EXTERNAL_STORAGE")});
    QTest::newRow("level 4") << Root(4).build() << QStringList();
    QTest::newRow("writing") << Root(34).requests("WRITE_EXTERNAL_STORAGE").build()
                             << QStringList({latin("WRITE_EXTERNAL_STORAGE"), withWriting});
    QTest::newRow("contacts at 15")
        << Root(15).requests("WRITE_CONTACTS").requests("READ_CONTACTS").build()
        << QStringList({latin("WRITE_CONTACTS"), latin("READ_CONTACTS"),
                        latin("READ_CALL_LOG: targetSdkVersion < 16 and requested READ_CONTACTS"),
                        latin("WRITE_CALL_LOG: targetSdkVersion < 16 and requested WRITE_CONTACTS")});
    QTest::newRow("contacts at 16") << Root(16).requests("READ_CONTACTS").build()
                                    << QStringList(latin("READ_CONTACTS"));
}

void TestPermissions::impliedPermissions()
{
    QFETCH(QByteArray, manifest);
    PackageDevice device(emptyTable(), manifest);
    const Package package(&device);
    QTEST(namesOf(package.permissions()), "names");
    QStringList requested;
    for (const Permission &permission : package.permissions()) {
        if (!permission.isImplied())
            requested.append(permission.name());
    }
    QCOMPARE(package.permissionNames(), requested);
}

void TestPermissions::impliedOnesHaveTheLevelsOfTheirCause()
{
    const PermissionRequest writing{full("WRITE_EXTERNAL_STORAGE"), 0, 18, false};
    const QVector<PermissionRequest> requests = PermissionRequests::withImplied({writing}, 30);
    QCOMPARE(requests.size(), 2);
    QCOMPARE(requests.at(1).maxSdkVersion, 18);
    QVERIFY(!requests.at(1).isRequired);
}

void TestPermissions::requestsUpToTheCeiling()
{
    Root root;
    for (int i = 0; i <= PermissionRequests::MaxPermissions; ++i)
        root.add("uses-permission", latin("org.x.P%1").arg(i));
    PackageDevice device(emptyTable(), root.build());
    const Package package(&device);
    QCOMPARE(int(package.permissionNames().size()), PermissionRequests::MaxPermissions);
    QCOMPARE(int(package.permissions().size()), PermissionRequests::MaxPermissions);
}

void TestPermissions::factsOfThePlatform_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<Permission::Level>("level");
    QTest::addColumn<int>("flags");
    QTest::addColumn<QString>("group");
    QTest::addColumn<QString>("label");
    using Flag = Permission::Flag;
    QTest::newRow("dangerous") << full("ACCESS_FINE_LOCATION") << Permission::Level::Dangerous << int(Flag::Instant)
                               << "LOCATION"
                               << "access fine location";
    QTest::newRow("normal") << full("VIBRATE") << Permission::Level::Normal << int(Flag::Instant) << QString()
                            << "vibrate";
    QTest::newRow("of the settings") << full("MANAGE_EXTERNAL_STORAGE") << Permission::Level::Signature
                                     << int(Flag::AppOp | Flag::Preinstalled) << QString() << "manage external storage";
    QTest::newRow("with a name of its own") << latin("com.android.launcher.permission.INSTALL_SHORTCUT")
                                            << Permission::Level::Normal << 0 << QString() << "install shortcut";
    QTest::newRow("the first") << full("ACCEPT_HANDOVER") << Permission::Level::Dangerous << 0 << "PHONE"
                               << "accept handover";
    QTest::newRow("of a newer Android") << full("NEARBY_WIFI_DEVICES") << Permission::Level::Dangerous << 0
                                        << "NEARBY_DEVICES"
                                        << "nearby wifi devices";
}

void TestPermissions::factsOfThePlatform()
{
    QFETCH(QString, name);
    QFETCH(QString, group);
    Root root;
    root.add("uses-permission", name);
    const Permissions opened(root);
    const Permission permission = opened.first();
    QTEST(permission.level(), "level");
    QTEST(int(permission.flags()), "flags");
    QCOMPARE(permission.group(), group.isEmpty() ? QString() : latin("android.permission-group.") + group);
    QTEST(permission.label(), "label");
    QCOMPARE(permission.groupLabel().isEmpty(), group.isEmpty());
    QVERIFY(!permission.groupLabel().contains(latin("permission-group")));
    QCOMPARE(permission.description(), QString());
    QVERIFY(!permission.isDeclared());
}

void TestPermissions::theTableIsSorted()
{
    // A row out of order is not found.
    for (const char *constant : {"ACCEPT_HANDOVER", "CAMERA", "INTERNET", "RECORD_AUDIO", "WRITE_USER_DICTIONARY"})
        QVERIFY2(PermissionTable::find(full(constant)), constant);
    QVERIFY(PermissionTable::find(latin("com.android.voicemail.permission.WRITE_VOICEMAIL")));
    QVERIFY(!PermissionTable::find(latin("CAMERA")));
    QVERIFY(!PermissionTable::find(QString()));
    QVERIFY(!PermissionTable::find(latin("zzz")));
}

void TestPermissions::unknownPermissions()
{
    Root root;
    root.add("uses-permission", latin("org.other.permission.READ_NOTES"));
    const Permissions opened(root);
    const Permission permission = opened.first();
    QCOMPARE(permission.level(), Permission::Level::Unknown);
    QCOMPARE(permission.label(), permission.name());
    QCOMPARE(permission.group() + permission.groupLabel() + permission.description(), QString());
}

void TestPermissions::declaredPermissions()
{
    const QString name = latin("org.example.SEND");
    Root root;
    root.add("uses-permission", name)
        .add("permission", name,
             {androidReference(latin("label"), LabelResource), androidText(latin("description"), latin("Sends notes.")),
              number("protectionLevel", 1), androidText(latin("permissionGroup"), latin("org.example.GROUP"))})
        .add("permission", name, {androidText(latin("label"), latin("a second element"))})
        .add("permission-group", latin("org.example.GROUP"), {androidText(latin("label"), latin("notes"))});
    PackageDevice device(labels(), root.build());
    const QList<Permission> permissions = Package(&device).permissions();
    QCOMPARE(permissions.size(), 1);
    const Permission permission = permissions.constFirst();
    QVERIFY(permission.isDeclared());
    QCOMPARE(permission.level(), Permission::Level::Dangerous);
    QCOMPARE(permission.label(QLocale(QLocale::German)), latin("Notizen senden"));
    QCOMPARE(permission.label(QLocale(QLocale::French)), latin("send notes"));
    QCOMPARE(permission.description(), latin("Sends notes."));
    QCOMPARE(permission.group(), latin("org.example.GROUP"));
    QCOMPARE(permission.groupLabel(), latin("notes"));
}

void TestPermissions::declaredLevels_data()
{
    QTest::addColumn<int>("protection");
    QTest::addColumn<Permission::Level>("level");
    QTest::addColumn<int>("flags");
    using Flag = Permission::Flag;
    QTest::newRow("normal") << 0 << Permission::Level::Normal << 0;
    QTest::newRow("signature") << 2 << Permission::Level::Signature << 0;
    QTest::newRow("signatureOrSystem") << 3 << Permission::Level::Signature << int(Flag::Privileged);
    QTest::newRow("internal, role") << 0x4000004 << Permission::Level::Internal << int(Flag::Role);
    QTest::newRow("unknown flag") << 0x40000002 << Permission::Level::Signature << 0x40000000;
    QTest::newRow("unknown base") << 0x2f << Permission::Level::Unknown << int(Flag::Development);
}

void TestPermissions::declaredLevels()
{
    QFETCH(int, protection);
    Root root;
    root.add("uses-permission", latin("a.b")).add("permission", latin("a.b"), {number("protectionLevel", protection)});
    const Permissions opened(root);
    const Permission permission = opened.first();
    QTEST(permission.level(), "level");
    QTEST(int(permission.flags()), "flags");
}

void TestPermissions::aPackageCannotDeclareThePlatformsPermissions()
{
    Root root;
    root.requests("READ_SMS")
        .add("permission", full("READ_SMS"),
             {androidText(latin("label"), latin("nothing at all")), number("protectionLevel", 0)});
    const Permissions opened(root);
    const Permission permission = opened.first();
    QVERIFY(permission.isDeclared());
    QCOMPARE(permission.level(), Permission::Level::Dangerous);
    QCOMPARE(permission.label(), latin("read sms"));
}

void TestPermissions::permissionsKeepThePackage()
{
    Root root;
    root.add("uses-permission", latin("a.b"))
        .add("permission", latin("a.b"), {androidReference(latin("label"), LabelResource)});
    PackageDevice device(labels(), root.build());
    Permission permission = Package(&device).permissions().value(0);
    const Permission copy = permission;
    permission = Permission();
    QCOMPARE(copy.label(QLocale::c()), latin("send notes"));
}

void TestPermissions::wordsOfThePlatform()
{
    const QTemporaryDir directory;
    const SorrelKit::Platform platform = platformIn(directory, platformOf(true));
    Root root;
    root.requests("READ_SMS").requests("GREET").requests("CAMERA");
    PackageDevice device(emptyTable(), root.build());
    Package package(&device);
    package.setPlatform(platform);
    const QList<Permission> permissions = package.permissions();
    const Permission reading = permissions.at(0);
    QCOMPARE(reading.label(QLocale(QLocale::German)), latin("Gut"));
    QCOMPARE(reading.label(QLocale(QLocale::French)), latin("OK"));
    QCOMPARE(reading.description(), latin("Reads messages."));
    QCOMPARE(reading.level(), Permission::Level::Dangerous);
    QCOMPARE(reading.flags(), Permission::Flags(Permission::Flag::Instant));
    QCOMPARE(reading.group(), latin("android.permission-group.SMS"));
    QCOMPARE(reading.groupLabel(QLocale(QLocale::German)), latin("Gut"));
    QVERIFY(!reading.isDeclared());
    // A permission of the platform without a label, and one that this platform does not have.
    QCOMPARE(permissions.at(1).label(), latin("greet"));
    QCOMPARE(permissions.at(1).level(), Permission::Level::Signature);
    QCOMPARE(permissions.at(2).label(), latin("camera"));
    QCOMPARE(permissions.at(2).level(), Permission::Level::Dangerous);
    QCOMPARE(permissions.at(2).groupLabel(), latin("camera"));
}

void TestPermissions::aPlatformIsAskedFirst()
{
    const QTemporaryDir directory;
    Root root;
    for (const char *constant : {"READ_SMS", "GREET"})
        root.requests(constant).add("permission", full(constant), {androidText(latin("label"), latin("harmless"))});
    PackageDevice device(emptyTable(), root.build());
    Package package(&device);
    QCOMPARE(package.permissions().at(0).label(), latin("read sms"));
    QCOMPARE(package.permissions().at(1).label(), latin("harmless"));
    package.setPlatform(platformIn(directory, platformOf(true)));
    QCOMPARE(package.permissions().at(0).label(QLocale::c()), latin("OK"));
    QCOMPARE(package.permissions().at(1).label(), latin("greet"));
}

void TestPermissions::aPlatformWithoutGroups()
{
    const QTemporaryDir directory;
    Root root;
    root.requests("READ_SMS").requests("GREET");
    PackageDevice device(emptyTable(), root.build());
    Package package(&device);
    package.setPlatform(platformIn(directory, platformOf(false)));
    const QList<Permission> permissions = package.permissions();
    QCOMPARE(permissions.at(0).group(), latin("android.permission-group.SMS"));
    QCOMPARE(permissions.at(0).groupLabel(QLocale(QLocale::German)), latin("Gut"));
    QCOMPARE(permissions.at(1).group(), QString());
}

void TestPermissions::aPlatformAsAPackage()
{
    Root root(30, latin("android"));
    root.requests("READ_SMS")
        .add("permission", full("READ_SMS"),
             {androidReference(latin("label"), PlatformLabel), number("protectionLevel", 2)});
    PackageDevice device(platformTable(), root.build());
    const QList<Permission> permissions = Package(&device).permissions();
    QCOMPARE(permissions.at(0).level(), Permission::Level::Signature);
    QCOMPARE(permissions.at(0).label(QLocale(QLocale::German)), latin("Gut"));
}

void TestPermissions::aDamagedPlatform()
{
    const QTemporaryDir directory;
    Root root;
    root.requests("READ_SMS");
    PackageDevice device(emptyTable(), root.build());
    Package package(&device);
    package.setPlatform(platformIn(directory, "no package"));
    QCOMPARE(package.permissions().at(0).label(), latin("read sms"));
    QCOMPARE(package.permissions().at(0).level(), Permission::Level::Dangerous);
}

QTEST_GUILESS_MAIN(TestPermissions)
#include "tst_permissions.moc"
