// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_FINDINGSPAGE_H
#define VIEWER_FINDINGSPAGE_H

#include "pages/Page.h"

namespace Viewer {

class CardModel;
class CardView;

/// Faults and oddities of a package (topic "lint"): errors, then warnings, then notes, each with an icon and a word.
class FindingsPage : public Page
{
    Q_OBJECT

public:
    explicit FindingsPage(QWidget *parent = nullptr);

    QString title() const override;
    QStringList topics() const override;
    void take(const QString &topic, const QJsonObject &content) override;
    void clear() override;

    const CardModel &model() const { return *m_model; }

private:
    CardModel *const m_model;
    CardView *const m_cards;
};

} // namespace Viewer

#endif
