// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "LintFixture.h"
#include "LogCapture.h"
#include "RawZip.h"
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

const QString tableName = QStringLiteral("resources.arsc");
const QString manifestName = QStringLiteral("AndroidManifest.xml");
const QString launcherName = QStringLiteral("org.x.Main");
const QString note = QStringLiteral("note");
const QString warning = QStringLiteral("warning");
const QString fault = QStringLiteral("error");

/// A package, and what is found in it.
struct Case {
    const char *name;
    QByteArray bytes;
    QJsonArray findings;
    int errorCode = 0;
};

QJsonObject finding(const char *check, const QString &severity, const QString &subject, const QByteArray &text)
{
    return {{QStringLiteral("check"), QLatin1String(check)},
            {QStringLiteral("severity"), severity},
            {QStringLiteral("subject"), subject},
            {QStringLiteral("text"), QString::fromUtf8(text)}};
}

// The members of a package in which nothing is odd, and others.
QVector<RawMember> rawMembers(const QVector<RawMember> &others = {}, const QByteArray &manifest = lintManifest())
{
    return QVector<RawMember>{{manifestName.toUtf8(), manifest},
                              {tableName.toUtf8(), lintTable()},
                              {"res/icon.png", lintIcon().content}}
           + others;
}

QByteArray withMember(const RawMember &member)
{
    return rawZip(rawMembers({member}));
}

// Fields of 16 bits at the archive's end, by their places in it.
QByteArray withEnd(const QMap<int, int> &fields)
{
    QByteArray bytes = rawZip(rawMembers());
    for (auto field = fields.cbegin(); field != fields.cend(); ++field)
        poke16(bytes, bytes.size() - ZipEndSize + field.key(), field.value());
    return bytes;
}

// The resource table's bytes stand at a multiple of 4, and @p distance behind it.
QByteArray withTableAt(int distance)
{
    LintManifest manifest;
    manifest.targetSdk = 30;
    const QByteArray name = tableName.toUtf8();
    constexpr int HeaderSize = 30;
    constexpr int Alignment = 4;
    RawMember table{name, lintTable()};
    table.extraSize = (Alignment - (HeaderSize + name.size()) % Alignment) % Alignment + distance;
    return rawZip({table, {manifestName.toUtf8(), lintManifest(manifest)}, {"res/icon.png", lintIcon().content}});
}

QByteArray withManifest(const LintManifest &manifest)
{
    return lintPackageFile(lintTable(), lintManifest(manifest));
}

QByteArray withChunk(const QByteArray &chunk)
{
    LintManifest manifest;
    manifest.chunk = chunk;
    return withManifest(manifest);
}

QByteArray withActivity(const QVector<Attribute> &attributes)
{
    LintManifest manifest;
    manifest.activity = attributes;
    return withManifest(manifest);
}

QByteArray withTable(const PackageBuilder &package, const QVector<Member> &others = {})
{
    return lintPackageFile(lintTable(package), lintManifest(), others);
}

Attribute name(const QByteArray &text)
{
    return androidText(QStringLiteral("name"), QLatin1String(text));
}

Attribute label()
{
    return androidReference(QStringLiteral("label"), LabelResource);
}

Attribute icon(qint64 resource = IconResource)
{
    return androidReference(QStringLiteral("icon"), resource);
}

// A launcher whose label and icon need no table.
LintManifest manifestWithoutResources()
{
    LintManifest manifest;
    manifest.activity = {name(".Main"), androidText(QStringLiteral("label"), QStringLiteral("Notes")),
                         androidText(QStringLiteral("icon"), QStringLiteral("res/icon.png"))};
    return manifest;
}

QJsonObject refusedTable(const char *reason)
{
    return finding("apkfile-refuses", warning, QString(),
                   QByteArray("ApkFile alone does not read the package (code 3, could not parse resources.arsc: ")
                       + reason + "); SorrelKit does, and so does ApkFile through PackageNormalizer.");
}

