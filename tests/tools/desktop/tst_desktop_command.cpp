// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "DesktopEntries.h"
#include "Files.h"
#include "Tool.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;

namespace {

QString sample(const char *name)
{
    return QStringLiteral(SORREL_SAMPLES_DIR "/") + QLatin1String(name);
}

// A label in several languages. One of them matches no locale.
QByteArray labelTable()
{
    return TableBuilder()
        .strings({QStringLiteral("Notes"), QStringLiteral("Notizen"), QStringLiteral("Qaydlar")})
        .package(PackageBuilder()
                     .types({QStringLiteral("string")})
                     .type(TypeBuilder(1).value(0, String, 0))
                     .type(TypeBuilder(1, ConfigBuilder().locale("de").build()).value(0, String, 1))
                     .type(TypeBuilder(1, ConfigBuilder().locale("en", "US").build()).value(0, String, 0))
                     // The script is the four letters at 36.
                     .type(TypeBuilder(
                               1, ConfigBuilder().locale("uz").u8(36, 'A').u8(37, 'r').u8(38, 'a').u8(39, 'b').build())
                               .value(0, String, 2)))
        .build();
}

QByteArray manifestWithLabels()
{
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))});
    builder.start(QStringLiteral("application"));
    builder.start(QStringLiteral("activity"), {androidText(QStringLiteral("name"), QStringLiteral(".Main")),
                                               androidReference(QStringLiteral("label"), 0x7f010000)});
    builder.launcherFilter().end(QStringLiteral("activity"));
    return builder.end(QStringLiteral("application")).end(QStringLiteral("manifest")).build();
}

} // namespace

class TestDesktopCommand : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void samplesGiveValidEntries_data();
    void samplesGiveValidEntries();
    void theEntryOfAnActivity();
    void anAliasAndItsClass();
    void namesInEveryLanguage();
    void languagesWithoutALocaleAreTold();
    void aSet();
    void iconsAreThoseOfTheLauncher();
    void picturesAreNotEnlarged();
    void iconsThatCannotBeHadAreTold();
    void hiddenLaunchersWhenAsked();
    void forAProgram();
    void filesOfTheSameLauncherAreReplaced();
    void iconsThatAreNoMoreAreRemoved();
    void otherFilesAreKept_data();
    void otherFilesAreKept();
    void aFullDiskLeavesWhatWas();
    void directoriesThatCannotBeMade();
    void unreadablePackages();

private:
    QString write(const QString &name, const QByteArray &bytes) const
    {
        return writeFile(m_directory->filePath(name), bytes);
    }
    QString colored(quint32 rgb, int size, const QString &label = QStringLiteral("Label")) const;
    QString output() const { return m_directory->filePath(QStringLiteral("share")); }
    QString entry(const char *name) const
    {
        return output() + QStringLiteral("/applications/%1.desktop").arg(QLatin1String(name));
    }
    QString icon(const char *name, int size) const
    {
        return output()
               + QStringLiteral("/icons/hicolor/%1x%1/apps/%2.png").arg(QString::number(size), QLatin1String(name));
    }
    QStringList arguments(const QString &file) const
    {
        return {QStringLiteral("desktop"), QStringLiteral("-o"),           output(),
                QStringLiteral("--exec"),  QStringLiteral("env %p %a %c"), file};
    }

    std::unique_ptr<QTemporaryDir> m_directory;
};

void TestDesktopCommand::initTestCase()
{
    for (const char *program : {"sorrel", "desktop-file-validate"})
        QVERIFY2(!QStandardPaths::findExecutable(QLatin1String(program)).isEmpty(),
                 qPrintable(QStringLiteral("%1 is missing").arg(QLatin1String(program))));
}

void TestDesktopCommand::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
}

// A package with a launcher org.x.Main, whose icon is a square of one colour.
QString TestDesktopCommand::colored(quint32 rgb, int size, const QString &label) const
{
    return write(
        QStringLiteral("colored.apk"),
        package(emptyTable(),
                manifestOf(QStringLiteral("org.x"), {{QStringLiteral(".Main"), label, QStringLiteral("i.png")}}),
                {{QStringLiteral("i.png"), picture(size, size, rgb)}}));
}

