// SPDX-License-Identifier: LGPL-2.1-or-later
#include "launchers/IconLookup.h"

#include "ApkResources.h"
#include "table/ResourceReference.h"

#include <QStringList>

#include <set>

namespace {

constexpr int CharactersOfAValue = 16; ///< which take about as much time

}

QList<QImage> IconLookup::images(const QString &icon)
{
    if (!m_characters.spend(CharactersOfAValue + icon.size()))
        return {};
    const auto known = m_known.constFind(icon);
    if (known != m_known.cend())
        return *known;
    const QList<QImage> found = resolved(icon);
    m_known.insert(icon, found);
    return found;
}

QList<QImage> IconLookup::resolved(const QString &icon)
{
    QList<QImage> found;
    std::set<QString> visited; // ends references that lead back
    QList<QString> pending = values(icon);
    while (!pending.isEmpty()) {
        const QString item = pending.takeFirst();
        if (!visited.insert(item).second)
            continue;
        if (ResourceReference::isMarked(item)) {
            for (const QString &value : values(item))
                pending.prepend(value);
            continue;
        }
        const QImage image = m_images.image(item);
        if (!image.isNull())
            found.append(image);
    }
    return found;
}

QStringList IconLookup::values(const QString &reference)
{
    QStringList values;
    if (m_characters.isSpent())
        return values;
    for (const QString &value : m_resources.lookupAll(reference)) {
        if (!m_characters.spend(CharactersOfAValue + value.size()))
            break;
        values.append(value);
    }
    return values;
}
