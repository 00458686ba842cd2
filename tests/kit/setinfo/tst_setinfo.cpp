// SPDX-License-Identifier: LGPL-2.1-or-later
#include "setinfo/SetInfo.h"

#include "Apk.h"

#include <QtTest>

#include <limits>

using namespace fixture;
using SorrelKit::SetInfo;

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

SetInfo infoOf(const char *name, const QByteArray &json, qint64 work = 1 << 28)
{
    PackageDevice device(zip({{latin(name), json}}));
    ZipArchive archive(&device);
    Budget budget(work, 1 << 28);
    const bool isOpen = archive.open();
    const SetInfo info = isOpen ? SetInfo(archive, &budget) : SetInfo();
    // Everything that was held is free again.
    return budget.bytesLeft() == 1 << 28 ? info : SetInfo();
}

SetInfo::Facts facts()
{
    SetInfo::Facts facts;
    facts.application = latin("org.x");
    facts.versionCode = 7;
    facts.paths = QStringList({latin("a.apk"), latin("b.apk"), latin("c.apk")});
    facts.splitNames = {{latin("a.apk"), QString()}, {latin("b.apk"), latin("config.de")}};
    facts.abis = QStringList(latin("x86"));
    facts.expansions = {{latin("main.obb"), latin("Android/obb/org.x/main.obb")}};
    return facts;
}

} // namespace

class TestSetInfo : public QObject
{
    Q_OBJECT

private slots:
    void matches_data();
    void matches();
    void mismatches_data();
    void mismatches();
    void splitNames();
    void bytesUpToTheCeiling();
    void itemsUpToTheCeiling();
    void textsUpToTheCeiling();
    void mismatchesUpToTheCeiling();
    void needsItsBudget();
    void damagedByteByByte();
};

void TestSetInfo::matches_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("nothing") << latin("manifest.json") << QByteArray("{}");
    QTest::newRow("whole") << latin("manifest.json") << QByteArray(R"({
        "package_name": "org.x", "version_code": "7", "unknown": [1],
        "split_apks": [{"file": "a.apk", "id": "base"}, {"file": "b.apk", "id": "config.de"},
                       {"file": "c.apk", "id": "config.fr"}],
        "expansions": [{"file": "main.obb", "install_path": "Android/obb/org.x/main.obb"}]})");
    QTest::newRow("number") << latin("manifest.json") << QByteArray(R"({"version_code": 7})");
    QTest::newRow("no number") << latin("manifest.json") << QByteArray(R"({"version_code": "seven"})");
    QTest::newRow("other types") << latin("manifest.json")
                                 << QByteArray(R"({"package_name": 5, "split_apks": {"file": 1}, "expansions": [1]})");
    QTest::newRow("info") << latin("info.json")
                          << QByteArray(R"({"pname": "org.x", "versioncode": "7", "arches": ["x86", ""]})");
    QTest::newRow("another file") << latin("other.json") << QByteArray("no JSON");
}

void TestSetInfo::matches()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, json);
    QCOMPARE(infoOf(qPrintable(file), json).mismatches(facts()), QStringList());
}

void TestSetInfo::mismatches_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *json, const char *text) {
        QTest::newRow(name) << latin("manifest.json") << QByteArray(json) << latin("manifest.json ") + latin(text);
    };
    row("no JSON", "{", "is no JSON object, or too large");
    row("a list", "[]", "is no JSON object, or too large");
    row("package", R"({"package_name": "org.y"})", "names the package org.y, and the base is org.x");
    row("version", R"({"version_code": 8})", "has the version 8, and the base has 7");
    row("missing package",
        R"({"split_apks": [{"file": "a.apk"}, {"file": "b.apk", "id": "config.de"}, {"file": "c.apk"}, {"file": "d.apk"}]})",
        "lists d.apk, which the set lacks");
    row("other package", R"({"split_apks": [{"file": "a.apk"}, {"file": "b.apk", "id": "config.de"}]})",
        "does not list c.apk");
    row("other split",
        R"({"split_apks": [{"file": "a.apk"}, {"file": "b.apk", "id": "config.fr"}, {"file": "c.apk"}]})",
        R"(names the split "config.fr" for b.apk, and its manifest "config.de")");
    row("missing expansion", R"({"expansions": [{"file": "patch.obb"}]})", "lists patch.obb, which the set lacks");
    row("other place", R"({"expansions": [{"file": "main.obb", "install_path": "/etc/passwd"}]})",
        "installs main.obb as /etc/passwd, and Android looks for Android/obb/org.x/main.obb");
    QTest::newRow("processor") << latin("info.json") << QByteArray(R"({"arches": ["mips"]})")
                               << latin("info.json names the processor mips, and no package has native code for it");
}

