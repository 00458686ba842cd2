// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/parts/FactTable.h"

#include "pages/parts/PlainToolTip.h"
#include "reading/SafeText.h"

namespace Viewer {

void FactTable::setTitles(const QStringList &titles)
{
    beginResetModel();
    m_titles = titles;
    endResetModel();
}

void FactTable::setRows(const QVector<Row> &rows)
{
    beginResetModel();
    m_rows = rows;
    endResetModel();
}

int FactTable::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int FactTable::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_titles.size());
}

QVariant FactTable::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Row &row = m_rows.at(index.row());
    const QString text = row.texts.value(index.column());
    switch (role) {
    case Qt::DisplayRole:
        return safeText(text);
    case Qt::ToolTipRole:
        return plainToolTip({safeText(text)});
    case OriginalRole:
        return text;
    case MarkedRole:
        return row.isMarked;
    default:
        return {};
    }
}

QVariant FactTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    return orientation == Qt::Horizontal && role == Qt::DisplayRole
               ? QVariant(m_titles.value(section))
               : QAbstractTableModel::headerData(section, orientation, role);
}

} // namespace Viewer
