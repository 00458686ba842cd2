// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Bytes.h"
#include "format/AndroidAttributes.h"

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Package.h>
#include <SorrelKit/Resources.h>

#include <QtTest>

#include <algorithm>
#include <functional>

using namespace fixture;
using SorrelKit::Entry;
using SorrelKit::IconFile;
using SorrelKit::IconRequest;
using SorrelKit::Package;

namespace {

constexpr quint32 LabelResource = 0x7f010000;
constexpr quint32 IconResource = 0x7f020000;

// A reader may read ahead by a buffer. A member of this size has bytes that no reading ahead reaches.
constexpr int LargeSize = 1 << 20;
constexpr int MostReadAhead = 128 << 10;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

/// Bytes from @p first to before @p end.
struct Range {
    qint64 first = 0;
    qint64 end = 0;
};

/// A package in memory that keeps the ranges which were read.
class RecordingDevice : public PackageDevice
{
public:
    explicit RecordingDevice(const QByteArray &bytes) : PackageDevice(bytes) {}

    /// Whether more was read of the bytes @p content, which are in the package as they are, than readers read ahead.
    bool hasRead(const QByteArray &content) const
    {
        const qint64 at = data().indexOf(content);
        if (at < 0 || content.size() < LargeSize)
            qFatal("the package does not have these bytes as they are, or not enough of them");
        const Range inner{at + MostReadAhead, at + content.size() - MostReadAhead};
        return std::any_of(m_read.cbegin(), m_read.cend(),
                           [&](const Range &read) { return read.first < inner.end && read.end > inner.first; });
    }

protected:
    qint64 readData(char *bytes, qint64 size) override
    {
        const qint64 at = pos();
        const qint64 delivered = PackageDevice::readData(bytes, size);
        m_read.append({at, at + delivered});
        return delivered;
    }

private:
    QVector<Range> m_read;
};

/// A member of @p content and enough bytes after it that no reader minds.
QByteArray large(QByteArray content)
{
    // The bytes are unlike each other, so that they are found in the archive at one place.
    while (content.size() < LargeSize)
        content += QByteArray::number(content.size());
    return content;
}

QByteArray tableOf(const char *label, const char *language = nullptr)
{
    ConfigBuilder configuration;
    if (language != nullptr)
        configuration.locale(language);
    PackageBuilder package;
    package.types({latin("string"), latin("drawable")})
        .type(TypeBuilder(1, configuration.build()).value(0, String, 0))
        .type(TypeBuilder(2).value(0, String, 1));
    return large(TableBuilder().strings({latin(label), latin("res/icon.png")}).package(package).build());
}

QByteArray manifestOf(const QVector<Attribute> &application, const QString &split = QString())
{
    QVector<Attribute> root{plainText(latin("package"), latin("org.example.app")),
                            androidText(latin("versionName"), latin("2.1")),
                            androidValue(latin("versionCode"), Integer, 7)};
    if (!split.isEmpty())
        root.append(plainText(latin("split"), split));
    return XmlBuilder()
        .attributeId(latin("versionName"), Attr::VersionName)
        .attributeId(latin("versionCode"), Attr::VersionCode)
        .attributeId(latin("minSdkVersion"), Attr::MinSdkVersion)
        .attributeId(latin("label"), Attr::Label)
        .attributeId(latin("icon"), Attr::Icon)
        .attributeId(latin("name"), Attr::Name)
        .start(latin("manifest"), root)
        .empty(latin("uses-sdk"), {androidValue(latin("minSdkVersion"), Integer, 21)})
        .empty(latin("uses-permission"), {androidText(latin("name"), latin("android.permission.INTERNET"))})
        .empty(latin("uses-feature"), {androidText(latin("name"), latin("android.hardware.camera"))})
        .start(latin("application"), application)
        .start(latin("activity"), {androidText(latin("name"), latin(".Main"))})
        .launcherFilter()
        .end(latin("activity"))
        .end(latin("application"))
        .end(latin("manifest"))
        .build();
}

QVector<Attribute> references()
{
    return {androidReference(latin("label"), LabelResource), androidReference(latin("icon"), IconResource)};
}

QByteArray packageOf(const QByteArray &table, const QByteArray &manifest, const QByteArray &icon = "no picture")
{
    return zip({{latin("resources.arsc"), table},
                {latin("res/icon.png"), icon},
                {latin("lib/arm64-v8a/libx.so"), QByteArray()},
                {latin("AndroidManifest.xml"), manifest}},
               Compression::Stored);
}

using Query = std::function<void(const Package &)>;

} // namespace

