// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/color/ColorStateList.h"

#include "drawable/source/DrawableAttributes.h"

#include <QRgba64>

namespace SorrelKit {

namespace {

constexpr quint16 Opaque = 0xffff;

const XmlElement *defaultItem(const XmlElement &element, DrawableLoader &loader)
{
    const XmlElement *first = nullptr;
    for (const XmlElement &child : element.children) {
        if (child.name != QLatin1String("item"))
            continue;
        if (DrawableAttributes(child, loader).isForDefaultState())
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
        loader.setError(DrawableFault::ColorListWithoutItem);
        return std::nullopt;
    }
    const DrawableAttributes attributes(*item, loader);
    const QColor color = attributes.color(Attr::Color, QColor());
    if (!color.isValid()) {
        loader.setError(DrawableFault::ColorListWithoutColor);
        return std::nullopt;
    }
    // With integers: QColor::setAlphaF() rounds differently in Qt 6, where it takes a float.
    QRgba64 rgba = color.rgba64();
    const qreal alpha = rgba.alpha() / qreal(Opaque) * attributes.number(Attr::Alpha, 1);
    rgba.setAlpha(quint16(qRound(qBound(qreal(0), alpha, qreal(1)) * Opaque)));
    return QColor(rgba);
}

} // namespace SorrelKit
