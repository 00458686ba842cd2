// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_FACTLIST_H
#define VIEWER_FACTLIST_H

#include <QJsonObject>
#include <QList>

namespace Viewer {

/// The list "items" of a topic. Items that are no objects count as missing.
class FactList
{
public:
    /// The first @p maxItems items of @p content.
    FactList(const QJsonObject &content, int maxItems);

    const QList<QJsonObject> &items() const { return m_items; }
    /// The number of items that are left out: by this list, and before it, as "more" has it.
    int leftOut() const { return m_leftOut; }

private:
    QList<QJsonObject> m_items;
    int m_leftOut = 0;
};

} // namespace Viewer

#endif
