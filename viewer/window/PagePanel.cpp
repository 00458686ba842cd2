// SPDX-License-Identifier: LGPL-2.1-or-later
#include "window/PagePanel.h"

#include "pages/Page.h"
#include "pages/Pages.h"
#include "window/BrokenPage.h"

#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>
#include <QStackedWidget>

namespace Viewer {

PagePanel::PagePanel(QWidget *parent)
    : QSplitter(Qt::Horizontal, parent), m_list(new QListWidget), m_stack(new QStackedWidget)
{
    m_list->setObjectName(QStringLiteral("pages"));
    m_list->setAccessibleName(tr("Pages"));
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setSpacing(2);
    m_list->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    addWidget(m_list);
    addWidget(m_stack);
    setStretchFactor(0, 0);
    setStretchFactor(1, 1);
    setChildrenCollapsible(false);
    connect(m_list, &QListWidget::currentRowChanged, this, &PagePanel::showPage);
}

void PagePanel::makePages()
{
    m_broken = new BrokenPage;
    m_stack->addWidget(m_broken);
    m_list->addItem(m_broken->title());
    m_list->item(0)->setHidden(true);
    const QList<Page *> pages = Viewer::makePages(m_stack);
    for (Page *const page : pages)
        addPage(page);
    int width = 0;
    for (int i = 0; i < m_list->count(); ++i)
        width = qMax(width, m_list->sizeHintForIndex(m_list->model()->index(i, 0)).width());
    constexpr int Room = 3; // average characters
    width += Room * fontMetrics().averageCharWidth() + 2 * m_list->frameWidth();
    m_list->setMinimumWidth(width);
    setSizes({width, qMax(1, this->width() - width)});
    m_list->setCurrentRow(1);
}

void PagePanel::addPage(Page *page)
{
    m_waiting.insert(page, {});
    m_stack->addWidget(page);
    m_list->addItem(page->title());
    page->setAccessibleName(page->title());
    // They would take the name of a dropped file as text.
    const QList<QLineEdit *> edits = page->findChildren<QLineEdit *>();
    for (QLineEdit *const edit : edits)
        edit->setAcceptDrops(false);
    connect(page, &Page::wants, this, &PagePanel::wants);
    Q_EMIT pagesChanged();
}

void PagePanel::removePage(Page *page)
{
    const int row = m_stack->indexOf(page);
    m_waiting.remove(page);
    m_stack->removeWidget(page);
    delete m_list->takeItem(row);
    page->deleteLater();
    Q_EMIT pagesChanged();
}

int PagePanel::firstRow() const
{
    return m_list->count() > 0 && m_list->item(0)->isHidden() ? 1 : 0;
}

int PagePanel::count() const
{
    return m_list->count() - firstRow();
}

QString PagePanel::title(int index) const
{
    return m_list->item(index + firstRow())->text();
}

int PagePanel::current() const
{
    return m_list->currentRow() - firstRow();
}

void PagePanel::setCurrent(int index)
{
    m_list->setCurrentRow(index + firstRow());
    if (m_stack->currentWidget() != nullptr)
        m_stack->currentWidget()->setFocus();
}

void PagePanel::setCurrent(Page *page)
{
    setCurrent(m_stack->indexOf(page) - firstRow());
}

void PagePanel::focusList()
{
    m_list->setFocus();
}

void PagePanel::showPage(int index)
{
    m_stack->setCurrentIndex(index);
    auto *const page = qobject_cast<Page *>(m_stack->currentWidget());
    if (page != nullptr) {
        Waiting &waiting = m_waiting[page];
        waiting.wasShown = true;
        const QMap<QString, QJsonObject> facts = std::exchange(waiting.facts, {});
        for (auto i = facts.cbegin(); i != facts.cend(); ++i)
            page->take(i.key(), i.value());
    }
    Q_EMIT currentChanged(current());
}

void PagePanel::take(const QString &topic, const QJsonObject &content)
{
    for (auto i = m_waiting.begin(); i != m_waiting.end(); ++i) {
        if (!i.key()->topics().contains(topic))
            continue;
        if (i->wasShown)
            i.key()->take(topic, content);
        else
            i->facts.insert(topic, content);
    }
}

void PagePanel::clear()
{
    for (auto i = m_waiting.begin(); i != m_waiting.end(); ++i) {
        i->wasShown = m_stack->currentWidget() == i.key();
        i->facts.clear();
        i.key()->clear();
    }
    if (firstRow() == 1)
        return;
    if (m_list->currentRow() == 0)
        m_list->setCurrentRow(1);
    m_list->item(0)->setHidden(true);
    Q_EMIT pagesChanged();
}

void PagePanel::showBrokenPage()
{
    m_list->item(0)->setHidden(false);
    m_list->setCurrentRow(0);
    Q_EMIT pagesChanged();
}

} // namespace Viewer