void TestDesktopCommand::samplesGiveValidEntries_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("atlas.aapt.apk") << 3;
    QTest::newRow("atlas.aapt2.apk") << 3;
    QTest::newRow("babel.aapt2.apk") << 5;
    QTest::newRow("babel.base.apk") << 5;
    QTest::newRow("babel.optimized.apk") << 5;
    QTest::newRow("babel.sparse.apk") << 5;
    QTest::newRow("gallery.aapt2.apk") << 0;
    QTest::newRow("kiosk.aapt.apk") << 2;
    QTest::newRow("kiosk.aapt2.apk") << 2;
    QTest::newRow("notes.aapt.apk") << 6;
    QTest::newRow("notes.aapt2.apk") << 6;
    QTest::newRow("toolbox.aapt2.apk") << 19;
    QTest::newRow("vectors.aapt2.apk") << 0;
}

void TestDesktopCommand::samplesGiveValidEntries()
{
    QFETCH(int, count);
    const ToolRun result = runSorrel(arguments(sample(QTest::currentDataTag())) + QStringList{QStringLiteral("--all")});
    QCOMPARE(result.status, 0);
    QStringList told = QString::fromUtf8(result.output).split(QLatin1Char('\n'));
    told.removeLast();
    QStringList written;
    for (const QString &path : filesBelow(output()))
        written.append(output() + QLatin1Char('/') + path);
    told.sort();
    written.sort();
    QCOMPARE(told, written);
    const QStringList entries = written.filter(QRegularExpression(QStringLiteral("/applications/[^/]+\\.desktop$")));
    QCOMPARE(entries.size(), count);
    for (const QString &path : entries)
        QCOMPARE(entryFaults(path), QString());
    const QRegularExpression size(QStringLiteral("/hicolor/(\\d+)x\\1/apps/[^/]+\\.png$"));
    for (const QString &path : written) {
        if (!entries.contains(path))
            QCOMPARE(QImage(path).size(), QSize(1, 1) * size.match(path).captured(1).toInt());
    }
}

void TestDesktopCommand::theEntryOfAnActivity()
{
    const QString file = write(QStringLiteral("plain.apk"),
                               package(emptyTable(), manifestOf(QStringLiteral("org.x"), {{QStringLiteral(".Main")}})));
    const ToolRun result = runSorrel(arguments(file));
    QCOMPARE(result.status, 0);
    QCOMPARE(QString::fromUtf8(result.output), entry("org.x.Main") + QLatin1Char('\n'));
    QCOMPARE(contentOf(entry("org.x.Main")), QByteArray("[Desktop Entry]\n"
                                                        "Type=Application\n"
                                                        "X-Sorrel-Package=org.x\n"
                                                        "X-Sorrel-Component=org.x.Main\n"
                                                        "X-Sorrel-VersionCode=0\n"
                                                        "Name=Label\n"
                                                        "Exec=env org.x org.x.Main org.x.Main\n"
                                                        "Terminal=false\n"));
}

void TestDesktopCommand::anAliasAndItsClass()
{
    QCOMPARE(runSorrel(arguments(sample("babel.aapt2.apk"))).status, 0);
    QCOMPARE(rawValue(entry("org.example.babel.LessonsAgain"), QStringLiteral("Exec")),
             QStringLiteral("env org.example.babel org.example.babel.LessonsAgain org.example.babel.Lessons"));
    QCOMPARE(rawValue(entry("org.example.babel.LessonsAgain"), QStringLiteral("X-Sorrel-Component")),
             QStringLiteral("org.example.babel.LessonsAgain"));
    QCOMPARE(rawValue(entry("org.example.babel.LessonsAgain"), QStringLiteral("X-Sorrel-VersionCode")),
             QStringLiteral("4294967303"));
}

