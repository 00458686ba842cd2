// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "Files.h"
#include "LintCases.h"
#include "LintFixture.h"
#include "LogCapture.h"
#include "Tool.h"

#include <ApkFile.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>
#include <sys/stat.h>

using namespace fixture;

namespace {

// Name, severity and meaning in a line of the list of checks. Empty for another line.
QStringList checkParts(const QString &line)
{
    const QRegularExpression columns(QStringLiteral("^([a-z0-9-]+) +(note|warning|error) +(\\S.*)$"));
    return columns.match(line).capturedTexts().mid(1);
}

// Severity and meaning of the checks that `sorrel lint --checks` lists, by their names.
QMap<QString, QStringList> listedChecks()
{
    QMap<QString, QStringList> checks;
    const QByteArray list = runSorrel({QStringLiteral("lint"), QStringLiteral("--checks")}).output;
    for (const QByteArray &line : list.split('\n')) {
        const QStringList parts = checkParts(QString::fromUtf8(line));
        if (!parts.isEmpty())
            checks.insert(parts.first(), parts.mid(1));
    }
    return checks;
}

// The finding about every package of this file that can be read: the fixtures are not signed.
const QJsonObject unsignedFinding = finding("unsigned", QStringLiteral("error"), QString(),
                                            "The package has no signature; Android does not install it.");
const QString unsignedLine =
    QStringLiteral("  error    The package has no signature; Android does not install it. (unsigned)\n");

// @p findings without that finding, which is the last one when @p isReadable. Otherwise it is missing.
QJsonArray withoutUnsigned(QJsonArray findings, bool isReadable)
{
    const bool isUnsigned = !findings.isEmpty() && findings.last() == unsignedFinding;
    if (isUnsigned != isReadable)
        return {QStringLiteral("not as expected: the finding that the package is unsigned")};
    if (isUnsigned)
        findings.removeLast();
    return findings;
}

} // namespace

class TestLintCommand : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsOdd_data();
    void nothingIsOdd();
    void findings_data();
    void findings();
    void everyCheckHasACase();
    void refusalsAreThoseOfApkFile();
    void membersThatAreReadAllTheSame();

    void textForAPerson();
    void textOnATerminalIsColoured();
    void nothingSteersTheTerminal();
    void manyFindingsOfACheckAreCounted();
    void severalFiles();
    void unreadableFile();
    void checksAreListed();
    void documentHasTheChecks();
    void aFileIsNeeded();
    void debugRulesChangeNothing();
    void samplePackages_data();
    void samplePackages();

private:
    QJsonArray lint(const QByteArray &bytes) const;
    QStringList checksIn(const QByteArray &bytes) const;
    QString write(const QString &name, const QByteArray &bytes) const
    {
        return writeFile(m_directory.filePath(name), bytes);
    }

    QTemporaryDir m_directory;
};

void TestLintCommand::nothingIsOdd_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("deflated") << lintPackageFile();
    QTest::newRow("stored") << rawZip(lintMembers());
    QTest::newRow("resources that share a map")
        << lintPackageFile(lintTable(lintPackage().type(labelType().map(1, 1).offset(2, 16)).type(iconType())));
    QTest::newRow("made for Android 11") << lintPackageWithTableAt(0);
    constexpr int ColorType = 0x1c;
    constexpr int DrawableType = 2;
    const TypeBuilder color = TypeBuilder(DrawableType).value(0, ColorType, 0xff2040ff);
    QTest::newRow("icon that is a color") << lintPackageFile(lintTable(lintPackage().type(labelType()).type(color)));
    QTest::newRow("icon that refers to a color") << lintPackageFile(
        lintTable(PackageBuilder()
                      .types({QStringLiteral("string"), QStringLiteral("drawable"), QStringLiteral("color")})
                      .keys({QStringLiteral("key")})
                      .type(labelType())
                      .type(TypeBuilder(DrawableType).value(0, Reference, 0x7f030000))
                      .type(TypeBuilder(3).value(0, ColorType, 0xff2040ff))));
}

