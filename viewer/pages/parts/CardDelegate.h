// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_CARDDELEGATE_H
#define VIEWER_CARDDELEGATE_H

#include <QStyledItemDelegate>

namespace Viewer {

/**
 * Paints the rows of a CardModel: the icon; beside it the badge and the title, the description, and the technical name
 * in small letters. Headings are larger. Lengths come from fonts and the style, colours from the palette.
 */
class CardDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    static constexpr int MaxTitleLines = 2;
    static constexpr int MaxLines = 3; ///< of a description

    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};

} // namespace Viewer

#endif
