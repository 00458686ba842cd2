// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_CONTENTSPAGE_H
#define VIEWER_CONTENTSPAGE_H

#include "pages/Page.h"

class QToolButton;
class QTreeView;

namespace Viewer {

class ElidedLabel;
class MemberModel;
class TreemapView;

/**
 * The members of a package by size (topic "contents"): a treemap of a folder, and below it all members as a tree. What
 * is current in one is current in the other.
 */
class ContentsPage : public Page
{
    Q_OBJECT

public:
    explicit ContentsPage(QWidget *parent = nullptr);

    QString title() const override;
    QStringList topics() const override;
    void take(const QString &topic, const QJsonObject &content) override;
    void clear() override;

private:
    void setItems(const QList<QJsonObject> &items);
    void showCurrent(int node);
    void showFolder(int folder);
    void describe(int node);

    MemberModel *const m_model;
    TreemapView *const m_treemap;
    QTreeView *const m_tree;
    QToolButton *const m_up;
    ElidedLabel *const m_folder;
    ElidedLabel *const m_details;
    bool m_isSynchronizing = false;
};

} // namespace Viewer

#endif
