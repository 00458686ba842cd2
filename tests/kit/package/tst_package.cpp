// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Bytes.h"
#include "KitIcons.h"

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Package.h>

#include <QBuffer>
#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;
using SorrelKit::DrawableRenderer;
using SorrelKit::Entry;
using SorrelKit::Feature;
using SorrelKit::IconError;
using SorrelKit::IconFile;
using SorrelKit::IconMask;
using SorrelKit::IconRequest;
using SorrelKit::Package;

namespace {

constexpr quint32 LabelResource = 0x7f010000;
constexpr quint32 IconResource = 0x7f020000;
constexpr quint32 ChainResource = 0x7f010001;
constexpr quint32 CycleResource = 0x7f010002;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

enum StringNumber : int {
    Plain,
    German,
    SmallIcon,
    LargeIcon,
    NoPicture,
};

// A label in two languages, a label that refers to it, one that refers to itself, and an icon in two sizes.
QByteArray table()
{
    TypeBuilder plain(1);
    plain.value(0, String, Plain).value(1, Reference, LabelResource).value(2, Reference, CycleResource);
    PackageBuilder package;
    package.types({latin("string"), latin("drawable")})
        .type(plain)
        .type(TypeBuilder(1, ConfigBuilder().locale("de").build()).value(0, String, German))
        .type(TypeBuilder(2, ConfigBuilder().density(160).build()).value(0, String, SmallIcon))
        .type(TypeBuilder(2, ConfigBuilder().density(320).build()).value(0, String, LargeIcon))
        .type(TypeBuilder(2, ConfigBuilder().density(480).build()).value(0, String, NoPicture));
    return TableBuilder()
        .strings(
            {latin("Plain"), latin("Deutsch"), latin("res/small.png"), latin("res/large.png"), latin("res/no.png")})
        .package(package)
        .build();
}

XmlBuilder manifestStart()
{
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(latin("manifest"), {plainText(latin("package"), latin("org.example.app"))});
    return builder;
}

QByteArray manifest(const QVector<Attribute> &application = {}, const QVector<Attribute> &activity = {})
{
    XmlBuilder builder = manifestStart();
    QVector<Attribute> attributes{androidText(latin("name"), latin(".Main"))};
    attributes += activity;
    return builder.start(latin("application"), application)
        .start(latin("activity"), attributes)
        .launcherFilter()
        .end(latin("activity"))
        .end(latin("application"))
        .end(latin("manifest"))
        .build();
}

QVector<Member> icons()
{
    return {{latin("res/small.png"), picture(48, 48, 0xff0000)},
            {latin("res/large.png"), picture(96, 96, 0x00ff00)},
            {latin("res/no.png"), "no picture"}};
}

QVector<Attribute> labelAndIcon()
{
    return {androidReference(latin("label"), LabelResource), androidReference(latin("icon"), IconResource)};
}

/// A package in memory, and its device.
struct Opened {
    explicit Opened(const QByteArray &bytes) : device(bytes), package(&device) {}
    Opened(const QByteArray &tableBytes, const QByteArray &manifestBytes, const QVector<Member> &others = {})
        : Opened(fixture::package(tableBytes, manifestBytes, others))
    {
    }

    PackageDevice device;
    Package package;
};

} // namespace

class TestPackage : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsOpenedBeforeItIsAskedFor();
    void packageIsReadOnce();
    void labelsAndIcons();
    void valuesOfAttributesWinOverWhatWasWritten();
    void labelsBehindReferences();
    void labelThatRefersToItselfIsNone();
    void packageWithoutATableIsNoFailure();
    void manifestOfUnsetTypeIsRead();
    void copiesAndLaunchersKeepThePackage();
    void emptyLauncher();
    void iconFilesAreThoseThatCanBeRead();
    void iconFilesAreReadOnce();
    void iconOfTheSizeThatFits_data();
    void iconOfTheSizeThatFits();
    void iconThatIsAColour();
    void iconByItsPath();
    void rendererDrawsAnyResource();
    void previewsOfThePlatform();
    void densitySplitAddsItsIcons();
    void iconPathByDensity();

    void errorCouldNotOpen();
    void errorCouldNotParseTable();
    void errorCouldNotFindManifest();
    void errorCouldNotParseManifest();
    void errorThereIsNoIcon();
    void errorResourceIsNoDrawable();
    void errorPictureHasSides();
    void errorCannotBeReadOrDecoded();

    void everyPrefixIsAnswered();
    void everyByteMayBeDamaged();
};

