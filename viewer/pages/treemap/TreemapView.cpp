// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/treemap/TreemapView.h"

#include "pages/parts/CopyAction.h"
#include "pages/parts/PlainToolTip.h"
#include "pages/treemap/TreemapColors.h"
#include "pages/treemap/TreemapLayout.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace Viewer {

namespace {

// Without gaps between neighbours.
QRect pixelsOf(const QRectF &place)
{
    const QPoint topLeft(qRound(place.left()), qRound(place.top()));
    return QRect(topLeft, QPoint(qRound(place.right()) - 1, qRound(place.bottom()) - 1));
}

// The way from `from` to `to` in the direction of the key, of two rectangles; negative in other directions.
double wayBetween(const QRectF &from, const QRectF &to, int key)
{
    constexpr double Touching = 0.5;
    const auto way = [](double ahead, double aside) { return ahead < -Touching ? -1 : qMax(0.0, ahead) + 2 * aside; };
    const auto outside = [](double value, double least, double most) {
        return qMax(0.0, qMax(least - value, value - most));
    };
    const double asideInX = outside(to.center().x(), from.left(), from.right());
    const double asideInY = outside(to.center().y(), from.top(), from.bottom());
    switch (key) {
    case Qt::Key_Left:
        return way(from.left() - to.right(), asideInY);
    case Qt::Key_Right:
        return way(to.left() - from.right(), asideInY);
    case Qt::Key_Up:
        return way(from.top() - to.bottom(), asideInX);
    default:
        return way(to.top() - from.bottom(), asideInX);
    }
}

} // namespace

TreemapView::TreemapView(QWidget *parent) : QWidget(parent), m_tree(std::make_shared<MemberTree>())
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    addCopyAction(this, [this] { return copiedText(); });
    describe();
}

void TreemapView::setTree(const std::shared_ptr<const MemberTree> &tree)
{
    m_tree = tree;
    setFolder(0);
}

void TreemapView::setFolder(int node)
{
    const QVector<int> &children = m_tree->node(node).children;
    m_folder = node;
    m_current = children.isEmpty() ? -1 : children.constFirst();
    forgetCells();
    describe();
    Q_EMIT folderChanged(m_folder);
    Q_EMIT currentChanged(m_current);
}

void TreemapView::setCurrent(int node)
{
    if (node == m_current || node <= 0)
        return;
    const int folder = m_tree->node(node).parent;
    const bool isOther = folder != m_folder;
    m_folder = folder;
    m_current = node;
    if (isOther)
        forgetCells();
    describe();
    update();
    if (isOther)
        Q_EMIT folderChanged(m_folder);
    Q_EMIT currentChanged(m_current);
}

QString TreemapView::copiedText() const
{
    return m_current < 0 ? QString() : m_tree->path(m_current);
}

const QVector<TreemapView::Cell> &TreemapView::cells()
{
    if (!m_isLaidOut) {
        m_isLaidOut = true;
        layOut(m_folder, rect());
    }
    return m_cells;
}

void TreemapView::layOut(int folder, const QRectF &place)
{
    struct Part {
        int folder;
        QRectF place;
    };
    const int title = fontMetrics().height();
    const int margin = frameWidth();
    QVector<Part> parts{{folder, place}};
    while (!parts.isEmpty()) {
        const Part part = parts.takeLast();
        const QVector<int> &children = m_tree->node(part.folder).children;
        QVector<qint64> sizes;
        sizes.reserve(children.size());
        for (const int child : children)
            sizes.append(m_tree->node(child).size);
        const TreemapLayout layout(sizes, part.place);
        for (int i = 0; i < int(children.size()); ++i) {
            const QRectF &rect = layout.rects().at(i);
            if (rect.isEmpty())
                continue;
            const bool hasTitle =
                m_tree->node(children.at(i)).isFolder && rect.width() >= 4 * title && rect.height() >= 3 * title;
            m_cells.append({children.at(i), rect, hasTitle});
            if (hasTitle)
                parts.append({children.at(i), rect.adjusted(margin, margin + title, -margin, -margin)});
        }
    }
}

int TreemapView::nodeAt(const QPointF &position)
{
    const QVector<Cell> &all = cells();
    for (int i = int(all.size()) - 1; i >= 0; --i) {
        if (all.at(i).place.contains(position))
            return all.at(i).node;
    }
    return -1;
}

QSize TreemapView::sizeHint() const
{
    return QSize(60 * fontMetrics().averageCharWidth(), 20 * fontMetrics().height());
}

QSize TreemapView::minimumSizeHint() const
{
    return QSize(20 * fontMetrics().averageCharWidth(), 5 * fontMetrics().height());
}

bool TreemapView::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto *const help = static_cast<QHelpEvent *>(event);
    const int node = nodeAt(help->pos());
    if (node < 0)
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), plainToolTip({m_tree->shownName(node), m_tree->description(node)}), this);
    return true;
}

