// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/ResourcesPage.h"

#include "pages/gallery/DrawableDelegate.h"
#include "pages/gallery/DrawableStore.h"
#include "pages/gallery/ResourceFilter.h"
#include "pages/parts/CopyAction.h"
#include "pages/parts/FactList.h"
#include "pages/parts/FactTable.h"
#include "pages/parts/FactTableView.h"

#include <QBoxLayout>
#include <QLineEdit>
#include <QListView>
#include <QLocale>
#include <QStyle>
#include <QTabWidget>

namespace Viewer {

ResourcesPage::ResourcesPage(QWidget *parent)
    : Page(parent),
      m_model(new FactTable(this)),
      m_list(new ResourceFilter(this)),
      m_drawables(new ResourceFilter(this)),
      m_store(new DrawableStore(this)),
      m_field(new QLineEdit),
      m_tabs(new QTabWidget),
      m_gallery(new QListView)
{
    m_model->setTitles({tr("Name"), tr("Type"), tr("Value")});
    m_list->setSourceModel(m_model);
    m_drawables->setSourceModel(m_model);
    m_drawables->setDrawables(m_store);
    m_field->setPlaceholderText(tr("Filter"));
    m_field->setAccessibleName(tr("Text in the names and values to show"));
    m_field->setMaxLength(ResourceFilter::MaxWanted);
    m_field->setClearButtonEnabled(true);

    auto *const table = new FactTableView(m_list);
    table->setAccessibleName(title());
    table->setShortColumn(1);
    addGallery();
    m_tabs->addTab(table, QString());
    m_tabs->addTab(m_gallery, QString());
    m_tabs->setDocumentMode(true);
    showCounts();

    auto *const view = new QWidget;
    auto *const rows = new QVBoxLayout(view);
    rows->setContentsMargins(0, 0, 0, 0);
    auto *const top = new QHBoxLayout;
    const int margin = style()->pixelMetric(QStyle::PM_LayoutLeftMargin) / 2;
    top->setContentsMargins(margin, margin, margin, 0);
    top->addWidget(m_field);
    rows->addLayout(top);
    rows->addWidget(m_tabs, 1);
    view->setFocusProxy(m_field);
    setView(view);
    connect(m_field, &QLineEdit::textChanged, this, &ResourcesPage::filter);
    connect(m_store, &DrawableStore::wants, this, &ResourcesPage::wants);
    connect(m_store, &DrawableStore::changed, m_gallery->viewport(), QOverload<>::of(&QWidget::update));
}

void ResourcesPage::addGallery()
{
    const int side = 5 * fontMetrics().height();
    m_store->setSide(qRound(side * devicePixelRatioF()));
    m_gallery->setModel(m_drawables);
    m_gallery->setItemDelegate(new DrawableDelegate(m_store, this));
    m_gallery->setViewMode(QListView::IconMode);
    m_gallery->setMovement(QListView::Static);
    m_gallery->setResizeMode(QListView::Adjust);
    m_gallery->setUniformItemSizes(true);
    m_gallery->setIconSize(QSize(side, side));
    m_gallery->setGridSize(DrawableDelegate::cellSize(side, fontMetrics()));
    m_gallery->setEditTriggers(QListView::NoEditTriggers);
    m_gallery->setDragEnabled(false);
    m_gallery->setAccessibleName(tr("Drawables"));
    addCopyAction(m_gallery, [this] { return m_gallery->currentIndex().data(FactTable::OriginalRole).toString(); });
}

QString ResourcesPage::title() const
{
    return tr("Resources");
}

QStringList ResourcesPage::topics() const
{
    return {QStringLiteral("resources"), QStringLiteral("drawable")};
}

void ResourcesPage::take(const QString &topic, const QJsonObject &content)
{
    if (topic == QLatin1String("drawable")) {
        m_store->take(content);
        return;
    }
    if (takeError(content))
        return;
    const FactList facts(content, MaxResources);
    QVector<FactTable::Row> rows;
    for (const QJsonObject &item : facts.items()) {
        const auto text = [&item](const char *key) { return item.value(QLatin1String(key)).toString(); };
        rows.append({{text("name"), text("type"), text("value")}, item.value(QLatin1String("isDrawable")).toBool()});
    }
    m_store->clear();
    m_model->setRows(rows);
    showCounts();
    if (facts.leftOut() > 0 && notice().isEmpty())
        setNotice(tr("Resources that are not shown: %1").arg(QLocale().toString(facts.leftOut())));
    if (rows.isEmpty())
        showMessage(tr("This package has no resources."));
    else
        showView();
}

void ResourcesPage::clear()
{
    m_store->clear();
    m_model->setRows({});
    m_field->clear();
    showReading();
}

void ResourcesPage::filter(const QString &text)
{
    m_list->setWanted(text);
    m_drawables->setWanted(text);
    showCounts();
}

void ResourcesPage::showCounts()
{
    const QLocale locale;
    m_tabs->setTabText(0, tr("List (%1)").arg(locale.toString(m_list->rowCount())));
    m_tabs->setTabText(1, tr("Gallery (%1)").arg(locale.toString(m_drawables->rowCount())));
}

} // namespace Viewer