void TestLintCommand::nothingIsOdd()
{
    QFETCH(QByteArray, bytes);
    const QString file = write(QStringLiteral("good.apk"), bytes);
    const QJsonObject expected{
        {QStringLiteral("file"), file},
        {QStringLiteral("error"),
         QJsonObject{{QStringLiteral("code"), 0}, {QStringLiteral("text"), QStringLiteral("no error")}}},
        {QStringLiteral("lint"), QJsonArray{unsignedFinding}}};
    for (const QStringList &options : {QStringList(), QStringList{QStringLiteral("--draw")}}) {
        const ToolRun json = runSorrel(QStringList{QStringLiteral("lint"), QStringLiteral("--json"), file} + options);
        QCOMPARE(json.status, 0);
        QCOMPARE(QJsonDocument::fromJson(json.output).object(), expected);
        QCOMPARE(json.errors, QByteArray());
    }
    const ToolRun text = runSorrel({QStringLiteral("lint"), file});
    QCOMPARE(text.status, 0);
    QCOMPARE(QString::fromUtf8(text.output), file + QLatin1Char('\n') + unsignedLine);
    QCOMPARE(text.errors, QByteArray());
}

void TestLintCommand::findings_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QJsonArray>("expected");
    QTest::addColumn<int>("errorCode");
    QTest::addColumn<bool>("isDrawn");
    for (const LintCase &row : lintCases())
        QTest::newRow(row.name) << row.bytes << row.findings << row.errorCode << row.isDrawn;
}

void TestLintCommand::findings()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QJsonArray, expected);
    QFETCH(int, errorCode);
    QFETCH(bool, isDrawn);
    const QString file = write(QStringLiteral("odd.apk"), bytes);
    // A damaged table does not hide the package, and neither does something that Android refuses.
    const bool isReadable = errorCode == 0 || errorCode == 3 || errorCode == 6;
    for (const QStringList &options : {QStringList(), QStringList{QStringLiteral("--draw")}}) {
        const ToolRun result = runSorrel(QStringList{QStringLiteral("lint"), QStringLiteral("--json"), file} + options);
        const QJsonObject json = QJsonDocument::fromJson(result.output).object();
        const QJsonArray lint = withoutUnsigned(json.value(QLatin1String("lint")).toArray(), isReadable);
        if (isDrawn && options.isEmpty())
            QVERIFY(lint.size() < expected.size());
        else
            QVERIFY2(lint == expected, QJsonDocument(lint).toJson().constData());
        QCOMPARE(json.value(QLatin1String("error")).toObject().value(QLatin1String("code")).toInt(-1), errorCode);
        QCOMPARE(result.status, errorCode == 0 ? 0 : 1);
        QCOMPARE(result.errors.count('\n'), errorCode == 0 ? 0 : 1);
    }
}

QJsonArray TestLintCommand::lint(const QByteArray &bytes) const
{
    const QString file = write(QStringLiteral("lint.apk"), bytes);
    const ToolRun result = runSorrel({QStringLiteral("lint"), QStringLiteral("--json"), file});
    return withoutUnsigned(QJsonDocument::fromJson(result.output).object().value(QLatin1String("lint")).toArray(),
                           true);
}

QStringList TestLintCommand::checksIn(const QByteArray &bytes) const
{
    QStringList checks;
    for (const QJsonValue &finding : lint(bytes))
        checks.append(finding.toObject().value(QLatin1String("check")).toString());
    return checks;
}

void TestLintCommand::everyCheckHasACase()
{
    QStringList cases;
    for (const LintCase &row : lintCases())
        cases.append(QString::fromLatin1(row.name));
    // tst_signature_lint has the cases of these.
    const QStringList ofSignatures{
        QStringLiteral("unsigned"),
        QStringLiteral("not-verified"),
        QStringLiteral("weak-signature"),
        QStringLiteral("debug-certificate"),
        QStringLiteral("v1-only"),
        QStringLiteral("unprotected-member"),
        QStringLiteral("expired-certificate"),
    };
    const QStringList checks = listedChecks().keys();
    QVERIFY(!checks.isEmpty());
    for (const QString &check : checks)
        QVERIFY2(cases.contains(check) != ofSignatures.contains(check), qPrintable(check));
}

