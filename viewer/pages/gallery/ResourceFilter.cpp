// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/gallery/ResourceFilter.h"

#include "pages/gallery/DrawableStore.h"
#include "pages/parts/FactTable.h"
#include "pages/parts/PlainToolTip.h"

namespace Viewer {

void ResourceFilter::setDrawables(const DrawableStore *store)
{
    m_store = store;
    invalidateFilter();
}

void ResourceFilter::setWanted(const QString &text)
{
    m_wanted = text.left(MaxWanted);
    invalidateFilter();
}

QVariant ResourceFilter::data(const QModelIndex &index, int role) const
{
    if (m_store == nullptr || (role != Qt::ToolTipRole && role != Qt::AccessibleDescriptionRole))
        return QSortFilterProxyModel::data(index, role);
    const DrawableStore::Drawable *const drawable =
        m_store->peek(QSortFilterProxyModel::data(index, FactTable::OriginalRole).toString());
    const QString error = drawable == nullptr ? QString() : drawable->error;
    return role == Qt::ToolTipRole ? plainToolTip({index.data().toString(), error}) : error;
}

bool ResourceFilter::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    const auto text = [&](int column) {
        return sourceModel()->index(row, column, parent).data(FactTable::OriginalRole).toString();
    };
    if (m_store != nullptr && !sourceModel()->index(row, 0, parent).data(FactTable::MarkedRole).toBool())
        return false;
    return m_wanted.isEmpty() || text(0).contains(m_wanted, Qt::CaseInsensitive)
           || (m_store == nullptr && text(2).contains(m_wanted, Qt::CaseInsensitive));
}

} // namespace Viewer