void TestDesktopCommand::namesInEveryLanguage()
{
    QCOMPARE(runSorrel(arguments(sample("babel.aapt2.apk"))).status, 0);
    const QMap<QString, QString> expected{
        {QStringLiteral("C"), QStringLiteral("Phrasebook 🗼")},
        {QStringLiteral("ja_JP.UTF-8"), QStringLiteral("Phrasebook 🗼")},
        {QStringLiteral("en_GB.UTF-8"), QStringLiteral("Phrase book")},
        {QStringLiteral("de_DE.UTF-8"), QStringLiteral("Sprachführer")},
        {QStringLiteral("de_AT.UTF-8"), QStringLiteral("Sprachführer (AT)")},
        {QStringLiteral("de_CH.UTF-8@euro"), QStringLiteral("Sprachführer")},
        {QStringLiteral("es_ES.UTF-8"), QStringLiteral("Guía de conversación")},
        {QStringLiteral("es_MX.UTF-8"), QStringLiteral("Libro de frases")},
        {QStringLiteral("ca_ES@valencia"), QStringLiteral("Llibre de frases")},
        {QStringLiteral("fil_PH"), QStringLiteral("Aklat ng mga parirala")},
        {QStringLiteral("fr_FR.UTF-8"), QStringLiteral("Guide de conversation")},
        {QStringLiteral("he_IL.UTF-8"), QStringLiteral("שיחון")},
        {QStringLiteral("id_ID.UTF-8"), QStringLiteral("Buku frasa")},
        {QStringLiteral("pt_BR.UTF-8"), QStringLiteral("Livro de frases")},
        {QStringLiteral("pt_PT.UTF-8"), QStringLiteral("Guia de conversação")},
        {QStringLiteral("sr_RS"), QStringLiteral("Зборник фраза")},
        {QStringLiteral("sr_RS@latin"), QStringLiteral("Zbornik fraza")},
        {QStringLiteral("zh_CN.UTF-8"), QStringLiteral("常用语手册")},
        {QStringLiteral("zh_HK.UTF-8"), QStringLiteral("常用語手冊（香港）")},
        {QStringLiteral("zh_TW.UTF-8"), QStringLiteral("常用語手冊")},
    };
    QCOMPARE(namesInLocales(entry("org.example.babel.Phrasebook"), expected.keys()), expected);
}

void TestDesktopCommand::languagesWithoutALocaleAreTold()
{
    const QString file = write(QStringLiteral("labels.apk"), package(labelTable(), manifestWithLabels()));
    const ToolRun result = runSorrel(arguments(file));
    QCOMPARE(result.status, 0);
    QCOMPARE(QString::fromUtf8(result.errors),
             QStringLiteral("sorrel: %1: org.x.Main: there is no icon\n"
                            "sorrel: %1: org.x.Main: no locale stands for the language of the label in uz-Arab\n")
                 .arg(file));
    const QByteArray content = contentOf(entry("org.x.Main"));
    // The label is written even where it equals the default one.
    QVERIFY(content.contains("\nName=Notes\nName[de]=Notizen\nName[en_US]=Notes\n"));
    QCOMPARE(content.count("Name"), 3);
}

void TestDesktopCommand::aSet()
{
    QVector<Member> members;
    for (const char *part : {"base", "de", "es"}) {
        const QString name = QLatin1String(part) + QStringLiteral(".apk");
        members.append({name, contentOf(sample("babel.") + name)});
    }
    const ToolRun result = runSorrel(arguments(write(QStringLiteral("set.apks"), zip(members))));
    QCOMPARE(result.status, 0);
    const QString path = entry("org.example.babel.Phrasebook");
    QCOMPARE(entryFaults(path), QString());
    QCOMPARE(namesInLocales(path, {QStringLiteral("de"), QStringLiteral("es")}),
             (QMap<QString, QString>{{QStringLiteral("de"), QStringLiteral("Sprachführer")},
                                     {QStringLiteral("es"), QStringLiteral("Guía de conversación")}}));
}

