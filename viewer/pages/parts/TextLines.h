// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_TEXTLINES_H
#define VIEWER_TEXTLINES_H

#include <QFont>
#include <QList>
#include <QRect>
#include <QString>

class QPainter;

namespace Viewer {

/**
 * A text that is wrapped to a number of lines. When it is longer, the middle of the rest is left out in the last line.
 * The text has its own direction, and is aligned as its surroundings are. Its cost is bounded by MaxSafeText of the
 * text, which went through safeText().
 */
class TextLines
{
public:
    TextLines(const QString &text, const QFont &font, int width, int maxLines);

    int height() const { return int(m_lines.size()) * m_lineHeight; }
    const QList<QString> &lines() const { return m_lines; }
    /// Paints the lines into @p place, which has the width of the constructor, with the pen of @p painter.
    void paint(QPainter *painter, const QRect &place, Qt::LayoutDirection direction) const;

private:
    QFont m_font;
    int m_lineHeight;
    Qt::LayoutDirection m_textDirection;
    QList<QString> m_lines;
};

} // namespace Viewer

#endif
