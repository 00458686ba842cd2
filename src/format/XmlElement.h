// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef XMLELEMENT_H
#define XMLELEMENT_H

#include "format/TypedValue.h"

#include <QString>
#include <QVector>

/// An attribute of a binary XML document.
struct XmlAttribute {
    quint32 id = 0; ///< resource id of an attribute of Android's, whose name may be missing; 0 for other attributes
    QString name;   ///< without prefix
    /// The attribute's string value, whatever its text in the source was. That text, when there is no value; and for an
    /// attribute without an id, because Android takes the text of those too. Else empty.
    QString text;
    TypedValue value;
    /// The text in the source, which ApkFile takes; null when it is the same string as the value.
    QString raw = QString();

    /// The text, or the value as one.
    QString plainText() const { return text.isEmpty() ? value.plainText() : text; }
};

/**
 * An element of a binary XML document with its descendants. Unlike in a QDomDocument, attributes keep their typed
 * values: the units of dimensions, all digits of numbers, references to the theme.
 */
struct XmlElement {
    bool isNull() const { return name.isEmpty(); }
    /// The first attribute with the resource id @p id; null when there is none.
    const XmlAttribute *attribute(quint32 id) const;
    /// The first attribute without a resource id that has the name @p plainName; null when there is none.
    const XmlAttribute *attribute(const QString &plainName) const;

    QString name; ///< without prefix
    QVector<XmlAttribute> attributes;
    QVector<XmlElement> children;
};

// Vectors of them grow without copying each.
Q_DECLARE_TYPEINFO(XmlAttribute, Q_MOVABLE_TYPE);
Q_DECLARE_TYPEINFO(XmlElement, Q_MOVABLE_TYPE);

#endif
