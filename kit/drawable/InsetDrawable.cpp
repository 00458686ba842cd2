// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/InsetDrawable.h"

#include "drawable/source/DrawableAttributes.h"

#include <utility>

namespace SorrelKit {

namespace {

InsetDrawable::Edge edge(const DrawableAttributes &attributes, quint32 id, const InsetDrawable::Edge &fallback)
{
    if (!attributes.has(id))
        return fallback;
    InsetDrawable::Edge edge;
    if (const auto fraction = attributes.value(id).value.fraction())
        edge.fraction = *fraction;
    else
        edge.pixels = attributes.pixels(id, 0);
    return edge;
}

qreal outerSide(qreal inner, const InsetDrawable::Edge &start, const InsetDrawable::Edge &end)
{
    const qreal fraction = start.fraction + end.fraction;
    return inner < 0 || fraction >= 1 ? -1 : inner / (1 - fraction) + start.pixels + end.pixels;
}

} // namespace

InsetDrawable::InsetDrawable(DrawablePointer drawable, const Edges &edges)
    : m_drawable(std::move(drawable)), m_edges(edges)
{
    const QSizeF inner = m_drawable->intrinsicSize();
    m_size = {outerSide(inner.width(), edges.left, edges.right), outerSide(inner.height(), edges.top, edges.bottom)};
}

DrawablePointer InsetDrawable::fromXml(const XmlElement &element, DrawableLoader &loader)
{
    DrawablePointer drawable = loader.fromRequiredItem(element);
    if (drawable == nullptr)
        return nullptr;
    const DrawableAttributes attributes(element, loader);
    const Edge all = edge(attributes, Attr::Inset, {});
    return std::make_unique<InsetDrawable>(
        std::move(drawable), Edges{edge(attributes, Attr::InsetLeft, all), edge(attributes, Attr::InsetTop, all),
                                   edge(attributes, Attr::InsetRight, all), edge(attributes, Attr::InsetBottom, all)});
}

QMarginsF InsetDrawable::padding() const
{
    const QSizeF size = m_size.expandedTo(QSizeF(0, 0));
    return m_drawable->padding()
           + QMarginsF(m_edges.left.of(size.width()), m_edges.top.of(size.height()), m_edges.right.of(size.width()),
                       m_edges.bottom.of(size.height()));
}

void InsetDrawable::draw(Canvas &canvas, const QRectF &bounds) const
{
    const qreal width = bounds.width();
    const qreal height = bounds.height();
    m_drawable->draw(canvas, bounds.adjusted(m_edges.left.of(width), m_edges.top.of(height), -m_edges.right.of(width),
                                             -m_edges.bottom.of(height)));
}

} // namespace SorrelKit
