// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/ClipDrawable.h"

#include "drawable/paint/Canvas.h"
#include "drawable/paint/Gravity.h"
#include "drawable/paint/PaintBounds.h"
#include "drawable/source/DrawableAttributes.h"

#include <utility>

namespace SorrelKit {

ClipDrawable::ClipDrawable(DrawablePointer drawable, int level, int orientation, int gravity)
    : m_drawable(std::move(drawable)), m_level(level), m_orientation(orientation), m_gravity(gravity)
{
}

DrawablePointer ClipDrawable::fromXml(const XmlElement &element, DrawableLoader &loader)
{
    DrawablePointer drawable = loader.fromRequiredItem(element);
    if (drawable == nullptr)
        return nullptr;
    const DrawableAttributes attributes(element, loader);
    return std::make_unique<ClipDrawable>(std::move(drawable), qBound(0, attributes.integer(Attr::Level, 0), MaxLevel),
                                          attributes.integer(Attr::ClipOrientation, Horizontal),
                                          attributes.gravity(Attr::Gravity, Gravity::Left));
}

void ClipDrawable::draw(Canvas &canvas, const QRectF &bounds) const
{
    const qreal shown = qreal(m_level) / MaxLevel;
    QSizeF size = bounds.size();
    if ((m_orientation & Horizontal) != 0)
        size.rwidth() *= shown;
    if ((m_orientation & Vertical) != 0)
        size.rheight() *= shown;
    const QRectF visible = PaintBounds::clamped(Gravity::apply(m_gravity, size, bounds));
    if (m_level == 0 || visible.isEmpty())
        return;
    QPainterPath outline;
    outline.addRect(visible);
    canvas.maskedLayer(outline, [&]() { m_drawable->draw(canvas, bounds); });
}

} // namespace SorrelKit
