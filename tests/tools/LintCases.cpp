// SPDX-License-Identifier: LGPL-2.1-or-later
#include "LintCases.h"

#include "Bytes.h"
#include "DiagnosticCases.h"
#include "LintFixture.h"

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

QByteArray unreadableTable()
{
    QVector<RawMember> members = lintMembers({}, lintManifest(lintManifestWithoutResources()));
    members[1].headerAt = 1 << 30;
    return rawZip(members);
}

QJsonObject refusedTable(const QByteArray &reason)
{
    return apkFileRefuses("code 3, could not parse resources.arsc: " + reason);
}

QVector<LintCase> archiveCases()
{
    RawMember otherChecksum{"a.txt", "a"};
    otherChecksum.crc = 1;
    LintManifest recent;
    recent.targetSdk = 30;
    const auto withName = [](const char *name) { return withMember({name, "a"}); };
    return {
        {"several-directories",
         rawZip(lintMembers(), rawZip({{"a.txt", "a"}})),
         {finding("several-directories", warning, QString(),
                  "The archive has another directory before the last one; readers that use it see another package.")}},
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
        {"wrong-checksum",
         withMember(otherChecksum),
         {finding("wrong-checksum", warning, QStringLiteral("a.txt"),
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
    const QByteArray damaged = lintPackageFile(lintTable().chopped(1), lintManifest(lintManifestWithoutResources()));
    return {
        {"no-table",
         zip({{manifestName, lintManifest(lintManifestWithoutResources())}, lintIcon()}),
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
        {"no-member-header, of the table",
         unreadableTable(),
         {finding("offset-behind-members", fault, QString(),
                  "A member has an offset at or behind the directory; Android refuses the package. [resources.arsc]"),
          finding("no-member-header", fault, tableName,
                  "The file is not at its offset in the archive; Android does not open it."),
          apkFileRefuses("code 2, could not find resources.arsc")},
         6},
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
         {finding("unbalanced-namespaces", warning, manifestName,
                  "A namespace ends twice, or never; Android does not check it."),
          apkFileRefuses("code 5, could not parse AndroidManifest.xml: bad index in  pool")}},
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
        {"apkfile-finds-nothing",
         lintPackageFile(lintTable(), untyped),
         {finding("document-type", warning, manifestName,
                  "The document has the type of another chunk; Android does not look at it. [type 0x0000]"),
          finding("apkfile-finds-nothing", warning, manifestName,
                  "ApkFile finds nothing in the manifest and reports no error; SorrelKit and Android read it, ApkFile "
                  "needs PackageNormalizer to read it.")}},
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

QVector<LintCase> lintCases()
{
    return archiveCases() + diagnosticCases() + tableCases() + manifestCases() + launcherCases();
}

} // namespace fixture
