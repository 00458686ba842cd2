// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Files.h"
#include "SigningBlockBuilder.h"
#include "Tool.h"
#include "format/AndroidAttributes.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>

using namespace fixture;

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

/// A package of the version @p version with the permissions @p permissions, and a service that is exported or not.
QByteArray packageOf(int version, const QStringList &permissions, bool isExported, const QVector<Member> &others = {},
                     const QString &label = latin("Notes"))
{
    XmlBuilder builder;
    builder.attributeId(latin("name"), Attr::Name)
        .attributeId(latin("label"), Attr::Label)
        .attributeId(latin("exported"), Attr::Exported)
        .attributeId(latin("versionCode"), Attr::VersionCode)
        .attributeId(latin("minSdkVersion"), Attr::MinSdkVersion)
        .startNamespace(latin("android"), androidUri)
        .start(latin("manifest"), {plainText(latin("package"), latin("org.example.notes")),
                                   androidValue(latin("versionCode"), Integer, version)});
    builder.empty(latin("uses-sdk"), {androidValue(latin("minSdkVersion"), Integer, 28)});
    for (const QString &permission : permissions)
        builder.empty(latin("uses-permission"), {androidText(latin("name"), permission)});
    builder.start(latin("application"), {androidText(latin("label"), label)})
        .empty(latin("service"), {androidText(latin("name"), latin(".Sync")),
                                  androidValue(latin("exported"), Boolean, isExported ? -1 : 0)})
        .end(latin("application"))
        .end(latin("manifest"));
    return fixture::package(emptyTable(), builder.build(), others);
}

QByteArray signedBy(const BlockSigner &signer, const QByteArray &package)
{
    return SigningBlockBuilder(package).v3({signer}).build();
}

QJsonObject objectOf(const ToolRun &run)
{
    return QJsonDocument::fromJson(run.output).object();
}

QStringList linesOf(const QByteArray &output)
{
    return QString::fromUtf8(output).split(QLatin1Char('\n'));
}

} // namespace

class TestDiffCommand : public QObject
{
    Q_OBJECT

private slots:
    void forAPerson();
    void sectionsAreInTheOrderOfTheirImportance();
    void refusalsComeFirst();
    void anotherSignerIsTheFirstThing();
    void theSameSigner();
    void aNewKeyOfTheSigner();
    void columnsAreAligned();
    void longListsAreCut();
    void coloursOnATerminal();
    void forAProgram();
    void equalPackages();
    void filesThatDifferInOrderAlone();
    void namesThatSteerATerminal();
    void aPage();
    void aPageEscapesTexts();
    void aPageReplacesNoPackage();
    void unreadableFiles();
    void wrongUsage();
    void outputThatCannotBeWritten();
    void namesOfAnyBytes();

private:
    QString write(const QString &name, const QByteArray &bytes) const
    {
        return writeFile(m_directory.filePath(name), bytes);
    }
    ToolRun diff(const QByteArray &before, const QByteArray &after, const QStringList &options = {}) const
    {
        return runSorrel(QStringList{latin("diff"), write(latin("old.apk"), before), write(latin("new.apk"), after)}
                         + options);
    }

    const QTemporaryDir m_directory;
    const QString m_permission = latin("android.permission.CAMERA");
    const QByteArray m_before = packageOf(1, {latin("p.Old")}, false, {{latin("assets/a"), "1"}});
    const QByteArray m_after = packageOf(2, {m_permission}, true, {{latin("assets/a"), QByteArray(5000, 'x')}});
};

void TestDiffCommand::forAPerson()
{
    const ToolRun run = diff(m_before, m_after);
    QCOMPARE(run.status, 1);
    QCOMPARE(run.errors, QByteArray());
    const QStringList lines = linesOf(run.output);
    for (const char *line :
         {"    package      org.example.notes", "  ~ version      1 \xe2\x86\x92 2", "  + android.permission.CAMERA",
          "  - p.Old", "  ~ service org.example.notes.Sync  not exported \xe2\x86\x92 exported, needs no permission"})
        QVERIFY2(lines.contains(QString::fromUtf8(line)), line);
    QVERIFY(!run.output.contains("Features"));
    QVERIFY(!run.output.contains('\033'));
}

