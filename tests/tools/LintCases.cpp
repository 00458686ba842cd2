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
                   QByteArray("SorrelKit reads the package, ApkFile does not (code 3, could not parse resources.arsc: ")
                       + reason + ").");
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
    RawMember otherChecksum{"a.txt", "a"};
    otherChecksum.crc = 1;
    QByteArray withGap = good;
    withGap.insert(withGap.size() - ZipEndSize, "gap");
    QByteArray withLongComment = good + QByteArray(0xffff, 'x');
    poke16(withLongComment, int(good.size()) - 2, 0xffff);
    QByteArray withHidden = withMember({"a.txt", "a"});
    poke16(withHidden, int(withHidden.size()) - ZipEndSize + 8, 3);
    poke16(withHidden, int(withHidden.size()) - ZipEndSize + 10, 3);
    const auto refusal = [](const QByteArray &error) {
        return finding("apkfile-refuses", warning, QString(),
                       "SorrelKit reads the package, ApkFile does not (" + error + ").");
    };
    const auto refused = [](const QByteArray &text) { return finding("android-refuses", fault, QString(), text); };
    const QByteArray cannotOpen("code 1, could not open APK file");
    LintManifest recent;
    recent.targetSdk = 30;
    LintManifest odd;
    odd.targetSdk = 21;
    odd.chunk = nodeChunk(0x0190, QByteArray());
    const QString file = QStringLiteral("a.txt");
    const auto withName = [](const char *name) { return withMember({name, "a"}); };
    return {
        {"multi-disk",
         withEnd({{4, 1}}),
         {finding("multi-disk", fault, QString(), "The archive claims to be one part of several; ApkFile refuses it."),
          refusal(cannotOpen)}},
        {"apkfile-refuses, data before the end record",
         withGap,
         {finding("android-takes", note, QString(),
                  "There are bytes between the directory and the end record; Android skips them, unless a signature of "
                  "scheme v2 or later is checked. [3]"),
          refusal("code 2, could not find resources.arsc")}},
        {"apkfile-refuses, a long comment",
         withLongComment,
         {finding("android-takes", note, QString(),
                  "The archive's comment has so many bytes that some readers do not find the end record; Android finds "
                  "it. [65557]"),
          refusal(cannotOpen)}},
        {"android-refuses",
         rawZip(lintMembers({{"a\xff.txt", "a"}})),
         {refused("A member's name has a zero, or is no UTF-8; Android refuses the package. [a\u00ff.txt]")},
         6},
        {"android-takes",
         withHidden,
         {finding("android-takes", note, QString(),
                  "The directory has more members than the end record counts; Android does not see the others.")}},
        {"zip64",
         rawZip64(lintMembers()),
         {finding("zip64", note, QString(), "The archive has a ZIP64 directory; many readers refuse it."),
          refused(
              "The archive has a ZIP64 directory; Android 11 and older refuse the package. [API level 30 and older]")}},
        {"damaged-directory",
         withEnd({{8, 4}, {10, 4}}),
         {finding("damaged-directory", fault, QString(),
                  "The archive's directory lists 3 of the 4 members that it claims; the others are lost."),
          refused("The directory has fewer members than the end record counts, or a damaged one; Android refuses the "
                  "package. [1]")},
         6},
        {"several-directories",
         rawZip(lintMembers(), rawZip({{"a.txt", "a"}})),
         {finding("several-directories", warning, QString(),
                  "The archive has another directory before the last one; readers that use it see another package.")}},
        {"leading-data",
         "12345" + good,
         {finding("leading-data", warning, QString(),
                  "The archive begins after 5 bytes of other data; readers that do not correct its offsets find no "
                  "member."),
          refused(
              "The archive does not begin with the file; Android refuses the package. [5; API level 27 and later]")},
         6},
        {"trailing-data",
         good + "12345",
         {finding("trailing-data", warning, QString(),
                  "The archive ends 5 bytes before the end of the file; strict readers refuse it."),
          refused("The file goes on behind the archive; Android refuses the package. [5]")},
         6},
        {"encrypted-member",
         withMember(encrypted),
         {finding("encrypted-member", warning, file,
                  "The member is marked as encrypted; libsorrel ignores the mark, other readers ask for a password.")}},
        {"unknown-method",
         withMember(packed),
         {finding("unknown-method", warning, file,
                  "The member has the compression method 14; many readers know only 0 (stored) and 8 (deflated).")}},
        {"duplicate-name",
         rawZip(lintMembers({{"a.txt", "a"}, {"a.txt", "b"}})),
         {finding("duplicate-name", warning, file,
                  "An earlier member has the same name; libsorrel and SorrelKit use the last one, other readers use "
                  "the first one or refuse the archive."),
          refused("Two members have the same name; Android refuses the package. [a.txt]")},
         6},
        {"duplicate-name, of a manifest",
         rawZip(lintMembers({{"AndroidManifest.xml", lintManifest(odd)}})),
         {finding("duplicate-name", warning, manifestName,
                  "An earlier member has the same name; libsorrel and SorrelKit use the last one, other readers use "
                  "the first one or refuse the archive."),
          refused("Two members have the same name; Android refuses the package. [AndroidManifest.xml]"),
          finding("unknown-manifest-chunk", note, manifestName,
                  "libsorrel skips 1 chunk of unknown type in the manifest (0x0190)."),
          finding("min-above-target", warning, manifestName,
                  "The minimum SDK version 23 is higher than the target SDK version 21.")},
         6},
        {"absolute-name",
         withName("/a.txt"),
         {finding("absolute-name", warning, QStringLiteral("/a.txt"),
                  "The member's name begins with a slash; unpacking it may write outside of the target directory.")}},
        {"parent-name",
         withName("a/../../b.txt"),
         {finding("parent-name", warning, QStringLiteral("a/../../b.txt"),
                  "The member's name has the part '..'; unpacking it may write outside of the target directory.")}},
        {"backslash-name",
         withName("a\\b.txt"),
         {finding("backslash-name", warning, QStringLiteral("a\\b.txt"),
                  "The member's name has a backslash, which some systems treat as a slash.")}},
        {"control-name",
         withName("a\033[2Jb"),
         {finding("control-name", warning, QStringLiteral("a\033[2Jb"),
                  "The member's name has characters that control a terminal.")}},
        {"long-name",
         withMember({QByteArray(256, 'a'), "a"}),
         {finding("long-name", note, QString(200, QLatin1Char('a')) + QStringLiteral("..."),
                  "The member's name has 256 bytes; most file systems allow 255.")}},
        {"missing-header",
         withMember(nowhere),
         {finding("missing-header", fault, file,
                  "The member is not at the offset in the directory; it cannot be read."),
          refused("A member has an offset at or behind the directory; Android refuses the package. [a.txt]")},
         6},
        {"different-name",
         withMember(renamed),
         {finding("different-name", warning, file,
                  "The member's header has the name 'b.txt'; readers of headers and readers of the directory see "
                  "different members.")}},
        {"different-method",
         withMember(otherMethod),
         {finding("different-method", warning, file,
                  "The member's header has the compression method 8, the directory has 0; libsorrel does not read the "
                  "member.")}},
        {"different-size",
         withMember(otherSize),
         {finding("different-size", warning, file,
                  "The member's header and the directory have different sizes or checksums; readers refuse the member "
                  "or read different bytes.")}},
        {"wrong-checksum",
         withMember(otherChecksum),
         {finding("wrong-checksum", warning, file,
                  "The member's content does not have the checksum in the directory; Android does not check it, other "
                  "readers refuse the member.")}},
        {"compressed-table",
         withManifest(recent),
         {finding("compressed-table", fault, tableName,
                  "The resource table is compressed, and the package targets API level 30; Android 11 and later do not "
                  "install it.")}},
        {"unaligned-table",
         lintPackageWithTableAt(1),
         {finding("unaligned-table", fault, tableName,
                  "The resource table's offset is not a multiple of 4, and the package targets API level 30; Android "
                  "11 and later do not install it.")}},
    };
}