void TestLintCommand::refusalsAreThoseOfApkFile()
{
    const LogCapture log;
    const QString reads = QStringLiteral("ApkFile still reads it.");
    constexpr int RefusedByAndroid = 6;
    int refused = 0;
    for (const LintCase &row : lintCases()) {
        // A set is no package, and ApkFile does not go by the number of members.
        if (row.name == QByteArray("package-set") || row.name == QByteArray("empty-archive"))
            continue;
        PackageDevice device(row.bytes);
        const ApkFile apk(&device);
        apk.getManifest();
        const QByteArray texts = QJsonDocument(row.findings).toJson();
        const bool isRead = apk.getError() == 0;
        if (row.errorCode != 0 && row.errorCode != RefusedByAndroid) {
            QVERIFY2(texts.contains(reads.toUtf8()) == isRead, row.name);
            continue;
        }
        QVERIFY2(texts.contains("\"apkfile-refuses\"") != isRead, row.name);
        QVERIFY2(isRead || texts.contains("(code " + QByteArray::number(apk.getError()) + ","), row.name);
        refused += isRead ? 0 : 1;
    }
    QCOMPARE(refused, 21);
}

// The findings describe what libsorrel does with such members.
void TestLintCommand::membersThatAreReadAllTheSame()
{
    const LogCapture log;
    const auto codeFor = [](const std::function<void(RawMember &)> &change) {
        QVector<RawMember> members = lintMembers();
        change(members.first());
        PackageDevice device(rawZip(members));
        const ApkFile apk(&device);
        apk.getManifest();
        return apk.getError();
    };
    QCOMPARE(codeFor([](RawMember &) {}), 0);
    QCOMPARE(codeFor([](RawMember &manifest) { manifest.flags = 1; }), 0);
    QCOMPARE(codeFor([](RawMember &manifest) { manifest.localMethod = 8; }), 4);
    QCOMPARE(codeFor([](RawMember &manifest) { manifest.localSize = 1; }), 4);
    QCOMPARE(codeFor([](RawMember &manifest) { manifest.headerAt = 1 << 30; }), 4);
    QCOMPARE(codeFor([](RawMember &manifest) { manifest.localName = "androidmanifest.XML"; }), 0);
}

void TestLintCommand::textForAPerson()
{
    const QString file = write(QStringLiteral("odd.apk"), "12345" + rawZip(lintMembers({{"/a.txt", "a"}})));
    const ToolRun result = runSorrel({QStringLiteral("lint"), file});
    QCOMPARE(result.status, 1);
    QVERIFY(result.errors.contains("Android refuses the package: The archive does not begin with the file"));
    QCOMPARE(
        QString::fromUtf8(result.output),
        file
            + QStringLiteral(
                "\n  warning  /a.txt: The member's name begins with a slash; unpacking it may write outside of the "
                "target directory. (absolute-name)\n  error    The archive does not begin with the file; Android "
                "refuses the package. [5 bytes; API level 27 and later] (bytes-ahead)\n")
            + unsignedLine);
}

void TestLintCommand::textOnATerminalIsColoured()
{
    const QString file = write(QStringLiteral("odd.apk"), rawZip(lintMembers({{"/a.txt", "a"}})));
    const ToolRun result = runSorrelOnTerminal({QStringLiteral("lint"), file});
    QCOMPARE(result.status, 0);
    QVERIFY(result.output.contains("\033[33mwarning\033[0m  \033[1;32m/a.txt\033[0m: The member's"));
    QVERIFY(result.output.contains("\033[2m (absolute-name)\033[0m"));
}