QVector<Case> archiveCases()
{
    const QByteArray good = rawZip(rawMembers());
    RawMember encrypted{"a.txt", "a"};
    encrypted.flags = 1;
    RawMember packed{"a.txt", "a"};
    packed.method = 14;
    RawMember nowhere{"a.txt", "a"};
    nowhere.headerAt = 1 << 30;
    RawMember renamed{"a.txt", "a"};
    renamed.localName = "b.txt";
    RawMember otherMethod{"a.txt", "a"};
    otherMethod.localMethod = 8;
    RawMember otherSize{"a.txt", "a"};
    otherSize.localSize = 2;
    LintManifest recent;
    recent.targetSdk = 30;
    const QString file = QStringLiteral("a.txt");
    const auto withName = [](const char *name) { return withMember({name, "a"}); };
    return {
        {"multi-disk",
         withEnd({{4, 1}}),
         {finding("multi-disk", fault, QString(),
                  "The archive says that it is one of several disks, and readers refuse it.")},
         1},
        {"zip64",
         rawZip64(rawMembers()),
         {finding("zip64", note, QString(), "The archive has a ZIP64 directory, whose members were not looked at.")}},
        {"damaged-directory",
         withEnd({{8, 4}, {10, 4}}),
         {finding("damaged-directory", fault, QString(),
                  "The archive's directory ends after 3 of 4 members; the others are lost.")}},
        {"several-directories",
         rawZip(rawMembers(), rawZip({{"a.txt", "a"}})),
         {finding("several-directories", warning, QString(),
                  "The archive has another directory before its last one; readers that take that one see another "
                  "package.")}},
        {"leading-data",
         "12345" + good,
         {finding("leading-data", warning, QString(),
                  "The archive begins after 5 other bytes, and readers that take its offsets as they are find no "
                  "member.")}},
        {"trailing-data",
         good + "12345",
         {finding("trailing-data", warning, QString(),
                  "5 bytes follow the end of the archive, and strict readers refuse it.")}},
        {"encrypted-member",
         withMember(encrypted),
         {finding(
             "encrypted-member", warning, file,
             "The member is marked as encrypted, which libsorrel ignores, and other readers ask for a password.")}},
        {"unknown-method",
         withMember(packed),
         {finding("unknown-method", warning, file,
                  "The member has the compression method 14, and packages have only 0 (stored) and 8 (deflated); "
                  "readers need not know another one.")}},
        {"duplicate-name",
         rawZip(rawMembers({{"a.txt", "a"}, {"a.txt", "b"}})),
         {finding(
             "duplicate-name", warning, file,
             "The archive has another member of this name before it, and readers differ in which one they take.")}},
        {"absolute-name",
         withName("/a.txt"),
         {finding("absolute-name", warning, QStringLiteral("/a.txt"),
                  "The member's name begins with a slash, and who unpacks it by its name writes outside of the "
                  "directory.")}},
        {"parent-name",
         withName("a/../../b.txt"),
         {finding("parent-name", warning, QStringLiteral("a/../../b.txt"),
                  "The member's name has the part '..', and who unpacks it by its name writes outside of the "
                  "directory.")}},
        {"backslash-name",
         withName("a\\b.txt"),
         {finding("backslash-name", warning, QStringLiteral("a\\b.txt"),
                  "The member's name has a backslash, which some systems take for a slash.")}},
        {"control-name",
         withName("a\033[2Jb"),
         {finding("control-name", warning, QStringLiteral("a\033[2Jb"),
                  "The member's name has characters that steer a terminal.")}},
        {"long-name",
         withMember({QByteArray(256, 'a'), "a"}),
         {finding("long-name", note, QString(200, QLatin1Char('a')) + QStringLiteral("..."),
                  "The member's name has 256 bytes, and a file's name may have 255 of them.")}},
        {"missing-header",
         withMember(nowhere),
         {finding("missing-header", fault, file,
                  "No member stands where the directory says, and the member cannot be read.")}},
        {"different-name",
         withMember(renamed),
         {finding("different-name", warning, file,
                  "The member's own header calls it 'b.txt'; readers that go by the one or the other see different "
                  "members.")}},
        {"different-method",
         withMember(otherMethod),
         {finding("different-method", warning, file,
                  "The member's own header has the compression method 8, and the directory 0; libsorrel does not read "
                  "it.")}},
        {"different-size",
         withMember(otherSize),
         {finding("different-size", warning, file,
                  "The member's own header has other sizes or another checksum than the directory; readers refuse it, "
                  "or read different bytes.")}},
        {"compressed-table",
         withManifest(recent),
         {finding("compressed-table", fault, tableName,
                  "The resource table is compressed, and Android 11 and later do not install such a package when it is "
                  "made for API level 30 or later, as this one is (30).")}},
        {"unaligned-table",
         withTableAt(1),
         {finding("unaligned-table", fault, tableName,
                  "The resource table stands at no multiple of 4 bytes, and Android 11 and later do not install such a "
                  "package when it is made for API level 30 or later, as this one is (30).")}},
    };
}

