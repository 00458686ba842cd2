// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ResourceReference.h"

#include "ApkResourcesData.h"
#include "ResourceTypes.h"

#include <QRegExp>

#include <algorithm>

ResourceReference::ResourceReference(const QString &text, const ApkResourcesData &table)
{
    const QRegExp pattern(QStringLiteral("@([^:/]+:)?([^/]+)/([0-9]+)"));
    if (!pattern.exactMatch(text))
        return;
    const QString prefix = pattern.cap(1);
    m_type = pattern.cap(2);
    m_entry = pattern.cap(3).toInt();
    const auto answers = [&prefix](const ResourcePackage &package) {
        return (package.id() == ResourceTypes::ApplicationPackageId && prefix.isEmpty()) || package.name() == prefix;
    };
    const auto found = std::find_if(table.packages.cbegin(), table.packages.cend(), answers);
    if (found != table.packages.cend())
        m_package = &*found;
}

bool ResourceReference::isMarked(const QString &text)
{
    return text.startsWith(QLatin1Char('@'));
}
