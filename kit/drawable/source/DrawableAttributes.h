// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DRAWABLEATTRIBUTES_H
#define SORRELKIT_DRAWABLEATTRIBUTES_H

#include "drawable/source/DrawableLoader.h"
#include "format/AndroidAttributes.h"

#include <QBrush>
#include <QColor>
#include <QString>

#include <optional>

namespace SorrelKit {

/**
 * The attributes of an element of a drawable, by their resource ids (namespace Attr), with references followed. An
 * attribute that is missing, refers to nothing or has another type counts as the fallback.
 */
class DrawableAttributes
{
public:
    /// Both outlive this object.
    DrawableAttributes(const XmlElement &element, DrawableLoader &loader) : m_element(element), m_loader(loader) {}

    bool has(quint32 id) const { return m_element.attribute(id) != nullptr; }
    qreal number(quint32 id, qreal fallback) const;
    int integer(quint32 id, int fallback) const;
    bool boolean(quint32 id, bool fallback) const;
    /// A value of Gravity, for the direction of the device's layout.
    int gravity(quint32 id, int fallback) const;
    /// A dimension in pixels.
    qreal pixels(quint32 id, qreal fallback) const;
    /// A dimension in pixels, or a fraction of @p base.
    qreal length(quint32 id, qreal base, qreal fallback) const;
    /// A fraction (0.5 for 50%), or a number.
    qreal ratio(quint32 id, qreal fallback) const;
    /// A number from 0 to 1; 1 when it is missing.
    qreal alpha(quint32 id) const;
    QString text(quint32 id) const;
    QColor color(quint32 id, const QColor &fallback) const;
    QBrush brush(quint32 id, const QBrush &fallback) const;
    /// Whether this element, an `item` of a `selector` of drawables or colours, is for the default state: enabled, in a
    /// window that has the focus, and in no other state.
    ///
    /// The states of an item are its boolean attributes, including an application's own. A true one asks for the state,
    /// a false one for its absence. An item without states is for every state.
    bool isForDefaultState() const;
    /// The value, for attributes of several types.
    ResolvedValue value(quint32 id) const { return m_loader.resolved(m_element.attribute(id)); }

private:
    const XmlElement &m_element;
    DrawableLoader &m_loader;
};

} // namespace SorrelKit

#endif
