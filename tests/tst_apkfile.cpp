// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "ApkFile.h"
#include "Bytes.h"
#include "Devices.h"
#include "LogCapture.h"
#include "archive/PackageError.h"
#include "document/AndroidNamespace.h"

#include <QTemporaryDir>
#include <QtTest>

#include <memory>

using namespace fixture;

namespace {

using Query = void (*)(ApkFile &);

const QString resourcesMember = QStringLiteral("resources.arsc");
const QString manifestMember = QStringLiteral("AndroidManifest.xml");

// A manifest with a complete root element. The wrong tag closes it.
QByteArray brokenManifest()
{
    return XmlBuilder::manifest()
        .start(QStringLiteral("manifest"),
               {plainText(QStringLiteral("package"), QStringLiteral("org.example.partial"))})
        .empty(QStringLiteral("uses-sdk"), {androidValue(QStringLiteral("minSdkVersion"), Integer, 21)})
        .end(QStringLiteral("application"))
        .build();
}

QByteArray damagedTable()
{
    return emptyTable().chopped(1);
}

// A manifest with these uses-sdk elements, each given by its attributes.
QByteArray sdkManifest(const QVector<QVector<Attribute>> &elements)
{
    XmlBuilder builder; // no resource ids, which would put the names into Android's namespace
    builder.startNamespace(QStringLiteral("android"), androidUri).start(QStringLiteral("manifest"));
    for (const QVector<Attribute> &attributes : elements)
        builder.empty(QStringLiteral("uses-sdk"), attributes);
    return builder.end(QStringLiteral("manifest")).build();
}

Attribute minSdkText(const char *text)
{
    return androidText(QStringLiteral("minSdkVersion"), QString::fromLatin1(text));
}

void compareErrorDocument(const QDomDocument &document, const QString &text)
{
    const QDomElement root = document.documentElement();
    QCOMPARE(document.childNodes().length(), 1);
    QCOMPARE(root.tagName(), QStringLiteral("error"));
    QVERIFY(root.namespaceURI().isNull());
    QCOMPARE(root.attributes().length(), 0);
    QCOMPARE(root.childNodes().length(), 1);
    QVERIFY(root.firstChild().isText());
    QCOMPARE(root.text(), text);
}

void compareError(const ApkFile &apk, int code, const char *text)
{
    QCOMPARE(apk.getError(), code);
    QCOMPARE(apk.getErrorString(), QString::fromLatin1(text));
}

} // namespace

Q_DECLARE_METATYPE(Query)

class TestApkFile : public QObject
{
    Q_OBJECT

private slots:
    void metaObjectHoldsTheClassNameAlone();
    void objectIsAQObjectAndAPointer();
    void parentOwnsTheObject();

    void newObjectReportsNoError();
    void constructionOpensNothing();
    void missingFileIsFoundByTheFirstQuery_data();
    void missingFileIsFoundByTheFirstQuery();
    void fileThatIsNoArchiveCannotBeOpened();
    void sequentialDeviceCannotBeOpened();
    void openingTwiceOpensOnce();
    void archiveStaysOpenUntilTheObjectIsGone();
    void deviceStaysTheCallers();
    void keepsAnOpenDeviceForAnOpenArchive();
    void deviceThatIsClosedAgainIsNoOpenArchive();
    void archiveStaysOpenWhenItsDeviceIsClosed();
    void openSucceedsAfterTheFileAppears();

    void errorTextOfEveryCode_data();
    void errorTextOfEveryCode();
    void namespaceIsAndroids();

    void resourcesAreReadOnce();
    void resourcesOutliveTheObject();
    void missingTable();
    void damagedTableIsRetriedByEveryCall();
    void tableMemberNamesAreCaseSensitive();

    void manifestIsReadOnce();
    void manifestCopySharesTheCache();
    void manifestNeedsTheTable();
    void manifestOfAPackageThatCannotBeOpened();
    void missingManifest();
    void damagedManifestIsRetriedByEveryCall();
    void laterSuccessKeepsTheCode();
    void newFailureReplacesTheCode();

    void mainPackageIsTheRootsAttribute();
    void mainPackageIsFoundByItsLocalName();
    void mainPackageOfABrokenPackageIsEmpty();
    void mainPackageIsEmptyAndNotNull_data();
    void mainPackageIsEmptyAndNotNull();
    void keepsThePackageOfAManifestThatBrokeOff();