QVector<Case> tableCases()
{
    const char *const anew =
        ", which ApkFile does not read; SorrelKit does, and PackageNormalizer writes them anew for "
        "ApkFile.";
    const auto encoded = [&](TableEncoding encoding) {
        return withTable(lintPackage().type(labelType().value(1, String, 0).encoding(encoding)).type(iconType()));
    };
    const QByteArray shared = withTable(lintPackage().type(labelType().offset(1, 0)).type(iconType()));
    const QByteArray compact =
        withTable(lintPackage().type(TypeBuilder(1).entry(0, compactEntry(String, 0))).type(iconType()));
    const QByteArray damaged = lintPackageFile(lintTable().chopped(1), lintManifest(manifestWithoutResources()));
    return {
        {"no-table",
         zip({{manifestName, lintManifest(manifestWithoutResources())}, lintIcon()}),
         {finding("apkfile-refuses", warning, QString(),
                  "ApkFile alone does not read the package (code 2, could not find resources.arsc); SorrelKit does, "
                  "and so does ApkFile through PackageNormalizer."),
          finding("no-table", note, QString(),
                  "There is no resource table, so that there are no resources; ApkFile needs one to read the manifest, "
                  "SorrelKit and Android do not.")}},
        {"damaged-table",
         damaged,
         {finding(
             "damaged-table", fault, tableName,
             "The resource table cannot be read (could not parse resources.arsc: not a resource table), and labels "
             "and icons are missing.")},
         3},
        {"sparse-table",
         encoded(TableEncoding::Sparse),
         {refusedTable("resource table contains entry not in index"),
          finding("sparse-table", warning, tableName, QByteArray("The resource table has sparse types") + anew)}},
        {"short-offsets-table",
         encoded(TableEncoding::ShortOffsets),
         {refusedTable("file too short"),
          finding("short-offsets-table", warning, tableName,
                  QByteArray("The resource table has types with offsets of 16 bits") + anew)}},
        {"compact-table",
         compact,
         {refusedTable("file too short"),
          finding("compact-table", warning, tableName, QByteArray("The resource table has compact entries") + anew)}},
        {"shared-entries-table",
         shared,
         {finding("shared-entries-table", warning, tableName,
                  "Resources share entries of the resource table, and ApkFile finds the last one's alone; SorrelKit "
                  "finds all, and PackageNormalizer writes them anew for ApkFile.")}},
        {"unknown-table-chunk",
         withTable(lintPackage().type(labelType()).type(iconType()).chunk(chunk(0x0203)).chunk(chunk(0x0999))),
         {finding("unknown-table-chunk", note, tableName,
                  "The resource table has chunks of types that libsorrel skips, 2 times (0x0203, 0x0999).")}},
        {"unknown-string-pool",
         withTable(lintPackage().type(labelType()).type(iconType()).chunk(PoolBuilder().strings({"x"}).build())),
         {finding("unknown-string-pool", note, tableName,
                  "The resource table has string pools that nothing refers to, once.")}},
    };
}

