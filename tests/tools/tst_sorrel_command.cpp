// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Files.h"
#include "Tool.h"
#include "format/AndroidAttributes.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>

using namespace fixture;

namespace {

QByteArray launcherManifest()
{
    const QString name = QStringLiteral("name");
    const auto addActivity = [&](XmlBuilder &builder, const char *activity, bool enabled) {
        builder.start(
            QStringLiteral("activity"),
            {androidText(name, QString::fromLatin1(activity)),
             androidText(QStringLiteral("enabled"), enabled ? QStringLiteral("true") : QStringLiteral("false")),
             androidReference(QStringLiteral("label"), 0x7f010000),
             androidText(QStringLiteral("icon"), QStringLiteral("icon.png"))});
        builder.launcherFilter().end(QStringLiteral("activity"));
    };
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))});
    builder.empty(QStringLiteral("uses-sdk"), {androidValue(QStringLiteral("minSdkVersion"), Integer, 23)});
    builder.empty(QStringLiteral("uses-permission"), {androidText(name, QStringLiteral("org.x.PERMISSION"))});
    builder.empty(QStringLiteral("uses-feature"), {androidText(name, QStringLiteral("org.x.feature"))});
    builder.start(QStringLiteral("application"), {androidText(QStringLiteral("label"), QStringLiteral("App"))});
    addActivity(builder, ".Main", true);
    addActivity(builder, ".Hidden", false);
    return builder.end(QStringLiteral("application")).end(QStringLiteral("manifest")).build();
}

QByteArray labelTable(const QString &label, const QString &germanLabel)
{
    return TableBuilder()
        .strings({label, germanLabel})
        .package(PackageBuilder()
                     .types({QStringLiteral("string")})
                     .type(TypeBuilder(1).value(0, String, 0))
                     .type(TypeBuilder(1, ConfigBuilder().locale("de").build()).value(0, String, 1)))
        .build();
}

// UTF-16, because it can hold half a surrogate pair.
QByteArray wideLabelTable(const QString &label)
{
    return TableBuilder()
        .strings({label}, Encoding::Utf16)
        .package(PackageBuilder().types({QStringLiteral("string")}).type(TypeBuilder(1).value(0, String, 0)))
        .build();
}

// The names of the commands in the help.
QStringList commandNames()
{
    QStringList names;
    const QString help = QString::fromUtf8(runSorrel({QStringLiteral("--help")}).output);
    const QString list = help.section(QStringLiteral("\nCommands:\n"), 1).section(QStringLiteral("\n\n"), 0, 0);
    for (const QString &line : list.split(QLatin1Char('\n')))
        names.append(line.trimmed().section(QLatin1Char(' '), 0, 0));
    return names;
}

} // namespace

class TestSorrelCommand : public QObject
{
    Q_OBJECT

private slots:
    void infoForAPerson();
    void infoShowsPermissionsInGroups();
    void infoIsolatesTextFromRightToLeft();
    void infoAddsDetailsForAProgram();
    void infoShowsDisabledEntriesWhenAsked();
    void infoShowsEntriesOfOtherKinds();
    void infoKnowsItsKinds();
    void infoForAProgram();
    void infoInTheUsersLanguage_data();
    void infoInTheUsersLanguage();
    void infoWordsFromRightToLeft();
    void infoOnATerminalIsColoured();
    void infoOfSeveralFiles();
    void infoOfAPackageWithoutLaunchers();
    void infoShowsNoControlCharacters();
    void jsonIsValidWhateverALabelHolds_data();
    void jsonIsValidWhateverALabelHolds();
    void nothingThatIsPrintedSteersATerminal_data();
    void nothingThatIsPrintedSteersATerminal();
    void unreadablePackage_data();
    void unreadablePackage();
    void packageWithoutATable();
    void packageWithADamagedTable();
    void otherFilesAreDoneAfterAnUnreadableOne();
    void jsonTellsTheErrorToo();

    void everyCommandReadsAnyName_data();
    void everyCommandReadsAnyName();
    void aNameThatIsNoTextIsInReports_data();
    void aNameThatIsNoTextIsInReports();
    void outputsWhoseNamesAreNoText_data();
    void outputsWhoseNamesAreNoText();

    void helpAndVersionNeedNoFile();
    void everyCommandHasHelp();
    void everyCommandRefusesWrongUsage();
    void wrongUsage_data();
    void wrongUsage();
    void outputThatCannotBeWritten();

private:
    QString write(const QString &name, const QByteArray &bytes) const
    {
        return writeFile(m_directory.filePath(name), bytes);
    }
    QString good() const;

    QTemporaryDir m_directory;
};

QString TestSorrelCommand::good() const
{
    return write(QStringLiteral("good.apk"),
                 package(labelTable(QStringLiteral("Notes"), QStringLiteral("Notizbücher")), launcherManifest(),
                         {{QStringLiteral("icon.png"), picture(48, 32, 0)},
                          {QStringLiteral("lib/arm64-v8a/libx.so"), QByteArray("x")}}));
}

