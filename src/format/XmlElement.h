// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef XMLELEMENT_H
#define XMLELEMENT_H

#include "format/TypedValue.h"

#include <QString>
#include <QVector>

/// An attribute of a binary XML document.
struct XmlAttribute {
    quint32 id = 0; ///< resource id of Android's attributes, of which names may be missing; 0 for others
    QString name;   ///< without prefix
    /// The string that is its value, as Android has it, whatever text it was written as. That text when there is no value,
    /// and for attributes without an id, of which Android takes it as well. Else empty.
    QString text;
    TypedValue value;
    /// The text that it was written as, by which ApkFile goes; null where it is the string that is its value.
    QString raw = QString();

    /// The text, or what the value is as one.
    QString plainText() const { return text.isEmpty() ? value.plainText() : text; }
};

/**
 * An element of a binary XML document with all that is below it. Unlike the texts of a QDomDocument, attributes keep
 * their typed values: units of dimensions, every digit of a number, whether a reference is one of the theme.
 */
struct XmlElement {
    bool isNull() const { return name.isEmpty(); }
    /// The attribute with the resource id @p id; null when there is none. A second one of the same id is not seen.
    const XmlAttribute *attribute(quint32 id) const;
    /// The attribute without a resource id that is called @p plainName; null when there is none.
    const XmlAttribute *attribute(const QString &plainName) const;

    QString name; ///< without prefix
    QVector<XmlAttribute> attributes;
    QVector<XmlElement> children;
};

#endif