void TestSetInfo::mismatches()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, json);
    QFETCH(QString, text);
    QCOMPARE(infoOf(qPrintable(file), json).mismatches(facts()), QStringList(text));
}

void TestSetInfo::splitNames()
{
    const SetInfo info = infoOf("manifest.json", R"({"split_apks": [{"file": "a.apk", "id": "base"},)"
                                                 R"( {"file": "b.apk", "id": "config.de"}]})");
    QCOMPARE(info.splitName(latin("a.apk")), QString());
    QCOMPARE(info.splitName(latin("b.apk")), latin("config.de"));
    QCOMPARE(info.splitName(latin("c.apk")), QString());
}

void TestSetInfo::bytesUpToTheCeiling()
{
    const QByteArray json = R"({"package_name": "org.y"})";
    const QByteArray most = json + QByteArray(int(SetInfo::MaxBytes - json.size()), ' ');
    QCOMPARE(infoOf("manifest.json", most).mismatches(facts()),
             QStringList(latin("manifest.json names the package org.y, and the base is org.x")));
    QCOMPARE(infoOf("manifest.json", most + ' ').mismatches(facts()),
             QStringList(latin("manifest.json is no JSON object, or too large")));
}

void TestSetInfo::itemsUpToTheCeiling()
{
    const auto splitOfLast = [](int count) {
        QByteArray items;
        for (int i = 1; i < count; ++i)
            items += R"({"file": "b.apk", "id": "c"}, )";
        const QByteArray json = R"({"split_apks": [)" + items + R"({"file": "last.apk", "id": "config.de"}]})";
        return infoOf("manifest.json", json).splitName(latin("last.apk"));
    };
    QCOMPARE(splitOfLast(SetInfo::MaxItems), latin("config.de"));
    QCOMPARE(splitOfLast(SetInfo::MaxItems + 1), QString());
}

void TestSetInfo::textsUpToTheCeiling()
{
    for (const int more : {0, 1}) {
        const QByteArray name(SetInfo::MaxTextLength + more, 'x');
        SetInfo::Facts same;
        same.application = latin(name.constData()).left(SetInfo::MaxTextLength);
        const QByteArray json = "{\"package_name\": \"" + name + "\"}";
        QCOMPARE(infoOf("manifest.json", json).mismatches(same), QStringList());
    }
}

void TestSetInfo::mismatchesUpToTheCeiling()
{
    for (const int more : {0, 1}) {
        SetInfo::Facts many = facts();
        for (int i = 0; i < SetInfo::MaxMismatches + more; ++i)
            many.paths.append(QStringLiteral("%1.apk").arg(i));
        const QByteArray json = R"({"split_apks": [{"file": "a.apk"}, {"file": "b.apk", "id": "config.de"},)"
                                R"( {"file": "c.apk"}]})";
        QCOMPARE(int(infoOf("manifest.json", json).mismatches(many).size()), SetInfo::MaxMismatches);
    }
}

void TestSetInfo::needsItsBudget()
{
    const QByteArray json = R"({"package_name": "org.y"})";
    QCOMPARE(infoOf("manifest.json", json, 10).mismatches(facts()),
             QStringList(latin("manifest.json is no JSON object, or too large")));
}

// No damage crashes; the texts stay bounded.
void TestSetInfo::damagedByteByByte()
{
    const QByteArray json =
        R"({"package_name": "org.y", "version_code": 8, "split_apks": [{"file": "d.apk", "id": "e"}],)"
        R"( "expansions": [{"file": "f", "install_path": "g"}]})";
    for (int at = 0; at < json.size(); ++at) {
        for (const char byte : {'\0', '"', '{', '[', '9', '\xff'}) {
            QByteArray damaged = json;
            damaged[at] = byte;
            QVERIFY(infoOf("manifest.json", damaged).mismatches(facts()).size() <= 8);
        }
    }
}

QTEST_GUILESS_MAIN(TestSetInfo)

#include "tst_setinfo.moc"