void TestSorrelCommand::infoForAPerson()
{
    const QString file = good();
    const auto bytesText = [](qint64 bytes) {
        return bytes < 1000 ? QStringLiteral("%1 B").arg(bytes)
                            : QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
    };
    const qint64 resources = labelTable(QStringLiteral("Notes"), QStringLiteral("Notizbücher")).size();
    const qint64 others = launcherManifest().size() + picture(48, 32, 0).size();
    const ToolRun result = runSorrel({QStringLiteral("info"), file});
    QCOMPARE(result.status, 0);
    const QString lines = QStringLiteral("\n"
                                         "  name           App\n"
                                         "  package        org.x\n"
                                         "  minimum SDK    Android 6.0 (API 23)\n"
                                         "  size           %1\n"
                                         "  unpacked       libraries 1 B, resources %2, other files %3\n"
                                         "  requests       1 more, which --all shows\n"
                                         "  needs          org.x.feature\n"
                                         "  processors     arm64-v8a\n"
                                         "  languages      de\n"
                                         "  launcher       org.x.Main\n"
                                         "    label        Notes\n");
    QCOMPARE(QString::fromUtf8(result.output),
             file + lines.arg(bytesText(QFileInfo(file).size()), bytesText(resources), bytesText(others)));
    QCOMPARE(result.errors, QByteArray());
}

void TestSorrelCommand::infoShowsPermissionsInGroups()
{
    const auto name = [](const char *text) { return androidText(QStringLiteral("name"), QString::fromLatin1(text)); };
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))});
    builder.empty(QStringLiteral("uses-sdk"), {androidValue(QStringLiteral("minSdkVersion"), Integer, 23)});
    for (const char *permission : {"VIBRATE", "CAMERA", "READ_SMS", "SEND_SMS", "SYSTEM_ALERT_WINDOW", "REBOOT"})
        builder.empty(QStringLiteral("uses-permission"),
                      {name(QByteArray("android.permission.").append(permission).constData())});
    const QByteArray manifest = builder.end(QStringLiteral("manifest")).build();
    const QString file = write(QStringLiteral("permissions.apk"), package(emptyTable(), manifest));
    const auto permissionRows = [](const QByteArray &output) {
        const QString rows = QString::fromUtf8(output);
        return rows.mid(rows.indexOf(QStringLiteral("  asks for"))).section(QStringLiteral("  launcher"), 0, 0);
    };
    QCOMPARE(permissionRows(runSorrel({QStringLiteral("info"), file}).output),
             QStringLiteral("  asks for       camera\n"
                            "                   camera\n"
                            "                 SMS\n"
                            "                   read sms\n"
                            "                   send sms\n"
                            "  in settings    system alert window\n"
                            "  gets           vibrate\n"
                            "  requests       1 more, which --all shows\n"));
    const QString all = permissionRows(runSorrel({QStringLiteral("info"), QStringLiteral("--all"), file}).output);
    QVERIFY(all.contains(QStringLiteral("                   read sms\n"
                                        "                     android.permission.READ_SMS\n")));
    QVERIFY(all.contains(QStringLiteral("  requests       reboot\n")));
    QVERIFY(all.contains(QStringLiteral("  implies        camera on the back: requested android.permission.CAMERA\n")));
}

void TestSorrelCommand::infoIsolatesTextFromRightToLeft()
{
    // A mark of direction is left out, and an override is replaced.
    const QString label = QString(QChar(0x200f)) + QStringLiteral("שלום") + QChar(0x202e);
    const QString file =
        write(QStringLiteral("hebrew.apk"), package(labelTable(label, QStringLiteral("Hallo")), launcherManifest(),
                                                    {{QStringLiteral("icon.png"), picture(48, 32, 0)}}));
    const QString output = QString::fromUtf8(runSorrel({QStringLiteral("info"), file}).output);
    QVERIFY2(output.contains(QStringLiteral("    label        ") + QChar(0x2068) + QStringLiteral("שלום")
                             + QChar(QChar::ReplacementCharacter) + QChar(0x2069) + QLatin1Char('\n')),
             qPrintable(output));
}

void TestSorrelCommand::infoAddsDetailsForAProgram()
{
    const QString file = good();
    const ToolRun result = runSorrel({QStringLiteral("info"), QStringLiteral("--json"), QStringLiteral("--all"), file});
    const QJsonObject details =
        QJsonDocument::fromJson(result.output).object().value(QLatin1String("details")).toObject();
    const QJsonArray permissions = details.value(QLatin1String("permissions")).toArray();
    QCOMPARE(permissions.size(), 1);
    QCOMPARE(permissions.at(0).toObject().value(QLatin1String("level")), QJsonValue(QStringLiteral("unknown")));
    QCOMPARE(details.value(QLatin1String("features")).toArray().size(), 2);
    QCOMPARE(details.value(QLatin1String("languages")), QJsonValue(QJsonArray{QStringLiteral("de")}));
    QCOMPARE(details.value(QLatin1String("sizes")).toObject().value(QLatin1String("libraries")), QJsonValue(1));
    QCOMPARE(details.value(QLatin1String("screens")).toObject().value(QLatin1String("xlarge")), QJsonValue(true));
    QCOMPARE(details.value(QLatin1String("debuggable")), QJsonValue(false));
}

