// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PERMISSIONREQUESTS_H
#define SORRELKIT_PERMISSIONREQUESTS_H

#include "permissions/PermissionRequest.h"

#include <QVector>

namespace SorrelKit {

class PackageData;

/// The permissions that a package requests.
class PermissionRequests
{
public:
    /// Permissions of a package at most; those that follow are left out. The largest packages of a system have some
    /// hundreds.
    static constexpr int MaxPermissions = 8192;

    /**
     * The permissions of the elements `uses-permission` and `uses-permission-sdk-23` in the manifest of @p package, each
     * once, in the order of the manifest; up to MaxPermissions.
     *
     * Several elements of one name are one request that holds wherever one of them does, as for Android: it has the
     * widest range of API levels, and it is required when one of them is.
     */
    static QVector<PermissionRequest> inManifest(PackageData &package);

    /**
     * @p requests, and behind them the permissions that Android adds for a package that was made for @p targetSdkVersion:
     *
     * | permission             | is added when                                           |
     * |------------------------|---------------------------------------------------------|
     * | WRITE_EXTERNAL_STORAGE | the package is for API levels below 4                   |
     * | READ_PHONE_STATE       | the same                                                |
     * | READ_EXTERNAL_STORAGE  | WRITE_EXTERNAL_STORAGE is in the list                   |
     * | READ_CALL_LOG          | READ_CONTACTS is, and the package is for levels below 16 |
     * | WRITE_CALL_LOG         | the same for WRITE_CONTACTS                             |
     *
     * A permission that comes with another one has that one's API levels.
     */
    static QVector<PermissionRequest> withImplied(QVector<PermissionRequest> requests, int targetSdkVersion);
};

} // namespace SorrelKit

#endif
