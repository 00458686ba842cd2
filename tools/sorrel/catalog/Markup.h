// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MARKUP_H
#define MARKUP_H

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <initializer_list>

/// An attribute of an element. The name comes from the program; the value may be anything.
struct MarkupAttribute {
    MarkupAttribute(const char *attributeName, const QString &value) : name(attributeName), lines(value) {}
    MarkupAttribute(const char *attributeName, const QStringList &values) : name(attributeName), lines(values) {}

    const char *name;
    QStringList lines; ///< the value, joined by line feeds; a line itself cannot have one
};

/**
 * Markup of a page that is both HTML and well-formed XML. It consists of elements and texts. One function escapes every
 * text and every value of an attribute, so no text can become markup in either language.
 *
 * Invisible characters, and those that change the direction of text around them, become U+FFFD: controls, line
 * separators, embeddings, overrides and isolates of direction, halves of surrogate pairs, and noncharacters.
 */
class Markup
{
public:
    Markup() = default;

    /// The escaped @p text.
    static Markup text(const QString &text);
    /// The element @p name with a start tag and an end tag.
    static Markup element(const char *name, std::initializer_list<MarkupAttribute> attributes, const Markup &content);
    /// The element @p name with the text @p content and without attributes.
    static Markup element(const char *name, const QString &content) { return element(name, {}, text(content)); }
    /// An element without an end tag in HTML, such as `img`.
    static Markup voidElement(const char *name, std::initializer_list<MarkupAttribute> attributes);
    /// A line feed, between elements.
    static Markup lineFeed();

    Markup &operator+=(const Markup &other);
    friend Markup operator+(Markup a, const Markup &b) { return a += b; }

    bool isEmpty() const { return m_html.isEmpty(); }
    QByteArray toUtf8() const { return m_html.toUtf8(); }

private:
    void start(const char *name, std::initializer_list<MarkupAttribute> attributes);

    QString m_html;
};

#endif