void TestSorrelCommand::infoShowsEntriesOfOtherKinds()
{
    const auto service = [](const char *name, const char *action, const char *permission) {
        return QStringList{QString::fromLatin1(name), QString::fromLatin1(action), QString::fromLatin1(permission)};
    };
    XmlBuilder builder;
    builder.attributeId(QStringLiteral("name"), Attr::Name)
        .attributeId(QStringLiteral("permission"), Attr::Permission)
        .attributeId(QStringLiteral("label"), Attr::Label)
        .startNamespace(QStringLiteral("android"), androidUri)
        .start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))})
        .start(QStringLiteral("application"));
    for (const QStringList &parts :
         {service("Tile", "android.service.quicksettings.action.QS_TILE",
                  "android.permission.BIND_QUICK_SETTINGS_TILE"),
          service("Open", "android.service.quicksettings.action.QS_TILE", "none"),
          service("Keys", "android.view.InputMethod", "android.permission.BIND_INPUT_METHOD")}) {
        builder
            .start(QStringLiteral("service"), {androidText(QStringLiteral("name"), parts.at(0)),
                                               androidText(QStringLiteral("permission"), parts.at(2)),
                                               androidText(QStringLiteral("label"), QStringLiteral("A label"))})
            .start(QStringLiteral("intent-filter"))
            .empty(QStringLiteral("action"), {androidText(QStringLiteral("name"), parts.at(1))})
            .end(QStringLiteral("intent-filter"))
            .end(QStringLiteral("service"));
    }
    builder.end(QStringLiteral("application")).end(QStringLiteral("manifest"));
    const QString file = write(QStringLiteral("entries.apk"), package(emptyTable(), builder.build()));
    const auto kinds = [&file](const QStringList &options) {
        const QByteArray output =
            runSorrel(QStringList{QStringLiteral("info"), QStringLiteral("--json")} + options + QStringList{file})
                .output;
        const QJsonObject json = QJsonDocument::fromJson(output).object();
        QStringList texts;
        for (const QJsonValue &entry : json.value(QStringLiteral("entries")).toArray()) {
            const QJsonObject object = entry.toObject();
            texts.append(object.value(QStringLiteral("kind")).toString() + QLatin1Char(' ')
                         + object.value(QStringLiteral("name")).toString()
                         + (object.value(QStringLiteral("shown")).toBool() ? QString() : QStringLiteral(" hidden")));
        }
        return json.contains(QStringLiteral("entries")) ? texts : QStringList{QStringLiteral("none")};
    };
    const QString tile = QStringLiteral("tile org.x.Tile");
    const QString open = QStringLiteral("tile org.x.Open hidden");
    const QString keys = QStringLiteral("input-method org.x.Keys");
    QCOMPARE(kinds({}), QStringList{QStringLiteral("none")});
    QCOMPARE(kinds({QStringLiteral("--entries=all")}), QStringList({tile, keys}));
    QCOMPARE(kinds({QStringLiteral("--entries=tile")}), QStringList{tile});
    QCOMPARE(kinds({QStringLiteral("--entries=launcher")}), QStringList());
    QCOMPARE(kinds({QStringLiteral("--all")}), QStringList({tile, open, keys}));
    QCOMPARE(kinds({QStringLiteral("--all"), QStringLiteral("--entries=input-method")}), QStringList{keys});
    const QByteArray text = runSorrel({QStringLiteral("info"), QStringLiteral("--all"), file}).output;
    QVERIFY(text.contains("A label (org.x.Tile)\n"));
    QVERIFY(text.contains("A label (org.x.Open), not shown\n"));
    QVERIFY(!runSorrel({QStringLiteral("info"), file}).output.contains("A label"));
}

void TestSorrelCommand::infoKnowsItsKinds()
{
    const ToolRun result =
        runSorrel({QStringLiteral("info"), QStringLiteral("--entries=star"), QStringLiteral("x.apk")});
    QCOMPARE(result.status, 2);
    QVERIFY(result.errors.contains("'star' is no kind of entry."));
}

void TestSorrelCommand::infoShowsDisabledEntriesWhenAsked()
{
    const QString file = good();
    QVERIFY(!runSorrel({QStringLiteral("info"), file}).output.contains("org.x.Hidden"));
    QVERIFY(runSorrel({QStringLiteral("info"), QStringLiteral("--all"), file}).output.contains("org.x.Hidden"));
    const ToolRun json = runSorrel({QStringLiteral("info"), file, QStringLiteral("--json"), QStringLiteral("--all")});
    QCOMPARE(QJsonDocument::fromJson(json.output).object().value(QLatin1String("launchers")).toArray().size(), 2);
}