Q_DECLARE_METATYPE(Query)

class TestReadingOnUse : public QObject
{
    Q_OBJECT

private slots:
    void queriesOfTheManifestReadNoTable_data();
    void queriesOfTheManifestReadNoTable();
    void queriesOfResourcesReadTheTable_data();
    void queriesOfResourcesReadTheTable();
    void damagedTableIsNotNoticedBeforeItIsRead();
    void errorsDoNotDependOnTheOrderOfQueries();
    void iconFilesAreReadWhenTheyAreAskedFor();
    void baseOfASetIsReadBeforeItsSplits();
    void tablesOfASetAreReadTogether();
};

void TestReadingOnUse::queriesOfTheManifestReadNoTable_data()
{
    QTest::addColumn<Query>("query");
    const auto row = [](const char *name, const Query &query) { QTest::newRow(name) << query; };
    row("isValid", [](const Package &package) { QVERIFY(package.isValid()); });
    row("packageName", [](const Package &package) { QCOMPARE(package.packageName(), latin("org.example.app")); });
    row("versionName", [](const Package &package) { QCOMPARE(package.versionName(), latin("2.1")); });
    row("versionCode", [](const Package &package) { QCOMPARE(package.versionCode(), qint64(7)); });
    row("minSdkVersion", [](const Package &package) { QCOMPARE(package.minSdkVersion(), 21); });
    row("targetSdkVersion", [](const Package &package) { QCOMPARE(package.targetSdkVersion(), 21); });
    row("permissions", [](const Package &package) { QCOMPARE(package.permissions().size(), 1); });
    row("permissionNames", [](const Package &package) { QCOMPARE(package.permissionNames().size(), 1); });
    row("features", [](const Package &package) { QCOMPARE(package.features().size(), 1); });
    row("impliedFeatures", [](const Package &package) { QCOMPARE(package.impliedFeatures().size(), 1); });
    row("openGlEsVersion", [](const Package &package) { QVERIFY(package.openGlEsVersion().isNull()); });
    row("nativeAbis", [](const Package &package) { QCOMPARE(package.nativeAbis(), {latin("arm64-v8a")}); });
    row("splits", [](const Package &package) { QVERIFY(package.splits().isEmpty()); });
    row("launchers", [](const Package &package) {
        const Entry launcher = package.launchers().value(0);
        QCOMPARE(launcher.packageName(), latin("org.example.app"));
        QCOMPARE(launcher.className(), latin("org.example.app.Main"));
        QVERIFY(launcher.isShown());
        QCOMPARE(launcher.iconResource(), IconResource);
    });
}

void TestReadingOnUse::queriesOfTheManifestReadNoTable()
{
    QFETCH(Query, query);
    const QByteArray table = tableOf("Plain");
    RecordingDevice device(packageOf(table, manifestOf(references())));
    query(Package(&device));
    QVERIFY(!device.hasRead(table));
}

void TestReadingOnUse::queriesOfResourcesReadTheTable_data()
{
    QTest::addColumn<Query>("query");
    const auto row = [](const char *name, const Query &query) { QTest::newRow(name) << query; };
    row("error", [](const Package &package) { QVERIFY(!package.error()); });
    row("labels", [](const Package &package) { QCOMPARE(package.labels().value(QString()), latin("Plain")); });
    row("label", [](const Package &package) { QCOMPARE(package.label(), latin("Plain")); });
    row("launcher's labels", [](const Package &package) {
        QCOMPARE(package.launchers().value(0).labels().value(QString()), latin("Plain"));
    });
    row("iconFiles", [](const Package &package) { QCOMPARE(package.launchers().value(0).iconFiles().size(), 0); });
    row("resources",
        [](const Package &package) { QCOMPARE(SorrelKit::Resources(package).find(latin("string/x")), 0u); });
    row("icon",
        [](const Package &package) { QVERIFY(SorrelKit::DrawableRenderer(package).icon(IconRequest(48)).isNull()); });
}

