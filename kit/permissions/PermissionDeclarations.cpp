// SPDX-License-Identifier: LGPL-2.1-or-later
#include "permissions/PermissionDeclarations.h"

#include "format/AndroidAttributes.h"
#include "package/Manifest.h"

namespace SorrelKit {

PermissionDeclarations::PermissionDeclarations(const XmlElement &root)
{
    for (const XmlElement &child : root.children) {
        const bool isGroup = child.name == QLatin1String("permission-group");
        if (!isGroup && child.name != QLatin1String("permission"))
            continue;
        QHash<QString, const XmlElement *> &elements = isGroup ? m_groups : m_permissions;
        const QString name = Manifest::text(child, Attr::Name);
        if (!name.isEmpty() && !elements.contains(name))
            elements.insert(name, &child);
    }
}

} // namespace SorrelKit
