// SPDX-License-Identifier: LGPL-2.1-or-later
#include "IconLookup.h"

#include "ApkResources.h"
#include "ResourceReference.h"

#include <QSet>
#include <QStringList>

QList<QImage> IconLookup::images(const QString &icon)
{
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
    QSet<QString> visited; // ends references that lead back
    QList<QString> pending = m_resources.lookupAll(icon);
    while (!pending.isEmpty()) {
        const QString item = pending.takeFirst();
        if (visited.contains(item))
            continue;
        visited.insert(item);
        if (ResourceReference::isMarked(item)) {
            for (const QString &value : m_resources.lookupAll(item))
                pending.prepend(value);
            continue;
        }
        const QImage image = m_images.image(item);
        if (!image.isNull())
            found.append(image);
    }
    return found;
}
