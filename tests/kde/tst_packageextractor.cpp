// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Files.h"
#include "PackageProperties.h"
#include "PrintableText.h"
#include "format/AndroidAttributes.h"

#include <KFileMetaData/Extractor>
#include <KFileMetaData/ExtractorCollection>
#include <KFileMetaData/SimpleExtractionResult>

#include <SorrelKit/Certificate.h>
#include <SorrelKit/Signatures.h>
#include <SorrelKit/Signer.h>

#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;
using KFileMetaData::SimpleExtractionResult;
using KFileMetaData::Property::Property;
using SorrelKit::Package;

namespace {

QString sample(const char *name)
{
    return QStringLiteral(SORREL_SAMPLES_DIR "/") + QString::fromLatin1(name);
}

QString signedPackage(const char *name)
{
    return QStringLiteral(SORREL_SIGNED_DIR "/") + QString::fromLatin1(name);
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray packageOf(const QString &name, const QString &label, const QString &version,
                     const QStringList &permissions = {})
{
    XmlBuilder builder;
    builder.attributeId(QStringLiteral("label"), Attr::Label)
        .attributeId(QStringLiteral("name"), Attr::Name)
        .attributeId(QStringLiteral("minSdkVersion"), Attr::MinSdkVersion)
        .attributeId(QStringLiteral("versionCode"), Attr::VersionCode)
        .attributeId(QStringLiteral("versionName"), Attr::VersionName);
    builder.start(QStringLiteral("manifest"),
                  {plainText(QStringLiteral("package"), name), androidText(QStringLiteral("versionName"), version),
                   androidValue(QStringLiteral("versionCode"), Integer, 7)});
    for (const QString &permission : permissions)
        builder.empty(QStringLiteral("uses-permission"), {androidText(QStringLiteral("name"), permission)});
    builder.empty(QStringLiteral("uses-sdk"), {androidValue(QStringLiteral("minSdkVersion"), Integer, 26)})
        .start(QStringLiteral("application"), {androidText(QStringLiteral("label"), label)})
        .end(QStringLiteral("application"))
        .end(QStringLiteral("manifest"));
    return package(emptyTable(), builder.build());
}

QString permission(const char *name)
{
    return QStringLiteral("android.permission.") + QString::fromLatin1(name);
}

} // namespace

class TestPackageExtractor : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void types();
    void facts();
    void languages();
    void versions_data();
    void versions();
    void permissions_data();
    void permissions();
    void permissionsUpToTheCeiling();
    void signer_data();
    void signer();
    void verificationUpToTheCeiling();
    void set();
    void texts_data();
    void texts();
    void longTexts();
    void nothingToExtract_data();
    void nothingToExtract();
    void onlyMetaData();
    void damagedFiles();

private:
    KFileMetaData::PropertyMultiMap extract(const QString &file) const;
    KFileMetaData::PropertyMultiMap extract(const QByteArray &content) const;

    QTemporaryDir m_directory;
    std::unique_ptr<KFileMetaData::ExtractorCollection> m_collection;
};

void TestPackageExtractor::initTestCase()
{
    QCoreApplication::setLibraryPaths({QStringLiteral(SORREL_PLUGIN_DIR)});
    m_collection = std::make_unique<KFileMetaData::ExtractorCollection>();
}

KFileMetaData::PropertyMultiMap TestPackageExtractor::extract(const QString &file) const
{
    const QString type = QStringLiteral("application/vnd.android.package-archive");
    SimpleExtractionResult result(file, type, SimpleExtractionResult::ExtractMetaData);
    for (KFileMetaData::Extractor *extractor : m_collection->fetchExtractors(type))
        extractor->extract(&result);
    return result.properties(KFileMetaData::MultiMap);
}

KFileMetaData::PropertyMultiMap TestPackageExtractor::extract(const QByteArray &content) const
{
    return extract(writeFile(m_directory.filePath(QStringLiteral("a.apk")), content));
}

// The types are those that have thumbnails.
void TestPackageExtractor::types()
{
    const QByteArray entry = contentOf(QFINDTESTDATA("../../tools/sorrel-thumbnailer/sorrel.thumbnailer"));
    const QByteArray line = entry.mid(entry.indexOf("MimeType=") + int(qstrlen("MimeType="))).split('\n').constFirst();
    const QStringList types = QString::fromLatin1(line).split(QLatin1Char(';'), Qt::SkipEmptyParts);
    QVERIFY(types.size() > 1);
    for (const QString &type : types) {
        const auto extractors = m_collection->fetchExtractors(type);
        QCOMPARE(int(extractors.size()), 1);
        QCOMPARE(extractors.constFirst()->mimetypes(), types);
        QCOMPARE(extractors.constFirst()->extractorProperties().value(QStringLiteral("MimeTypes")).toMap().size(),
                 types.size());
    }
}

