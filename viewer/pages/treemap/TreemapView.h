// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_TREEMAPVIEW_H
#define VIEWER_TREEMAPVIEW_H

#include "pages/treemap/MemberTree.h"

#include <QRectF>
#include <QVector>
#include <QWidget>

#include <memory>

namespace Viewer {

class TreemapColors;

/**
 * A folder of a package as a treemap, with the folders in it. One cell of the folder is current: the arrow keys choose
 * the next one in their direction, Enter shows a folder, and Backspace the folder above. The current cell is the
 * accessible name and description of the widget.
 *
 * A folder in it is laid out where its cell has room for its name and more. Every node is laid out once at most.
 */
class TreemapView : public QWidget
{
    Q_OBJECT

public:
    struct Cell {
        int node;
        QRectF place;
        bool hasTitle; ///< a folder whose cells lie below its name
    };

    explicit TreemapView(QWidget *parent = nullptr);

    void setTree(const std::shared_ptr<const MemberTree> &tree);
    const MemberTree &tree() const { return *m_tree; }
    /// The folder that is shown.
    int folder() const { return m_folder; }
    /// Shows the folder @p node, and makes its largest child current.
    void setFolder(int node);
    /// The current node; -1 in an empty folder.
    int current() const { return m_current; }
    /// Makes @p node current, and shows the folder that has it.
    void setCurrent(int node);
    /// Shows the folder above, and makes the one that was shown current.
    void leaveFolder();
    /// The path of the current node, as the archive has it.
    QString copiedText() const;
    /// The cells, each folder before those in it.
    const QVector<Cell> &cells();
    /// The node whose innermost cell is at @p position; -1 when there is none.
    int nodeAt(const QPointF &position);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void currentChanged(int node);
    void folderChanged(int node);
    /// The pointer is on @p node; -1 when it left.
    void pointedAt(int node);

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void layOut(int folder, const QRectF &place);
    void paintCell(QPainter *painter, const Cell &cell, const TreemapColors &colors) const;
    void paintCurrent(QPainter *painter) const;
    /// The width of the frame of the current cell, for which each cell has room.
    int frameWidth() const;
    const Cell *cellOf(int node) const;
    /// The child of the folder that has @p node; -1 when there is none.
    int childWith(int node) const;
    int neighbour(int key);
    void enter(int node);
    void forgetCells();
    void describe();

    std::shared_ptr<const MemberTree> m_tree;
    QVector<Cell> m_cells;
    bool m_isLaidOut = false;
    int m_folder = 0;
    int m_current = -1;
};

} // namespace Viewer

#endif
