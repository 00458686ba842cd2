// SPDX-License-Identifier: LGPL-2.1-or-later
#include "LintChecks.h"

#include "DiagnosticChecks.h"

#include <iterator>

namespace {

using namespace LintChecks;

constexpr const LintCheck *beforeDiagnostics[] = {
    &SeveralDirectories, &AbsoluteName,  &ParentName,      &BackslashName,  &ControlName,
    &LongName,           &WrongChecksum, &CompressedTable, &UnalignedTable,
};

constexpr const LintCheck *behindDiagnostics[] = {
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
    &ApkFileFindsNothing,
    &UndeclaredNamespace,
    &DifferentText,
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
    &Unsigned,
    &NotVerified,
    &WeakSignature,
    &DebugCertificate,
    &ExpiredCertificate,
    &V1Only,
    &UnprotectedMember,
};

std::vector<const LintCheck *> allChecks()
{
    std::vector<const LintCheck *> checks(std::begin(beforeDiagnostics), std::end(beforeDiagnostics));
    for (const LintCheck &check : DiagnosticChecks::all())
        checks.push_back(&check);
    checks.insert(checks.end(), std::begin(behindDiagnostics), std::end(behindDiagnostics));
    return checks;
}

} // namespace

const std::vector<const LintCheck *> &LintChecks::all()
{
    static const std::vector<const LintCheck *> checks = allChecks();
    return checks;
}
