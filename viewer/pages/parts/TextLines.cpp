// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/parts/TextLines.h"

#include <QFontMetrics>
#include <QPainter>
#include <QTextLayout>
#include <QTextOption>

namespace Viewer {

namespace {

Qt::LayoutDirection directionOf(QString text)
{
    // The characters within an isolate, which safeText() makes, do not count for the text around it.
    text.remove(QChar(u'\u2068'));
    return text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
}

} // namespace

TextLines::TextLines(const QString &text, const QFont &font, int width, int maxLines)
    : m_font(font), m_lineHeight(QFontMetrics(font).height()), m_textDirection(directionOf(text))
{
    const QFontMetrics metrics(font);
    if (text.isEmpty() || width <= 0)
        return;
    int at = 0;
    if (maxLines > 1) {
        QTextLayout layout(text, font);
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        layout.setTextOption(option);
        layout.beginLayout();
        while (int(m_lines.size()) < maxLines - 1 && at < text.size()) {
            QTextLine line = layout.createLine();
            line.setLineWidth(width);
            at = line.textStart() + line.textLength();
            m_lines.append(text.mid(line.textStart(), line.textLength()).trimmed());
        }
        layout.endLayout();
    }
    if (at < text.size())
        m_lines.append(metrics.elidedText(text.mid(at), Qt::ElideMiddle, width));
}

void TextLines::paint(QPainter *painter, const QRect &place, Qt::LayoutDirection direction) const
{
    QTextOption option(direction == Qt::RightToLeft ? Qt::AlignRight | Qt::AlignAbsolute
                                                    : Qt::AlignLeft | Qt::AlignAbsolute);
    option.setTextDirection(m_textDirection);
    option.setWrapMode(QTextOption::NoWrap);
    painter->setFont(m_font);
    QRect line(place.topLeft(), QSize(place.width(), m_lineHeight));
    for (const QString &text : m_lines) {
        painter->drawText(line, text, option);
        line.translate(0, m_lineHeight);
    }
}

} // namespace Viewer
