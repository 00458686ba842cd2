// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PlatformFixture.h"

#include <SorrelKit/Package.h>

#include <QtTest>

using namespace fixture;
using SorrelKit::Feature;
using SorrelKit::Package;

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

QString hardware(const QString &name)
{
    return latin("android.hardware.") + name;
}

/// A manifest that requests permissions, uses features and has activities of orientations.
struct Uses {
    int targetSdkVersion = 30;
    QStringList permissions = {};
    QStringList features = {};    ///< without "android.hardware."; a "-" in front makes one optional
    QList<int> orientations = {}; ///< of an activity each

    QByteArray manifest() const
    {
        XmlBuilder builder;
        builder.attributeId(latin("name"), Attr::Name)
            .attributeId(latin("screenOrientation"), Attr::ScreenOrientation)
            .attributeId(latin("targetSdkVersion"), Attr::TargetSdkVersion)
            .attributeId(latin("required"), Attr::Required)
            .attributeId(latin("version"), Attr::Version)
            .startNamespace(latin("android"), androidUri)
            .start(latin("manifest"), {plainText(latin("package"), latin("org.example"))})
            .empty(latin("uses-sdk"), {androidValue(latin("targetSdkVersion"), Integer, targetSdkVersion)});
        for (const QString &permission : permissions)
            builder.empty(latin("uses-permission"),
                          {androidText(latin("name"), latin("android.permission.") + permission)});
        for (const QString &feature : features) {
            const bool isOptional = feature.startsWith(QLatin1Char('-'));
            builder.empty(latin("uses-feature"), {androidText(latin("name"), hardware(feature.mid(isOptional ? 1 : 0))),
                                                  androidValue(latin("required"), Boolean, isOptional ? 0 : -1),
                                                  androidValue(latin("version"), Integer, 0x400003)});
        }
        builder.start(latin("application"));
        for (const int orientation : orientations)
            builder.empty(latin("activity"), {androidText(latin("name"), latin(".A")),
                                              androidValue(latin("screenOrientation"), Integer, orientation)});
        return builder.end(latin("application")).end(latin("manifest")).build();
    }
};

} // namespace

class TestFeatures : public QObject
{
    Q_OBJECT

private slots:
    void nothing();
    void implied_data();
    void implied();
    void groupsImplyNothing();
    void reasons();
    void words_data();
    void words();
    void namedFeatures();
};

void TestFeatures::nothing()
{
    const Feature feature;
    QCOMPARE(feature.name() + feature.label() + feature.impliedReason(), QString());
    QVERIFY(feature.isRequired() && !feature.isImplied());
    QCOMPARE(feature.version(), 0);
    QVERIFY(Package().impliedFeatures().isEmpty());
}

void TestFeatures::implied_data()
{
    QTest::addColumn<QByteArray>("manifest");
    QTest::addColumn<QString>("names");
    const auto row = [](const char *name, const Uses &uses, const char *names) {
        QTest::newRow(name) << uses.manifest() << latin(names);
    };
    row("none", {}, "faketouch");
    row("a touch screen", {30, {}, {latin("touchscreen")}}, "");
    row("an optional touch screen", {30, {}, {latin("-touchscreen")}}, "");
    row("a permission", {30, {latin("CAMERA")}}, "camera faketouch");
    row("a permission and its feature", {30, {latin("CAMERA")}, {latin("-camera")}}, "faketouch");
    row("a permission of another package", {30, {latin("other.CAMERA")}}, "faketouch");
    row("location", {21, {latin("ACCESS_FINE_LOCATION")}}, "faketouch location");
    row("location at 20", {20, {latin("ACCESS_FINE_LOCATION"), latin("ACCESS_COARSE_LOCATION")}},
        "faketouch location location.gps location.network");
    row("Bluetooth", {5, {latin("BLUETOOTH")}}, "bluetooth faketouch");
    row("Bluetooth at 4", {4, {latin("BLUETOOTH")}}, "faketouch");
    row("a part", {30, {}, {latin("camera.flash")}}, "camera faketouch");
    row("an optional part", {30, {}, {latin("-camera.flash")}}, "faketouch");
    row("a part of a part", {30, {}, {latin("touchscreen.multitouch.distinct")}}, "touchscreen touchscreen.multitouch");
    row("portrait", {30, {}, {}, {1}}, "faketouch screen.portrait");
    row("every landscape", {30, {}, {}, {0, 6, 8}}, "faketouch screen.landscape");
    row("every portrait", {30, {}, {}, {1, 7, 9}}, "faketouch screen.portrait");
    row("other orientations", {30, {}, {}, {-1, 2, 3, 4, 5, 10, 11, 12, 13, 14}}, "faketouch");
    row("an optional orientation", {30, {}, {latin("-screen.portrait")}, {1, 0}}, "faketouch screen.landscape");
}

