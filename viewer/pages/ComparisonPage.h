// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_COMPARISONPAGE_H
#define VIEWER_COMPARISONPAGE_H

#include "pages/Page.h"

namespace Viewer {

class CardModel;
class CardView;
class ElidedLabel;

/// The differences between a package and another one (topics "otherHead" and "diff"), as DiffCards has them.
class ComparisonPage : public Page
{
    Q_OBJECT

public:
    explicit ComparisonPage(QWidget *parent = nullptr);

    QString title() const override;
    QStringList topics() const override;
    void take(const QString &topic, const QJsonObject &content) override;
    void clear() override;

    const CardModel &model() const { return *m_model; }
    /// The other package in a sentence; empty while it is not known.
    QString otherPackage() const;

private:
    void takeOtherHead(const QJsonObject &content);

    CardModel *const m_model;
    CardView *const m_cards;
    ElidedLabel *const m_other;
};

} // namespace Viewer

#endif