void TestLintCommand::nothingSteersTheTerminal()
{
    const QString steering = QStringLiteral("\033[2J\n\r\u202e\u2066\u0085x");
    const Attribute inNamespace{steering, steering, steering, String, 0};
    LintManifest manifest;
    manifest.package = steering;
    manifest.activity = {androidText(QStringLiteral("name"), steering),
                         androidReference(QStringLiteral("icon"), IconResource), inNamespace};
    RawMember member{steering.toUtf8(), "a"};
    member.localName = steering.toUtf8() + steering.toUtf8();
    member.flags = 1;
    const QString file = write(QStringLiteral("a\033[2Jb.apk"), rawZip(lintMembers({member}, lintManifest(manifest))));
    const ToolRun result = runSorrel({QStringLiteral("lint"), file});
    QCOMPARE(result.status, 0);
    const QString output = QString::fromUtf8(result.output);
    // Every finding is one line, and all its characters are printable.
    QCOMPARE(output.count(QLatin1Char('\n')), 2 + lint(rawZip(lintMembers({member}, lintManifest(manifest)))).size());
    for (const QChar character : output)
        QVERIFY(character == QLatin1Char('\n')
                || !steering.chopped(1).remove(QStringLiteral("[2J")).contains(character));
    for (const char *check : {"control-name", "member-name", "undeclared-namespace", "no-label"})
        QVERIFY2(output.contains(QStringLiteral("(%1)\n").arg(QLatin1String(check))), check);
}

void TestLintCommand::manyFindingsOfACheckAreCounted()
{
    QVector<RawMember> members;
    for (int i = 0; i < 25; ++i)
        members.append({"/" + QByteArray::number(i), "a"});
    const QJsonArray findings = lint(rawZip(lintMembers(members)));
    QCOMPARE(findings.size(), 11);
    QCOMPARE(findings.first().toObject().value(QLatin1String("subject")).toString(), QStringLiteral("/0"));
    QCOMPARE(findings.last().toObject(),
             finding("absolute-name", QStringLiteral("warning"), QString(), "Lint found this 15 more times."));
}

void TestLintCommand::severalFiles()
{
    const QString good = write(QStringLiteral("good.apk"), lintPackageFile());
    const QString missing = m_directory.filePath(QStringLiteral("missing"));
    const ToolRun text = runSorrel({QStringLiteral("lint"), good, missing, good});
    QCOMPARE(text.status, 1);
    QCOMPARE(QString::fromUtf8(text.output), QStringLiteral("%1\n%2\n%1\n%2").arg(good, unsignedLine));
    QCOMPARE(QString::fromUtf8(text.errors), QStringLiteral("sorrel: %1: could not open APK file\n").arg(missing));
    const ToolRun json = runSorrel({QStringLiteral("lint"), QStringLiteral("--json"), missing, good});
    QCOMPARE(json.status, 1);
    QCOMPARE(json.output.count('\n'), 2);
    const QJsonObject expected{
        {QStringLiteral("file"), missing},
        {QStringLiteral("error"),
         QJsonObject{{QStringLiteral("code"), 1}, {QStringLiteral("text"), QStringLiteral("could not open APK file")}}},
        {QStringLiteral("lint"), QJsonArray()}};
    QCOMPARE(QJsonDocument::fromJson(json.output.split('\n').constFirst()).object(), expected);
}

void TestLintCommand::unreadableFile()
{
    const QString pipe = m_directory.filePath(QStringLiteral("pipe"));
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString &file : {pipe, m_directory.path(), write(QStringLiteral("empty"), QByteArray()),
                                write(QStringLiteral("text"), QByteArray(100, 'x'))}) {
        const ToolRun result = runSorrel({QStringLiteral("lint"), file});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.output, QByteArray());
        QCOMPARE(QString::fromUtf8(result.errors), QStringLiteral("sorrel: %1: could not open APK file\n").arg(file));
    }
}

void TestLintCommand::checksAreListed()
{
    const ToolRun result = runSorrel({QStringLiteral("lint"), QStringLiteral("--checks")});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.errors, QByteArray());
    QVERIFY(result.output.contains("xml-only-icon           note     All files of a launcher's icon are XML; SorrelKit "
                                   "draws it, ApkFile returns no icon.\n"));
    const QMap<QString, QStringList> checks = listedChecks();
    QCOMPARE(checks.size(), result.output.count('\n'));
    for (const LintCase &row : lintCases()) {
        for (const QJsonValue &value : row.findings) {
            const QJsonObject finding = value.toObject();
            QCOMPARE(finding.value(QLatin1String("severity")).toString(),
                     checks.value(finding.value(QLatin1String("check")).toString()).value(0));
        }
    }
}