    void minSdkVersion_data();
    void minSdkVersion();
    void minSdkVersionIsFoundAtAnyDepth();
    void minSdkVersionOfABrokenPackageIsOne();

    void debugLinesCarryTheirPlace();
};

void TestApkFile::metaObjectHoldsTheClassNameAlone()
{
    const QMetaObject &meta = ApkFile::staticMetaObject;
    QCOMPARE(meta.className(), "ApkFile");
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QCOMPARE(meta.methodCount(), meta.methodOffset());
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    QCOMPARE(meta.enumeratorCount(), meta.enumeratorOffset());
    QCOMPARE(meta.classInfoCount(), meta.classInfoOffset());
    QCOMPARE(meta.constructorCount(), 0);

    // The first integers of moc's output: the revision, the class name, then a count and an offset of each kind.
    const QVector<uint> revisions{7, 8, 10, 11, 12}; // two of Qt 5, and those of Qt 6
    const uint *data = meta.d.data;
    QVERIFY2(revisions.contains(data[0]), QByteArray::number(data[0]));
    for (int i = 1; i < 14; ++i)
        QCOMPARE(data[i], 0U);

    ApkFile apk(QStringLiteral("none.apk"));
    QCOMPARE(apk.metaObject(), &meta);
    QCOMPARE(apk.qt_metacast("ApkFile"), static_cast<void *>(&apk));
    QCOMPARE(apk.qt_metacast("QObject"), static_cast<void *>(static_cast<QObject *>(&apk)));
    QCOMPARE(apk.qt_metacast("Other"), nullptr);
}

void TestApkFile::objectIsAQObjectAndAPointer()
{
    QCOMPARE(sizeof(ApkFile), sizeof(QObject) + sizeof(void *));
    QCOMPARE(sizeof(ApkLauncherInfo), sizeof(void *));
    QCOMPARE(sizeof(ApkResources), sizeof(void *));
}

void TestApkFile::parentOwnsTheObject()
{
    auto parent = std::make_unique<QObject>();
    QPointer<ApkFile> byName(new ApkFile(QStringLiteral("none.apk"), parent.get()));
    PackageDevice device(emptyTable(), smallManifest());
    QPointer<ApkFile> byDevice(new ApkFile(&device, parent.get()));
    QCOMPARE(byName->parent(), parent.get());
    QCOMPARE(byDevice->parent(), parent.get());
    parent.reset();
    QVERIFY(byName.isNull());
    QVERIFY(byDevice.isNull());
}

void TestApkFile::newObjectReportsNoError()
{
    const ApkFile apk(QStringLiteral("/nonexistent/none.apk"));
    compareError(apk, 0, "no error");
    QVERIFY(!apk.isOpen());
}

void TestApkFile::constructionOpensNothing()
{
    PackageDevice device(emptyTable(), smallManifest());
    const ApkFile apk(&device);
    QCOMPARE(device.timesOpened(), 0);
    QVERIFY(!device.isOpen());
    QVERIFY(!apk.isOpen());
}

void TestApkFile::missingFileIsFoundByTheFirstQuery_data()
{
    QTest::addColumn<Query>("query");
    QTest::newRow("open") << Query([](ApkFile &apk) { QVERIFY(!apk.open()); });
    QTest::newRow("resources") << Query([](ApkFile &apk) { QVERIFY(!apk.resources().isValid()); });
    QTest::newRow("manifest") << Query(
        [](ApkFile &apk) { compareErrorDocument(apk.getManifest(), QStringLiteral("could not open APK file")); });
    QTest::newRow("package") << Query([](ApkFile &apk) { QCOMPARE(apk.mainPackage(), QString()); });
    QTest::newRow("minSdkVersion") << Query([](ApkFile &apk) { QCOMPARE(apk.minSdkVersion(), 1); });
    QTest::newRow("launchers") << Query([](ApkFile &apk) { QVERIFY(apk.getLauncherInfo(true).isEmpty()); });
}

void TestApkFile::missingFileIsFoundByTheFirstQuery()
{
    QFETCH(Query, query);
    ApkFile apk(QStringLiteral("/nonexistent/none.apk"));
    query(apk);
    compareError(apk, 1, "could not open APK file");
    QVERIFY(!apk.isOpen());
}

