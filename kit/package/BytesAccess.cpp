// SPDX-License-Identifier: LGPL-2.1-or-later
#include "package/BytesAccess.h"

#include "package/PackageAccess.h"

namespace SorrelKit {

namespace SORRELKIT_PRIVATE_NAMESPACE {

PackageBytes packageBytes(const Package &package)
{
    PackageData &data = *PackageAccess::data(package);
    return {data.bytes(), data.path()};
}

} // namespace SORRELKIT_PRIVATE_NAMESPACE

} // namespace SorrelKit
