// SPDX-License-Identifier: LGPL-2.1-or-later
#include "IconMembers.h"

#include <QDomElement>
#include <QLatin1Char>

namespace SorrelKit {

namespace {

constexpr int CharactersOfAValue = 16; ///< which take about as much time

bool mayHaveALaunchersIcon(const QDomElement &element)
{
    const QString tag = element.tagName();
    return tag.startsWith(QLatin1String("activity")) || tag == QLatin1String("application")
           || tag == QLatin1String("intent-filter");
}

// The element after @p element in the order of the document.
QDomElement next(QDomElement element)
{
    QDomElement found = element.firstChildElement();
    for (; found.isNull() && !element.isNull(); element = element.parentNode().toElement())
        found = element.nextSiblingElement();
    return found;
}

} // namespace

QStringList IconMembers::paths(const QDomDocument &manifest)
{
    const QString android = QStringLiteral("http://schemas.android.com/apk/res/android");
    const QString icon = QStringLiteral("icon");
    for (QDomElement element = manifest.documentElement(); !element.isNull(); element = next(element)) {
        if (mayHaveALaunchersIcon(element) && element.hasAttributeNS(android, icon))
            follow(element.attributeNS(android, icon));
    }
    return m_paths;
}

void IconMembers::follow(const QString &icon)
{
    QStringList pending{icon};
    while (!pending.isEmpty() && m_paths.size() < MaxPaths) {
        const QString item = pending.takeLast();
        if (m_visited.contains(item) || !m_characters.spend(CharactersOfAValue + item.size()))
            continue;
        m_visited.insert(item);
        if (item.startsWith(QLatin1Char('@')))
            pending += values(item);
        else if (!item.isEmpty() && item.size() <= MaxPathLength)
            m_paths.append(item);
    }
}

QStringList IconMembers::values(const QString &reference)
{
    QStringList values;
    for (const QString &value : m_resources.lookupAll(reference)) {
        if (!m_characters.spend(CharactersOfAValue + value.size()))
            break;
        values.append(value);
    }
    return values;
}

} // namespace SorrelKit
