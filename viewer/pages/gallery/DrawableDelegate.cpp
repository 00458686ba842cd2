// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/gallery/DrawableDelegate.h"

#include "pages/gallery/DrawableStore.h"
#include "pages/parts/FactTable.h"
#include "pages/parts/TextLines.h"
#include "reading/SafeText.h"

#include <QApplication>
#include <QPainter>

namespace Viewer {

namespace {

// A light and a dark colour in turns: a drawable of any colour is seen on it.
void paintChecks(QPainter *painter, const QRect &place)
{
    const int side = qMax(1, place.width() / 8);
    QImage checks(2 * side, 2 * side, QImage::Format_RGB32);
    checks.fill(QColor(0xd8, 0xd8, 0xd8));
    QPainter pattern(&checks);
    pattern.fillRect(0, 0, side, side, QColor(0xb0, 0xb0, 0xb0));
    pattern.fillRect(side, side, side, side, QColor(0xb0, 0xb0, 0xb0));
    pattern.end();
    painter->setBrushOrigin(place.topLeft());
    painter->fillRect(place, checks);
}

// The picture's place: in the middle, and as large as it is, or smaller.
QRect pictureIn(const QRect &place, const QSize &size)
{
    QRect picture(QPoint(),
                  size.boundedTo(place.size()) == size ? size : size.scaled(place.size(), Qt::KeepAspectRatio));
    picture.moveCenter(place.center());
    return picture;
}

} // namespace

QSize DrawableDelegate::cellSize(int side, const QFontMetrics &metrics)
{
    const int margin = metrics.height() / 3;
    return QSize(side + 4 * margin, side + 3 * margin + metrics.height());
}

void DrawableDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QWidget *const widget = option.widget;
    const QStyle *const style = widget != nullptr ? widget->style() : QApplication::style();
    const int margin = option.fontMetrics.height() / 3;
    const int side = option.decorationSize.width();
    const QRect place(option.rect.center().x() - side / 2, option.rect.top() + margin, side, side);
    const QRect name(option.rect.left() + margin, place.bottom() + 1 + margin, option.rect.width() - 2 * margin,
                     option.fontMetrics.height());
    const bool isSelected = (option.state & QStyle::State_Selected) != 0;
    const QPalette::ColorGroup group =
        (option.state & QStyle::State_Active) != 0 ? QPalette::Active : QPalette::Inactive;
    painter->save();
    painter->setClipRect(option.rect, Qt::IntersectClip);
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, widget);
    painter->setPen(option.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text));
    const QString resource = index.data(FactTable::OriginalRole).toString();
    const DrawableStore::Drawable *const drawable = m_store->look(resource);
    if (drawable != nullptr && !drawable->picture.isNull()) {
        paintChecks(painter, place);
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        painter->drawImage(pictureIn(place, drawable->picture.size() / painter->device()->devicePixelRatioF()),
                           drawable->picture);
    } else {
        const QString text = drawable == nullptr ? tr("Drawing...") : drawable->error;
        const TextLines lines(text, option.font, side, qMax(1, side / option.fontMetrics.height()));
        lines.paint(painter, place, option.direction);
        painter->drawRect(place.adjusted(0, 0, -1, -1));
    }
    // Package and type are the same for many.
    const QString shortName = safeText(resource.section(QLatin1Char('/'), -1));
    TextLines(shortName.isEmpty() ? index.data().toString() : shortName, option.font, name.width(), 1)
        .paint(painter, name, option.direction);
    if ((option.state & QStyle::State_HasFocus) != 0) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(option);
        focus.state |= QStyle::State_KeyboardFocusChange;
        style->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, widget);
    }
    painter->restore();
}

QSize DrawableDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    return cellSize(option.decorationSize.width(), option.fontMetrics);
}

} // namespace Viewer