void TestSorrelCommand::infoForAProgram()
{
    const QString file = good();
    const ToolRun result = runSorrel({QStringLiteral("info"), QStringLiteral("--json"), file});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.output.count('\n'), 1);
    QVERIFY(result.output.endsWith('\n'));
    const QJsonObject icon{{QStringLiteral("kind"), QStringLiteral("png")},
                           {QStringLiteral("path"), QStringLiteral("icon.png")},
                           {QStringLiteral("width"), 48},
                           {QStringLiteral("height"), 32}};
    const QJsonObject labels{{QString(), QStringLiteral("Notes")},
                             {QStringLiteral("de"), QStringLiteral("Notizbücher")}};
    const QJsonObject launcher{{QStringLiteral("package"), QStringLiteral("org.x")},
                               {QStringLiteral("name"), QStringLiteral("org.x.Main")},
                               {QStringLiteral("class"), QStringLiteral("org.x.Main")},
                               {QStringLiteral("labels"), labels},
                               {QStringLiteral("icons"), QJsonArray{icon}}};
    const QJsonObject feature{{QStringLiteral("name"), QStringLiteral("org.x.feature")},
                              {QStringLiteral("required"), true}};
    const QJsonObject error{{QStringLiteral("code"), 0}, {QStringLiteral("text"), QStringLiteral("no error")}};
    const QJsonObject expected{{QStringLiteral("file"), file},
                               {QStringLiteral("error"), error},
                               {QStringLiteral("package"), QStringLiteral("org.x")},
                               {QStringLiteral("versionCode"), QStringLiteral("0")},
                               {QStringLiteral("versionName"), QString(QStringLiteral(""))},
                               {QStringLiteral("minSdkVersion"), 23},
                               {QStringLiteral("targetSdkVersion"), 23},
                               {QStringLiteral("permissions"), QJsonArray{QStringLiteral("org.x.PERMISSION")}},
                               {QStringLiteral("features"), QJsonArray{feature}},
                               {QStringLiteral("nativeAbis"), QJsonArray{QStringLiteral("arm64-v8a")}},
                               {QStringLiteral("splits"), QJsonArray()},
                               {QStringLiteral("labels"), QJsonObject{{QString(), QStringLiteral("App")}}},
                               {QStringLiteral("launchers"), QJsonArray{launcher}}};
    QCOMPARE(QJsonDocument::fromJson(result.output).object(), expected);
}

void TestSorrelCommand::infoInTheUsersLanguage_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("languages");
    QTest::addColumn<QString>("first");
    const QString label = QStringLiteral("label        Notes");
    const QString germanLabel = QStringLiteral("Titel de     Notizbücher");
    QTest::newRow("none") << "C.UTF-8" << QString() << label;
    QTest::newRow("German") << "de_DE.UTF-8" << QString() << germanLabel;
    QTest::newRow("German, elsewhere") << "de_CH.UTF-8" << QString() << germanLabel;
    QTest::newRow("one without a label") << "fr_FR.UTF-8" << QString() << label;
    QTest::newRow("Chinese") << "zh_CN.UTF-8" << QString() << QStringLiteral("标签         Notes");
    QTest::newRow("Chinese, elsewhere") << "zh_SG.UTF-8" << QString() << QStringLiteral("标签         Notes");
    QTest::newRow("Chinese in the other script") << "zh_TW.UTF-8" << QString() << label;
    QTest::newRow("messages in another than numbers") << "en_US.UTF-8"
                                                      << "de_AT:en" << germanLabel;
}

void TestSorrelCommand::infoInTheUsersLanguage()
{
    QFETCH(QString, locale);
    QFETCH(QString, languages);
    QFETCH(QString, first);
    ToolSetting setting;
    setting.environment = {{QStringLiteral("LC_ALL"), locale}, {QStringLiteral("LANGUAGE"), languages}};
    const ToolRun result = runSorrel({QStringLiteral("info"), QStringLiteral("--all"), good()}, setting);
    QCOMPARE(result.status, 0);
    const QStringList lines = QString::fromUtf8(result.output).split(QLatin1Char('\n'));
    // Those of the hidden launcher are the same.
    const QStringList labels = lines.filter(QStringLiteral("    ") + first.section(QLatin1Char(' '), 0, 0));
    QCOMPARE(labels.size(), 4);
    QCOMPARE(labels.constFirst().trimmed(), first);
}

void TestSorrelCommand::infoWordsFromRightToLeft()
{
    ToolSetting setting;
    setting.environment = {{QStringLiteral("LC_ALL"), QStringLiteral("ar.UTF-8")}};
    const QString text = QString::fromUtf8(runSorrel({QStringLiteral("info"), good()}, setting).output);
    // The isolates take no columns, so the values are in column 17.
    QVERIFY2(text.contains(QStringLiteral("\n  \u2068الحزمة\u2069         org.x\n")), qPrintable(text));
    QVERIFY2(text.contains(QStringLiteral("\n  \u2068المعالجات\u2069      arm64-v8a\n")), qPrintable(text));
    const QByteArray json = runSorrel({QStringLiteral("info"), QStringLiteral("--json"), good()}, setting).output;
    QVERIFY(QJsonDocument::fromJson(json).object().contains(QStringLiteral("package")));
}

void TestSorrelCommand::infoOnATerminalIsColoured()
{
    const QString file = good();
    const ToolRun plain = runSorrel({QStringLiteral("info"), file});
    QVERIFY(!plain.output.contains('\033'));

    const ToolRun coloured = runSorrelOnTerminal({QStringLiteral("info"), file});
    QCOMPARE(coloured.status, 0);
    QVERIFY(coloured.output.contains("\033[1m" + file.toUtf8() + "\033[0m\r\n"));
    QVERIFY(coloured.output.contains("\033[1;32mNotes\033[0m\r\n"));
    QByteArray withoutColours = coloured.output;
    withoutColours.replace("\r\n", "\n");
    for (const char *code : {"\033[0m", "\033[1m", "\033[36m", "\033[1;32m"})
        withoutColours.replace(code, "");
    QCOMPARE(withoutColours, plain.output);

    ToolSetting noColour;
    noColour.environment.insert(QStringLiteral("NO_COLOR"), QStringLiteral("1"));
    ToolSetting dumb;
    dumb.environment.insert(QStringLiteral("TERM"), QStringLiteral("dumb"));
    for (const ToolSetting &setting : {noColour, dumb}) {
        QByteArray output = runSorrelOnTerminal({QStringLiteral("info"), file}, setting).output;
        QCOMPARE(output.replace("\r\n", "\n"), plain.output);
    }
    ToolSetting empty;
    empty.environment.insert(QStringLiteral("NO_COLOR"), QString(QLatin1String("")));
    QCOMPARE(runSorrelOnTerminal({QStringLiteral("info"), file}, empty).output, coloured.output);
}