void TestApkFile::fileThatIsNoArchiveCannotBeOpened()
{
    for (const QByteArray &bytes : {QByteArray(), QByteArray("PK"), QByteArray(1000, 'x')}) {
        PackageDevice device(bytes);
        ApkFile apk(&device);
        QVERIFY(!apk.open());
        compareError(apk, 1, "could not open APK file");
    }
}

void TestApkFile::sequentialDeviceCannotBeOpened()
{
    SequentialDevice device(package(emptyTable(), smallManifest()));
    device.close();
    ApkFile apk(&device);
    const LogCapture log; // of the ZIP library's warning
    QVERIFY(!apk.open());
    compareError(apk, 1, "could not open APK file");
}

void TestApkFile::openingTwiceOpensOnce()
{
    PackageDevice device(emptyTable(), smallManifest());
    ApkFile apk(&device);
    QVERIFY(apk.open());
    QVERIFY(apk.isOpen());
    QVERIFY(apk.open());
    QCOMPARE(device.timesOpened(), 1);
    compareError(apk, 0, "no error");
}

void TestApkFile::archiveStaysOpenUntilTheObjectIsGone()
{
    PackageDevice device(emptyTable(), smallManifest());
    {
        const ApkFile apk(&device);
        apk.resources();
        QVERIFY(apk.isOpen());
        apk.getManifest();
        QVERIFY(apk.isOpen());
        QVERIFY(device.isOpen());
    }
    QVERIFY(!device.isOpen());
}

void TestApkFile::deviceStaysTheCallers()
{
    auto device = std::make_unique<PackageDevice>(emptyTable(), smallManifest());
    QPointer<QIODevice> watch(device.get());
    for (int round = 0; round < 2; ++round) {
        ApkFile apk(device.get());
        QCOMPARE(device->parent(), nullptr);
        QCOMPARE(apk.mainPackage(), QStringLiteral("org.example.app"));
    }
    QVERIFY(!watch.isNull());
}

void TestApkFile::keepsAnOpenDeviceForAnOpenArchive()
{
    PackageDevice device(emptyTable(), smallManifest());
    QVERIFY(device.open(QIODevice::ReadOnly));
    ApkFile apk(&device);
    QVERIFY(apk.isOpen());
    QVERIFY(apk.open());
    compareError(apk, 0, "no error");

    const LogCapture log; // of the ZIP library's warning about a look-up in a closed archive
    QVERIFY(!apk.resources().isValid());
    compareError(apk, 2, "could not find resources.arsc");
    compareErrorDocument(apk.getManifest(), QStringLiteral("could not find resources.arsc"));
    QVERIFY(device.isOpen());
}

void TestApkFile::deviceThatIsClosedAgainIsNoOpenArchive()
{
    PackageDevice device(emptyTable(), smallManifest());
    QVERIFY(device.open(QIODevice::ReadOnly));
    const ApkFile apk(&device);
    QVERIFY(apk.isOpen());
    device.close();
    QVERIFY(!apk.isOpen());
    // The archive was never opened before this call.
    QVERIFY(apk.resources().isValid());
    QVERIFY(apk.isOpen());
    QCOMPARE(device.timesOpened(), 2);
    compareError(apk, 0, "no error");
}

void TestApkFile::archiveStaysOpenWhenItsDeviceIsClosed()
{
    PackageDevice device(emptyTable(), smallManifest());
    ApkFile apk(&device);
    QVERIFY(apk.open());
    device.close();
    QVERIFY(apk.isOpen());
    QVERIFY(apk.open());
    QCOMPARE(device.timesOpened(), 1);
}

void TestApkFile::openSucceedsAfterTheFileAppears()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("late.apk"));
    ApkFile apk(path);
    QCOMPARE(apk.mainPackage(), QString());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(package(emptyTable(), smallManifest()));
    file.close();
    QCOMPARE(apk.mainPackage(), QStringLiteral("org.example.app"));
    compareError(apk, 1, "could not open APK file");
}

// every error text

void TestApkFile::errorTextOfEveryCode_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << 0 << QStringLiteral("no error");
    QTest::newRow("1") << 1 << QStringLiteral("could not open APK file");
    QTest::newRow("2") << 2 << QStringLiteral("could not find resources.arsc");
    QTest::newRow("3") << 3 << QStringLiteral("could not parse resources.arsc");
    QTest::newRow("4") << 4 << QStringLiteral("could not find AndroidManifest.xml");
    QTest::newRow("5") << 5 << QStringLiteral("could not parse AndroidManifest.xml");
    QTest::newRow("6") << 6 << QStringLiteral("Android refuses the package");
    QTest::newRow("7") << 7 << QStringLiteral("unknown error");
    QTest::newRow("-1") << -1 << QStringLiteral("unknown error");
}

