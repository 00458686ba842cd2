// SPDX-License-Identifier: LGPL-2.1-or-later
#include "launchers/VisibilityRules.h"

#include "ApkResources.h"
#include "document/AndroidNamespace.h"
#include "table/ResourceReference.h"

#include <QDomElement>

namespace {

constexpr int CharactersOfAValue = 16; ///< which take about as much time

}

bool VisibilityRules::isShown(const QDomElement &activity, const QDomElement &application)
{
    const QString no = QStringLiteral("false");
    const QString enabled = QStringLiteral("enabled");
    return resolved(androidAttribute(activity, enabled)) != no && androidAttribute(application, enabled) != no
           && androidAttribute(activity, QStringLiteral("exported")) != no;
}

QString VisibilityRules::resolved(const QString &value)
{
    if (!ResourceReference::isMarked(value))
        return value;
    if (!m_values.spend(value.size() / CharactersOfAValue))
        return {};
    const auto known = m_known.constFind(value);
    if (known != m_known.cend())
        return *known;
    // By configuration there may be fewer: of those that look alike the last one counts.
    if (!m_values.spend(m_resources.lookupAll(value).size()))
        return {};
    return *m_known.insert(value, m_resources.lookupAllByConfig(value).value(QString()));
}