void TestDesktopCommand::iconsAreThoseOfTheLauncher()
{
    const QString file = sample("babel.aapt2.apk");
    QCOMPARE(runSorrel(arguments(file) + QStringList{QStringLiteral("--shape"), QStringLiteral("circle")}).status, 0);
    const QString name = QStringLiteral("org.example.babel.Phrasebook");
    QCOMPARE(rawValue(entry("org.example.babel.Phrasebook"), QStringLiteral("Icon")), name);
    for (const int size : {16, 22, 24, 32, 36, 48, 64, 72, 96, 128, 192, 256, 512}) {
        const ToolRun drawn =
            runSorrel({QStringLiteral("icon"), QStringLiteral("--launcher"), name, QStringLiteral("--shape"),
                       QStringLiteral("circle"), QStringLiteral("--size"), QString::number(size), file});
        const QImage expected = QImage::fromData(drawn.output).convertToFormat(QImage::Format_ARGB32);
        QCOMPARE(expected.width(), size);
        QCOMPARE(QImage(icon("org.example.babel.Phrasebook", size)).convertToFormat(QImage::Format_ARGB32), expected);
    }
    QCOMPARE(qAlpha(QImage(icon("org.example.babel.Phrasebook", 48)).pixel(0, 0)), 0);
}

void TestDesktopCommand::picturesAreNotEnlarged()
{
    QCOMPARE(runSorrel(arguments(colored(0xffff8000, 48))).status, 0);
    QStringList icons;
    for (const int size : {16, 22, 24, 32, 36, 48}) {
        const QImage image(icon("org.x.Main", size));
        QCOMPARE(image.size(), QSize(size, size));
        QCOMPARE(image.pixel(0, 0), 0xffff8000);
        QCOMPARE(image.pixel(size - 1, size - 1), 0xffff8000);
        icons.append(icon("org.x.Main", size));
    }
    QCOMPARE(filesBelow(output()).size(), icons.size() + 1);

    // The only icon is smaller than every size of the theme.
    QCOMPARE(runSorrel(arguments(colored(0xff00ff00, 8))).status, 0);
    QCOMPARE(QImage(icon("org.x.Main", 16)).pixel(8, 8), 0xff00ff00);
}

void TestDesktopCommand::iconsThatCannotBeHadAreTold()
{
    const QString file =
        write(QStringLiteral("damaged.apk"),
              package(emptyTable(),
                      manifestOf(QStringLiteral("org.x"),
                                 {{QStringLiteral(".Main"), QStringLiteral("a"), QStringLiteral("i.png")}}),
                      {{QStringLiteral("i.png"), QByteArray("no picture")}}));
    const ToolRun result = runSorrel(arguments(file));
    QCOMPARE(result.status, 0);
    QVERIFY(QString::fromUtf8(result.errors).startsWith(QStringLiteral("sorrel: %1: org.x.Main: ").arg(file)));
    QCOMPARE(filesBelow(output()), QStringList{QStringLiteral("applications/org.x.Main.desktop")});
    QVERIFY(!contentOf(entry("org.x.Main")).contains("Icon"));
    QCOMPARE(entryFaults(entry("org.x.Main")), QString());
}

void TestDesktopCommand::hiddenLaunchersWhenAsked()
{
    const QString file =
        write(QStringLiteral("hidden.apk"),
              package(emptyTable(), manifestOf(QStringLiteral("org.x"),
                                               {{QStringLiteral(".Shown")},
                                                {QStringLiteral(".Hidden"), QStringLiteral("b"), QString(), false}})));
    QCOMPARE(runSorrel(arguments(file)).status, 0);
    QCOMPARE(filesBelow(output()), QStringList{QStringLiteral("applications/org.x.Shown.desktop")});
    QCOMPARE(runSorrel(arguments(file) + QStringList{QStringLiteral("--all")}).status, 0);
    QCOMPARE(filesBelow(output()), (QStringList{QStringLiteral("applications/org.x.Hidden.desktop"),
                                                QStringLiteral("applications/org.x.Shown.desktop")}));
}

