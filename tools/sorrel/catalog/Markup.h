// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MARKUP_H
#define MARKUP_H

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <initializer_list>

/// An attribute of an element. The name is the program's own; the value may be anything.
struct MarkupAttribute {
    MarkupAttribute(const char *attributeName, const QString &value) : name(attributeName), lines(value) {}
    MarkupAttribute(const char *attributeName, const QStringList &values) : name(attributeName), lines(values) {}

    const char *name;
    QStringList lines; ///< the value; more than one are set apart by line feeds, which a line itself cannot hold
};

/**
 * Text for a page that is both HTML and well-formed XML. Markup is made of elements and of texts, and there is no way
 * to make it of a text as it is: each one, and each value of an attribute, goes through the same function, which leaves
 * nothing in it that either language could take for markup.
 *
 * Characters that are not to be seen, or that change the direction of what stands beside them, become U+FFFD: controls,
 * separators of lines, embeddings, overrides and isolates of direction, halves of surrogate pairs, and what is no
 * character.
 */
class Markup
{
public:
    Markup() = default;

    /// @p text, to be read as it is.
    static Markup text(const QString &text);
    /// The element @p name, with a start and an end tag.
    static Markup element(const char *name, std::initializer_list<MarkupAttribute> attributes, const Markup &content);
    /// The element @p name without attributes that has the text @p content.
    static Markup element(const char *name, const QString &content) { return element(name, {}, text(content)); }
    /// An element that HTML closes by itself, such as `img`.
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