void TestPackageExtractor::facts()
{
    const auto properties = extract(packageOf(QStringLiteral("org.example.camera"), QStringLiteral("Camera"),
                                              QStringLiteral("2.1"), {permission("INTERNET"), permission("CAMERA")}));
    QCOMPARE(int(properties.size()), 3);
    QCOMPARE(properties.value(Property::Title).toString(), QStringLiteral("Camera"));
    QCOMPARE(properties.value(Property::Subject).toString(),
             QStringLiteral("org.example.camera, version 2.1 (7), for Android 8.0 (API 26) and later"));
    QCOMPARE(properties.value(Property::Description).toString(), QStringLiteral("Dangerous permissions: camera. "
                                                                                "Other permissions: internet"));
}

void TestPackageExtractor::languages()
{
    const Package notes(sample("notes.aapt2.apk"));
    QCOMPARE(PackageProperties(notes, QLocale(QLocale::German)).title(), QStringLiteral("Notizen"));
    QCOMPARE(PackageProperties(notes, QLocale(QLocale::Japanese)).title(), QStringLiteral("メモ 📝"));
    QCOMPARE(PackageProperties(notes, QLocale(QLocale::Icelandic)).title(), QStringLiteral("Notes"));
    QCOMPARE(extract(sample("notes.aapt2.apk")).value(Property::Title).toString(), QStringLiteral("Notes"));
}

void TestPackageExtractor::versions_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("expected");
    QTest::newRow("name and code") << "1.0-β" << QStringLiteral("a.b, version 1.0-β (7), ");
    QTest::newRow("code") << ""
                          << "a.b, version 7, ";
}

void TestPackageExtractor::versions()
{
    QFETCH(QString, version);
    QFETCH(QString, expected);
    const auto properties = extract(packageOf(QStringLiteral("a.b"), QStringLiteral("A"), version));
    QCOMPARE(properties.value(Property::Subject).toString(),
             expected + QStringLiteral("for Android 8.0 (API 26) and later"));
    const QByteArray none = package(emptyTable(), smallManifest());
    QCOMPARE(extract(none).value(Property::Subject).toString(),
             QStringLiteral("org.example.app, for Android 1.0 (API 1) and later"));
}

void TestPackageExtractor::permissions_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << QStringList() << "No permissions";
    QTest::newRow("harmless") << QStringList{permission("INTERNET")} << "Other permissions: internet";
    QTest::newRow("dangerous") << QStringList{permission("CAMERA"), permission("READ_CONTACTS")}
                               << "Dangerous permissions: camera; read contacts";
    QTest::newRow("unknown") << QStringList{QStringLiteral("org.x.SEND")} << "Other permissions: org.x.SEND";
}

void TestPackageExtractor::permissions()
{
    QFETCH(QStringList, names);
    QFETCH(QString, expected);
    const auto properties = extract(packageOf(QStringLiteral("a.b"), QStringLiteral("A"), QStringLiteral("1"), names));
    QCOMPARE(properties.value(Property::Description).toString(), expected);
}

void TestPackageExtractor::permissionsUpToTheCeiling()
{
    QStringList names;
    for (int number = 0; number < PackageProperties::MaxPermissions; ++number)
        names.append(QStringLiteral("org.x.P%1").arg(number));
    const auto text = [&] {
        return extract(packageOf(QStringLiteral("a.b"), QStringLiteral("A"), QStringLiteral("1"), names))
            .value(Property::Description)
            .toString();
    };
    QCOMPARE(text(), QStringLiteral("Other permissions: ") + names.join(QStringLiteral("; ")));
    const QString last = names.constLast();
    // The dangerous one comes first, and the last ones are counted.
    names += {permission("CAMERA"), QStringLiteral("org.x.LAST")};
    QVERIFY(text().startsWith(QStringLiteral("Dangerous permissions: camera. ")));
    QVERIFY(text().endsWith(QStringLiteral(". 2 more")));
    QVERIFY(!text().contains(last));
}

void TestPackageExtractor::signer_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("isVerified");
    QTest::newRow("jane.apk") << signedPackage("jane.apk") << true;
    QTest::newRow("set.apks") << signedPackage("set.apks") << true;
    QTest::newRow("changed.apk") << signedPackage("changed.apk") << false;
    QTest::newRow("unsigned.apk") << signedPackage("unsigned.apk") << false;
}

void TestPackageExtractor::signer()
{
    QFETCH(QString, file);
    QFETCH(bool, isVerified);
    const auto properties = extract(file);
    QVERIFY(properties.contains(Property::Subject));
    QCOMPARE(properties.contains(Property::Publisher), isVerified);
    if (!isVerified)
        return;
    const SorrelKit::Certificate certificate =
        SorrelKit::Signatures(Package(file)).signers().constFirst().certificate();
    QCOMPARE(properties.value(Property::Publisher).toString(),
             QStringLiteral("CN=Jane (certificate %1)")
                 .arg(QString::fromLatin1(certificate.fingerprint().toHex().left(16))));
}