void TestDiffCommand::sectionsAreInTheOrderOfTheirImportance()
{
    const QByteArray after = packageOf(2, {m_permission}, true, {{latin("lib/x86/a.so"), "1"}}, latin("Other"));
    const QByteArray output = diff(m_before, after).output;
    int last = -1;
    for (const char *title : {"\nApplication\n", "\nPermissions\n", "\nComponents\n", "\nLabels\n",
                              "\nNative code for\n", "\nSizes\n", "\nFiles\n"}) {
        const int at = int(output.indexOf(title));
        QVERIFY2(at > last, title);
        last = at;
    }
}

void TestDiffCommand::refusalsComeFirst()
{
    const auto alarms = [](const ToolRun &run) {
        const QStringList lines = linesOf(run.output);
        const int title = int(lines.indexOf(lines.filter(QStringLiteral(" \u2192 ")).constFirst()));
        return lines.mid(0, title);
    };
    QCOMPARE(alarms(diff(m_before, m_after)).size(), 1);
    QVERIFY(
        alarms(diff(m_before, m_after)).constFirst().startsWith(latin("Not verified: Android refuses this package")));
    QVERIFY(alarms(diff(m_after, m_before)).contains(latin("An older version: Android refuses this update")));
    const QByteArray other = fixture::package(emptyTable(), smallManifest());
    QVERIFY(
        alarms(diff(m_before, other)).contains(latin("Another application: Android installs it beside the other one")));
}

void TestDiffCommand::anotherSignerIsTheFirstThing()
{
    const QByteArray before = signedBy(BlockSigner(TestKey::rsa(1)), m_before);
    const QByteArray after = signedBy(BlockSigner(TestKey::rsa(2)), m_after);
    const ToolRun run = diff(before, after);
    QCOMPARE(run.status, 1);
    QVERIFY(run.output.startsWith("Signed by someone else: Android refuses this update\n"));
    QVERIFY(run.output.contains("  ~ signer "));
    QCOMPARE(run.output.count("CN=Test signer"), 2);
    QVERIFY(!run.output.contains("Not verified"));
    const QStringList files{write(latin("old.apk"), before), write(latin("new.apk"), after)};
    const QByteArray colored = runSorrelOnTerminal(QStringList{latin("diff")} + files).output;
    QVERIFY(colored.startsWith("\033[1;31mSigned by someone else: Android refuses this update\033[0m"));
    QVERIFY(colored.contains("\033[1;31m~ signer "));
    QCOMPARE(objectOf(diff(before, after, {latin("--json")})).value(latin("signerMatch")).toString(),
             latin("different"));
    const QString page = m_directory.filePath(latin("signer.html"));
    QCOMPARE(diff(before, after, {latin("--html"), page}).status, 1);
    QFile file(page);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray html = file.readAll();
    const auto alert = html.indexOf("role=\"alert\">Signed by someone else: Android refuses this update</p>");
    QVERIFY(alert > 0 && alert < html.indexOf("<section"));
}

void TestDiffCommand::theSameSigner()
{
    const BlockSigner signer(TestKey::rsa(1));
    const ToolRun run = diff(signedBy(signer, m_before), signedBy(signer, m_after));
    QCOMPARE(run.status, 1);
    QVERIFY(run.output.startsWith(m_directory.path().toUtf8()));
    QVERIFY(linesOf(run.output).contains(latin("    signer       the same")));
    QVERIFY(!run.output.contains("refuses"));
    QCOMPARE(diff(signedBy(signer, m_before), signedBy(signer, m_before)).status, 0);
    // Only the old package is not verified.
    const ToolRun fromUnsigned = diff(m_before, signedBy(signer, m_after));
    QVERIFY(!fromUnsigned.output.contains("refuses"));
    QVERIFY(fromUnsigned.output.contains("unknown: the old package is not verified ("));
    // A byte of the new package was changed.
    QByteArray changed = signedBy(signer, m_after);
    changed[40] = char(~changed.at(40));
    const ToolRun toChanged = diff(signedBy(signer, m_before), changed);
    QVERIFY(toChanged.output.contains("Not verified: Android refuses this package ("));
    QVERIFY(toChanged.output.contains("unknown: the new package is not verified"));
}