QVector<Case> manifestCases()
{
    const auto changed = [](const std::function<void(LintManifest &)> &change) {
        LintManifest manifest;
        change(manifest);
        return withManifest(manifest);
    };
    QByteArray untyped = lintManifest();
    poke16(untyped, 0, 0);
    const Attribute inOtherNamespace{QStringLiteral("urn:x"), QStringLiteral("y"), QStringLiteral("z"), String, 0};
    return {
        {"package-set",
         zip({{QStringLiteral("base.apk"), lintPackageFile()}}),
         {finding(
             "package-set", note, QString(),
             "The file is a set of packages, which ApkFile does not read and SorrelKit does; its packages were not "
             "looked at one by one.")}},
        {"apkfile-refuses",
         changed([](LintManifest &manifest) { manifest.closing = QStringLiteral("other"); }),
         {finding(
             "apkfile-refuses", warning, QString(),
             "ApkFile alone does not read the package (code 5, could not parse AndroidManifest.xml: closing tag does "
             "not match opening tag); SorrelKit does.")}},
        {"no-manifest",
         zip({{tableName, lintTable()}, lintIcon()}),
         {finding("no-manifest", fault, QString(),
                  "There is no manifest that can be read: this is no Android package.")},
         4},
        {"damaged-manifest",
         lintPackageFile(lintTable(), lintManifest().chopped(1)),
         {finding("damaged-manifest", fault, manifestName,
                  "The manifest cannot be read (could not parse AndroidManifest.xml: not a binary XML document).")},
         5},
        {"untyped-manifest",
         lintPackageFile(lintTable(), untyped),
         {finding("untyped-manifest", warning, manifestName,
                  "The manifest's first chunk has no type, and ApkFile finds nothing in it and tells no error; Android "
                  "and SorrelKit read it, and PackageNormalizer sets the type for ApkFile.")}},
        {"negative-index",
         withChunk(nodeChunk(0x0100, Bytes().u32(-1).u32(0).data())),
         {finding("negative-index", fault, manifestName,
                  "A name in the manifest has a negative string index, which can end a program that reads it with "
                  "ApkFile, as libsorrel is built by default.")}},
        {"irregular-manifest",
         withChunk(chunk(0x0104, QByteArray(), QByteArray(16, '\0'))),
         {finding("irregular-manifest", warning, manifestName,
                  "The manifest's chunks do not follow each other as the format has it, so that readers differ on it; "
                  "what ApkFile makes of it was not tried.")}},
        {"unknown-manifest-chunk",
         withChunk(chunk(0x0190)),
         {finding("unknown-manifest-chunk", note, manifestName,
                  "The manifest has chunks of types that libsorrel skips, once (0x0190).")}},
        {"undeclared-namespace",
         withActivity({name(".Main"), label(), icon(), inOtherNamespace}),
         {finding(
             "undeclared-namespace", warning, manifestName,
             "The manifest uses namespaces that it does not declare, once (urn:x), and readers that go by prefixes "
             "do not find what is in them.")}},
        {"undeclared-namespace, Android's",
         changed([](LintManifest &manifest) { manifest.isDeclared = false; }),
         {finding("undeclared-namespace", warning, manifestName,
                  "The manifest uses Android's attributes and does not declare their namespace, 7 times, and readers "
                  "that go by prefixes do not find them.")}},
        {"no-package-name",
         changed([](LintManifest &manifest) { manifest.package = QString(); }),
         {finding("no-package-name", fault, manifestName,
                  "The manifest names no package, and Android does not install "
                  "it.")}},
        {"min-above-target",
         changed([](LintManifest &manifest) { manifest.targetSdk = 21; }),
         {finding("min-above-target", warning, manifestName,
                  "The package runs on API level 23 and later, and was made for 21, which is below it.")}},
    };
}

QVector<Case> launcherCases()
{
    LintManifest none;
    none.launchers = 0;
    LintManifest many;
    many.launchers = 102;
    const QByteArray noLabel = withActivity({name(".Main"), icon()});
    const QByteArray recent = ConfigBuilder().sdkVersion(26).build();
    return {
        {"no-launcher",
         withManifest(none),
         {finding("no-launcher", note, QString(),
                  "The package has no launcher, and home screens show nothing of it.")}},
        {"no-class",
         withActivity({label(), icon()}),
         {finding("no-class", warning, QString(), "The launcher names no class, and nothing starts with it.")}},
        {"foreign-class",
         withActivity({name("com.other.Main"), label(), icon()}),
         {finding(
             "foreign-class", note, QStringLiteral("com.other.Main"),
             "The launcher's class com.other.Main is outside of the package's own name; the code of another project "
             "runs, or the package was renamed.")}},
        {"no-label",
         noLabel,
         {finding("no-label", warning, launcherName,
                  "The launcher has no label, or one that leads nowhere; it is shown by its name.")}},
        {"no-icon",
         withActivity({name(".Main"), label()}),
         {finding("no-icon", note, launcherName, "The launcher names no icon; home screens show their own.")}},
        {"platform-icon",
         withActivity({name(".Main"), label(), icon(0x01080093)}),
         {finding(
             "platform-icon", note, launcherName,
             "The launcher's icon is 0x01080093 of Android itself, which the package does not hold; devices show it, "
             "and other hosts show none.")}},
        {"unresolved-icon",
         withActivity({name(".Main"), label(), icon(0x7f020005)}),
         {finding("unresolved-icon", warning, launcherName,
                  "The launcher's icon cannot be had (resource 0x7f020005 is no drawable), and hosts show none.")}},
        {"partial-icon",
         withTable(lintPackage().type(labelType()).type(iconType()).type(xmlIconType(recent)),
                   {xmlIcon(QStringLiteral("odd"))}),
         {finding(
             "partial-icon", note, launcherName,
             "The launcher's icon is not wholly drawn as the package describes it (unsupported drawable <odd>).")}},
        {"xml-only-icon",
         withTable(lintPackage().type(labelType()).type(xmlIconType()), {xmlIcon(QStringLiteral("color"))}),
         {finding("xml-only-icon", note, launcherName,
                  "The launcher's icon is XML alone, of which ApkFile gives nothing; a host needs SorrelKit to show "
                  "it.")}},
        {"launchers-skipped",
         withManifest(many),
         {finding("launchers-skipped", note, QString(),
                  "Of 102 launchers, the last 2 were not looked at, as that would take too long.")}},
    };
}

