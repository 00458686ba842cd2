// SPDX-License-Identifier: LGPL-2.1-or-later
#include "LintCases.h"

#include "Bytes.h"
#include "LintFixture.h"

#include <QMap>

#include <functional>

namespace fixture {

namespace {

const QString tableName = QStringLiteral("resources.arsc");
const QString manifestName = QStringLiteral("AndroidManifest.xml");
const QString launcherName = QStringLiteral("org.x.Main");
const QString note = QStringLiteral("note");
const QString warning = QStringLiteral("warning");
const QString fault = QStringLiteral("error");

QByteArray withManifest(const LintManifest &manifest)
{
    return lintPackageFile(lintTable(), lintManifest(manifest));
}

QByteArray withMember(const RawMember &member)
{
    return rawZip(lintMembers({member}));
}

// Sets 16-bit fields at the archive's end. The keys are their offsets.
QByteArray withEnd(const QMap<int, int> &fields)
{
    QByteArray bytes = rawZip(lintMembers());
    for (auto field = fields.cbegin(); field != fields.cend(); ++field)
        poke16(bytes, int(bytes.size()) - ZipEndSize + field.key(), field.value());
    return bytes;
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

// A launcher with a literal label and an icon path, which need no table.
LintManifest manifestWithoutResources()
{
    LintManifest manifest;
    manifest.activity = {name(".Main"), androidText(QStringLiteral("label"), QStringLiteral("Notes")),
                         androidText(QStringLiteral("icon"), QStringLiteral("res/icon.png"))};
    return manifest;
}

QByteArray unreadableTable()
{
    QVector<RawMember> members = lintMembers({}, lintManifest(manifestWithoutResources()));
    members[1].headerAt = 1 << 30;
    return rawZip(members);
}

QJsonObject refusedTable(const char *reason)
{
    return finding("apkfile-refuses", warning, QString(),
                   QByteArray("ApkFile alone does not read the package (code 3, could not parse resources.arsc: ")
                       + reason + "); SorrelKit does.");
}

QVector<LintCase> archiveCases()
{
    const QByteArray good = rawZip(lintMembers());
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
    LintManifest odd;
    odd.targetSdk = 21;
    odd.chunk = chunk(0x0190);
    const QString file = QStringLiteral("a.txt");
    const auto withName = [](const char *name) { return withMember({name, "a"}); };
    return {
        {"multi-disk",
         withEnd({{4, 1}}),
         {finding("multi-disk", fault, QString(),
                  "The archive says that it is one of several disks, and readers refuse it.")},
         1},
        {"zip64",
         rawZip64(lintMembers()),
         {finding("zip64", note, QString(), "The archive has a ZIP64 directory, whose members were not looked at.")}},
        {"damaged-directory",
         withEnd({{8, 4}, {10, 4}}),
         {finding("damaged-directory", fault, QString(),
                  "The archive's directory ends after 3 of 4 members; the others are lost.")}},
        {"several-directories",
         rawZip(lintMembers(), rawZip({{"a.txt", "a"}})),
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
         rawZip(lintMembers({{"a.txt", "a"}, {"a.txt", "b"}})),
         {finding(
             "duplicate-name", warning, file,
             "The archive has another member of this name before it; libsorrel and SorrelKit take the last one, other "
             "readers the first, or refuse the archive.")}},
        {"duplicate-name, of a manifest",
         rawZip(lintMembers({{"AndroidManifest.xml", lintManifest(odd)}})),
         {finding(
              "duplicate-name", warning, manifestName,
              "The archive has another member of this name before it; libsorrel and SorrelKit take the last one, other "
              "readers the first, or refuse the archive."),
          finding("unknown-manifest-chunk", note, manifestName,
                  "The manifest has chunks of types that libsorrel skips, once (0x0190)."),
          finding("min-above-target", warning, manifestName,
                  "The package runs on API level 23 and later, and was made for 21, which is below it.")}},
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
         lintPackageWithTableAt(1),
         {finding("unaligned-table", fault, tableName,
                  "The resource table stands at no multiple of 4 bytes, and Android 11 and later do not install such a "
                  "package when it is made for API level 30 or later, as this one is (30).")}},
    };
}

QVector<LintCase> tableCases()
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
                  "ApkFile alone does not read the package (code 2, could not find resources.arsc); SorrelKit does."),
          finding("no-table", note, QString(),
                  "There is no resource table, so that there are no resources; ApkFile needs one to read the manifest, "
                  "SorrelKit and Android do not. PackageNormalizer adds an empty one for ApkFile.")}},
        {"damaged-table",
         damaged,
         {finding(
             "damaged-table", fault, tableName,
             "The resource table cannot be read (could not parse resources.arsc: not a resource table), and labels "
             "and icons are missing.")},
         3},
        {"damaged-table, and missing-header",
         unreadableTable(),
         {finding("missing-header", fault, tableName,
                  "No member stands where the directory says, and the member cannot be read."),
          finding(
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

QVector<LintCase> manifestCases()
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
        {"apkfile-refuses, a negative string index",
         lintPackageWithChunk(nodeChunk(0x0100, Bytes().u32(-1).u32(0).data())),
         {finding("apkfile-refuses", warning, QString(),
                  "ApkFile alone does not read the package (code 5, could not parse AndroidManifest.xml: bad index in  "
                  "pool); SorrelKit does.")}},
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
        {"damaged-manifest, to SorrelKit alone",
         lintPackageFile(lintTable(), XmlBuilder().start(QStringLiteral("manifest")).build()),
         {finding(
             "damaged-manifest", fault, manifestName,
             "The manifest cannot be read (could not parse AndroidManifest.xml: damaged XML document). ApkFile reads "
             "it all the same.")},
         5},
        {"damaged-manifest, to ApkFile and without a type",
         lintPackageFile(lintTable(), untyped.chopped(1)),
         {finding("damaged-manifest", fault, manifestName,
                  "The manifest cannot be read (could not parse AndroidManifest.xml: not a binary XML document).")},
         5},
        {"untyped-manifest",
         lintPackageFile(lintTable(), untyped),
         {finding("untyped-manifest", warning, manifestName,
                  "The manifest's first chunk has no type, and ApkFile finds nothing in it and tells no error; Android "
                  "and SorrelKit read it, and PackageNormalizer sets the type for ApkFile.")}},
        {"unknown-manifest-chunk",
         lintPackageWithChunk(chunk(0x0190)),
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
        {"different-text",
         withActivity({name(".Main"), writtenAs(label(), QStringLiteral("Notes")), icon()}),
         {finding("different-text", warning, manifestName,
                  "Attributes of the manifest were written as texts that are not their values, once (label); ApkFile "
                  "takes the texts, SorrelKit and Android take the values.")}},
        {"different-text, of many",
         changed([](LintManifest &manifest) {
             manifest.launchers = 6;
             manifest.activity[1] = writtenAs(label(), QStringLiteral("Notes"));
         }),
         {finding(
             "different-text", warning, manifestName,
             "Attributes of the manifest were written as texts that are not their values, 6 times (label); ApkFile "
             "takes the texts, SorrelKit and Android take the values.")}},
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

QVector<LintCase> launcherCases()
{
    LintManifest none;
    none.launchers = 0;
    LintManifest many;
    many.launchers = 102;
    LintManifest manyIcons;
    manyIcons.launchers = 23;
    manyIcons.hasOwnIcons = true;
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
                  "The package has no file for the launcher's icon 0x7f020005; hosts show none.")}},
        {"unresolved-icon, of a file that cannot be drawn",
         withTable(lintPackage().type(labelType()).type(xmlIconType()), {xmlIcon(QStringLiteral("odd"))}),
         {finding("unresolved-icon", warning, launcherName,
                  "The launcher's icon cannot be drawn (unsupported drawable <odd>); hosts show none."),
          finding("xml-only-icon", note, launcherName,
                  "The launcher's icon is XML alone, of which ApkFile gives nothing; a host needs SorrelKit to show "
                  "it.")},
         0,
         true},
        {"partial-icon",
         withTable(lintPackage().type(labelType()).type(iconType()).type(xmlIconType(recent)),
                   {xmlIcon(QStringLiteral("odd"))}),
         {finding("partial-icon", note, launcherName,
                  "The launcher's icon is not drawn completely, or from another of its files (unsupported drawable "
                  "<odd>).")},
         0,
         true},
        {"xml-only-icon",
         withTable(lintPackage().type(labelType()).type(xmlIconType()), {xmlIcon(QStringLiteral("color"))}),
         {finding("xml-only-icon", note, launcherName,
                  "The launcher's icon is XML alone, of which ApkFile gives nothing; a host needs SorrelKit to show "
                  "it.")}},
        {"launchers-skipped",
         withManifest(many),
         {finding("launchers-skipped", note, QString(),
                  "Of 102 launchers, the last 2 were not looked at, as that would take too long.")}},
        {"launchers-skipped, of many icons",
         lintPackageFile(lintTable(lintPackage().type(labelType()).type(iconType(23))), lintManifest(manyIcons)),
         {finding("launchers-skipped", note, QString(),
                  "The icons of 3 launchers were not drawn: drawing them may take too long.")},
         0,
         true},
        {"launchers-skipped, after an icon that is too much",
         lintPackageFile(lintTable(lintPackage().type(labelType()).type(iconType(23)).type(xmlIconType(recent))),
                         lintManifest(manyIcons), {iconWithin(IconResource)}),
         {finding("partial-icon", note, launcherName,
                  "The launcher's icon is not drawn completely, or from another of its files (drawables nested too "
                  "deeply)."),
          finding("launchers-skipped", note, QString(),
                  "The icons of 22 launchers were not drawn: drawing them may take too long.")},
         0,
         true},
    };
}

} // namespace

QJsonObject finding(const char *check, const QString &severity, const QString &subject, const QByteArray &text)
{
    return {{QStringLiteral("check"), QLatin1String(check)},
            {QStringLiteral("severity"), severity},
            {QStringLiteral("subject"), subject},
            {QStringLiteral("text"), QString::fromUtf8(text)}};
}

QVector<LintCase> lintCases()
{
    return archiveCases() + tableCases() + manifestCases() + launcherCases();
}

} // namespace fixture
