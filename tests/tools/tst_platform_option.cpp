// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PlatformFixture.h"
#include "Tool.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

// A package whose label and icon are the platform's, and which has a string that is one.
QByteArray application()
{
    const QByteArray table = TableBuilder()
                                 .package(PackageBuilder()
                                              .types({latin("string")})
                                              .keys({latin("alias")})
                                              .type(TypeBuilder(1).value(0, Reference, PlatformLabel)))
                                 .build();
    XmlBuilder manifest = packageManifest();
    manifest.start(latin("manifest"), {plainText(latin("package"), latin("org.example.app"))})
        .start(latin("application"),
               {androidReference(latin("label"), PlatformLabel), androidReference(latin("icon"), PlatformIcon)})
        .start(latin("activity"), {androidText(latin("name"), latin(".Main"))})
        .launcherFilter()
        .end(latin("activity"))
        .end(latin("application"))
        .end(latin("manifest"));
    return package(table, manifest.build());
}

QJsonObject launcherIn(const QByteArray &line)
{
    return QJsonDocument::fromJson(line).object().value(latin("launchers")).toArray().at(0).toObject();
}

} // namespace

/// The option `--platform`, and the variable SORREL_PLATFORM.
class TestPlatformOption : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void infoHasLabelsAndIconsOfThePlatform();
    void variableIsTheDefault();
    void workersUseThePlatform();
    void manifestHasItsNames();
    void resourcesHaveItsNames();
    void iconIsDrawn();
    void iconWithoutAPlatformNamesTheResource();
    void lintReportsWhatThePackageLacks();
    void fileThatIsNoPlatformIsRefused_data();
    void fileThatIsNoPlatformIsRefused();
    void onlyCommandsThatShowResourcesHaveIt();

private:
    QTemporaryDir m_directory;
    QString m_application;
    QString m_platform;
};

void TestPlatformOption::initTestCase()
{
    m_application = writeFile(m_directory.filePath(latin("app.apk")), application());
    m_platform =
        writeFile(m_directory.filePath(latin("framework.apk")),
                  package(platformTable(), platformManifest(), {{latin("res/icon.png"), picture(48, 48, 0xffff0000)}}));
}

void TestPlatformOption::infoHasLabelsAndIconsOfThePlatform()
{
    const QStringList info{latin("info"), latin("--json"), m_application};
    const QJsonObject without = launcherIn(runSorrel(info).output);
    QCOMPARE(without.value(latin("labels")).toObject(), QJsonObject());
    QCOMPARE(without.value(latin("icons")).toArray(), QJsonArray());
    const ToolRun run = runSorrel(info + QStringList{latin("--platform"), m_platform});
    QCOMPARE(run.status, 0);
    const QJsonObject launcher = launcherIn(run.output);
    QCOMPARE(launcher.value(latin("labels")).toObject(),
             QJsonObject({{QString(), latin("OK")}, {latin("de"), latin("Gut")}}));
    QCOMPARE(launcher.value(latin("icons")).toArray(), QJsonArray({QJsonObject{{latin("kind"), latin("png")},
                                                                               {latin("path"), latin("res/icon.png")},
                                                                               {latin("platform"), true},
                                                                               {latin("width"), 48},
                                                                               {latin("height"), 48}}}));
}

void TestPlatformOption::variableIsTheDefault()
{
    ToolSetting setting;
    setting.environment.insert(latin("SORREL_PLATFORM"), m_platform);
    const auto labels = [&](const QStringList &options) {
        const ToolRun run = runSorrel(QStringList{latin("info"), latin("--json"), m_application} + options, setting);
        return launcherIn(run.output).value(latin("labels")).toObject().size();
    };
    QCOMPARE(labels({}), 2);
    QCOMPARE(labels({latin("--platform"), latin("none")}), 0);
    QCOMPARE(labels({latin("--platform=none")}), 0);
}

