// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/parts/CardDelegate.h"

#include "pages/parts/CardModel.h"
#include "pages/parts/Contrast.h"
#include "pages/parts/TextLines.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QPainter>

namespace Viewer {

namespace {

QFont scaledFont(const QFont &font, double scale)
{
    QFont scaled = font;
    if (font.pointSizeF() > 0)
        scaled.setPointSizeF(font.pointSizeF() * scale);
    else
        scaled.setPixelSize(qMax(1, qRound(font.pixelSize() * scale)));
    return scaled;
}

QFont boldFont(const QFont &font)
{
    QFont bold = font;
    bold.setBold(true);
    return bold;
}

// The parts of a row that is `width` wide, and their lines.
class CardParts
{
public:
    CardParts(const QStyleOptionViewItem &option, const QModelIndex &index, int width)
        : m_margin(option.fontMetrics.height() / 3),
          m_isHeading(index.data(CardModel::HeadingRole).toBool()),
          m_iconSize(m_isHeading ? QSize(0, 0) : option.decorationSize),
          m_badge(index.data(CardModel::BadgeRole).toString()),
          m_badgeWidth(m_badge.isEmpty() ? 0 : QFontMetrics(option.font).horizontalAdvance(m_badge) + 2 * m_margin),
          m_title(index.data(Qt::DisplayRole).toString(), titleFont(option.font), textWidth(width) - titleLeft(),
                  m_isHeading ? 1 : CardDelegate::MaxTitleLines),
          m_description(index.data(CardModel::DescriptionRole).toString(), option.font, textWidth(width),
                        CardDelegate::MaxLines),
          m_name(index.data(CardModel::NameRole).toString(), scaledFont(option.font, 0.9), textWidth(width), 1)
    {
    }

    int height() const
    {
        const int texts = m_title.height() + m_description.height() + m_name.height();
        return qMax(m_iconSize.height(), texts) + 2 * m_margin + (m_isHeading ? m_margin : 0);
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
    {
        const bool isSelected = (option.state & QStyle::State_Selected) != 0;
        const QPalette::ColorGroup group =
            (option.state & QStyle::State_Active) != 0 ? QPalette::Active : QPalette::Inactive;
        const QColor background = option.palette.color(group, isSelected ? QPalette::Highlight : QPalette::Base);
        const QColor text = option.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text);
        const QColor faint = readable(mixed(text, background, 0.7), background);
        const QColor alarm = isSelected ? text : readable(QColor(Qt::red), background);

        const QRect inner = option.rect.adjusted(m_margin, m_margin, -m_margin, -m_margin);
        const QRect icon(inner.topLeft(), m_iconSize);
        qvariant_cast<QIcon>(index.data(Qt::DecorationRole))
            .paint(painter, QStyle::visualRect(option.direction, inner, icon));
        QRect line(inner.left() + textLeft(), inner.top() + (m_isHeading ? m_margin : 0), inner.width() - textLeft(),
                   0);
        const auto paintPart = [&](const TextLines &part, const QColor &color) {
            line.setHeight(part.height());
            painter->setPen(color);
            part.paint(painter, QStyle::visualRect(option.direction, inner, line), option.direction);
            line.translate(0, part.height());
        };
        line.setHeight(m_title.height());
        paintBadge(painter, option, QStyle::visualRect(option.direction, inner, line),
                   index.data(CardModel::AlarmingRole).toBool() ? alarm : text);
        line.setLeft(line.left() + titleLeft());
        paintPart(m_title, text);
        line.setLeft(inner.left() + textLeft());
        paintPart(m_description, text);
        paintPart(m_name, faint);
    }

private:
    // A word in a frame, where the line begins.
    void paintBadge(QPainter *painter, const QStyleOptionViewItem &option, const QRect &line, const QColor &color) const
    {
        if (m_badge.isEmpty())
            return;
        const QRect badge(line.topLeft(), QSize(m_badgeWidth, line.height()));
        const QRect place = QStyle::visualRect(option.direction, line, badge);
        painter->setPen(color);
        painter->setFont(option.font);
        painter->drawText(place, int(Qt::AlignCenter | Qt::TextSingleLine), m_badge);
        painter->setRenderHint(QPainter::Antialiasing);
        painter->drawRoundedRect(QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5), m_margin / 2.0, m_margin / 2.0);
        painter->setRenderHint(QPainter::Antialiasing, false);
    }

    int titleLeft() const { return m_badgeWidth == 0 ? 0 : m_badgeWidth + m_margin; }
    QFont titleFont(const QFont &font) const { return boldFont(m_isHeading ? scaledFont(font, 1.15) : font); }
    int textLeft() const { return m_iconSize.width() == 0 ? 0 : m_iconSize.width() + 2 * m_margin; }
    int textWidth(int width) const { return width - 2 * m_margin - textLeft(); }

    const int m_margin;
    const bool m_isHeading;
    const QSize m_iconSize;
    const QString m_badge;
    const int m_badgeWidth;
    const TextLines m_title;
    const TextLines m_description;
    const TextLines m_name;
};

} // namespace

void CardDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem card = option;
    initStyleOption(&card, index);
    if (index.data(CardModel::HeadingRole).toBool())
        card.state &= ~QStyle::State_MouseOver;
    const QWidget *const widget = option.widget;
    const QStyle *const style = widget != nullptr ? widget->style() : QApplication::style();
    painter->save();
    // Marks above and below letters do not reach other rows.
    painter->setClipRect(option.rect, Qt::IntersectClip);
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &card, painter, widget);
    card.decorationSize = option.decorationSize;
    CardParts(card, index, option.rect.width()).paint(painter, card, index);
    if ((option.state & QStyle::State_HasFocus) != 0) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(card);
        focus.state |= QStyle::State_KeyboardFocusChange;
        focus.backgroundColor =
            card.palette.color((option.state & QStyle::State_Selected) != 0 ? QPalette::Highlight : QPalette::Base);
        style->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, widget);
    }
    painter->restore();
}

QSize CardDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const auto *const view = qobject_cast<const QAbstractItemView *>(option.widget);
    const int width = view != nullptr ? view->viewport()->width() : option.rect.width();
    // The view gives each row its own width.
    return QSize(option.fontMetrics.averageCharWidth(), CardParts(option, index, width).height());
}

} // namespace Viewer
