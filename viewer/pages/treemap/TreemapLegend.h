// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_TREEMAPLEGEND_H
#define VIEWER_TREEMAPLEGEND_H

#include <QWidget>

namespace Viewer {

/// The colours of a treemap and their names, in as many lines as the width needs.
class TreemapLegend : public QWidget
{
    Q_OBJECT

public:
    explicit TreemapLegend(QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int entryWidth() const;
    int columns(int width) const;
};

} // namespace Viewer

#endif