void TestReadingOnUse::queriesOfResourcesReadTheTable()
{
    QFETCH(Query, query);
    const QByteArray table = tableOf("Plain");
    RecordingDevice device(packageOf(table, manifestOf(references())));
    query(Package(&device));
    QVERIFY(device.hasRead(table));
}

void TestReadingOnUse::damagedTableIsNotNoticedBeforeItIsRead()
{
    const QByteArray table = large("no table");
    RecordingDevice device(packageOf(table, manifestOf({androidText(latin("label"), latin("Written"))})));
    const Package package(&device);
    QVERIFY(package.isValid());
    QCOMPARE(package.packageName(), latin("org.example.app"));
    QCOMPARE(package.label(), latin("Written"));
    QCOMPARE(package.launchers().value(0).labels().value(QString()), latin("Written"));
    QVERIFY(!device.hasRead(table));
    QCOMPARE(package.error().code(), SorrelKit::Error::Code::BadTable);
    QVERIFY(device.hasRead(table));
    QCOMPARE(package.label(), latin("Written"));
}

void TestReadingOnUse::errorsDoNotDependOnTheOrderOfQueries()
{
    const QByteArray bytes = packageOf(large("no table"), XmlBuilder().empty(latin("resources")).build());
    RecordingDevice device(bytes);
    const Package package(&device);
    QVERIFY(SorrelKit::Resources(package).ids().isEmpty());
    QCOMPARE(package.error().message(), latin("could not parse AndroidManifest.xml"));
    RecordingDevice other(bytes);
    QCOMPARE(Package(&other).error(), package.error());
}

void TestReadingOnUse::iconFilesAreReadWhenTheyAreAskedFor()
{
    const QByteArray icon = large(picture(48, 48, 0xff0000));
    RecordingDevice device(packageOf(tableOf("Plain"), manifestOf(references()), icon));
    const Entry launcher = Package(&device).launchers().value(0);
    QCOMPARE(launcher.label(), latin("Plain"));
    QVERIFY(!device.hasRead(icon));
    QCOMPARE(launcher.iconFiles().value(0).size(), QSize(48, 48));
    QVERIFY(device.hasRead(icon));
}

void TestReadingOnUse::baseOfASetIsReadBeforeItsSplits()
{
    const QByteArray table = tableOf("Plain");
    const QByteArray german = packageOf(tableOf("Deutsch", "de"), large(manifestOf({}, latin("config.de"))));
    RecordingDevice device(
        zip({{latin("config.de.apk"), german}, {latin("base.apk"), packageOf(table, manifestOf(references()))}},
            Compression::Stored));
    const Package set(&device);
    QCOMPARE(set.packageName(), latin("org.example.app"));
    QCOMPARE(set.minSdkVersion(), 21);
    QCOMPARE(set.launchers().size(), 1);
    QVERIFY(!device.hasRead(german));
    QVERIFY(!device.hasRead(table));
    QCOMPARE(set.splits(), {latin("config.de")});
    QVERIFY(device.hasRead(german));
    QVERIFY(!device.hasRead(table));
}

void TestReadingOnUse::tablesOfASetAreReadTogether()
{
    const QByteArray table = tableOf("Plain");
    const QByteArray german = tableOf("Deutsch", "de");
    RecordingDevice device(zip({{latin("config.de.apk"), packageOf(german, manifestOf({}, latin("config.de")))},
                                {latin("base.apk"), packageOf(table, manifestOf(references()))}},
                               Compression::Stored));
    const Package set(&device);
    QCOMPARE(set.nativeAbis(), {latin("arm64-v8a")});
    QVERIFY(!device.hasRead(table) && !device.hasRead(german));
    QCOMPARE(set.label(QLocale("de")), latin("Deutsch"));
    QVERIFY(device.hasRead(table) && device.hasRead(german));
}

QTEST_GUILESS_MAIN(TestReadingOnUse)
#include "tst_readingonuse.moc"
