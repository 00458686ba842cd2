// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PERMISSIONDECLARATIONS_H
#define SORRELKIT_PERMISSIONDECLARATIONS_H

#include "format/XmlElement.h"

#include <QHash>
#include <QString>

namespace SorrelKit {

/// Finds the permissions and the groups that a manifest declares. The manifest outlives this object.
class PermissionDeclarations
{
public:
    /// Goes over the children of @p root once.
    explicit PermissionDeclarations(const XmlElement &root);

    /// The element `permission` that declares the permission @p name; the first of several, and null when there is none.
    const XmlElement *permission(const QString &name) const { return m_permissions.value(name); }
    /// The same for an element `permission-group`.
    const XmlElement *group(const QString &name) const { return m_groups.value(name); }

private:
    QHash<QString, const XmlElement *> m_permissions;
    QHash<QString, const XmlElement *> m_groups;
};

} // namespace SorrelKit

#endif