void TestDesktopCommand::forAProgram()
{
    const QString file = colored(0xff0000ff, 22);
    const ToolRun result = runSorrel(arguments(file) + QStringList{QStringLiteral("--json")});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.output.count('\n'), 1);
    const QJsonObject written{
        {QStringLiteral("name"), QStringLiteral("org.x.Main")},
        {QStringLiteral("desktop"), entry("org.x.Main")},
        {QStringLiteral("icons"), QJsonArray{icon("org.x.Main", 16), icon("org.x.Main", 22)}},
    };
    QCOMPARE(QJsonDocument::fromJson(result.output).object(),
             (QJsonObject{{QStringLiteral("file"), file}, {QStringLiteral("entries"), QJsonArray{written}}}));

    const QString none = write(QStringLiteral("none.apk"), package(emptyTable(), smallManifest()));
    QCOMPARE(
        QJsonDocument::fromJson(runSorrel(arguments(none) + QStringList{QStringLiteral("--json")}).output).object(),
        (QJsonObject{{QStringLiteral("file"), none}, {QStringLiteral("entries"), QJsonArray()}}));
}

void TestDesktopCommand::filesOfTheSameLauncherAreReplaced()
{
    QCOMPARE(runSorrel(arguments(colored(0xff0000ff, 16, QStringLiteral("Old")))).status, 0);
    QCOMPARE(runSorrel(arguments(colored(0xffff0000, 16, QStringLiteral("New")))).status, 0);
    QCOMPARE(rawValue(entry("org.x.Main"), QStringLiteral("Name")), QStringLiteral("New"));
    QCOMPARE(QImage(icon("org.x.Main", 16)).pixel(8, 8), 0xffff0000);
    QCOMPARE(filesBelow(output()).size(), 2);
}

void TestDesktopCommand::iconsThatAreNoMoreAreRemoved()
{
    const QString foreign =
        write(QStringLiteral("share/icons/hicolor/512x512/apps/org.x.Main.png"), picture(512, 512, 0));
    QCOMPARE(runSorrel(arguments(colored(0xff0000ff, 64))).status, 0);
    QVERIFY(QFile::exists(icon("org.x.Main", 64)));
    QCOMPARE(runSorrel(arguments(colored(0xff0000ff, 24))).status, 0);
    QVERIFY(!QFile::exists(icon("org.x.Main", 64)));
    QVERIFY(QFile::exists(icon("org.x.Main", 24)));
    QVERIFY(QFile::exists(foreign));
}

void TestDesktopCommand::otherFilesAreKept_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("content");
    const QString desktop = QStringLiteral("share/applications/org.x.Main.desktop");
    const QString png = QStringLiteral("share/icons/hicolor/22x22/apps/org.x.Main.png");
    QTest::newRow("entry of somebody else") << desktop << QByteArray("[Desktop Entry]\nType=Application\nName=a\n");
    QTest::newRow("entry of another launcher")
        << desktop << QByteArray("[Desktop Entry]\nX-Sorrel-Package=org.x\nX-Sorrel-Component=org.x.Main2\n");
    QTest::newRow("entry of another package")
        << desktop << QByteArray("[Desktop Entry]\nX-Sorrel-Package=org\nX-Sorrel-Component=org.x.Main\n");
    QTest::newRow("empty file") << desktop << QByteArray();
    QTest::newRow("icon of somebody else") << png << picture(22, 22, 0xff000000);
    QTest::newRow("no picture") << png << QByteArray("X-Sorrel-Launcher org.x/org.x.Main");
}

