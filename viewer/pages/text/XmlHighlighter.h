// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_XMLHIGHLIGHTER_H
#define VIEWER_XMLHIGHLIGHTER_H

#include <QSyntaxHighlighter>

namespace Viewer {

/**
 * Colours of the parts of XML. Looks at each character of a line once, and ShownXml bounds the lines, so a hostile
 * document takes no longer than another one. XML that is not well-formed is coloured as far as it goes.
 */
class XmlHighlighter : public QSyntaxHighlighter
{
    Q_OBJECT

public:
    enum class Part {
        Text,
        Markup, ///< brackets, slashes, equals signs
        ElementName,
        AttributeName,
        Value,
        Comment,
    };

    /// Colours for texts on the background of @p palette.
    XmlHighlighter(QTextDocument *document, const QPalette &palette);

    /// Takes the colours from @p palette.
    void setPalette(const QPalette &palette);
    /// The colour of @p part.
    QColor color(Part part) const { return m_colors[int(part)]; }

protected:
    void highlightBlock(const QString &text) override;

private:
    static constexpr int PartCount = int(Part::Comment) + 1;

    QColor m_colors[PartCount];
};

} // namespace Viewer

#endif
