// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/parts/CardModel.h"

#include "pages/parts/PlainToolTip.h"

#include <QStringList>

namespace Viewer {

Card Card::heading(const QString &title)
{
    Card card;
    card.title = title;
    card.isHeading = true;
    return card;
}

void CardModel::setCards(const QList<Card> &cards, int leftOut)
{
    beginResetModel();
    m_cards = cards.mid(0, MaxCards);
    const int missing = leftOut + qMax(0, int(cards.size()) - MaxCards);
    if (missing > 0) {
        Card rest;
        rest.title = tr("and %n more", nullptr, missing);
        m_cards.append(rest);
    }
    endResetModel();
}

int CardModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_cards.size());
}

QVariant CardModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Card &card = m_cards.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return card.title;
    case Qt::DecorationRole:
        return card.icon;
    case Qt::ToolTipRole:
        return plainToolTip({card.title, card.description, card.name});
    case Qt::AccessibleTextRole:
        return card.badge.isEmpty() ? card.title : tr("%1: %2", "badge and title").arg(card.badge, card.title);
    case Qt::AccessibleDescriptionRole:
        return card.description.isEmpty() || card.name.isEmpty() ? card.description + card.name
                                                                 : card.description + QLatin1String("; ") + card.name;
    case BadgeRole:
        return card.badge;
    case DescriptionRole:
        return card.description;
    case NameRole:
        return card.name;
    case OriginalRole:
        return card.original;
    case AlarmingRole:
        return card.isAlarming;
    case HeadingRole:
        return card.isHeading;
    default:
        return {};
    }
}

Qt::ItemFlags CardModel::flags(const QModelIndex &index) const
{
    const bool isHeading = index.isValid() && m_cards.at(index.row()).isHeading;
    return isHeading ? Qt::ItemIsEnabled : Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

} // namespace Viewer
