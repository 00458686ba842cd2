// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PERMISSIONDATA_H
#define SORRELKIT_PERMISSIONDATA_H

#include "permissions/PermissionRequest.h"
#include "permissions/PermissionWords.h"

#include <QExplicitlySharedDataPointer>
#include <QSharedData>

namespace SorrelKit {

/// The data of a Permission. All permissions of a list share their words.
class PermissionData : public QSharedData
{
public:
    PermissionRequest request;
    QExplicitlySharedDataPointer<PermissionWords> words; ///< null for a permission without a name
};

} // namespace SorrelKit

#endif