void TestFeatures::implied()
{
    QFETCH(QByteArray, manifest);
    QFETCH(QString, names);
    PackageDevice device(emptyTable(), manifest);
    QStringList expected;
    for (const QString &name : names.split(QLatin1Char(' ')))
        expected += name.isEmpty() ? QStringList() : QStringList(hardware(name));
    QStringList found;
    for (const Feature &feature : Package(&device).impliedFeatures()) {
        QVERIFY(feature.isImplied() && feature.isRequired());
        found.append(feature.name());
    }
    QCOMPARE(found, expected);
}

void TestFeatures::groupsImplyNothing()
{
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(latin("manifest"), {plainText(latin("package"), latin("org.example"))})
        .empty(latin("uses-permission"), {androidText(latin("name"), latin("android.permission.CAMERA"))});
    PackageDevice without(emptyTable(), XmlBuilder(builder).end(latin("manifest")).build());
    QVERIFY(!Package(&without).impliedFeatures().isEmpty());
    PackageDevice with(emptyTable(), builder.empty(latin("feature-group")).end(latin("manifest")).build());
    QVERIFY(Package(&with).isValid());
    QVERIFY(Package(&with).impliedFeatures().isEmpty());
}

void TestFeatures::reasons()
{
    const Uses uses{30, {latin("BLUETOOTH_ADMIN"), latin("BLUETOOTH")}, {latin("camera.flash")}, {0}};
    PackageDevice device(emptyTable(), uses.manifest());
    QStringList reasons;
    for (const Feature &feature : Package(&device).impliedFeatures())
        reasons.append(feature.impliedReason());
    QCOMPARE(reasons,
             QStringList({latin("requested android.permission.BLUETOOTH_ADMIN, requested android.permission.BLUETOOTH"),
                          latin("uses android.hardware.camera.flash"), latin("default feature for all apps"),
                          latin("an activity has a landscape orientation")}));
}

void TestFeatures::words_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("label");
    QTest::newRow("known") << "bluetooth_le"
                           << "Bluetooth Low Energy";
    QTest::newRow("of a newer platform") << "sensor.hinge_angle"
                                         << "sensor hinge angle";
}

void TestFeatures::words()
{
    QFETCH(QString, name);
    PackageDevice device(emptyTable(), Uses{30, {}, {name}}.manifest());
    QTEST(Package(&device).features().value(0).label(), "label");
}

void TestFeatures::namedFeatures()
{
    PackageDevice device(emptyTable(), Uses{30, {}, {latin("camera"), latin("-vulkan.version")}}.manifest());
    const QList<Feature> features = Package(&device).features();
    QCOMPARE(features.size(), 2);
    QVERIFY(features.at(0).isRequired() && !features.at(0).isImplied());
    QVERIFY(!features.at(1).isRequired());
    QCOMPARE(features.at(1).version(), 0x400003);
}

QTEST_GUILESS_MAIN(TestFeatures)
#include "tst_features.moc"
