// SPDX-License-Identifier: LGPL-2.1-or-later
#include "launchers/IconLookup.h"

#include "ApkResources.h"
#include "table/ResourceReference.h"

#include <QStringList>

#include <set>

namespace {

qint64 workFor(const QString &value)
{
    return Budget::ValueWork + Budget::ByteWork * value.size();
}

} // namespace

QList<QImage> IconLookup::images(const QString &icon)
{
    if (!m_budget.spendWork(workFor(icon)))
        return {};
    const auto known = m_known.constFind(icon);
    if (known != m_known.cend())
        return *known;
    const QList<QImage> found = resolved(icon);
    m_budget.releaseBytes(m_heldBytes);
    m_heldBytes = 0;
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
    // The table makes all values before their cost is known, so a lookup that did not fit is the last one.
    m_isOver = m_isOver || !m_budget.spendWork(Budget::LookupWork);
    if (m_isOver)
        return values;
    for (const QString &value : m_resources.lookupAll(reference)) {
        const qint64 bytes = ValueBytes + qint64(sizeof(QChar)) * value.size();
        m_isOver = !m_budget.spendWork(workFor(value)) || !m_budget.holdBytes(bytes);
        if (m_isOver)
            break;
        m_heldBytes += bytes;
        values.append(value);
    }
    return values;
}
