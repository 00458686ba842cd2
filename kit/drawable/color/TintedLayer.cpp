// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/color/TintedLayer.h"

#include "drawable/paint/Canvas.h"
#include "drawable/source/DrawableAttributes.h"

namespace SorrelKit {

TintedLayer::TintedLayer(const DrawableAttributes &attributes, DrawableLoader &loader)
    : m_tint(Tint::fromAttributes(attributes, loader)), m_alpha(attributes.alpha(Attr::Alpha))
{
}

void TintedLayer::paint(Canvas &canvas, const QRectF &extent, const std::function<void()> &paint) const
{
    QPainterPath mask;
    mask.addRect(extent);
    if (m_tint)
        canvas.maskedLayer(mask, paint, [&](QImage &layer) { m_tint->apply(&layer, m_alpha); });
    else if (m_alpha < 1)
        canvas.maskedLayer(mask, paint, {}, m_alpha);
    else
        paint();
}

} // namespace SorrelKit