void TestDiffCommand::aNewKeyOfTheSigner()
{
    const TestKey first = TestKey::rsa(1);
    BlockSigner rotated(TestKey::rsa(2));
    rotated.attribute(SigningBlockBuilder::LineageAttribute,
                      lineage({{first, first.certificate()}, {rotated.key, rotated.certificates.constFirst()}}));
    const QByteArray old = signedBy(BlockSigner(first), m_before);
    const ToolRun run = diff(old, signedBy(rotated, m_after));
    QVERIFY(!run.output.contains("refuses"));
    QVERIFY(linesOf(run.output).contains(latin("  ~ signer       the same, with a new key")));
    const ToolRun back = diff(signedBy(rotated, m_before), signedBy(BlockSigner(first), m_after));
    QVERIFY(linesOf(back.output).contains(latin("  ~ signer       the same, with an earlier key")));
}

void TestDiffCommand::columnsAreAligned()
{
    const QStringList lines = linesOf(diff(m_before, m_after).output);
    const auto lineOf = [&lines](const QString &text) { return lines.filter(text).value(0); };
    const QString assets = lineOf(latin("  assets  "));
    const QString file = lineOf(latin("  file  "));
    QVERIFY(!assets.isEmpty());
    QCOMPARE(assets.indexOf(latin("assets")), file.indexOf(latin("file")));
    QVERIFY2(assets.contains(QStringLiteral("unpacked 1 B \u2192 4.9 KiB")), qPrintable(assets));
}

void TestDiffCommand::longListsAreCut()
{
    QVector<Member> members;
    for (int i = 0; i < 30; ++i)
        members.append({QStringLiteral("assets/%1").arg(i), QByteArray(i, 'x')});
    const QByteArray after = packageOf(1, {latin("p.Old")}, false, members);
    const ToolRun cut = diff(packageOf(1, {latin("p.Old")}, false), after);
    QVERIFY(linesOf(cut.output).contains(latin("    and 10 more")));
    const ToolRun whole = diff(packageOf(1, {latin("p.Old")}, false), after, {latin("--all")});
    QVERIFY(!whole.output.contains("more"));
    QVERIFY(whole.output.count("\n") == cut.output.count("\n") + 9);
}

void TestDiffCommand::coloursOnATerminal()
{
    const QStringList arguments{latin("diff"), write(latin("old.apk"), m_before), write(latin("new.apk"), m_after)};
    const QByteArray output = runSorrelOnTerminal(arguments).output;
    QVERIFY(output.startsWith("\033[1;31mNot verified"));
    QVERIFY(output.contains("\033[32m+ android.permission.CAMERA\033[0m"));
    QVERIFY(output.contains("\033[31m- p.Old\033[0m"));
    QVERIFY(output.contains("\033[33m~ version"));
    QVERIFY(output.contains("\033[1;31m~ service org.example.notes.Sync"));
    ToolSetting plain;
    plain.environment.insert(latin("NO_COLOR"), latin("1"));
    QVERIFY(!runSorrelOnTerminal(arguments, plain).output.contains('\033'));
}

void TestDiffCommand::forAProgram()
{
    const ToolRun run = diff(m_before, m_after, {latin("--json")});
    QCOMPARE(run.status, 1);
    QCOMPARE(run.output.count('\n'), 1);
    const QJsonObject json = objectOf(run);
    QCOMPARE(json.value(latin("different")).toBool(), true);
    QCOMPARE(json.value(latin("complete")).toBool(), true);
    QCOMPARE(json.value(latin("sameApplication")).toBool(), true);
    QCOMPARE(json.value(latin("signerMatch")).toString(), latin("unverified"));
    QCOMPARE(json.value(latin("before")).toObject().value(latin("versionCode")).toString(), latin("1"));
    const QJsonArray permissions = json.value(latin("permissions")).toArray();
    QCOMPARE(permissions.size(), 2);
    QCOMPARE(permissions.at(0).toObject().value(latin("change")).toString(), latin("added"));
    QCOMPARE(permissions.at(0).toObject().value(latin("name")).toString(), m_permission);
    const QJsonObject component = json.value(latin("components")).toArray().at(0).toObject();
    QCOMPARE(component.value(latin("opened")).toBool(), true);
    QCOMPARE(component.value(latin("before")).toObject().value(latin("exported")).toBool(), false);
    const QJsonObject files = json.value(latin("files")).toObject();
    QCOMPARE(files.value(latin("changed")).toInt(), 2);
    QCOMPARE(files.value(latin("list")).toArray().size(), 2);
    const QJsonObject sizes = json.value(latin("fileSize")).toObject();
    QCOMPARE(qint64(sizes.value(latin("packedBefore")).toDouble()), qint64(m_before.size()));
    QCOMPARE(qint64(sizes.value(latin("packedAfter")).toDouble()), qint64(m_after.size()));
}