void TestApkFile::errorTextOfEveryCode()
{
    QFETCH(int, code);
    QTEST(PackageError::text(code), "text");
}

void TestApkFile::namespaceIsAndroids()
{
    QCOMPARE(androidNamespace, androidUri);
    QCOMPARE(androidNamespace.size(), 42);
}

void TestApkFile::resourcesAreReadOnce()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("app.apk"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(package(TableBuilder().strings({QStringLiteral("kept")}).build(), smallManifest()));
    file.close();
    const ApkFile apk(path);
    QVERIFY(apk.resources().isValid());
    QVERIFY(file.resize(0));
    QVERIFY(apk.resources().isValid());
    QCOMPARE(apk.resources().valueToString(String, 0), QStringLiteral("kept"));
    compareError(apk, 0, "no error");
}

void TestApkFile::resourcesOutliveTheObject()
{
    PackageDevice device(TableBuilder().strings({QStringLiteral("kept")}).build(), smallManifest());
    auto apk = std::make_unique<ApkFile>(&device);
    const ApkResources resources = apk->resources();
    apk.reset();
    QVERIFY(resources.isValid());
    QCOMPARE(resources.valueToString(String, 0), QStringLiteral("kept"));
}

void TestApkFile::missingTable()
{
    PackageDevice device(zip({{manifestMember, smallManifest()}}));
    const ApkFile apk(&device);
    QVERIFY(!apk.resources().isValid());
    compareError(apk, 2, "could not find resources.arsc");
}

void TestApkFile::damagedTableIsRetriedByEveryCall()
{
    PackageDevice device(damagedTable(), smallManifest());
    const ApkFile apk(&device);
    const LogCapture log;
    for (int attempt = 1; attempt <= 3; ++attempt) {
        QVERIFY(!apk.resources().isValid());
        compareError(apk, 3, "could not parse resources.arsc");
        QCOMPARE(log.texts().filter(QStringLiteral("Error extracting resources: ")).size(), attempt);
    }
}

void TestApkFile::tableMemberNamesAreCaseSensitive()
{
    PackageDevice device(zip({{QStringLiteral("Resources.arsc"), emptyTable()}, {manifestMember, smallManifest()}}));
    const ApkFile apk(&device);
    apk.resources();
    compareError(apk, 2, "could not find resources.arsc");
}

void TestApkFile::manifestIsReadOnce()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("app.apk"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(package(emptyTable(), smallManifest()));
    file.close();
    ApkFile apk(path);
    QCOMPARE(apk.getManifest().documentElement().tagName(), QStringLiteral("manifest"));
    QVERIFY(file.resize(0));
    QCOMPARE(apk.getManifest().documentElement().tagName(), QStringLiteral("manifest"));
    QCOMPARE(apk.mainPackage(), QStringLiteral("org.example.app"));
    compareError(apk, 0, "no error");
}

void TestApkFile::manifestCopySharesTheCache()
{
    PackageDevice device(emptyTable(), smallManifest());
    ApkFile apk(&device);
    apk.getManifest().documentElement().setAttribute(QStringLiteral("package"), QStringLiteral("edited"));
    QCOMPARE(apk.mainPackage(), QStringLiteral("edited"));
}

void TestApkFile::manifestNeedsTheTable()
{
    PackageDevice withoutTable(zip({{manifestMember, smallManifest()}}));
    const ApkFile first(&withoutTable);
    compareErrorDocument(first.getManifest(), QStringLiteral("could not find resources.arsc"));
    compareError(first, 2, "could not find resources.arsc");

    PackageDevice withDamagedTable(damagedTable(), smallManifest());
    const ApkFile second(&withDamagedTable);
    const LogCapture log;
    compareErrorDocument(second.getManifest(), QStringLiteral("could not parse resources.arsc"));
    compareError(second, 3, "could not parse resources.arsc");
}

void TestApkFile::manifestOfAPackageThatCannotBeOpened()
{
    const ApkFile apk(QStringLiteral("/nonexistent/none.apk"));
    compareErrorDocument(apk.getManifest(), QStringLiteral("could not open APK file"));
}

