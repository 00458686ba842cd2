// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PACKAGEACCESS_H
#define SORRELKIT_PACKAGEACCESS_H

#include "package/EntryData.h"

#include <SorrelKit/Entry.h>
#include <SorrelKit/Package.h>

namespace SorrelKit {

/// The data behind the public classes, for other classes of the kit.
class PackageAccess
{
public:
    static PackageDataPointer data(const Package &package) { return package.d; }
    static Package package(PackageData *data)
    {
        Package package;
        package.d = data;
        return package;
    }
    static const EntryData &data(const Entry &launcher) { return *launcher.d; }
};

} // namespace SorrelKit

#endif
