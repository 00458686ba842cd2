// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/LayerDrawable.h"

#include "drawable/paint/Gravity.h"
#include "drawable/source/DrawableAttributes.h"

#include <utility>

namespace SorrelKit {

namespace {

using Layer = LayerDrawable::Layer;

// @android:id/mask, the layer of a ripple that limits its waves.
constexpr quint32 RippleMaskId = 0x0102002e;

bool isRippleMask(const XmlElement &item)
{
    const XmlAttribute *const id = item.attribute(Attr::Id);
    return id != nullptr && id->value.data == RippleMaskId;
}

Layer readLayer(const XmlElement &item, DrawableLoader &loader)
{
    const DrawableAttributes attributes(item, loader);
    Layer layer;
    layer.drawable = loader.fromItem(item);
    const qreal left = attributes.pixels(Attr::Left, 0);
    const qreal right = attributes.pixels(Attr::Right, 0);
    const quint32 leftEdge = loader.isRightToLeft() ? Attr::End : Attr::Start;
    const quint32 rightEdge = loader.isRightToLeft() ? Attr::Start : Attr::End;
    layer.insets = {attributes.pixels(leftEdge, left), attributes.pixels(Attr::Top, 0),
                    attributes.pixels(rightEdge, right), attributes.pixels(Attr::Bottom, 0)};
    layer.size = {attributes.pixels(Attr::Width, -1), attributes.pixels(Attr::Height, -1)};
    layer.gravity = attributes.gravity(Attr::Gravity, 0);
    return layer;
}

QSizeF sizeOf(const Layer &layer)
{
    const QSizeF own = layer.drawable->intrinsicSize();
    return {layer.size.width() < 0 ? own.width() : layer.size.width(),
            layer.size.height() < 0 ? own.height() : layer.size.height()};
}

int gravityOf(const Layer &layer, const QSizeF &size)
{
    int gravity = layer.gravity;
    if ((gravity & Gravity::HorizontalMask) == 0)
        gravity |= layer.size.width() < 0 ? Gravity::FillHorizontal : Gravity::Left;
    if ((gravity & Gravity::VerticalMask) == 0)
        gravity |= layer.size.height() < 0 ? Gravity::FillVertical : Gravity::Top;
    if (size.width() < 0)
        gravity |= Gravity::FillHorizontal;
    if (size.height() < 0)
        gravity |= Gravity::FillVertical;
    return gravity;
}

QMarginsF largest(const QMarginsF &a, const QMarginsF &b)
{
    return {qMax(a.left(), b.left()), qMax(a.top(), b.top()), qMax(a.right(), b.right()), qMax(a.bottom(), b.bottom())};
}

} // namespace

LayerDrawable::LayerDrawable(std::vector<Layer> layers, PaddingMode paddingMode)
    : m_layers(std::move(layers)), m_paddingMode(paddingMode)
{
    const bool isNested = paddingMode == PaddingMode::Nest;
    for (const Layer &layer : m_layers) {
        const QMarginsF around = isNested ? layer.insets + m_padding : layer.insets;
        const QSizeF size = sizeOf(layer);
        if (size.width() >= 0)
            m_size.setWidth(qMax(m_size.width(), size.width() + around.left() + around.right()));
        if (size.height() >= 0)
            m_size.setHeight(qMax(m_size.height(), size.height() + around.top() + around.bottom()));
        const QMarginsF padding = layer.drawable->padding();
        m_padding = isNested ? m_padding + padding : largest(m_padding, padding);
    }
}

DrawablePointer LayerDrawable::fromXml(const XmlElement &element, DrawableLoader &loader)
{
    const bool isRipple = element.name == QLatin1String("ripple");
    const bool isTransition = element.name == QLatin1String("transition");
    std::vector<Layer> layers;
    for (const XmlElement &child : element.children) {
        if (child.name != QLatin1String("item"))
            continue;
        Layer layer = readLayer(child, loader);
        if (layer.drawable == nullptr)
            continue;
        layer.isVisible = isTransition ? layers.empty() : !(isRipple && isRippleMask(child));
        layers.push_back(std::move(layer));
    }
    if (layers.empty()) {
        loader.setError(DrawableFault::NoLayers, element.name);
        return nullptr;
    }
    const PaddingMode mode = isRipple ? PaddingMode::Stack : PaddingMode::Nest;
    const int given = DrawableAttributes(element, loader).integer(Attr::PaddingMode, int(mode));
    return std::make_unique<LayerDrawable>(std::move(layers),
                                           given == int(PaddingMode::Stack) ? PaddingMode::Stack : PaddingMode::Nest);
}

void LayerDrawable::draw(Canvas &canvas, const QRectF &bounds) const
{
    QMarginsF nested;
    for (const Layer &layer : m_layers) {
        const QRectF container = bounds.marginsRemoved(layer.insets + nested);
        const QSizeF size = sizeOf(layer);
        if (layer.isVisible)
            layer.drawable->draw(canvas, Gravity::apply(gravityOf(layer, size), size, container));
        if (m_paddingMode == PaddingMode::Nest)
            nested += layer.drawable->padding();
    }
}

} // namespace SorrelKit
