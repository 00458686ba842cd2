// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PERMISSIONREQUEST_H
#define SORRELKIT_PERMISSIONREQUEST_H

#include <QString>

namespace SorrelKit {

/// A permission that a manifest requests, or that Android adds.
struct PermissionRequest {
    QString name;
    int minSdkVersion = 0; ///< 0 for every level
    int maxSdkVersion = 0; ///< 0 for every level
    bool isRequired = true;
    QString impliedReason = {}; ///< empty for a request of the manifest
};

} // namespace SorrelKit

#endif