// Name, severity and meaning in a line of the list of checks; nothing for another line.
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

QVector<Case> allCases()
{
    return archiveCases() + tableCases() + manifestCases() + launcherCases();
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
    QString write(const QString &name, const QByteArray &bytes) const;

    QTemporaryDir m_directory;
};

QString TestLintCommand::write(const QString &name, const QByteArray &bytes) const
{
    const QString path = m_directory.filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("could not write %s", qPrintable(path));
    return path;
}

void TestLintCommand::nothingIsOdd_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("deflated") << lintPackageFile();
    QTest::newRow("stored") << rawZip(rawMembers());
    QTest::newRow("made for Android 11") << withTableAt(0);
}

void TestLintCommand::nothingIsOdd()
{
    QFETCH(QByteArray, bytes);
    const QString file = write(QStringLiteral("good.apk"), bytes);
    const ToolRun json = runSorrel({QStringLiteral("lint"), QStringLiteral("--json"), file});
    QCOMPARE(json.status, 0);
    const QJsonObject expected{
        {QStringLiteral("file"), file},
        {QStringLiteral("error"),
         QJsonObject{{QStringLiteral("code"), 0}, {QStringLiteral("text"), QStringLiteral("no error")}}},
        {QStringLiteral("lint"), QJsonArray()}};
    QCOMPARE(QJsonDocument::fromJson(json.output).object(), expected);
    QCOMPARE(json.errors, QByteArray());
    const ToolRun text = runSorrel({QStringLiteral("lint"), file});
    QCOMPARE(text.status, 0);
    QCOMPARE(QString::fromUtf8(text.output), file + QStringLiteral("\n  nothing odd\n"));
    QCOMPARE(text.errors, QByteArray());
}

void TestLintCommand::findings_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QJsonArray>("expected");
    QTest::addColumn<int>("errorCode");
    for (const Case &row : allCases())
        QTest::newRow(row.name) << row.bytes << row.findings << row.errorCode;
}

void TestLintCommand::findings()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QJsonArray, expected);
    QFETCH(int, errorCode);
    const QString file = write(QStringLiteral("odd.apk"), bytes);
    const ToolRun result = runSorrel({QStringLiteral("lint"), QStringLiteral("--json"), file});
    const QJsonObject json = QJsonDocument::fromJson(result.output).object();
    const QByteArray found = QJsonDocument(json.value(QLatin1String("lint")).toArray()).toJson();
    QVERIFY2(found == QJsonDocument(expected).toJson(), found.constData());
    QCOMPARE(json.value(QLatin1String("error")).toObject().value(QLatin1String("code")).toInt(-1), errorCode);
    QCOMPARE(result.status, errorCode == 0 ? 0 : 1);
    QCOMPARE(result.errors.count('\n'), errorCode == 0 ? 0 : 1);
}

QJsonArray TestLintCommand::lint(const QByteArray &bytes) const
{
    const QString file = write(QStringLiteral("lint.apk"), bytes);
    const ToolRun result = runSorrel({QStringLiteral("lint"), QStringLiteral("--json"), file});
    return QJsonDocument::fromJson(result.output).object().value(QLatin1String("lint")).toArray();
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
    for (const Case &row : allCases())
        cases.append(QString::fromLatin1(row.name));
    const QStringList checks = listedChecks().keys();
    QVERIFY(!checks.isEmpty());
    for (const QString &check : checks)
        QVERIFY2(cases.contains(check), qPrintable(check));
}