void TestPackage::nothingIsOpenedBeforeItIsAskedFor()
{
    Opened opened(table(), manifest());
    QCOMPARE(opened.device.timesOpened(), 0);
    QCOMPARE(opened.package.error().code(), SorrelKit::Error::Code::None);
    QCOMPARE(opened.device.timesOpened(), 1);
}

void TestPackage::packageIsReadOnce()
{
    Opened opened(table(), manifest(labelAndIcon()), icons());
    const Package copy = opened.package;
    QCOMPARE(copy.packageName(), latin("org.example.app"));
    QCOMPARE(opened.package.launchers().size(), 1);
    QVERIFY(!iconOf(copy, 48).isNull());
    QCOMPARE(opened.device.timesOpened(), 1);
}

void TestPackage::labelsAndIcons()
{
    Opened opened(table(), manifest(labelAndIcon()), icons());
    const QList<Entry> launchers = opened.package.launchers();
    QCOMPARE(launchers.size(), 1);
    const Entry &launcher = launchers.first();
    QCOMPARE(launcher.packageName(), latin("org.example.app"));
    QCOMPARE(launcher.name(), latin("org.example.app.Main"));
    QCOMPARE(launcher.className(), latin("org.example.app.Main"));
    QVERIFY(!launcher.isAlias());
    QVERIFY(launcher.isShown());
    const QMap<QString, QString> labels{{QString(), latin("Plain")}, {latin("de"), latin("Deutsch")}};
    QCOMPARE(launcher.labels(), labels);
    QCOMPARE(opened.package.labels(), labels);
    QCOMPARE(launcher.label(QLocale("de_CH")), latin("Deutsch"));
    QCOMPARE(launcher.label(QLocale("fr")), latin("Plain"));
    QCOMPARE(opened.package.label(QLocale("de")), latin("Deutsch"));
    QCOMPARE(launcher.iconResource(), IconResource);
    QString error = latin("unset");
    QCOMPARE(iconOf(launcher, 48, IconMask::Circle, &error).pixel(24, 24), 0xffff0000u);
    QCOMPARE(error, QString());
    QCOMPARE(iconOf(opened.package, 48).size(), QSize(48, 48));
}

// The package has one label as written and another one as a value. Devices show the value.
void TestPackage::valuesOfAttributesWinOverWhatWasWritten()
{
    const auto launcherOf = [](const Attribute &name, const Attribute &label, const Attribute &enabled) {
        XmlBuilder builder = XmlBuilder::manifest();
        builder.start(latin("manifest"), {writtenAs(plainText(latin("package"), latin("value")), latin("org.written"))})
            .start(latin("application"))
            .start(latin("activity"), {name, label, enabled})
            .launcherFilter()
            .end(latin("activity"))
            .end(latin("application"))
            .end(latin("manifest"));
        auto *const opened = new Opened(table(), builder.build());
        return std::unique_ptr<Opened>(opened);
    };
    const auto texts = launcherOf(writtenAs(androidText(latin("name"), latin("org.x.Main")), latin("org.bank.Main")),
                                  writtenAs(androidText(latin("label"), latin("Notes")), latin("Bank")),
                                  writtenAs(androidText(latin("enabled"), latin("true")), latin("false")));
    const Entry launcher = texts->package.launchers().first();
    QCOMPARE(launcher.packageName(), latin("org.written"));
    QCOMPARE(launcher.name(), latin("org.x.Main"));
    QCOMPARE(launcher.className(), latin("org.x.Main"));
    QCOMPARE(launcher.label(), latin("Notes"));
    QCOMPARE(launcher.labels(), (QMap<QString, QString>{{QString(), latin("Notes")}}));
    QVERIFY(launcher.isEnabled());
    const auto values = launcherOf(writtenAs(androidValue(latin("name"), Integer, 5), latin("org.bank.Main")),
                                   writtenAs(androidValue(latin("label"), Integer, 7), latin("Bank")),
                                   writtenAs(androidValue(latin("enabled"), Boolean, 0), latin("true")));
    const Entry other = values->package.launchers().first();
    QCOMPARE(other.name(), latin("org.written.5"));
    QCOMPARE(other.label(), latin("7"));
    QVERIFY(!other.isEnabled());
}

