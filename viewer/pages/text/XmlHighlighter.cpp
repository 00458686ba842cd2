// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/text/XmlHighlighter.h"

#include "pages/parts/Contrast.h"

#include <QPalette>

namespace Viewer {

namespace {

// Where a line ends, and the next one begins. -1 is the state before the first line.
enum XmlState {
    InText = 0,
    InElementName,
    InTag,
    InDoubleQuotes,
    InSingleQuotes,
    InComment,
    InDeclaration,
};

using Part = XmlHighlighter::Part;

// The state after the character at `at`, and the part that it belongs to.
class XmlScanner
{
public:
    XmlScanner(const QString &text, XmlState state) : m_text(text), m_state(state) {}

    XmlState state() const { return m_state; }

    Part take(int at)
    {
        const QChar character = m_text.at(at);
        switch (m_state) {
        case InElementName:
            return takeName(character);
        case InTag:
            return takeTag(character);
        case InDoubleQuotes:
            m_state = character == QLatin1Char('"') ? InTag : m_state;
            return Part::Value;
        case InSingleQuotes:
            m_state = character == QLatin1Char('\'') ? InTag : m_state;
            return Part::Value;
        case InComment:
            m_state = character == QLatin1Char('>') && isBehind(at, QLatin1String("--")) ? InText : m_state;
            return Part::Comment;
        case InDeclaration:
            m_state = character == QLatin1Char('>') ? InText : m_state;
            return Part::Comment;
        case InText:
            break;
        }
        return character == QLatin1Char('<') ? takeOpening(at) : Part::Text;
    }

private:
    bool isAt(int at, QLatin1String wanted) const
    {
        return m_text.size() - at >= wanted.size() && m_text.mid(at, int(wanted.size())) == wanted;
    }

    bool isBehind(int at, QLatin1String wanted) const
    {
        return at >= wanted.size() && isAt(at - int(wanted.size()), wanted);
    }

    Part takeOpening(int at)
    {
        m_state = InElementName;
        if (isAt(at, QLatin1String("<!--")))
            m_state = InComment;
        else if (isAt(at, QLatin1String("<?")) || isAt(at, QLatin1String("<!")))
            m_state = InDeclaration;
        return m_state == InElementName ? Part::Markup : Part::Comment;
    }

    Part takeName(QChar character)
    {
        if (character == QLatin1Char('/'))
            return Part::Markup;
        if (character.isSpace())
            m_state = InTag;
        return character == QLatin1Char('>') ? takeTag(character) : Part::ElementName;
    }

    Part takeTag(QChar character)
    {
        m_state = InTag;
        switch (character.unicode()) {
        case '>':
            m_state = InText;
            return Part::Markup;
        case '"':
            m_state = InDoubleQuotes;
            return Part::Value;
        case '\'':
            m_state = InSingleQuotes;
            return Part::Value;
        case '=':
        case '/':
            return Part::Markup;
        default:
            return Part::AttributeName;
        }
    }

    const QString &m_text;
    XmlState m_state;
};

} // namespace

XmlHighlighter::XmlHighlighter(QTextDocument *document, const QPalette &palette) : QSyntaxHighlighter(document)
{
    setPalette(palette);
}

void XmlHighlighter::setPalette(const QPalette &palette)
{
    const QColor base = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    const auto set = [&](Part part, const QColor &color) { m_colors[int(part)] = readable(color, base); };
    set(Part::Text, text);
    set(Part::Markup, mixed(text, base, 0.7));
    set(Part::ElementName, QColor(0x1e, 0x6f, 0xd9));
    set(Part::AttributeName, QColor(0x99, 0x45, 0xc8));
    set(Part::Value, QColor(0x2e, 0x9e, 0x3f));
    set(Part::Comment, mixed(text, base, 0.6));
    rehighlight();
}

void XmlHighlighter::highlightBlock(const QString &text)
{
    XmlScanner scanner(text, XmlState(qMax(int(InText), previousBlockState())));
    int start = 0;
    Part part = Part::Text;
    for (int at = 0; at < text.size(); ++at) {
        const Part next = scanner.take(at);
        if (next == part)
            continue;
        setFormat(start, at - start, color(part));
        start = at;
        part = next;
    }
    setFormat(start, int(text.size()) - start, color(part));
    // The end of a line is white space.
    setCurrentBlockState(scanner.state() == InElementName ? InTag : scanner.state());
}

} // namespace Viewer