void TestDesktopCommand::otherFilesAreKept()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, content);
    const QString other = write(path, content);
    const QString file = colored(0xff0000ff, 48);
    const auto isRefused = [&] {
        const ToolRun result = runSorrel(arguments(file));
        return result.status == 1 && result.output.isEmpty()
               && QString::fromUtf8(result.errors)
                      == QStringLiteral("sorrel: %1: a file that is not of org.x.Main is there\n").arg(other);
    };
    QVERIFY(isRefused());
    QCOMPARE(contentOf(other), content);
    QCOMPARE(filesBelow(output()).size(), 1);

    // The command does not write through a link either, even when the link's target is missing.
    QVERIFY(QFile::rename(other, m_directory->filePath(QStringLiteral("moved"))));
    QVERIFY(QFile::link(m_directory->filePath(QStringLiteral("nowhere")), other));
    QVERIFY(isRefused());
    QVERIFY(!QFile::exists(m_directory->filePath(QStringLiteral("nowhere"))));
    QVERIFY(QFileInfo(other).isSymLink());
}

void TestDesktopCommand::aFullDiskLeavesWhatWas()
{
    // Entries exceed the size limit for files, icons do not.
    const auto runOnFullDisk = [&](const QString &file) {
        return runTool(QStringLiteral("sh"),
                       QStringList{QStringLiteral("-c"),
                                   QStringLiteral("ulimit -f 2; trap '' XFSZ; exec sorrel \"$@\""),
                                   QStringLiteral("sh")}
                           + arguments(file));
    };
    const QString longLabel(1000, QChar(0x4e00));
    const ToolRun fresh = runOnFullDisk(colored(0xff0000ff, 24, longLabel));
    QCOMPARE(fresh.status, 1);
    QCOMPARE(fresh.output, QByteArray());
    QVERIFY(QString::fromUtf8(fresh.errors).startsWith(QStringLiteral("sorrel: %1: ").arg(entry("org.x.Main"))));
    QCOMPARE(filesBelow(output()), QStringList());

    QCOMPARE(runOnFullDisk(colored(0xffff0000, 24)).status, 0);
    const QByteArray old = contentOf(entry("org.x.Main"));
    QVERIFY(!old.isEmpty());
    const QStringList files = filesBelow(output());
    QCOMPARE(files.size(), 4);
    QCOMPARE(runOnFullDisk(colored(0xffff0000, 32, longLabel)).status, 1);
    QCOMPARE(contentOf(entry("org.x.Main")), old);
    QCOMPARE(filesBelow(output()), files);
}

void TestDesktopCommand::directoriesThatCannotBeMade()
{
    const QString file = colored(0xff0000ff, 16);
    write(QStringLiteral("share"), QByteArray("a file"));
    const ToolRun result = runSorrel(arguments(file));
    QCOMPARE(result.status, 1);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(QString::fromUtf8(result.errors),
             QStringLiteral("sorrel: %1/icons/hicolor/16x16/apps: the directory could not be made\n").arg(output()));
    QCOMPARE(contentOf(output()), QByteArray("a file"));
}

void TestDesktopCommand::unreadablePackages()
{
    const QString bad = write(QStringLiteral("bad.apk"), QByteArray("nothing of the kind"));
    const ToolRun result = runSorrel(arguments(bad));
    QCOMPARE(result.status, 1);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(QString::fromUtf8(result.errors), QStringLiteral("sorrel: %1: could not open APK file\n").arg(bad));
    // A damaged package without labels does not replace an entry that has them.
    const QString damaged =
        write(QStringLiteral("damaged.apk"),
              package(emptyTable().chopped(1), manifestOf(QStringLiteral("org.x"), {{QStringLiteral(".Main")}})));
    const ToolRun table = runSorrel(arguments(damaged) + QStringList{QStringLiteral("--json")});
    QCOMPARE(table.status, 1);
    QVERIFY(table.errors.contains("could not parse resources.arsc"));
    QCOMPARE(QJsonDocument::fromJson(table.output).object(),
             (QJsonObject{{QStringLiteral("file"), damaged}, {QStringLiteral("entries"), QJsonArray()}}));
    QVERIFY(!QFile::exists(output()));
}

QTEST_GUILESS_MAIN(TestDesktopCommand)
#include "tst_desktop_command.moc"
