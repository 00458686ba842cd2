// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/treemap/MemberModel.h"

#include "pages/parts/PlainToolTip.h"

namespace Viewer {

MemberModel::MemberModel(QObject *parent) : QAbstractItemModel(parent), m_tree(std::make_shared<MemberTree>()) {}

void MemberModel::setTree(const std::shared_ptr<const MemberTree> &tree)
{
    beginResetModel();
    m_tree = tree;
    endResetModel();
}

QModelIndex MemberModel::indexOf(int node) const
{
    return node <= 0 ? QModelIndex() : createIndex(m_tree->node(node).row, NameColumn, quintptr(node));
}

int MemberModel::nodeOf(const QModelIndex &index) const
{
    return index.isValid() ? int(index.internalId()) : 0;
}

QModelIndex MemberModel::index(int row, int column, const QModelIndex &parent) const
{
    return hasIndex(row, column, parent)
               ? createIndex(row, column, quintptr(m_tree->node(nodeOf(parent)).children.at(row)))
               : QModelIndex();
}

QModelIndex MemberModel::parent(const QModelIndex &index) const
{
    return index.isValid() ? indexOf(m_tree->node(nodeOf(index)).parent) : QModelIndex();
}

int MemberModel::rowCount(const QModelIndex &parent) const
{
    return parent.column() > NameColumn ? 0 : int(m_tree->node(nodeOf(parent)).children.size());
}

int MemberModel::columnCount(const QModelIndex &) const
{
    return ColumnCount;
}

QVariant MemberModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const int number = nodeOf(index);
    const MemberTree::Node &node = m_tree->node(number);
    switch (role) {
    case Qt::TextAlignmentRole:
        return index.column() == NameColumn ? QVariant() : QVariant(int(Qt::AlignRight | Qt::AlignVCenter));
    case Qt::ToolTipRole:
        return plainToolTip({m_tree->shownName(number), m_tree->description(number)});
    case Qt::AccessibleDescriptionRole:
        return index.column() == NameColumn ? QVariant(m_tree->description(number)) : QVariant();
    case Qt::DisplayRole:
        break;
    default:
        return {};
    }
    switch (index.column()) {
    case SizeColumn:
        return MemberTree::sizeText(node.size);
    case PackedColumn:
        return MemberTree::sizeText(node.packed);
    case ShareColumn:
        return m_tree->shareText(number);
    default:
        return m_tree->shownName(number);
    }
}

QVariant MemberModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractItemModel::headerData(section, orientation, role);
    switch (section) {
    case SizeColumn:
        return tr("Size");
    case PackedColumn:
        return tr("Packed");
    case ShareColumn:
        return tr("Share");
    default:
        return tr("Name");
    }
}

} // namespace Viewer
