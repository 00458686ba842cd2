// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/PackageSet.h>

#include "sets/PackageSetData.h"
#include "sets/SetAccess.h"

namespace SorrelKit {

PackageSet::PackageSet() : PackageSet(Package()) {}
PackageSet::PackageSet(const QString &fileName) : PackageSet(Package(fileName)) {}
PackageSet::PackageSet(const Package &package) : d(new PackageSetData(package)) {}
PackageSet::PackageSet(const PackageSet &other) = default;
PackageSet::PackageSet(PackageSet &&other) noexcept = default;
PackageSet &PackageSet::operator=(const PackageSet &other) = default;
PackageSet &PackageSet::operator=(PackageSet &&other) noexcept = default;
PackageSet::~PackageSet() = default;

QList<SetPackage> PackageSet::packages() const
{
    QList<SetPackage> packages;
    for (const SetMember &member : d->members())
        packages.append(SetAccess::package(member.facts));
    return packages;
}

QList<ExpansionFile> PackageSet::expansions() const
{
    return d->expansions();
}

QStringList PackageSet::mismatches() const
{
    return d->mismatches();
}

SplitChoice PackageSet::splitsFor(const Device &device) const
{
    return d->choose(device);
}

Package PackageSet::packageFor(const Device &device) const
{
    return d->packageFor(device);
}

} // namespace SorrelKit
