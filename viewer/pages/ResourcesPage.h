// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_RESOURCESPAGE_H
#define VIEWER_RESOURCESPAGE_H

#include "pages/Page.h"

class QLineEdit;
class QListView;
class QTabWidget;

namespace Viewer {

class DrawableStore;
class FactTable;
class ResourceFilter;

/**
 * The resources of a package (topic "resources") as a list and, for drawables, as a gallery; a field filters both. The
 * page asks for the pictures of drawables that are seen, and gets them as topic "drawable".
 */
class ResourcesPage : public Page
{
    Q_OBJECT

public:
    static constexpr int MaxResources = 65535;

    explicit ResourcesPage(QWidget *parent = nullptr);

    QString title() const override;
    QStringList topics() const override;
    void take(const QString &topic, const QJsonObject &content) override;
    void clear() override;

    const ResourceFilter &list() const { return *m_list; }
    const ResourceFilter &drawables() const { return *m_drawables; }

private:
    void addGallery();
    void filter(const QString &text);
    void showCounts();

    FactTable *const m_model;
    ResourceFilter *const m_list;
    ResourceFilter *const m_drawables;
    DrawableStore *const m_store;
    QLineEdit *const m_field;
    QTabWidget *const m_tabs;
    QListView *const m_gallery;
};

} // namespace Viewer

#endif