void TestPackage::labelsBehindReferences()
{
    Opened opened(table(), manifest({androidReference(latin("label"), ChainResource)}));
    const QMap<QString, QString> labels{{QString(), latin("Plain")}, {latin("de"), latin("Deutsch")}};
    QCOMPARE(opened.package.labels(), labels);
}

void TestPackage::labelThatRefersToItselfIsNone()
{
    Opened opened(table(), manifest({androidReference(latin("label"), CycleResource)}));
    QVERIFY(opened.package.labels().isEmpty());
    QCOMPARE(opened.package.label(), latin("org.example.app"));
    QCOMPARE(opened.package.launchers().first().label(), latin("org.example.app.Main"));
}

void TestPackage::packageWithoutATableIsNoFailure()
{
    Opened opened(zip({{latin("AndroidManifest.xml"), manifest({androidText(latin("label"), latin("Written"))})}}));
    QCOMPARE(opened.package.error().code(), SorrelKit::Error::Code::None);
    QCOMPARE(opened.package.error().message(), latin("no error"));
    QVERIFY(opened.package.isValid());
    QCOMPARE(opened.package.launchers().first().label(), latin("Written"));
}

void TestPackage::manifestOfUnsetTypeIsRead()
{
    QByteArray document = manifest(labelAndIcon());
    poke16(document, 0, 0);
    Opened opened(table(), document);
    QCOMPARE(opened.package.error().code(), SorrelKit::Error::Code::None);
    QCOMPARE(opened.package.label(), latin("Plain"));
}

void TestPackage::copiesAndLaunchersKeepThePackage()
{
    PackageDevice device(table(), manifest(labelAndIcon()), icons());
    Entry launcher;
    {
        const Package package(&device);
        launcher = package.launchers().first();
    }
    QCOMPARE(launcher.label(QLocale("de")), latin("Deutsch"));
    QCOMPARE(iconOf(launcher, 96).pixel(48, 48), 0xff00ff00u);
}

void TestPackage::emptyLauncher()
{
    const Entry launcher;
    QCOMPARE(launcher.packageName(), QString());
    QCOMPARE(launcher.name(), QString());
    QCOMPARE(launcher.className(), QString());
    QVERIFY(!launcher.isShown() && !launcher.isEnabled() && !launcher.isExported() && !launcher.isAlias());
    QVERIFY(launcher.labels().isEmpty());
    QCOMPARE(launcher.label(), QString());
    QCOMPARE(launcher.iconResource(), 0u);
    QVERIFY(launcher.iconFiles().isEmpty());
    QVERIFY(iconOf(launcher, 48).isNull());
    QString error;
    QVERIFY(iconOf(launcher, 48, IconMask::None, &error).isNull());
    QCOMPARE(error, latin("there is no icon"));
}

void TestPackage::iconFilesAreThoseThatCanBeRead()
{
    Opened opened(table(), manifest(labelAndIcon()), icons());
    const QList<IconFile> files = opened.package.launchers().first().iconFiles();
    QCOMPARE(files.size(), 2);
    QCOMPARE(files.at(0).path(), latin("res/small.png"));
    QCOMPARE(files.at(0).kind(), latin("png"));
    QCOMPARE(files.at(0).size(), QSize(48, 48));
    QCOMPARE(files.at(0).density(), 160);
    QCOMPARE(files.at(1).path(), latin("res/large.png"));
}

