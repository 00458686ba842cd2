// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/parts/ElidedLabel.h"

#include "pages/parts/PlainToolTip.h"
#include "pages/parts/TextLines.h"

#include <QPainter>

namespace Viewer {

ElidedLabel::ElidedLabel(QWidget *parent) : QFrame(parent)
{
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ElidedLabel::setText(const QString &text)
{
    m_text = text;
    setAccessibleName(text);
    setToolTip(plainToolTip({text}));
    update();
}

QSize ElidedLabel::sizeHint() const
{
    return QSize(20 * fontMetrics().averageCharWidth(), fontMetrics().height());
}

QSize ElidedLabel::minimumSizeHint() const
{
    return sizeHint();
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    TextLines(m_text, font(), width(), 1).paint(&painter, rect(), layoutDirection());
}

} // namespace Viewer
