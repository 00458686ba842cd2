// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Markup.h"

namespace {

bool isShown(QChar character)
{
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        break;
    }
    const ushort code = character.unicode();
    const bool turnsText = (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069);
    const bool isNoCharacter = code >= 0xfffe || (code >= 0xfdd0 && code <= 0xfdef);
    return !turnsText && !isNoCharacter;
}

QString escaped(const QString &text)
{
    QString html;
    html.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        const QChar character = text.at(i);
        if (character.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
            html += character;
            html += text.at(++i);
        } else if (character.isSurrogate() || !isShown(character)) {
            html += QChar(QChar::ReplacementCharacter);
        } else if (character == QLatin1Char('&')) {
            html += QLatin1String("&amp;");
        } else if (character == QLatin1Char('<')) {
            html += QLatin1String("&lt;");
        } else if (character == QLatin1Char('>')) {
            html += QLatin1String("&gt;");
        } else if (character == QLatin1Char('"')) {
            html += QLatin1String("&quot;");
        } else if (character == QLatin1Char('\'')) {
            html += QLatin1String("&#39;");
        } else {
            html += character;
        }
    }
    return html;
}

} // namespace

Markup Markup::text(const QString &text)
{
    Markup markup;
    markup.m_html = escaped(text);
    return markup;
}

Markup Markup::element(const char *name, std::initializer_list<MarkupAttribute> attributes, const Markup &content)
{
    Markup markup;
    markup.start(name, attributes);
    markup.m_html += QLatin1Char('>') + content.m_html + QLatin1String("</") + QLatin1String(name) + QLatin1Char('>');
    return markup;
}

Markup Markup::voidElement(const char *name, std::initializer_list<MarkupAttribute> attributes)
{
    Markup markup;
    markup.start(name, attributes);
    markup.m_html += QLatin1String("/>");
    return markup;
}

Markup Markup::lineFeed()
{
    Markup markup;
    markup.m_html = QLatin1Char('\n');
    return markup;
}

Markup &Markup::operator+=(const Markup &other)
{
    m_html += other.m_html;
    return *this;
}

void Markup::start(const char *name, std::initializer_list<MarkupAttribute> attributes)
{
    m_html += QLatin1Char('<') + QLatin1String(name);
    for (const MarkupAttribute &attribute : attributes) {
        m_html += QLatin1Char(' ') + QLatin1String(attribute.name) + QLatin1String("=\"");
        for (int i = 0; i < attribute.lines.size(); ++i)
            m_html += QLatin1String(i == 0 ? "" : "&#10;") + escaped(attribute.lines.at(i));
        m_html += QLatin1Char('"');
    }
}
