// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/treemap/TreemapLegend.h"

#include "pages/treemap/TreemapColors.h"

#include <QPainter>
#include <QStyle>

#include <iterator>

namespace Viewer {

TreemapLegend::TreemapLegend(QWidget *parent) : QWidget(parent)
{
    QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QSize TreemapLegend::sizeHint() const
{
    return QSize(entryWidth() * int(std::size(allMemberKinds)), fontMetrics().height());
}

QSize TreemapLegend::minimumSizeHint() const
{
    return QSize(entryWidth(), fontMetrics().height());
}

int TreemapLegend::heightForWidth(int width) const
{
    const int inLine = columns(width);
    return fontMetrics().height() * ((int(std::size(allMemberKinds)) + inLine - 1) / inLine);
}

int TreemapLegend::entryWidth() const
{
    int widest = 0;
    for (const MemberKind kind : allMemberKinds)
        widest = qMax(widest, fontMetrics().horizontalAdvance(memberKindName(kind)));
    return widest + 2 * fontMetrics().height();
}

int TreemapLegend::columns(int width) const
{
    return qBound(1, (width - fontMetrics().height() / 3) / entryWidth(), int(std::size(allMemberKinds)));
}

void TreemapLegend::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const TreemapColors colors(palette());
    const int height = fontMetrics().height();
    const int inLine = columns(width());
    for (int i = 0; i < int(std::size(allMemberKinds)); ++i) {
        const QRect entry(height / 3 + (i % inLine) * entryWidth(), (i / inLine) * height, entryWidth(), height);
        const QRect swatch = entry.adjusted(0, height / 6, 0, -height / 6);
        const QRect square(swatch.topLeft(), QSize(swatch.height(), swatch.height()));
        const QColor fill = colors.file(allMemberKinds[i]);
        const QRect box = QStyle::visualRect(layoutDirection(), rect(), square);
        painter.fillRect(box, fill);
        painter.setPen(colors.line(fill));
        painter.drawRect(box.adjusted(0, 0, -1, -1));
        painter.setPen(palette().color(foregroundRole()));
        const QRect text = entry.adjusted(height, 0, 0, 0);
        painter.drawText(QStyle::visualRect(layoutDirection(), rect(), text),
                         int(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter)),
                         memberKindName(allMemberKinds[i]));
    }
}

} // namespace Viewer