void TestSorrelCommand::infoOfSeveralFiles()
{
    const QString first = good();
    const QString second = write(QStringLiteral("zweite Datei ü.apk"), package(emptyTable(), smallManifest()));
    const ToolRun text = runSorrel({QStringLiteral("info"), first, second});
    QCOMPARE(text.status, 0);
    QVERIFY(QString::fromUtf8(text.output).startsWith(first + QLatin1Char('\n')));
    QVERIFY(QString::fromUtf8(text.output).contains(QStringLiteral("\n\n") + second + QLatin1Char('\n')));
    const ToolRun json = runSorrel({QStringLiteral("info"), QStringLiteral("--json"), first, second});
    const QList<QByteArray> lines = json.output.split('\n');
    QCOMPARE(lines.size(), 3);
    QCOMPARE(QJsonDocument::fromJson(lines.at(0)).object().value(QLatin1String("file")).toString(), first);
    QCOMPARE(QJsonDocument::fromJson(lines.at(1)).object().value(QLatin1String("file")).toString(), second);
}

void TestSorrelCommand::infoOfAPackageWithoutLaunchers()
{
    const QString file = write(QStringLiteral("plain.apk"), package(emptyTable(), smallManifest()));
    QVERIFY(runSorrel({QStringLiteral("info"), file}).output.endsWith("  launcher       none\n"));
}

void TestSorrelCommand::jsonIsValidWhateverALabelHolds_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("expected");
    QTest::newRow("high half of a pair") << QString(QChar(0xd800)) + QLatin1Char('a') << QStringLiteral("\ufffda");
    QTest::newRow("low half of a pair") << QString(QChar(0xdc00)) << QStringLiteral("\ufffd");
    QTest::newRow("halves the wrong way round")
        << QString(QChar(0xdc00)) + QChar(0xd800) << QStringLiteral("\ufffd\ufffd");
}

// One line that is not JSON stops a reader of lines, which then loses all later lines.
void TestSorrelCommand::jsonIsValidWhateverALabelHolds()
{
    QFETCH(QString, label);
    QFETCH(QString, expected);
    const QByteArray bytes = package(wideLabelTable(label), launcherManifest());
    const QString file = write(QStringLiteral("halves/1.apk"), bytes);
    for (int i = 2; i <= 20; ++i)
        write(QStringLiteral("halves/%1.apk").arg(i), bytes);
    for (const QStringList &arguments : {QStringList{QStringLiteral("info"), QStringLiteral("--json"), file},
                                         QStringList{QStringLiteral("scan"), QFileInfo(file).path()},
                                         QStringList{QStringLiteral("resources"), QStringLiteral("--json"), file}}) {
        const ToolRun result = runSorrel(arguments);
        QCOMPARE(QString::fromUtf8(result.output).toUtf8(), result.output);
        ToolSetting json;
        json.input = result.output;
        const ToolRun jq =
            runTool(QStringLiteral("jq"),
                    {QStringLiteral("-r"), QStringLiteral("first(.. | strings | select(test(\"\ufffd\")))")}, json);
        QCOMPARE(jq.errors, QByteArray());
        QCOMPARE(jq.status, 0);
        QCOMPARE(jq.output, (expected.toUtf8() + '\n').repeated(result.output.count('\n')));
    }
}

void TestSorrelCommand::nothingThatIsPrintedSteersATerminal_data()
{
    QTest::addColumn<QString>("character");
    for (const char *character : {"\u0085", "\u009b", "\u009d", "\u007f", "\u202e", "\u2066", "\u2069", "\ufeff",
                                  "\u061c", "\u200e", "\u200f", "\U000e0041", "\U000e007f"})
        QTest::newRow(QByteArray(character).toHex().constData())
            << QString::fromUtf8(QByteArray("x") + character).mid(1);
}

void TestSorrelCommand::nothingThatIsPrintedSteersATerminal()
{
    QFETCH(QString, character);
    const QString text = QStringLiteral("a%1b").arg(character);
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), text)});
    builder.start(QStringLiteral("application"), {androidText(QStringLiteral("label"), text)});
    builder.start(QStringLiteral("activity"), {androidText(QStringLiteral("name"), text)});
    builder.launcherFilter().end(QStringLiteral("activity"));
    builder.end(QStringLiteral("application")).end(QStringLiteral("manifest"));
    const QString file = write(QStringLiteral("steering.apk"),
                               package(wideLabelTable(text), builder.build(), {{text, QByteArray("x")}}));
    const auto run = [&](const QStringList &arguments) { return runSorrel(arguments + QStringList{file}); };
    const QString json = QStringLiteral("--json");
    for (const char *command : {"info", "lint", "files", "resources"}) {
        const ToolRun forPeople = run({QLatin1String(command)});
        QVERIFY2(!forPeople.output.contains(character.toUtf8()), command);
        QVERIFY2(QString::fromUtf8(forPeople.output).contains(QStringLiteral("a\ufffdb")), command);
        const ToolRun forPrograms = run({QLatin1String(command), json});
        QVERIFY2(!forPrograms.output.contains(character.toUtf8()), command);
        QVERIFY2(forPrograms.output.contains("a\\u"), command);
    }
    const ToolRun scan = run({QStringLiteral("scan")});
    QVERIFY(!scan.output.contains(character.toUtf8()));
    QCOMPARE(QJsonDocument::fromJson(scan.output).object().value(QLatin1String("package")).toString(), text);

    const ToolRun manifest = run({QStringLiteral("manifest")});
    QVERIFY(!manifest.output.contains(character.toUtf8()));
    // The parser of the DOM cuts character references to 16 bits.
    QXmlStreamReader reader(manifest.output);
    QVERIFY(reader.readNextStartElement());
    QCOMPARE(reader.attributes().value(QStringLiteral("package")).toString(), text);
}

