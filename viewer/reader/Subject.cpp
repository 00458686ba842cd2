// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Subject.h"

#include "Protocol.h"

#include <SorrelKit/PackageSet.h>

QStringList Viewer::Subject::packagePaths() const
{
    QStringList paths;
    for (const SorrelKit::SetPackage &each : SorrelKit::PackageSet(package).packages()) {
        if (!each.path().isEmpty())
            paths.append(each.path());
    }
    return paths;
}

QLocale Viewer::localeOf(const QString &tag)
{
    return tag.isEmpty() ? QLocale::system() : QLocale(tag);
}

QString Viewer::cutText(const QString &text, int length)
{
    constexpr char16_t Ellipsis = 0x2026;
    return text.size() <= length ? text : text.left(length - 1) + QChar(Ellipsis);
}

QString Viewer::cutText(const QString &text)
{
    return cutText(text, Protocol::MaxTextLength);
}

Viewer::ItemList::ItemList(int maxItems) : m_maxItems(maxItems) {}

void Viewer::ItemList::add(const QJsonObject &item)
{
    qint64 length = 0;
    for (const QJsonValue &value : item)
        length += value.toString().size();
    m_isFull = m_isFull || m_items.size() >= m_maxItems || length > Protocol::MaxListLength - m_length;
    if (m_isFull) {
        ++m_more;
        return;
    }
    m_length += length;
    m_items.append(item);
}

QJsonObject Viewer::ItemList::toJson() const
{
    QJsonObject json{{QStringLiteral("items"), m_items}};
    if (m_more > 0)
        json.insert(QStringLiteral("more"), m_more);
    return json;
}