// A thousand launchers may share one icon, or icons with the same files.
void TestPackage::iconFilesAreReadOnce()
{
    Opened opened(table(), manifest(labelAndIcon()), icons());
    QCOMPARE(opened.package.launchers().first().iconFiles().size(), 2);
    const qint64 before = opened.device.bytesRead();
    QCOMPARE(opened.package.launchers().first().iconFiles().size(), 2);
    QCOMPARE(opened.device.bytesRead(), before);
}

void TestPackage::iconOfTheSizeThatFits_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QRgb>("color");
    QTest::newRow("smaller than all") << 24 << 0xffff0000u;
    QTest::newRow("as large as one") << 48 << 0xffff0000u;
    QTest::newRow("larger than that") << 49 << 0xff00ff00u;
    QTest::newRow("larger than all") << 200 << 0xff00ff00u;
}

void TestPackage::iconOfTheSizeThatFits()
{
    QFETCH(int, size);
    QFETCH(QRgb, color);
    Opened opened(table(), manifest(labelAndIcon()), icons());
    const QImage icon = iconOf(opened.package, size);
    QCOMPARE(icon.size(), QSize(size, size));
    QCOMPARE(icon.format(), QImage::Format_ARGB32_Premultiplied);
    QCOMPARE(icon.pixel(size / 2, size / 2), color);
}

void TestPackage::iconThatIsAColour()
{
    const QByteArray colours =
        TableBuilder()
            .strings({})
            .package(PackageBuilder().types({latin("color")}).type(TypeBuilder(1).value(0, 0x1c, 0xff112233)))
            .build();
    Opened opened(colours, manifest({androidReference(latin("icon"), 0x7f010000)}));
    QString error = latin("unset");
    QCOMPARE(iconOf(opened.package, 16, IconMask::None, &error).pixel(0, 0), 0xff112233u);
    QCOMPARE(error, QString());
}

void TestPackage::iconByItsPath()
{
    Opened opened(table(), manifest({androidText(latin("icon"), latin("res/large.png"))}), icons());
    QCOMPARE(iconOf(opened.package, 96).pixel(48, 48), 0xff00ff00u);
    QCOMPARE(opened.package.launchers().first().iconResource(), 0u);
}

void TestPackage::rendererDrawsAnyResource()
{
    Opened opened(table(), manifest(), icons());
    DrawableRenderer renderer(opened.package);
    IconRequest request(96);
    request.setMask(IconMask::Squircle);
    QCOMPARE(renderer.drawable(IconResource, request).pixel(1, 1), 0xff00ff00u);
    QCOMPARE(renderer.error(), IconError());
    QVERIFY(renderer.drawable(0x7f020001, request).isNull());
    QCOMPARE(renderer.error().text(), latin("resource 0x7f020001 is no drawable"));
    QVERIFY(renderer.icon(Entry(), request).isNull());
    QCOMPARE(renderer.error(), IconError(IconError::Code::Missing, latin("there is no icon")));
}

void TestPackage::previewsOfThePlatform()
{
    const auto version = [](const Attribute &minimum) {
        XmlBuilder builder = manifestStart();
        builder.empty(latin("uses-sdk"), {minimum}).end(latin("manifest"));
        return Opened(table(), builder.build()).package.minSdkVersion();
    };
    QCOMPARE(version(androidValue(latin("minSdkVersion"), Integer, 21)), 21);
    QCOMPARE(version(androidText(latin("minSdkVersion"), latin("21"))), 21);
    QCOMPARE(version(androidText(latin("minSdkVersion"), latin("Tiramisu"))), 10000);
    QCOMPARE(version(androidText(latin("label"), latin("none"))), 1);
}

