// SPDX-License-Identifier: LGPL-2.1-or-later
#include "package/BytesAccess.h"

#include "format/AndroidAttributes.h"
#include "package/PackageAccess.h"

namespace SorrelKit {

namespace SORRELKIT_PRIVATE_NAMESPACE {

PackageBytes packageBytes(const Package &package)
{
    PackageData &data = *PackageAccess::data(package);
    const ResolvedValue sandbox = data.resolved(data.manifest().root().attribute(Attr::TargetSandboxVersion));
    return {data.bytes(), data.path(), sandbox.value.integer().value_or(0)};
}

} // namespace SORRELKIT_PRIVATE_NAMESPACE

} // namespace SorrelKit
