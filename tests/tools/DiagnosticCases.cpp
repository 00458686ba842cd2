// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DiagnosticCases.h"

#include "Bytes.h"
#include "LintFixture.h"
#include "OddDocuments.h"
#include "OddTables.h"
#include "ZipBuilder.h"

#include <algorithm>

namespace fixture {

namespace {

constexpr int DiskAt = 4; ///< in the end record
constexpr int DiskCountAt = 8;
constexpr int CountAt = 10;
constexpr int CommentSizeAt = 20;
constexpr int RecordPackedSizeAt = 20; ///< in a record of the directory
constexpr int RecordSizeAt = 24;
constexpr int HeaderOffsetAt = 42;
constexpr int LocalFlagsAt = 6; ///< in a member's own header
constexpr int LocalPackedSizeAt = 18;
constexpr int LocalSizeAt = 22;
constexpr int SizesFollowFlag = 8;

const QString theArchive;
const QString theMember = QStringLiteral("a.txt");
const QString theManifest = QStringLiteral("AndroidManifest.xml");
const QString theTable = QStringLiteral("resources.arsc");
const QByteArray cannotOpen("code 1, could not open APK file");
constexpr int RefusedByAndroid = 6;

/// The findings of lint in a package, besides that of the diagnostic.
struct OtherFindings {
    QVector<QJsonObject> findings;
    int errorCode = 0;
};

QJsonObject taken(const char *check, const QString &subject, const QByteArray &text)
{
    return finding(check, QStringLiteral("warning"), subject, text);
}

QJsonObject harmless(const char *check, const QString &subject, const QByteArray &text)
{
    return finding(check, QStringLiteral("note"), subject, text);
}

QJsonObject refused(const char *check, const QString &subject, const QByteArray &text)
{
    return finding(check, QStringLiteral("error"), subject, text);
}

QByteArray withOtherMember(const RawMember &member)
{
    return rawZip(lintMembers({member}));
}

// The archive with another number of members in its end record.
QByteArray withCount(QByteArray archive, int count)
{
    const int end = int(archive.size()) - ZipEndSize;
    poke16(archive, end + DiskCountAt, count);
    poke16(archive, end + CountAt, count);
    return archive;
}

// The archive with a field of the last member's own header and of its record changed; those below 0 stay.
QByteArray withLast(QByteArray archive, int local, int record, int value)
{
    const int recordAt = int(archive.lastIndexOf("PK\1\2"));
    if (local >= 0)
        poke16(archive, int(peek32(archive, recordAt + HeaderOffsetAt)) + local, value);
    if (record >= 0)
        poke16(archive, recordAt + record, value);
    return archive;
}

QVector<LintCase> endCases()
{
    const QByteArray good = rawZip(lintMembers());
    const int end = int(good.size()) - ZipEndSize;
    QByteArray onSeveralDisks = good;
    poke16(onSeveralDisks, end + DiskAt, 1);
    QByteArray withGap = good;
    withGap.insert(end, "gap");
    QByteArray withLongComment = good + QByteArray(0xffff, 'x');
    poke16(withLongComment, end + CommentSizeAt, 0xffff);
    QByteArray withCutComment = good + "abc";
    poke16(withCutComment, end + CommentSizeAt, 5);
    return {
        {"bytes-ahead",
         "12345" + good,
         {refused("bytes-ahead", theArchive,
                  "The archive does not begin with the file; Android refuses the package. [5 bytes; API level 27 and "
                  "later]")},
         RefusedByAndroid},
        {"bytes-behind",
         good + "1",
         {refused("bytes-behind", theArchive,
                  "The file goes on behind the archive; Android refuses the package. [1 byte]")},
         RefusedByAndroid},
        {"cut-comment",
         withCutComment,
         {refused("cut-comment", theArchive,
                  "The file ends before the archive's comment does; Android refuses the package. [2 bytes]")},
         RefusedByAndroid},
        {"long-comment",
         withLongComment,
         {taken("long-comment", theArchive,
                "The archive's comment has so many bytes that some readers do not find the end record; Android finds "
                "it. [65557 bytes]"),
          apkFileRefuses(cannotOpen)}},
        {"directory-gap",
         withGap,
         {taken("directory-gap", theArchive,
                "There are bytes between the directory and the end record; Android skips them, unless a signature of "
                "scheme v2 or later is checked. [3 bytes]"),
          apkFileRefuses("code 2, could not find resources.arsc")}},
        {"disk-numbers",
         onSeveralDisks,
         {taken("disk-numbers", theArchive,
                "The end record claims several disks; Android does not look at these numbers."),
          apkFileRefuses(cannotOpen)}},
        {"empty-archive",
         withCount(good, 0),
         {refused("empty-archive", theArchive, "The end record counts no member; Android refuses the package."),
          refused("no-manifest", theArchive, "The file has no readable manifest; it is not an Android package.")},
         4},
        {"zip64-directory",
         rawZip64(lintMembers()),
         {refused("zip64-directory", theArchive,
                  "The archive has a ZIP64 directory; Android 11 and older refuse the package. [API level 30 and "
                  "older]")}},
    };
}

QVector<LintCase> directoryCases()
{
    RawMember nowhere{"a.txt", "a"};
    nowhere.headerAt = 1 << 30;
    LintManifest odd;
    odd.targetSdk = 21;
    odd.chunk = nodeChunk(0x0190, QByteArray());
    return {
        {"hidden-records",
         withCount(withOtherMember({"a.txt", "a"}), 3),
         {taken("hidden-records", theArchive,
                "The directory has more members than the end record counts; Android does not see the others.")}},
        {"missing-records",
         withCount(rawZip(lintMembers()), 4),
         {refused("missing-records", theArchive,
                  "The directory has fewer members than the end record counts, or a damaged one; Android refuses the "
                  "package. [1 member]")},
         RefusedByAndroid},
        {"offset-behind-members",
         withOtherMember(nowhere),
         {refused("offset-behind-members", theArchive,
                  "A member has an offset at or behind the directory; Android refuses the package. [a.txt]"),
          refused("no-member-header", theMember,
                  "The file is not at its offset in the archive; Android does not open it.")},
         RefusedByAndroid},
        {"invalid-name",
         withOtherMember({"a\xff.txt", "a"}),
         {refused("invalid-name", theArchive,
                  "A member's name has a zero, or is no UTF-8; Android refuses the package. [a\u00ff.txt]")},
         RefusedByAndroid},
        {"duplicate-name",
         rawZip(lintMembers({{"a.txt", "a"}, {"a.txt", "b"}, {"a.txt", "c"}})),
         {refused("duplicate-name", theArchive,
                  "Two members have the same name; Android refuses the package. [a.txt; 2 times]")},
         RefusedByAndroid},
        // SorrelKit reads the last manifest.
        {"duplicate-name, of a manifest",
         withOtherMember({"AndroidManifest.xml", lintManifest(odd)}),
         {refused("duplicate-name", theArchive,
                  "Two members have the same name; Android refuses the package. [AndroidManifest.xml]"),
          harmless("unknown-node", theManifest,
                   "The document has chunks of unknown types; Android skips them. [type 0x0190]"),
          taken("min-above-target", theManifest,
                "The minimum SDK version 23 is higher than the target SDK version 21.")},
         RefusedByAndroid},
    };
}

QVector<LintCase> memberCases()
{
    RawMember elsewhere{"a.txt", "a"};
    elsewhere.headerAt = 1;
    RawMember renamed{"a.txt", "a"};
    renamed.localName = "b.txt";
    RawMember otherSize{"a.txt", "a"};
    otherSize.localSize = 2;
    RawMember otherMethod{"a.txt", "a"};
    otherMethod.localMethod = 8;
    RawMember deflated{"a.txt", deflatedBehindEmptyBlocks(0, "abc")};
    deflated.method = 8;
    RawMember encrypted{"a.txt", "a"};
    encrypted.flags = 1;
    RawMember packed{"a.txt", "a"};
    packed.method = 14;
    const QByteArray good = withOtherMember({"a.txt", "abc"});
    QByteArray past = withLast(withLast(good, LocalSizeAt, RecordSizeAt, 4), LocalPackedSizeAt, RecordPackedSizeAt, 4);
    QVector<RawMember> withOtherManifest = lintMembers();
    withOtherManifest.first().localName = "androidmanifest.XML";
    QVector<RawMember> withOtherSize = lintMembers();
    withOtherSize.first().localSize = 1;
    QVector<RawMember> withOtherMethod = lintMembers();
    withOtherMethod.first().localMethod = 8;
    return {
        {"no-member-header",
         withOtherMember(elsewhere),
         {refused("no-member-header", theMember,
                  "The file is not at its offset in the archive; Android does not open it.")}},
        {"member-name",
         withOtherMember(renamed),
         {refused("member-name", theMember,
                  "The file has another name in its own header; Android does not open it. [b.txt]")}},
        {"member-name, of the manifest",
         rawZip(withOtherManifest),
         {refused("member-name", theManifest,
                  "The file has another name in its own header; Android does not open it. [androidmanifest.XML]")},
         RefusedByAndroid},
        {"member-sizes, of the manifest",
         rawZip(withOtherSize),
         {refused("member-sizes", theManifest,
                  "The file has other sizes or another checksum in its own header; Android does not open it."),
          apkFileRefuses("code 4, could not find AndroidManifest.xml")},
         RefusedByAndroid},
        {"member-method, of the manifest",
         rawZip(withOtherMethod),
         {taken("member-method", theManifest,
                "The file has another compression method in its own header; Android uses that of the directory. "
                "[method 8]"),
          apkFileRefuses("code 4, could not find AndroidManifest.xml")}},
        {"member-sizes",
         withOtherMember(otherSize),
         {refused("member-sizes", theMember,
                  "The file has other sizes or another checksum in its own header; Android does not open it.")}},
        {"member-past-directory",
         past,
         {refused("member-past-directory", theMember,
                  "The file's data does not end before the directory; Android does not open it.")}},
        {"member-inflated-size",
         withLast(withOtherMember(deflated), LocalSizeAt, RecordSizeAt, 4),
         {refused("member-inflated-size", theMember,
                  "The file does not inflate to just its size in the directory; Android does not read it.")}},
        {"member-method",
         withOtherMember(otherMethod),
         {taken("member-method", theMember,
                "The file has another compression method in its own header; Android uses that of the directory. "
                "[method 8]")}},
        {"member-encrypted",
         withOtherMember(encrypted),
         {taken("member-encrypted", theMember, "The file is marked as encrypted; Android does not look at the mark.")}},
        {"member-not-deflated",
         withOtherMember(packed),
         {taken("member-not-deflated", theMember,
                "The file has an unknown compression method; Android 9 and later read it as not compressed, older "
                "versions cannot read it. [method 14; API level 28 and later]")}},
        {"member-stored-sizes",
         withLast(good, LocalPackedSizeAt, RecordPackedSizeAt, 2),
         {taken("member-stored-sizes", theMember,
                "The file is not compressed and has two sizes; Android uses the uncompressed one. [2 bytes]")}},
        {"member-marks-differ",
         withLast(good, LocalFlagsAt, -1, SizesFollowFlag),
         {taken("member-marks-differ", theMember,
                "The file's header and the directory differ about sizes that follow the data; Android uses the mark in "
                "the header.")}},
    };
}

QByteArray bytesOf(const QVector<OddFile> &files, const char *name)
{
    const auto found = std::find_if(files.cbegin(), files.cend(),
                                    [name](const OddFile &file) { return file.name == QLatin1String(name); });
    return found != files.cend() ? found->bytes : QByteArray();
}

// A package whose manifest is the document @p name of oddDocuments(), which has no launcher.
LintCase documentCase(const char *check, const char *name, const QVector<QJsonObject> &findings)
{
    LintCase row{check, lintPackageFile(lintTable(), bytesOf(oddDocuments(), name)), {}};
    for (const QJsonObject &each : findings)
        row.findings.append(each);
    row.findings.append(finding("no-launcher", QStringLiteral("note"), QString(),
                                "The package has no launcher; home screens do not show it."));
    return row;
}

// A package whose table is the table @p name of oddTables(), to which nothing refers.
LintCase tableCase(const char *check, const char *name, const QVector<QJsonObject> &findings)
{
    LintCase row{check, lintPackageFile(bytesOf(oddTables(), name), lintManifest(lintManifestWithoutResources())), {}};
    for (const QJsonObject &each : findings)
        row.findings.append(each);
    return row;
}

QVector<LintCase> documentCases()
{
    const auto badManifest = [](const QByteArray &reason) {
        return apkFileRefuses("code 5, could not parse AndroidManifest.xml: " + reason);
    };
    return {
        documentCase("document-type", "root of the type 256",
                     {taken("document-type", theManifest,
                            "The document has the type of another chunk; Android does not look at it. [type 0x0100]"),
                      finding("apkfile-finds-nothing", QStringLiteral("warning"), theManifest,
                              "ApkFile finds nothing in the manifest and reports no error; SorrelKit and Android read "
                              "it, ApkFile needs PackageNormalizer to read it.")}),
        documentCase("document-header-size", "header of 12 bytes",
                     {taken("document-header-size", theManifest,
                            "The document's header has an unusual size; Android skips the rest of it. [12 bytes]"),
                      badManifest("file too short")}),
        documentCase("document-bytes-behind", "bytes behind the document",
                     {harmless("document-bytes-behind", theManifest,
                               "There are bytes behind the document; Android does not look at them. [5 bytes]")}),
        documentCase("document-pool-styles", "styles at 1 without a style",
                     {taken("document-pool-styles", theManifest,
                            "The document's string pool has styles outside of it; Android does not look at them."),
                      badManifest("bad input")}),
        documentCase("document-resource-map", "two resource maps",
                     {taken("document-resource-map", theManifest,
                            "The document has several maps of resource ids, or an odd one; Android uses the last "
                            "one. [36 bytes]")}),
        documentCase("no-end-element", "elements without an end",
                     {taken("no-end-element", theManifest, "An element has no end; Android ends it. [application]")}),
        documentCase("attribute-size", "attribute size 22",
                     {taken("attribute-size", theManifest,
                            "Attributes have an unusual size; Android takes it for their distance. [22 bytes]")}),
        documentCase("attribute-name-index", "names behind the pool",
                     {taken("attribute-name-index", theManifest,
                            "The name of an attribute is not in the string pool; Android finds the attribute by its "
                            "resource id. [string 200; 2 times]"),
                      badManifest("bad index in  pool")}),
        documentCase("unknown-node", "unknown node",
                     {harmless("unknown-node", theManifest,
                               "The document has chunks of unknown types; Android skips them. [type 0x0150]")}),
        documentCase("unbalanced-namespaces", "namespace that ends twice",
                     {taken("unbalanced-namespaces", theManifest,
                            "A namespace ends twice, or never; Android does not check it.")}),
    };
}

QVector<LintCase> tableDiagnosticCases()
{
    const auto badTable = [](const QByteArray &reason) {
        return apkFileRefuses("code 3, could not parse resources.arsc: " + reason);
    };
    LintCase uncounted = tableCase(
        "table-pool-count", "too many strings",
        {taken("table-pool-count", theTable,
               "A string pool of the table counts more strings than it has; Android has no resources of the package."),
         refused("damaged-table", theTable,
                 "The resource table cannot be read (could not parse resources.arsc: damaged string pool in resource "
                 "table); labels and icons are missing.")});
    uncounted.errorCode = 3;
    return {
        tableCase("table-bytes-behind", "bytes behind the last chunk of the package",
                  {harmless("table-bytes-behind", theTable,
                            "There are bytes behind the table; Android does not look at them. [4 bytes]"),
                   badTable("file too short")}),
        tableCase("table-pool-styles", "styles at 1 without a style",
                  {taken("table-pool-styles", theTable,
                         "A string pool of the table has styles outside of it; Android does not look at them."),
                   badTable("bad input")}),
        uncounted,
        tableCase("unknown-table-chunk", "unknown chunk in the package",
                  {harmless("unknown-table-chunk", theTable,
                            "The table has chunks of unknown types, or string pools that nothing refers to; Android "
                            "skips them. [type 0x0333]")}),
        tableCase("unnamed-package", "empty name",
                  {harmless("unnamed-package", theTable,
                            "A package of the table has no name; Android finds its resources by their ids. [package "
                            "0x7f]")}),
        tableCase("repeated-package", "two packages of one id",
                  {taken("repeated-package", theTable,
                         "The table has several packages of one id; Android searches all of them. [package 0x7f]")}),
        tableCase("no-type-pool", "no pools",
                  {taken("no-type-pool", theTable,
                         "A package of the table has no names of types; Android finds its resources by their ids. "
                         "[package 0x7f]"),
                   badTable("Typechunk id out of range")}),
        tableCase("unnamed-type", "type behind the pool",
                  {taken("unnamed-type", theTable,
                         "A type of the table has no name; Android finds its resources by their ids. [type 9]"),
                   badTable("Typechunk id out of range")}),
        tableCase("configuration-size", "configuration of 1000 bytes",
                  {taken("configuration-size", theTable,
                         "A configuration of the table has an unusual size; Android reads the fields that it knows."),
                   badTable("file too short")}),
        tableCase("entry-past-chunk", "entry at 1000",
                  {taken("entry-past-chunk", theTable,
                         "An entry of the table does not end within its chunk; it has no value for Android. [entry "
                         "0]"),
                   badTable("resource table contains entry not in index")}),
        tableCase(
            "library-chunk", "library",
            {harmless("library-chunk", theTable, "The table names the shared libraries that its references lead to.")}),
        tableCase("overlay-chunk", "overlay",
                  {harmless("overlay-chunk", theTable, "The table has resources that others may overlay.")}),
        tableCase("staged-alias", "alias of an application",
                  {harmless("staged-alias", theTable,
                            "The table has aliases of staged resources; Android 13 and later follow those of the "
                            "platform's package. [API level 33 and later]")}),
    };
}

} // namespace

QVector<LintCase> diagnosticCases()
{
    return endCases() + directoryCases() + memberCases() + documentCases() + tableDiagnosticCases();
}

} // namespace fixture