void TestLintCommand::documentHasTheChecks()
{
    QFile file(QStringLiteral(SORREL_DOCS_DIR "/lint.md"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QStringList rows;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith("| `"))
            rows.append(QString::fromUtf8(line));
    }
    QStringList expected;
    for (const QByteArray &line : runSorrel({QStringLiteral("lint"), QStringLiteral("--checks")}).output.split('\n')) {
        const QStringList parts = checkParts(QString::fromUtf8(line));
        if (parts.size() == 3)
            expected.append(QStringLiteral("| `%1` | %2 | %3 |").arg(parts.at(0), parts.at(1), parts.at(2)));
    }
    QCOMPARE(rows, expected);
}

void TestLintCommand::aFileIsNeeded()
{
    const ToolRun result = runSorrel({QStringLiteral("lint"), QStringLiteral("--json")});
    QCOMPARE(result.status, 2);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(result.errors, QByteArray("sorrel: A file is missing.\nTry 'sorrel lint --help'.\n"));
}

void TestLintCommand::debugRulesChangeNothing()
{
    const QString file = write(QStringLiteral("odd.apk"), lintPackageWithChunk(nodeChunk(0x0190, QByteArray())));
    ToolSetting quiet;
    quiet.environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("*.debug=false"));
    const ToolRun result = runSorrel({QStringLiteral("lint"), file}, quiet);
    QVERIFY(result.output.contains("(unknown-node)"));
    QCOMPARE(result.errors, QByteArray());
}

void TestLintCommand::samplePackages_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("checks");
    const QString xmlOnly = QStringLiteral("xml-only-icon");
    const QString foreign = QStringLiteral("foreign-class");
    const QString unresolved = QStringLiteral("unresolved-icon");
    const QStringList babel{xmlOnly, xmlOnly, xmlOnly, xmlOnly, xmlOnly};
    const QStringList toolbox{QStringLiteral("no-label"), QStringLiteral("platform-icon"), unresolved};
    QTest::newRow("atlas.aapt.apk") << QStringLiteral("atlas.aapt.apk") << QStringList();
    QTest::newRow("atlas.aapt2.apk") << QStringLiteral("atlas.aapt2.apk") << QStringList();
    QTest::newRow("babel.aapt2.apk") << QStringLiteral("babel.aapt2.apk") << babel;
    QTest::newRow("babel.sparse.apk") << QStringLiteral(
        "babel.sparse.apk") << QStringList{QStringLiteral("apkfile-refuses"), QStringLiteral("sparse-table")} + babel;
    QTest::newRow("babel.de.apk") << QStringLiteral("babel.de.apk") << QStringList{QStringLiteral("no-launcher")};
    QTest::newRow("kiosk.aapt2.apk") << QStringLiteral("kiosk.aapt2.apk")
                                     << QStringList{QStringLiteral("no-icon"), QStringLiteral("no-icon")};
    QTest::newRow("notes.aapt.apk") << QStringLiteral("notes.aapt.apk") << QStringList{foreign, foreign};
    QTest::newRow("toolbox.aapt.apk") << QStringLiteral("toolbox.aapt.apk") << toolbox;
    QTest::newRow("toolbox.aapt2.apk") << QStringLiteral("toolbox.aapt2.apk") << toolbox;
}

void TestLintCommand::samplePackages()
{
    QFETCH(QString, file);
    QFETCH(QStringList, checks);
    QFile package(QStringLiteral(SORREL_SAMPLES_DIR "/") + file);
    QVERIFY2(package.open(QIODevice::ReadOnly), qPrintable(file));
    QCOMPARE(checksIn(package.readAll()), checks);
}

QTEST_GUILESS_MAIN(TestLintCommand)
#include "tst_lint_command.moc"
