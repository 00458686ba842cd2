// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_LAUNCHERSPAGE_H
#define VIEWER_LAUNCHERSPAGE_H

#include "pages/Page.h"

namespace Viewer {

class CardModel;
class CardView;

/// The entries by which a package is started or used (topic "launchers"), with their icons, by kind: first those of
/// the home screen. An entry that Android does not show is marked.
class LaunchersPage : public Page
{
    Q_OBJECT

public:
    explicit LaunchersPage(QWidget *parent = nullptr);

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
