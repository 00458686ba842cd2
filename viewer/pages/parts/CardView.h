// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_CARDVIEW_H
#define VIEWER_CARDVIEW_H

#include <QListView>

namespace Viewer {

class CardModel;

/// A list of cards, as CardDelegate paints them. It copies the original text of the current row.
class CardView : public QListView
{
    Q_OBJECT

public:
    explicit CardView(CardModel *model, QWidget *parent = nullptr);

private:
    /// Makes the first row current that is no heading, so that the keyboard begins there.
    void startAtCard();
};

} // namespace Viewer

#endif