QVector<LintCase> tableCases()
{
    const char *const needsNormalizer = "; SorrelKit reads them, ApkFile needs PackageNormalizer to read them.";
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
                  "SorrelKit reads the package, ApkFile does not (code 2, could not find resources.arsc)."),
          finding("no-table", note, QString(),
                  "The package has no resource table; ApkFile needs the empty one that PackageNormalizer adds, "
                  "SorrelKit and Android need none.")}},
        {"damaged-table",
         damaged,
         {finding("damaged-table", fault, tableName,
                  "The resource table cannot be read (could not parse resources.arsc: not a resource table); labels "
                  "and icons are missing.")},
         3},
        {"damaged-table, and missing-header",
         unreadableTable(),
         {finding("missing-header", fault, tableName,
                  "The member is not at the offset in the directory; it cannot be read."),
          finding("android-refuses", fault, QString(),
                  "A member has an offset at or behind the directory; Android refuses the package. [resources.arsc]"),
          finding("damaged-table", fault, tableName,
                  "The resource table cannot be read (could not parse resources.arsc: not a resource table); labels "
                  "and icons are missing.")},
         3},
        {"sparse-table",
         encoded(TableEncoding::Sparse),
         {refusedTable("resource table contains entry not in index"),
          finding("sparse-table", warning, tableName,
                  QByteArray("The resource table has sparse types") + needsNormalizer)}},
        {"short-offsets-table",
         encoded(TableEncoding::ShortOffsets),
         {refusedTable("file too short"),
          finding("short-offsets-table", warning, tableName,
                  QByteArray("The resource table has types with 16-bit offsets") + needsNormalizer)}},
        {"compact-table",
         compact,
         {refusedTable("file too short"),
          finding("compact-table", warning, tableName,
                  QByteArray("The resource table has compact entries") + needsNormalizer)}},
        {"shared-entries-table",
         shared,
         {finding("shared-entries-table", warning, tableName,
                  "Resources share an entry of the resource table; SorrelKit finds all of them, ApkFile needs "
                  "PackageNormalizer to find more than the last one.")}},
        {"unknown-table-chunk",
         withTable(lintPackage()
                       .type(labelType())
                       .type(iconType())
                       .chunk(chunk(0x0203, Bytes().u32(0).data()))
                       .chunk(chunk(0x0999))),
         {finding("android-takes", note, tableName, "The table names shared libraries."),
          finding("unknown-table-chunk", note, tableName,
                  "libsorrel skips 2 chunks of unknown type in the resource table (0x0203, 0x0999).")}},
        {"unknown-string-pool",
         withTable(lintPackage().type(labelType()).type(iconType()).chunk(PoolBuilder().strings({"x"}).build())),
         {finding("unknown-string-pool", note, tableName,
                  "The resource table has 1 string pool that nothing refers to.")}},
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
         {finding("package-set", note, QString(),
                  "The file is a set of packages; SorrelKit reads it, ApkFile does not, and lint does not check each "
                  "package.")}},
        {"apkfile-refuses",
         changed([](LintManifest &manifest) { manifest.closing = QStringLiteral("other"); }),
         {finding("apkfile-refuses", warning, QString(),
                  "SorrelKit reads the package, ApkFile does not (code 5, could not parse AndroidManifest.xml: closing "
                  "tag does not match opening tag).")}},
        {"apkfile-refuses, a negative string index",
         lintPackageWithChunk(nodeChunk(0x0100, Bytes().u32(-1).u32(0).data())),
         {finding("android-takes", note, manifestName, "A namespace ends twice, or never; Android does not check it."),
          finding("apkfile-refuses", warning, QString(),
                  "SorrelKit reads the package, ApkFile does not (code 5, could not parse AndroidManifest.xml: bad "
                  "index in  pool).")}},
        {"no-manifest",
         zip({{tableName, lintTable()}, lintIcon()}),
         {finding("no-manifest", fault, QString(), "The file has no readable manifest; it is not an Android package.")},
         4},
        {"damaged-manifest",
         lintPackageFile(lintTable(), lintManifest().chopped(1)),
         {finding("damaged-manifest", fault, manifestName,
                  "The manifest cannot be read (could not parse AndroidManifest.xml: not a binary XML document).")},
         5},
        {"damaged-manifest, to SorrelKit alone",
         lintPackageFile(lintTable(), XmlBuilder().start(QStringLiteral("manifest")).build()),
         {finding("damaged-manifest", fault, manifestName,
                  "The manifest cannot be read (could not parse AndroidManifest.xml: XML document without an element). "
                  "ApkFile "
                  "still reads it.")},
         5},
        {"damaged-manifest, to ApkFile and without a type",
         lintPackageFile(lintTable(), untyped.chopped(1)),
         {finding("damaged-manifest", fault, manifestName,
                  "The manifest cannot be read (could not parse AndroidManifest.xml: not a binary XML document).")},
         5},
        {"untyped-manifest",
         lintPackageFile(lintTable(), untyped),
         {finding("untyped-manifest", warning, manifestName,
                  "The manifest's first chunk has no type; SorrelKit and Android read it, ApkFile finds nothing in it "
                  "and reports no error, unless PackageNormalizer sets the type.")}},
        {"unknown-manifest-chunk",
         lintPackageWithChunk(nodeChunk(0x0190, QByteArray())),
         {finding("unknown-manifest-chunk", note, manifestName,
                  "libsorrel skips 1 chunk of unknown type in the manifest (0x0190).")}},
        {"unknown-manifest-chunk, of many",
         lintPackageWithChunk(nodeChunk(0x0190, QByteArray()).repeated(200)),
         {finding("unknown-manifest-chunk", note, manifestName,
                  "libsorrel skips at least 100 chunks of unknown type in the manifest (0x0190).")}},
        {"undeclared-namespace",
         withActivity({name(".Main"), label(), icon(), inOtherNamespace}),
         {finding("undeclared-namespace", warning, manifestName,
                  "The manifest uses undeclared namespaces in 1 place (urn:x); readers that search by prefix miss "
                  "these names.")}},
        {"undeclared-namespace, Android's",
         changed([](LintManifest &manifest) { manifest.isDeclared = false; }),
         {finding("undeclared-namespace", warning, manifestName,
                  "The manifest uses Android's attributes in 7 places without declaring their namespace; readers that "
                  "search by prefix miss them.")}},
        {"different-text",
         withActivity({name(".Main"), writtenAs(label(), QStringLiteral("Notes")), icon()}),
         {finding("different-text", warning, manifestName,
                  "The text differs from the value in 1 attribute of the manifest (label); ApkFile uses the text, "
                  "SorrelKit and Android use the value.")}},
        {"different-text, of many",
         changed([](LintManifest &manifest) {
             manifest.launchers = 6;
             manifest.activity[1] = writtenAs(label(), QStringLiteral("Notes"));
         }),
         {finding("different-text", warning, manifestName,
                  "The text differs from the value in 6 attributes of the manifest (label); ApkFile uses the text, "
                  "SorrelKit and Android use the value.")}},
        {"no-package-name",
         changed([](LintManifest &manifest) { manifest.package = QString(); }),
         {finding("no-package-name", fault, manifestName,
                  "The manifest has no package name; Android does not install the package.")}},
        {"min-above-target",
         changed([](LintManifest &manifest) { manifest.targetSdk = 21; }),
         {finding("min-above-target", warning, manifestName,
                  "The minimum SDK version 23 is higher than the target SDK version 21.")}},
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
         {finding("no-launcher", note, QString(), "The package has no launcher; home screens do not show it.")}},
        {"no-class",
         withActivity({label(), icon()}),
         {finding("no-class", warning, QString(), "The launcher names no class; nothing can start it.")}},
        {"foreign-class",
         withActivity({name("com.other.Main"), label(), icon()}),
         {finding("foreign-class", note, QStringLiteral("com.other.Main"),
                  "The launcher's class com.other.Main does not begin with the package name; it belongs to another "
                  "project, or the package was renamed.")}},
        {"no-label",
         noLabel,
         {finding("no-label", warning, launcherName,
                  "The launcher's label is missing; hosts show the launcher's name.")}},
        {"no-icon",
         withActivity({name(".Main"), label()}),
         {finding("no-icon", note, launcherName,
                  "The launcher names no icon in the package; home screens show a default icon.")}},
        {"no-icon, of a path that leads nowhere",
         withActivity({name(".Main"), label(), androidText(QStringLiteral("icon"), QStringLiteral("res/none.png"))}),
         {finding("no-icon", note, launcherName,
                  "The launcher names no icon in the package; home screens show a default icon.")}},
        {"platform-icon",
         withActivity({name(".Main"), label(), icon(0x01080093)}),
         {finding("platform-icon", note, launcherName,
                  "The launcher's icon 0x01080093 is one of Android's own; the package does not contain it, and only "
                  "devices show it.")}},
        {"unresolved-icon",
         withActivity({name(".Main"), label(), icon(0x7f020005)}),
         {finding("unresolved-icon", warning, launcherName,
                  "The package has no file for the launcher's icon 0x7f020005; hosts show no icon.")}},
        {"unresolved-icon, of a file that cannot be drawn",
         withTable(lintPackage().type(labelType()).type(xmlIconType()), {xmlIcon(QStringLiteral("odd"))}),
         {finding("unresolved-icon", warning, launcherName,
                  "The launcher's icon cannot be drawn (unsupported drawable <odd>); hosts show no icon."),
          finding("xml-only-icon", note, launcherName,
                  "All files of the launcher's icon are XML; SorrelKit draws it, ApkFile returns no icon.")},
         0,
         true},
        {"partial-icon",
         withTable(lintPackage().type(labelType()).type(iconType()).type(xmlIconType(recent)),
                   {xmlIcon(QStringLiteral("odd"))}),
         {finding(
             "partial-icon", note, launcherName,
             "The launcher's icon is drawn incompletely, or from another of its files (unsupported drawable <odd>).")},
         0,
         true},
        {"xml-only-icon",
         withTable(lintPackage().type(labelType()).type(xmlIconType()), {xmlIcon(QStringLiteral("color"))}),
         {finding("xml-only-icon", note, launcherName,
                  "All files of the launcher's icon are XML; SorrelKit draws it, ApkFile returns no icon.")}},
        {"launchers-skipped",
         withManifest(many),
         {finding("launchers-skipped", note, QString(), "The package has 102 launchers; lint checks the first 100.")}},
        {"launchers-skipped, of many icons",
         lintPackageFile(lintTable(lintPackage().type(labelType()).type(iconType(23))), lintManifest(manyIcons)),
         {finding("launchers-skipped", note, QString(),
                  "Lint did not draw the icons of 3 launchers, because drawing them may take too long.")},
         0,
         true},
        {"launchers-skipped, after an icon that is too much",
         lintPackageFile(lintTable(lintPackage().type(labelType()).type(iconType(23)).type(xmlIconType(recent))),
                         lintManifest(manyIcons), {iconWithin(IconResource)}),
         {finding(
              "partial-icon", note, launcherName,
              "The launcher's icon is drawn incompletely, or from another of its files (drawables nested too deeply)."),
          finding("launchers-skipped", note, QString(),
                  "Lint did not draw the icons of 22 launchers, because drawing them may take too long.")},
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