void TestPackageExtractor::verificationUpToTheCeiling()
{
    const PackageProperties properties(Package(signedPackage("jane.apk")), QLocale::c());
    QVERIFY(!properties.signer(PackageProperties::MaxVerifiedBytes).isEmpty());
    QCOMPARE(properties.signer(PackageProperties::MaxVerifiedBytes + 1), QString());
}

void TestPackageExtractor::set()
{
    const QByteArray bytes = zip({{QStringLiteral("base.apk"), contentOf(sample("babel.base.apk"))},
                                  {QStringLiteral("split_config.de.apk"), contentOf(sample("babel.de.apk"))}},
                                 Compression::Stored);
    const auto properties = extract(bytes);
    QCOMPARE(properties.value(Property::Title), extract(sample("babel.aapt2.apk")).value(Property::Title));
    QVERIFY(!properties.value(Property::Title).toString().isEmpty());
}

// No text changes the texts around it.
void TestPackageExtractor::texts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("line end") << "a\nb" << QStringLiteral("a\uFFFDb");
    QTest::newRow("control") << QStringLiteral("a\u001bb") << QStringLiteral("a\uFFFDb");
    QTest::newRow("override") << QStringLiteral("a\u202eb") << QStringLiteral("a\uFFFDb");
    QTest::newRow("isolate without an end") << QStringLiteral("a\u2067b") << QStringLiteral("a\uFFFDb");
    QTest::newRow("right to left") << QStringLiteral("שלום") << QStringLiteral("\u2068שלום\u2069");
    QTest::newRow("markup") << "<b>a</b>&amp;"
                            << "<b>a</b>&amp;";
}

void TestPackageExtractor::texts()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    const auto properties = extract(packageOf(text, text, text, {text}));
    QCOMPARE(properties.value(Property::Title).toString(), expected);
    QCOMPARE(properties.value(Property::Subject).toString(),
             expected + QStringLiteral(", version ") + expected
                 + QStringLiteral(" (7), for Android 8.0 (API 26) and later"));
    QCOMPARE(properties.value(Property::Description).toString(), QStringLiteral("Other permissions: ") + expected);
}

void TestPackageExtractor::longTexts()
{
    const auto title = [this](const QString &label) {
        return extract(packageOf(QStringLiteral("a.b"), label, QStringLiteral("1"))).value(Property::Title).toString();
    };
    const QString longest(PackageProperties::MaxCharacters, QLatin1Char('x'));
    QCOMPARE(title(longest), longest);
    QCOMPARE(title(longest + QLatin1Char('y')), longest + QChar(0x2026));
    // No half of a pair is left.
    const QString memo = QStringLiteral("📝");
    QCOMPARE(title(longest.chopped(1) + memo), longest.chopped(1) + QChar(0x2026));
    QCOMPARE(title(longest.chopped(2) + memo), longest.chopped(2) + memo);
}

void TestPackageExtractor::nothingToExtract_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("no archive") << QByteArray("nothing of the kind");
    QTest::newRow("no manifest") << zip({{QStringLiteral("resources.arsc"), emptyTable()}});
    QTest::newRow("damaged manifest") << package(emptyTable(), "<manifest/>");
    QTest::newRow("set without a base") << zip(
        {{QStringLiteral("split_config.de.apk"), contentOf(sample("babel.de.apk"))}});
}

void TestPackageExtractor::nothingToExtract()
{
    QFETCH(QByteArray, content);
    QVERIFY(extract(content).isEmpty());
    QVERIFY(extract(QStringLiteral("/nowhere/a.apk")).isEmpty());
}

void TestPackageExtractor::onlyMetaData()
{
    const QString type = QStringLiteral("application/x-apks");
    SimpleExtractionResult result(sample("notes.aapt2.apk"), type, SimpleExtractionResult::ExtractPlainText);
    m_collection->fetchExtractors(type).constFirst()->extract(&result);
    QVERIFY(result.properties(KFileMetaData::MultiMap).isEmpty());
    QVERIFY(result.text().isEmpty());
    QVERIFY(result.types().isEmpty());
}

// Whatever is left of a package, its facts are whole or missing.
void TestPackageExtractor::damagedFiles()
{
    const QByteArray good = contentOf(signedPackage("jane.apk"));
    QVERIFY(!good.isEmpty());
    int known = 0;
    for (int at = 0; at < good.size(); at += 7) {
        QVERIFY(extract(good.left(at)).isEmpty());
        QByteArray bytes = good;
        bytes[at] = char(~bytes.at(at));
        const auto properties = extract(bytes);
        QCOMPARE(properties.contains(Property::Title), properties.contains(Property::Description));
        for (const QVariant &value : properties)
            QVERIFY(value.toString() == printableText(value.toString()));
        known += properties.isEmpty() ? 0 : 1;
    }
    QVERIFY(known > 0);
}

QTEST_GUILESS_MAIN(TestPackageExtractor)
#include "tst_packageextractor.moc"
