// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_FACTTABLE_H
#define VIEWER_FACTTABLE_H

#include <QAbstractTableModel>
#include <QStringList>
#include <QVector>

namespace Viewer {

/// Rows of strangers' texts. A text is made safe when it is shown, because only some rows are.
class FactTable : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Role {
        OriginalRole = Qt::UserRole, ///< the text as the stranger wrote it
        MarkedRole,                  ///< whether the row is marked
    };

    struct Row {
        QStringList texts; ///< one for each column
        bool isMarked = false;
    };

    explicit FactTable(QObject *parent = nullptr) : QAbstractTableModel(parent) {}

    /// The titles of the columns, in the user's language. The number of columns does not change afterwards.
    void setTitles(const QStringList &titles);
    void setRows(const QVector<Row> &rows);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QStringList m_titles;
    QVector<Row> m_rows;
};

} // namespace Viewer

#endif
