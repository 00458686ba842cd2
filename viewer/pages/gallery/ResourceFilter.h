// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_RESOURCEFILTER_H
#define VIEWER_RESOURCEFILTER_H

#include <QSortFilterProxyModel>

namespace Viewer {

class DrawableStore;

/// The rows of a FactTable of resources whose name or value has a text, capital and small letters alike.
class ResourceFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    static constexpr int MaxWanted = 256; ///< UTF-16 units of the text

    using QSortFilterProxyModel::QSortFilterProxyModel;

    /// Only rows that are marked, which are drawables of @p store. Their tooltips and accessible descriptions have the
    /// errors of the store.
    void setDrawables(const DrawableStore *store);
    void setWanted(const QString &text);

    QVariant data(const QModelIndex &index, int role) const override;

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    const DrawableStore *m_store = nullptr;
    QString m_wanted;
};

} // namespace Viewer

#endif