void TestApkFile::missingManifest()
{
    PackageDevice device(zip({{resourcesMember, emptyTable()}}));
    ApkFile apk(&device);
    compareErrorDocument(apk.getManifest(), QStringLiteral("could not find AndroidManifest.xml"));
    compareError(apk, 4, "could not find AndroidManifest.xml");
    QVERIFY(apk.resources().isValid());
    QCOMPARE(apk.mainPackage(), QString());
    QCOMPARE(apk.minSdkVersion(), 1);
    QVERIFY(apk.getLauncherInfo(true).isEmpty());
}

void TestApkFile::damagedManifestIsRetriedByEveryCall()
{
    PackageDevice device(emptyTable(), brokenManifest());
    const ApkFile apk(&device);
    const LogCapture log;
    for (int attempt = 1; attempt <= 3; ++attempt) {
        compareErrorDocument(apk.getManifest(), QStringLiteral("could not parse AndroidManifest.xml"));
        compareError(apk, 5, "could not parse AndroidManifest.xml");
        QCOMPARE(log.texts().filter(QStringLiteral("XmlLoader error: ")).size(), attempt);
    }
}

void TestApkFile::laterSuccessKeepsTheCode()
{
    PackageDevice device(emptyTable(), brokenManifest());
    ApkFile apk(&device);
    const LogCapture log;
    apk.getManifest();
    QVERIFY(apk.resources().isValid());
    QVERIFY(apk.open());
    compareError(apk, 5, "could not parse AndroidManifest.xml");
}

void TestApkFile::newFailureReplacesTheCode()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("late.apk"));
    ApkFile apk(path);
    QVERIFY(!apk.open());
    compareError(apk, 1, "could not open APK file");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(zip({{resourcesMember, emptyTable()}}));
    file.close();
    apk.getManifest();
    compareError(apk, 4, "could not find AndroidManifest.xml");
}

void TestApkFile::mainPackageIsTheRootsAttribute()
{
    PackageDevice device(emptyTable(), smallManifest(QStringLiteral("org.example.näme")));
    ApkFile apk(&device);
    QCOMPARE(apk.mainPackage(), QStringLiteral("org.example.näme"));
}

void TestApkFile::mainPackageIsFoundByItsLocalName()
{
    const QByteArray manifest =
        XmlBuilder::manifest()
            .empty(QStringLiteral("manifest"), {androidText(QStringLiteral("package"), QStringLiteral("org.other"))})
            .build();
    PackageDevice device(emptyTable(), manifest);
    // A QDomElement stores attributes by their local names, so a query without a namespace finds this one.
    ApkFile apk(&device);
    QCOMPARE(apk.mainPackage(), QStringLiteral("org.other"));
}

void TestApkFile::mainPackageIsEmptyAndNotNull_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QString manifest = QStringLiteral("manifest");
    QTest::newRow("no archive") << QByteArray();
    QTest::newRow("no table") << zip({{manifestMember, smallManifest()}});
    QTest::newRow("no manifest") << zip({{resourcesMember, emptyTable()}});
    QTest::newRow("broken manifest") << package(emptyTable(), QByteArray("\x03\x00", 2));
    QTest::newRow("no attribute") << package(emptyTable(), XmlBuilder().empty(manifest).build());
    QTest::newRow("empty attribute") << package(
        emptyTable(), XmlBuilder().empty(manifest, {plainText(QStringLiteral("package"), QStringLiteral(""))}).build());
}

void TestApkFile::mainPackageIsEmptyAndNotNull()
{
    QFETCH(const QByteArray, bytes);
    PackageDevice device(bytes);
    const LogCapture log;
    const QString name = ApkFile(&device).mainPackage();
    QVERIFY(name.isEmpty());
    QVERIFY(!name.isNull());
}

void TestApkFile::mainPackageOfABrokenPackageIsEmpty()
{
    PackageDevice device(emptyTable(), QByteArray("\x03\x00", 2));
    ApkFile apk(&device);
    const LogCapture log;
    QCOMPARE(apk.mainPackage(), QString());
    compareError(apk, 5, "could not parse AndroidManifest.xml");
}