void TreemapView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        forgetCells();
    else if (event->type() == QEvent::LanguageChange)
        describe();
    QWidget::changeEvent(event);
}

void TreemapView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
        setCurrent(neighbour(event->key()));
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        enter(m_current);
        return;
    case Qt::Key_Backspace:
        leaveFolder();
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void TreemapView::leaveEvent(QEvent *)
{
    Q_EMIT pointedAt(-1);
}

void TreemapView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        enter(childWith(nodeAt(event->pos())));
}

void TreemapView::mouseMoveEvent(QMouseEvent *event)
{
    Q_EMIT pointedAt(nodeAt(event->pos()));
}

void TreemapView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        setCurrent(childWith(nodeAt(event->pos())));
    else if (event->button() == Qt::BackButton)
        leaveFolder();
}

void TreemapView::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), palette().color(QPalette::Base));
    const TreemapColors colors(palette());
    for (const Cell &cell : cells()) {
        if (cell.place.intersects(event->rect()))
            paintCell(&painter, cell, colors);
    }
    paintCurrent(&painter);
}

void TreemapView::paintCell(QPainter *painter, const Cell &cell, const TreemapColors &colors) const
{
    const MemberTree::Node &node = m_tree->node(cell.node);
    const QRect pixels = pixelsOf(cell.place);
    const QColor background = node.isFolder ? colors.folder(node.kind) : colors.file(node.kind);
    painter->fillRect(pixels, background);
    constexpr int LeastWithLine = 4;
    if (qMin(pixels.width(), pixels.height()) < LeastWithLine)
        return;
    painter->setPen(colors.line(background));
    painter->drawRect(pixels.adjusted(0, 0, -1, -1));
    const int height = fontMetrics().height();
    const int margin = qMax(frameWidth(), fontMetrics().averageCharWidth() / 2);
    const QRect text = pixels.adjusted(margin, frameWidth(), -margin, 0);
    if (text.width() < 3 * fontMetrics().averageCharWidth() || text.height() < height)
        return;
    painter->setPen(colors.text(background));
    const QRect line(text.topLeft(), QSize(text.width(), height));
    painter->drawText(line, int(Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine),
                      fontMetrics().elidedText(m_tree->shownName(cell.node), Qt::ElideMiddle, text.width()));
}

void TreemapView::paintCurrent(QPainter *painter) const
{
    const Cell *const cell = cellOf(m_current);
    if (cell == nullptr)
        return;
    const QColor color = palette().color(hasFocus() ? QPalette::Highlight : QPalette::Text);
    painter->setBrush(Qt::NoBrush);
    const QRect pixels = pixelsOf(cell->place);
    // A line in the colour of the background separates the frame from a cell of a similar colour.
    for (int i = 0; i <= frameWidth(); ++i) {
        painter->setPen(i < frameWidth() ? color : palette().color(QPalette::Base));
        painter->drawRect(pixels.adjusted(i, i, -1 - i, -1 - i));
    }
}

int TreemapView::frameWidth() const
{
    return qMax(2, fontMetrics().height() / 6);
}

const TreemapView::Cell *TreemapView::cellOf(int node) const
{
    for (const Cell &cell : m_cells) {
        if (cell.node == node)
            return &cell;
    }
    return nullptr;
}

int TreemapView::childWith(int node) const
{
    while (node > 0 && m_tree->node(node).parent != m_folder)
        node = m_tree->node(node).parent;
    return node;
}

int TreemapView::neighbour(int key)
{
    cells();
    const Cell *const from = cellOf(m_current);
    int best = m_current;
    double bestWay = -1;
    for (const Cell &cell : m_cells) {
        // A node without a cell is empty, and its neighbour is the first one.
        if (from == nullptr)
            return cell.node;
        if (cell.node == m_current || m_tree->node(cell.node).parent != m_folder)
            continue;
        const double way = wayBetween(from->place, cell.place, key);
        if (way >= 0 && (bestWay < 0 || way < bestWay)) {
            best = cell.node;
            bestWay = way;
        }
    }
    return best;
}

void TreemapView::enter(int node)
{
    if (node > 0 && m_tree->node(node).isFolder && !m_tree->node(node).children.isEmpty())
        setFolder(node);
}

void TreemapView::leaveFolder()
{
    if (m_folder > 0)
        setCurrent(m_folder);
}

void TreemapView::forgetCells()
{
    m_cells.clear();
    m_isLaidOut = false;
    update();
}

void TreemapView::resizeEvent(QResizeEvent *)
{
    forgetCells();
}

void TreemapView::describe()
{
    setAccessibleName(m_current < 0 ? tr("Contents by size") : m_tree->shownName(m_current));
    setAccessibleDescription(m_current < 0 ? QString() : m_tree->description(m_current));
}

} // namespace Viewer
