// SPDX-License-Identifier: LGPL-2.1-or-later
#include "table/ResourceReference.h"

#include "format/ResourceTypes.h"
#include "table/ApkResourcesData.h"

#include <QLocale>
#include <QStringView>

#include <algorithm>

namespace {

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

} // namespace

ResourceReference::ResourceReference(const QString &text, const ApkResourcesData &table)
{
    const auto slash = text.indexOf(QLatin1Char('/'));
    if (!isMarked(text) || slash < 2 || slash == text.size() - 1
        || !std::all_of(text.cbegin() + slash + 1, text.cend(), isDigit))
        return;
    // A colon at the start or the end is part of the type's name.
    const auto colon = text.indexOf(QLatin1Char(':'));
    const auto typeStart = colon > 1 && colon < slash - 1 ? colon + 1 : 1;
    const QStringView prefix = QStringView(text).mid(1, typeStart - 1);
    const auto matches = [&prefix](const ResourcePackage &package) {
        return (package.id() == ResourceId::ApplicationPackage && prefix.isEmpty()) || package.name() == prefix;
    };
    const auto found = std::find_if(table.packages.cbegin(), table.packages.cend(), matches);
    if (found == table.packages.cend())
        return;
    m_package = &*found;
    m_type = text.mid(typeStart, slash - typeStart);
    m_entry = QLocale::c().toInt(QStringView(text).mid(slash + 1));
}

bool ResourceReference::isMarked(const QString &text)
{
    return text.startsWith(QLatin1Char('@'));
}
