// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_CARDMODEL_H
#define VIEWER_CARDMODEL_H

#include <QAbstractListModel>
#include <QIcon>
#include <QList>

namespace Viewer {

/// A row of CardView. The texts are as they are shown: strangers' texts went through safeText().
struct Card {
    QString title;       ///< up to CardDelegate::MaxTitleLines lines
    QString badge;       ///< a word before the title, such as "Dangerous"
    QString description; ///< up to CardDelegate::MaxLines lines
    QString name;        ///< a technical name, in small letters
    QString original;    ///< the text that is copied: exactly the stranger's
    QIcon icon;
    bool isAlarming = false;
    bool isHeading = false; ///< a heading of the rows below it

    static Card heading(const QString &title);
};

/// The rows of a CardView. It keeps at most MaxCards rows, and a last one for those that are left out.
class CardModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role {
        BadgeRole = Qt::UserRole,
        DescriptionRole,
        NameRole,
        OriginalRole, ///< the text that is copied
        AlarmingRole,
        HeadingRole,
    };

    static constexpr int MaxCards = 2048;

    using QAbstractListModel::QAbstractListModel;

    /// Replaces all rows. @p leftOut is the number of rows that are missing in @p cards.
    void setCards(const QList<Card> &cards, int leftOut = 0);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    QList<Card> m_cards;
};

} // namespace Viewer

#endif
