// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_DRAWABLEDELEGATE_H
#define VIEWER_DRAWABLEDELEGATE_H

#include <QStyledItemDelegate>

namespace Viewer {

class DrawableStore;

/// Paints a cell of a gallery: the picture of a drawable, or why there is none, and its name below. Only painting looks
/// into the store, so only cells that are seen are read.
class DrawableDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// The delegate looks into @p store, which lives longer.
    DrawableDelegate(DrawableStore *store, QObject *parent) : QStyledItemDelegate(parent), m_store(store) {}

    /// The size of a cell whose pictures have sides of @p side.
    static QSize cellSize(int side, const QFontMetrics &metrics);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    DrawableStore *const m_store;
};

} // namespace Viewer

#endif