void TestSorrelCommand::infoShowsNoControlCharacters()
{
    const QString label = QStringLiteral("a\u001b[2Jb\nc\u202ed");
    const QString file =
        write(QStringLiteral("steering.apk"), package(labelTable(label, QStringLiteral("x")), launcherManifest()));
    const ToolRun text = runSorrel({QStringLiteral("info"), file});
    QVERIFY(QString::fromUtf8(text.output).contains(QStringLiteral("label        a\ufffd[2Jb\ufffdc\ufffdd\n")));
    const ToolRun json = runSorrel({QStringLiteral("info"), QStringLiteral("--json"), file});
    QCOMPARE(json.output.count('\n'), 1);
    const QJsonObject launcher =
        QJsonDocument::fromJson(json.output).object().value(QLatin1String("launchers")).toArray().at(0).toObject();
    QCOMPARE(launcher.value(QLatin1String("labels")).toObject().value(QString()).toString(), label);
}

void TestSorrelCommand::unreadablePackage_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("fault");
    QTest::newRow("no archive") << QByteArray("nothing of the kind") << QStringLiteral("could not open APK file") << "";
    QTest::newRow("no manifest") << zip({{QStringLiteral("resources.arsc"), emptyTable()}})
                                 << QStringLiteral("could not find AndroidManifest.xml") << "";
    QTest::newRow("bad manifest") << package(emptyTable(), launcherManifest().chopped(1))
                                  << QStringLiteral("could not parse AndroidManifest.xml")
                                  << ": not a binary XML document";
}

void TestSorrelCommand::unreadablePackage()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, text);
    QFETCH(QString, fault);
    const QString file = write(QStringLiteral("bad.apk"), content);
    const QString line = QStringLiteral("sorrel: %1: %2%3\n");
    const ToolRun info = runSorrel({QStringLiteral("info"), file});
    QCOMPARE(info.status, 1);
    QCOMPARE(info.output, QByteArray());
    QCOMPARE(QString::fromUtf8(info.errors), line.arg(file, text, fault));
    const ToolRun manifest = runSorrel({QStringLiteral("manifest"), file});
    QCOMPARE(manifest.status, 1);
    QCOMPARE(manifest.output, QByteArray());
    QCOMPARE(manifest.errors, info.errors);
}

void TestSorrelCommand::packageWithoutATable()
{
    const QString file =
        write(QStringLiteral("no-table.apk"), zip({{QStringLiteral("AndroidManifest.xml"), smallManifest()}}));
    const ToolRun info = runSorrel({QStringLiteral("info"), file});
    QCOMPARE(info.status, 0);
    QVERIFY(info.output.contains("  package        org.example.app\n"));
    const ToolRun manifest = runSorrel({QStringLiteral("manifest"), file});
    QCOMPARE(manifest.status, 0);
    QVERIFY(manifest.output.contains("package=\"org.example.app\""));
}

void TestSorrelCommand::packageWithADamagedTable()
{
    const QString file = write(QStringLiteral("bad-table.apk"), package(emptyTable().chopped(1), smallManifest()));
    const ToolRun info = runSorrel({QStringLiteral("info"), file});
    QCOMPARE(info.status, 1);
    QVERIFY(info.output.contains("  package        org.example.app\n"));
    QCOMPARE(QString::fromUtf8(info.errors),
             QStringLiteral("sorrel: %1: could not parse resources.arsc: not a resource table\n").arg(file));
    const ToolRun manifest = runSorrel({QStringLiteral("manifest"), file});
    QCOMPARE(manifest.status, 1);
    QVERIFY(manifest.output.contains("package=\"org.example.app\""));
    QCOMPARE(manifest.errors, info.errors);
}

void TestSorrelCommand::otherFilesAreDoneAfterAnUnreadableOne()
{
    const QString bad = write(QStringLiteral("bad.apk"), QByteArray());
    const QString file = good();
    const ToolRun result = runSorrel({QStringLiteral("info"), bad, file, QStringLiteral("/nonexistent")});
    QCOMPARE(result.status, 1);
    QCOMPARE(result.output, runSorrel({QStringLiteral("info"), file}).output);
    QCOMPARE(result.errors.count('\n'), 2);
}

