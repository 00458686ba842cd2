// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_FACTTABLEVIEW_H
#define VIEWER_FACTTABLEVIEW_H

#include <QTreeView>

namespace Viewer {

/// A list with columns of a FactTable, or of a filter of one. Each text has one line, whose middle is left out when it
/// is too long. The keys for copying copy the original text of the current cell.
class FactTableView : public QTreeView
{
    Q_OBJECT

public:
    explicit FactTableView(QAbstractItemModel *model, QWidget *parent = nullptr);

    /// Gives @p column room for a word; the others share the rest.
    void setShortColumn(int column);
};

} // namespace Viewer

#endif