void TestApkFile::keepsThePackageOfAManifestThatBrokeOff()
{
    PackageDevice device(emptyTable(), brokenManifest());
    ApkFile apk(&device);
    const LogCapture log;
    QCOMPARE(apk.mainPackage(), QStringLiteral("org.example.partial"));
    compareError(apk, 5, "could not parse AndroidManifest.xml");
    compareErrorDocument(apk.getManifest(), QStringLiteral("could not parse AndroidManifest.xml"));
}

void TestApkFile::minSdkVersion_data()
{
    using Elements = QVector<QVector<Attribute>>;
    QTest::addColumn<QByteArray>("manifest");
    QTest::addColumn<int>("version");
    const Attribute plain = plainText(QStringLiteral("minSdkVersion"), QStringLiteral("9"));
    const Attribute target = androidText(QStringLiteral("targetSdkVersion"), QStringLiteral("33"));
    QTest::newRow("typed") << sdkManifest(Elements{{androidValue(QStringLiteral("minSdkVersion"), Integer, 26)}}) << 26;
    QTest::newRow("text") << sdkManifest(Elements{{minSdkText("19")}}) << 19;
    QTest::newRow("first element that has it")
        << sdkManifest(Elements{{target}, {minSdkText("8")}, {minSdkText("9")}}) << 8;
    QTest::newRow("none") << sdkManifest(Elements{}) << 1;
    QTest::newRow("none has it") << sdkManifest(Elements{{target}, {}}) << 1;
    QTest::newRow("without namespace") << sdkManifest(Elements{{plain}}) << 1;
    QTest::newRow("without namespace, then with") << sdkManifest(Elements{{plain}, {minSdkText("5")}}) << 5;
    QTest::newRow("code name") << sdkManifest(Elements{{minSdkText("Q")}}) << 0;
    QTest::newRow("hexadecimal") << sdkManifest(Elements{{minSdkText("0x15")}}) << 0;
    QTest::newRow("reference") << sdkManifest(Elements{{androidReference(QStringLiteral("minSdkVersion"), 0x7f010000)}})
                               << 0;
    QTest::newRow("empty") << sdkManifest(Elements{{minSdkText("")}}) << 0;
    QTest::newRow("unparsable, then a number") << sdkManifest(Elements{{minSdkText("Q")}, {minSdkText("29")}}) << 0;
    QTest::newRow("negative") << sdkManifest(Elements{{minSdkText("-3")}}) << -3;
}

void TestApkFile::minSdkVersion()
{
    QFETCH(QByteArray, manifest);
    PackageDevice device(emptyTable(), manifest);
    const ApkFile apk(&device);
    QTEST(apk.minSdkVersion(), "version");
    compareError(apk, 0, "no error");
}

void TestApkFile::minSdkVersionIsFoundAtAnyDepth()
{
    const QString manifest = QStringLiteral("manifest");
    const QString group = QStringLiteral("group");
    const QByteArray bytes = XmlBuilder::manifest()
                                 .start(manifest)
                                 .start(group)
                                 .empty(QStringLiteral("uses-sdk"), {minSdkText("11")})
                                 .end(group)
                                 .empty(QStringLiteral("uses-sdk"), {minSdkText("12")})
                                 .end(manifest)
                                 .build();
    PackageDevice device(emptyTable(), bytes);
    QCOMPARE(ApkFile(&device).minSdkVersion(), 11);
}

void TestApkFile::minSdkVersionOfABrokenPackageIsOne()
{
    PackageDevice device(emptyTable(), brokenManifest());
    const ApkFile apk(&device);
    const LogCapture log;
    QCOMPARE(apk.minSdkVersion(), 1);
    compareError(apk, 5, "could not parse AndroidManifest.xml");
}

void TestApkFile::debugLinesCarryTheirPlace()
{
    PackageDevice device(damagedTable(), smallManifest());
    const ApkFile apk(&device);
    const LogCapture log;
    apk.resources();
    QCOMPARE(log.lines().size(), 1);
    const LogCapture::Line line = log.lines().constFirst();
    QCOMPARE(line.type, QtDebugMsg);
    QCOMPARE(line.category, QStringLiteral("default"));
    QVERIFY(line.file.endsWith(QLatin1String("ResourcesLoader.cpp")));
    QVERIFY(line.line > 0);
    QVERIFY(line.function.contains(QLatin1String("ResourcesLoader::load")));
}

QTEST_GUILESS_MAIN(TestApkFile)
#include "tst_apkfile.moc"