void TestSorrelCommand::jsonTellsTheErrorToo()
{
    const QString bad = write(QStringLiteral("bad.apk"), QByteArray());
    const ToolRun result = runSorrel({QStringLiteral("info"), QStringLiteral("--json"), bad, good()});
    QCOMPARE(result.status, 1);
    QCOMPARE(result.output.count('\n'), 2);
    const QJsonObject error{{QStringLiteral("code"), 1},
                            {QStringLiteral("text"), QStringLiteral("could not open APK file")}};
    const QJsonObject expected{{QStringLiteral("file"), bad},
                               {QStringLiteral("error"), error},
                               {QStringLiteral("package"), QString(QStringLiteral(""))},
                               {QStringLiteral("versionCode"), QStringLiteral("0")},
                               {QStringLiteral("versionName"), QString(QStringLiteral(""))},
                               {QStringLiteral("minSdkVersion"), 1},
                               {QStringLiteral("targetSdkVersion"), 1},
                               {QStringLiteral("permissions"), QJsonArray()},
                               {QStringLiteral("features"), QJsonArray()},
                               {QStringLiteral("nativeAbis"), QJsonArray()},
                               {QStringLiteral("splits"), QJsonArray()},
                               {QStringLiteral("labels"), QJsonObject()},
                               {QStringLiteral("launchers"), QJsonArray()}};
    QCOMPARE(QJsonDocument::fromJson(result.output.split('\n').constFirst()).object(), expected);
}

void TestSorrelCommand::everyCommandReadsAnyName_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("locale");
    for (const char *locale : {"C", "C.UTF-8"}) {
        for (const char *command : {"info", "manifest", "icon", "files", "lint", "resources", "scan",
                                    "desktop --json --exec 'run %a' -o share", "info --json", "lint --json",
                                    "files --json", "resources --json"})
            QTest::newRow(qPrintable(QStringLiteral("%1, %2").arg(QLatin1String(command), QLatin1String(locale))))
                << QString::fromLatin1(command) << QString::fromLatin1(locale);
    }
}

// A command prints the same output for a file under any name, except for the name itself.
void TestSorrelCommand::everyCommandReadsAnyName()
{
    QFETCH(QString, command);
    QFETCH(QString, locale);
    good();
    ToolSetting setting;
    setting.directory = m_directory.path();
    setting.environment.insert(QStringLiteral("LC_ALL"), locale);
    const ToolRun plain = runShell(QStringLiteral("sorrel %1 good.apk").arg(command), setting);
    QCOMPARE(plain.status, 0);
    QVERIFY(!plain.output.isEmpty());
    for (const QByteArray &name : {QByteArray("\xff"), QByteArray("\xed\xa0\x80"), QByteArray("\xc3\xbc"),
                                   QByteArray(":\xfe"), QByteArray("a\xef\xbb\xbf\x9f")}) {
        const QString word = shellWord(name + ".apk");
        const ToolRun result = runShell(
            QStringLiteral("cp good.apk %2 && sorrel %1 %2; status=$?; rm %2; exit $status").arg(command, word),
            setting);
        QCOMPARE(result.errors, plain.errors);
        QCOMPARE(result.status, 0);
        QByteArray output = result.output;
        if (output.startsWith('{')) {
            QByteArray withoutNames;
            for (const QByteArray &line : output.trimmed().split('\n')) {
                QJsonObject object = QJsonDocument::fromJson(line).object();
                QVERIFY(object.value(QLatin1String("file")).toString().endsWith(QLatin1String(".apk")));
                object.remove(QStringLiteral("uri"));
                object.insert(QStringLiteral("file"), QStringLiteral("good.apk"));
                withoutNames += QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
            }
            output = withoutNames;
        } else if (output.contains(".apk\n") && !command.startsWith(QLatin1String("files"))) {
            output = "good" + output.mid(output.indexOf(".apk\n"));
        }
        QCOMPARE(output, plain.output);
    }
}

void TestSorrelCommand::aNameThatIsNoTextIsInReports_data()
{
    QTest::addColumn<QString>("command");
    for (const char *command : {"info", "files", "lint", "resources", "desktop --exec 'run %a' -o share"})
        QTest::newRow(command) << QString::fromLatin1(command);
}

void TestSorrelCommand::aNameThatIsNoTextIsInReports()
{
    QFETCH(QString, command);
    good();
    ToolSetting setting;
    setting.directory = m_directory.path();
    const ToolRun result =
        runShell(QStringLiteral("cp good.apk $'a b\\xff' && sorrel %1 --json $'a b\\xff'; rm $'a b\\xff'").arg(command),
                 setting);
    const QJsonObject object = QJsonDocument::fromJson(result.output.split('\n').constFirst()).object();
    QCOMPARE(object.value(QLatin1String("file")).toString(), QStringLiteral("a b\ufffd"));
    QCOMPARE(object.value(QLatin1String("uri")).toString(),
             QStringLiteral("file://%1/a%20b%FF").arg(m_directory.path()));
    const ToolRun plain = runShell(QStringLiteral("sorrel %1 --json good.apk").arg(command), setting);
    QVERIFY(!plain.output.contains("\"uri\""));
}

void TestSorrelCommand::outputsWhoseNamesAreNoText_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("error");
    QTest::addColumn<int>("status");
    const QString file = QStringLiteral("o\ufffd: the name is not UTF-8, and no file is written to it");
    QTest::newRow("icon") << "icon -o $'o\\xff'" << file << 1;
    QTest::newRow("catalog") << "catalog -o $'o\\xff'" << file << 1;
    QTest::newRow("desktop") << "desktop --exec run -o $'o\\xff'" << file << 1;
    QTest::newRow("command of desktop") << "desktop -o share --exec $'run \\xff'"
                                        << "The command is not UTF-8." << 2;
}

