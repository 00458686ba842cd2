// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Files.h"
#include "Tool.h"

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

QByteArray packageOf(const char *split, int minSdk = 21, const char *lib = nullptr)
{
    QVector<fixture::Attribute> attributes{plainText(latin("package"), latin("org.x"))};
    if (split != nullptr)
        attributes.append(plainText(latin("split"), latin(split)));
    QVector<Member> members{{latin("AndroidManifest.xml"),
                             XmlBuilder::manifest()
                                 .start(latin("manifest"), attributes)
                                 .empty(latin("uses-sdk"), {androidValue(latin("minSdkVersion"), Integer, minSdk)})
                                 .end(latin("manifest"))
                                 .build()}};
    if (lib != nullptr)
        members.append({latin(lib), "code"});
    return zip(members);
}

QByteArray deviceOf(const char *abi, int sdk)
{
    return QStringLiteral(
               R"({"supportedAbis": ["%1"], "supportedLocales": ["de-DE"], "screenDensity": 480, "sdkVersion": %2})")
        .arg(latin(abi))
        .arg(sdk)
        .toUtf8();
}

} // namespace

class TestInfoDevice : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void forAPerson();
    void forAProgram();
    void describedSet();
    void nothingFits_data();
    void nothingFits();
    void packageAlone();
    void withoutTheOption();
    void badDevices_data();
    void badDevices();
    void unreadablePackages();
    void namesSteerNoTerminal();

private:
    QString write(const QString &name, const QByteArray &bytes) const
    {
        return writeFile(m_directory.filePath(name), bytes);
    }
    ToolRun info(const QStringList &arguments, const QByteArray &device) const
    {
        return runSorrel(QStringList{latin("info"), latin("--device"), write(latin("device.json"), device)}
                         + arguments);
    }

    QTemporaryDir m_directory;
    QString m_set;
    QByteArray m_base;
    QByteArray m_german;
};

void TestInfoDevice::initTestCase()
{
    m_base = packageOf(nullptr);
    m_german = packageOf("config.de");
    m_set = write(latin("set.apks"), zip({{latin("base.apk"), m_base},
                                          {latin("config.de.apk"), m_german},
                                          {latin("config.fr.apk"), packageOf("config.fr")},
                                          {latin("config.x86.apk"), packageOf("config.x86", 21, "lib/x86/a.so")}},
                                         Compression::Stored));
}

void TestInfoDevice::forAPerson()
{
    const ToolRun run = info({m_set}, deviceOf("x86", 21));
    QCOMPARE(run.status, 0);
    QCOMPARE(run.errors, QByteArray());
    const auto size = [](qint64 bytes) { return QLocale::c().formattedDataSize(bytes, 1); };
    const QString text = QString::fromUtf8(run.output).section(latin("  installs"), 1);
    const qint64 native = packageOf("config.x86", 21, "lib/x86/a.so").size();
    const qint64 library = 4;
    const QString download = size(m_base.size() + m_german.size() + native);
    const QString installed = size(m_base.size() + m_german.size() + native + library);
    QCOMPARE(text, QStringLiteral("         3 packages\n"
                                  "    base.apk       %1  for every device\n"
                                  "    config.de.apk  %2  language de\n"
                                  "    config.x86.apk %3  native code for x86\n"
                                  "  download         %4\n"
                                  "  installed        %5, with 4 bytes of unpacked libraries\n")
                       .arg(size(m_base.size()).rightJustified(10), size(m_german.size()).rightJustified(10),
                            size(native).rightJustified(10), download, installed));
}

void TestInfoDevice::forAProgram()
{
    const ToolRun run = info({latin("--json"), m_set}, deviceOf("x86", 21));
    QCOMPARE(run.status, 0);
    const QJsonObject installs = QJsonDocument::fromJson(run.output).object().value(latin("installs")).toObject();
    QCOMPARE(installs.value(latin("fits")), QJsonValue(true));
    QCOMPARE(installs.value(latin("error")), QJsonValue(latin("none")));
    QCOMPARE(installs.value(latin("text")), QJsonValue(QString()));
    const QJsonArray packages = installs.value(latin("packages")).toArray();
    QCOMPARE(packages.size(), 3);
    const QJsonObject german = packages.at(1).toObject();
    QCOMPARE(german.value(latin("path")), QJsonValue(latin("config.de.apk")));
    QCOMPARE(german.value(latin("split")), QJsonValue(latin("config.de")));
    QCOMPARE(german.value(latin("module")), QJsonValue(latin("base")));
    QCOMPARE(german.value(latin("kind")), QJsonValue(latin("configuration")));
    QCOMPARE(german.value(latin("reason")), QJsonValue(latin("language")));
    QCOMPARE(german.value(latin("text")), QJsonValue(latin("language de")));
    QCOMPARE(german.value(latin("downloadBytes")), QJsonValue(qint64(m_german.size())));
    qint64 bytes = 0;
    for (const QJsonValue package : packages)
        bytes += package.toObject().value(latin("installedBytes")).toInt();
    QCOMPARE(installs.value(latin("libraryBytes")), QJsonValue(4));
    QCOMPARE(installs.value(latin("installedBytes")), QJsonValue(bytes + 4));
    QCOMPARE(installs.value(latin("mismatches")), QJsonValue(QJsonArray()));
}