void TestDiffCommand::equalPackages()
{
    const ToolRun run = diff(m_before, m_before);
    QCOMPARE(run.status, 0);
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.errors, QByteArray());
    const ToolRun json = diff(m_before, m_before, {latin("--json")});
    QCOMPARE(json.status, 0);
    QVERIFY(!objectOf(json).value(latin("different")).toBool(true));
}

void TestDiffCommand::filesThatDifferInOrderAlone()
{
    const Member manifest{latin("AndroidManifest.xml"), smallManifest()};
    const Member table{latin("resources.arsc"), emptyTable()};
    const ToolRun run = diff(zip({manifest, table}), zip({table, manifest}));
    QCOMPARE(run.status, 1);
    QVERIFY(run.output.contains("  ~ the same files, in another order or with other bytes between them\n"));
}

void TestDiffCommand::namesThatSteerATerminal()
{
    const QString evil = QStringLiteral("e\u001b[31mvil\n\u202e");
    const QByteArray after = packageOf(1, {evil}, false, {{evil, "1"}}, evil);
    const ToolRun run = diff(m_before, after, {latin("--all")});
    QVERIFY(run.output.contains(QStringLiteral("e\ufffd[31mvil\ufffd\ufffd").toUtf8()));
    QVERIFY(!run.output.contains('\033'));
    const ToolRun json = diff(m_before, after, {latin("--json")});
    QVERIFY(!json.output.contains('\033'));
    QCOMPARE(objectOf(json).value(latin("labels")).toArray().at(0).toObject().value(latin("after")).toString(), evil);
}

void TestDiffCommand::aPage()
{
    const QString page = m_directory.filePath(latin("page.html"));
    const ToolRun run = diff(m_before, m_after, {latin("--html"), page});
    QCOMPARE(run.status, 1);
    QCOMPARE(run.output, QByteArray());
    QFile file(page);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray html = file.readAll();
    QXmlStreamReader reader(html);
    QStringList elements;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement)
            elements.append(reader.name().toString());
    }
    QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
    QVERIFY(!elements.contains(latin("script")));
    QVERIFY(html.contains("default-src 'none'"));
    QVERIFY(html.contains("prefers-color-scheme: dark"));
    QVERIFY(!html.contains("{{"));
    QVERIFY(!html.contains("src=") && !html.contains("url("));
    QVERIFY(html.contains("<tr class=\"added\"><td class=\"mark\"><bdi>+</bdi></td>"));
    QVERIFY(html.contains("role=\"alert\">Not verified"));
    // With JSON, both are written.
    const ToolRun both = diff(m_before, m_after, {latin("--json"), latin("--html"), page});
    QCOMPARE(both.status, 1);
    QVERIFY(objectOf(both).value(latin("different")).toBool());
    // Equal packages get a page, too.
    QVERIFY(QFile::remove(page));
    QCOMPARE(diff(m_before, m_before, {latin("--html"), page}).status, 0);
    QVERIFY(QFile::exists(page));
}

void TestDiffCommand::aPageEscapesTexts()
{
    const QString evil = QStringLiteral("</td><script>alert('\"&{{cards}}\u202e");
    const QString page = m_directory.filePath(latin("evil.html"));
    const QByteArray after = packageOf(1, {evil}, false, {{evil, "1"}}, evil);
    QCOMPARE(diff(m_before, after, {latin("--html"), page}).status, 1);
    QFile file(page);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray html = file.readAll();
    QVERIFY(!html.contains("<script"));
    QVERIFY(!html.contains(QStringLiteral("\u202e").toUtf8()));
    const QByteArray escaped =
        QStringLiteral("&lt;/td&gt;&lt;script&gt;alert(&#39;&quot;&amp;{{cards}}\ufffd").toUtf8();
    QCOMPARE(html.count(escaped), 3);
    QXmlStreamReader reader(html);
    while (!reader.atEnd())
        reader.readNext();
    QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
}

