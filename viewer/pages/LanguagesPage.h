// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_LANGUAGESPAGE_H
#define VIEWER_LANGUAGESPAGE_H

#include "pages/Page.h"

namespace Viewer {

class FactTable;
class FactTableView;

/// The languages of a package (topic "languages"), each with the application's label in it, which is written in the
/// direction of the language.
class LanguagesPage : public Page
{
    Q_OBJECT

public:
    explicit LanguagesPage(QWidget *parent = nullptr);

    QString title() const override;
    QStringList topics() const override;
    void take(const QString &topic, const QJsonObject &content) override;
    void clear() override;

    const FactTable &model() const { return *m_model; }

private:
    FactTable *const m_model;
    FactTableView *const m_table;
};

} // namespace Viewer

#endif
