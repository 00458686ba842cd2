// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/source/DrawableAttributes.h"

#include "drawable/paint/Gravity.h"

#include <algorithm>

namespace SorrelKit {

qreal DrawableAttributes::number(quint32 id, qreal fallback) const
{
    return value(id).value.number().value_or(fallback);
}

int DrawableAttributes::integer(quint32 id, int fallback) const
{
    return value(id).value.integer().value_or(fallback);
}

bool DrawableAttributes::boolean(quint32 id, bool fallback) const
{
    return value(id).value.boolean().value_or(fallback);
}

int DrawableAttributes::gravity(quint32 id, int fallback) const
{
    return Gravity::absolute(integer(id, fallback), m_loader.isRightToLeft());
}

qreal DrawableAttributes::pixels(quint32 id, qreal fallback) const
{
    return value(id).value.pixels(m_loader.pixelsPerDp()).value_or(fallback);
}

qreal DrawableAttributes::length(quint32 id, qreal base, qreal fallback) const
{
    const TypedValue length = value(id).value;
    const auto fraction = length.fraction(base);
    return fraction ? *fraction : length.pixels(m_loader.pixelsPerDp()).value_or(fallback);
}

qreal DrawableAttributes::ratio(quint32 id, qreal fallback) const
{
    const TypedValue ratio = value(id).value;
    const auto fraction = ratio.fraction();
    return fraction ? *fraction : ratio.number().value_or(fallback);
}

qreal DrawableAttributes::alpha(quint32 id) const
{
    return qBound(qreal(0), number(id, 1), qreal(1));
}

QString DrawableAttributes::text(quint32 id) const
{
    return value(id).text;
}

QColor DrawableAttributes::color(quint32 id, const QColor &fallback) const
{
    return m_loader.color(value(id), fallback);
}

QBrush DrawableAttributes::brush(quint32 id, const QBrush &fallback) const
{
    return m_loader.brush(value(id), fallback);
}

bool DrawableAttributes::isForDefaultState() const
{
    const auto isOn = [](quint32 state) { return state == Attr::StateEnabled || state == Attr::StateWindowFocused; };
    const QVector<XmlAttribute> &attributes = m_element.attributes;
    return std::all_of(attributes.cbegin(), attributes.cend(), [&](const XmlAttribute &attribute) {
        // Android reads states without a theme.
        if (attribute.value.isThemeAttribute())
            return true;
        const TypedValue value = m_loader.resolved(&attribute).value;
        return value.type != ValueType::Boolean || (value.data != 0) == isOn(attribute.id);
    });
}

} // namespace SorrelKit