// The base has the label and a small icon, the split the same icon for a finer screen and nothing else.
void TestPackage::densitySplitAddsItsIcons()
{
    const auto iconTable = [](int density, const char *path) {
        PackageBuilder icons;
        icons.types({latin("string"), latin("drawable")})
            .type(TypeBuilder(2, ConfigBuilder().density(density).build()).value(0, String, 0));
        return TableBuilder().strings({latin(path)}).package(icons).build();
    };
    XmlBuilder splitManifest = XmlBuilder::manifest();
    splitManifest.empty(latin("manifest"), {plainText(latin("package"), latin("org.example.app")),
                                            plainText(latin("split"), latin("config.xhdpi"))});
    const QByteArray base = fixture::package(iconTable(160, "res/small.png"), manifest(labelAndIcon()),
                                             {{latin("res/small.png"), picture(48, 48, 0xff0000)}});
    const QByteArray split = fixture::package(iconTable(320, "res/large.png"), splitManifest.build(),
                                              {{latin("res/large.png"), picture(96, 96, 0x00ff00)}});
    Opened set(zip({{latin("split_config.xhdpi.apk"), split}, {latin("base.apk"), base}}, Compression::Stored));
    QCOMPARE(set.package.splits(), QStringList{latin("config.xhdpi")});
    QCOMPARE(set.package.launchers().first().iconFiles().size(), 2);
    QCOMPARE(iconOf(set.package, 96).pixel(48, 48), 0xff00ff00u);
    QCOMPARE(iconOf(set.package, 48).pixel(24, 24), 0xffff0000u);
    Opened alone(base);
    QCOMPARE(iconOf(alone.package, 96).pixel(48, 48), 0xffff0000u);
}

void TestPackage::iconPathByDensity()
{
    Opened opened(table(), manifest(labelAndIcon()), icons());
    QCOMPARE(opened.package.iconPath(160), latin("res/small.png"));
    QCOMPARE(opened.package.iconPath(320), latin("res/large.png"));
    QCOMPARE(opened.package.iconPath(480), latin("res/no.png"));
    QCOMPARE(opened.package.iconPath(-1), QString());
    QCOMPARE(opened.package.iconPath(0x10000), QString());
    QCOMPARE(Package().iconPath(160), QString());
    Opened byPath(table(), manifest({androidText(latin("icon"), latin("a/path.png"))}), icons());
    QCOMPARE(byPath.package.iconPath(160), latin("a/path.png"));
}

void TestPackage::errorCouldNotOpen()
{
    const Package missing(latin("/nonexistent.apk"));
    QCOMPARE(missing.error().code(), SorrelKit::Error::Code::CannotOpen);
    QCOMPARE(missing.error().message(), latin("could not open APK file"));
    QVERIFY(!missing.isValid());
    QCOMPARE(missing.packageName(), QString());
    QCOMPARE(missing.versionCode(), qint64(0));
    QVERIFY(missing.launchers().isEmpty() && missing.labels().isEmpty() && missing.nativeAbis().isEmpty());
    QVERIFY(iconOf(missing, 48).isNull());
    const QTemporaryDir directory;
    QCOMPARE(Package(directory.path()).error().code(), SorrelKit::Error::Code::CannotOpen);
    QBuffer noArchive;
    noArchive.setData("no archive");
    QCOMPARE(Package(&noArchive).error().code(), SorrelKit::Error::Code::CannotOpen);
    PackageDevice open(table(), manifest());
    open.open(QIODevice::ReadOnly);
    QCOMPARE(Package(&open).error().code(), SorrelKit::Error::Code::CannotOpen);
}

void TestPackage::errorCouldNotParseTable()
{
    Opened opened(table().chopped(1), manifest({androidText(latin("label"), latin("Written"))}));
    QCOMPARE(opened.package.error().code(), SorrelKit::Error::Code::BadTable);
    QCOMPARE(opened.package.error().message(), latin("could not parse resources.arsc: not a resource table"));
    QVERIFY(opened.package.isValid());
    QCOMPARE(opened.package.label(), latin("Written"));
}

void TestPackage::errorCouldNotFindManifest()
{
    Opened opened(zip({{latin("resources.arsc"), table()}}));
    QCOMPARE(opened.package.error().code(), SorrelKit::Error::Code::NoManifest);
    QCOMPARE(opened.package.error().message(), latin("could not find AndroidManifest.xml"));
    QVERIFY(!opened.package.isValid());
}