void TestPlatformOption::workersUseThePlatform()
{
    for (const QString &extra : {latin("--ordered"), latin("--icon=48"), latin("--lint")}) {
        const ToolRun run =
            runSorrel({latin("scan"), latin("--jobs=1"), extra, latin("--platform"), m_platform, m_application});
        QCOMPARE(run.status, 0);
        QCOMPARE(launcherIn(run.output).value(latin("labels")).toObject().size(), 2);
        const bool hasIcon = QJsonDocument::fromJson(run.output).object().contains(latin("icon"));
        QCOMPARE(hasIcon, extra == latin("--icon=48"));
    }
    const QString page = m_directory.filePath(latin("page.html"));
    QCOMPARE(runSorrel({latin("catalog"), latin("-o"), page, latin("--platform"), m_platform, m_application}).status,
             0);
    QFile file(page);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("Gut"));
}

void TestPlatformOption::manifestHasItsNames()
{
    QVERIFY(runSorrel({latin("manifest"), m_application}).output.contains("android:label=\"@0x01040000\""));
    const ToolRun run = runSorrel({latin("manifest"), latin("--platform"), m_platform, m_application});
    QVERIFY(run.output.contains("android:label=\"@android:string/ok\""));
    QVERIFY(run.output.contains("android:icon=\"@android:drawable/icon\""));
}

void TestPlatformOption::resourcesHaveItsNames()
{
    QVERIFY(runSorrel({latin("resources"), m_application}).output.contains("@0x01040000"));
    const ToolRun run = runSorrel({latin("resources"), latin("--platform"), m_platform, m_application});
    QVERIFY(run.output.contains("@android:string/ok"));
}

void TestPlatformOption::iconIsDrawn()
{
    const QString png = m_directory.filePath(latin("icon.png"));
    QCOMPARE(runSorrel({latin("icon"), latin("-o"), png, latin("--platform"), m_platform, m_application}).status, 0);
    const QImage image(png);
    QVERIFY(!image.isNull());
    QCOMPARE(image.pixel(image.width() / 2, image.height() / 2), 0xffff0000u);
}

void TestPlatformOption::iconWithoutAPlatformNamesTheResource()
{
    const QString png = m_directory.filePath(latin("none.png"));
    const ToolRun run = runSorrel({latin("icon"), latin("-o"), png, m_application});
    QCOMPARE(run.status, 1);
    QVERIFY(run.errors.contains("needs the platform's resource 0x01080000"));
}

void TestPlatformOption::lintReportsWhatThePackageLacks()
{
    // Devices have other files than this platform, so the finding stays.
    const ToolRun without = runSorrel({latin("lint"), m_application});
    const ToolRun with = runSorrel({latin("lint"), latin("--platform"), m_platform, m_application});
    QVERIFY(without.output.contains("one of Android's own"));
    QVERIFY(with.output.contains("one of Android's own"));
}

void TestPlatformOption::fileThatIsNoPlatformIsRefused_data()
{
    QTest::addColumn<QByteArray>("bytes"); // none for a missing file
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("missing") << QByteArray() << QByteArray("could not open APK file");
    QTest::newRow("another package") << application() << QByteArray("no package has the id 0x01");
    QTest::newRow("no archive") << QByteArray("framework") << QByteArray("could not open APK file");
}

void TestPlatformOption::fileThatIsNoPlatformIsRefused()
{
    QFETCH(QByteArray, bytes);
    const QString name = m_directory.filePath(latin("other.apk"));
    QFile::remove(name);
    if (!bytes.isEmpty())
        writeFile(name, bytes);
    for (const QString &command : {latin("info"), latin("manifest"), latin("icon"), latin("scan")}) {
        const ToolRun run = runSorrel({command, latin("--platform"), name, m_application});
        QCOMPARE(run.status, 1);
        QCOMPARE(run.output, QByteArray());
        QTEST(run.errors.mid(run.errors.lastIndexOf(": ") + 2).trimmed(), "error");
    }
}

void TestPlatformOption::onlyCommandsThatShowResourcesHaveIt()
{
    for (const QString &command : {latin("files"), latin("verify"), latin("diff")})
        QCOMPARE(runSorrel({command, latin("--platform"), m_platform, m_application, m_application}).status, 2);
}

QTEST_GUILESS_MAIN(TestPlatformOption)
#include "tst_platform_option.moc"
