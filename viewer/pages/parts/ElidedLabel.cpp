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
    const int height = fontMetrics().height();
    return QSize(20 * fontMetrics().averageCharWidth(), height + height / 3);
}

QSize ElidedLabel::minimumSizeHint() const
{
    return sizeHint();
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    const int margin = fontMetrics().height() / 3;
    const QRect place = rect().adjusted(margin, margin / 2, -margin, 0);
    TextLines(m_text, font(), place.width(), 1).paint(&painter, place, layoutDirection());
}

} // namespace Viewer
