// SPDX-License-Identifier: LGPL-2.1-or-later
#include "sets/DeviceFile.h"

#include <SorrelKit/Device.h>

#include <QTemporaryDir>
#include <QtTest>

using SorrelKit::Device;
using SorrelKit::DeviceFile;

namespace {

const char Whole[] = R"({"supportedAbis": ["arm64-v8a", "armeabi-v7a"], "supportedLocales": ["de-DE"],
"screenDensity": 640, "sdkVersion": 27, "deviceFeatures": ["android.hardware.camera"],
"glExtensions": ["GL_OES_texture_npot"], "other": {"x": [1]}})";

QByteArray with(const char *name, const QByteArray &value)
{
    QByteArray json(
        R"({"supportedAbis": ["x86"], "supportedLocales": ["de"], "screenDensity": 160, "sdkVersion": 21, ")");
    return json + name + "\": " + value + "}";
}

QByteArray texts(int count)
{
    return "[" + QByteArray("\"a\",").repeated(count - 1) + "\"a\"]";
}

} // namespace

class TestDevice : public QObject
{
    Q_OBJECT

private slots:
    void everyValue();
    void valuesThatMayBeMissing();
    void faults_data();
    void faults();
    void listsUpToTheCeilings();
    void files();
    void fileUpToTheCeiling();
    void setByCode();
    void damagedByteByByte();
};

void TestDevice::everyValue()
{
    const Device device = Device::fromJson(Whole);
    QCOMPARE(device.fault(), Device::Fault::None);
    QCOMPARE(device.faultText(), QString());
    QCOMPARE(device.abis(), QStringList({QStringLiteral("arm64-v8a"), QStringLiteral("armeabi-v7a")}));
    QCOMPARE(device.locales(), QStringList(QStringLiteral("de-DE")));
    QCOMPARE(device.screenDensity(), 640);
    QCOMPARE(device.sdkVersion(), 27);
    QCOMPARE(device.features(), QStringList(QStringLiteral("android.hardware.camera")));
    QCOMPARE(device.glExtensions(), QStringList(QStringLiteral("GL_OES_texture_npot")));
}

void TestDevice::valuesThatMayBeMissing()
{
    QCOMPARE(Device::fromJson(with("other", "null")).fault(), Device::Fault::None);
}

void TestDevice::faults_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<int>("fault");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const QByteArray &json, Device::Fault fault, const char *text) {
        QTest::newRow(name) << json << int(fault) << QString::fromLatin1(text);
    };
    using Fault = Device::Fault;
    row("an array", "[]", Fault::NotJson, "no JSON object");
    row("no number", with("sdkVersion", "\"27\""), Fault::BadValue, "sdkVersion is no number from 1 to 10000");
    row("zero", with("sdkVersion", "0"), Fault::BadValue, "sdkVersion is no number from 1 to 10000");
    row("too new", with("sdkVersion", "10001"), Fault::BadValue, "sdkVersion is no number from 1 to 10000");
    row("fraction", with("sdkVersion", "21.5"), Fault::BadValue, "sdkVersion is no number from 1 to 10000");
    row("no value", with("sdkVersion", "null"), Fault::BadValue, "sdkVersion is no number from 1 to 10000");
    row("negative", with("screenDensity", "-1"), Fault::BadValue, "screenDensity is no number from 1 to 65533");
    row("special density", with("screenDensity", "65534"), Fault::BadValue,
        "screenDensity is no number from 1 to 65533");
    row("huge", with("screenDensity", "1e300"), Fault::BadValue, "screenDensity is no number from 1 to 65533");
    row("a text", with("supportedAbis", "\"x86\""), Fault::BadValue, "supportedAbis is no list of at most 64 texts");
    row("numbers", with("supportedLocales", "[1]"), Fault::BadValue,
        "supportedLocales is no list of at most 4096 texts");
    row("an empty text", with("deviceFeatures", "[\"\"]"), Fault::BadValue,
        "deviceFeatures is no list of at most 4096 texts");
    row("an object", with("glExtensions", "{}"), Fault::BadValue, "glExtensions is no list of at most 4096 texts");
    row("no processors", with("supportedAbis", "[]"), Fault::MissingValue, "supportedAbis is missing");
    row("no languages", with("supportedLocales", "[]"), Fault::MissingValue, "supportedLocales is missing");
    row("nothing", "{}", Fault::MissingValue, "supportedAbis is missing");
    row("no density", R"({"supportedAbis": ["x86"], "supportedLocales": ["de"], "sdkVersion": 21})",
        Fault::MissingValue, "screenDensity is missing");
    row("no version", R"({"supportedAbis": ["x86"], "supportedLocales": ["de"], "screenDensity": 160})",
        Fault::MissingValue, "sdkVersion is missing");
}