void TestLintCommand::refusalsAreThoseOfApkFile()
{
    const LogCapture log;
    int refused = 0;
    for (const Case &row : allCases()) {
        // The one ends the process, the other is not tried, and SorrelKit reads none of the third kind.
        if (row.name == QByteArray("negative-index") || row.name == QByteArray("irregular-manifest")
            || row.name == QByteArray("package-set") || row.errorCode != 0)
            continue;
        PackageDevice device(row.bytes);
        const ApkFile apk(&device);
        apk.getManifest();
        const QString code = QStringLiteral("(code %1,").arg(apk.getError());
        bool isTold = false;
        for (const QJsonValue &finding : row.findings) {
            const QJsonObject object = finding.toObject();
            if (object.value(QLatin1String("check")) == QLatin1String("apkfile-refuses"))
                isTold = object.value(QLatin1String("text")).toString().contains(code);
        }
        QVERIFY2(isTold == (apk.getError() != 0), row.name);
        refused += isTold ? 1 : 0;
    }
    QCOMPARE(refused, 5);
}

// What findings say that libsorrel does with such members.
void TestLintCommand::membersThatAreReadAllTheSame()
{
    const LogCapture log;
    const auto codeFor = [](const std::function<void(RawMember &)> &change) {
        QVector<RawMember> members = rawMembers();
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
    const QString file = write(QStringLiteral("odd.apk"), "12345" + rawZip(rawMembers({{"/a.txt", "a"}})));
    const ToolRun result = runSorrel({QStringLiteral("lint"), file});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(
        QString::fromUtf8(result.output),
        file
            + QStringLiteral("\n"
                             "  warning  The archive begins after 5 other bytes, and readers that take its offsets "
                             "as they are find no member. (leading-data)\n"
                             "  warning  /a.txt: The member's name begins with a slash, and who unpacks it by its "
                             "name writes outside of the directory. (absolute-name)\n"));
}

void TestLintCommand::textOnATerminalIsColoured()
{
    const QString file = write(QStringLiteral("odd.apk"), rawZip(rawMembers({{"/a.txt", "a"}})));
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
    manifest.activity = {androidText(QStringLiteral("name"), steering), icon(), inNamespace};
    RawMember member{steering.toUtf8(), "a"};
    member.localName = steering.toUtf8() + steering.toUtf8();
    member.flags = 1;
    const QString file = write(QStringLiteral("a\033[2Jb.apk"), rawZip(rawMembers({member}, lintManifest(manifest))));
    const ToolRun result = runSorrel({QStringLiteral("lint"), file});
    QCOMPARE(result.status, 0);
    const QString output = QString::fromUtf8(result.output);
    // Every finding is one line, and there is nothing in any that is not shown.
    QCOMPARE(output.count(QLatin1Char('\n')), 1 + lint(rawZip(rawMembers({member}, lintManifest(manifest)))).size());
    for (const QChar character : output)
        QVERIFY(character == QLatin1Char('\n')
                || !steering.chopped(1).remove(QStringLiteral("[2J")).contains(character));
    for (const char *check : {"control-name", "different-name", "undeclared-namespace", "no-label"})
        QVERIFY2(output.contains(QStringLiteral("(%1)\n").arg(QLatin1String(check))), check);
}

void TestLintCommand::manyFindingsOfACheckAreCounted()
{
    QVector<RawMember> members;
    for (int i = 0; i < 25; ++i)
        members.append({"/" + QByteArray::number(i), "a"});
    const QJsonArray findings = lint(rawZip(rawMembers(members)));
    QCOMPARE(findings.size(), 11);
    QCOMPARE(findings.first().toObject().value(QLatin1String("subject")).toString(), QStringLiteral("/0"));
    QCOMPARE(findings.last().toObject(), finding("absolute-name", warning, QString(), "The same is so 15 times more."));
}

void TestLintCommand::severalFiles()
{
    const QString good = write(QStringLiteral("good.apk"), lintPackageFile());
    const QString missing = m_directory.filePath(QStringLiteral("missing"));
    const ToolRun text = runSorrel({QStringLiteral("lint"), good, missing, good});
    QCOMPARE(text.status, 1);
    QCOMPARE(QString::fromUtf8(text.output), QStringLiteral("%1\n  nothing odd\n\n%1\n  nothing odd\n").arg(good));
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
    QVERIFY(result.output.contains("xml-only-icon           note     A launcher's icon is XML alone: ApkFile has none, "
                                   "and a host needs SorrelKit.\n"));
    const QMap<QString, QStringList> checks = listedChecks();
    QCOMPARE(checks.size(), result.output.count('\n'));
    for (const Case &row : allCases()) {
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
    const QString file = write(QStringLiteral("odd.apk"), withChunk(chunk(0x0190)));
    ToolSetting quiet;
    quiet.environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("*.debug=false"));
    const ToolRun result = runSorrel({QStringLiteral("lint"), file}, quiet);
    QVERIFY(result.output.contains("(unknown-manifest-chunk)"));
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
