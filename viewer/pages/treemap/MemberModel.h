// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_MEMBERMODEL_H
#define VIEWER_MEMBERMODEL_H

#include "pages/treemap/MemberTree.h"

#include <QAbstractItemModel>

#include <memory>

namespace Viewer {

/// The members of a package as a tree with columns: name, size, packed size and share.
class MemberModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column {
        NameColumn,
        SizeColumn,
        PackedColumn,
        ShareColumn,
        ColumnCount,
    };

    explicit MemberModel(QObject *parent = nullptr);

    void setTree(const std::shared_ptr<const MemberTree> &tree);
    /// The index of @p node in the first column; no index for the package itself.
    QModelIndex indexOf(int node) const;
    /// The node of @p index; 0, the package itself, for no index.
    int nodeOf(const QModelIndex &index) const;

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::shared_ptr<const MemberTree> m_tree;
};

} // namespace Viewer

#endif
