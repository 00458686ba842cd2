// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ColorStateList.h"

#include "DrawableAttributes.h"
#include "StateSpec.h"

namespace SorrelKit {

namespace {

const XmlElement *defaultItem(const XmlElement &element, DrawableLoader &loader)
{
    const XmlElement *first = nullptr;
    for (const XmlElement &child : element.children) {
        if (child.name != QLatin1String("item"))
            continue;
        if (isDefaultState(child, loader))
            return &child;
        if (first == nullptr)
            first = &child;
    }
    return first;
}

} // namespace

std::optional<QColor> ColorStateList::fromXml(const XmlElement &element, DrawableLoader &loader)
{
    const XmlElement *const item = defaultItem(element, loader);
    if (item == nullptr) {
        loader.setError(QStringLiteral("color state list without an item"));
        return std::nullopt;
    }
    const DrawableAttributes attributes(*item, loader);
    QColor color = attributes.color(Attr::Color, QColor());
    if (!color.isValid()) {
        loader.setError(QStringLiteral("color state list without a color for the default state"));
        return std::nullopt;
    }
    color.setAlphaF(qBound(qreal(0), color.alphaF() * attributes.number(Attr::Alpha, 1), qreal(1)));
    return color;
}

} // namespace SorrelKit