// Replacing a byte by U+FFFD would write another file and report success.
void TestSorrelCommand::outputsWhoseNamesAreNoText()
{
    QFETCH(QString, command);
    QFETCH(QString, error);
    QFETCH(int, status);
    good();
    QVERIFY(QDir(m_directory.path()).mkdir(QStringLiteral("out")));
    ToolSetting setting;
    setting.directory = m_directory.filePath(QStringLiteral("out"));
    const ToolRun result = runShell(QStringLiteral("sorrel %1 ../good.apk").arg(command), setting);
    const ToolRun left = runShell(QStringLiteral("ls; rm -r ../out"), setting);
    QCOMPARE(QString::fromUtf8(result.errors.split('\n').constFirst()), QStringLiteral("sorrel: ") + error);
    QCOMPARE(result.status, status);
    QCOMPARE(left.output, QByteArray());
}

void TestSorrelCommand::helpAndVersionNeedNoFile()
{
    const ToolRun help = runSorrel({QStringLiteral("--help")});
    QCOMPARE(help.status, 0);
    QVERIFY(help.output.startsWith("Usage: sorrel [options] COMMAND ...\n"));
    for (const char *word : {"info", "manifest", "icon", "files", "--version"})
        QVERIFY2(help.output.contains(word), word);
    QCOMPARE(help.errors, QByteArray());

    const ToolRun version = runSorrel({QStringLiteral("--version")});
    QCOMPARE(version.status, 0);
    QCOMPARE(version.output, QByteArray("sorrel 0.5.1\n"));
}

void TestSorrelCommand::everyCommandHasHelp()
{
    const QStringList commands = commandNames();
    QVERIFY(commands.size() >= 4);
    for (const QString &command : commands) {
        const ToolRun help = runSorrel({command, QStringLiteral("--help")});
        QCOMPARE(help.status, 0);
        QVERIFY2(help.output.startsWith("Usage: sorrel " + command.toUtf8() + " [options] "), qPrintable(command));
        QVERIFY2(help.output.contains("-h, --help"), qPrintable(command));
        QCOMPARE(help.errors, QByteArray());
        QCOMPARE(runSorrel({command, QStringLiteral("-h")}).output, help.output);
    }
}

void TestSorrelCommand::everyCommandRefusesWrongUsage()
{
    for (const QString &command : commandNames()) {
        for (const QStringList &arguments : {QStringList(), QStringList{QStringLiteral("--nonsense"), good()}}) {
            const ToolRun result = runSorrel(QStringList(command) + arguments);
            QCOMPARE(result.status, 2);
            QCOMPARE(result.output, QByteArray());
            QVERIFY(result.errors.startsWith("sorrel: "));
            QVERIFY(result.errors.endsWith("\nTry 'sorrel " + command.toUtf8() + " --help'.\n"));
        }
    }
}

void TestSorrelCommand::wrongUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << QStringList() << "A command is missing.\nTry 'sorrel --help'.";
    QTest::newRow("unknown command") << QStringList{QStringLiteral("show"), QStringLiteral("a.apk")}
                                     << "Unknown command 'show'.\nTry 'sorrel --help'.";
    QTest::newRow("command that steers") << QStringList{QStringLiteral("\033[2J")}
                                         << QStringLiteral("Unknown command '\ufffd[2J'.\nTry 'sorrel --help'.");
    QTest::newRow("unknown option") << QStringList{QStringLiteral("--xml")}
                                    << "Unknown option 'xml'.\nTry 'sorrel --help'.";
    QTest::newRow("no command, and an option that one has")
        << QStringList{QStringLiteral("--json")} << "Unknown option 'json'.\nTry 'sorrel --help'.";
    QTest::newRow("manifest of two files")
        << QStringList{QStringLiteral("manifest"), QStringLiteral("a.apk"), QStringLiteral("b.apk")}
        << "There are too many arguments.\nTry 'sorrel manifest --help'.";
    QTest::newRow("manifest as JSON") << QStringList{QStringLiteral("manifest"), QStringLiteral("--json"),
                                                     QStringLiteral("a.apk")}
                                      << "Unknown option 'json'.\nTry 'sorrel manifest --help'.";
    QTest::newRow("info without a file") << QStringList{QStringLiteral("info")}
                                         << "A file is missing.\nTry 'sorrel info --help'.";
}

void TestSorrelCommand::wrongUsage()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, text);
    const ToolRun result = runSorrel(arguments);
    QCOMPARE(result.status, 2);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(QString::fromUtf8(result.errors), QStringLiteral("sorrel: %1\n").arg(text));
}

void TestSorrelCommand::outputThatCannotBeWritten()
{
    ToolSetting toFullDisk;
    toFullDisk.outputFile = QStringLiteral("/dev/full");
    for (const char *command : {"info", "manifest"}) {
        const ToolRun result = runSorrel({QLatin1String(command), good()}, toFullDisk);
        QCOMPARE(result.status, 1);
        QVERIFY(result.errors.startsWith("sorrel: standard output: "));
    }
}

QTEST_GUILESS_MAIN(TestSorrelCommand)
#include "tst_sorrel_command.moc"
