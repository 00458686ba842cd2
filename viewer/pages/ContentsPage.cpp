// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/ContentsPage.h"

#include "pages/parts/CopyAction.h"
#include "pages/parts/ElidedLabel.h"
#include "pages/parts/FactList.h"
#include "pages/parts/PlainToolTip.h"
#include "pages/treemap/MemberModel.h"
#include "pages/treemap/TreemapLegend.h"
#include "pages/treemap/TreemapView.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QSplitter>
#include <QStyle>
#include <QToolButton>
#include <QTreeView>

namespace Viewer {

ContentsPage::ContentsPage(QWidget *parent)
    : Page(parent),
      m_model(new MemberModel(this)),
      m_treemap(new TreemapView),
      m_tree(new QTreeView),
      m_up(new QToolButton),
      m_folder(new ElidedLabel),
      m_details(new ElidedLabel)
{
    m_up->setIcon(style()->standardIcon(QStyle::SP_FileDialogToParent, nullptr, this));
    m_up->setToolTip(plainToolTip({tr("Show the folder above (Backspace)")}));
    m_up->setAccessibleName(tr("Show the folder above"));
    m_up->setAutoRaise(true);
    m_tree->setModel(m_model);
    m_tree->setUniformRowHeights(true);
    m_tree->setTextElideMode(Qt::ElideMiddle);
    m_tree->setAccessibleName(tr("Members of the package"));
    m_tree->header()->setStretchLastSection(false);
    m_tree->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_tree->header()->setSectionResizeMode(MemberModel::NameColumn, QHeaderView::Stretch);
    addCopyAction(m_tree, [this] { return m_treemap->copiedText(); });

    auto *const top = new QWidget;
    auto *const rows = new QVBoxLayout(top);
    rows->setContentsMargins(0, 0, 0, 0);
    auto *const way = new QHBoxLayout;
    way->addWidget(m_up);
    way->addWidget(m_folder, 1);
    rows->addLayout(way);
    rows->addWidget(m_treemap, 1);
    rows->addWidget(new TreemapLegend);
    rows->addWidget(m_details);
    auto *const halves = new QSplitter(Qt::Vertical);
    halves->setChildrenCollapsible(false);
    halves->addWidget(top);
    halves->addWidget(m_tree);
    halves->setStretchFactor(0, 3);
    halves->setStretchFactor(1, 2);
    halves->setFocusProxy(m_treemap);
    setView(halves);

    connect(m_up, &QToolButton::clicked, m_treemap, &TreemapView::leaveFolder);
    connect(m_treemap, &TreemapView::currentChanged, this, &ContentsPage::showCurrent);
    connect(m_treemap, &TreemapView::folderChanged, this, &ContentsPage::showFolder);
    connect(m_treemap, &TreemapView::pointedAt, this,
            [this](int node) { describe(node < 0 ? m_treemap->current() : node); });
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex &index) {
        if (!m_isSynchronizing)
            m_treemap->setCurrent(m_model->nodeOf(index));
    });
}

QString ContentsPage::title() const
{
    return tr("Contents");
}

QStringList ContentsPage::topics() const
{
    return {QStringLiteral("contents")};
}

void ContentsPage::take(const QString &, const QJsonObject &content)
{
    if (takeError(content))
        return;
    const FactList facts(content, MemberTree::MaxMembers);
    setItems(facts.items());
    if (facts.leftOut() > 0 && notice().isEmpty())
        setNotice(tr("Members that are not shown: %1").arg(facts.leftOut()));
    if (m_model->rowCount() == 0)
        showMessage(tr("This package has no members."));
    else
        showView();
}

void ContentsPage::clear()
{
    setItems({});
    showReading();
}

void ContentsPage::setItems(const QList<QJsonObject> &items)
{
    const auto tree = std::make_shared<const MemberTree>(items);
    m_isSynchronizing = true;
    m_model->setTree(tree);
    m_isSynchronizing = false;
    m_treemap->setTree(tree);
}

void ContentsPage::showCurrent(int node)
{
    m_isSynchronizing = true;
    const QModelIndex index = m_model->indexOf(node);
    m_tree->setCurrentIndex(index);
    if (index.isValid())
        m_tree->scrollTo(index);
    m_isSynchronizing = false;
    describe(node);
}

void ContentsPage::showFolder(int folder)
{
    m_up->setEnabled(folder > 0);
    m_folder->setText(folder > 0 ? m_treemap->tree().shownPath(folder).join(QStringLiteral(" / ")) : tr("The package"));
}

void ContentsPage::describe(int node)
{
    const MemberTree &tree = m_treemap->tree();
    m_details->setText(node < 0 ? QString()
                                : tr("%1: %2", "member and facts").arg(tree.shownPart(node), tree.description(node)));
}

} // namespace Viewer
