// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_PERMISSIONSPAGE_H
#define VIEWER_PERMISSIONSPAGE_H

#include "pages/Page.h"

namespace Viewer {

class CardModel;
class CardView;

/**
 * The permissions of a package (topic "permissions"): first the dangerous ones, which a user is asked for, then those
 * that Android grants by itself. Each has its words, and its technical name in small letters.
 */
class PermissionsPage : public Page
{
    Q_OBJECT

public:
    explicit PermissionsPage(QWidget *parent = nullptr);

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
