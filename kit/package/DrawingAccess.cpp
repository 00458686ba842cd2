// SPDX-License-Identifier: LGPL-2.1-or-later
#include "package/DrawingAccess.h"

#include "format/AndroidAttributes.h"
#include "package/PackageAccess.h"

namespace SorrelKit {

namespace SORRELKIT_PRIVATE_NAMESPACE {

DrawingSource &drawingSource(const Package &package)
{
    return *PackageAccess::data(package);
}

EntryIcon entryIcon(const Entry &launcher)
{
    const EntryData &data = PackageAccess::data(launcher);
    if (!data.isValid())
        return {};
    const Manifest::LauncherEntry &entry = data.entry;
    return {data.package.data(), data.package->iconValue(data.innermost(Attr::Icon)),
            entry.isAlias ? entry.target : entry.activity};
}

} // namespace SORRELKIT_PRIVATE_NAMESPACE

} // namespace SorrelKit
