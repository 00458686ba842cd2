// SPDX-License-Identifier: LGPL-2.1-or-later

// Packages compiled by Android's compilers. The kit's answers are compared with the sources of the packages, with the
// answers for the other encodings of an application, and with the output of aapt2.

#include "KitIcons.h"
#include "ZipBuilder.h"
#include "format/AndroidAttributes.h"
#include "language/LabelLookup.h"
#include "package/Manifest.h"
#include "package/PackageData.h"

#include <SorrelKit/Package.h>

#include <QBuffer>
#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

using namespace SorrelKit;
using Labels = QMap<QString, QString>;

namespace {

QString sample(const QString &name)
{
    return QDir(QStringLiteral(SORREL_SAMPLES_DIR)).filePath(name + QStringLiteral(".apk"));
}

QByteArray sampleBytes(const QString &name)
{
    QFile file(sample(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// All answers of a package as lines of text, without pictures.
QStringList answers(const Package &package)
{
    QStringList lines{package.error().message(),
                      package.packageName(),
                      package.versionName(),
                      QString::number(package.versionCode()),
                      QString::number(package.minSdkVersion()),
                      QString::number(package.targetSdkVersion())};
    lines += package.permissionNames();
    for (const Feature &feature : package.features())
        lines.append(feature.name() + (feature.isRequired() ? QStringLiteral(" required") : QString()));
    const auto append = [&lines](const Labels &labels) {
        for (auto label = labels.cbegin(); label != labels.cend(); ++label)
            lines.append(label.key() + QStringLiteral(": ") + label.value());
    };
    append(package.labels());
    for (const Entry &launcher : package.launchers()) {
        lines.append(launcher.name() + QLatin1Char(' ') + launcher.className());
        lines.append(QStringLiteral("%1 %2").arg(launcher.isShown()).arg(launcher.iconResource()));
        append(launcher.labels());
        for (const IconFile &file : launcher.iconFiles())
            lines.append(QStringLiteral("%1 %2 %3").arg(file.kind()).arg(file.density()).arg(file.size().width()));
    }
    return lines;
}

/// The output of `aapt2 dump badging` for a package.
struct Badging {
    explicit Badging(const QString &file)
    {
        QProcess aapt2;
        aapt2.start(QStringLiteral(SORREL_AAPT2), {QStringLiteral("dump"), QStringLiteral("badging"), file});
        if (aapt2.waitForFinished() && aapt2.exitCode() == 0)
            text = QString::fromUtf8(aapt2.readAllStandardOutput());
    }

    QString value(const char *pattern) const
    {
        const QRegularExpression expression(QLatin1String(pattern), QRegularExpression::MultilineOption);
        return expression.match(text).captured(1);
    }
    QStringList values(const char *pattern) const
    {
        const QRegularExpression expression(QLatin1String(pattern), QRegularExpression::MultilineOption);
        QStringList values;
        for (auto matches = expression.globalMatch(text); matches.hasNext();)
            values.append(matches.next().captured(1));
        return values;
    }

    QString text;
};

} // namespace

class TestSamplePackages : public QObject
{
    Q_OBJECT

private slots:
    void manifestIsTold();
    void labelsInEveryLanguage();
    void labelThatADeviceShows_data();
    void labelThatADeviceShows();
    void launchersAreTold();
    void iconThatIsXmlAloneIsDrawn();

    void encodingsAnswerTheSame_data();
    void encodingsAnswerTheSame();
    void encodingsAreThere();

    void setsAreReadWithTheirSplits_data();
    void setsAreReadWithTheirSplits();
    void setWithoutABaseIsNoPackage();
    void splitOfAnotherApplicationIsLeftOut();

    void badging_data();
    void badging();
};

void TestSamplePackages::manifestIsTold()
{
    const Package package(sample(QStringLiteral("babel.aapt2")));
    QCOMPARE(package.error().code(), SorrelKit::Error::Code::None);
    QCOMPARE(package.packageName(), QStringLiteral("org.example.babel"));
    QCOMPARE(package.versionName(), QStringLiteral("3.1 “Babel”"));
    QCOMPARE(package.versionCode(), (qint64(1) << 32) + 7);
    QCOMPARE(package.minSdkVersion(), 26);
    QCOMPARE(package.targetSdkVersion(), 29);
    const QStringList permissions{QStringLiteral("android.permission.INTERNET"),
                                  QStringLiteral("android.permission.RECORD_AUDIO"),
                                  QStringLiteral("android.permission.CAMERA")};
    QCOMPARE(package.permissionNames(), permissions);
    const QList<Feature> features = package.features();
    QCOMPARE(features.size(), 2);
    QCOMPARE(features.at(0).name(), QStringLiteral("android.hardware.microphone"));
    QVERIFY(features.at(0).isRequired());
    QCOMPARE(features.at(1).name(), QStringLiteral("android.hardware.camera"));
    QVERIFY(!features.at(1).isRequired());
    QCOMPARE(package.openGlEsVersion(), QVersionNumber(3, 1));
    QVERIFY(package.nativeAbis().isEmpty());
    QVERIFY(package.splits().isEmpty());
}

void TestSamplePackages::labelsInEveryLanguage()
{
    const Labels expected{
        {QString(), QStringLiteral("Phrasebook 🗼")},
        {QStringLiteral("ca-ES-valencia"), QStringLiteral("Llibre de frases")},
        {QStringLiteral("de"), QStringLiteral("Sprachführer")},
        {QStringLiteral("de-AT"), QStringLiteral("Sprachführer (AT)")},
        {QStringLiteral("en-GB"), QStringLiteral("Phrase book")},
        {QStringLiteral("es"), QStringLiteral("Guía de conversación")},
        {QStringLiteral("es-419"), QStringLiteral("Libro de frases")},
        {QStringLiteral("fil"), QStringLiteral("Aklat ng mga parirala")},
        {QStringLiteral("fr-FR"), QStringLiteral("Guide de conversation")},
        {QStringLiteral("he"), QStringLiteral("שיחון")},
        {QStringLiteral("id"), QStringLiteral("Buku frasa")},
        {QStringLiteral("pt-BR"), QStringLiteral("Livro de frases")},
        {QStringLiteral("pt-PT"), QStringLiteral("Guia de conversação")},
        {QStringLiteral("sr"), QStringLiteral("Зборник фраза")},
        {QStringLiteral("sr-Latn"), QStringLiteral("Zbornik fraza")},
        {QStringLiteral("zh-CN"), QStringLiteral("常用语手册")},
        {QStringLiteral("zh-Hant-HK"), QStringLiteral("常用語手冊（香港）")},
        {QStringLiteral("zh-TW"), QStringLiteral("常用語手冊")},
    };
    QCOMPARE(Package(sample(QStringLiteral("babel.aapt2"))).labels(), expected);
}

void TestSamplePackages::labelThatADeviceShows_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("label");
    const auto row = [](const char *locale, const char *label) {
        QTest::newRow(locale) << QString::fromLatin1(locale) << QString::fromUtf8(label);
    };
    row("de_DE", "Sprachführer");
    row("de_AT", "Sprachführer (AT)");
    row("de_CH", "Sprachführer");
    row("es_MX", "Libro de frases");
    row("es_ES", "Guía de conversación");
    row("fil_PH", "Aklat ng mga parirala");
    row("fr_CH", "Guide de conversation");
    row("he_IL", "שיחון");
    row("id_ID", "Buku frasa");
    row("sr_Latn_RS", "Zbornik fraza");
    row("sr_RS", "Зборник фраза");
    row("pt_AO", "Guia de conversação");
    row("pt_BR", "Livro de frases");
    row("zh_HK", "常用語手冊（香港）");
    row("zh_MO", "常用語手冊（香港）");
    row("zh_TW", "常用語手冊");
    row("zh_SG", "常用语手册");
    row("en_US", "Phrasebook 🗼");
    row("en_AU", "Phrase book");
    row("ja_JP", "Phrasebook 🗼");
    row("C", "Phrasebook 🗼");
}

void TestSamplePackages::labelThatADeviceShows()
{
    QFETCH(QString, locale);
    QFETCH(QString, label);
    const Package package(sample(QStringLiteral("babel.aapt2")));
    QCOMPARE(package.label(QLocale(locale)), label);
    QCOMPARE(package.launchers().first().label(QLocale(locale)), label);
}

void TestSamplePackages::launchersAreTold()
{
    const QList<Entry> launchers = Package(sample(QStringLiteral("babel.aapt2"))).launchers();
    QCOMPARE(launchers.size(), 5);

    QCOMPARE(launchers.at(0).name(), QStringLiteral("org.example.babel.Phrasebook"));
    QVERIFY(launchers.at(0).isShown());

    const Entry &lessons = launchers.at(1);
    QCOMPARE(lessons.name(), QStringLiteral("org.example.babel.Lessons"));
    // The label refers to another resource, except in Spanish.
    const Labels labels{{QString(), QStringLiteral("Lessons")},
                        {QStringLiteral("de"), QStringLiteral("Lektionen")},
                        {QStringLiteral("es"), QStringLiteral("Lecciones")},
                        {QStringLiteral("fr-FR"), QStringLiteral("Leçons")}};
    QCOMPARE(lessons.labels(), labels);

    const Entry &alias = launchers.at(2);
    QCOMPARE(alias.name(), QStringLiteral("org.example.babel.LessonsAgain"));
    QCOMPARE(alias.className(), QStringLiteral("org.example.babel.Lessons"));
    QVERIFY(alias.isAlias() && alias.isShown());
    QCOMPARE(alias.labels(), labels);
    QCOMPARE(alias.iconResource(), lessons.iconResource());
    QVERIFY(alias.iconResource() != launchers.at(0).iconResource());

    QVERIFY(!launchers.at(3).isEnabled() && launchers.at(3).isExported() && !launchers.at(3).isShown());

    // The filter's label, with the value for the newest platform.
    QVERIFY(launchers.at(4).isEnabled() && !launchers.at(4).isExported() && !launchers.at(4).isShown());
    QCOMPARE(launchers.at(4).label(QLocale::c()), QStringLiteral("Tests of today"));
    QCOMPARE(launchers.at(4).label(QLocale("de")), QStringLiteral("Prüfungen"));
}

void TestSamplePackages::iconThatIsXmlAloneIsDrawn()
{
    const Package package(sample(QStringLiteral("babel.aapt2")));
    const QList<IconFile> files = package.launchers().first().iconFiles();
    QCOMPARE(files.size(), 1);
    QCOMPARE(files.first().kind(), QStringLiteral("adaptive-icon"));
    QVERIFY(files.first().size().isEmpty());
    QString error = QStringLiteral("unset");
    const QImage square = fixture::iconOf(package, 144, IconMask::None, &error);
    QCOMPARE(error, QString());
    // The visible part has 72 of the layer's 108 units, and a unit has two pixels. The picture begins at unit 34.
    QCOMPARE(square.pixel(2 * (34 - 18) + 1, 2 * (34 - 18) + 1), 0xffe0c040u);
    QCOMPARE(square.pixel(2 * (34 - 18) - 2, 2 * (34 - 18) - 2), 0xff204080u);
    QCOMPARE(square.pixel(0, 0), 0xff204080u);
    const QImage round = fixture::iconOf(package, 144, IconMask::Circle);
    QCOMPARE(qAlpha(round.pixel(0, 0)), 0);
    QCOMPARE(round.pixel(72, 2), 0xff204080u);
    QCOMPARE(round.pixel(2 * (34 - 18) + 1, 2 * (34 - 18) + 1), 0xffe0c040u);
    // This launcher has its own oval icon.
    const QImage lessons = fixture::iconOf(package.launchers().at(1), 96, IconMask::None, &error);
    QCOMPARE(error, QString());
    QCOMPARE(lessons.pixel(48, 48), 0xffe0c040u);
    QCOMPARE(qAlpha(lessons.pixel(2, 2)), 0);
}

void TestSamplePackages::encodingsAnswerTheSame_data()
{
    QTest::addColumn<QString>("encoding");
    QTest::newRow("sparse") << "sparse";
    QTest::newRow("optimized") << "optimized";
}

void TestSamplePackages::encodingsAnswerTheSame()
{
    QFETCH(QString, encoding);
    const Package dense(sample(QStringLiteral("babel.aapt2")));
    const Package other(sample(QStringLiteral("babel.") + encoding));
    const QStringList expected = answers(dense);
    QVERIFY(expected.size() > 50);
    QCOMPARE(answers(other), expected);
    for (int i = 0; i < dense.launchers().size(); ++i)
        QCOMPARE(fixture::iconOf(other.launchers().at(i), 64), fixture::iconOf(dense.launchers().at(i), 64));
}

void TestSamplePackages::encodingsAreThere()
{
    const auto sparseTypes = [](const char *name) {
        ZipArchive files(sample(QLatin1String(name)));
        const QByteArray table = files.open() ? files.file(QStringLiteral("resources.arsc"), 1 << 20) : QByteArray();
        int count = 0;
        const ChunkView whole = ChunkView::at(ByteView(table), 0);
        for (ChunkList chunks(whole.bytes(), whole.headerSize()); chunks.hasNext();) {
            const ChunkView package = chunks.next();
            if (package.type() != ChunkType::Package)
                continue;
            for (ChunkList types(package.bytes(), package.headerSize()); types.hasNext();) {
                const ChunkView type = types.next();
                count += int(type.type() == ChunkType::Type && TypeChunk(type).isSparse());
            }
        }
        return count;
    };
    QCOMPARE(sparseTypes("babel.aapt2"), 0);
    QVERIFY(sparseTypes("babel.sparse") > 10);
    QVERIFY(sparseTypes("babel.optimized") > 10);
}

void TestSamplePackages::setsAreReadWithTheirSplits_data()
{
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<bool>("isCompressed");
    // The base, the split for German and the split for Spanish, named as in the archive.
    QTest::newRow("apks") << QStringList{"splits/base-master.apk", "splits/base-de.apk", "splits/base-es.apk"} << false;
    QTest::newRow("xapk") << QStringList{"org.example.babel.apk", "config.de.apk", "config.es.apk"} << false;
    QTest::newRow("apkm") << QStringList{"base.apk", "split_config.de.apk", "split_config.es.apk"} << true;
}

void TestSamplePackages::setsAreReadWithTheirSplits()
{
    QFETCH(QStringList, paths);
    QFETCH(bool, isCompressed);
    const auto compression = isCompressed ? fixture::Compression::Deflated : fixture::Compression::Stored;
    QBuffer device;
    device.setData(fixture::zip({{QStringLiteral("manifest.json"), "{}"},
                                 {paths.at(2), sampleBytes(QStringLiteral("babel.es"))},
                                 {paths.at(1), sampleBytes(QStringLiteral("babel.de"))},
                                 {paths.at(0), sampleBytes(QStringLiteral("babel.base"))},
                                 {QStringLiteral("notes.txt"), "no package"}},
                                compression));
    const Package set(&device);
    const Package whole(sample(QStringLiteral("babel.aapt2")));
    QCOMPARE(set.error().message(), QStringLiteral("no error"));
    QStringList splits = set.splits();
    splits.sort();
    const QStringList expected{QStringLiteral("config.de_de_rAT"), QStringLiteral("config.es_es_r419")};
    QCOMPARE(splits, expected);
    QCOMPARE(set.labels(), whole.labels());
    QCOMPARE(answers(set), answers(whole));
    QCOMPARE(fixture::iconOf(set, 96), fixture::iconOf(whole, 96));
    // The base without its splits lacks their resources.
    QVERIFY(!Package(sample(QStringLiteral("babel.base"))).labels().contains(QStringLiteral("de")));
}

void TestSamplePackages::setWithoutABaseIsNoPackage()
{
    QBuffer device;
    device.setData(fixture::zip({{QStringLiteral("config.de.apk"), sampleBytes(QStringLiteral("babel.de"))},
                                 {QStringLiteral("broken.apk"), "no archive"}}));
    const Package set(&device);
    QCOMPARE(set.error().code(), SorrelKit::Error::Code::NoManifest);
    QCOMPARE(set.error().message(), QStringLiteral("could not find AndroidManifest.xml: the set has no base package"));
}

void TestSamplePackages::splitOfAnotherApplicationIsLeftOut()
{
    QBuffer device;
    device.setData(fixture::zip({{QStringLiteral("base.apk"), sampleBytes(QStringLiteral("notes.aapt2"))},
                                 {QStringLiteral("config.de.apk"), sampleBytes(QStringLiteral("babel.de"))},
                                 {QStringLiteral("other.apk"), sampleBytes(QStringLiteral("babel.base"))}}));
    const Package set(&device);
    QCOMPARE(set.packageName(), QStringLiteral("org.example.notes"));
    QVERIFY(set.splits().isEmpty());
}

void TestSamplePackages::badging_data()
{
    QTest::addColumn<QString>("name");
    const QStringList files = QDir(QStringLiteral(SORREL_SAMPLES_DIR)).entryList({QStringLiteral("*.apk")});
    QVERIFY(files.size() > 8);
    for (const QString &file : files)
        QTest::newRow(qPrintable(file)) << file.chopped(4);
}

void TestSamplePackages::badging()
{
    QFETCH(QString, name);
    const Badging badging(sample(name));
    if (badging.text.isEmpty()) {
        // A split alone is no application.
        QVERIFY(!Package(sample(name)).isValid() || Package(sample(name)).launchers().isEmpty());
        return;
    }
    PackageData data(sample(name));
    const Package package(sample(name));
    QCOMPARE(package.packageName(), badging.value("^package: name='([^']*)'"));
    QCOMPARE(package.versionCode() & 0xffffffff, badging.value("^package: .*versionCode='([^']*)'").toLongLong());
    QCOMPARE(package.versionName(), badging.value("^package: .*versionName='([^']*)'"));
    const QString minimum = badging.value("^sdkVersion:'([^']*)'");
    QCOMPARE(QString::number(package.minSdkVersion()), minimum.isEmpty() ? QStringLiteral("1") : minimum);

    LabelLookup lookup(data.resolver());
    const XmlAttribute *const label = data.manifest().application()->attribute(Attr::Label);
    const QStringList tags = badging.values("^application-label-([^:]*):");
    for (const QString &tag : tags) {
        const QString pattern = QStringLiteral("^application-label-%1:'(.*)'$").arg(tag);
        QVERIFY2(lookup.label(label, LanguageTag(tag)) == badging.value(qPrintable(pattern)),
                 qPrintable(tag + QStringLiteral(": ") + lookup.label(label, LanguageTag(tag)) + QStringLiteral(" and ")
                            + badging.value(qPrintable(pattern))));
    }
    QCOMPARE(lookup.label(label, LanguageTag()), badging.value("^application-label:'(.*)'$"));
    for (const QString &tag : lookup.labels(label).keys()) {
        const bool isKnown = tag.isEmpty() || std::any_of(tags.cbegin(), tags.cend(), [&tag](const QString &theirs) {
                                 return LanguageTag(theirs).toString() == tag;
                             });
        QVERIFY2(isKnown, qPrintable(tag));
    }

    // aapt2 omits aliases, and the labels of filters and of the application.
    for (const Manifest::EntryElements &entry : data.manifest().launchers()) {
        if (entry.isAlias)
            continue;
        const QString pattern = QStringLiteral("^launchable-activity: name='%1'  label='(.*)' icon=").arg(entry.name);
        QVERIFY2(!badging.values(qPrintable(pattern)).isEmpty(), qPrintable(entry.name));
        QString theirs = badging.value(qPrintable(pattern));
        theirs.replace(QLatin1String("\\\""), QLatin1String("\""));
        QCOMPARE(lookup.label(entry.component->attribute(Attr::Label), LanguageTag()), theirs);
    }
}

QTEST_GUILESS_MAIN(TestSamplePackages)
#include "tst_sample_packages.moc"