void TestDevice::faults()
{
    QFETCH(QByteArray, json);
    QFETCH(int, fault);
    QFETCH(QString, text);
    const Device device = Device::fromJson(json);
    QCOMPARE(int(device.fault()), fault);
    QCOMPARE(device.faultText(), text);
}

void TestDevice::listsUpToTheCeilings()
{
    QCOMPARE(Device::fromJson(with("supportedAbis", texts(DeviceFile::MaxAbis))).fault(), Device::Fault::None);
    QCOMPARE(Device::fromJson(with("supportedAbis", texts(DeviceFile::MaxAbis + 1))).fault(), Device::Fault::BadValue);
    QCOMPARE(Device::fromJson(with("deviceFeatures", texts(DeviceFile::MaxTexts))).fault(), Device::Fault::None);
    QCOMPARE(Device::fromJson(with("deviceFeatures", texts(DeviceFile::MaxTexts + 1))).fault(),
             Device::Fault::BadValue);
}

void TestDevice::files()
{
    QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("device.json")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(Whole);
    file.close();
    QCOMPARE(Device::fromFile(file.fileName()).sdkVersion(), 27);
    QCOMPARE(Device::fromFile(directory.path()).fault(), Device::Fault::CannotRead);
    const Device missing = Device::fromFile(directory.filePath(QStringLiteral("none.json")));
    QCOMPARE(missing.fault(), Device::Fault::CannotRead);
    QCOMPARE(missing.faultText(), QStringLiteral("could not open the file"));
}

void TestDevice::fileUpToTheCeiling()
{
    QTemporaryDir directory;
    const auto faultOf = [&](qint64 size) {
        QFile file(directory.filePath(QString::number(size)));
        if (!file.open(QIODevice::WriteOnly))
            return Device::Fault::NotJson;
        file.write(QByteArray(Whole).leftJustified(int(size), ' '));
        file.close();
        return Device::fromFile(file.fileName()).fault();
    };
    QCOMPARE(faultOf(DeviceFile::MaxBytes), Device::Fault::None);
    QCOMPARE(faultOf(DeviceFile::MaxBytes + 1), Device::Fault::CannotRead);
}

void TestDevice::setByCode()
{
    Device device;
    QCOMPARE(device.fault(), Device::Fault::MissingValue);
    device.setAbis({QStringLiteral("x86")});
    device.setLocales({QStringLiteral("de")});
    device.setScreenDensity(160);
    const Device before = device;
    device.setSdkVersion(21);
    QCOMPARE(device.fault(), Device::Fault::None);
    QCOMPARE(before.fault(), Device::Fault::MissingValue);
}

// A damaged text is another device, or a fault that has a text.
void TestDevice::damagedByteByByte()
{
    const QByteArray whole(Whole);
    int faults = 0;
    for (int at = 0; at < whole.size(); ++at) {
        for (const char byte : {'\0', '"', '}', '9', '\xff'}) {
            QByteArray damaged = whole;
            damaged[at] = byte;
            for (const QByteArray &json : {damaged, whole.left(at)}) {
                const Device device = Device::fromJson(json);
                QCOMPARE(device.faultText().isEmpty(), device.fault() == Device::Fault::None);
                QVERIFY(device.sdkVersion() >= 0 && device.sdkVersion() <= DeviceFile::LargestSdkVersion);
                faults += device.fault() != Device::Fault::None ? 1 : 0;
            }
        }
    }
    QVERIFY(faults > whole.size());
}

QTEST_GUILESS_MAIN(TestDevice)
#include "tst_device.moc"
