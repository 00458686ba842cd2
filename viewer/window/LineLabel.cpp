// SPDX-License-Identifier: LGPL-2.1-or-later
#include "window/LineLabel.h"

#include "pages/parts/PlainToolTip.h"

#include <QPainter>
#include <QStyle>

namespace Viewer {

LineLabel::LineLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void LineLabel::setLine(const QString &text, const QStringList &details)
{
    setText(text);
    setAccessibleName(text);
    setAccessibleDescription(details.join(QLatin1Char('\n')));
    setToolTip(text.isEmpty() ? QString() : plainToolTip(QStringList{text} + details));
}

QSize LineLabel::minimumSizeHint() const
{
    constexpr int LeastCharacters = 12;
    const QSize hint = QLabel::minimumSizeHint();
    return {qMin(hint.width(), fontMetrics().averageCharWidth() * LeastCharacters), hint.height()};
}

void LineLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect place = contentsRect();
    const QString line = fontMetrics().elidedText(text(), Qt::ElideMiddle, place.width());
    const int alignment = int(QStyle::visualAlignment(layoutDirection(), this->alignment()));
    style()->drawItemText(&painter, place, alignment | Qt::TextSingleLine, palette(), isEnabled(), line,
                          foregroundRole());
}

} // namespace Viewer
