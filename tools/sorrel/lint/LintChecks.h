// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LINTCHECKS_H
#define LINTCHECKS_H

#include "Finding.h"

/// A check: its name, which stays the same from version to version, how much its findings matter, and what they mean.
struct LintCheck {
    const char *name;
    Severity severity;
    const char *meaning;
};

/// All that `sorrel lint` looks for. `sorrel lint --checks` lists these, and docs/lint.md has the same table.
namespace LintChecks {

// The archive.
inline constexpr LintCheck MultiDisk{"multi-disk", Severity::Error,
                                     "The archive says that it is one of several disks, which no package is."};
inline constexpr LintCheck Zip64{
    "zip64", Severity::Note,
    "The archive has a ZIP64 directory, which few packages need; its members are not looked at."};
inline constexpr LintCheck DamagedDirectory{
    "damaged-directory", Severity::Error, "The archive's directory ends before the number of members that it claims."};
inline constexpr LintCheck SeveralDirectories{
    "several-directories", Severity::Warning,
    "The archive has several directories, of which readers take different ones."};
inline constexpr LintCheck LeadingData{"leading-data", Severity::Warning,
                                       "Other data stands before the archive, so that its offsets lead elsewhere."};
inline constexpr LintCheck TrailingData{"trailing-data", Severity::Warning,
                                        "Other data follows the end of the archive."};
inline constexpr LintCheck EncryptedMember{
    "encrypted-member", Severity::Warning,
    "A member is marked as encrypted: libsorrel ignores the mark, other readers ask for a password."};
inline constexpr LintCheck UnknownMethod{"unknown-method", Severity::Warning,
                                         "A member is neither stored nor deflated, the two forms that packages have."};
inline constexpr LintCheck DuplicateName{
    "duplicate-name", Severity::Warning,
    "Several members have one name: libsorrel and SorrelKit take the last one, other readers the first, or none."};
inline constexpr LintCheck AbsoluteName{"absolute-name", Severity::Warning,
                                        "A member's name begins with a slash, and may be unpacked anywhere."};
inline constexpr LintCheck ParentName{"parent-name", Severity::Warning,
                                      "A member's name has the part '..', and may be unpacked elsewhere."};
inline constexpr LintCheck BackslashName{"backslash-name", Severity::Warning,
                                         "A member's name has a backslash, which some systems take for a slash."};
inline constexpr LintCheck ControlName{"control-name", Severity::Warning,
                                       "A member's name has characters that steer a terminal."};
inline constexpr LintCheck LongName{"long-name", Severity::Note,
                                    "A member's name is longer than the 255 bytes that a file's name may have."};
inline constexpr LintCheck MissingHeader{"missing-header", Severity::Error,
                                         "No member stands where the directory says, so that it cannot be read."};
inline constexpr LintCheck DifferentName{"different-name", Severity::Warning,
                                         "A member's own header has another name for it than the directory."};
inline constexpr LintCheck DifferentMethod{"different-method", Severity::Warning,
                                           "A member's own header has another compression method than the directory."};
inline constexpr LintCheck DifferentSize{
    "different-size", Severity::Warning,
    "A member's own header has other sizes or another checksum than the directory."};
inline constexpr LintCheck CompressedTable{
    "compressed-table", Severity::Error,
    "The resource table is compressed, and the package is for Android 11 or later, which does not install it."};
inline constexpr LintCheck UnalignedTable{
    "unaligned-table", Severity::Error,
    "The resource table stands at no multiple of 4 bytes, and the package is for Android 11 or later, which does not "
    "install it."};

// The manifest and the resource table.
inline constexpr LintCheck PackageSet{"package-set", Severity::Note,
                                      "The file is a set of packages, which ApkFile does not read and SorrelKit does."};
inline constexpr LintCheck ApkFileRefuses{"apkfile-refuses", Severity::Warning,
                                          "libsorrel's ApkFile alone does not read the package."};
inline constexpr LintCheck NoTable{"no-table", Severity::Note,
                                   "There is no resource table: ApkFile needs one, SorrelKit and Android do not."};
inline constexpr LintCheck DamagedTable{"damaged-table", Severity::Error,
                                        "The resource table is damaged: labels and icons are missing."};
inline constexpr LintCheck SparseTable{"sparse-table", Severity::Warning,
                                       "The resource table has sparse types, which ApkFile does not read."};
inline constexpr LintCheck ShortOffsetsTable{
    "short-offsets-table", Severity::Warning,
    "The resource table has types with offsets of 16 bits, which ApkFile does not read."};
inline constexpr LintCheck CompactTable{"compact-table", Severity::Warning,
                                        "The resource table has compact entries, which ApkFile does not read."};
inline constexpr LintCheck SharedEntriesTable{
    "shared-entries-table", Severity::Warning,
    "Resources share entries of the resource table, of which ApkFile finds the last one's alone."};
inline constexpr LintCheck NoManifest{"no-manifest", Severity::Error, "There is no manifest: this is no package."};
inline constexpr LintCheck DamagedManifest{"damaged-manifest", Severity::Error,
                                           "The manifest cannot be read, or is none."};
inline constexpr LintCheck UntypedManifest{
    "untyped-manifest", Severity::Warning,
    "The manifest does not say that it is XML: ApkFile finds nothing in it without an error, Android reads it."};
inline constexpr LintCheck UnknownManifestChunk{"unknown-manifest-chunk", Severity::Note,
                                                "The manifest has chunks of types that libsorrel skips."};
inline constexpr LintCheck UndeclaredNamespace{"undeclared-namespace", Severity::Warning,
                                               "The manifest uses a namespace that it does not declare."};
inline constexpr LintCheck DifferentText{"different-text", Severity::Warning,
                                         "An attribute of the manifest was written as a text that is not its value: "
                                         "ApkFile takes the text, SorrelKit and Android take the value."};
inline constexpr LintCheck UnknownTableChunk{"unknown-table-chunk", Severity::Note,
                                             "The resource table has chunks of types that libsorrel skips."};
inline constexpr LintCheck UnknownStringPool{"unknown-string-pool", Severity::Note,
                                             "The resource table has string pools that nothing refers to."};
inline constexpr LintCheck NoPackageName{"no-package-name", Severity::Error,
                                         "The manifest names no package, without which nothing can be installed."};
inline constexpr LintCheck MinAboveTarget{"min-above-target", Severity::Warning,
                                          "The minimum SDK version is above the one that the package was made for."};

// The launchers.
inline constexpr LintCheck NoLauncher{"no-launcher", Severity::Note,
                                      "There is no launcher: home screens show nothing of the package."};
inline constexpr LintCheck NoClass{"no-class", Severity::Warning, "A launcher names no class, and cannot be started."};
inline constexpr LintCheck ForeignClass{"foreign-class", Severity::Note,
                                        "A launcher's class is outside of the package's own name."};
inline constexpr LintCheck NoLabel{"no-label", Severity::Warning, "A launcher has no label that can be had."};
inline constexpr LintCheck NoIcon{"no-icon", Severity::Note, "A launcher names no icon; home screens show their own."};
inline constexpr LintCheck PlatformIcon{"platform-icon", Severity::Note,
                                        "A launcher's icon is one of Android's own, which the package does not hold."};
inline constexpr LintCheck UnresolvedIcon{"unresolved-icon", Severity::Warning,
                                          "A launcher's icon cannot be had: it leads nowhere, or cannot be drawn."};
inline constexpr LintCheck PartialIcon{"partial-icon", Severity::Note,
                                       "A launcher's icon is drawn in part, or from another file of it."};
inline constexpr LintCheck XmlOnlyIcon{"xml-only-icon", Severity::Note,
                                       "A launcher's icon is XML alone: ApkFile has none, and a host needs SorrelKit."};
inline constexpr LintCheck LaunchersSkipped{"launchers-skipped", Severity::Note,
                                            "There are too many launchers, or too slow ones, to look at all of them."};

/// All of them, in the order in which they are told.
inline constexpr const LintCheck *All[] = {
    &MultiDisk,
    &Zip64,
    &DamagedDirectory,
    &SeveralDirectories,
    &LeadingData,
    &TrailingData,
    &EncryptedMember,
    &UnknownMethod,
    &DuplicateName,
    &AbsoluteName,
    &ParentName,
    &BackslashName,
    &ControlName,
    &LongName,
    &MissingHeader,
    &DifferentName,
    &DifferentMethod,
    &DifferentSize,
    &CompressedTable,
    &UnalignedTable,
    &PackageSet,
    &ApkFileRefuses,
    &NoTable,
    &DamagedTable,
    &SparseTable,
    &ShortOffsetsTable,
    &CompactTable,
    &SharedEntriesTable,
    &NoManifest,
    &DamagedManifest,
    &UntypedManifest,
    &UnknownManifestChunk,
    &UndeclaredNamespace,
    &DifferentText,
    &UnknownTableChunk,
    &UnknownStringPool,
    &NoPackageName,
    &MinAboveTarget,
    &NoLauncher,
    &NoClass,
    &ForeignClass,
    &NoLabel,
    &NoIcon,
    &PlatformIcon,
    &UnresolvedIcon,
    &PartialIcon,
    &XmlOnlyIcon,
    &LaunchersSkipped,
};

} // namespace LintChecks

#endif
