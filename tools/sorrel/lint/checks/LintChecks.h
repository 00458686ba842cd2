// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LINTCHECKS_H
#define LINTCHECKS_H

#include "LintCheck.h"

#include <vector>

/// What `sorrel lint` looks for: these checks, and those of DiagnosticChecks. `sorrel lint --checks` lists all of them,
/// and docs/lint.md has the same table.
namespace LintChecks {

// The archive.
inline constexpr LintCheck SeveralDirectories{"several-directories", Severity::Warning,
                                              "The archive has several directories; readers use different ones."};
inline constexpr LintCheck AbsoluteName{
    "absolute-name", Severity::Warning,
    "A member's name begins with a slash; unpacking it may write outside of the target directory."};
inline constexpr LintCheck ParentName{
    "parent-name", Severity::Warning,
    "A member's name has the part '..'; unpacking it may write outside of the target directory."};
inline constexpr LintCheck BackslashName{"backslash-name", Severity::Warning,
                                         "A member's name has a backslash, which some systems treat as a slash."};
inline constexpr LintCheck ControlName{"control-name", Severity::Warning,
                                       "A member's name has characters that control a terminal."};
inline constexpr LintCheck LongName{"long-name", Severity::Note,
                                    "A member's name is longer than the 255 bytes that most file systems allow."};
inline constexpr LintCheck WrongChecksum{
    "wrong-checksum", Severity::Warning,
    "A member's content does not have the checksum in the directory; Android does not check it."};
inline constexpr LintCheck CompressedTable{"compressed-table", Severity::Error,
                                           "The resource table is compressed, and the package targets API level 30 or "
                                           "later; Android 11 and later do not install it."};
inline constexpr LintCheck UnalignedTable{"unaligned-table", Severity::Error,
                                          "The resource table's offset is not a multiple of 4, and the package targets "
                                          "API level 30 or later; Android 11 and later do not install it."};

// The manifest and the resource table.
inline constexpr LintCheck PackageSet{"package-set", Severity::Note,
                                      "The file is a set of packages; SorrelKit reads it, ApkFile does not."};
inline constexpr LintCheck ApkFileRefuses{"apkfile-refuses", Severity::Warning,
                                          "SorrelKit reads the package, ApkFile does not."};
inline constexpr LintCheck NoTable{
    "no-table", Severity::Note, "The package has no resource table; ApkFile needs one, SorrelKit and Android do not."};
inline constexpr LintCheck DamagedTable{"damaged-table", Severity::Error,
                                        "The resource table is damaged; labels and icons are missing."};
inline constexpr LintCheck SparseTable{"sparse-table", Severity::Warning,
                                       "The resource table has sparse types; ApkFile does not read them."};
inline constexpr LintCheck ShortOffsetsTable{
    "short-offsets-table", Severity::Warning,
    "The resource table has types with 16-bit offsets; ApkFile does not read them."};
inline constexpr LintCheck CompactTable{"compact-table", Severity::Warning,
                                        "The resource table has compact entries; ApkFile does not read them."};
inline constexpr LintCheck SharedEntriesTable{
    "shared-entries-table", Severity::Warning,
    "Resources share an entry of the resource table; ApkFile finds only the last one."};
inline constexpr LintCheck NoManifest{"no-manifest", Severity::Error,
                                      "The file has no readable manifest; it is not an Android package."};
inline constexpr LintCheck DamagedManifest{"damaged-manifest", Severity::Error,
                                           "The manifest is damaged, or it is not a manifest."};
inline constexpr LintCheck ApkFileFindsNothing{
    "apkfile-finds-nothing", Severity::Warning,
    "ApkFile finds nothing in the manifest and reports no error; SorrelKit and Android read it."};
inline constexpr LintCheck UndeclaredNamespace{
    "undeclared-namespace", Severity::Warning,
    "The manifest uses a namespace that it does not declare; some readers miss the names in it."};
inline constexpr LintCheck DifferentText{"different-text", Severity::Warning,
                                         "The text of an attribute in the manifest differs from its value; ApkFile "
                                         "uses the text, SorrelKit and Android use the value."};
inline constexpr LintCheck NoPackageName{"no-package-name", Severity::Error,
                                         "The manifest has no package name; Android does not install the package."};
inline constexpr LintCheck MinAboveTarget{"min-above-target", Severity::Warning,
                                          "The minimum SDK version is higher than the target SDK version."};

// The launchers.
inline constexpr LintCheck NoLauncher{"no-launcher", Severity::Note,
                                      "The package has no launcher; home screens do not show it."};
inline constexpr LintCheck NoClass{"no-class", Severity::Warning, "A launcher names no class; nothing can start it."};
inline constexpr LintCheck ForeignClass{"foreign-class", Severity::Note,
                                        "A launcher's class does not begin with the package name."};
inline constexpr LintCheck NoLabel{"no-label", Severity::Warning,
                                   "A launcher's label is missing; hosts show the launcher's name."};
inline constexpr LintCheck NoIcon{"no-icon", Severity::Note,
                                  "A launcher names no icon in the package; home screens show a default icon."};
inline constexpr LintCheck PlatformIcon{"platform-icon", Severity::Note,
                                        "A launcher's icon is one of Android's own; the package does not contain it."};
inline constexpr LintCheck UnresolvedIcon{"unresolved-icon", Severity::Warning,
                                          "A launcher's icon is missing, or cannot be drawn; hosts show no icon."};
inline constexpr LintCheck PartialIcon{"partial-icon", Severity::Note,
                                       "A launcher's icon is drawn incompletely, or from another of its files."};
inline constexpr LintCheck XmlOnlyIcon{
    "xml-only-icon", Severity::Note,
    "All files of a launcher's icon are XML; SorrelKit draws it, ApkFile returns no icon."};
inline constexpr LintCheck LaunchersSkipped{"launchers-skipped", Severity::Note,
                                            "The package has more launchers or icons than lint checks."};

// The signatures.
inline constexpr LintCheck Unsigned{"unsigned", Severity::Error,
                                    "The package has no signature; Android does not install it."};
inline constexpr LintCheck NotVerified{"not-verified", Severity::Error,
                                       "The signatures do not verify, so the package may have been changed; Android "
                                       "does not install it."};
inline constexpr LintCheck WeakSignature{"weak-signature", Severity::Warning,
                                         "A signature has a weak hash or a short key; others may be able to forge it."};
inline constexpr LintCheck DebugCertificate{"debug-certificate", Severity::Warning,
                                            "The certificate is for tests; shops refuse the package."};
inline constexpr LintCheck ExpiredCertificate{
    "expired-certificate", Severity::Note,
    "A certificate has expired or is not valid yet; Android installs the package all the same."};
inline constexpr LintCheck V1Only{"v1-only", Severity::Warning,
                                  "The package is signed by scheme v1 alone; Android 7.0 and later accept changes "
                                  "outside of its members, and take longer to install it."};
inline constexpr LintCheck UnprotectedMember{
    "unprotected-member", Severity::Note,
    "A member below META-INF is not protected by scheme v1; anyone can change it for devices that use this scheme."};

/// All checks, in the order of the output.
const std::vector<const LintCheck *> &all();

} // namespace LintChecks

#endif
