// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/parts/FactTableView.h"

#include "pages/parts/CopyAction.h"
#include "pages/parts/FactTable.h"

#include <QHeaderView>

namespace Viewer {

FactTableView::FactTableView(QAbstractItemModel *model, QWidget *parent) : QTreeView(parent)
{
    setModel(model);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setEditTriggers(NoEditTriggers);
    setTextElideMode(Qt::ElideMiddle);
    // A long text does not widen its column.
    header()->setSectionResizeMode(QHeaderView::Stretch);
    header()->setSectionsMovable(false);
    addCopyAction(this, [this] { return currentIndex().data(FactTable::OriginalRole).toString(); });
}

void FactTableView::setShortColumn(int column)
{
    header()->setSectionResizeMode(column, QHeaderView::Interactive);
    header()->resizeSection(column, 14 * fontMetrics().averageCharWidth());
}

} // namespace Viewer
