// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/vector/VectorDrawable.h"

#include "drawable/paint/Canvas.h"
#include "drawable/paint/PathPainter.h"
#include "drawable/source/DrawableAttributes.h"

#include <utility>

namespace SorrelKit {

VectorDrawable::VectorDrawable(QSizeF viewport, QSizeF size, VectorGroup group)
    : m_viewport(viewport), m_size(size), m_group(std::move(group))
{
}

DrawablePointer VectorDrawable::fromXml(const XmlElement &element, DrawableLoader &loader)
{
    const DrawableAttributes attributes(element, loader);
    const QSizeF viewport(attributes.number(Attr::ViewportWidth, 0), attributes.number(Attr::ViewportHeight, 0));
    if (viewport.isEmpty() || viewport.width() > MaxSide || viewport.height() > MaxSide) {
        loader.setError(DrawableFault::VectorWithoutViewport);
        return nullptr;
    }
    VectorGroup group(element, loader);
    if (group.isEmpty()) {
        loader.setError(DrawableFault::VectorWithoutPath);
        return nullptr;
    }
    const auto side = [&](quint32 id) {
        const qreal pixels = attributes.pixels(id, 0);
        return pixels > 0 ? qMin(pixels, MaxSide) : -1;
    };
    std::unique_ptr<VectorDrawable> drawable(
        new VectorDrawable(viewport, {side(Attr::Width), side(Attr::Height)}, std::move(group)));
    drawable->m_alpha = attributes.alpha(Attr::Alpha);
    drawable->m_tint = Tint::fromAttributes(attributes, loader);
    return drawable;
}

void VectorDrawable::draw(Canvas &canvas, const QRectF &bounds) const
{
    if (m_alpha == 0 && !m_tint)
        return;
    const QRectF viewport(QPointF(), m_viewport);
    PathPainter painter(&canvas, bounds, viewport);
    const auto paint = [&]() { m_group.draw(&painter); };
    const auto tint = [&](QImage &layer) {
        m_tint->apply(&layer, m_alpha);
        QPainterPath mask;
        mask.addRect(viewport);
        if (m_tint->isUnbounded())
            painter.cut(&layer, {mask, QTransform()});
    };
    if (m_tint)
        canvas.layer(paint, tint);
    else if (m_alpha < 1)
        canvas.layer(
            paint, [](QImage &) {}, m_alpha);
    else
        paint();
}

} // namespace SorrelKit