void TestDiffCommand::aPageReplacesNoPackage()
{
    const ToolRun run = diff(m_before, m_after, {latin("--html"), m_directory.filePath(latin("old.apk"))});
    QCOMPARE(run.status, 2);
    QCOMPARE(run.errors, QByteArray("sorrel: The page would replace a package.\nTry 'sorrel diff --help'.\n"));
    const ToolRun unnamed = diff(m_before, m_after, {latin("--html"), QString()});
    QCOMPARE(unnamed.status, 2);
    const ToolRun nowhere = diff(m_before, m_after, {latin("--html"), latin("/nowhere/page.html")});
    QCOMPARE(nowhere.status, 2);
    QVERIFY(nowhere.errors.startsWith("sorrel: /nowhere/page.html: "));
}

void TestDiffCommand::unreadableFiles()
{
    const QString missing = m_directory.filePath(latin("missing.apk"));
    const QString sound = write(latin("sound.apk"), m_before);
    for (const QStringList &files : {QStringList{missing, sound}, QStringList{sound, missing}}) {
        const ToolRun run = runSorrel(QStringList{latin("diff")} + files);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.output, QByteArray());
        QCOMPARE(run.errors, QByteArray("sorrel: " + missing.toUtf8() + ": could not open APK file\n"));
    }
    QCOMPARE(diff("no package", m_before).status, 2);
    QCOMPARE(diff(m_before, zip({{latin("a"), "1"}})).status, 2);
    // The parts that can be compared are shown.
    const ToolRun damaged = diff(m_before, fixture::package("no table", smallManifest()));
    QCOMPARE(damaged.status, 2);
    QVERIFY(damaged.output.contains("- p.Old"));
    QVERIFY(damaged.errors.contains("could not parse resources.arsc"));
}

void TestDiffCommand::wrongUsage()
{
    QCOMPARE(runSorrel({latin("diff")}).status, 2);
    QCOMPARE(runSorrel({latin("diff"), latin("a")}).status, 2);
    QCOMPARE(runSorrel({latin("diff"), latin("a"), latin("b"), latin("c")}).status, 2);
    QCOMPARE(runSorrel({latin("diff"), latin("--nothing"), latin("a"), latin("b")}).status, 2);
    const ToolRun help = runSorrel({latin("diff"), latin("--help")});
    QCOMPARE(help.status, 0);
    QVERIFY(help.output.startsWith("Usage: sorrel diff [options] OLD NEW\n"));
}

void TestDiffCommand::outputThatCannotBeWritten()
{
    ToolSetting full;
    full.outputFile = latin("/dev/full");
    const QStringList files{write(latin("old.apk"), m_before), write(latin("new.apk"), m_after)};
    const ToolRun run = runSorrel(QStringList{latin("diff")} + files, full);
    QCOMPARE(run.status, 2);
    QCOMPARE(run.errors.count('\n'), 1);
    QVERIFY(run.errors.startsWith("sorrel: standard output: "));
}

void TestDiffCommand::namesOfAnyBytes()
{
    const QByteArray place = QFile::encodeName(m_directory.path());
    write(latin("old.apk"), m_before);
    write(latin("new.apk"), m_after);
    const QString word = shellWord(place + "/\xff.apk");
    const QString script =
        QStringLiteral("cd %1 && cp new.apk %2 && exec sorrel diff --json old.apk %2").arg(shellWord(place), word);
    const ToolRun run = runShell(script);
    QCOMPARE(run.status, 1);
    const QJsonObject after = objectOf(run).value(latin("after")).toObject();
    QCOMPARE(after.value(latin("uri")).toString().toUtf8(), "file://" + place + "/%FF.apk");
}

QTEST_GUILESS_MAIN(TestDiffCommand)
#include "tst_diff_command.moc"
