// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/animation/Keyframes.h"

#include "drawable/animation/Interpolator.h"
#include "drawable/source/DrawableAttributes.h"

#include <algorithm>

namespace SorrelKit {

namespace {

constexpr qreal NoFraction = -1;

} // namespace

Keyframes::Keyframes(const XmlElement &holder, DrawableLoader &loader)
    : m_property(AnimatedProperty::named(DrawableAttributes(holder, loader).text(Attr::PropertyName)))
{
    if (!m_property)
        return;
    readKeyframes(holder, loader);
    const XmlAttribute *const from = holder.attribute(Attr::ValueFrom);
    const XmlAttribute *const to = holder.attribute(Attr::ValueTo);
    if (!m_keyframes.isEmpty())
        distribute();
    else if (to != nullptr)
        m_keyframes = {{0, from, nullptr}, {1, to, nullptr}};
    else if (from != nullptr) // A single value is the last one.
        m_keyframes = {{0, nullptr, nullptr}, {1, from, nullptr}};
}

void Keyframes::readKeyframes(const XmlElement &holder, DrawableLoader &loader)
{
    for (const XmlElement &child : holder.children) {
        if (child.name != QLatin1String("keyframe"))
            continue;
        if (!loader.spendElement())
            return;
        const qreal fraction = DrawableAttributes(child, loader).number(Attr::Fraction, NoFraction);
        m_keyframes.append({qBound(NoFraction, fraction, qreal(1)), child.attribute(Attr::Value), &child});
    }
}

void Keyframes::distribute()
{
    if (m_keyframes.constLast().fraction < 0)
        m_keyframes.last().fraction = 1;
    else if (m_keyframes.constLast().fraction < 1)
        m_keyframes.append({1, nullptr, nullptr});
    if (m_keyframes.constFirst().fraction < 0)
        m_keyframes.first().fraction = 0;
    else if (m_keyframes.constFirst().fraction > 0)
        m_keyframes.prepend({0, nullptr, nullptr});
    int known = 0;
    for (int i = 1; i < m_keyframes.size(); ++i) {
        if (m_keyframes.at(i).fraction < 0)
            continue;
        const qreal step = (m_keyframes.at(i).fraction - m_keyframes.at(known).fraction) / (i - known);
        for (int between = known + 1; between < i; ++between)
            m_keyframes[between].fraction = m_keyframes.at(known).fraction + step * (between - known);
        known = i;
    }
}

void Keyframes::apply(qreal fraction, XmlElement *part, DrawableLoader &loader) const
{
    if (!m_property || m_keyframes.isEmpty())
        return;
    const auto isLater = [fraction](const Keyframe &keyframe) { return fraction < keyframe.fraction; };
    const auto next = std::find_if(m_keyframes.cbegin() + 1, m_keyframes.cend() - 1, isLater);
    const Keyframe &from = *(next - 1);
    const Keyframe &to = *next;
    qreal passed = to.fraction > from.fraction ? (fraction - from.fraction) / (to.fraction - from.fraction) : 1;
    if (to.element != nullptr && to.element->attribute(Attr::Interpolator) != nullptr)
        passed = Interpolator::ofElement(*to.element, loader).at(qBound(qreal(0), passed, qreal(1)));
    const auto valueOf = [&](const XmlAttribute *attribute) {
        const auto value = m_property->of(attribute, loader);
        return value ? *value : m_property->ofElement(*part, loader);
    };
    if (const auto value = m_property->between(valueOf(from.value), valueOf(to.value), passed, loader))
        m_property->set(part, *value);
}

} // namespace SorrelKit
