// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Package.h>

#include "permissions/PermissionData.h"
#include "permissions/PermissionRequests.h"

namespace SorrelKit {

QStringList Package::permissionNames() const
{
    QStringList names;
    for (const PermissionRequest &request : PermissionRequests::inManifest(*d))
        names.append(request.name);
    return names;
}

QList<Permission> Package::permissions() const
{
    QList<Permission> permissions;
    if (!isValid())
        return permissions;
    const QExplicitlySharedDataPointer<PermissionWords> words(new PermissionWords(d));
    const QVector<PermissionRequest> requests =
        PermissionRequests::withImplied(PermissionRequests::inManifest(*d), targetSdkVersion());
    for (const PermissionRequest &request : requests) {
        auto *const data = new PermissionData;
        data->request = request;
        data->words = words;
        permissions.append(Permission(data));
    }
    return permissions;
}

} // namespace SorrelKit
