// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/parts/CardView.h"

#include "pages/parts/CardDelegate.h"
#include "pages/parts/CardModel.h"
#include "pages/parts/CopyAction.h"

#include <QStyle>

namespace Viewer {

CardView::CardView(CardModel *model, QWidget *parent) : QListView(parent)
{
    setModel(model);
    setItemDelegate(new CardDelegate(this));
    setEditTriggers(NoEditTriggers);
    // The height of a row depends on the width.
    setResizeMode(Adjust);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    const int side = style()->pixelMetric(QStyle::PM_ListViewIconSize, nullptr, this);
    setIconSize(QSize(side, side));
    connect(model, &QAbstractItemModel::modelReset, this, &CardView::startAtCard);
    addCopyAction(this, [this] { return currentIndex().data(CardModel::OriginalRole).toString(); });
}

void CardView::startAtCard()
{
    int row = 0;
    while (row < model()->rowCount() && model()->index(row, 0).data(CardModel::HeadingRole).toBool())
        ++row;
    selectionModel()->setCurrentIndex(model()->index(row, 0), QItemSelectionModel::NoUpdate);
}

} // namespace Viewer