void TestInfoDevice::describedSet()
{
    const QByteArray json = R"({"package_name": "org.\u001bz", "expansions": [{"file": "main.1.org.x.obb"}]})";
    const QString file = write(latin("set.xapk"), zip({{latin("base.apk"), m_base},
                                                       {latin("main.1.org.x.obb"), QByteArray(2048, 'x')},
                                                       {latin("manifest.json"), json}},
                                                      Compression::Stored));
    const ToolRun person = info({file}, deviceOf("x86", 21));
    QCOMPARE(person.status, 0);
    QVERIFY(
        person.output.contains("  mismatch           manifest.json names the package org.\xef\xbf\xbdz, and the base "
                               "is org.x\n"));
    QVERIFY(person.output.contains("    main.1.org.x.obb    2.0 KiB  to Android/obb/org.x/main.1.org.x.obb\n"));
    const QJsonObject installs = QJsonDocument::fromJson(info({latin("--json"), file}, deviceOf("x86", 21)).output)
                                     .object()
                                     .value(latin("installs"))
                                     .toObject();
    const QJsonObject expansion = installs.value(latin("expansions")).toArray().at(0).toObject();
    QCOMPARE(expansion.value(latin("installPath")), QJsonValue(latin("Android/obb/org.x/main.1.org.x.obb")));
    QCOMPARE(expansion.value(latin("installedBytes")), QJsonValue(2048));
    QCOMPARE(installs.value(latin("downloadBytes")), QJsonValue(qint64(m_base.size()) + 2048));
    QCOMPARE(installs.value(latin("mismatches")).toArray().size(), 1);
}

void TestInfoDevice::nothingFits_data()
{
    QTest::addColumn<QByteArray>("device");
    QTest::addColumn<QString>("error");
    QTest::addColumn<QString>("text");
    QTest::newRow("old") << deviceOf("x86", 20) << latin("sdk-too-low")
                         << latin("needs SDK 21, and the device has SDK 20");
    QTest::newRow("processor") << deviceOf("mips", 21) << latin("no-native-code")
                               << latin("no native code for mips, only for x86");
}

void TestInfoDevice::nothingFits()
{
    QFETCH(QByteArray, device);
    QFETCH(QString, error);
    QFETCH(QString, text);
    const ToolRun run = info({latin("--json"), m_set}, device);
    QCOMPARE(run.status, 1);
    QCOMPARE(QString::fromUtf8(run.errors), QStringLiteral("sorrel: %1: %2\n").arg(m_set, text));
    const QJsonObject installs = QJsonDocument::fromJson(run.output).object().value(latin("installs")).toObject();
    QCOMPARE(installs.value(latin("fits")), QJsonValue(false));
    QCOMPARE(installs.value(latin("error")), QJsonValue(error));
    QCOMPARE(installs.value(latin("text")), QJsonValue(text));
    QCOMPARE(installs.value(latin("packages")), QJsonValue(QJsonArray()));
    const ToolRun person = info({m_set}, device);
    QCOMPARE(person.status, 1);
    QVERIFY(person.output.contains(QStringLiteral("  installs       nothing: %1\n").arg(text).toUtf8()));
}

void TestInfoDevice::packageAlone()
{
    const QString file = write(latin("alone.apk"), m_base);
    const ToolRun run = info({file}, deviceOf("x86", 21));
    QCOMPARE(run.status, 0);
    QVERIFY(run.output.contains("  installs       1 package\n    package  "));
    QCOMPARE(info({file}, deviceOf("x86", 20)).status, 1);
}

void TestInfoDevice::withoutTheOption()
{
    const ToolRun run = runSorrel({latin("info"), latin("--json"), m_set});
    QCOMPARE(run.status, 0);
    QVERIFY(!QJsonDocument::fromJson(run.output).object().contains(latin("installs")));
}

void TestInfoDevice::badDevices_data()
{
    QTest::addColumn<QByteArray>("device");
    QTest::addColumn<QString>("text");
    QTest::newRow("no object") << QByteArray("[]") << latin("no JSON object");
    QTest::newRow("missing") << QByteArray("{}") << latin("supportedAbis is missing");
    QTest::newRow("bad value") << deviceOf("x86", 0) << latin("sdkVersion is no number from 1 to 10000");
}

void TestInfoDevice::badDevices()
{
    QFETCH(QByteArray, device);
    QFETCH(QString, text);
    const ToolRun run = info({m_set}, device);
    QCOMPARE(run.status, 1);
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(QString::fromUtf8(run.errors),
             QStringLiteral("sorrel: %1: %2\n").arg(m_directory.filePath(latin("device.json")), text));
}

void TestInfoDevice::unreadablePackages()
{
    const QString bad = write(latin("bad.apk"), "no package");
    const ToolRun run = info({latin("--json"), bad, m_set}, deviceOf("x86", 21));
    QCOMPARE(run.status, 1);
    const QList<QByteArray> lines = run.output.split('\n');
    QVERIFY(!QJsonDocument::fromJson(lines.at(0)).object().contains(latin("installs")));
    QVERIFY(QJsonDocument::fromJson(lines.at(1)).object().contains(latin("installs")));
}

void TestInfoDevice::namesSteerNoTerminal()
{
    const QString file =
        write(latin("odd.apks"), zip({{latin("base.apk"), m_base}, {latin("\x1b[31m.apk"), packageOf("\x1b[2J")}}));
    for (const QStringList &options : {QStringList(), QStringList(latin("--json"))}) {
        const ToolRun run = info(options + QStringList(file), deviceOf("x86", 21));
        QCOMPARE(run.status, 0);
        QVERIFY(run.output.contains("[31m.apk"));
        QVERIFY(!run.output.contains('\x1b'));
    }
}

QTEST_GUILESS_MAIN(TestInfoDevice)
#include "tst_info_device.moc"