void TestPackage::errorCouldNotParseManifest()
{
    Opened text(table(), "<manifest/>");
    QCOMPARE(text.package.error().code(), SorrelKit::Error::Code::BadManifest);
    QCOMPARE(text.package.error().message(), latin("could not parse AndroidManifest.xml: not a binary XML document"));
    Opened other(table(), XmlBuilder().empty(latin("resources")).build());
    QCOMPARE(other.package.error().code(), SorrelKit::Error::Code::BadManifest);
    QCOMPARE(other.package.error().message(), latin("could not parse AndroidManifest.xml"));
    QVERIFY(!other.package.isValid());
}

void TestPackage::errorThereIsNoIcon()
{
    Opened opened(table(), manifest());
    QString error;
    QVERIFY(iconOf(opened.package, 48, IconMask::None, &error).isNull());
    QCOMPARE(error, latin("there is no icon"));
}

void TestPackage::errorResourceIsNoDrawable()
{
    Opened opened(table(), manifest({androidReference(latin("icon"), 0x7f080093)}));
    QString error;
    QVERIFY(iconOf(opened.package, 48, IconMask::None, &error).isNull());
    QCOMPARE(error, latin("resource 0x7f080093 is no drawable"));
    Opened platforms(table(), manifest({androidReference(latin("icon"), 0x01080093)}));
    QVERIFY(iconOf(platforms.package, 48, IconMask::None, &error).isNull());
    QCOMPARE(error, latin("needs the platform's resource 0x01080093"));
}

void TestPackage::errorPictureHasSides()
{
    Opened opened(table(), manifest(labelAndIcon()), icons());
    for (const int size : {-1, 0, 1025}) {
        QString error;
        QVERIFY(iconOf(opened.package, size, IconMask::None, &error).isNull());
        QCOMPARE(error, latin("a picture has 1 to 1024 pixels a side"));
    }
    QCOMPARE(iconOf(opened.package, 1).size(), QSize(1, 1));
    QCOMPARE(iconOf(opened.package, 1024).size(), QSize(1024, 1024));
}

void TestPackage::errorCannotBeReadOrDecoded()
{
    Opened opened(table(), manifest(labelAndIcon()));
    QString error;
    QVERIFY(iconOf(opened.package, 48, IconMask::None, &error).isNull());
    QCOMPARE(error, latin("res/small.png cannot be read or decoded"));
}

void TestPackage::everyPrefixIsAnswered()
{
    const QByteArray bytes = fixture::package(table(), manifest(labelAndIcon()), icons());
    // The archive's last record has the offset of its directory. The reader ignores some of its last fields.
    constexpr int LastRecordSize = 22;
    for (int size = 0; size < bytes.size(); ++size) {
        Opened opened(bytes.left(size));
        if (size <= bytes.size() - LastRecordSize)
            QCOMPARE(opened.package.error().code(), SorrelKit::Error::Code::CannotOpen);
        if (opened.package.error().code() == SorrelKit::Error::Code::None)
            QCOMPARE(opened.package.label(QLocale("de")), latin("Deutsch"));
        else
            QVERIFY(!opened.package.isValid());
    }
}

void TestPackage::everyByteMayBeDamaged()
{
    const QByteArray bytes = table();
    int labelled = 0;
    for (int at = 0; at < bytes.size(); ++at) {
        for (const int value : {0x00, 0x7f, 0xff}) {
            QByteArray damaged = bytes;
            poke8(damaged, at, value);
            Opened opened(damaged, manifest(labelAndIcon()), icons());
            labelled += int(opened.package.label(QLocale("de")) == latin("Deutsch"));
            const QImage icon = iconOf(opened.package, 8);
            QVERIFY(icon.isNull() || icon.size() == QSize(8, 8));
        }
    }
    QVERIFY(labelled > 0 && labelled < 3 * bytes.size());
}

QTEST_GUILESS_MAIN(TestPackage)
#include "tst_package.moc"
