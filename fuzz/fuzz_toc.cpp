// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Harness.h"

#include "GuardedBytes.h"
#include "SetFixture.h"
#include "limits/Budget.h"
#include "sets/TocChooser.h"

#include <vector>

using namespace fixture;
using namespace SorrelKit;

namespace {

constexpr qint64 MaxWork = 1 << 26;

std::vector<SetMember> membersOfSet()
{
    std::vector<SetMember> members;
    for (const char *path : {"base.apk", "de.apk", "en.apk", "64.apk", "xxhdpi.apk", "old.apk", "asset.apk"}) {
        SetMember member;
        member.facts.path = QString::fromLatin1(path);
        member.hasManifest = true;
        member.facts.kind = SetPackageKind::Base;
        member.classify();
        members.push_back(std::move(member));
    }
    return members;
}

/// The values of @p dimension and its alternatives.
template <typename Value>
int valuesOf(const Targeting::Dimension<Value> &dimension)
{
    return int(dimension.values.size() + dimension.alternatives.size());
}

int valuesOf(const Targeting &targeting)
{
    return valuesOf(targeting.sdkVersions) + valuesOf(targeting.abis) + valuesOf(targeting.abiSets)
           + valuesOf(targeting.languages) + valuesOf(targeting.densities) + valuesOf(targeting.textures);
}

void checkCeilings(const TocReader &toc)
{
    int values = 0;
    int modules = 0;
    int packages = int(toc.assets().size());
    for (const TocReader::Apk &apk : toc.assets())
        values += valuesOf(apk.targeting);
    for (const TocReader::Variant &variant : toc.variants()) {
        values += valuesOf(variant.targeting);
        modules += int(variant.modules.size());
        for (const TocReader::Module &module : variant.modules) {
            values += int(module.features.size()) + valuesOf(module.sdkVersions);
            packages += int(module.apks.size());
            for (const TocReader::Apk &apk : module.apks)
                values += valuesOf(apk.targeting);
        }
    }
    if (toc.variants().size() > TocReader::MaxVariants || modules > TocReader::MaxModules
        || packages > TocReader::MaxPackages || values > TocReader::MaxValues)
        failed("a table is larger than the ceilings");
}

} // namespace

// A table of contents. The harness chooses packages of a small set by it.
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const std::vector<SetMember> members = membersOfSet();
    static const DeviceMatch match{phone()};
    const GuardedBytes guarded(QByteArray(reinterpret_cast<const char *>(data), int(size)));
    Budget budget(MaxWork, 0);
    const TocReader toc(guarded.atPageEnd(), &budget);
    if (budget.workLeft() < 0)
        failed("the budget is overdrawn");
    checkCeilings(toc);
    if (!toc.isWhole())
        return 0;
    const SplitChoice choice = TocChooser(toc, members, match).choose();
    if (choice.fits() != choice.message().isEmpty() || choice.fits() == choice.packages().isEmpty())
        failed("a choice has packages and an error, or neither");
    if (choice.packages().size() > int(members.size()))
        failed("a package is chosen twice");
    for (const SetPackage &package : choice.packages()) {
        if (package.reason() == SetPackage::Reason::None || package.reasonText().isEmpty())
            failed("a package is chosen for no reason");
    }
    return 0;
}
