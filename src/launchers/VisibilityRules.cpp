// SPDX-License-Identifier: LGPL-2.1-or-later
#include "launchers/VisibilityRules.h"

#include "ApkResources.h"
#include "document/DomAttributes.h"
#include "table/ResourceReference.h"

#include <QDomElement>

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
    // The values are counted by a lookup that costs as well, so one that does not fit is the last one.
    m_isOver = m_isOver || !m_budget.spendWork(Budget::ByteWork * value.size());
    if (m_isOver)
        return {};
    const auto known = m_known.constFind(value);
    if (known != m_known.cend())
        return *known;
    // The map by configuration may be smaller: of configurations with one text, the last one counts.
    m_isOver = !m_budget.spendWork(StateWork * m_resources.lookupAll(value).size());
    if (m_isOver)
        return {};
    return *m_known.insert(value, m_resources.lookupAllByConfig(value).value(QString()));
}
